// The record and the download image of a full configuration.
#include "link/DownloadImage.h"
#include "model/ConfigFile.h"
#include "model/RecordLayout.h"

#include <benchmark/benchmark.h>

using namespace vek;

namespace {

MatrixConfig FullConfig() { return LoadConfig(VEK_BENCH_CONFIG); }

void BuildTheImage(benchmark::State& state) {
    const MatrixConfig config = FullConfig();
    for (auto _ : state)
        benchmark::DoNotOptimize(EncodeImage(config));
}
BENCHMARK(BuildTheImage)->Unit(benchmark::kMicrosecond);

void WriteTheRecord(benchmark::State& state) {
    const MatrixConfig config = FullConfig();
    for (auto _ : state)
        benchmark::DoNotOptimize(EncodeRecord(config));
}
BENCHMARK(WriteTheRecord)->Unit(benchmark::kMicrosecond);

void ReadTheRecord(benchmark::State& state) {
    const RecordBytes bytes = EncodeRecord(FullConfig());
    for (auto _ : state)
        benchmark::DoNotOptimize(DecodeRecord(bytes));
}
BENCHMARK(ReadTheRecord)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
