// The record of a configuration as a text of bytes.
#pragma once

#include "model/RecordLayout.h"

#include <string>

namespace vek::test {

inline std::string RecordText(const MatrixConfig& config) {
    const RecordBytes bytes = EncodeRecord(config);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace vek::test
