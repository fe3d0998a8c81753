// What is offered after a search that found no Matrix Vek: the window that examines the ports.
#include "editor/EditorFixture.h"

#include "device/PortTurns.h"
#include "device/VekComms.h"
#include "pages/EditorPages.h"

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
    /// A Matrix Vek at 9600, whose answer has a wrong sum unless `sound`.
    void Connect(bool sound) {
        port.OnOutput = [this, sound](const ByteVector& bytes) {
            if (bytes == ByteVector{'K'} && port.Rate == "9600,n,8,2")
                port.Reply(1, {39, 2, 5, static_cast<std::uint8_t>(sound ? 209 : 210), 13});
            if (bytes == ByteVector{255} && port.Rate == "9600,e,8,1")
                port.Reply(1, {240, 0});
            if (bytes.size() == 6 && sound)
                port.Reply(1, {39, 2, 5, 209});
            if (bytes.size() == 4)
                port.Reply(1, {240});
        };
    }
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
};

} // namespace

TEST_F(Doctor, IsOfferedAfterASearchWithoutAMatrixVekAndNamesTheCause) {
    Find<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(OnlineTab);
    auto* whatIsWrong = Find<QAbstractButton>(u"WhatIsWrong"_s);
    EXPECT_FALSE(whatIsWrong->isVisible());
    Connect(true);
    Click(u"OnlineSearch"_s);
    EXPECT_FALSE(whatIsWrong->isVisible()) << "a Matrix Vek is there";
    Connect(false);
    Click(u"OnlineSearch"_s);
    EXPECT_TRUE(whatIsWrong->isVisible());
    whatIsWrong->click();
    QDialog* doctor = WindowOf(*window);
    ASSERT_TRUE(doctor != nullptr && doctor->isVisible());
    port.At(1000, [&] {
        EXPECT_THAT(Lines(*doctor), HasSubstr("COM1 (ttyUSB0)\nDevice: /dev/ttyUSB0\n")) << "it fills in";
        EXPECT_THAT(Lines(*doctor), testing::Not(HasSubstr("cause")));
    });
    Settle();
    constexpr const char* cause =
        "Likeliest cause: COM1 (ttyUSB0): The answer of a device came, but with a wrong "
        "sum: bytes were changed on the way\n";
    EXPECT_THAT(Lines(*doctor), HasSubstr(cause));
    EXPECT_THAT(Copied(*doctor), HasSubstr(std::string("\n\n") + cause + "What to do: "));
    EXPECT_THAT(Copied(*doctor), HasSubstr("\n  At 9600 baud: 27 02 05 D2 0D - "));
    EXPECT_FALSE(port.PortOpen());

    Connect(true);
    doctor->findChild<QAbstractButton*>(u"ExamineAgain"_s)->click();
    Settle();
    EXPECT_THAT(Lines(*doctor), HasSubstr("\nFound: COM1 (ttyUSB0): Matrix Vek 2.5"));
    EXPECT_THAT(Lines(*doctor), testing::Not(HasSubstr("D2 0D")));
}

TEST_F(Doctor, IsOfferedByTheProgrammingWindowAndEndsAtOnce) {
    PortTurns turns;
    DeviceTypeList types;
    CheckDeviceTypes(store, types);
    const ProgrammingJob job;
    VekComms form(services, turns, types, job);
    auto* whatIsWrong = form.findChild<QAbstractButton*>(u"WhatIsWrong"_s);
    form.show();
    EXPECT_FALSE(whatIsWrong->isVisible());
    Settle();
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
    EXPECT_EQ(port.Count("33"), 0);
}

TEST_F(Doctor, OfTheMenuRefusesWhileOnline) {
    Find<QTabWidget>(u"SSTab1"_s)->setCurrentIndex(OnlineTab);
    Connect(true);
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
