#include "base/Bytes.h"
#include "base/Errors.h"
#include "model/ConfigFile.h"
#include "model/ProgramState.h"
#include "support/RandomConfig.h"
#include "support/RecordText.h"
#include "support/TestData.h"

#include <gmock/gmock.h>
#include <limits>

using namespace vek;
using namespace vek::test;

TEST(Record, EverySampleRoundTrips) {
    for (const std::string& number : SampleNumbers()) {
        const std::string bytes = ReadText(DataPath(number + ".VMC"));
        EXPECT_EQ(RecordText(DecodeRecord(AsBytes(bytes))), bytes) << number;
    }
    EXPECT_EQ(RecordText(MatrixConfig()), ReadText(DataPath("01.VMC"))) << "a new configuration";
    MatrixConfig reset;
    reset.Modes.fill(DefaultMode());
    EXPECT_EQ(RecordText(reset), ReadText(DataPath("02.VMC"))) << "all modes reset to default";
}

TEST(Record, RandomRecordsRoundTrip) {
    std::mt19937 random(1);
    for (int i = 0; i < 200; ++i) {
        const RecordBytes bytes = EncodeRecord(RandomConfig(random));
        EXPECT_EQ(EncodeRecord(DecodeRecord(bytes)), bytes);
    }
}

TEST(Record, RefusesBadRecordsWhole) {
    const std::string good = ReadText(DataPath("04.VMC"));
    std::vector<std::string> bad = {"", good.substr(0, 1), good.substr(0, 4226), good.substr(0, 6237)};
    std::string record = good;
    record[2 + 504] = 5;
    bad.push_back(record);
    record[2 + 504] = '\xFF';
    record[2 + 505] = '\xFF';
    bad.push_back(record);
    for (const float level :
         {std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
        for (const std::size_t offset : {2, 2 + 14, 4162, 4222}) {
            record = good;
            std::memcpy(record.data() + offset, &level, sizeof level);
            bad.push_back(record);
        }
    }
    for (const std::string& bytes : bad)
        EXPECT_THROW(DecodeRecord(AsBytes(bytes)), FileError);
}

TEST(ConfigFile, SavesOpensAndKeepsWhatFollowsTheRecord) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a.VMC");
    WriteText(path, std::string(recordSize, 'x') + "tail");
    NewConfiguration();
    Config.VekNetBase = 77;
    WriteConfigFile(path);
    EXPECT_EQ(ReadText(path), RecordText(Config) + "tail");
    Config.VekNetBase = 1;
    ReadConfigFile(path);
    EXPECT_EQ(Config.VekNetBase, 77);
    EXPECT_TRUE(ConfigDiffers()) << "only the commands make the read configuration the saved one";

    WriteText(path, "short");
    EXPECT_THAT([&] { ReadConfigFile(path); },
                testing::ThrowsMessage<FileError>(path + ": shorter than a configuration: 5 of 6238 bytes"));
    EXPECT_EQ(Config.VekNetBase, 77) << "a failed read changes nothing";
}

TEST(ConfigFile, FileNameIsWhatFollowsTheLastSeparator) {
    EXPECT_EQ(FileNameOf("/a/b c/d.VMC"), "d.VMC");
    EXPECT_EQ(FileNameOf("C:\\jobs\\d.VMC"), "d.VMC");
    EXPECT_EQ(FileNameOf(""), "");
}
