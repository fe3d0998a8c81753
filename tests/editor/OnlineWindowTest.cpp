// The Online page, the strip and what going online changes in the window.
#include "editor/EditorFixture.h"

#include "pages/EditorPages.h"

#include <QCheckBox>
#include <QDialog>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;

namespace {

class OnlineWindow : public EditorTest {
  protected:
    OnlineWindow() {
        port.Present = {1};
        port.OnOutput = [this](const ByteVector& bytes) { Answer(bytes); };
        tabs = Find<QTabWidget>(u"SSTab1"_s);
    }
    void Answer(const ByteVector& bytes) {
        if (silent)
            return;
        if (bytes.size() == 6)
            port.Reply(1, {39, 1, 0, 255 - 39 - 1});
        if (bytes.size() == 4)
            port.Reply(1, {240});
    }
    void ShowTab(int tab) {
        tabs->setCurrentIndex(tab);
        Settle();
    }
    void GoOnline() {
        ShowTab(OnlineTab);
        Click(u"OnlineSearch"_s);
        boxes.ExpectMessage(u"Online"_s, u"Matrix Vek is now online."_s, MessageIcon::None);
        Click(u"OnlinePort_0"_s);
        port.Sent.clear();
    }
    /// The packets since the last call, as "V 0 210" or "M 0 4".
    std::string Packets() {
        std::string text;
        for (const std::string& sent : std::exchange(port.Sent, {})) {
            unsigned letter = 0, output = 0, value = 0;
            std::sscanf(sent.c_str(), "%x %x %x", &letter, &output, &value);
            text += static_cast<char>(letter);
            text += std::to_string(output) + "=" + std::to_string(value) + " ";
        }
        return text;
    }
    QString State() { return Find<QLabel>(u"OnlineState"_s)->text(); }
    /// The levels beside the mute boxes.
    QString Confirmed() {
        QStringList texts;
        for (std::size_t output = 0; output < 8; ++output)
            texts += Find<QLabel>(Element("Confirmed", output))->text();
        return texts.join(u',');
    }
    static std::string Volumes(const std::function<int(int)>& valueOf) {
        std::string text;
        for (int output = 0; output < 8; ++output)
            text += "V" + std::to_string(output) + "=" + std::to_string(valueOf(output)) + " ";
        return text;
    }
    static std::string Routes(int input) {
        std::string text;
        for (int output = 0; output < 8; ++output)
            text += "M" + std::to_string(output) + "=" + std::to_string(input) + " ";
        return text;
    }

    QTabWidget* tabs;
    bool silent = false;
};

const std::string allAtZero = "V0=210 V1=210 V2=210 V3=210 V4=210 V5=210 V6=210 V7=210 ";

} // namespace

TEST_F(OnlineWindow, ToldToEndItRestartsTheUnitAndAsksNothing) {
    for (const bool answers : {true, false}) {
        GoOnline();
        ShowTab(InputTrimsTab);
        port.Sent.clear();
        silent = !answers;
        int ended = 0;
        const auto counting = QObject::connect(window.get(), &CorvaneForm::Ended, [&ended] { ++ended; });
        testing::internal::CaptureStderr();
        window->EndInOrder();
        window->EndInOrder();
        Settle();
        EXPECT_EQ(ended, 1);
        EXPECT_EQ(port.Sent.size(), answers ? 1U : 4U);
        EXPECT_TRUE(port.Sent.front().starts_with("52 ")) << port.Sent.front();
        EXPECT_FALSE(port.PortOpen());
        // Qt says things of its own there.
        EXPECT_EQ(
            testing::internal::GetCapturedStderr().find(
                "vorn-matrix-editor: COM1 (ttyUSB0) still plays the levels of the online session: switch it "
                "off and on\n") == std::string::npos,
            answers);
        QObject::disconnect(counting);
        silent = false;
        Restart();
        tabs = Find<QTabWidget>(u"SSTab1"_s);
    }
}

TEST_F(OnlineWindow, TheEndOfTheDesktopsSessionRestartsTheUnit) {
    GoOnline();
    window->PrepareForSessionEnd();
    Settle();
    EXPECT_TRUE(port.Sent.back().starts_with("52 "));
    EXPECT_FALSE(port.PortOpen());
    EXPECT_TRUE(window->isVisible()) << "the session may go on after all";
}

