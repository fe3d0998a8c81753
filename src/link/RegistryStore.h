// A small typed per-machine store: keys with subkeys, and values that are numbers or texts.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vek {

/// A 32-bit number or a text (UTF-8). The alternative held is the value's type: a number is never read as a
/// text or the other way round.
using RegistryValue = std::variant<std::uint32_t, std::string>;

/// Keys are paths whose steps are separated by "\". No operation throws or reports a failure to write: what
/// cannot be kept is kept in memory only.
class RegistryStore {
  public:
    virtual ~RegistryStore() = default;

    virtual bool KeyExists(std::string_view key) const = 0;
    /// Creates the key and the keys above it; one that exists stays as it is.
    virtual void CreateKey(std::string_view key) = 0;
    /// Names of the keys directly below, sorted byte by byte ("10" before "2"); none for a missing key.
    virtual std::vector<std::string> SubkeyNames(std::string_view key) const = 0;

    /// Nothing when the key or the value is missing.
    virtual std::optional<RegistryValue> Query(std::string_view key, std::string_view name) const = 0;
    /// Sets a value of an existing key; ignored when the key is missing.
    virtual void Set(std::string_view key, std::string_view name, RegistryValue value) = 0;

    /// Ends a group of changes: makes them last beyond this run, where the store can.
    virtual void Flush() = 0;
};

} // namespace vek
