// The download image of a configuration that is read.
#pragma once

#include "link/DownloadImage.h"

#include <string>

namespace vek {

/// Throws FileError, naming the file, when it cannot be read or when no image can be built of it.
EncodedImage ImageOfFile(const std::string& path);

} // namespace vek
