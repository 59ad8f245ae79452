// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "automation/equation/plan.h"
#include "automation/equation/scan.h"

namespace tarvolt {

/// Walks the order list once. Each token takes its nearest surviving neighbours, is replaced by its result, and what
/// it took is gone; instead of the numbers themselves the steps that make them are written down. The cost grows with
/// the count of tokens. A fault of the walk becomes the plan's failure, behind the steps that come before it.
void WalkOrderList(const TokenList& list, const std::vector<Position>& order, char decimalSeparator, Plan& plan);

}  // namespace tarvolt
