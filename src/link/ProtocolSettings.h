// How the port is set for each part of the protocol: "baud,parity,data bits,stop bits".
#pragma once

#include <array>

namespace vek {

inline constexpr const char* wakePulseSettings = "110,n,8,2";

/// A device listens for the search at its own rate, so each is tried.
inline constexpr std::array<const char*, 7> searchSettings = {
    "9600,n,8,2", "38400,n,8,2", "28800,n,8,2", "19200,n,8,2", "14400,n,8,2", "4800,n,8,2", "2400,n,8,2"};

/// The parity bit marks the first byte as a command: odd parity sets it for both commands.
inline constexpr const char* commandSettings = "9600,o,8,1";
inline constexpr const char* argumentSettings = "9600,e,8,1";

} // namespace vek
