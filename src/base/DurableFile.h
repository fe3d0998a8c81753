// Reading and writing files so that nothing is ever half there.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace vek {

struct FileOperations;

/// What happens to bytes of an existing file beyond those that are written.
enum class ExistingTail { Keep, Drop };

/// Replaces the start of a file (or all of it) with `bytes`, or creates it. Symbolic links are followed, the
/// permissions and the group of an existing file are kept, and its owner where the system lets them; where
/// the group cannot be kept, it loses its rights. The new content is written beside the old file, synced,
/// read back and compared, and only then put in its place, so that a full disk, a crash or a power cut leaves
/// either the old file or the new one. Signals that end the program wait meanwhile. Throws FileError, with
/// the old file as it was and nothing left over, for anything that is not a regular file, for a read-only
/// file or folder and for any failed step up to the putting in place. Once it is in place, its folder is
/// synced; where that cannot be done, a power cut soon afterwards can still bring the old file back.
void WriteFileDurably(const std::string& path, std::span<const std::byte> bytes, ExistingTail tail);

/// The same by way of these operations.
void WriteFileDurably(const std::string& path, std::span<const std::byte> bytes, ExistingTail tail,
                      const FileOperations& operations);

/// Throws FileError when WriteFileDurably would, as far as that can be known before; nothing changes.
void RequireWritable(const std::string& path);

/// The first `limit` bytes of a regular file, fewer when it is shorter. Throws FileError when it cannot be
/// read or is a folder, device or FIFO.
std::vector<std::byte> ReadRegularFile(const std::string& path, std::size_t limit);

} // namespace vek
