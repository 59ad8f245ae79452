// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "automation/equation/scan.h"

namespace tarvolt {

/// The positions of the tokens to evaluate: highest priority first, left to right within one priority. So every
/// operator, "^" included, goes with what stands to its left: 2^3^2 is 64. Numbers and separators are not among them.
/// Behind each "(" and each function head stands its own ")", as nothing between the two has their priority.
void MakeOrderList(const TokenList& list, std::vector<Position>& order);

}  // namespace tarvolt
