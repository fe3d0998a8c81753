// What the commands read: files, pipes and standard input. The editor opens regular files only.
#pragma once

#include "model/Config.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vek {

/// In place of a file name.
inline constexpr std::string_view standardStream = "-";

/// "standard input" for "-", otherwise the path.
std::string InputName(const std::string& path);

/// The first `limit` bytes of a regular file, of a FIFO (such as "/dev/fd/63") or, for "-", of standard
/// input; fewer when it is shorter. Throws FileError when it cannot be read or is a folder or device.
std::vector<std::byte> ReadInput(const std::string& path, std::size_t limit);

/// The configuration at the start of the input. Throws FileError as LoadConfig does.
MatrixConfig LoadConfigInput(const std::string& path);

} // namespace vek
