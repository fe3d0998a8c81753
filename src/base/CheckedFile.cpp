#include "base/CheckedFile.h"

#include "base/Errors.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace vek {

namespace {

using Chunk = std::array<std::byte, std::size_t{64} * 1024>;

} // namespace

void CheckedFile::Fail(const std::string& reason) const { throw FileError(name_, reason); }

void CheckedFile::FailWithErrno() const { Fail(std::strerror(errno)); }

Descriptor CheckedFile::OpenForReading(const std::string& path) const {
    return Descriptor(Retried(operations_.Open, path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

struct stat CheckedFile::RegularStatus(const Descriptor& file) const {
    struct stat status = {};
    if (Retried(operations_.Status, file.Get(), &status) != 0)
        FailWithErrno();
    if (S_ISDIR(status.st_mode))
        Fail("is a folder");
    if (!S_ISREG(status.st_mode))
        Fail("is not a regular file");
    return status;
}

std::size_t CheckedFile::ReadSome(const Descriptor& file, std::span<std::byte> space) const {
    std::size_t filled = 0;
    while (filled < space.size()) {
        const ssize_t got =
            Retried(operations_.Read, file.Get(), space.data() + filled, space.size() - filled);
        if (got < 0)
            FailWithErrno();
        if (got == 0)
            break;
        filled += static_cast<std::size_t>(got);
    }
    return filled;
}

void CheckedFile::WriteAll(const Descriptor& file, std::span<const std::byte> bytes) const {
    while (!bytes.empty()) {
        const ssize_t put = Retried(operations_.Write, file.Get(), bytes.data(), bytes.size());
        if (put < 0)
            FailWithErrno();
        if (put == 0)
            Fail("no more could be written");
        bytes = bytes.subspan(static_cast<std::size_t>(put));
    }
}

void CheckedFile::CopyTail(const Descriptor& from, const Descriptor& to, std::size_t offset) const {
    SeekTo(from, offset);
    Chunk chunk;
    while (const std::size_t got = ReadSome(from, chunk))
        WriteAll(to, std::span(chunk).first(got));
}

void CheckedFile::SeekTo(const Descriptor& file, std::size_t offset) const {
    if (Retried(operations_.Seek, file.Get(), static_cast<off_t>(offset), SEEK_SET) < 0)
        FailWithErrno();
}

bool CheckedFile::HoldsNext(const Descriptor& file, std::span<const std::byte> bytes) const {
    Chunk chunk;
    while (!bytes.empty()) {
        const auto wanted = bytes.first(std::min(bytes.size(), chunk.size()));
        if (ReadSome(file, std::span(chunk).first(wanted.size())) != wanted.size() ||
            !std::equal(wanted.begin(), wanted.end(), chunk.begin()))
            return false;
        bytes = bytes.subspan(wanted.size());
    }
    return true;
}

bool CheckedFile::HoldsTail(const Descriptor& file, const Descriptor& other, std::size_t offset) const {
    SeekTo(other, offset);
    Chunk chunk;
    while (const std::size_t got = ReadSome(other, chunk))
        if (!HoldsNext(file, std::span(chunk).first(got)))
            return false;
    return true;
}

} // namespace vek
