#include "model/NotesText.h"

#include <algorithm>
#include <vector>

namespace vek {

namespace {

constexpr std::string_view usualEnd = "\r\n";

} // namespace

std::vector<NotesLine> NotesLines(std::string_view text) {
    std::vector<NotesLine> lines;
    for (;;) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        const std::size_t length = text.substr(end).starts_with(usualEnd) ? 2 : end < text.size() ? 1 : 0;
        lines.push_back({text.substr(0, end), text.substr(end, length)});
        if (length == 0)
            return lines;
        text.remove_prefix(end + length);
    }
}

std::string_view NewLineEnd(const std::vector<NotesLine>& lines) {
    const bool usual =
        lines.size() == 1 || std::ranges::find(lines, usualEnd, &NotesLine::End) != lines.end();
    return usual ? usualEnd : lines.front().End;
}

std::string WithLineEndsOf(std::string_view stored, std::string_view edited) {
    const std::vector<NotesLine> before = NotesLines(stored);
    const std::vector<NotesLine> after = NotesLines(edited);
    const std::size_t fewer = std::min(before.size(), after.size());
    std::size_t same = 0; // lines at the end
    while (same < fewer && before[before.size() - 1 - same].Text == after[after.size() - 1 - same].Text)
        ++same;

    const std::string_view newEnd = NewLineEnd(before);
    std::string text;
    for (std::size_t line = 0; line < after.size(); ++line) {
        const std::size_t left = after.size() - line;
        const std::size_t former = left <= same ? before.size() - left : line;
        const bool known = left <= same || line < before.size() - same;
        text += after[line].Text;
        if (left > 1)
            text += known && !before[former].End.empty() ? before[former].End : newEnd;
    }
    return text;
}

} // namespace vek
