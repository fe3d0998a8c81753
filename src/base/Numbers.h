// Numbers: checked conversions, rounding halves to even, general number text and lenient reading.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vek {

/// Nearest whole number, halves to even, whatever the floating-point environment says.
double RoundHalfEven(double value);

/// The nearest whole number (halves to even) as an unsigned byte. Throws OverflowError outside 0 … 255 and
/// for values that are not finite.
std::uint8_t ToByte(double value);

/// The nearest whole number (halves to even) as a signed 16-bit number. Throws OverflowError outside its
/// range.
std::int16_t ToInteger(double value);

/// The result of a Single computation, unchanged. Throws OverflowError when it is not finite.
float CheckedSingle(float value);

/// The quotient in Single precision. Throws DivisionByZeroError for a zero divisor, OverflowError when the
/// quotient is not finite.
float CheckedQuotient(float dividend, float divisor);

/// The index, unchanged. Throws SubscriptError unless 0 <= index < size.
std::size_t CheckedIndex(long long index, std::size_t size);

/// General number format of a Single: at most 7 significant digits, no trailing zeros, plain decimal notation
/// without exponent, "." as decimal mark, never "-0". The value must be finite.
std::string GeneralNumber(float value);

/// A whole number in plain decimal.
std::string GeneralNumber(int value);

/// The number at the start of a text, after leading blanks, tabs and line ends: sign, digits, point, exponent
/// ("1e3"). 0 when there is none or it is too small; an infinite value when it is too large.
double LenientNumber(std::string_view text);

} // namespace vek
