// The RS232 codes as labels, the address list, the device export and the proposed names.
#include "base/Errors.h"
#include "model/Config.h"
#include "reports/AddressList.h"
#include "reports/DeviceExport.h"
#include "reports/ExportNames.h"
#include "reports/Rs232Codes.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace vek {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Rs232Codes, BareCodesInTheOrderOfTheLabels) {
    std::string codes;
    for (const Rs232Function& command : Rs232Functions())
        codes += Rs232Code(command, 0) + " " + Rs232Code(command, 7) + " ";
    EXPECT_EQ(codes, "U1 U8 D1 D8 V1n V8n N1 N8 P1 P8 I1n I8n M1 M8 m1 m8 ");
}

TEST(AddressList, IsEmptyOr256BareNumbersWhenNothingIsEnabled) {
    MatrixConfig config;
    config.VekNetBase = 32767;
    EXPECT_EQ(BuildAddressList(config, 0, {}), "");
    std::string numbers;
    for (int offset = 0; offset < 256; ++offset)
        numbers += "\r\n" + std::to_string(32767 + offset);
    EXPECT_EQ(BuildAddressList(config, 0, {.IncludeUnusedAddresses = true}), numbers);
}

TEST(AddressList, RowsOfEachGroup) {
    const struct {
        const char* Description;
        void (*Enable)(AddressEnables&);
        const char* List; ///< for base 100 and current output 2
    } cases[] = {
        {"mode in", [](AddressEnables& a) { a.ModeAddressEnable[0] = flagTrue; },
         "\r\n100,Input ,Digital,Mode 0 Select"},
        {"mode out, any value but 0", [](AddressEnables& a) { a.ModeAddressEnable[15] = 2; },
         "\r\n115,Output,Digital,Mode 7 Select"},
        {"volume step of the current output, input side only",
         [](AddressEnables& a) { a.VolumeAddressEnable[2][1] = flagTrue; },
         "\r\n117,Input ,Digital,Volume 0 Step Down \r\n121,Input ,Digital,Volume 1 Step Down "
         "\r\n125,Input ,Digital,Volume 2 Step Down \r\n129,Input ,Digital,Volume 3 Step Down "
         "\r\n133,Input ,Digital,Volume 4 Step Down \r\n137,Input ,Digital,Volume 5 Step Down "
         "\r\n141,Input ,Digital,Volume 6 Step Down \r\n145,Input ,Digital,Volume 7 Step Down "},
        {"volume flags of the output side", [](AddressEnables& a) { a.VolumeAddressEnable[2][6] = flagTrue; },
         ""},
        {"route flags of the output side", [](AddressEnables& a) { a.RouteAddressEnable[2][8] = flagTrue; },
         ""},
        {"route control, read for its own output, input side",
         [](AddressEnables& a) { a.RouteControlAddressEnable[5] = {flagTrue, flagTrue, flagTrue, 0, 0, 0}; },
         "\r\n323,Input ,Digital,Input 5 Next Input \r\n324,Input ,Digital,Input 5 Previous Input "
         "\r\n325,Input ,Analog,Input 5 Input Analog "},
        {"route control, output side: only the analog one",
         [](AddressEnables& a) { a.RouteControlAddressEnable[7] = {0, 0, 0, flagTrue, flagTrue, flagTrue}; },
         "\r\n355,Output,Analog,Output 7 Input Analog "},
    };
    for (const auto& test : cases) {
        MatrixConfig config;
        config.VekNetBase = 100;
        test.Enable(config.Addresses);
        EXPECT_EQ(BuildAddressList(config, 2, {.CsvSeparator = true}), test.List) << test.Description;
    }
}

TEST(AddressList, CurrentOutputsVolumeAndRouteServeBothSides) {
    MatrixConfig config;
    config.Addresses.VolumeAddressEnable[7][2] = flagTrue;
    config.Addresses.RouteAddressEnable[7][7] = flagTrue;
    const std::string list = BuildAddressList(config, 7, {});
    EXPECT_THAT(list, StartsWith("\r\n530\tInput \tAnalog\tVolume 0 Analog \r\n534"));
    EXPECT_THAT(list, HasSubstr("\r\n562\tOutput\tAnalog\tVolume 0 Analog \r\n"));
    EXPECT_THAT(list, HasSubstr("\r\n599\tInput \tDigital\tOutput 0 Select Input 7\r\n"));
    EXPECT_THAT(list, testing::EndsWith("\r\n719\tOutput\tDigital\tOutput 7 Select Input 7"));
    EXPECT_EQ(std::count(list.begin(), list.end(), '\n'), 32);
    EXPECT_THROW(BuildAddressList(config, 8, {}), SubscriptError);
}

TEST(DeviceExport, HeaderImageAndSecondTable) {
    std::vector<std::byte> image(8192, std::byte{0xA5});
    image[2176] = std::byte{0x17};
    const auto bytes = BuildDeviceExport(image, 2176);
    std::vector<std::byte> expected(268 + 8192 + 8192);
    expected[0] = std::byte{29};
    expected[264] = std::byte{2176 % 256};
    expected[265] = std::byte{2176 / 256};
    std::fill_n(expected.begin() + 268, 2176, std::byte{0xA5});
    expected[268 + 2176] = std::byte{0x17};
    EXPECT_EQ(bytes, expected);
}

TEST(DeviceExport, IndexOutsideTheTableOrTheImageIsARunTimeError) {
    const std::vector<std::byte> image(9000);
    EXPECT_NO_THROW(BuildDeviceExport(image, 8191));
    EXPECT_THROW(BuildDeviceExport(image, 8192), SubscriptError);
    EXPECT_THROW(BuildDeviceExport(image, -1), SubscriptError);
    EXPECT_THROW(BuildDeviceExport(std::span(image).first(2176), 2176), SubscriptError);
}

TEST(ExportNames, ReplaceTheLastThreeCharacters) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"a.VM", ""},
        {"a.VMC", "a.CSV"},
        {"/somewhere/church.VMC", "/somewhere/church.CSV"},
        {"noextension", "noextensCSV"},
        {"\xC3\xA9.VM", ""},                                // four characters in five bytes
        {"\xC3\xA9.\xE2\x82\xAC\xC3\xA9V", "\xC3\xA9.CSV"}, // two-byte and three-byte characters replaced
    };
    for (const auto& [current, proposed] : cases)
        EXPECT_EQ(ProposedExportName(current, addressListSuffix), proposed) << current;
}

} // namespace
} // namespace vek
