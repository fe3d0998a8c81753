// A store made from any file can be read, and what is set in it and flushed is read again; a file that it
// cannot take is set aside with its bytes, and it writes none such itself.
//
// An input is a count of bytes, so many bytes of "key\nname\ntext", and the file.
#include "Require.h"

#include "platform/JsonRegistryStore.h"
#include "support/TestData.h"

#include <cstdint>

using namespace vek;
using namespace vek::test;

namespace {

std::string_view Take(std::string_view& rest, std::size_t count, std::size_t dropped = 0) {
    const std::string_view taken = rest.substr(0, count);
    rest.remove_prefix(std::min(rest.size(), taken.size() + dropped));
    return taken;
}

bool IsUtf8(std::string_view text) {
    try {
        nlohmann::json(text).dump();
        return true;
    } catch (const nlohmann::json::type_error&) {
        return false;
    }
}

/// Reads all that stands below a key.
void ReadAll(const JsonRegistryStore& store, const std::string& key) {
    for (const std::string& name : store.SubkeyNames(key)) {
        Require(!store.Query(key, name));
        // A person may have written names that no key can have: empty ones and some with a separator.
        if (!name.empty() && name.find('\\') == std::string::npos)
            ReadAll(store, key.empty() ? name : key + '\\' + name);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TemporaryFolder folder;
    static const std::string path = folder.Path("registry.json");
    static const std::string aside = path + ".broken-1";
    if (size == 0)
        return 0;
    std::string_view file(reinterpret_cast<const char*>(data) + 1, size - 1);
    std::string_view change = Take(file, data[0]);
    const std::string key(Take(change, change.find('\n'), 1));
    const std::string name(Take(change, change.find('\n'), 1));
    const RegistryValue text = std::string(change);
    const RegistryValue number = static_cast<std::uint32_t>(size);

    WriteText(path, std::string(file));
    {
        JsonRegistryStore store(path);
        Require(std::filesystem::exists(path) || ReadText(aside) == file);
        ReadAll(store, "");
        store.Query(key, name);
        store.CreateKey(key);
        Require(store.KeyExists(key));
        store.Set(key, name, text);
        store.Set(key, "Size", number);
        store.Flush();
    }
    const bool written = std::filesystem::exists(path);
    const JsonRegistryStore store(path);
    Require(std::filesystem::exists(path) == written);
    // Deeper keys stay in memory.
    constexpr auto deepest = 30;
    if (std::ranges::count(key, '\\') < deepest && IsUtf8(key) && IsUtf8(name) && IsUtf8(change)) {
        Require(store.Query(key, "Size") == number);
        Require(name == "Size" || store.Query(key, name) == text);
    }
    std::filesystem::remove(path);
    std::filesystem::remove(aside);
    return 0;
}
