// Any record that can be read gives an image or a run-time error, and the configuration that the build leaves
// needs no more adjusting.
#include "Require.h"

#include "base/Errors.h"
#include "link/DownloadImage.h"
#include "model/RecordLayout.h"

#include <algorithm>

using namespace vek;
using namespace vek::test;

namespace {

/// Most inputs are shorter than a record; zeros fill it, which is a valid one.
RecordBytes Padded(std::span<const std::byte> bytes) {
    RecordBytes record = {};
    std::ranges::copy(bytes.first(std::min(bytes.size(), record.size())), record.begin());
    return record;
}

void CheckAdjusted(const EncodedImage& encoded) {
    try {
        Require(EncodeImage(encoded.Config).Config == encoded.Config);
    } catch (const DivisionByZeroError&) {
        // Limiting can make the maximum equal to the minimum.
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const EncodedImage encoded = EncodeImage(DecodeRecord(Padded(std::as_bytes(std::span(data, size)))));
        const auto& buffer = encoded.Image.Buffer;
        Require(std::all_of(buffer.begin() + imageLength, buffer.end(), [](auto byte) { return byte == 0; }));
        CheckAdjusted(encoded);
    } catch (const FileError&) {
        return 0;
    } catch (const RunTimeError&) {
        return 0;
    }
    return 0;
}
