// Which characters a list of inputs or remote panels takes, and how it is put in order.
#pragma once

#include "model/Panels.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace vek {

/// For each panel index 0 … 15 the number 1 … 8 of the other output that already uses it.
using TakenMarks = std::array<std::optional<int>, panelCount>;

enum class KeyVerdict {
    Accept,
    Discard,
    Taken, ///< the panel belongs to another output
};

/// The longest list that a record can hold: 9 inputs or 16 panels.
int LongestList(NumberList list);

/// Decides whether a typed character may join the list. At most 9 inputs or 4 panels can be typed, none
/// twice; letters count the same in either case.
KeyVerdict CheckListKey(NumberList list, char16_t key, std::u16string_view rest, const TakenMarks& taken);

/// The list in upper case; panels in ascending order, inputs in the user's order.
std::u16string OrderedList(NumberList list, std::u16string_view text);

} // namespace vek
