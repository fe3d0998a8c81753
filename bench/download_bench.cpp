// A whole download through the real serial layer to a device that answers at once: how much longer it takes
// than the waits that the protocol prescribes, and how much of that time the processor works.
#include "link/OutcomeTexts.h"
#include "link/VekLink.h"
#include "platform/QtOneShotTimer.h"
#include "platform/QtSerialControl.h"
#include "simulator/RunningVek.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <benchmark/benchmark.h>

#include <chrono>
#include <stdexcept>
#include <sys/resource.h>

namespace {

using Seconds = std::chrono::duration<double>;

/// Port opened, wake pulse, search, ten milliseconds in each block, restart.
constexpr Seconds prescribedWaits{0.100 + 0.200 + 7 * 0.010 + vek::deviceBlockCount * 0.010 + 0.010};

/// Nothing may fail here.
class NoWindow final : public vek::LinkOutcomes, public vek::ProgrammingOutcomes {
  public:
    void PortSearched(std::size_t, const vek::PortFinding&) override {}
    vek::Task<> Failed(vek::Failure failure) override { throw std::runtime_error(TextOf(failure).Text); }
    void DownloadBegins() override {}
    void Progress(vek::DownloadProgress) override {}
    vek::Task<bool> WantsAnother() override { co_return false; }
};

void RunToEnd(vek::Task<vek::ConfigureResult> programming) {
    QEventLoop events;
    std::exception_ptr failure;
    vek::RunningTask running;
    const auto ignoreResult = [](vek::Task<vek::ConfigureResult> task) -> vek::Task<> { co_await task; };
    running.Start(ignoreResult(std::move(programming)), [&](const std::exception_ptr& thrown) {
        failure = thrown;
        events.quit();
    });
    events.exec();
    if (failure)
        std::rethrow_exception(failure);
}

Seconds Duration(const timeval& time) {
    return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
}

/// Of this thread; the simulated device runs in another.
Seconds ProcessorTime() {
    rusage usage = {};
    ::getrusage(RUSAGE_THREAD, &usage);
    return Duration(usage.ru_utime) + Duration(usage.ru_stime);
}

void WholeDownload(benchmark::State& state) {
    const auto builtIn = vek::BuiltInDeviceTypes();
    const vek::DeviceTypeList types(builtIn.begin(), builtIn.end());
    const vek::DownloadImage image = vek::EncodeImage(vek::MatrixConfig()).Image;
    vek::RunningVek device;
    vek::QtSerialControl port([&](int) { return device->PortPath(); });
    vek::QtOneShotTimer timer;
    NoWindow outcomes;
    vek::VekLink link(port, timer, types, outcomes);

    Seconds elapsed{};
    const Seconds processorBefore = ProcessorTime();
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        RunToEnd(link.ProgramVek(0, image, outcomes));
        const Seconds duration = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(duration.count());
        elapsed += duration;
    }
    if (device->Events().empty() || !device->Image())
        state.SkipWithError("the device was not programmed");
    const Seconds processor = ProcessorTime() - processorBefore;
    state.counters["to_prescribed_waits"] =
        elapsed / prescribedWaits / static_cast<double>(state.iterations());
    state.counters["processor_percent"] = 100 * (processor / elapsed);
}

BENCHMARK(WholeDownload)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
