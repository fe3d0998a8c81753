// The Online page, the strip and what going online changes in the window.
#include "editor/EditorFixture.h"

#include "pages/EditorPages.h"
#include "support/OnlinePackets.h"

#include <QCheckBox>
#include <QDialog>
#include <QPlainTextEdit>
#include <QRadioButton>
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
    }
    void Answer(const ByteVector& bytes) {
        if (bytes.size() == 6)
            port.Reply(1, {39, 1, 0, 255 - 39 - 1});
        if (bytes.size() == 4)
            port.Reply(1, {240});
    }
    QTabWidget* Tabs() { return Find<QTabWidget>(u"SSTab1"_s); }
    void ShowTab(int tab) {
        Tabs()->setCurrentIndex(tab);
        Settle();
    }
    void GoOnline() {
        ShowTab(OnlineTab);
        Click(u"OnlineSearch"_s);
        boxes.ExpectMessage(u"Online"_s, u"Matrix Vek is now online."_s, MessageIcon::None);
        Click(u"OnlinePort_0"_s);
        port.Sent.clear();
    }
    /// The packets since the last call.
    std::string Packets() {
        std::string text;
        for (const std::string& sent : std::exchange(port.Sent, {})) {
            const QByteArray packet = QByteArray::fromHex(sent.c_str());
            text += PacketText({reinterpret_cast<const std::uint8_t*>(packet.data()), 4});
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
};

} // namespace

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
    for (int tab = 0; tab < Tabs()->count(); ++tab)
        EXPECT_EQ(Tabs()->isTabEnabled(tab), tab == 1 || tab == 4 || tab == 5 || tab == 7 || tab == 8) << tab;
    for (const char* command : {"NEW", "OPEN", "DEFAULT", "LINK", "BASE", "DOWNLOAD"})
        EXPECT_FALSE(Find<QAction>(QString::fromLatin1(command))->isEnabled()) << command;
    EXPECT_TRUE(Find<QAction>(u"SAVEAS"_s)->isEnabled());
    EXPECT_TRUE(strip->isVisible());
    EXPECT_TRUE(Status().endsWith(u"|Online on COM1 (ttyUSB0)"_s));
    EXPECT_EQ(Find(u"StatusLink"_s)->toolTip(), u"COM1 (ttyUSB0)"_s);
    EXPECT_TRUE(Find(u"OnlineCancel"_s)->isVisible() && !Find(u"OnlineSearch"_s)->isVisible());
    EXPECT_EQ(Tabs()->currentIndex(), OnlineTab);

    Click(u"OnlineCancel"_s);
    EXPECT_EQ(port.Sent, std::vector<std::string>{"52 FF FF AF"});
    EXPECT_FALSE(port.PortOpen());
    EXPECT_TRUE(Tabs()->isTabEnabled(RemotePanelsTab));
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
    ShowTab(LevelsTab);
    Click(u"UsePanel_5"_s);
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
    EXPECT_EQ(Packets(), Pass('V', {18, 18, 18, 18, 18, 210, 18, 18}));
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
    EXPECT_EQ(Packets(), Pass('M', 6) + Pass('V', 210));
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
    text->appendPlainText(u"\n"_s.repeated(6000));
    PressKnob(u"InputLevelTrim_0"_s, Qt::Key_Up);
    EXPECT_TRUE(
        text->toPlainText().trimmed().endsWith(u"V,7,210 Volume Output = 8,0dB, CS3318 = 210/&HD2"_s));
    EXPECT_EQ(text->blockCount(), 5000);
}

TEST_F(OnlineWindow, AValueBeyondTheChipIsTheOverflowMessage) {
    GoOnline();
    Find(u"InputLevelTrim_0"_s)->setProperty("Level", 30.0F);
    boxes.ExpectMessage(u"Error!"_s, u"Overflow"_s);
    boxes.ExpectMessage(u"Error!"_s, u"Overflow"_s);
    ShowTab(InputTrimsTab);
    EXPECT_EQ(Packets(), Pass('M', 0)) << "no packet of it is sent";
}

TEST_F(OnlineWindow, TheStripNamesWhatFailedAndWhatIsNotHeard) {
    GoOnline();
    ShowTab(OutputTrimsTab);
    Click(u"OutPutSelectCheck_2"_s);
    EXPECT_TRUE(Find(u"OutputLevelTrim_2"_s)->toolTip().contains(u"Output 3 is muted"_s));
    EXPECT_EQ(Find(u"OutputLevelTrim_1"_s)->toolTip(), QString());
    // Refused and unanswered.
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
    EXPECT_EQ(Confirmed(), u"0 dB,0 dB,muted,0 dB,0 dB,0 dB ?,0 dB ?,0 dB"_s);
    ShowTab(InputTrimsTab);
    EXPECT_TRUE(Find(u"InputLevelTrim_3"_s)->toolTip().contains(u"the trim of Input 1"_s));
    Click(u"OnlineCancel"_s);
    EXPECT_EQ(Find(u"InputLevelTrim_3"_s)->toolTip(), QString());
}

TEST_F(OnlineWindow, MuteAllReachesTheDeviceFromWherever) {
    auto* muteAll = Find<QAction>(u"MuteAllOutputs"_s);
    EXPECT_FALSE(muteAll->isEnabled());
    const std::string muted = Pass('V', 18);
    GoOnline();
    ShowTab(OutputTrimsTab);
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
    Restart();
    EXPECT_FALSE(Find<QCheckBox>(u"SafeLevels"_s)->isChecked());
    GoOnline();
    Click(u"SafeLevels"_s);
    Click(u"OnlineCancel"_s);
    Restart();
    EXPECT_TRUE(Find<QCheckBox>(u"SafeLevels"_s)->isChecked());
}
