// A registry store in memory.
#pragma once

#include "link/RegistryStore.h"

#include <map>

namespace vek::test {

class MemoryStore final : public RegistryStore {
  public:
    bool KeyExists(std::string_view key) const override { return keys.contains(std::string(key)); }
    void CreateKey(std::string_view key) override { keys[std::string(key)]; }
    std::vector<std::string> SubkeyNames(std::string_view key) const override {
        std::vector<std::string> names;
        const std::string prefix = std::string(key) + "\\";
        for (const auto& [name, values] : keys) {
            if (name.starts_with(prefix) && name.find('\\', prefix.size()) == std::string::npos)
                names.push_back(name.substr(prefix.size()));
        }
        return names;
    }
    std::optional<RegistryValue> Query(std::string_view key, std::string_view name) const override {
        const auto values = keys.find(std::string(key));
        if (values == keys.end())
            return std::nullopt;
        const auto value = values->second.find(std::string(name));
        return value == values->second.end() ? std::nullopt : std::optional(value->second);
    }
    void Set(std::string_view key, std::string_view name, RegistryValue value) override {
        Flushed = false;
        keys[std::string(key)][std::string(name)] = std::move(value);
    }
    void Flush() override { Flushed = true; }

    bool Flushed = false; ///< everything set so far would be kept

  private:
    std::map<std::string, std::map<std::string, RegistryValue>> keys;
};

} // namespace vek::test
