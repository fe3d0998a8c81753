#include "reports/GoldenCases.h"

#include "model/ConfigFile.h"
#include "reports/AddressList.h"
#include "reports/TextReport.h"

#include <gtest/gtest.h>

namespace vek {
namespace {

class Golden : public testing::TestWithParam<test::GoldenCase> {
  protected:
    MatrixConfig config = LoadConfig(GetParam().Path());
};

TEST_P(Golden, ReportIsByteForByteTheSample) {
    const auto& [number, mode, output] = GetParam();
    EXPECT_EQ(BuildReport(config, allSections, SelectionOf(config, mode, output)),
              GetParam().Expected(".txt"));
}

TEST_P(Golden, AddressListsAreByteForByteTheSamples) {
    EXPECT_EQ(BuildAddressList(config, GetParam().Output, {.CsvSeparator = true}),
              GetParam().Expected(".csv"));
    EXPECT_EQ(
        BuildAddressList(config, GetParam().Output, {.IncludeUnusedAddresses = true, .CsvSeparator = true}),
        GetParam().Expected(".unused.csv"));
}

INSTANTIATE_TEST_SUITE_P(Samples, Golden, testing::ValuesIn(test::GoldenCases()),
                         [](const auto& tested) { return "Case" + tested.param.Number; });

} // namespace
} // namespace vek
