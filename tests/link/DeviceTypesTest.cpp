#include "link/DeviceTypes.h"

#include "base/Errors.h"

#include "support/MemoryStore.h"

#include <gtest/gtest.h>
#include <set>

using namespace vek;
using namespace vek::test;

namespace {

constexpr const char* root = "Software\\Vorn\\Vekules\\Types";
std::string Subkey(const std::string& name) { return (std::string(root) += '\\') += name; }

RegistryValue Number(std::uint32_t value) { return value; }
RegistryValue Text(const char* value) { return std::string(value); }

using Values = std::map<std::string, RegistryValue>;

void Put(RegistryStore& store, const std::string& key, const Values& values) {
    store.CreateKey(key);
    for (const auto& [name, value] : values)
        store.Set(key, name, value);
}

} // namespace

TEST(DeviceTypes, AStoreWithoutTheListIsSeededAndReadBack) {
    MemoryStore store;
    DeviceTypeList types;
    CheckDeviceTypes(store, types);
    std::set<int> replies;
    for (const DeviceType& type : types)
        replies.insert(type.Reply);
    EXPECT_EQ(replies.size(), 31U) << "every device once";
    ASSERT_NE(FindDeviceType(types, 39), nullptr);
    EXPECT_EQ(*FindDeviceType(types, 39), (DeviceType{29, 39, "Matrix Vek", "Matrix Boot"}));
    EXPECT_EQ(FindDeviceType(types, 99), nullptr);
    EXPECT_TRUE(store.Flushed);
    EXPECT_EQ(store.Query(root, "Version"), Number(17));
    EXPECT_EQ(store.Query(Subkey("28"), "Type"), Number(29));
    EXPECT_EQ(store.Query(Subkey("28"), "Name"), Text("Matrix Vek"));

    DeviceTypeList again;
    CheckDeviceTypes(store, again);
    ASSERT_EQ(again.size(), 31U);
    EXPECT_EQ(again[2], types[10]) << "subkeys come in the order of their names";
}

TEST(DeviceTypes, TheVersionDecides) {
    const struct {
        Values version;
        std::size_t size; ///< of the list: the catalogue, the store's own, none
    } cases[] = {{{{"Version", Number(16)}}, 31}, {{{"Version", Number(0x80000000U)}}, 31},
                 {{{"Version", Number(17)}}, 1},  {{{"Version", Number(18)}}, 1},
                 {{{"Version", Text("17")}}, 0},  {{}, 0}};
    for (const auto& c : cases) {
        MemoryStore store;
        DeviceTypeList types = {{1, 1, "left over", ""}};
        Put(store, root, c.version);
        Put(store, Subkey("Z"), {{"Type", Number(5)}});
        CheckDeviceTypes(store, types);
        EXPECT_EQ(types.size(), c.size);
        EXPECT_TRUE(store.KeyExists(Subkey("Z"))) << "seeding adds, it deletes nothing";
    }
}

TEST(DeviceTypes, ReadingAnEntryStopsAtItsFirstBadValue) {
    MemoryStore store;
    DeviceTypeList types;
    Put(store, root, {{"Version", Number(17)}});
    CheckDeviceTypes(store, types);
    EXPECT_EQ(types, DeviceTypeList(1)) << "a list without types has one empty entry";

    const RegistryValue x = Text("x");
    const std::pair<Values, DeviceType> cases[] = {
        {{{"Reply", Number(7)}, {"Name", x}}, {0, 0, "", ""}},
        {{{"Type", Number(255)}, {"Reply", Text("7")}, {"Name", x}}, {255, 0, "", ""}},
        {{{"Type", Number(1)}, {"Reply", Number(7)}, {"Name", Number(1)}, {"BootName", x}}, {1, 7, "", ""}},
        {{{"Type", Number(1)}, {"Reply", Number(8)}, {"Name", Text("")}, {"BootName", x}}, {1, 8, "", ""}},
        {{{"Type", Number(1)}, {"Reply", Number(9)}, {"Name", std::string("a\0b", 3)}, {"BootName", x}},
         {1, 9, "a", "x"}},
    };
    DeviceTypeList expected;
    for (const auto& [values, entry] : cases) {
        Put(store, Subkey(std::to_string(expected.size())), values);
        expected.push_back(entry);
    }
    CheckDeviceTypes(store, types);
    EXPECT_EQ(types, expected);

    Put(store, Subkey("5"), {{"Type", Number(1)}, {"Reply", Number(256)}});
    EXPECT_THROW(CheckDeviceTypes(store, types), OverflowError);
    EXPECT_EQ(types[4], expected[4]) << "what was read before is kept";
}