TEST_F(OnlineWindow, GoingOnlineAndOff) {
    auto* strip = Find(u"OnlineLevelOffset"_s);
    EXPECT_FALSE(strip->isVisible());
    bool seenSearch = false;
    port.OnOutput = [&](const ByteVector& bytes) {
        const auto finding = Find<QLabel>(u"OnlineFinding_0"_s)->text();
        seenSearch = seenSearch || finding.contains(u"asked at 9600 baud, 1 of 3"_s);
        Answer(bytes);
    };
    GoOnline();
    EXPECT_EQ(Find<QLineEdit>(u"VekType_0"_s)->text().right(3), u"1.0"_s);
    EXPECT_EQ(Find<QLabel>(u"OnlineFinding_0"_s)->text(), u"Matrix Vek 1.0"_s);
    EXPECT_TRUE(seenSearch) << "how far the search is";
    for (int tab = 0; tab < tabs->count(); ++tab)
        EXPECT_EQ(tabs->isTabEnabled(tab), tab == 1 || tab == 4 || tab == 5 || tab == 7 || tab == 8) << tab;
    for (const char* command : {"NEW", "OPEN", "DEFAULT", "LINK", "BASE", "DOWNLOAD"})
        EXPECT_FALSE(Find<QAction>(QString::fromLatin1(command))->isEnabled()) << command;
    EXPECT_TRUE(Find<QAction>(u"SAVEAS"_s)->isEnabled());
    EXPECT_TRUE(strip->isVisible());
    EXPECT_TRUE(Status().endsWith(u"|Online on COM1 (ttyUSB0)"_s));
    EXPECT_EQ(Find(u"StatusLink"_s)->toolTip(), u"COM1 (ttyUSB0)"_s);
    EXPECT_TRUE(Find(u"OnlineCancel"_s)->isVisible() && !Find(u"OnlineSearch"_s)->isVisible());
    EXPECT_EQ(tabs->currentIndex(), OnlineTab);

    Click(u"OnlineCancel"_s);
    EXPECT_EQ(port.Sent, std::vector<std::string>{"52 FF FF AF"});
    EXPECT_FALSE(port.PortOpen());
    EXPECT_TRUE(tabs->isTabEnabled(RemotePanelsTab));
    EXPECT_TRUE(Find<QAction>(u"NEW"_s)->isEnabled());
    EXPECT_FALSE(strip->isVisible());
    Click(u"UsePanel_3"_s);
    EXPECT_EQ(port.Sent.size(), 1U) << "nothing is sent while offline";
    Click(u"OnlineSearch"_s);
    EXPECT_TRUE(Find(u"OnlinePort_0"_s)->isEnabled()) << "a port can be chosen again";
}

TEST_F(OnlineWindow, ASearchAndADownloadTakeTurns) {
    ScriptedPort others; // of the programming window
    services.MakeSerialControl = [&] { return std::make_unique<ForwardingControl>(others); };
    services.MakeTimer = [&] { return std::make_unique<BorrowedTimer>(others); };
    ShowTab(OnlineTab);
    Activate();
    auto* search = Find<QAbstractButton>(u"OnlineSearch"_s);
    search->setFocus();
    search->click();
    QTimer::singleShot(0, window.get(), [&] {
        auto* form = window->findChild<QDialog*>(u"VekComms"_s);
        ASSERT_NE(form, nullptr);
        EXPECT_TRUE(QTest::qWaitFor([form] {
            return form->findChild<QLabel*>(u"Blanking1"_s)->text().startsWith(u"Waiting for the search"_s);
        }));
        Settle();
        EXPECT_EQ(window->focusWidget(), Find(u"OnlinePort_0"_s));
        EXPECT_EQ(others.Story("open"), "0 open 1") << "after the other search";
        search->click();
        EXPECT_TRUE(Find<QLabel>(u"Blanking1_0"_s)->text().startsWith(u"Waiting for the programming"_s));
        form->close();
        Settle();
    });
    Trigger(u"DOWNLOAD"_s);
    EXPECT_FALSE(others.PortOpen());
    EXPECT_TRUE(Find(u"OnlinePort_0"_s)->isEnabled());
}

