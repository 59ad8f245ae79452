// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/options/option_page.h"
#include "model/session.h"

namespace tarvolt {

/// The page of the sound input. `fields` and `session` outlive it.
OptionPage* MakeSoundPage(OptionFields& fields, Session& session, QWidget* parent);

}  // namespace tarvolt
