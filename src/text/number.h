// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarvolt {

/// The lenient reading of a number: blanks and tabs are skipped wherever they stand ("0 40512.25" is 40512.25), "&H20"
/// is hexadecimal and never negative, reading stops at the first bad character, unreadable text and a number beyond the
/// range of a double give 0. "." is the decimal point; an exponent is "E" or "D" in either case. Always finite.
double Val(std::string_view text);

/// The strict reading of a number that a person typed: blanks around it are passed over, "." or "," is the decimal
/// point. Nothing when the text is anything else than one finite number.
std::optional<double> ParseNumber(std::string_view text);

/// Val rounded to nearest, ties to even, and held inside the 32-bit range. Not a number gives 0.
std::int32_t ValLong(std::string_view text);

/// The shortest decimal text that reads back as the same number, free of any locale: "12.5", "-0.1", "1E+21". With an
/// exponent from 1E+15 up and below 0.00001. What is not a finite number is "NaN", "Inf" or "-Inf", which read as 0.
std::string NumberText(double value);
std::string NumberText(std::int64_t value);

/// The form of numbers between programs: a blank or "-" in front, at most 15 significant digits, no digit before the
/// point of a number below 1 (" .5"). With an exponent ("E+nn", "E-nn") when 15 digits before or behind the point are
/// not enough.
std::string WireNumber(double value);

/// Nearest whole number, ties to even, held inside int16. Not a number gives 0.
std::int16_t RoundToInt16(double value);

/// Nearest whole number, ties to even, held inside int32. Not a number gives 0.
std::int32_t RoundToInt32(double value);

/// True when Val finds a number to read: at least one digit stands where it looks for one.
bool HoldsNumber(std::string_view text);

/// Formats a number by a picture of "0" (a digit always), "#" (a digit when there is one), "." and "," (thousands):
/// "##0.0##", "###.##", "###,###,###,###", "00". Rounded half away from zero in the last place of the decimal text, as
/// printed tables are. A "." of the picture always stands: 2 by "###.##" is "2.". Text before and behind the
/// placeholders is literal. Zero has no sign.
std::string FormatNumber(double value, std::string_view picture);

}  // namespace tarvolt
