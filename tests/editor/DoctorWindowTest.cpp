// What is offered after a search that found no Matrix Vek: the window that examines the ports.
#include "editor/EditorFixture.h"

#include "device/DoctorWindow.h"
#include "device/PortTurns.h"
#include "device/VekComms.h"
#include "pages/EditorPages.h"
#include "support/SimulatedLine.h"

#include <QClipboard>
#include <QDialog>
#include <QTabWidget>
#include <QTextEdit>

#include <gmock/gmock.h>

using namespace vek;
using namespace vek::test;
using testing::HasSubstr;

namespace {

class Doctor : public EditorTest {
  protected:
    Doctor() {
        port.Present = {1};
        facts[0].Name = "ttyUSB0";
        facts[0].Device = "/dev/ttyUSB0";
        facts[0].Exists = facts[0].IsSerial = facts[0].Rights.Allowed = true;
    }
    void Connect(const std::vector<std::string>& faults) { device.emplace(port, faults); }
    static QDialog* WindowOf(QWidget& parent) { return parent.findChild<QDialog*>(u"DoctorWindow"_s); }
    static std::string Lines(const QDialog& doctor) {
        return doctor.findChild<QTextEdit*>(u"Entries"_s)->toPlainText().toStdString();
    }
    static std::string Copied(const QDialog& doctor) {
        doctor.findChild<QAbstractButton*>(u"CopyText"_s)->click();
        return QGuiApplication::clipboard()->text().toStdString();
    }
    static std::string State(const QDialog& doctor) {
        return doctor.findChild<QLabel*>(u"DoctorState"_s)->text().toStdString();
    }
    std::optional<SimulatedDevice> device;
};

} // namespace

TEST_F(Doctor, IsOfferedAfterASearchWithoutAMatrixVekAndNamesTheCause) {
    const std::string senseless = "answers that are not understood";
    const struct {
        std::vector<std::string> Faults;
        std::string Finding, Cause, Heard;
    } cases[] = {
        {{"echo"},
         senseless,
         "What is sent comes back: transmit and receive are joined",
         "At 9600 baud: FF 53 45 54 56 45 4B 27 02 05 D1 0D - what was sent, and behind it the answer of "
         "Matrix Vek 2.5"},
        {{"wrong-rate"},
         senseless,
         "The device answers at another rate: what came fits Matrix Vek 2.5 at 4800 baud",
         "At 9600 baud: 7E 0C 18 00 66 00 06 F3 E6 80 - fits"},
        {{"wrong-sum"},
         senseless,
         "The answer of a device came, but with a wrong sum: bytes were changed on the way",
         "At 9600 baud: 27 03 05 D1 0D - begins as the answer of Matrix Vek, but"},
        {{"chatter", "mute"}, senseless, "Something sends without being asked", "Comes unasked: 4F 4B 0D 0A"},
        {{"mute"},
         "silent",
         "Nothing answers",
         "No answer at: 9600, 38400, 28800, 19200, 14400, 4800, 2400 baud\n"},
    };
    for (const auto& c : cases) {
        Restart();
        Find<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(OnlineTab);
        auto* whatIsWrong = Find<QAbstractButton>(u"WhatIsWrong"_s);
        Connect({});
        Click(u"OnlineSearch"_s);
        EXPECT_FALSE(whatIsWrong->isVisible()) << "a Matrix Vek is there";
        Connect(c.Faults);
        device->Chatter(3000);
        Click(u"OnlineSearch"_s);
        EXPECT_EQ(Find<QLabel>(u"OnlineFinding_0"_s)->text().toStdString(), c.Finding);
        ASSERT_TRUE(whatIsWrong->isVisible());
        whatIsWrong->click();
        QDialog* doctor = WindowOf(*window);
        ASSERT_TRUE(doctor != nullptr && doctor->isVisible());
        device->Chatter(3000);
        port.At(1000, [&] {
            EXPECT_THAT(Lines(*doctor), HasSubstr("COM1 (ttyUSB0)\nDevice: /dev/ttyUSB0\n")) << "it fills in";
            EXPECT_THAT(Lines(*doctor), testing::Not(HasSubstr("cause")));
        });
        Settle();
        EXPECT_THAT(Lines(*doctor), HasSubstr("Likeliest cause: COM1 (ttyUSB0): " + c.Cause + '\n'));
        EXPECT_THAT(Copied(*doctor),
                    HasSubstr("\n\nLikeliest cause: COM1 (ttyUSB0): " + c.Cause + "\nWhat to do: "));
        EXPECT_THAT(Copied(*doctor), HasSubstr("\n  " + c.Heard));
        EXPECT_FALSE(port.PortOpen());
        Connect({});
        doctor->findChild<QAbstractButton*>(u"ExamineAgain"_s)->click();
        Settle();
        EXPECT_THAT(Lines(*doctor), HasSubstr("\nFound: COM1 (ttyUSB0): Matrix Vek 2.5"));
        EXPECT_THAT(Lines(*doctor), testing::Not(HasSubstr(c.Heard)));
    }
}

