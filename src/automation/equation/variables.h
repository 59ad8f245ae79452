// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvolt {

/// The named variables of an equation. Case does not matter in a name, and a name is stored without its outer blanks.
class Variables {
 public:
  static constexpr std::int64_t kNone = -1;

  /// Adds the variable or changes its value. Allocates only for a name that is new.
  void Set(std::string_view name, double value) {
    const bool blanks = !name.empty() && (name.front() == ' ' || name.back() == ' ');
    const Place place = PlaceOf(blanks ? WithoutOuterBlanks(name) : name);
    if (place.taken) {
      rows_[place.row].value = value;
    } else {
      Insert(place, name, value);
    }
  }

  /// False when there is none of this name.
  bool Remove(std::string_view name);
  void Clear();

  static std::string_view WithoutOuterBlanks(std::string_view name);

  std::size_t Count() const { return rows_.size(); }

  /// The row of a name as it stands, blanks and all; kNone when there is none. A row holds while Generation() does.
  std::int64_t Find(std::string_view name) const;
  double Value(std::int64_t row) const { return rows_[static_cast<std::size_t>(row)].value; }

  /// Changes whenever a variable comes or goes, and not when one changes its value.
  std::uint64_t Generation() const { return generation_; }

 private:
  struct Row {
    std::string name;  ///< lower case
    double value;
  };

  /// Where a name stands, or would stand.
  struct Place {
    std::size_t row;
    bool taken;
  };

  Place PlaceOf(std::string_view name) const;
  void Insert(const Place& place, std::string_view name, double value);

  std::vector<Row> rows_;  // the shorter names first, equally long ones in their order
  std::uint64_t generation_ = 0;
};

}  // namespace tarvolt
