// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace tarvolt {

/// The pictures in which numbers are put into the text of an equation.
inline constexpr const char* kValuePicture = "#############0.0#############";  ///< values of channels
inline constexpr const char* kDayPicture = "######0.############";             ///< times in days
inline constexpr int kValuePlaces = 14;                                        ///< decimals of kValuePicture
inline constexpr int kDayPlaces = 12;                                          ///< decimals of kDayPicture

/// The number that `value` has become once it was printed by one of these pictures, with `places` decimals, and read
/// again. `value` is finite. What has no more decimals than that is itself; only what has costs a look at its digits.
double AsPrinted(double value, int places);

/// A finite number of the wire form, printed and read again.
struct WirePrint {
  double value = 0;
  bool plain = false;  ///< digits and a point alone; an exponent is no part of a number in an equation
};
WirePrint AsWirePrinted(double value);

}  // namespace tarvolt
