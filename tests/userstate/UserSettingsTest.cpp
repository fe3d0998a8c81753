#include "userstate/UserSettings.h"

#include "support/TestData.h"
#include "userstate/UserFolders.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <sys/stat.h>

using namespace vek;
using namespace vek::test;
using testing::ElementsAre;

TEST(UserFolders, AreTheUsersOwn) {
    const struct {
        const char* Variable;
        std::string (*Path)();
        std::string InHome, Name;
    } paths[] = {{"XDG_STATE_HOME", UserStateFolder, "/.local/state", "/vorn-matrix-editor"},
                 {"XDG_CONFIG_HOME", UserSettingsFile, "/.config", "/vorn-matrix-editor.conf"},
                 {"XDG_DATA_HOME", UserTemplatesFolder, "/.local/share", "/vorn-matrix-editor/templates"}};
    for (const auto& path : paths) {
        ::setenv("HOME", "/home/a", 1);
        ::setenv(path.Variable, "/xdg", 1);
        EXPECT_EQ(path.Path(), "/xdg" + path.Name);
        ::setenv(path.Variable, "relative", 1);
        EXPECT_EQ(path.Path(), "/home/a" + path.InHome + path.Name);
        ::unsetenv(path.Variable);
        ::unsetenv("HOME");
        EXPECT_EQ(path.Path(), "");
    }
}

struct UserSettingsTest : testing::Test {
    TemporaryFolder folder;
    std::string path = folder.Path("config/editor.conf");
    UserSettings settings{path};
};

TEST_F(UserSettingsTest, RemembersTheLastTenFilesAndTheirFolder) {
    EXPECT_THAT(settings.RecentFiles(), ElementsAre());
    EXPECT_EQ(settings.LastFolder(), "");
    for (int i = 1; i <= 12; ++i)
        settings.FileUsed("/halls/" + std::to_string(i) + ".VMC");
    settings.FileUsed("/halls/../halls/5.VMC");
    settings.FileUsed("/caf\xE9\n100%=/[x] #.VMC");
    EXPECT_THAT(settings.RecentFiles(),
                ElementsAre("/caf\xE9\n100%=/[x] #.VMC", "/halls/5.VMC", "/halls/12.VMC", "/halls/11.VMC",
                            "/halls/10.VMC", "/halls/9.VMC", "/halls/8.VMC", "/halls/7.VMC", "/halls/6.VMC",
                            "/halls/4.VMC"));
    EXPECT_EQ(settings.LastFolder(), "/caf\xE9\n100%=");
    for (int i = 5; i <= 12; ++i)
        settings.ForgetFile("/halls/" + std::to_string(i) + ".VMC");
    EXPECT_THAT(settings.RecentFiles(), ElementsAre("/caf\xE9\n100%=/[x] #.VMC", "/halls/4.VMC"));
    settings.ForgetFiles();
    EXPECT_THAT(settings.RecentFiles(), ElementsAre());
    EXPECT_EQ(settings.LastFolder(), "/caf\xE9\n100%=");
}

TEST_F(UserSettingsTest, EditorsSideBySideKeepEachOthersSettings) {
    UserSettings other(path);
    settings.SetGeometry("01d9");
    other.FileUsed("/a.VMC");
    settings.FileUsed("/b.VMC");
    EXPECT_THAT(other.RecentFiles(), ElementsAre("/b.VMC", "/a.VMC"));
    EXPECT_EQ(other.Geometry(), "01d9");
    WriteText(path, "Colour=of a later version\n" + ReadText(path));
    other.SetGeometry("02");
    EXPECT_EQ(
        ReadText(path),
        "Colour=of a later version\nWindowGeometry=02\nRecentFile=/b.VMC\nRecentFile=/a.VMC\nLastFolder=/\n");
    const auto written = std::filesystem::last_write_time(path);
    std::filesystem::last_write_time(path, written - std::chrono::hours(1));
    settings.FileUsed("/b.VMC");
    EXPECT_NE(std::filesystem::last_write_time(path), written) << "nothing new is nothing to write";
}

TEST_F(UserSettingsTest, ABrokenFileIsIgnoredAndReplaced) {
    std::filesystem::create_directory(folder.Path("config"));
    std::string noise(5000, '\xFF');
    for (std::size_t i = 0; i < noise.size(); ++i)
        noise[i] = static_cast<char>(i * i % 251);
    for (const std::string& text :
         {noise, std::string(1 << 20, '='), std::string("RecentFile=relative\nRecentFile=/%"),
          std::string("RecentFile\nLastFolder=%zz\nWindowGeometry")}) {
        WriteText(path, text);
        EXPECT_THAT(settings.RecentFiles(), ElementsAre());
        EXPECT_EQ(settings.LastFolder() + settings.Geometry(), "");
        settings.FileUsed("/a.VMC");
        EXPECT_THAT(settings.RecentFiles(), ElementsAre("/a.VMC"));
    }
}

TEST_F(UserSettingsTest, WhatCannotBeKeptIsHarmless) {
    WriteText(folder.Path("config"), "a file where the folder should be");
    settings.FileUsed("/a.VMC");
    UserSettings nowhere{std::string()};
    nowhere.FileUsed("/a.VMC");
    std::filesystem::remove(folder.Path("config"));
    std::filesystem::create_directories(path);
    settings.SetGeometry("01");
    settings.SetSafeLevels(true);
    EXPECT_EQ(settings.Geometry() + nowhere.LastFolder(), "");
    EXPECT_TRUE(std::filesystem::is_empty(path));
}
