#include "console/ImageOfFile.h"

#include "base/Errors.h"
#include "console/Input.h"

namespace vek {

DownloadImage ImageOfFile(const std::string& path) {
    try {
        return EncodeImage(LoadConfigInput(path)).Image;
    } catch (const RunTimeError& error) {
        throw FileError(InputName(path) + ": no image can be built: " + error.what());
    }
}

} // namespace vek
