// SPDX-License-Identifier: GPL-3.0-or-later
#include "apps/tv-uds/link/messages.h"

#include "apps/tv-uds/link/message_reader.h"
#include "text/number.h"

namespace tarvolt::uds {

std::string StatusMessages(int channels) {
  return "^^2013" + NumberText(static_cast<std::int64_t>(channels)) + kEndOfMessage + "^^1001" + kEndOfMessage;
}

std::string DataSetMessages(const std::vector<double>& values, std::optional<double> stamp) {
  std::string text;
  char digit = '0';
  for (const double value : values) {
    text += '#';
    text += digit++;
    // The blank in front of a value that is not negative keeps the shortest item above the recorder's least length.
    text += (value < 0 ? "" : " ") + NumberText(value) + kEndOfMessage;
  }
  text += stamp ? "^^3000" + NumberText(*stamp) : std::string("^^3001");
  return text + kEndOfMessage;
}

double StampOfUnixSeconds(double seconds) {
  constexpr double kDaysBefore1970 = 25569;
  return kDaysBefore1970 + seconds / 86400;
}

}  // namespace tarvolt::uds
