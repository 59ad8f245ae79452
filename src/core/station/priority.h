// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

#include "model/session.h"

namespace tarvolt {

/// The class of a stored number; nothing for a number that names none.
std::optional<PriorityClass> PriorityFromNumber(std::int32_t number);

/// Applies a priority class, logs it and stores it. A system that refuses is logged; the class is stored all
/// the same.
void SetPriority(Session& session, PriorityClass priority);

/// The same for a person, who is asked about Real Time first; then it yields.
void mnuPriority(Session& session, PriorityClass priority);

}  // namespace tarvolt
