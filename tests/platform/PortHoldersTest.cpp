#include "platform/PortHolders.h"
#include "platform/PortRights.h"

#include "platform/PortInspection.h"
#include "simulator/PseudoTerminal.h"
#include "support/TestData.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace vek;
using namespace vek::test;

TEST(PortHolders, AreFoundAmongTheProcesses) {
    const struct {
        std::string Process;
        std::string Program;
        std::vector<std::string> Open; ///< files
    } processes[] = {
        {"12", "console", {"/dev/tty1", "/dev/ttyUSB0"}},
        {"7", "ModemManager", {"/dev/ttyUSB10"}},
        {"9", "cat", {"/dev/ttyUSB0"}},
        {"30", "terminal", {"/dev/ptmx", "/dev/pts/3"}},
        {"31", "shell", {"/dev/pts/3"}},
        {std::to_string(::getpid()), "this", {"/dev/ttyUSB0"}},
        {"self", "alias", {"/dev/ttyUSB0"}},
    };
    const TemporaryFolder folder;
    for (const auto& process : processes) {
        const std::string place = folder.Path(process.Process);
        std::filesystem::create_directories(place + "/fd");
        WriteText(place + "/comm", process.Program + "\n");
        for (std::size_t i = 0; i < process.Open.size(); ++i)
            std::filesystem::create_symlink(process.Open[i], place + "/fd/" + std::to_string(i));
    }
    std::filesystem::permissions(folder.Path("7/fd"), std::filesystem::perms::none);
    using Holders = std::vector<PortHolder>;
    EXPECT_EQ(HoldersOf("/dev/ttyUSB0", folder.Path()), (Holders{{"cat", 9}, {"console", 12}}));
    EXPECT_EQ(HoldersOf("/dev/pts/3", folder.Path()), (Holders{{"shell", 31}}));
    EXPECT_EQ(RunningGrabbers(folder.Path()), (Holders{{"ModemManager", 7}}));
    EXPECT_EQ(RunningGrabbers(folder.Path("nothing")), Holders());
}

TEST(PortFacts, TellALinkedPseudoTerminalFromAFileAndFromNothing) {
    const TemporaryFolder folder;
    const PseudoTerminal line;
    std::filesystem::create_symlink(line.PortPath(), folder.Path("link"));
    WriteText(folder.Path("file"), "");
    ASSERT_EQ(::chmod(folder.Path("file").c_str(), 0640), 0);

    const PortFacts port = FactsOfDevice(folder.Path("link"));
    EXPECT_EQ(port.Name, folder.Path("link"));
    EXPECT_EQ(port.Device, line.PortPath());
    EXPECT_TRUE(port.Exists && port.IsSerial && port.IsPseudoTerminal && port.Rights.Allowed);
    EXPECT_EQ(port.Rights.GroupToJoin, "");
    const PortFacts file = FactsOfDevice(folder.Path("file"));
    EXPECT_TRUE(file.Exists && !file.IsSerial);
    EXPECT_EQ(file.Rights.Mode, 0640U);
    EXPECT_NE(file.Rights.Owner, "");
    EXPECT_FALSE(FactsOfDevice(folder.Path("none")).Exists || FactsOfDevice("").Exists);
}
