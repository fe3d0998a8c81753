#include "platform/ComPorts.h"

#include "simulator/PseudoTerminal.h"
#include "support/TestData.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace vek;

using Names = std::vector<std::string>;

TEST(SerialDevices, AreSortedUsbFirstAndNaturally) {
    std::vector<SerialDevice> devices = {
        {"/dev/ttyS1", false},   {"/dev/ttyUSB10", true}, {"/dev/ttyS0", false}, {"/dev/ttyUSB2", true},
        {"/dev/ttyAMA0", false}, {"/dev/ttyACM0", true},  {"/dev/ttyS10", false}};
    SortSerialDevices(devices);
    std::string order;
    for (const SerialDevice& device : devices)
        order += ShownDeviceName(device.Path) + ' ';
    EXPECT_EQ(order, "ttyACM0 ttyUSB2 ttyUSB10 ttyAMA0 ttyS0 ttyS1 ttyS10 ");
}

static std::string Assigned(const NamedComPorts& named, const Names& existing) {
    std::vector<SerialDevice> devices;
    for (const std::string& path : existing)
        devices.push_back({path, true});
    std::string text;
    for (const ComPort& port : AssignComPorts(named, devices))
        text += std::to_string(port.Number) + "=" + port.ShownName + " ";
    return text;
}

TEST(ComPorts, AreNamedOrFilledWithWhatExists) {
    const Names five = {"/dev/a", "/dev/b", "/dev/c", "/dev/d", "/dev/e"};
    EXPECT_EQ(Assigned({}, five), "1=a 2=b 3=c 4=d ");
    EXPECT_EQ(Assigned({}, {"/dev/a"}), "1=a ");
    EXPECT_EQ(Assigned({}, {}), "");
    EXPECT_EQ(Assigned({{{}, "/x/y", {}, {}}}, {"/dev/a", "/dev/b"}), "1=a 2=/x/y 3=b ");
    EXPECT_EQ(Assigned({{{}, {}, "/dev/a", {}}}, five), "1=b 2=c 3=a 4=d ") << "each device once";
    EXPECT_EQ(Assigned({{"", {}, {}, ""}}, five), "2=a 3=b ") << "an empty name: no such port";
}

TEST(ComPorts, KnowALinkToADeviceThatExists) {
    const test::TemporaryFolder folder;
    test::WriteText(folder.Path("real"), "");
    std::filesystem::create_symlink(folder.Path("real"), folder.Path("link"));
    EXPECT_EQ(AssignComPorts({{folder.Path("link"), {}, {}, {}}}, {{folder.Path("real"), true}}).size(), 1U);
}

TEST(ComPorts, AreFoundByTheNamesThatUsersGive) {
    ::setenv("VEK_COM2", "ttyUSB7", 1);
    ::setenv("VEK_COM3", "", 1);
    const std::pair<const char*, const char*> cases[] = {{"COM2", "/dev/ttyUSB7"},
                                                         {"COM3", ""},
                                                         {"COM5", "/dev/COM5"},
                                                         {"ttyUSB0", "/dev/ttyUSB0"},
                                                         {"/dev/ttyUSB0", "/dev/ttyUSB0"},
                                                         {"here/COM1", "here/COM1"},
                                                         {"", ""}};
    for (const auto& [name, device] : cases)
        EXPECT_EQ(DeviceOfPortName(name), device) << name;
    ::unsetenv("VEK_COM2");
    ::unsetenv("VEK_COM3");
}

TEST(SerialDevices, AreToldByTheirDriver) {
    constexpr std::string_view drivers = "/dev/tty             /dev/tty        5       0 system:/dev/tty\n"
                                         "/dev/ptmx            /dev/ptmx       5       2 system\n"
                                         "usbserial            /dev/ttyUSB   188 0-511 serial\n"
                                         "serial               /dev/ttyS       4 64-67 serial\n"
                                         "pty_slave            /dev/pts      136 0-1048575 pty:slave\n"
                                         "pty_master           /dev/ptm      128 0-1048575 pty:master\n"
                                         "ttyprintk            /dev/ttyprintk  5       3 console\n"
                                         "unknown              /dev/tty        4 1-63 console\n";
    const std::tuple<unsigned, unsigned, bool> cases[] = {
        {188, 0, true}, {188, 511, true}, {188, 512, false}, {4, 64, true}, {4, 67, true},
        {4, 68, false}, {4, 1, false},    {4, 0, false},     {5, 0, false}, {5, 2, false},
        {5, 3, false},  {136, 300, true}, {128, 3, false},   {1, 3, false}};
    for (const auto& [major, minor, serial] : cases)
        EXPECT_EQ(IsSerialDriver(drivers, major, minor), serial) << major << ":" << minor;
}

TEST(SerialDevices, AreNeitherFilesNorOtherDevices) {
    const test::TemporaryFolder folder;
    test::WriteText(folder.Path("file"), "text");
    std::filesystem::create_symlink("/dev/ptmx", folder.Path("link"));
    for (const std::string& name :
         {std::string(), folder.Path(), folder.Path("file"), folder.Path("link"), folder.Path("missing"),
          std::string("/dev/tty0"), std::string("/dev/ptmx"), std::string("/dev/tty"),
          std::string("/dev/null")})
        EXPECT_FALSE(IsSerialDevice(name)) << name;
    const PseudoTerminal line;
    std::filesystem::create_symlink(line.PortPath(), folder.Path("port"));
    EXPECT_TRUE(IsSerialDevice(line.PortPath()));
    EXPECT_TRUE(IsSerialDevice(folder.Path("port")));
}
