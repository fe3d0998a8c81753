#include "vekctl-serial/SerialCommands.h"

#include "link/Diagnosis.h"
#include "link/DoctorReport.h"
#include "link/LinkDoctor.h"
#include "platform/ComPorts.h"
#include "platform/PortInspection.h"
#include "vekctl-serial/ConsoleLink.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <string>
#include <utility>

namespace vek {

namespace {

/// One port under the name that the user gave, or all.
Task<> Examine(LinkDoctor& doctor, std::string only) {
    if (only.empty())
        co_await doctor.ExamineAll();
    else
        co_await doctor.Examine(0, only);
}

} // namespace

void RunDoctor(const PortCommand& command) {
    const QtSerialControl::DeviceLookup deviceOf = [name = command.Port](int number) {
        if (name.empty())
            return DeviceOfComPort(number);
        return number == 1 ? DeviceOfPortName(name) : std::string();
    };
    const auto deviceOfRow = [&](std::size_t row) { return deviceOf(static_cast<int>(row) + 1); };
    ConsoleLink console(deviceOf);
    const DeviceTypeList& types = console.Types();
    const auto print = [](const std::vector<ReportLine>& lines, const char* end) {
        std::printf("%s%s", TextOf(lines).c_str(), end);
        std::fflush(stdout);
    };
    const std::vector<PortExamination>* ports = nullptr;
    LinkDoctor doctor(console.Port(), console.Timer(), types,
                      {[&](std::size_t row) { return FactsOfDevice(deviceOfRow(row)); },
                       [&](std::size_t row) { return RefusedSettings(deviceOfRow(row)); }},
                      [&] {
                          if (ports->back().Step == ExaminationStep::Done)
                              print(ReportOf({&ports->back(), 1}, types), "\n");
                      });
    ports = &doctor.Examinations();
    console.Run(Examine(doctor, command.Port));
    print(ConclusionOf(*ports, types), "");
    if (DiagnoseAll(*ports, types).Likeliest > Cause::Disturbed)
        throw CLI::RuntimeError(1);
}

} // namespace vek
