// Any bytes are either refused as a record or come back unchanged.
#include "Require.h"

#include "base/Errors.h"
#include "model/RecordLayout.h"

#include <algorithm>

using namespace vek;
using namespace vek::test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bytes = std::as_bytes(std::span(data, size));
    try {
        const RecordBytes again = EncodeRecord(DecodeRecord(bytes));
        Require(std::ranges::equal(again, bytes.first(recordSize)));
    } catch (const FileError&) {
        return 0;
    }
    return 0;
}
