#include "model/ConfigFile.h"

#include "base/DurableFile.h"
#include "base/Errors.h"
#include "model/RecordLayout.h"

namespace vek {

MatrixConfig LoadConfig(const std::string& path) {
    const auto bytes = ReadRegularFile(path, recordSize);
    try {
        return DecodeRecord(bytes);
    } catch (const FileError& error) {
        throw FileError(path, error.Reason());
    }
}

MatrixConfig LoadConfigOrDefault(const std::string& path) {
    try {
        return LoadConfig(path);
    } catch (const FileError&) {
        return {};
    }
}

void SaveConfig(const std::string& path, const MatrixConfig& config) {
    WriteFileDurably(path, EncodeRecord(config), ExistingTail::Keep);
}

std::string FileNameOf(const std::string& path) {
    // Files named on the systems that this program came from may carry either separator.
    const std::size_t separator = path.find_last_of("\\/");
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

} // namespace vek
