#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace corvanel {

/// The number at the start of a text, the way a director's entry is read: leading blanks are
/// skipped, then sign, digits, one ".", exponent; what follows is ignored. Empty text, letters and
/// anything too large for a double give 0.
double Val(std::string_view text);

/// The whole number at the start of a text as a 16-bit round number; a fraction is cut off.
/// Throws RuntimeError (6, Overflow) beyond -32768..32767.
int16_t WholeNumber(std::string_view text);

/// `value` as a 16-bit number. Throws RuntimeError (6, Overflow) when it does not fit.
int16_t Checked16(int value);

/// A single in its shortest text that reads back the same: "15", "7.5", "0.1".
std::string SingleText(float value);

/// Rounded to 2 decimals, an exact half to the even last digit: 21.625 gives 21.62.
double RoundTo2Decimals(double value);

/// "0.00" form of a number: 21.62, 8.00.
std::string TwoDecimals(double value);

/// Two texts that differ at most in the case of their letters, whatever the user's language.
bool SameName(std::string_view a, std::string_view b);

/// The text without the blanks, tabs and line ends around it.
std::string_view Trimmed(std::string_view text);

/// The name of a file without its folder, whether the path is written with / or with \.
std::string_view FileName(std::string_view path);

}  // namespace corvanel
