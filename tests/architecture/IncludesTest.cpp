// Holds every #include of src/ against the table of folders in docs/architecture.md, which has no other copy.
#include "support/TestData.h"

#include <gmock/gmock.h>

#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace {

using Names = std::set<std::string>;
using Graph = std::map<std::string, Names>;
using Files = std::map<std::string, std::string>; ///< texts by path under src/

/// The libraries that the table knows, by the beginning of their headers' names.
const std::map<std::string, std::string> libraries = {
    {"Q", "Qt"}, {"CLI/", "CLI11"}, {"nlohmann/", "nlohmann_json"}};

Names QuotedNames(const std::string& cell) {
    static const std::regex quoted("`([^`]+)`");
    Names names;
    for (std::sregex_iterator name(cell.begin(), cell.end(), quoted), end; name != end; ++name)
        names.insert((*name)[1]);
    return names;
}

/// What each folder may include: other folders and libraries. Rows look like:
/// | `folder` | `folder`, `folder` | `library` | what it holds |
Graph ReadTable(const std::string& page) {
    static const std::regex row(R"(\| `([^`|]+)` \|([^|]*)\|([^|]*)\|.*)");
    Graph table;
    std::istringstream lines(page.substr(std::min(page.find("Folders and arrows"), page.size())));
    std::smatch cells;
    for (std::string line; std::getline(lines, line) && !line.starts_with("## ");)
        if (std::regex_match(line, cells, row))
            table[cells[1]] = QuotedNames(cells[2].str() + cells[3].str());
    return table;
}

std::vector<std::string> IncludesOf(const std::string& text) {
    static const std::regex include(R"(\s*#\s*include\s*(["<][^">]+[">]).*)");
    std::vector<std::string> includes;
    std::istringstream lines(text);
    std::smatch match;
    for (std::string line; std::getline(lines, line);)
        if (line.find('#') != std::string::npos && std::regex_match(line, match, include))
            includes.push_back(match[1]);
    return includes;
}

std::string FolderOf(const std::string& path) { return path.substr(0, path.find('/')); }

/// A header and its source file count as one.
std::string UnitOf(const std::string& path) { return path.substr(0, path.rfind('.')); }

/// The nodes that lead back to themselves.
Names InCircles(Graph graph) {
    for (const auto& [middle, onward] : graph)
        for (auto& [name, targets] : graph)
            if (name != middle && targets.contains(middle))
                targets.insert(onward.begin(), onward.end());
    Names circling;
    for (const auto& [name, targets] : graph)
        if (targets.contains(name))
            circling.insert(name);
    return circling;
}

std::vector<std::string> Complaints(const std::string& page, const Files& files) {
    std::vector<std::string> complaints;
    const Graph table = ReadTable(page);
    Graph used;
    Graph units;
    for (const auto& [path, text] : files) {
        const std::string folder = FolderOf(path);
        used.try_emplace(folder);
        for (const std::string& include : IncludesOf(text)) {
            const std::string name = include.substr(1, include.size() - 2);
            Names targets;
            for (const auto& [beginning, library] : libraries)
                if (name.starts_with(beginning))
                    targets.insert(library);
            if (files.contains(name)) {
                targets.insert(FolderOf(name));
                if (UnitOf(name) != UnitOf(path))
                    units[UnitOf(path)].insert(UnitOf(name));
            } else if (include.front() == '"') {
                complaints.push_back(path + " includes " + name + ", which is no file of src");
            }
            targets.erase(folder);
            for (const std::string& target : targets)
                if (table.contains(folder) && !table.at(folder).contains(target))
                    complaints.push_back(path + " includes " + name + ", but " + folder + " must not know " +
                                         target);
            used[folder].merge(targets);
        }
        if (!table.contains(folder))
            complaints.push_back("the table has no row for " + folder);
    }
    for (const auto& [folder, allowed] : table) {
        if (!used.contains(folder))
            complaints.push_back("the table has a row for " + folder + ", which is no folder of src");
        for (const std::string& name : allowed)
            if (!used[folder].contains(name))
                complaints.push_back("the table says so, but nothing in " + folder + " includes " + name);
    }
    for (const Graph& graph : {table, units})
        for (const std::string& name : InCircles(graph))
            complaints.push_back(name + " includes itself in a circle");
    return complaints;
}

TEST(Includes, EachKindOfBreachIsFound) {
    const std::string page = "| `elsewhere` | `a` | | |\n"
                             "## Folders and arrows\n"
                             "| Folder | Includes | Libraries | Holds |\n"
                             "|---|---|---|---|\n"
                             "| `low` | – | – | x |\n"
                             "| `high` | `low` | `Qt` | x |\n"
                             "| `gone` | – | – | x |\n"
                             "| `left` | `right` | – | x |\n"
                             "| `right` | `left` | – | x |\n"
                             "\n## Next\n"
                             "| `elsewhere` | `a` | | |\n";
    const Files files = {
        {"high/C.h", ""},
        {"left/A.h", "#include \"right/A.h\"\n"},
        {"left/B.h", ""},
        {"low/A.cpp", " # include <high/C.h>\n#include \"A.h\"\n"},
        {"low/B.cpp", "#include <QtCore/QString>\n#include <vector>\n#include <nlohmann/json.hpp>\n"},
        {"low/Y.h", "#include \"low/Z.h\"\n"},
        {"low/Z.cpp", "#include \"low/Y.h\"\n"},
        {"low/Z.h", ""},
        {"new/N.h", ""},
        {"right/A.h", ""},
        {"right/B.h", "#include \"left/B.h\"\n"},
    };
    EXPECT_THAT(Complaints(page, files),
                testing::ElementsAre(
                    "low/A.cpp includes high/C.h, but low must not know high",
                    "low/A.cpp includes A.h, which is no file of src",
                    "low/B.cpp includes QtCore/QString, but low must not know Qt",
                    "low/B.cpp includes nlohmann/json.hpp, but low must not know nlohmann_json",
                    "the table has no row for new", "the table has a row for gone, which is no folder of src",
                    "the table says so, but nothing in high includes Qt",
                    "the table says so, but nothing in high includes low", "left includes itself in a circle",
                    "right includes itself in a circle", "low/Y includes itself in a circle",
                    "low/Z includes itself in a circle"));
}

TEST(Includes, FollowTheArchitecturePage) {
    const std::filesystem::path project = VEK_SOURCE_FOLDER;
    Files files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(project / "src"))
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")
            files[entry.path().lexically_relative(project / "src").generic_string()] =
                vek::test::ReadText(entry.path());
    EXPECT_THAT(Complaints(vek::test::ReadText(project / "docs/architecture.md"), files), testing::IsEmpty());
}

} // namespace
