#include "base/Numbers.h"

#include "base/Errors.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <locale>
#include <sstream>

namespace vek {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

} // namespace

double RoundHalfEven(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest < 0.5)
        return below;
    if (rest > 0.5)
        return below + 1;
    return std::fmod(below, 2.0) == 0.0 ? below : below + 1;
}

std::uint8_t ToByte(double value) {
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= 0.0 && rounded <= 255.0))
        throw OverflowError();
    return static_cast<std::uint8_t>(rounded);
}

std::int16_t ToInteger(double value) {
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= -32768.0 && rounded <= 32767.0))
        throw OverflowError();
    return static_cast<std::int16_t>(rounded);
}

float CheckedSingle(float value) {
    if (!std::isfinite(value))
        throw OverflowError();
    return value;
}

float CheckedQuotient(float dividend, float divisor) {
    if (divisor == 0.0F)
        throw DivisionByZeroError();
    return CheckedSingle(dividend / divisor);
}

std::size_t CheckedIndex(long long index, std::size_t size) {
    if (index < 0 || static_cast<unsigned long long>(index) >= size)
        throw SubscriptError();
    return static_cast<std::size_t>(index);
}

std::string GeneralNumber(float value) {
    if (value == 0.0F)
        return "0";
    constexpr int digitsAfterFirst = 6;
    char scientific[32];
    const auto end = std::to_chars(scientific, scientific + sizeof scientific, std::fabs(value),
                                   std::chars_format::scientific, digitsAfterFirst)
                         .ptr;
    // "d.dddddde±xx" → the digits and the power of ten of the first one.
    const std::string_view text(scientific, static_cast<std::size_t>(end - scientific));
    const std::size_t mark = text.find('e');
    std::string digits(1, text[0]);
    digits += text.substr(2, mark - 2);
    int power = 0;
    const std::size_t exponentStart = mark + (text[mark + 1] == '+' ? 2 : 1);
    std::from_chars(text.data() + exponentStart, text.data() + text.size(), power);
    digits.erase(std::max<std::size_t>(digits.find_last_not_of('0') + 1, 1));

    std::string result = value < 0 ? "-" : "";
    if (power < 0) {
        result += "0." + std::string(static_cast<std::size_t>(-power - 1), '0') + digits;
        return result;
    }
    const auto wholeDigits = static_cast<std::size_t>(power) + 1;
    if (digits.size() <= wholeDigits) {
        result += digits + std::string(wholeDigits - digits.size(), '0');
        return result;
    }
    result += digits.substr(0, wholeDigits) + "." + digits.substr(wholeDigits);
    return result;
}

std::string GeneralNumber(int value) { return std::to_string(value); }

double LenientNumber(std::string_view text) {
    std::size_t at = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    bool negative = false;
    if (at < text.size() && (text[at] == '+' || text[at] == '-'))
        negative = text[at++] == '-';
    // A second sign and the words for infinity are no numbers here.
    if (at == text.size() || !(IsDigit(text[at]) || text[at] == '.'))
        return 0.0;
    double value = 0.0;
    const char* const start = text.data() + at;
    const auto [end, error] = std::from_chars(start, text.data() + text.size(), value);
    if (error == std::errc::invalid_argument)
        return 0.0;
    if (error == std::errc::result_out_of_range) {
        // from_chars does not tell too large from too small; a stream does.
        std::istringstream stream{std::string(start, end)};
        stream.imbue(std::locale::classic());
        if (!(stream >> value))
            value = std::numeric_limits<double>::infinity();
    }
    return negative ? -value : value;
}

} // namespace vek
