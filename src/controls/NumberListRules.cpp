#include "controls/NumberListRules.h"

#include "model/Panels.h"

#include <algorithm>

namespace vek {

namespace {

constexpr std::size_t longestTypedPanels = 4;

char16_t UpperCase(char16_t key) {
    return key >= u'a' && key <= u'z' ? static_cast<char16_t>(key - u'a' + u'A') : key;
}

bool IsAscii(char16_t key) { return key < 0x80; }

bool IsRepeated(char16_t key, std::u16string_view rest) {
    return std::any_of(rest.begin(), rest.end(),
                       [key](char16_t c) { return UpperCase(c) == UpperCase(key); });
}

KeyVerdict CheckInput(char16_t key, std::u16string_view rest) {
    const bool full = rest.size() >= static_cast<std::size_t>(LongestList(NumberList::InputSequence));
    const bool accept = IsInputChar(static_cast<char>(key)) && !full && !IsRepeated(key, rest);
    return accept ? KeyVerdict::Accept : KeyVerdict::Discard;
}

KeyVerdict CheckPanel(NumberList list, char16_t key, std::u16string_view rest, const TakenMarks& taken) {
    const auto character = static_cast<char>(key);
    const bool full = rest.size() >= longestTypedPanels;
    // A full list of selector panels still says whose panel was typed, a full list of volume panels does not.
    if (!IsPanelChar(character) || (full && list == NumberList::VolumePanels))
        return KeyVerdict::Discard;
    if (taken[PanelCharToIndex(character)])
        return KeyVerdict::Taken;
    return full || IsRepeated(key, rest) ? KeyVerdict::Discard : KeyVerdict::Accept;
}

} // namespace

int LongestList(NumberList list) {
    return static_cast<int>(list == NumberList::InputSequence ? inputCharacters.size() : panelCount);
}

KeyVerdict CheckListKey(NumberList list, char16_t key, std::u16string_view rest, const TakenMarks& taken) {
    if (!IsAscii(key))
        return KeyVerdict::Discard;
    return list == NumberList::InputSequence ? CheckInput(key, rest) : CheckPanel(list, key, rest, taken);
}

std::u16string OrderedList(NumberList list, std::u16string_view text) {
    std::u16string ordered(text);
    std::transform(ordered.begin(), ordered.end(), ordered.begin(), UpperCase);
    if (list != NumberList::InputSequence)
        std::sort(ordered.begin(), ordered.end());
    return ordered;
}

} // namespace vek
