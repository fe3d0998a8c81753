#include "console/ImageOfFile.h"

#include "base/Errors.h"
#include "model/ConfigFile.h"

namespace vek {

DownloadImage ImageOfFile(const std::string& path) {
    try {
        return EncodeImage(LoadConfig(path)).Image;
    } catch (const RunTimeError& error) {
        throw FileError(path + ": no image can be built: " + error.what());
    }
}

} // namespace vek
