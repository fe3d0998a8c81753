#include "model/Names.h"

#include "model/NotesText.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace vek {

namespace {

constexpr std::string_view blanks = " \t";
constexpr std::string_view oneToEight = "12345678";

struct KindText {
    std::string_view Word;
    std::string_view Numbers; ///< the characters of the numbers, in order
};

constexpr std::array<KindText, nameKinds.size()> kindTexts = {{
    {"Input", oneToEight},
    {"Output", oneToEight},
    {"Mode", oneToEight},
    {"Panel", panelCharacters},
}};

const KindText& TextOf(NameKind kind) { return kindTexts.at(static_cast<std::size_t>(kind)); }

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameLetter(char a, char b) { return Lower(a) == Lower(b); }

std::string_view WithoutBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

struct NameLine {
    NameKind Kind;
    std::size_t Index;
    std::string_view Name; ///< not empty
};

std::optional<NameLine> ReadNameLine(std::string_view line) {
    const std::size_t colon = line.find(':');
    if (colon == line.npos)
        return std::nullopt;
    const std::string_view name = WithoutBlanks(line.substr(colon + 1));
    const std::string_view numbered = WithoutBlanks(line.substr(0, colon));
    const std::string_view word = numbered.substr(0, numbered.find_first_of(blanks));
    const std::string_view number = WithoutBlanks(numbered.substr(word.size()));
    if (name.empty() || number.size() != 1)
        return std::nullopt;
    for (const NameKind kind : nameKinds) {
        const KindText& text = TextOf(kind);
        const auto isNumber = [&number](char known) { return SameLetter(known, number.front()); };
        const auto found = std::ranges::find_if(text.Numbers, isNumber);
        if (std::ranges::equal(word, text.Word, SameLetter) && found != text.Numbers.end())
            return NameLine{kind, static_cast<std::size_t>(found - text.Numbers.begin()), name};
    }
    return std::nullopt;
}

std::string OneLine(std::string_view name) {
    std::string line(name);
    std::ranges::replace_if(
        line, [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return std::string(WithoutBlanks(line));
}

std::string Joined(const std::vector<NotesLine>& lines) {
    std::string text;
    for (const NotesLine& line : lines)
        (text += line.Text) += line.End;
    return text;
}

/// The last of the lines has no end, so the one before it becomes the last.
void Remove(std::vector<NotesLine>& lines, std::size_t index) {
    lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(index));
    if (lines.empty())
        lines.emplace_back();
    lines.back().End = {};
}

void Insert(std::vector<NotesLine>& lines, std::size_t index, std::string_view text) {
    const std::string_view end = NewLineEnd(lines);
    if (index < lines.size()) {
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(index), {text, end});
        return;
    }
    // Behind a line end that nothing follows there is room already.
    if (!lines.back().Text.empty()) {
        lines.back().End = end;
        lines.emplace_back();
    }
    lines.back().Text = text;
}

} // namespace

std::size_t CountOf(NameKind kind) { return TextOf(kind).Numbers.size(); }

std::string NumberText(NameKind kind, std::size_t index) {
    const KindText& text = TextOf(kind);
    return std::string(text.Word) + ' ' + text.Numbers.at(index);
}

Names::Names(std::string_view notes) {
    for (const NotesLine& line : NotesLines(notes)) {
        const auto found = ReadNameLine(line.Text);
        if (!found)
            continue;
        std::string& name = names_[static_cast<std::size_t>(found->Kind)].at(found->Index);
        if (name.empty())
            name = found->Name;
    }
}

const std::string& Names::Of(NameKind kind, std::size_t index) const {
    return names_.at(static_cast<std::size_t>(kind)).at(index);
}

std::string WithName(std::string_view notes, NameKind kind, std::size_t index, std::string_view name) {
    const std::string given = OneLine(name);
    const std::string text = NumberText(kind, index) + ": " + given;
    std::vector<NotesLine> lines = NotesLines(notes);
    std::size_t behindNames = lines.size();
    bool written = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto found = ReadNameLine(lines[i].Text);
        if (!found)
            continue;
        behindNames = i + 1;
        if (found->Kind != kind || found->Index != index)
            continue;
        if (given.empty()) {
            Remove(lines, i--);
        } else if (!written) {
            lines[i].Text = text;
            written = true;
        }
    }
    if (!written && !given.empty())
        Insert(lines, behindNames, text);
    return Joined(lines);
}

} // namespace vek
