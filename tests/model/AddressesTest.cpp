#include "base/Errors.h"
#include "model/EnableMenus.h"

#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

using namespace vek;

TEST(VekNetAddresses, OffsetsOfFunctions) {
    using enum AddressGroup;
    const std::tuple<AddressGroup, std::size_t, std::size_t, int> cases[] = {
        {Mode, 0, 5, 0},           {Mode, 15, 0, 15},         {Volume, 0, 0, 16},       {Volume, 3, 7, 47},
        {Volume, 4, 1, 52},        {Volume, 7, 7, 79},        {Route, 0, 1, 88},        {Route, 15, 7, 207},
        {RouteControl, 2, 7, 231}, {RouteControl, 3, 0, 232}, {RouteControl, 5, 7, 255}};
    for (const auto& [group, function, output, offset] : cases)
        EXPECT_EQ(AddressOffset(group, function, output), offset);
    EXPECT_THROW(AddressOffset(AddressGroup::Volume, 8, 0), SubscriptError);
    AddressEnables enables;
    EXPECT_THROW(AddressFlag(enables, AddressGroup::Route, 0, 8), SubscriptError);
}

namespace {

AddressEnables AllSetTo(bool value) {
    AddressEnables enables;
    enables.ModeAddressEnable.fill(ToFlag(value));
    for (std::size_t output = 0; output < outputCount; ++output) {
        enables.VolumeAddressEnable[output].fill(ToFlag(value));
        enables.RouteControlAddressEnable[output].fill(ToFlag(value));
        enables.RouteAddressEnable[output].fill(ToFlag(value));
    }
    return enables;
}

constexpr std::size_t currentOutput = 5;
constexpr std::size_t clickedFunction = 4;

/// Whether the words of an entry speak of a function: "this function", "all", "all inputs" or "all outputs".
bool Means(std::string_view words, std::string_view name, std::size_t function, AddressGroup group) {
    const std::size_t firstOutputFunction = FunctionCount(group) / 2;
    if (name == "mnuHiddenOuputDeSelectOutputs")
        return function + 1 >= firstOutputFunction; // with the last input function, as installers know it
    if (words == "this function")
        return function == clickedFunction;
    if (words == "all inputs")
        return function < firstOutputFunction;
    if (words == "all outputs")
        return function >= firstOutputFunction;
    return words == "all" || name == "mnuHiddenOuputSelectAll";
}

void ExpectEntryDoesWhatItSays(const EnableMenu& menu, const EnableSubmenu& submenu,
                               const EnableMenuEntry& entry, std::string_view words, bool enable) {
    AddressEnables expected = AllSetTo(!enable);
    for (std::size_t output = 0; output < outputCount; ++output) {
        if (submenu.Caption == "This Output Only" && output != currentOutput)
            continue;
        for (std::size_t function = 0; function < FunctionCount(menu.Group); ++function) {
            if (Means(words, entry.Name, function, menu.Group))
                AddressFlag(expected, menu.Group, function, output) = ToFlag(enable);
        }
    }
    AddressEnables enables = AllSetTo(!enable);
    ApplyMenuEntry(enables, menu.Group, entry, currentOutput, clickedFunction);
    EXPECT_EQ(enables, expected) << entry.Name;
}

} // namespace

TEST(EnableMenus, EveryEntryDoesWhatItsCaptionSays) {
    const std::vector<std::string> withoutClick = {"all", "all inputs", "all outputs"};
    const std::vector<std::string> withClick = {"this function", "all", "all inputs", "all outputs"};
    std::set<std::string_view> names;
    std::string separators;
    std::string captions;
    for (const EnableMenu& menu : EnableMenus()) {
        for (const EnableSubmenu& submenu : menu.Submenus) {
            captions += std::string(submenu.Caption) + ',';
            const auto& words = submenu.Caption == "All Outputs" ? withClick : withoutClick;
            ASSERT_EQ(submenu.Entries.size(), 2 * words.size()) << submenu.Name;
            for (std::size_t i = 0; i < submenu.Entries.size(); ++i) {
                const EnableMenuEntry& entry = submenu.Entries[i];
                const bool enable = i % 2 == 0;
                const bool bigAll = entry.Name == "mnuHiddenOuputSelectAll";
                EXPECT_EQ(entry.Caption, (enable ? "Enable " : "Disable ") + (bigAll ? "All" : words[i / 2]));
                ExpectEntryDoesWhatItSays(menu, submenu, entry, words[i / 2], enable);
                names.insert(entry.Name);
            }
            EXPECT_EQ(submenu.SeparatorNames.size(), words.size() - 1) << submenu.Name;
            for (const std::string_view name : submenu.SeparatorNames)
                separators += name.substr(std::string_view("mnuspace").size()), separators += ' ';
        }
    }
    EXPECT_EQ(names.size(), 48U);
    EXPECT_EQ(captions,
              ",All Outputs,This Output Only,All Outputs,This Output Only,All Outputs,This Output Only,");
    EXPECT_EQ(separators, "1 2 3 4 5 6 7 10 11 12 13 20 30 31 32 33 34 ");
}

TEST(EnableMenus, AFunctionOutsideTheGroupIsRefused) {
    AddressEnables enables;
    const EnableMenu& volumes = EnableMenus()[1];
    const EnableMenuEntry& thisFunction = volumes.Submenus[0].Entries[0];
    EXPECT_THROW(ApplyMenuEntry(enables, volumes.Group, thisFunction, 0, 8), SubscriptError);
    EXPECT_EQ(enables, AddressEnables());
}
