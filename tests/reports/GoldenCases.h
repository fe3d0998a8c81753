// The sample configurations of tests/data and the files that belong to them.
#pragma once

#include <cstddef>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace vek::test {

inline std::string ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct GoldenCase {
    std::string Name;
    std::size_t Mode;   ///< 0-based
    std::size_t Output; ///< 0-based

    std::string Path(const std::string& suffix) const { return VEK_TEST_DATA "/" + Name + suffix; }
    std::string Expected(const std::string& suffix) const { return ReadAll(Path(suffix)); }
};

inline void PrintTo(const GoldenCase& golden, std::ostream* out) { *out << golden.Name; }

inline std::vector<GoldenCase> GoldenCases() {
    std::vector<GoldenCase> cases;
    for (const auto& entry : nlohmann::json::parse(ReadAll(VEK_TEST_DATA "/manifest.json")))
        cases.push_back({entry.at("case"), entry.at("mode").get<std::size_t>() - 1,
                         entry.at("output").get<std::size_t>() - 1});
    return cases;
}

} // namespace vek::test
