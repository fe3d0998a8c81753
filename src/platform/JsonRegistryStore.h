// The per-machine store as a JSON file that a person can edit: keys are objects, values are numbers or texts.
#pragma once

#include "link/RegistryStore.h"

#include <nlohmann/json.hpp>

#include <string>

namespace vek {

/// Read once, when made. A file that holds no JSON object, or one of more than a megabyte or 32 levels, is
/// set aside as "<name>.broken-<n>", and the store begins empty. A file that cannot be read is left alone:
/// the store begins empty and keeps changes in memory only, as it does when the file cannot be written or
/// would be too large or too deep to be read again.
class JsonRegistryStore final : public RegistryStore {
  public:
    /// `inherited` is read, and never written, as long as there is no file at `path`.
    explicit JsonRegistryStore(std::string path, const std::string& inherited = {});

    /// The store that the environment variable VEK_STORE names; otherwise the machine-wide one when this
    /// program may write it; otherwise the user's, which inherits from the machine-wide one.
    static JsonRegistryStore OfThisMachine();

    bool KeyExists(std::string_view key) const override;
    void CreateKey(std::string_view key) override;
    std::vector<std::string> SubkeyNames(std::string_view key) const override;
    std::optional<RegistryValue> Query(std::string_view key, std::string_view name) const override;
    void Set(std::string_view key, std::string_view name, RegistryValue value) override;
    void Flush() override;

  private:
    const nlohmann::json* FindKey(std::string_view key) const;

    std::string path_;
    nlohmann::json root_ = nlohmann::json::object();
    bool changed_ = false;
    bool writable_ = true;
};

} // namespace vek
