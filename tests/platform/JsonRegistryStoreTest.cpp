#include "platform/JsonRegistryStore.h"

#include "support/FailingDisk.h"
#include "support/TestData.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace vek;

using Names = std::vector<std::string>;

class JsonStoreTest : public testing::Test {
  protected:
    test::TemporaryFolder folder;
    std::string path = folder.Path("new folder/registry.json");
};

TEST_F(JsonStoreTest, KeepsKeysAndTypedValues) {
    {
        JsonRegistryStore store(path);
        EXPECT_FALSE(store.KeyExists("Software\\Vorn"));
        store.Set("Software\\Vorn", "Lost", 1U);
        for (const char* key :
             {"Software\\Vorn\\2", "Software\\Vorn\\10", "Software\\Vorn\\0", "Software\\Vorn"})
            store.CreateKey(key);
        store.Set("Software\\Vorn", "Version", 4294967295U);
        store.Set("Software\\Vorn", "Name", "M\xC3\xA4trix \"Vek\"\n");
        store.Flush();
    }
    JsonRegistryStore store(path);
    EXPECT_EQ(store.SubkeyNames("Software\\Vorn"), (Names{"0", "10", "2"}));
    EXPECT_EQ(store.SubkeyNames("Nowhere"), Names());
    EXPECT_EQ(store.Query("Software\\Vorn", "Version"), RegistryValue(4294967295U));
    EXPECT_EQ(store.Query("Software\\Vorn", "Name"), RegistryValue("M\xC3\xA4trix \"Vek\"\n"));
    EXPECT_EQ(store.Query("Software\\Vorn", "Lost"), std::nullopt);
    EXPECT_EQ(store.Query("Software\\Vorn\\2", "Version"), std::nullopt);
}

TEST_F(JsonStoreTest, EveryFailureOfTheDiskLeavesTheOldStoreOrTheNewOne) {
    path = folder.Path("registry.json");
    const std::string old = R"({"A": {"Number": 1}})";
    const auto write = [&] {
        test::WriteText(path, old);
        JsonRegistryStore store(path);
        store.Set("A", "Number", 2U);
        store.Flush();
    };
    write();
    const std::string written = test::ReadText(path);
    test::ForEveryFailure(write, [&] {
        const std::string content = test::ReadText(path);
        EXPECT_TRUE(content == old || content == written) << content;
        EXPECT_EQ(folder.EntryCount(), 1U) << "nothing is left over";
    });
}

TEST_F(JsonStoreTest, ReadsWhatAPersonWrote) {
    path = folder.Path("own.json");
    test::WriteText(path, R"({"A": {"Text": "17", "Number": 17, "TooLarge": 4294967296, "Negative": -1,
                              "Fraction": 1.5, "List": [1], "Flag": true, "Sub": {}}, "B": 3})");
    JsonRegistryStore store(path);
    EXPECT_EQ(store.Query("A", "Text"), RegistryValue("17"));
    EXPECT_EQ(store.Query("A", "Number"), RegistryValue(17U));
    for (const char* name : {"TooLarge", "Negative", "Fraction", "List", "Flag", "Sub"})
        EXPECT_EQ(store.Query("A", name), std::nullopt) << name;
    EXPECT_EQ(store.SubkeyNames("A"), (Names{"Sub"}));
    EXPECT_FALSE(store.KeyExists("B"));
    EXPECT_FALSE(store.KeyExists("B\\C"));
    const std::string before = test::ReadText(path);
    store.Set("A", "Number", 17U);
    store.Flush();
    EXPECT_EQ(test::ReadText(path), before) << "left alone without a change";
}

TEST_F(JsonStoreTest, WritesNothingThatItCouldNotReadAgain) {
    path = folder.Path("own.json");
    const std::string before = R"({"A": {}})";
    test::WriteText(path, before);
    JsonRegistryStore large(path);
    large.Set("A", "Large", std::string(2'000'000, 'x'));
    large.Flush();
    JsonRegistryStore deep(path);
    std::string key = "A";
    for (int level = 0; level < 40; ++level)
        key += "\\A";
    deep.CreateKey(key);
    deep.Flush();
    EXPECT_EQ(test::ReadText(path), before);
}

TEST_F(JsonStoreTest, SetsBrokenFilesAside) {
    path = folder.Path("own.json");
    std::string deep;
    for (int level = 0; level < 20'000; ++level)
        deep += "{\"A\":";
    deep += "{}" + std::string(20'000, '}');
    const std::string large = "{\"A\": \"" + std::string(2'000'000, 'x') + "\"}";
    const std::pair<std::string, const char*> broken[] = {{"{\"A\": ", "own.json.broken-1"},
                                                          {"", "own.json.broken-2"},
                                                          {"[1, 2]", "own.json.broken-3"},
                                                          {deep, "own.json.broken-4"},
                                                          {large, "own.json.broken-5"}};
    for (const auto& [content, aside] : broken) {
        test::WriteText(path, content);
        JsonRegistryStore store(path);
        store.CreateKey("New");
        store.Flush();
        EXPECT_EQ(test::ReadText(folder.Path(aside)), content);
        EXPECT_TRUE(JsonRegistryStore(path).KeyExists("New"));
    }
}

TEST_F(JsonStoreTest, LeavesAloneWhatItCannotRead) {
    JsonRegistryStore store(folder.Path());
    store.CreateKey("Kept");
    store.Flush();
    EXPECT_EQ(folder.EntryCount(), 0U);
}

TEST_F(JsonStoreTest, InheritsUntilItHasAFileOfItsOwn) {
    const std::string inherited = folder.Path("machine.json");
    test::WriteText(inherited, R"({"Machine": {}})");
    {
        JsonRegistryStore store(path, inherited);
        EXPECT_TRUE(store.KeyExists("Machine"));
        store.Flush();
        EXPECT_FALSE(std::filesystem::exists(path));
        store.CreateKey("Own");
        store.Flush();
    }
    test::WriteText(inherited, "broken");
    EXPECT_EQ(JsonRegistryStore(path, inherited).SubkeyNames(""), (Names{"Machine", "Own"}));
    EXPECT_EQ(JsonRegistryStore(folder.Path("other"), inherited).SubkeyNames(""), Names());
    EXPECT_EQ(test::ReadText(inherited), "broken") << "not this store's file";
}

TEST_F(JsonStoreTest, TheEnvironmentNamesTheFile) {
    ::setenv("VEK_STORE", path.c_str(), 1);
    JsonRegistryStore store = JsonRegistryStore::OfThisMachine();
    ::unsetenv("VEK_STORE");
    store.CreateKey("Key");
    store.Flush();
    EXPECT_EQ(test::ReadText(path), "{\n    \"Key\": {}\n}\n");
}
