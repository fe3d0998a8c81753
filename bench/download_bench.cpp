// A whole download through the real serial layer to a device that answers at once: how much longer it takes
// than the waits that the protocol prescribes, and how much of that time the processor works.
#include "link/VekLink.h"
#include "platform/QtOneShotTimer.h"
#include "platform/QtSerialControl.h"
#include "simulator/RunningVek.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>

#include <chrono>
#include <stdexcept>
#include <sys/resource.h>

namespace {

using Seconds = std::chrono::duration<double>;

/// Port opened, wake pulse, search, ten milliseconds in each block, restart.
constexpr Seconds prescribedWaits{0.100 + 0.200 + 7 * 0.010 + vek::deviceBlockCount * 0.010 + 0.010};

/// The programming window with COM1 chosen.
class ChosenPortView final : public vek::VekLinkView {
  public:
    void ShowBlanking(std::size_t, bool) override {}
    void ShowOption(std::size_t, bool) override {}
    void EnableOption(std::size_t, bool) override {}
    void SelectOption(std::size_t, bool) override {}
    bool OptionSelected(std::size_t row) const override { return row == 0; }
    void ShowVekType(std::size_t, bool) override {}
    void SetVekType(std::size_t, const std::string&) override {}
    void EnableProgramVek(bool) override {}
    void ShowPleaseWait(bool) override {}
    void SetLabel2(const std::string&) override {}
    void SetLabel3(const std::string&) override {}
    void SetProgressBar1(int) override {}
    void ErrorMessage(const std::string&, const std::string& text) override {
        throw std::runtime_error(text);
    }
    bool AskYesNo(const std::string&, const std::string&) override { return false; }
};

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
    ChosenPortView view;
    vek::VekLink link(port, timer, types, view);

    Seconds elapsed{};
    const Seconds processorBefore = ProcessorTime();
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        link.ProgramVek(image);
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
