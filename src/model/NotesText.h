// The notes as lines, whatever their line ends.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vek {

struct NotesLine {
    std::string_view Text;
    std::string_view End; ///< CR LF, CR or LF; empty for the last line
};

/// At least one; a text that ends in a line end has an empty last line. Refers to the text.
std::vector<NotesLine> NotesLines(std::string_view text);

/// How a line ends that is new among these: in CR LF, or as they do when none of them ends in CR LF.
std::string_view NewLineEnd(const std::vector<NotesLine>& lines);

/// The edited text, whose lines are separated by LF, with the line ends (CR LF, CR or LF) that its lines have
/// in the stored text. Lines are told apart by what is equal before and after the edited ones. New lines end
/// in CR LF, or as the stored ones do when none of those ends in CR LF.
std::string WithLineEndsOf(std::string_view stored, std::string_view edited);

} // namespace vek
