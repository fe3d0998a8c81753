#include "base/Errors.h"
#include "model/EnableMenus.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

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

/// The functions that the caption of an entry speaks of, first and last.
std::pair<std::size_t, std::size_t> Meant(const EnableMenuEntry& entry, AddressGroup group) {
    const std::size_t last = FunctionCount(group) - 1;
    const std::size_t lastInput = last / 2;
    if (entry.Name == "mnuHiddenOuputDeSelectOutputs")
        return {lastInput, last}; // with the last input function, as installers know it
    if (entry.Caption.ends_with("this function"))
        return {clickedFunction, clickedFunction};
    if (entry.Caption.ends_with("inputs"))
        return {0, lastInput};
    return {entry.Caption.ends_with("outputs") ? lastInput + 1 : 0, last};
}

} // namespace

TEST(EnableMenus, EveryEntryDoesWhatItsCaptionSays) {
    std::set<std::string_view> names;
    std::string captions, separators;
    for (const EnableMenu& menu : EnableMenus()) {
        for (const EnableSubmenu& submenu : menu.Submenus) {
            (captions += submenu.Caption) += ": ";
            for (const EnableMenuEntry& entry : submenu.Entries) {
                (captions += entry.Caption) += ", ";
                names.insert(entry.Name);
                const bool enable = entry.Caption.starts_with("Enable ");
                AddressEnables expected = AllSetTo(!enable);
                const auto [first, last] = Meant(entry, menu.Group);
                for (std::size_t output = 0; output < outputCount; ++output) {
                    if (submenu.Caption == "This Output Only" && output != currentOutput)
                        continue;
                    for (std::size_t function = first; function <= last; ++function)
                        AddressFlag(expected, menu.Group, function, output) = ToFlag(enable);
                }
                AddressEnables enables = AllSetTo(!enable);
                ApplyMenuEntry(enables, menu.Group, entry, currentOutput, clickedFunction);
                EXPECT_EQ(enables, expected) << entry.Name;
            }
            for (const std::string_view name : submenu.SeparatorNames)
                (separators += name) += ' ';
        }
    }
    EXPECT_EQ(names.size(), 48U);
    const std::string disableAllAndSoOn =
        "Disable all, Enable all inputs, Disable all inputs, Enable all outputs, Disable all outputs, ";
    const std::string mode = ": Enable all, " + disableAllAndSoOn;
    const std::string allOutputs = "All Outputs: Enable this function, Disable this function, Enable all, ";
    const std::string both = allOutputs + disableAllAndSoOn + "This Output Only" + mode;
    EXPECT_EQ(captions, mode + both + both + allOutputs + disableAllAndSoOn +
                            "This Output Only: Enable All, " + disableAllAndSoOn);
    EXPECT_EQ(separators,
              "mnuspace1 mnuspace2 mnuspace3 mnuspace4 mnuspace5 mnuspace6 mnuspace7 mnuspace10 mnuspace11 "
              "mnuspace12 mnuspace13 mnuspace20 mnuspace30 mnuspace31 mnuspace32 mnuspace33 mnuspace34 ");
}

TEST(EnableMenus, AFunctionOutsideTheGroupIsRefused) {
    AddressEnables enables;
    const EnableMenu& volumes = EnableMenus()[1];
    const EnableMenuEntry& thisFunction = volumes.Submenus[0].Entries[0];
    EXPECT_THROW(ApplyMenuEntry(enables, volumes.Group, thisFunction, 0, 8), SubscriptError);
    EXPECT_EQ(enables, AddressEnables());
}
