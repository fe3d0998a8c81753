// What a fuzzer found out: stops it with the input at hand.
#pragma once

#include <cstdlib>

namespace vek::test {

inline void Require(bool holds) {
    if (!holds)
        std::abort();
}

} // namespace vek::test
