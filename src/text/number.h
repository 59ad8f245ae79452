#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvolt {

/// The lenient reading of a number: leading blanks skipped, "&H20" is hexadecimal, reading stops at the first bad
/// character, unreadable text gives 0. "." is the decimal point; an exponent is "E" or "D" in either case.
double Val(std::string_view text);

/// Val rounded to nearest, ties to even, and held inside the 32-bit range. Not a number gives 0.
std::int32_t ValLong(std::string_view text);

/// The shortest decimal text that reads back as the same number, free of any locale: "12.5", "-0.1", "1E+21".
std::string NumberText(double value);
std::string NumberText(std::int64_t value);

/// NumberText with a leading blank for a value that is not negative: the form of replies on the wire.
std::string WireNumber(double value);

/// Nearest whole number, ties to even, held inside int16. Not a number gives 0.
std::int16_t RoundToInt16(double value);

/// Nearest whole number, ties to even, held inside int32. Not a number gives 0.
std::int32_t RoundToInt32(double value);

/// Formats a number by a picture of "0" (a digit always), "#" (a digit when there is one), "." and "," (thousands):
/// "##0.0##", "###.##", "###,###,###,###", "00". Rounded half away from zero in the last place, as printed tables are.
std::string FormatNumber(double value, std::string_view picture);

}  // namespace tarvolt
