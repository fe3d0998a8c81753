#include "link/DeviceTypes.h"

#include "base/Errors.h"

#include <algorithm>
#include <limits>

namespace vek {

namespace {

std::string SubkeyPath(std::string_view name) {
    std::string path(deviceTypesKey);
    path += '\\';
    path += name;
    return path;
}

/// Nothing when the value is missing or a text.
std::optional<std::uint32_t> QueryNumber(const RegistryStore& store, std::string_view key,
                                         std::string_view name) {
    const auto value = store.Query(key, name);
    if (!value || !std::holds_alternative<std::uint32_t>(*value))
        return std::nullopt;
    return std::get<std::uint32_t>(*value);
}

/// False when the value is missing or a text; `code` is then as it was.
bool ReadCode(const RegistryStore& store, std::string_view key, std::string_view name, std::uint8_t& code) {
    const auto number = QueryNumber(store, key, name);
    if (!number)
        return false;
    if (*number > std::numeric_limits<std::uint8_t>::max())
        throw OverflowError();
    code = static_cast<std::uint8_t>(*number);
    return true;
}

/// False when the value is missing, a number or empty; `text` is then as it was. A text ends at its first
/// NUL.
bool ReadText(const RegistryStore& store, std::string_view key, std::string_view name, std::string& text) {
    const auto value = store.Query(key, name);
    if (!value || !std::holds_alternative<std::string>(*value) || std::get<std::string>(*value).empty())
        return false;
    const auto& stored = std::get<std::string>(*value);
    text = stored.substr(0, stored.find('\0'));
    return true;
}

/// Stops at the first value that is missing or of the wrong type; the rest of the entry keeps its defaults.
void ReadEntry(const RegistryStore& store, std::string_view subkey, std::size_t index,
               DeviceTypeList& types) {
    const std::string key = SubkeyPath(subkey);
    if (!store.KeyExists(key))
        return;
    if (index >= types.size())
        types.resize(index + 1);
    DeviceType& entry = types[index];
    static_cast<void>(
        ReadCode(store, key, "Type", entry.Type) && ReadCode(store, key, "Reply", entry.Reply) &&
        ReadText(store, key, "Name", entry.Name) && ReadText(store, key, "BootName", entry.BootName));
}

void SeedStore(RegistryStore& store, DeviceTypeList& types) {
    const auto catalogue = BuiltInDeviceTypes();
    types.assign(catalogue.begin(), catalogue.end());
    store.CreateKey(deviceTypesKey);
    store.Set(deviceTypesKey, "Version", deviceTypesVersion);
    for (std::size_t i = 0; i < types.size(); ++i) {
        const std::string key = SubkeyPath(std::to_string(i));
        store.CreateKey(key);
        store.Set(key, "Name", types[i].Name);
        store.Set(key, "BootName", types[i].BootName);
        store.Set(key, "Type", std::uint32_t{types[i].Type});
        store.Set(key, "Reply", std::uint32_t{types[i].Reply});
    }
    store.Flush();
}

/// The list has one entry at least, an empty one when the store names no type.
void LoadList(const RegistryStore& store, DeviceTypeList& types) {
    types.assign(1, DeviceType());
    std::size_t index = 0;
    for (const std::string& subkey : store.SubkeyNames(deviceTypesKey))
        ReadEntry(store, subkey, index++, types);
}

} // namespace

void CheckDeviceTypes(RegistryStore& store, DeviceTypeList& types) {
    types.clear();
    if (!store.KeyExists(deviceTypesKey)) {
        SeedStore(store, types);
        return;
    }
    const auto version = QueryNumber(store, deviceTypesKey, "Version");
    if (!version)
        return;
    // The version is a signed number in the store's own terms, so one beyond 31 bits counts as old.
    if (static_cast<std::int32_t>(*version) < static_cast<std::int32_t>(deviceTypesVersion))
        SeedStore(store, types);
    else
        LoadList(store, types);
}

const DeviceType* FindDeviceType(const DeviceTypeList& types, std::uint8_t reply) {
    const auto found = std::ranges::find(types, reply, &DeviceType::Reply);
    return found == types.end() ? nullptr : &*found;
}

} // namespace vek
