// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tarvolt::uds {

/// The answer to STAT: the number of channels, then the end of the opening exchange.
std::string StatusMessages(int channels);

/// One data set: an item for each channel in order, then the end of the set with its time stamp when it has one.
/// Every number reads back as the very same double.
std::string DataSetMessages(const std::vector<double>& values, std::optional<double> stamp);

/// The time stamp of a moment given in seconds since the start of 1970, UT: days since 30 December 1899.
double StampOfUnixSeconds(double seconds);

}  // namespace tarvolt::uds
