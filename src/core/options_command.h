#pragma once

#include <optional>

#include "core/options_check.h"
#include "model/session.h"

namespace tarvolt {

/// Sees to it that the data folder of `draft` is there; an empty one is the folder under home and needs nothing. A
/// missing folder is made: the station's own at once, another with ShowMsgBox after asking. Gives why it cannot be
/// used. Yields in the question.
std::optional<OptionsProblem> ReadyDataDirectory(Session& session, const Settings& draft);

}  // namespace tarvolt
