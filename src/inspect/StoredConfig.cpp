#include "inspect/StoredConfig.h"

#include "base/Errors.h"
#include "model/RecordLayout.h"

#include <algorithm>

namespace vek {

StoredConfig DecodeStoredConfig(std::span<const std::byte> bytes) {
    if (bytes.size() > largestStoredFile)
        throw FileError("longer than 64 MiB");
    const auto tail = bytes.size() > recordSize ? bytes.subspan(recordSize) : std::span<const std::byte>();
    return {DecodeRecord(bytes), {tail.begin(), tail.end()}};
}

std::vector<std::byte> EncodeStoredConfig(const StoredConfig& stored) {
    const RecordBytes record = EncodeRecord(stored.Config);
    std::vector<std::byte> bytes(record.size() + stored.Tail.size());
    const auto tail = std::copy(record.begin(), record.end(), bytes.begin());
    std::copy(stored.Tail.begin(), stored.Tail.end(), tail);
    return bytes;
}

} // namespace vek
