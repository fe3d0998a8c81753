#include "device/LastWords.h"

#include <QString>

#include <cstdio>

namespace vek {

void SayOnStandardError(const QString& text) {
    std::fprintf(stderr, "vorn-matrix-editor: %s\n", qUtf8Printable(text));
}

} // namespace vek
