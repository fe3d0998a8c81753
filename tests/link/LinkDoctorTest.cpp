// The examination of a port against simulated devices with faults, and against lines without a device.
#include "link/LinkDoctor.h"
#include "link/Diagnosis.h"
#include "link/DoctorReport.h"
#include "simulator/ReplySchedule.h"
#include "support/SimulatedLine.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>

using namespace vek;
using namespace vek::test;
using testing::HasSubstr;

namespace {

DeviceTypeList Types() { return {BuiltInDeviceTypes().begin(), BuiltInDeviceTypes().end()}; }

PortFacts UsableFacts() {
    PortFacts facts;
    facts.Name = "ttyUSB0";
    facts.Device = "/dev/ttyUSB0";
    facts.Exists = facts.IsSerial = facts.Rights.Allowed = true;
    facts.Rights.Group = "dialout";
    return facts;
}

/// COM1 only, on a scripted port.
class Patient {
  public:
    PortFacts Facts = UsableFacts();
    std::vector<std::string> Refused;

    void Examine(ScriptedPort& port) {
        LinkDoctor doctor(port, port, types_,
                          {[this](std::size_t row) { return row == 0 ? Facts : PortFacts(); },
                           [this](std::size_t) { return Refused; }},
                          [] {});
        port.Run(running_, doctor.ExamineAll());
        Lines = ReportOf(doctor.Examinations(), types_);
        std::ranges::copy(ConclusionOf(doctor.Examinations(), types_), std::back_inserter(Lines));
        Found = DiagnoseAll(doctor.Examinations(), types_);
        EXPECT_FALSE(port.PortOpen());
    }
    std::string Text() const { return TextOf(Lines); }

    std::vector<ReportLine> Lines;
    Diagnosis Found;

  private:
    DeviceTypeList types_ = Types();
    RunningTask running_;
};

std::string ExamineWith(const std::vector<std::string>& faults, Patient& patient) {
    ScriptedPort port;
    SimulatedDevice device(port, faults);
    device.Chatter(3000);
    patient.Examine(port);
    EXPECT_EQ(device.Events[DeviceEventKind::Block], 0);
    return patient.Text();
}

} // namespace

TEST(LinkDoctor, NamesTheCauseOfEachFault) {
    const struct {
        std::vector<std::string> Faults;
        Cause Likeliest;
        const char* Said;
    } cases[] = {
        {{}, Cause::MatrixVek, "At 9600 baud: 27 02 05 D1 0D - Matrix Vek 2.5\n"},
        {{"wrong-rate:2400"}, Cause::OtherRate, "fits Matrix Vek 2.5 at 2400 baud\n"},
        {{"chatter"}, Cause::Disturbed, "Comes unasked: 4F 4B 0D 0A 4F 4B"},
        {{"noise:3"},
         Cause::BehindBytes,
         "55 55 55 27 02 05 D1 0D - the answer of Matrix Vek 2.5 behind other bytes\n"},
        {{"half-reply"}, Cause::NotUnderstood, "27 02 - too short for an answer\n"},
        {{"wrong-reply@searchx*"}, Cause::NotUnderstood, "D8 02 05 D1 0D - no known answer"},
        {{"no-reply@restartx*"}, Cause::MatrixVek, "Restart: No reply to restart\n"},
        {{"hang-up"}, Cause::Vanished, "\nLikeliest cause: COM1 (ttyUSB0): The adapter went away"},
    };
    for (const auto& c : cases) {
        Patient patient;
        const std::string text = ExamineWith(c.Faults, patient);
        EXPECT_EQ(patient.Found.Likeliest, c.Likeliest) << text;
        EXPECT_THAT(text, HasSubstr(c.Said));
        EXPECT_EQ(text.find("At 9600 baud: "), text.rfind("At 9600 baud: ")) << "the latest of all passes";
    }
}

TEST(LinkDoctor, HearsALoopedCableWithoutADevice) {
    ScriptedPort port;
    port.OnOutput = [&](const ByteVector& bytes) { port.Reply(1, bytes); };
    Patient patient;
    patient.Examine(port);
    EXPECT_EQ(patient.Found.Likeliest, Cause::Echo);
    EXPECT_THAT(patient.Text(), HasSubstr("At 2400 baud: FF 53 45 54 56 45 4B - what was sent\n"));
    EXPECT_THAT(patient.Text(), HasSubstr("Comes back: what is sent\n"));
}

TEST(LinkDoctor, NamesWhatTheSystemTells) {
    constexpr auto opens = OpenFailure::NotThere; // as the port is there
    const PortHolder console = {"console", 71};
    const auto rights = [](bool joined) {
        return PortRights{.Owner = "root",
                          .Group = "dialout",
                          .Mode = 0660,
                          .GroupToJoin = "dialout",
                          .JoinedSinceLogin = joined};
    };
    const struct {
        const char* Name;
        std::function<void(Patient&)> Arrange;
        OpenFailure Refusal;
        Cause Likeliest;
        const char* Said;
    } cases[] = {
        {"gone", [](Patient& p) { p.Facts.Exists = false; }, opens, Cause::NotThere,
         "Device: there is none\n"},
        {"none", [](Patient& p) { p.Facts.Device.clear(); }, opens, Cause::NotThere,
         "This computer has no serial port\n"},
        {"file", [](Patient& p) { p.Facts.IsSerial = false; }, opens, Cause::NotSerial,
         "/dev/ttyUSB0, which is no serial port\n"},
        {"held", [&](Patient& p) { p.Facts.Holders = {console}; }, OpenFailure::InUse, Cause::InUse,
         "Another program uses the port: console (71)\n"},
        {"held by a service",
         [](Patient& p) {
             p.Facts.Grabbers = {{"ModemManager", 8}};
         },
         OpenFailure::InUse, Cause::InUse, "perhaps ModemManager (8)\n"},
        {"shared", [&](Patient& p) { p.Facts.Holders = {console}; }, opens, Cause::Shared,
         "may take the answers: console (71)\n"},
        {"forbidden", [&](Patient& p) { p.Facts.Rights = rights(false); }, OpenFailure::NotPermitted,
         Cause::Forbidden,
         "What to do: Join the group: sudo usermod -aG dialout $USER, then log out and in again.\n"},
        {"not yet a member", [&](Patient& p) { p.Facts.Rights = rights(true); }, OpenFailure::NotPermitted,
         Cause::Forbidden,
         "Rights: rw-rw----, owner root, group dialout; you may not use it, your membership counts from the "
         "next login on\n"},
        {"no parity",
         [](Patient& p) {
             p.Refused = {"9600,o,8,1", "110,n,8,2"};
         },
         opens, Cause::RefusesSettings,
         "Settings: refuses odd parity, 110 baud; a break stands for the wake pulse\n"},
        {"no 110 baud", [](Patient& p) { p.Refused = {"110,n,8,2"}; }, opens, Cause::Silent,
         "refuses 110 baud; a break"},
        {"pseudo-terminal", [](Patient& p) { p.Facts.IsPseudoTerminal = true, p.Refused = {"9600,o,8,1"}; },
         opens, Cause::Silent, "nothing hangs on that"},
    };
    for (const auto& c : cases) {
        ScriptedPort port;
        Patient patient;
        c.Arrange(patient);
        if (c.Refusal != opens)
            port.Present.clear();
        port.Refusal = c.Refusal;
        patient.Examine(port);
        EXPECT_EQ(patient.Found.Likeliest, c.Likeliest) << c.Name;
        EXPECT_THAT(patient.Text(), HasSubstr(c.Said)) << c.Name;
    }
}