TEST_F(OnlineWindow, EditsAreHeard) {
    GoOnline();
    ShowTab(OutputTrimsTab);
    EXPECT_EQ(Packets(), Routes(0) + allAtZero + allAtZero) << "routed, and the levels applied once more";
    PressKnob(u"OutputLevelTrim_2"_s, Qt::Key_Down);
    EXPECT_EQ(Packets(), Volumes([](int output) { return output == 2 ? 208 : 210; }));
    EXPECT_EQ(Config.OutputTrim[2], -1.0F);
    Click(u"OutPutSelectCheck_5"_s);
    EXPECT_EQ(Packets(), Volumes([](int output) { return output == 2 ? 208 : output == 5 ? 18 : 210; }));
    PressKnob(u"OnlineLevelOffset"_s, Qt::Key_Up);
    EXPECT_EQ(Packets(), Volumes([](int output) { return output == 2 ? 210 : output == 5 ? 18 : 212; }));
    Click(u"RouteOption_4"_s);
    EXPECT_EQ(Packets(), Routes(4) + Volumes([](int output) {
                             return output == 2 ? 210 : output == 5 ? 18 : 212;
                         }));

    ShowTab(LevelsTab);
    Packets();
    Click(u"UsePanel_5"_s);
    EXPECT_EQ(Packets(), Volumes([](int output) { return output == 5 ? 210 : 18; }))
        << "only the output being edited is heard, muted or not";
    PressKnob(u"LevelTrim1"_s, Qt::Key_Down);
    EXPECT_EQ(Packets(), Volumes([](int output) { return output == 5 ? 208 : 18; }));
    // The first release tells the level as it was; 0 dB goes out once, with the second.
    QWidget* knob = Part(u"LevelTrim1"_s, u"Command1"_s);
    QTest::mouseClick(knob, Qt::LeftButton);
    Settle();
    Packets();
    QTest::mouseDClick(knob, Qt::LeftButton);
    Settle();
    EXPECT_EQ(Packets(), "");
    QTest::mouseRelease(knob, Qt::LeftButton);
    Settle();
    EXPECT_EQ(Packets(), Volumes([](int output) { return output == 5 ? 210 : 18; }));
    auto* table = Find<QTableView>(u"LevelsTable"_s);
    table->setCurrentIndex(table->model()->index(5, 1));
    table->model()->setData(table->currentIndex(), 3.0F);
    Click(u"ApplyToAll"_s);
    EXPECT_EQ(Config.Modes[0].OutputLevels[2].MaximumLevel, 3.0F);
    EXPECT_EQ(Packets(), "") << "limits are not sent";

    ShowTab(InputTrimsTab);
    Packets();
    QTest::mouseClick(Part(u"InputLevelTrim_6"_s, u"Text2"_s), Qt::LeftButton);
    Settle();
    EXPECT_TRUE(Find<QRadioButton>(u"RouteOption_6"_s)->isChecked());
    EXPECT_EQ(Packets(), Routes(6) + Volumes([](int output) { return output == 5 ? 18 : 212; }));
    ShowTab(OutputTrimsTab);
    QTest::mouseClick(Part(u"OutputLevelTrim_7"_s, u"Text2"_s), Qt::LeftButton);
    Settle();
    EXPECT_TRUE(Find<QRadioButton>(u"UsePanel_7"_s)->isChecked());
}

TEST_F(OnlineWindow, DiagnosticsAreWrittenWhileSwitchedOn) {
    GoOnline();
    ShowTab(InputTrimsTab);
    Click(u"ShowDiagnostics"_s);
    PressKnob(u"InputLevelTrim_0"_s, Qt::Key_Down);
    auto* text = Find(u"ShowDiagnostics"_s)->parentWidget()->findChild<QPlainTextEdit*>(u"Text2"_s);
    EXPECT_TRUE(
        text->toPlainText().startsWith(u"\nV,0,208 Volume Output = 1,-1dB, CS3318 = 208/&HD0\nV,1,208 "_s))
        << text->toPlainText().toStdString();
    for (int i = 0; i < 700; ++i)
        PressKnob(u"InputLevelTrim_0"_s, i % 2 ? Qt::Key_Up : Qt::Key_Down);
    EXPECT_EQ(text->blockCount(), 5000);
}

TEST_F(OnlineWindow, AValueBeyondTheChipIsTheOverflowMessage) {
    GoOnline();
    Find(u"InputLevelTrim_0"_s)->setProperty("Level", 30.0F);
    boxes.ExpectMessage(u"Error!"_s, u"Overflow"_s);
    boxes.ExpectMessage(u"Error!"_s, u"Overflow"_s);
    ShowTab(InputTrimsTab);
    EXPECT_EQ(Packets(), Routes(0)) << "no packet of it is sent";
}

