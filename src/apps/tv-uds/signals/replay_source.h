// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <istream>
#include <memory>
#include <string>

#include "apps/tv-uds/signals/source.h"

namespace tarvolt::uds {

/// The sets of a text file of numbers, one set a line, each sent once and unchanged.
///
/// Between the numbers of a line stand blanks or tabs, or one comma or semicolon with or without blanks; "." is the
/// decimal point. What stands behind "#" is a comment, and lines without numbers are skipped. All lines have the same
/// number of values, 1 to 8.
class ReplaySource : public Source {
 public:
  static constexpr int kLongestLine = 4096;               ///< characters
  static constexpr std::size_t kMostValues = 20'000'000;  ///< in the whole file

  /// Reads a file to its end. Null, with the reason and the number of the bad line in `why`, when it is not of
  /// this form.
  static std::unique_ptr<ReplaySource> Read(std::istream& text, std::string& why);
  static std::unique_ptr<ReplaySource> ReadFile(const std::filesystem::path& path, std::string& why);

  int Channels() const override { return channels_; }
  std::optional<std::vector<double>> Set(std::int64_t number) const override;
  bool KeepsEverySet() const override { return true; }

 private:
  bool AddLine(std::string_view line, std::string& why);

  int channels_ = 0;
  std::vector<double> values_;  // set after set
};

}  // namespace tarvolt::uds
