#include "model/Names.h"

#include <gtest/gtest.h>

using namespace vek;

namespace {

using enum NameKind;

TEST(Names, AreLinesOfOneFormInTheNotes) {
    const Names names(
        "Hall, ground floor\r\nInput 1: Lectern\r\n  output\t3 :  Foyer: left \nMODE 2:Joined\rPanel a: "
        "Bar\r\n"
        "Input 1: Desk\r\nInput 2:\r\nInput 2: CD\r\nPanel 9: Door\r\nInput 9: x\r\nOutput 0: x\r\n"
        "Panel H: x\r\nInput1: x\r\nInput 12: x\r\nThe Input 4: x\r\nInput 4 x\r\nInputs 5: x\r\nMode A: x");
    const std::tuple<NameKind, std::size_t, const char*> named[] = {
        {Input, 0, "Lectern"}, {Output, 2, "Foyer: left"}, {Mode, 1, "Joined"},
        {Panel, 9, "Bar"},     {Input, 1, "CD"},           {Panel, 8, "Door"}};
    std::size_t found = 0;
    for (const NameKind kind : nameKinds)
        for (std::size_t i = 0; i < CountOf(kind); ++i)
            found += names.Of(kind, i).empty() ? 0 : 1;
    EXPECT_EQ(found, std::size(named));
    for (const auto& [kind, index, name] : named)
        EXPECT_EQ(names.Of(kind, index), name) << NumberText(kind, index);
    EXPECT_EQ(NumberText(Panel, 15), "Panel G");
    EXPECT_EQ(CountOf(Panel), 16U);
    EXPECT_THROW(names.Of(Input, 99), std::out_of_range);
}

TEST(Names, AreChangedWithoutTouchingOtherLines) {
    const std::tuple<const char*, NameKind, std::size_t, const char*, const char*> cases[] = {
        {"", Input, 0, "Desk", "Input 1: Desk"},
        {"Hall", Input, 0, " Desk ", "Hall\r\nInput 1: Desk"},
        {"Hall\r\n", Input, 0, "Desk", "Hall\r\nInput 1: Desk"},
        {"Mode 1: A\r\nHall\r\n", Panel, 10, "Bar", "Mode 1: A\r\nPanel B: Bar\r\nHall\r\n"},
        {"Hall\nMode 1: A", Mode, 1, "B", "Hall\nMode 1: A\nMode 2: B"},
        {" input  1:A \r\nInput 1: B\r\nHall", Input, 0, "C", "Input 1: C\r\nInput 1: B\r\nHall"},
        {"input 1: A\r\nHall\r\nInput 1: B", Input, 0, "", "Hall"},
        {"Input 1: A", Input, 0, " ", ""},
        {"Hall", Output, 7, "", "Hall"},
        {"", Output, 7, "a\r\nMode 1: b", "Output 8: a  Mode 1: b"},
    };
    for (const auto& [notes, kind, index, name, expected] : cases)
        EXPECT_EQ(WithName(notes, kind, index, name), expected) << notes;
}

} // namespace
