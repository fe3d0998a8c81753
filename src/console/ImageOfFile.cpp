#include "console/ImageOfFile.h"

#include "base/Errors.h"
#include "console/Input.h"

namespace vek {

EncodedImage ImageOfFile(const std::string& path) {
    try {
        return EncodeImage(LoadConfigInput(path));
    } catch (const RunTimeError& error) {
        throw FileError(InputName(path) + ": no image can be built: " + error.what());
    }
}

} // namespace vek
