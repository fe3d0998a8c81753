// How long the tests of this program run: briefly, unless the environment says more.
#pragma once

#include <QtGlobal>

namespace vek::test {

/// The number in an environment variable, or what is usual.
inline int Setting(const char* name, int usual) {
    bool given = false;
    const int value = qEnvironmentVariableIntValue(name, &given);
    return given ? value : usual;
}

} // namespace vek::test
