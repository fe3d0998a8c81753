// The list of device types, by which a search names what answered. It is kept in the per-machine store, so
// that it can be extended without a new program, and seeded from a built-in catalogue.
#pragma once

#include "link/RegistryStore.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vek {

struct DeviceType {
    std::uint8_t Type = 0;
    std::uint8_t Reply = 0; ///< first byte of the device's answer to a search
    std::string Name;       ///< UTF-8; shown with the firmware version directly behind it
    std::string BootName;   ///< UTF-8; kept with the type, not shown by the search

    bool operator==(const DeviceType&) const = default;
};

using DeviceTypeList = std::vector<DeviceType>;

inline constexpr std::uint8_t matrixVekReply = 39; ///< of the device that this program configures

inline constexpr std::string_view deviceTypesKey = "Software\\Vorn\\Vekules\\Types";
inline constexpr std::uint32_t deviceTypesVersion = 17;

/// The catalogue that a new store gets.
std::span<const DeviceType> BuiltInDeviceTypes();

/// Fills the list at start-up: from the store when its version is current or newer, otherwise from the
/// catalogue, which is then written to the store. A store whose version is missing or not a number is left
/// alone and gives an empty list. Throws OverflowError for a type or reply code above 255; `types` then holds
/// the entries before it.
void CheckDeviceTypes(RegistryStore& store, DeviceTypeList& types);

/// The first entry with this reply code, nullptr when there is none.
const DeviceType* FindDeviceType(const DeviceTypeList& types, std::uint8_t reply);

} // namespace vek
