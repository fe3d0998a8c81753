#include "link/DeviceTypes.h"

#include "base/Errors.h"

#include <gtest/gtest.h>
#include <map>
#include <set>

using namespace vek;

namespace {

using Values = std::map<std::string, RegistryValue, std::less<>>;

class MemoryStore : public RegistryStore {
  public:
    std::map<std::string, Values, std::less<>> Keys;
    int Flushes = 0;

    bool KeyExists(std::string_view key) const override { return Keys.contains(key); }
    void CreateKey(std::string_view key) override { Keys[std::string(key)]; }
    std::vector<std::string> SubkeyNames(std::string_view key) const override {
        std::vector<std::string> names;
        for (auto below = Keys.upper_bound(key); below != Keys.end(); ++below)
            names.push_back(below->first.substr(key.size() + 1));
        return names;
    }
    std::optional<RegistryValue> Query(std::string_view key, std::string_view name) const override {
        const auto found = Keys.find(key);
        if (found == Keys.end() || !found->second.contains(name))
            return std::nullopt;
        return found->second.find(name)->second;
    }
    void Set(std::string_view key, std::string_view name, RegistryValue value) override {
        Keys.find(key)->second[std::string(name)] = std::move(value);
    }
    void Flush() override { ++Flushes; }
};

constexpr const char* root = "Software\\Vorn\\Vekules\\Types";
std::string Subkey(const std::string& name) { return (std::string(root) += '\\') += name; }

RegistryValue Number(std::uint32_t value) { return value; }
RegistryValue Text(const char* value) { return std::string(value); }

struct DeviceTypesTest : testing::Test {
    MemoryStore store;
    DeviceTypeList types = {{1, 1, "left over", ""}};
};

} // namespace

TEST_F(DeviceTypesTest, AStoreWithoutTheListIsSeededAndReadBack) {
    CheckDeviceTypes(store, types);
    std::set<int> replies;
    for (const DeviceType& type : types)
        replies.insert(type.Reply);
    EXPECT_EQ(replies.size(), 31U) << "every device once";
    ASSERT_NE(FindDeviceType(types, 39), nullptr);
    EXPECT_EQ(*FindDeviceType(types, 39), (DeviceType{29, 39, "Matrix Vek", "Matrix Boot"}));
    EXPECT_EQ(FindDeviceType(types, 99), nullptr);
    EXPECT_EQ(store.Keys.size(), 32U);
    EXPECT_EQ(store.Keys[root]["Version"], Number(17));
    EXPECT_EQ(store.Keys[Subkey("28")], (Values{{"Type", Number(29)},
                                                {"Reply", Number(39)},
                                                {"Name", Text("Matrix Vek")},
                                                {"BootName", Text("Matrix Boot")}}));
    DeviceTypeList again;
    CheckDeviceTypes(store, again);
    ASSERT_EQ(again.size(), 31U);
    EXPECT_EQ(again[2], types[10]) << "subkeys come in the order of their names";
    EXPECT_EQ(store.Flushes, 1);
}

TEST_F(DeviceTypesTest, TheVersionDecides) {
    const struct {
        std::optional<RegistryValue> version;
        std::size_t size; ///< of the list: the catalogue, the store's own, none
    } cases[] = {{Number(16), 31}, {Number(0x80000000U), 31}, {Number(17), 1},
                 {Number(18), 1},  {Text("17"), 0},           {std::nullopt, 0}};
    for (const auto& c : cases) {
        store.Keys = {{root, {}}, {Subkey("Z"), {{"Type", Number(5)}}}};
        if (c.version)
            store.Set(root, "Version", *c.version);
        CheckDeviceTypes(store, types);
        EXPECT_EQ(types.size(), c.size);
        EXPECT_TRUE(store.KeyExists(Subkey("Z"))) << "seeding adds, it deletes nothing";
    }
}

TEST_F(DeviceTypesTest, ReadingAnEntryStopsAtItsFirstBadValue) {
    store.Keys = {{root, {{"Version", Number(17)}}}};
    CheckDeviceTypes(store, types);
    EXPECT_EQ(types, DeviceTypeList(1)) << "a list without types has one empty entry";

    const std::pair<Values, DeviceType> cases[] = {
        {{{"Reply", Number(7)}, {"Name", Text("x")}}, {0, 0, "", ""}},
        {{{"Type", Number(255)}, {"Reply", Text("7")}, {"Name", Text("x")}}, {255, 0, "", ""}},
        {{{"Type", Number(1)}, {"Reply", Number(7)}, {"Name", Number(1)}, {"BootName", Text("x")}},
         {1, 7, "", ""}},
        {{{"Type", Number(1)}, {"Reply", Number(8)}, {"Name", Text("")}, {"BootName", Text("x")}},
         {1, 8, "", ""}},
        {{{"Type", Number(1)},
          {"Reply", Number(9)},
          {"Name", std::string("a\0b", 3)},
          {"BootName", Text("x")}},
         {1, 9, "a", "x"}},
    };
    DeviceTypeList expected;
    for (const auto& [values, entry] : cases) {
        store.Keys[Subkey(std::to_string(expected.size()))] = values;
        expected.push_back(entry);
    }
    CheckDeviceTypes(store, types);
    EXPECT_EQ(types, expected);

    store.Keys[Subkey("5")] = {{"Type", Number(1)}, {"Reply", Number(256)}};
    EXPECT_THROW(CheckDeviceTypes(store, types), OverflowError);
    EXPECT_EQ(types[4], expected[4]) << "what was read before is kept";
}