TEST_F(OnlineWindow, APulledAdapterIsToldOnceAndDisconnects) {
    GoOnline();
    ShowTab(InputTrimsTab);
    int sent = 0;
    port.OnOutput = [&](const ByteVector&) {
        if (++sent == 3)
            port.Vanish();
        else
            port.Reply(1, {240});
    };
    boxes.ExpectFailure(u"Reply fail to Volume"_s);
    PressKnob(u"InputLevelTrim_0"_s, Qt::Key_Down);
    EXPECT_EQ(sent, 3);
    EXPECT_TRUE(tabs->isTabEnabled(RemotePanelsTab));
    EXPECT_TRUE(Find(u"OnlineSearch"_s)->isVisibleTo(Find(u"OnlineSearch"_s)->parentWidget()));
}

TEST_F(OnlineWindow, ClosingDisconnectsFirst) {
    GoOnline();
    silent = true;
    boxes.ExpectMessage(u"Error!"_s, u"No reply to restart"_s);
    window->close();
    EXPECT_TRUE(window->isVisible()) << "the unit is restarted first";
    Settle();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(port.Sent, std::vector<std::string>(4, "52 FF FF AF"));
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(OnlineWindow, ClosingDuringAPassRestartsTheUnitFirst) {
    GoOnline();
    ShowTab(InputTrimsTab);
    port.Sent.clear();
    silent = true;
    const long start = port.Now;
    port.At(100, [&] {
        silent = false;
        window->close();
    });
    PressKnob(u"InputLevelTrim_0"_s, Qt::Key_Down);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(port.Sent.size(), 2U) << "the packet that was waited for, then the restart";
    EXPECT_EQ(port.Sent.back(), "52 FF FF AF");
    EXPECT_EQ(port.Now - start, 501) << "a late reply to the packet cannot pass for the restart's";
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(OnlineWindow, TheStripTellsWhatIsHeardAndConfirmed) {
    Find<QPlainTextEdit>(u"Text1"_s)
        ->setPlainText(u"Output 3: Foyer\nInput 4: Media Input\nMode 2: Evening"_s);
    Settle();
    GoOnline();
    EXPECT_EQ(State(),
              u"ONLINE COM1 (ttyUSB0) · nothing was sent yet, the device plays as it was programmed"_s);
    EXPECT_EQ(Confirmed(), u"–,–,–,–,–,–,–,–"_s);
    ShowTab(OutputTrimsTab);
    Click(u"RouteOption_3"_s);
    EXPECT_EQ(State(), u"ONLINE COM1 (ttyUSB0) · Output Trims: all outputs play input 4 Media Input · 8 of 8 "
                       "confirmed"_s);
    Click(u"OutPutSelectCheck_2"_s);
    PressKnob(u"OutputLevelTrim_0"_s, Qt::Key_Down);
    EXPECT_TRUE(State().contains(u"7 of 8 outputs play input 4 Media Input, 1 muted"_s))
        << State().toStdString();
    EXPECT_EQ(Confirmed(), u"-1 dB,0 dB,muted,0 dB,0 dB,0 dB,0 dB,0 dB"_s);
    EXPECT_TRUE(Find(u"OutputLevelTrim_2"_s)->toolTip().contains(u"Output 3 Foyer is muted"_s));
    EXPECT_EQ(Find(u"OutputLevelTrim_1"_s)->toolTip(), QString());

    // Refused and unanswered, until the next ones are confirmed.
    int volumes = 0;
    port.OnOutput = [&](const ByteVector&) {
        if (++volumes == 6)
            port.Reply(1, {15});
        else if (volumes != 7)
            port.Reply(1, {240});
    };
    boxes.ExpectFailure(u"Reply ERROR to Volume"_s);
    boxes.ExpectFailure(u"Reply fail to Volume"_s);
    PressKnob(u"OutputLevelTrim_5"_s, Qt::Key_Down);
    EXPECT_TRUE(State().endsWith(u"6 of 8 confirmed, output 7 not answered, output 6 refused"_s))
        << State().toStdString();
    EXPECT_EQ(Confirmed(), u"-1 dB,0 dB,muted,0 dB,0 dB,0 dB ?,0 dB ?,0 dB"_s);
    Click(u"SendAllAgain"_s);
    EXPECT_TRUE(State().endsWith(u"8 of 8 confirmed"_s));
    EXPECT_EQ(Confirmed(), u"-1 dB,0 dB,muted,0 dB,0 dB,-1 dB,0 dB,0 dB"_s);

    // On the Levels page neither mutes nor the offset are heard.
    ShowTab(LevelsTab);
    Click(u"UsePanel_2"_s);
    EXPECT_TRUE(State().contains(u"Levels: only output 3 Foyer is heard, at 0 dB · 8 of 8"_s));
    for (const char* without : {"OutPutSelectCheck_2", "OnlineLevelOffset"})
        EXPECT_TRUE(
            Find(QString::fromLatin1(without))->toolTip().contains(u"Output 3 Foyer alone is heard"_s));
    PressKnob(u"LevelTrim1"_s, Qt::Key_Down);
    EXPECT_TRUE(State().contains(u"at \u22121 dB"_s));
    PressKnob(u"OnlineLevelOffset"_s, Qt::Key_Up);

    // What was not sent.
    EXPECT_EQ(Find<QLabel>(u"NotSent"_s)->text(), QString());
    Packets();
    Click(u"Modes_1"_s);
    EXPECT_EQ(Find<QLabel>(u"NotSent"_s)->text(), u"Not sent: Mode 2 Evening"_s);
    EXPECT_EQ(Packets(), "");
    ShowTab(InputTrimsTab);
    Click(u"RouteOption_0"_s);
    EXPECT_EQ(Find<QLabel>(u"NotSent"_s)->text(), u"Not sent: Input 1"_s);
    EXPECT_EQ(Find<QLabel>(u"InputNotSent"_s)->text(), u"not sent"_s);
    EXPECT_TRUE(Find(u"InputLevelTrim_3"_s)->toolTip().contains(u"the trim of Input 1"_s));
    Packets();
    Click(u"SendAllAgain"_s);
    EXPECT_EQ(Packets(), Routes(0) + Volumes([](int output) { return output == 2 ? 18 : 212; }));
    EXPECT_EQ(Find<QLabel>(u"NotSent"_s)->text() + Find<QLabel>(u"InputNotSent"_s)->text(), QString());

    port.OnOutput = [](const ByteVector&) {};
    boxes.ExpectFailure(u"Reply fail to Volume"_s, true);
    boxes.ExpectMessage(u"Error!"_s, u"No reply to restart"_s);
    PressKnob(u"InputLevelTrim_0"_s, Qt::Key_Down);
    EXPECT_FALSE(Find(u"OnlineState"_s)->isVisible() || port.PortOpen());
    EXPECT_EQ(Find<QLabel>(u"StatusLink"_s)->text(),
              u"COM1 still plays the levels of the online session: switch it off and on"_s);
    EXPECT_FALSE(Find<QCheckBox>(u"OutPutSelectCheck_2"_s)->isChecked());
    EXPECT_EQ(Find(u"OnlineLevelOffset"_s)->property("Level").toFloat(), 0.0F);
    EXPECT_EQ(Find(u"InputLevelTrim_3"_s)->toolTip(), QString());
}

TEST_F(OnlineWindow, MuteAllReachesTheDeviceFromWherever) {
    auto* muteAll = Find<QAction>(u"MuteAllOutputs"_s);
    EXPECT_FALSE(muteAll->isEnabled());
    const std::string muted = Volumes([](int) { return 18; });
    GoOnline();
    ShowTab(LevelsTab);
    Packets();
    muteAll->trigger();
    Settle();
    EXPECT_EQ(tabs->currentIndex(), OutputTrimsTab);
    EXPECT_EQ(Packets(), muted + Routes(0) + muted) << "the page that is entered sends its levels, too";
    EXPECT_EQ(Confirmed(), u"muted,muted,muted,muted,muted,muted,muted,muted"_s);
    for (std::size_t output = 0; output < 8; ++output)
        Click(Element("OutPutSelectCheck", output));
    Packets();

    // While the box of a failure is in front: it is taken for read.
    port.OnOutput = [this](const ByteVector&) {
        port.OnOutput = [this](const ByteVector& bytes) { Answer(bytes); };
    };
    boxes.ExpectFailure(u"Reply fail to Volume"_s, false, [&] { muteAll->trigger(); });
    PressKnob(u"OutputLevelTrim_0"_s, Qt::Key_Down);
    EXPECT_EQ(Packets(), "V0=208 " + muted);

    // While another window has the keys.
    for (const bool modal : {true, false}) {
        Click(u"OutPutSelectCheck_4"_s);
        Packets();
        QDialog dialog(window.get());
        dialog.setModal(modal);
        dialog.show();
        QTest::keyClick(&dialog, Qt::Key_M, Qt::ControlModifier);
        dialog.hide();
        Settle();
        EXPECT_TRUE(Find<QCheckBox>(u"OutPutSelectCheck_4"_s)->isChecked());
        EXPECT_EQ(Packets(), muted);
    }

    // What the device has not confirmed is not said to be so.
    Click(u"OutPutSelectCheck_4"_s);
    EXPECT_TRUE(State().contains(u"1 of 8 outputs play input 1, 7 muted"_s)) << State().toStdString();
    port.OnOutput = [](const ByteVector&) {};
    boxes.ExpectFailure(u"Reply fail to Volume"_s);
    muteAll->trigger();
    Settle();
    EXPECT_TRUE(State().contains(u"1 of 8 outputs play input 1, 7 muted · COM1 (ttyUSB0) does not answer"_s))
        << State().toStdString();
    port.OnOutput = [this](const ByteVector& bytes) { Answer(bytes); };
}

TEST_F(OnlineWindow, SafeLevelsAreRemembered) {
    const QTemporaryDir folder;
    services.SettingsFile = folder.filePath(u"settings"_s).toStdString();
    const auto restart = [this] {
        Restart();
        tabs = Find<QTabWidget>(u"SSTab1"_s);
    };
    restart();
    EXPECT_FALSE(Find<QCheckBox>(u"SafeLevels"_s)->isChecked());
    GoOnline();
    Click(u"SafeLevels"_s);
    Click(u"OnlineCancel"_s);
    restart();
    EXPECT_TRUE(Find<QCheckBox>(u"SafeLevels"_s)->isChecked());
    Config.Modes[0].OutputLevels[7].MaximumLevel = -60;
    GoOnline();
    ShowTab(OutputTrimsTab);
    const std::string packets = Packets();
    EXPECT_TRUE(packets.starts_with(Routes(0) + Volumes([](int) { return 30; }))) << packets;
    EXPECT_TRUE(packets.ends_with(Volumes([](int output) { return output == 7 ? 90 : 210; }))) << packets;
    Click(u"SafeLevels"_s);
    EXPECT_EQ(Packets(), allAtZero);
}

TEST_F(OnlineWindow, TheTranscriptHasEveryPacket) {
    auto* save = Find<QAbstractButton>(u"SaveTranscript"_s);
    EXPECT_FALSE(save->isEnabled());
    GoOnline();
    int volumes = 0;
    port.OnOutput = [&](const ByteVector& bytes) {
        if (bytes[0] != 'V' || ++volumes != 2)
            port.Reply(1, {240});
    };
    boxes.ExpectFailure(u"Reply fail to Volume"_s);
    ShowTab(InputTrimsTab);
    PressKnob(u"InputLevelTrim_0"_s, Qt::Key_Down);
    Click(u"OnlineCancel"_s);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"session.txt"_s);
    boxes.ExpectSaveFile(QString(), path);
    save->click();
    QString text = QString::fromStdString(ReadText(path.toStdString()));
    text.replace(QRegularExpression(u"\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}"_s), u"T"_s);
    text.replace(QRegularExpression(u"after \\d+ ms"_s), u"after N ms"_s);
    EXPECT_TRUE(text.startsWith(
        u"Online session on COM1 (ttyUSB0)\nT  44 69 52 65 43 74  reply 27 01 00 D7 after N ms\n"_s))
        << text.toStdString();
    EXPECT_TRUE(text.contains(u"\n\nT  4D 00 00 B2  M,0,0"_s)) << text.toStdString();
    EXPECT_TRUE(text.contains(
        u"T  56 01 D2 D6  V,1,210 Volume Output = 2,0dB, CS3318 = 210/&HD2  no reply after N ms\n"_s))
        << text.toStdString();
    EXPECT_TRUE(text.endsWith(u"T  52 FF FF AF  reply F0 after N ms\n"_s)) << text.toStdString();
    EXPECT_EQ(text.count(u"\nT  "_s), 1 + 8 + 16 + 8 + 1);
}
