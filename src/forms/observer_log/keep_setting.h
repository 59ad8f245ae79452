// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "model/session.h"

namespace tarvolt {

/// Puts a setting in force and stores it; one that was given for this run alone is not stored.
inline void KeepSetting(Session& session, Section section, std::string_view key, const std::string& text) {
  ApplySetting(session.settings, key, text);
  if (!session.IsOverridden(key)) session.store.SaveSetting(section, key, text);
}

}  // namespace tarvolt
