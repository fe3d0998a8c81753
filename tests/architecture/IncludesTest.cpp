// Holds every #include of src/ against the table of folders in docs/architecture.md, which has no other copy.

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

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

std::string Page(const std::string& rows) {
    return "| `elsewhere` | `a` | | |\n## Folders and arrows\n| Folder | Includes | Libraries | Holds "
           "|\n|---|---|---|---|\n" +
           rows + "\n## Next\n| `elsewhere` | `a` | | |\n";
}

std::string TextOf(const std::filesystem::path& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

TEST(Includes, EachKindOfBreachIsFound) {
    const std::string rows = "| `low` | – | – | x |\n| `high` | `low` | `Qt` | x |\n";
    const struct {
        std::string Rows;
        Files Changed;
        std::vector<std::string> Complaints;
    } cases[] = {
        {rows, {}, {}},
        {rows, {{"low/A.cpp", " # include <high/C.h>\n"}, {"high/C.h", ""}}, {"low must not know high"}},
        {rows, {{"low/A.cpp", "#include \"A.h\"\n"}}, {"low/A.cpp includes A.h, which is no file of src"}},
        {rows, {{"low/A.cpp", "#include <QtCore/QString>\n"}}, {"low must not know Qt"}},
        {rows, {{"low/A.cpp", "#include <nlohmann/json.hpp>\n"}}, {"low must not know nlohmann_json"}},
        {rows, {{"high/B.h", "#include <QString>\n"}}, {"nothing in high includes low"}},
        {rows, {{"high/B.h", "#include \"low/A.h\"\n"}}, {"nothing in high includes Qt"}},
        {rows, {{"new/N.h", ""}}, {"no row for new"}},
        {rows + "| `gone` | – | – | x |\n", {}, {"gone, which is no folder of src"}},
        {"| `low` | `high` | – | x |\n| `high` | `low` | `Qt` | x |\n",
         {{"low/A.cpp", "#include \"high/C.h\"\n"}, {"high/C.h", ""}},
         {"high includes itself in a circle", "low includes itself in a circle"}},
        {rows,
         {{"low/A.cpp", "#include \"low/Z.h\"\n"}, {"low/Z.h", ""}, {"low/Z.cpp", "#include \"low/A.h\"\n"}},
         {"low/A includes itself in a circle", "low/Z includes itself in a circle"}},
    };
    for (const auto& [pageRows, changed, expected] : cases) {
        Files files = {{"low/A.h", "#include <vector>\n"},
                       {"low/A.cpp", "#include \"low/A.h\"\n"},
                       {"high/B.h", "#include \"low/A.h\"\n#include <QString>\n"}};
        for (const auto& [path, text] : changed)
            files[path] = text;
        std::vector<testing::Matcher<std::string>> endings;
        for (const std::string& ending : expected)
            endings.push_back(testing::EndsWith(ending));
        EXPECT_THAT(Complaints(Page(pageRows), files), testing::ElementsAreArray(endings));
    }
}

TEST(Includes, FollowTheArchitecturePage) {
    const std::filesystem::path project = VEK_SOURCE_FOLDER;
    Files files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(project / "src"))
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")
            files[entry.path().lexically_relative(project / "src").generic_string()] = TextOf(entry.path());
    EXPECT_THAT(Complaints(TextOf(project / "docs" / "architecture.md"), files), testing::IsEmpty());
}

} // namespace
