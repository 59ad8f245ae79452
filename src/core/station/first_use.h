// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "core/person.h"
#include "model/session.h"
#include "sources/source_table.h"

namespace tarvolt {

/// At the first start of a station: settles what it begins with and stores it. A person completes it unless ShowMsgBox
/// is off. False, with nothing stored, when the person cancelled. Does nothing at a later start. May yield.
bool SettleFirstUse(Session& session, Person& person);

/// What channel 1 may begin with: the source that `settings` have, the sound card where there is one, and a User Data
/// Source.
std::vector<DataSourceId> FirstSources(const Session& session, const Settings& settings);

}  // namespace tarvolt
