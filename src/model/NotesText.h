// The notes as lines, whatever their line ends.
#pragma once

#include <string>
#include <string_view>

namespace vek {

/// The edited text, whose lines are separated by LF, with the line ends (CR LF, CR or LF) that its lines have
/// in the stored text. Lines are told apart by what is equal before and after the edited ones. New lines end
/// in CR LF, or as the stored ones do when none of those ends in CR LF.
std::string WithLineEndsOf(std::string_view stored, std::string_view edited);

} // namespace vek
