#include "inspect/ConfigJson.h"

#include "base/Bytes.h"
#include "inspect/Json.h"
#include "model/Levels.h"
#include "model/RecordLayout.h"
#include "support/RandomConfig.h"
#include "support/TestData.h"

#include <algorithm>
#include <bit>
#include <gmock/gmock.h>

using namespace vek;
using namespace vek::test;
using testing::HasSubstr;

namespace {

StoredConfig Stored(const std::string& fileBytes) { return DecodeStoredConfig(AsBytes(fileBytes)); }

std::string FileBytes(const StoredConfig& stored) {
    const auto bytes = EncodeStoredConfig(stored);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void ExpectRoundTrip(const StoredConfig& stored, const std::string& description) {
    EXPECT_EQ(FileBytes(ConfigFromJson(ConfigToJson(stored))), FileBytes(stored)) << description;
}

/// The JSON of a new configuration with the first `from` replaced by `to`, where ' stands for ".
std::string Edited(std::string from, std::string to) {
    std::replace(from.begin(), from.end(), '\'', '"');
    std::replace(to.begin(), to.end(), '\'', '"');
    const std::string text = ConfigToJson({});
    return std::string(text).replace(text.find(from), from.size(), to);
}

std::string ErrorOf(const std::string& json) {
    try {
        ConfigFromJson(json);
    } catch (const JsonError& error) {
        return error.what();
    }
    return "no error";
}

} // namespace

TEST(ConfigJson, EverySampleComesBackByteForByte) {
    for (const std::string& number : SampleNumbers())
        ExpectRoundTrip(Stored(ReadText(DataPath(number + ".VMC"))), number);
}

TEST(ConfigJson, RandomRecordsComeBackByteForByte) {
    std::mt19937 random(4);
    std::uniform_int_distribution<std::size_t> length(0, 40);
    for (int i = 0; i < 40; ++i) {
        StoredConfig stored = {RandomConfig(random), {}};
        stored.Tail.resize(length(random), static_cast<std::byte>(random()));
        ExpectRoundTrip(stored, "record " + std::to_string(i));
    }
}

TEST(ConfigJson, EveryFiniteSingleComesBackBitForBit) {
    std::mt19937 random(5);
    std::vector<std::uint32_t> patterns = {0x80000000U, 1U,          0x80000001U, 0x007FFFFFU,
                                           0x00800000U, 0x7F7FFFFFU, 0xFF7FFFFFU, 0x4B800001U};
    while (patterns.size() < 1500)
        patterns.push_back(static_cast<std::uint32_t>(random()));
    std::erase_if(patterns, [](auto bits) { return !IsValidLevel(std::bit_cast<float>(bits)); });
    for (std::size_t start = 0; start + inputCount <= patterns.size(); start += inputCount) {
        StoredConfig stored;
        for (std::size_t i = 0; i < inputCount; ++i)
            stored.Config.InputTrim[i] = std::bit_cast<float>(patterns[start + i]);
        ExpectRoundTrip(stored, "patterns from " + std::to_string(start));
    }
}

TEST(ConfigJson, NamesAndValuesAreThoseOfTheUser) {
    StoredConfig stored = {{}, {std::byte{0x0A}, std::byte{0xFF}}};
    PanelRecord& panels = stored.Config.Modes[0].OutputPanels[0];
    panels = {FixedText<9>("102"), FixedText<16>("19AG"), FixedText<16>("a"), 5};
    stored.Config.Modes[0].OutputLevels[0].MaximumLevel = 0.1F;
    stored.Config.Notes = "caf\xE9 \x80";
    stored.Config.Addresses.VolumeAddressEnable[0][1] = flagTrue;
    const std::string json = ConfigToJson(stored);
    EXPECT_THAT(json, testing::StartsWith(R"({
  "vekNetBase": 512,
  "modes": [
    {
      "outputs": [
        {
          "panelInputs": [1, 0, 2],
          "usePreviousRoute": 5,
          "panelVolumes": [1, 9, 10, 16],
          "panelSelects": "a",
          "linkGroup": 0,
          "maximumLevel": 0.1,
          "minimumLevel": -36.0,
          "muteOnMin": true,
)"));
    EXPECT_THAT(json, HasSubstr("\"notes\": \"caf\xC3\xA9 \xE2\x82\xAC\""));
    EXPECT_THAT(json,
                HasSubstr(R"("in": {"stepUp": false, "stepDown": true, "analog": false, "mute": false})"));
    EXPECT_THAT(json, testing::EndsWith("\"dataAfterRecord\": \"0aff\"\n}\n"));
}

TEST(ConfigJson, HandWrittenValuesAreTaken) {
    const auto read = [](const auto&... edit) { return ConfigFromJson(Edited(edit...)).Config; };
    EXPECT_EQ(read("'maximumLevel': 6.0", "'maximumLevel': 7").Modes[0].OutputLevels[0].MaximumLevel, 7.0F);
    EXPECT_EQ(
        read("'panelVolumes': []", "'panelVolumes': '12'").Modes[0].OutputPanels[0].PanelVolumes.Trimmed(),
        "12");
    for (const int base : {-32768, 32767})
        EXPECT_EQ(read("512", std::to_string(base)).VekNetBase, base);
    EXPECT_EQ(read("{", "\xEF\xBB\xBF{"), MatrixConfig());
}

TEST(ConfigJson, LineEndsOfTheNotesBecomeCrLfUnlessTheyAreMarked) {
    const auto notesOf = [](const std::string& value) {
        return std::string(ConfigFromJson(Edited("'notes': ''", "'notes': " + value)).Config.Notes.Trimmed());
    };
    EXPECT_EQ(notesOf(R"('a\nb\r\nc\rd\n\n')"), "a\r\nb\r\nc\rd\r\n\r\n");
    EXPECT_EQ(notesOf(R"({'asStored': 'a\nb\r\n'})"), "a\nb\r\n");
    StoredConfig stored;
    for (const char* notes : {"a\nb", "\n", "a\r\nb", "a\rb\n\r"}) {
        stored.Config.Notes = notes;
        ExpectRoundTrip(stored, notes);
        EXPECT_EQ(ConfigToJson(stored).find("asStored") != std::string::npos, notes != std::string("a\r\nb"));
    }
    EXPECT_EQ(ErrorOf(Edited("'notes': ''", "'notes': '" + std::string(1499, 'n') + "\\n'")),
              "/notes: longer than 1500 characters");
}

TEST(ConfigJson, ErrorsNameThePlace) {
    const std::string output = "/modes/0/outputs/0/";
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"512", "32768", "/vekNetBase: outside -32768 to 32767"},
        {"512", "-99999999999999999999", "/vekNetBase: must be a whole number from -32768 to 32767"},
        {"512", "18446744073709551615", "/vekNetBase: outside -32768 to 32767"},
        {"512", "512.5", "/vekNetBase: must be a whole number from -32768 to 32767"},
        {"'vekNetBase': 512,", "", "/vekNetBase: missing"},
        {"'vekNetBase': 512,", "'vekNetBase': 512, 'vekNetBase': 512,", "/vekNetBase: given twice"},
        {"'vekNetBase'", "'a/b~c': 1, 'vekNetBase'", "/a~1b~0c: unknown name"},
        {"'modes': [", "'modes': [{'outputs': []}, ", "/modes: must hold 8, not 9"},
        {"'maximumLevel': 6.0", "'maximumLevel': '6'", output + "maximumLevel: must be a number (dB)"},
        {"'maximumLevel': 6.0", "'maximumLevel': 1e39", output + "maximumLevel: the number is too large"},
        {"'linkGroup': 0", "'linkGroup': 5", output + "linkGroup: outside 0 to 4"},
        {"'muteOnMin': true", "'muteOnMin': 'yes'",
         output + "muteOnMin: must be true or false (or the stored whole number)"},
        {"'panelInputs': []", "'panelInputs': [0, 9]", output + "panelInputs/1: outside 0 to 8"},
        {"'panelInputs': []", "'panelInputs': [1,1,1,1,1,1,1,1,1,1]",
         output + "panelInputs: must not hold more than 9"},
        {"'panelVolumes': []", "'panelVolumes': [0]", output + "panelVolumes/0: outside 1 to 16"},
        {"'panelVolumes': []", "'panelVolumes': true",
         output + "panelVolumes: must be a list of numbers (or the stored text)"},
        {"'panelSelects': []", "'panelSelects': '12345678901234567'",
         output + "panelSelects: longer than 16 characters"},
        {"'notes': ''", "'notes': '\\u0416'", "/notes: holds a character outside Windows-1252"},
        {"'notes': ''", "'notes': '" + std::string(1501, 'n') + "'", "/notes: longer than 1500 characters"},
        {"'in': [false,", "'in': [", "/enabledAddresses/modeRecall/in: must hold 8, not 7"},
        {"'stepUp': false, ", "", "/enabledAddresses/outputs/0/volume/in/stepUp: missing"},
        {"'enabledAddresses': {", "'dataAfterRecord': '0', 'enabledAddresses': {",
         "/dataAfterRecord: must be a text of pairs of hexadecimal digits"},
    };
    for (const auto& [from, to, error] : cases)
        EXPECT_EQ(ErrorOf(Edited(from, to)), error);
    const std::string manyBrackets(1'000'000, '[');
    std::string deepest;
    for (int i = 0; i < 32; ++i)
        deepest += "/0";
    std::string manyValues = "[0";
    for (int i = 0; i < 200'000; ++i)
        manyValues += ",0";
    const std::pair<std::string, std::string> documents[] = {
        {"[]", "the document: must be an object"},
        {"[0, [[], [{}, 1e39]]]", "/1/1/1: the number is too large"},
        {manyBrackets, deepest + ": nested deeper than any configuration"},
        {manyValues, "/99999: more than any configuration holds"},
        {R"({"a": [{"b": {}, "c": 1}, {"c": 1, "c": 1}]})", "/a/1/c: given twice"}};
    for (const auto& [document, error] : documents)
        EXPECT_EQ(ErrorOf(document), error);
    for (const char* broken : {"", "{", "{\"notes\": \"\xFF\"}", "nonsense"})
        EXPECT_THAT(ErrorOf(broken), testing::StartsWith("parse error at line 1, column ")) << broken;
}
