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

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Names = std::set<std::string>;
using Graph = std::map<std::string, Names>;
using Files = std::map<std::string, std::string>; ///< texts by path under src/

/// A row of the table: what a folder may include directly.
struct Row {
    Names Folders;
    Names Libraries;
};
using Table = std::map<std::string, Row>;

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

/// Rows look like: | `folder` | `folder`, `folder` | `library` | what it holds |
Table ReadTable(const std::string& page) {
    static const std::regex row(R"(\| `([^`|]+)` \|([^|]*)\|([^|]*)\|.*)");
    Table table;
    std::istringstream lines(page.substr(std::min(page.find("## Folders and arrows"), page.size())));
    std::string line;
    std::getline(lines, line);
    std::smatch cells;
    while (std::getline(lines, line) && !line.starts_with("## "))
        if (std::regex_match(line, cells, row))
            table[cells[1]] = {QuotedNames(cells[2]), QuotedNames(cells[3])};
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

/// What a node points to, directly and from there on.
Names Reached(const Graph& graph, const std::string& from) {
    Names reached;
    std::vector<std::string> ahead = {from};
    while (!ahead.empty()) {
        const auto node = graph.find(ahead.back());
        ahead.pop_back();
        if (node != graph.end()) {
            for (const std::string& target : node->second)
                if (reached.insert(target).second)
                    ahead.push_back(target);
        }
    }
    return reached;
}

/// The sets of nodes that lead to each other.
std::set<Names> Circles(const Graph& graph) {
    Graph reached;
    for (const auto& [name, targets] : graph)
        reached[name] = Reached(graph, name);
    std::set<Names> circles;
    for (const auto& [name, targets] : reached) {
        Names circle;
        for (const std::string& target : targets)
            if (reached.contains(target) && reached.at(target).contains(name))
                circle.insert(target);
        if (!circle.empty())
            circles.insert(circle);
    }
    return circles;
}

std::string Join(const Names& names) {
    std::string joined;
    for (const std::string& name : names)
        joined += (joined.empty() ? "" : ", ") + name;
    return joined;
}

class Check {
  public:
    Check(const Table& table, const Files& files) : table_(table), files_(files) {
        for (const auto& [path, text] : files) {
            used_.try_emplace(FolderOf(path));
            for (const std::string& include : IncludesOf(text))
                Include(path, include);
        }
        CompareTable();
        Graph arrows;
        for (const auto& [folder, row] : table)
            arrows[folder] = row.Folders;
        NoCircles("folders", arrows);
        NoCircles("files", units_);
    }

    std::vector<std::string> Complaints;

  private:
    void Include(const std::string& path, const std::string& include) {
        const std::string name = include.substr(1, include.size() - 2);
        const std::string folder = FolderOf(path);
        const auto row = table_.find(folder);
        if (files_.contains(name)) {
            const std::string target = FolderOf(name);
            if (UnitOf(name) != UnitOf(path))
                units_[UnitOf(path)].insert(UnitOf(name));
            if (target == folder)
                return;
            used_[folder].Folders.insert(target);
            if (row != table_.end() && !row->second.Folders.contains(target)) {
                Complaints.push_back(path + " includes " + name + ", but the table has no arrow from " +
                                     folder + " to " + target);
            }
        } else if (include.front() == '"') {
            Complaints.push_back(path + " includes " + name + ", which is no file of src");
        }
        for (const auto& [beginning, library] : libraries) {
            if (name.starts_with(beginning)) {
                used_[folder].Libraries.insert(library);
                if (row != table_.end() && !row->second.Libraries.contains(library)) {
                    Complaints.push_back(path + " includes " + name + ", but " + folder + " must not know " +
                                         library);
                }
            }
        }
    }

    void CompareTable() {
        for (const auto& [folder, row] : used_)
            if (!table_.contains(folder))
                Complaints.push_back("the table has no row for " + folder);
        for (const auto& [folder, row] : table_) {
            if (!used_.contains(folder)) {
                Complaints.push_back("the table has a row for " + folder + ", which is no folder of src");
                continue;
            }
            Unused(folder, row.Folders, used_[folder].Folders);
            Unused(folder, row.Libraries, used_[folder].Libraries);
        }
    }

    void Unused(const std::string& folder, const Names& allowed, const Names& used) {
        for (const std::string& name : allowed) {
            if (!used.contains(name)) {
                Complaints.push_back("nothing in " + folder + " includes " + name +
                                     ", but the table says so");
            }
        }
    }

    void NoCircles(const std::string& what, const Graph& graph) {
        for (const Names& circle : Circles(graph))
            Complaints.push_back("these " + what + " include each other in a circle: " + Join(circle));
    }

    const Table& table_;
    const Files& files_;
    Table used_;
    Graph units_;
};

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
    const Files files = {{"low/A.h", "#include <vector>\n"},
                         {"low/A.cpp", "#include \"low/A.h\"\n"},
                         {"high/B.h", "#include \"low/A.h\"\n#include <QString>\n"}};
    const auto complaints = [](const std::string& pageRows, Files changed, const Files& original) {
        changed.insert(original.begin(), original.end());
        return Check(ReadTable(Page(pageRows)), changed).Complaints;
    };
    EXPECT_THAT(complaints(rows, {}, files), IsEmpty());

    const struct {
        std::string Rows;
        Files Changed;
        std::string Complaint;
    } breaches[] = {
        {rows, {{"low/A.cpp", " # include <high/C.h>\n"}, {"high/C.h", ""}}, "no arrow from low to high"},
        {rows, {{"low/A.cpp", "#include \"A.h\"\n"}}, "low/A.cpp includes A.h, which is no file of src"},
        {rows, {{"low/A.cpp", "#include <QtCore/QString>\n"}}, "low must not know Qt"},
        {rows, {{"low/A.cpp", "#include <nlohmann/json.hpp>\n"}}, "low must not know nlohmann_json"},
        {rows, {{"high/B.h", "#include <QString>\n"}}, "nothing in high includes low"},
        {rows, {{"high/B.h", "#include \"low/A.h\"\n"}}, "nothing in high includes Qt"},
        {rows, {{"new/N.h", ""}}, "no row for new"},
        {rows + "| `gone` | – | – | x |\n", {}, "gone, which is no folder of src"},
        {"| `low` | `high` | – | x |\n| `high` | `low` | `Qt` | x |\n",
         {{"low/A.cpp", "#include \"high/C.h\"\n"}, {"high/C.h", ""}},
         "these folders include each other in a circle: high, low"},
        {rows,
         {{"low/A.cpp", "#include \"low/Z.h\"\n"}, {"low/Z.h", ""}, {"low/Z.cpp", "#include \"low/A.h\"\n"}},
         "these files include each other in a circle: low/A, low/Z"},
    };
    for (const auto& [pageRows, changed, complaint] : breaches)
        EXPECT_THAT(complaints(pageRows, changed, files), ElementsAre(HasSubstr(complaint)));
}

TEST(Includes, FollowTheArchitecturePage) {
    const std::filesystem::path project = VEK_SOURCE_FOLDER;
    Files files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(project / "src"))
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")
            files[entry.path().lexically_relative(project / "src").generic_string()] = TextOf(entry.path());
    const Table table = ReadTable(TextOf(project / "docs" / "architecture.md"));
    EXPECT_THAT(Check(table, files).Complaints, IsEmpty());
}

} // namespace
