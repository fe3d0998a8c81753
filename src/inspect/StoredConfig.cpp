#include "inspect/StoredConfig.h"

#include "base/DurableFile.h"
#include "base/Errors.h"
#include "model/RecordLayout.h"

#include <algorithm>

namespace vek {

namespace {

constexpr std::size_t largestFile = std::size_t{64} * 1024 * 1024;

} // namespace

StoredConfig LoadStoredConfig(const std::string& path) {
    const auto bytes = ReadRegularFile(path, largestFile + 1);
    if (bytes.size() > largestFile)
        throw FileError(path + ": longer than 64 MiB");
    try {
        StoredConfig stored = {DecodeRecord(bytes), {}};
        stored.Tail.assign(bytes.begin() + recordSize, bytes.end());
        return stored;
    } catch (const FileError& error) {
        throw FileError(path + ": " + error.what());
    }
}

std::vector<std::byte> EncodeStoredConfig(const StoredConfig& stored) {
    const RecordBytes record = EncodeRecord(stored.Config);
    std::vector<std::byte> bytes(record.size() + stored.Tail.size());
    const auto tail = std::copy(record.begin(), record.end(), bytes.begin());
    std::copy(stored.Tail.begin(), stored.Tail.end(), tail);
    return bytes;
}

} // namespace vek
