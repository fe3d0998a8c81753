// Values of the configuration in words for the user. Values that are stored differently have different texts,
// so that comparing texts compares values.
#pragma once

#include "inspect/NumberLists.h"
#include "model/Config.h"

#include <string>
#include <string_view>

namespace vek {

/// "+6dB" with 7 digits, with as many as it takes where these do not give the very number.
std::string ExactLevelText(float level);

/// One of the two words, with the stored number in brackets when it is neither -1 nor 0: "yes (5)".
std::string FlagText(Flag flag, std::string_view set, std::string_view notSet);

/// "1,2,A", "OFF" for input 0, "none" for an empty list; small letters as the panels that they are, with the
/// stored text in brackets: "1,A ("1a")". In quotes whatever is no list.
std::string ListText(std::string_view padded, const NumberCharacters& numbers);

/// The text with every line feed after a carriage return.
std::string WithCrLf(std::string_view text);

/// "none" or the number.
std::string LinkGroupText(int group);

/// Windows-1252 bytes as UTF-8, control characters and backslashes escaped: "\x0D".
std::string EscapedText(std::string_view bytes);

/// The same in double quotes, those inside escaped.
std::string QuotedText(std::string_view bytes);

} // namespace vek
