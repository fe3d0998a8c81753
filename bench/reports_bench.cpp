// The documents of a configuration in which everything is used.
#include "inspect/ConfigCheck.h"
#include "inspect/ConfigDiff.h"
#include "inspect/ConfigJson.h"
#include "inspect/ConfigSummary.h"
#include "link/DownloadImage.h"
#include "reports/AddressList.h"
#include "reports/DeviceExport.h"
#include "reports/TextReport.h"

#include <benchmark/benchmark.h>

namespace vek {
namespace {

/// All modes used, all addresses enabled, the notes full.
MatrixConfig FullConfig() {
    MatrixConfig config;
    config.Modes.fill(DefaultMode());
    config.Notes = std::string(notesLength, 'n');
    config.Addresses.ModeAddressEnable.fill(flagTrue);
    for (std::size_t output = 0; output < outputCount; ++output) {
        config.Addresses.VolumeAddressEnable[output].fill(flagTrue);
        config.Addresses.RouteControlAddressEnable[output].fill(flagTrue);
        config.Addresses.RouteAddressEnable[output].fill(flagTrue);
    }
    return config;
}

void CountBytes(benchmark::State& state, std::size_t bytes) {
    state.counters["bytes"] = static_cast<double>(bytes);
}

void Report(benchmark::State& state) {
    const MatrixConfig config = FullConfig();
    const ReportSelection selection = SelectionOf(config, 0, 0);
    std::string report;
    for (auto _ : state)
        benchmark::DoNotOptimize(report = BuildReport(config, allSections, selection));
    CountBytes(state, report.size());
}
BENCHMARK(Report)->Unit(benchmark::kMicrosecond);

void AddressList(benchmark::State& state) {
    const MatrixConfig config = FullConfig();
    std::string list;
    for (auto _ : state)
        benchmark::DoNotOptimize(list = BuildAddressList(config, 0, {true, true}));
    CountBytes(state, list.size());
}
BENCHMARK(AddressList)->Unit(benchmark::kMicrosecond);

void DeviceExport(benchmark::State& state) {
    const DownloadImage image = EncodeImage(FullConfig()).Image;
    for (auto _ : state)
        benchmark::DoNotOptimize(BuildDeviceExport(std::as_bytes(std::span(image.Buffer)), image.Length - 1));
}
BENCHMARK(DeviceExport)->Unit(benchmark::kMicrosecond);

void Summary(benchmark::State& state) {
    const StoredConfig stored = {FullConfig(), {}};
    for (auto _ : state)
        benchmark::DoNotOptimize(SummaryOf(stored));
}
BENCHMARK(Summary)->Unit(benchmark::kMicrosecond);

void WriteJson(benchmark::State& state) {
    const StoredConfig stored = {FullConfig(), {}};
    for (auto _ : state)
        benchmark::DoNotOptimize(ConfigToJson(stored));
}
BENCHMARK(WriteJson)->Unit(benchmark::kMicrosecond);

void ReadJson(benchmark::State& state) {
    const std::string json = ConfigToJson({FullConfig(), {}});
    for (auto _ : state)
        benchmark::DoNotOptimize(ConfigFromJson(json));
}
BENCHMARK(ReadJson)->Unit(benchmark::kMicrosecond);

void Compare(benchmark::State& state) {
    const StoredConfig before;
    const StoredConfig after = {FullConfig(), {}};
    for (auto _ : state)
        benchmark::DoNotOptimize(Differences(before, after));
}
BENCHMARK(Compare)->Unit(benchmark::kMicrosecond);

void Check(benchmark::State& state) {
    const StoredConfig stored = {FullConfig(), {}};
    for (auto _ : state)
        benchmark::DoNotOptimize(CheckConfig(stored));
}
BENCHMARK(Check)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace vek

BENCHMARK_MAIN();
