// File operations that either succeed or throw.
#pragma once

#include "base/Descriptor.h"
#include "base/FileOperations.h"

#include <cstddef>
#include <span>
#include <string>

namespace vek {

/// The operations on behalf of one file. A failed one throws FileError with the name that the user gave the
/// file and the reason. Refers to both arguments of its constructor.
class CheckedFile {
  public:
    CheckedFile(const FileOperations& operations, const std::string& name)
        : operations_(operations), name_(name) {}

    [[noreturn]] void Fail(const std::string& reason) const;
    /// The reason is the one in errno.
    [[noreturn]] void FailWithErrno() const;

    /// Not open when the system refuses; errno tells why. Does not wait for the other end of a FIFO.
    Descriptor OpenForReading(const std::string& path) const;
    /// Throws for anything but a regular file.
    struct stat RegularStatus(const Descriptor& file) const;

    /// As many bytes as the space takes, fewer only at the end of the file.
    std::size_t ReadSome(const Descriptor& file, std::span<std::byte> space) const;
    void WriteAll(const Descriptor& file, std::span<const std::byte> bytes) const;
    /// Copies what `from` holds beyond `offset` to the current position of `to`.
    void CopyTail(const Descriptor& from, const Descriptor& to, std::size_t offset) const;

    void SeekTo(const Descriptor& file, std::size_t offset) const;
    /// True when the file holds `bytes` at its current position.
    bool HoldsNext(const Descriptor& file, std::span<const std::byte> bytes) const;
    /// True when `file`, from its current position on, holds what `other` holds beyond `offset`.
    bool HoldsTail(const Descriptor& file, const Descriptor& other, std::size_t offset) const;

  private:
    const FileOperations& operations_;
    const std::string& name_;
};

} // namespace vek
