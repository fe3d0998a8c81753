// The samples of tests/data with the mode and output that their texts were made for.
#pragma once

#include "support/TestData.h"

#include <nlohmann/json.hpp>
#include <ostream>

namespace vek::test {

struct GoldenCase {
    std::string Number;
    std::size_t Mode;   ///< 0-based
    std::size_t Output; ///< 0-based

    std::string Path() const { return DataPath(Number + ".VMC"); }
    std::string Expected(const std::string& suffix) const { return ReadText(DataPath(Number + suffix)); }
};

inline void PrintTo(const GoldenCase& golden, std::ostream* out) { *out << golden.Number; }

inline std::vector<GoldenCase> GoldenCases() {
    std::vector<GoldenCase> cases;
    for (const auto& entry : nlohmann::json::parse(ReadText(DataPath("manifest.json"))))
        cases.push_back({entry.at("case"), entry.at("mode").get<std::size_t>() - 1,
                         entry.at("output").get<std::size_t>() - 1});
    return cases;
}

} // namespace vek::test
