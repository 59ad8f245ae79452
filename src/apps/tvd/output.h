// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace tarvolt {

/// Standard output in large pieces. Text is UTF-8 already.
class Output {
 public:
  Output() = default;
  ~Output() { Flush(); }
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void Put(std::string_view text);

  /// False when the reader of the output is gone or its disk is full.
  bool Flush();
  bool Good() const { return good_; }

 private:
  std::string waiting_;
  bool good_ = true;
};

/// One line on standard error, behind the program's name.
void Complain(std::string_view text);

/// A number as text that reads back as the same number; "nan", "inf" or "-inf" for what is none.
std::string Exact(double value);

/// A stamp as date and time to the millisecond.
std::string DateText(double stamp);

}  // namespace tarvolt
