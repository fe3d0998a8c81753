#include "base/Errors.h"
#include "model/EnableMenus.h"

#include <gtest/gtest.h>
#include <set>

using namespace vek;

TEST(VekNetAddresses, OffsetsOfFunctions) {
    const struct {
        AddressGroup group;
        std::size_t function;
        std::size_t output;
        int offset;
    } cases[] = {{AddressGroup::Mode, 0, 5, 0},           {AddressGroup::Mode, 15, 0, 15},
                 {AddressGroup::Volume, 0, 0, 16},        {AddressGroup::Volume, 3, 7, 47},
                 {AddressGroup::Volume, 4, 1, 52},        {AddressGroup::Volume, 7, 7, 79},
                 {AddressGroup::Route, 0, 1, 88},         {AddressGroup::Route, 15, 7, 207},
                 {AddressGroup::RouteControl, 2, 7, 231}, {AddressGroup::RouteControl, 3, 0, 232},
                 {AddressGroup::RouteControl, 5, 7, 255}};
    for (const auto& c : cases)
        EXPECT_EQ(AddressOffset(c.group, c.function, c.output), c.offset);
    EXPECT_THROW(AddressOffset(AddressGroup::Volume, 8, 0), SubscriptError);
    AddressEnables enables;
    EXPECT_THROW(AddressFlag(enables, AddressGroup::Route, 0, 8), SubscriptError);
}

TEST(EnableMenus, FortyEightEntriesWithNamesOfTheirOwn) {
    std::set<std::string_view> names;
    std::size_t entries = 0;
    std::size_t separators = 0;
    for (const EnableMenu& menu : EnableMenus()) {
        for (const EnableSubmenu& submenu : menu.Submenus) {
            EXPECT_EQ(submenu.SeparatorNames.size(), submenu.Entries.size() / 2 - 1) << submenu.Name;
            separators += submenu.SeparatorNames.size();
            for (const EnableMenuEntry& entry : submenu.Entries) {
                names.insert(entry.Name);
                ++entries;
                EXPECT_LT(entry.Last, FunctionCount(menu.Group)) << entry.Name;
                EXPECT_EQ(entry.Enable, entry.Caption.starts_with("Enable")) << entry.Name;
            }
        }
    }
    EXPECT_EQ(entries, 48U);
    EXPECT_EQ(names.size(), 48U);
    EXPECT_EQ(separators, 17U);
}

namespace {

const EnableMenuEntry& Entry(std::string_view name) {
    for (const EnableMenu& menu : EnableMenus()) {
        for (const EnableSubmenu& submenu : menu.Submenus) {
            for (const EnableMenuEntry& entry : submenu.Entries) {
                if (entry.Name == name)
                    return entry;
            }
        }
    }
    throw std::out_of_range(std::string(name));
}

template <typename Flags>
std::string Picture(const Flags& flags) {
    std::string picture;
    for (const Flag flag : flags)
        picture += IsSet(flag) ? '1' : '.';
    return picture;
}

} // namespace

TEST(EnableMenus, EntriesSetTheirFlagsAndNoOthers) {
    AddressEnables enables;
    ApplyMenuEntry(enables, AddressGroup::RouteControl, Entry("mnuHiddenGlobalSelectsAllEnableOne"), 2, 4);
    for (const auto& flags : enables.RouteControlAddressEnable)
        EXPECT_EQ(Picture(flags), "....1.");

    ApplyMenuEntry(enables, AddressGroup::Route, Entry("mnuHiddenOuputSelectAll"), 3, 0);
    ApplyMenuEntry(enables, AddressGroup::Route, Entry("mnuHiddenOuputDeSelectOutputs"), 3, 0);
    EXPECT_EQ(Picture(enables.RouteAddressEnable[3]), "1111111.........") << "one more than its partner sets";
    EXPECT_EQ(Picture(enables.RouteAddressEnable[2]), "................");
    ApplyMenuEntry(enables, AddressGroup::Route, Entry("mnuHiddenOuputAllSelectAl"), 3, 0);
    ApplyMenuEntry(enables, AddressGroup::Route, Entry("mnuHiddenOuputAllDeSelectOutputs"), 3, 0);
    EXPECT_EQ(Picture(enables.RouteAddressEnable[0]), "11111111........");

    ApplyMenuEntry(enables, AddressGroup::Volume, Entry("mnuHiddenMenuVekNetVolumeThisOneEnableAllOutputs"),
                   7, 0);
    EXPECT_EQ(Picture(enables.VolumeAddressEnable[7]), "....1111");
    EXPECT_EQ(Picture(enables.VolumeAddressEnable[6]), "........");
    ApplyMenuEntry(enables, AddressGroup::Mode, Entry("mnuHiddenModeVekNetEnableOut"), 0, 0);
    EXPECT_EQ(Picture(enables.ModeAddressEnable), "........11111111");
    EXPECT_THROW(ApplyMenuEntry(enables, AddressGroup::Volume,
                                Entry("mnuHiddenMenuVekNetVolumeAllEnableThisOne"), 0, 9),
                 SubscriptError);
}
