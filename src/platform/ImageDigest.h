// By what a download image can be told from others.
#pragma once

#include "link/DownloadImage.h"

#include <string>

namespace vek {

/// SHA-256 of the bytes that the device uses, hexadecimal: as `sha256sum` gives it for what `vekctl image`
/// writes.
std::string ImageDigest(const DownloadImage& image);

} // namespace vek
