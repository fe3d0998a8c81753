// Samples in tests/data and temporary folders.
#pragma once

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace vek::test {

inline std::string DataPath(const std::string& name) { return std::string(VEK_TEST_DATA "/") + name; }

inline std::string ReadText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

inline void WriteText(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

/// Where two texts of bytes first differ, for a readable failure; empty when they are equal.
inline std::string Differing(const std::string& a, const std::string& b) {
    if (a == b)
        return {};
    const auto at = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin();
    return "byte " + std::to_string(at) + " of " + std::to_string(a.size()) + " and " +
           std::to_string(b.size());
}

/// The numbers of the sample configurations: "01" … "08".
inline std::vector<std::string> SampleNumbers() { return {"01", "02", "03", "04", "05", "06", "07", "08"}; }

/// A folder of its own, removed with everything in it.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "vek-test-XXXXXX").string();
        if (!::mkdtemp(name.data()))
            throw std::runtime_error("cannot make a temporary folder");
        folder = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(folder, ignored);
    }
    std::string Path(const std::string& name) const { return (folder / name).string(); }
    std::string Path() const { return folder.string(); }
    std::size_t EntryCount() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
    }

  private:
    std::filesystem::path folder;
};

} // namespace vek::test
