#include "reports/ExportNames.h"

#include <algorithm>

namespace vek {

namespace {

constexpr std::ptrdiff_t shortestName = 5;
constexpr int replacedCharacters = 3;

/// Every byte of UTF-8 but the continuation bytes begins a character.
bool BeginsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

} // namespace

std::string ProposedExportName(std::string_view currentFileName, std::string_view suffix) {
    if (std::count_if(currentFileName.begin(), currentFileName.end(), BeginsCharacter) < shortestName)
        return {};
    std::size_t kept = currentFileName.size();
    for (int removed = 0; removed < replacedCharacters;) {
        if (BeginsCharacter(currentFileName[--kept]))
            ++removed;
    }
    std::string name(currentFileName.substr(0, kept));
    name += suffix;
    return name;
}

} // namespace vek
