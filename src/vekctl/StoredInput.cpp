#include "vekctl/StoredInput.h"

#include "base/Errors.h"
#include "console/Input.h"

namespace vek {

StoredConfig LoadStoredInput(const std::string& path) {
    const auto bytes = ReadInput(path, largestStoredFile + 1);
    try {
        return DecodeStoredConfig(bytes);
    } catch (const FileError& error) {
        throw FileError(InputName(path) + ": " + error.what());
    }
}

} // namespace vek
