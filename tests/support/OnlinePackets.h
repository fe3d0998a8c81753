// Packets of an online session as texts.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace vek::test {

/// "V0=210 ", "M1=4 ", "R "; "D " is the find request.
inline std::string PacketText(std::span<const std::uint8_t> packet) {
    std::string text(1, static_cast<char>(packet[0]));
    if (packet[0] == 'V' || packet[0] == 'M')
        text += std::to_string(packet[1]) + '=' + std::to_string(packet[2]);
    return text + ' ';
}

/// The packets of a pass over all outputs.
inline std::string Pass(char letter, const std::array<int, 8>& values) {
    std::string text;
    for (std::size_t i = 0; i < values.size(); ++i)
        text += letter + std::to_string(i) + '=' + std::to_string(values.at(i)) + ' ';
    return text;
}
inline std::string Pass(char letter, int value) {
    return Pass(letter, {value, value, value, value, value, value, value, value});
}

} // namespace vek::test