TEST_F(Doctor, IsOfferedByTheProgrammingWindowAndEndsAtOnce) {
    PortTurns turns;
    DeviceTypeList types;
    CheckDeviceTypes(store, types);
    const ProgrammingJob job;
    VekComms form(services, turns, types, job);
    auto* whatIsWrong = form.findChild<QAbstractButton*>(u"WhatIsWrong"_s);
    Connect({"wrong-sum"});
    form.show();
    EXPECT_FALSE(whatIsWrong->isVisible());
    Settle();
    EXPECT_EQ(form.findChild<QLabel*>(u"Finding_0"_s)->text(), u"answers that are not understood"_s);
    ASSERT_TRUE(whatIsWrong->isVisible());
    whatIsWrong->click();
    QDialog* doctor = WindowOf(form);
    ASSERT_NE(doctor, nullptr);
    const long begin = port.Now;
    port.At(700, [&] {
        EXPECT_TRUE(port.PortOpen());
        EXPECT_FALSE(turns.Free());
        doctor->reject();
        EXPECT_TRUE(!port.PortOpen() && turns.Free() && !doctor->isVisible());
    });
    Settle();
    EXPECT_EQ(port.Now, begin + 700);
    EXPECT_TRUE(form.isVisible());
}

TEST_F(Doctor, OfTheMenuRefusesWhileOnline) {
    Find<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(OnlineTab);
    Connect({});
    Click(u"OnlineSearch"_s);
    boxes.ExpectMessage(u"Online"_s, u"Matrix Vek is now online."_s, MessageIcon::None);
    Click(u"OnlinePort_0"_s);
    port.Forget();
    Trigger(u"LinkDoctor"_s);
    EXPECT_THAT(State(*WindowOf(*window)), HasSubstr("Disconnect"));
    EXPECT_TRUE(port.Sent.empty() && port.PortOpen());
    WindowOf(*window)->reject();
    Click(u"OnlineCancel"_s);
    Trigger(u"LinkDoctor"_s);
    EXPECT_THAT(Lines(*WindowOf(*window)), HasSubstr("Found: COM1 (ttyUSB0)"));
    Trigger(u"LinkDoctor"_s); // and the window may go while it examines
    window.reset();
}

TEST_F(Doctor, AndTheSearchCanBeTriedAgainAfterAFailure) {
    bool broken = false;
    services.FactsOfPort = [&](std::size_t) -> PortFacts {
        if (broken)
            throw std::runtime_error("broken");
        return {};
    };
    PortTurns turns;
    const DeviceTypeList types;
    const ProgrammingJob job;
    VekComms form(services, turns, types, job);
    form.show();
    broken = true;
    boxes.ExpectMessage(u"Error!"_s, u"broken"_s);
    Settle();
    EXPECT_TRUE(form.findChild<QAbstractButton*>(u"Command1"_s)->isEnabled() && turns.Free());
    EXPECT_FALSE(form.findChild<QWidget*>(u"Blanking_0"_s)->isVisible());
    DoctorWindow doctor(services, turns, types, false, &form);
    doctor.open();
    boxes.ExpectMessage(u"Error!"_s, u"broken"_s);
    Settle();
    EXPECT_EQ(State(doctor), "The examination was broken off");
    EXPECT_TRUE(doctor.findChild<QAbstractButton*>(u"ExamineAgain"_s)->isEnabled());
}
