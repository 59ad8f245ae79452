// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/equation/variables.h"

#include <algorithm>

#include "text/ansi.h"

namespace tarvolt {
namespace {

/// Below, equal or above zero as `stored`, which is in lower case, stands before, at or behind `name`. Short names
/// stand first: most comparisons end there.
int Compare(const std::string& stored, std::string_view name) {
  if (stored.size() != name.size()) return stored.size() < name.size() ? -1 : 1;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (stored[i] == name[i]) continue;
    const int difference = stored[i] - LowerByte(name[i]);
    if (difference != 0) return difference;
  }
  return 0;
}

}  // namespace

std::string_view Variables::WithoutOuterBlanks(std::string_view name) {
  const std::size_t first = name.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return name.substr(first, name.find_last_not_of(' ') - first + 1);
}

Variables::Place Variables::PlaceOf(std::string_view name) const {
  std::size_t low = 0;
  std::size_t high = rows_.size();
  while (low < high) {
    const std::size_t middle = (low + high) / 2;
    const int order = Compare(rows_[middle].name, name);
    if (order == 0) return {middle, true};
    if (order < 0) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return {low, false};
}

std::int64_t Variables::Find(std::string_view name) const {
  const Place place = PlaceOf(name);
  return place.taken ? static_cast<std::int64_t>(place.row) : kNone;
}

void Variables::Insert(const Place& place, std::string_view name, double value) {
  rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(place.row), {Lower(WithoutOuterBlanks(name)), value});
  ++generation_;
}

bool Variables::Remove(std::string_view name) {
  const std::int64_t row = Find(name);
  if (row == kNone) return false;
  rows_.erase(rows_.begin() + row);
  ++generation_;
  return true;
}

void Variables::Clear() {
  rows_.clear();
  ++generation_;
}

}  // namespace tarvolt
