#include "base/Bytes.h"

#include "base/Errors.h"

#include <bit>

namespace vek {

namespace {

template <typename Unsigned>
Unsigned FromLittleEndian(std::span<const std::byte> bytes) {
    Unsigned value = 0;
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i)
        value = static_cast<Unsigned>(value | (std::to_integer<Unsigned>(bytes[i]) << (8 * i)));
    return value;
}

template <typename Unsigned>
void ToLittleEndian(Unsigned value, std::span<std::byte> bytes) {
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i)
        bytes[i] = static_cast<std::byte>(value >> (8 * i));
}

} // namespace

std::span<const std::byte> ByteReader::Take(std::size_t count) {
    if (count > rest_.size())
        throw SubscriptError();
    const auto taken = rest_.first(count);
    rest_ = rest_.subspan(count);
    return taken;
}

std::int16_t ByteReader::Integer() {
    return static_cast<std::int16_t>(FromLittleEndian<std::uint16_t>(Take(sizeof(std::uint16_t))));
}

float ByteReader::Single() {
    return std::bit_cast<float>(FromLittleEndian<std::uint32_t>(Take(sizeof(std::uint32_t))));
}

std::string_view ByteReader::Text(std::size_t length) {
    const auto bytes = Take(length);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::span<std::byte> ByteWriter::Take(std::size_t count) {
    if (count > rest_.size())
        throw SubscriptError();
    const auto taken = rest_.first(count);
    rest_ = rest_.subspan(count);
    return taken;
}

void ByteWriter::Integer(std::int16_t value) {
    ToLittleEndian(static_cast<std::uint16_t>(value), Take(sizeof(std::uint16_t)));
}

void ByteWriter::Single(float value) {
    ToLittleEndian(std::bit_cast<std::uint32_t>(value), Take(sizeof(std::uint32_t)));
}

void ByteWriter::Text(std::string_view text) {
    const auto space = Take(text.size());
    const auto bytes = AsBytes(text);
    std::copy(bytes.begin(), bytes.end(), space.begin());
}

std::span<const std::byte> AsBytes(std::string_view text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

} // namespace vek
