// SPDX-License-Identifier: GPL-3.0-or-later
#include "output.h"

#include <cmath>
#include <cstdio>

#include "text/number.h"
#include "timebase/time_stamp.h"

namespace tarvolt {
namespace {

constexpr std::size_t kPiece = 64u << 10;

}  // namespace

void Output::Put(std::string_view text) {
  waiting_ += text;
  if (waiting_.size() >= kPiece) Flush();
}

bool Output::Flush() {
  if (good_ && !waiting_.empty()) {
    good_ = std::fwrite(waiting_.data(), 1, waiting_.size(), stdout) == waiting_.size() && std::fflush(stdout) == 0;
  }
  waiting_.clear();
  return good_;
}

void Complain(std::string_view text) {
  std::fprintf(stderr, "tvd: %.*s\n", static_cast<int>(text.size()), text.data());
}

std::string Exact(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value > 0 ? "inf" : "-inf";
  return NumberText(value);
}

std::string DateText(double stamp) {
  return FormatDate(stamp, "yyyy-mm-dd hh:nn:ss.zzz");
}

}  // namespace tarvolt
