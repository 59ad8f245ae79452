// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/equation/order.h"

#include <algorithm>

namespace tarvolt {

void MakeOrderList(const TokenList& list, std::vector<Position>& order) {
  order.clear();
  for (Position position = 0; position < list.tokens.size(); ++position) {
    if (list.tokens[position].priority > 0) order.push_back(position);
  }
  std::stable_sort(order.begin(), order.end(),
                   [&list](Position a, Position b) { return list.tokens[a].priority > list.tokens[b].priority; });
}

}  // namespace tarvolt
