// Any text has a number; one whose seven digits a Single tells apart survives being written and read.
#include "Require.h"

#include "base/Numbers.h"

#include <cmath>

using namespace vek;
using namespace vek::test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const double number = LenientNumber(text);
    Require(!std::isnan(number));
    const auto single = static_cast<float>(number);
    if (!std::isfinite(single))
        return 0;
    const std::string written = GeneralNumber(single);
    Require(written != "-0" && written.find_first_not_of("-.0123456789") == std::string::npos);
    // Beyond these, neighbouring texts of seven digits share a Single.
    constexpr float smallest = 1e-3F;
    constexpr float largest = 1e7F;
    const float magnitude = std::abs(single);
    if (magnitude == 0 || (magnitude >= smallest && magnitude < largest))
        Require(GeneralNumber(static_cast<float>(LenientNumber(written))) == written);
    return 0;
}
