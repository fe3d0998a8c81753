// Bounds-checked little-endian reading and writing of byte spans.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace vek {

/// Reads fields one after another. Throws SubscriptError at the end of the bytes.
class ByteReader {
  public:
    explicit ByteReader(std::span<const std::byte> bytes) : rest_(bytes) {}

    std::int16_t Integer();
    float Single();
    std::string_view Text(std::size_t length);
    std::size_t Remaining() const { return rest_.size(); }

  private:
    std::span<const std::byte> Take(std::size_t count);

    std::span<const std::byte> rest_;
};

/// Writes fields one after another. Throws SubscriptError when the space is used up.
class ByteWriter {
  public:
    explicit ByteWriter(std::span<std::byte> bytes) : rest_(bytes) {}

    void Integer(std::int16_t value);
    void Single(float value);
    void Text(std::string_view text);
    std::size_t Remaining() const { return rest_.size(); }

  private:
    std::span<std::byte> Take(std::size_t count);

    std::span<std::byte> rest_;
};

/// The bytes of a text, without copying.
std::span<const std::byte> AsBytes(std::string_view text);

} // namespace vek
