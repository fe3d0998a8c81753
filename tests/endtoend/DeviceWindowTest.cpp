// What the user knows of the devices before, during and after: the real window against simulated devices.
#include "endtoend/WindowOnDevice.h"

#include "device/VekComms.h"
#include "model/ConfigFile.h"
#include "model/ProgramState.h"
#include "model/RecordLayout.h"
#include "userstate/ProgrammingJournal.h"

#include <QCryptographicHash>

#include <gmock/gmock.h>

using namespace vek;
using namespace vek::test;
using namespace Qt::StringLiterals;
using testing::HasSubstr;

namespace {

std::vector<Fault> Faults(std::initializer_list<const char*> texts) {
    std::vector<Fault> faults;
    faults.reserve(texts.size());
    for (const char* text : texts)
        faults.push_back(ParseFault(text));
    return faults;
}

std::string TextOf(QWidget& parent, const char* label) {
    return Child<QLabel>(parent, label).text().toStdString();
}
std::string LinesOf(QWidget& parent) {
    std::string lines;
    const auto& entries = Child<QListWidget>(parent, "Entries");
    for (int i = 0; i < entries.count(); ++i)
        lines += entries.item(i)->text().toStdString() + '\n';
    return lines;
}

class DeviceWindow : public testing::Test, public WindowOnDevice {
  protected:
    DeviceWindow() { services.StateFolder = folder.Path(); }

    /// What the user does, after its search, in the programming window that `open` shows and waits for.
    void InProgrammingWindow(const std::function<void()>& open, const std::function<void(VekComms&)>& user) {
        // It is modal: the user acts in its event loop.
        QTimer::singleShot(0, window.get(), [&] {
            auto* form = qobject_cast<VekComms*>(QApplication::activeModalWidget());
            ASSERT_NE(form, nullptr);
            Await(
                [&] {
                    return Child<QWidget>(*form, "Command1").isEnabled() &&
                           !TextOf(*form, "Finding_0").empty();
                },
                "the search");
            user(*form);
            Await([&] { return !form->isVisible(); }, "the end of the programming");
            form->reject();
        });
        open();
    }
    void Download(const std::function<void(VekComms&)>& user) {
        InProgrammingWindow([this] { Find<QAction>("DOWNLOAD")->trigger(); }, user);
    }
    static void Program(VekComms& form) {
        Click(&Child<QWidget>(form, "Option1_0"));
        Click(&Child<QWidget>(form, "ProgramVek"));
    }
    /// That the device took.
    DeviceEvent LastBlock() {
        const auto events = (*vek)->Events();
        return *std::find_if(events.rbegin(), events.rend(),
                             [](const DeviceEvent& event) { return event.Kind == DeviceEventKind::Block; });
    }
    std::vector<KeptAttempt> Kept() const { return ProgrammingJournal(folder.Path()).FromNewest(); }
    std::string Status() { return TextOf(*window, "StatusLink"); }

    void Press(const char* fader, Qt::Key key) { QTest::keyClick(Knob(fader), key); }
    void AwaitText(const char* label, const std::string& text) {
        Await([&] { return TextOf(*window, label) == text; }, label);
        EXPECT_EQ(TextOf(*window, label), text);
    }
    void AwaitState(const std::string& end) { AwaitText("OnlineState", "ONLINE COM1 (pts) · " + end); }
    /// What stands beside the mute boxes, what failed in red.
    void AwaitConfirmed(const std::string& levels) {
        const auto shown = [this] {
            std::string texts;
            for (int output = 0; output < 8; ++output) {
                auto* label = Find<QLabel>(("Confirmed_" + std::to_string(output)).c_str());
                const QColor colour = label->palette().color(QPalette::WindowText);
                const bool red = colour.red() > 2 * std::max(colour.green(), colour.blue());
                texts += (output == 0 ? "" : ",") + label->text().toStdString();
                EXPECT_EQ(red, label->text().endsWith(u'?')) << texts;
            }
            return texts;
        };
        Await([&] { return shown() == levels; }, "confirmations");
        EXPECT_EQ(shown(), levels);
    }

    const TemporaryFolder folder;
};

TEST_F(DeviceWindow, ASearchSaysWhatIsThereAndTheExaminationWhy) {
    longestWait = 100;
    others.emplace_back(SimulatedVekOptions{.Device = {.ReplyCode = 13}});
    Start({.Faults = Faults({"mute"})});
    Download([&](VekComms& form) {
        EXPECT_EQ(TextOf(form, "Finding_0"), "silent");
        EXPECT_EQ(TextOf(form, "Finding_1"), "another device: Wall Panel 8 Vek 2.5");
        Click(&Child<QWidget>(form, "WhatIsWrong"));
        auto& doctor = Child<QDialog>(form, "DoctorWindow");
        const auto lines = [&] { return Child<QTextEdit>(doctor, "Entries").toPlainText().toStdString(); };
        Await([&] { return lines().find("Likeliest cause: ") != std::string::npos; }, "the examination");
        EXPECT_THAT(lines(), HasSubstr("Driver: none, this is a pseudo-terminal\n"));
        EXPECT_THAT(lines(), HasSubstr("No answer at: 9600, 38400, 28800, 19200, 14400, 4800, 2400"));
        EXPECT_THAT(lines(), HasSubstr("): Another device is on this port: Wall Panel 8 Vek 2.5\n"));
        doctor.close();
        form.close();
    });
}

TEST_F(DeviceWindow, ProgramsWhatWasEditedAndRemembersIt) {
    const QString example = QString::fromStdString(DataPath("../../examples/theatre-cafe.VMC"));
    const QString saved = QString::fromStdString(folder.Path("mine.VMC"));
    MatrixConfig expected = LoadConfig(example.toStdString());
    Start({.Faults = Faults({"wrong-reply@block:3x4", "no-reply@block:9"})});
    boxes.ExpectOpenFile(QString(), example);
    Find<QAction>("OPEN")->trigger();

    ShowTab(LevelsTab);
    Click("Modes_1");
    Click("UsePanel_2");
    Drag("LevelTrim1", -1000);
    Click("UseSliderToSet_0");
    expected.Modes[1].OutputLevels[2].MaximumLevel = 10.0F;

    boxes.ExpectSaveFile(example, saved);
    boxes.ExpectMessage(u"File Saved."_s, u"Configuration saved to mine.VMC"_s, MessageIcon::None);
    Find<QAction>("SAVEAS")->trigger();
    const MatrixConfig written = LoadConfig(saved.toStdString());
    EXPECT_TRUE(EncodeRecord(written) == EncodeRecord(expected));

    boxes.ExpectMessage(u"Error!  3"_s, u"Reply to download failed"_s);
    Download([&](VekComms& form) {
        EXPECT_EQ(TextOf(form, "SendsWhat"), "Sends mine.VMC (2 modes in use, VekNet 512 to 767)");
        EXPECT_EQ(TextOf(form, "SearchHint"), "A search restarts every known device on the ports");
        Program(form);
    });
    EXPECT_EQ(Status(), "COM1 (pts) holds an incomplete configuration: program it again");

    boxes.ExpectYesNo(u"All sent ok"_s, u"Program another vek"_s, Answer::No, Answer::No);
    Download([&](VekComms& form) {
        const auto pressTwice = [](Qt::Key key) {
            QTest::keyClick(QApplication::focusWidget(), key);
            QTest::keyClick(QApplication::focusWidget(), key);
            QKeyEvent held(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
            QApplication::sendEvent(QApplication::focusWidget(), &held);
        };
        Child<QWidget>(form, "Command1").setFocus();
        pressTwice(Qt::Key_Space); // a search
        Await([&] { return Child<QWidget>(form, "Option1_0").hasFocus(); }, "the search");
        EXPECT_EQ(TextOf(form, "Finding_0"), "Matrix Vek 2.5");
        pressTwice(Qt::Key_Space);
        pressTwice(Qt::Key_Return);
        const QRegularExpression details(u"^Block \\d+ of 273 · \\d+ retr(y|ies) · \\d+ s left$"_s);
        Await([&] { return details.match(Child<QLabel>(form, "DownloadDetails").text()).hasMatch(); },
              "how far it is");
        pressTwice(Qt::Key_Space);
        pressTwice(Qt::Key_Return);
    });
    const auto image = (*vek)->Image();
    ASSERT_TRUE(image);
    EXPECT_THAT(Status(), testing::MatchesRegex("Programmed Matrix Vek 2.5 on COM1 \\(pts\\), "
                                                "[0-9]{2}:[0-9]{2}, 273 blocks, [0-9]+ retr(y|ies)"));

    // The history keeps both attempts, and what the device was given.
    ASSERT_EQ(Kept().size(), 2U);
    const KeptAttempt attempt = Kept().front();
    EXPECT_EQ(Kept().back().Entry.BlocksAcknowledged, 3);
    const DownloadImage encoded = EncodeImage(LoadConfig(attempt.ConfigPath())).Image;
    EXPECT_TRUE(std::equal(image->begin(), image->end(), encoded.Buffer.begin()));
    EXPECT_EQ(encoded.Length, static_cast<int>(image->size()));
    const QByteArray bytes(reinterpret_cast<const char*>(image->data()), std::ssize(*image));
    const auto text = QJsonDocument::fromJson(QByteArray::fromStdString(ReadText(attempt.TextPath())));
    EXPECT_EQ(text[u"imageSha256"_s].toString().toLatin1(),
              QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
    EXPECT_EQ(text[u"result"_s], u"programmed"_s);
    EXPECT_EQ(text[u"file"_s], saved);

    // What is edited since then is told, and it can be programmed again as it was.
    ShowTab(OutputTrimsTab);
    Press("OutputLevelTrim_1", Qt::Key_Down);
    const std::string change = "Output trim 2 Terrace 0dB -> -1dB\n";
    Find<QAction>("ShowChanges")->trigger();
    auto* base = Find<QComboBox>("ComparedWith");
    QTest::keyClick(base, Qt::Key_End);
    EXPECT_EQ(base->currentText(), u"What was programmed last"_s);
    Await([&] { return LinesOf(*Find("ChangesPanel")) == change; }, "the change");
    Find<QAction>("ProgrammingHistory")->trigger();
    auto& history = *Find("HistoryWindow");
    EXPECT_THAT(LinesOf(history), testing::ContainsRegex(
                                      "programmed +mine.VMC  COM1 \\(pts\\)  Matrix Vek 2.5  273 blocks .*\n"
                                      ".*block refused +mine.VMC  COM1 \\(pts\\)  Matrix Vek 2.5  3 of 273"));
    Click(&Child<QWidget>(history, "WhatChanged"));
    EXPECT_EQ(LinesOf(Child<QDialog>(history, "ChangesForm")), change);
    Child<QDialog>(history, "ChangesForm").close();
    boxes.ExpectYesNo(u"Program again"_s,
                      u"Do you wish to program mine.VMC of %1 again?"_s.arg(
                          QString::fromStdString(JournalTime(attempt.Entry)).left(16).replace(u'T', u' ')),
                      Answer::Yes, Answer::No);
    int reached = 0;
    InProgrammingWindow([&] { Child<QAbstractButton>(history, "ProgramAgain").click(); },
                        [&](VekComms& form) {
                            Program(form);
                            Await([&] { return LastBlock().Number >= 20 && LastBlock().Number < 272; },
                                  "blocks");
                            Click(&Child<QWidget>(form, "Command2"));
                            EXPECT_FALSE(form.isVisible());
                            reached = LastBlock().Number;
                        });
    EXPECT_EQ(Status(), "COM1 (pts) holds an incomplete configuration: program it again");
    EXPECT_EQ(Kept().front().Entry.Result, AttemptResult::Cancelled);
    EXPECT_TRUE(LoadConfig(Kept().front().ConfigPath()) == LoadConfig(attempt.ConfigPath()));
    EXPECT_EQ(boxes.LastAbout, u"It was sent to COM1 (pts). The window that opens now asks for the port."_s);
    const DeviceEvent last = LastBlock();
    EXPECT_LE(last.Number, reached + 1) << "but the one that was under way";
    EXPECT_TRUE(std::equal(last.Request.begin() + 3, last.Request.begin() + 11,
                           encoded.Buffer.begin() + std::ptrdiff_t{8} * last.Number));
}

TEST_F(DeviceWindow, TheStripSaysWhatTheDeviceConfirmsAndWhatWasNotSent) {
    Start({.Faults = Faults({"no-reply@volume:25x8", "wrong-reply@volume:41"})});
    Find<QPlainTextEdit>("Text1")->setPlainText(u"Output 3: Foyer\nInput 4: Media\nMode 2: Evening"_s);
    ShowTab(OnlineTab);
    EXPECT_TRUE(Find("SearchHint")->isVisible());
    EXPECT_EQ(TextOf(*window, "SearchHint"), "A search restarts every known device on the ports");
    GoOnline();
    AwaitState("nothing was sent yet, the device plays as it was programmed");
    ShowTab(OutputTrimsTab);
    Served(Pass('M', 0) + Pass('V', 210) + Pass('V', 210));
    Click("OutPutSelectCheck_2");
    Served(Pass('V', {210, 210, 18, 210, 210, 210, 210, 210}));
    AwaitState("Output Trims: 7 of 8 outputs play input 1, 1 muted · 8 of 8 confirmed");
    AwaitConfirmed("0 dB,0 dB,muted,0 dB,0 dB,0 dB,0 dB,0 dB");

    // A device that is silent for a whole pass, and what it takes again.
    longestWait = 50;
    for (int output = 0; output < 8; ++output)
        boxes.ExpectFailure(u"Reply fail to Volume"_s, false, [this, output] {
            if (output == 0)
                AwaitConfirmed("0 dB ?,0 dB …,muted,0 dB …,0 dB …,0 dB …,0 dB …,0 dB …");
        });
    Press("OnlineLevelOffset", Qt::Key_Up);
    const std::string louder = Pass('V', {212, 212, 18, 212, 212, 212, 212, 212});
    Served(louder);
    AwaitState("Output Trims: 7 of 8 outputs play input 1, 1 muted · COM1 (pts) does not answer");
    AwaitBoxes();
    longestWait = 500;
    Click("SendAllAgain");
    Served(Pass('M', 0) + louder);
    AwaitState("Output Trims: 7 of 8 outputs play input 1, 1 muted · 8 of 8 confirmed");
    AwaitConfirmed("+1 dB,+1 dB,muted,+1 dB,+1 dB,+1 dB,+1 dB,+1 dB");

    // What is shown but not sent.
    EXPECT_EQ(TextOf(*window, "NotSent"), "");
    Click("Modes_1");
    AwaitText("NotSent", "Not sent: Mode 2 Evening");
    boxes.ExpectFailure(u"Reply ERROR to Volume"_s);
    ShowTab(InputTrimsTab);
    Served(louder + louder);
    AwaitState("Input Trims: 7 of 8 outputs play input 1, at +1 dB, 1 muted · 8 of 8 confirmed");
    Click("RouteOption_3");
    AwaitText("NotSent", "Not sent: Input 4 Media");
    EXPECT_EQ(TextOf(*window, "InputNotSent"), "not sent");
    AwaitRequests(heard);
    Click("SendAllAgain");
    Served(Pass('M', 3) + louder);
    AwaitText("NotSent", "");
    Drag("InputLevelTrim_3", 1000);
    const int lowest = 212 - 2 * 18;
    Served(Pass('V', {lowest, lowest, 18, lowest, lowest, lowest, lowest, lowest}));

    // On the Levels page neither mutes nor the offset are heard.
    ShowTab(LevelsTab);
    Served(Pass('V', {lowest - 2, 18, 18, 18, 18, 18, 18, 18}));
    Click("UsePanel_2");
    Served(Pass('V', {18, 18, lowest - 2, 18, 18, 18, 18, 18}));
    AwaitState("Levels: only output 3 Foyer is heard, at \u221218 dB · 8 of 8 confirmed");
    EXPECT_TRUE(Find("OnlineLevelOffset")->toolTip().contains(u"Output 3 Foyer alone is heard"_s));
    Click("MuteAll");
    Served(Pass('V', 18) + Pass('V', 18));
    AwaitState("Output Trims: all outputs are muted · 8 of 8 confirmed");
    EXPECT_EQ(Find<QTabWidget>("SSTab1")->currentIndex(), OutputTrimsTab);
    for (int output = 0; output < 8; ++output)
        EXPECT_TRUE(Find<QCheckBox>(("OutPutSelectCheck_" + std::to_string(output)).c_str())->isChecked());
}

TEST_F(DeviceWindow, ASessionEndsWithItsFailureAndLeavesNothingBehind) {
    Start({.Faults = Faults({"no-reply@volume:26", "no-reply@online-restart:2x4"})});
    GoOnline();
    ShowTab(OutputTrimsTab);
    Served(Pass('M', 0) + Pass('V', 210) + Pass('V', 210));
    Click("OutPutSelectCheck_2");
    Served(Pass('V', {210, 210, 18, 210, 210, 210, 210, 210}));
    boxes.ExpectFailure(u"Reply fail to Volume"_s, true, [this] { longestWait = 50; });
    boxes.ExpectMessage(u"Error!"_s, u"No reply to restart"_s);
    Press("OnlineLevelOffset", Qt::Key_Up);
    Served("V0=212 V1=212 R R R R ");
    AwaitOffline();
    AwaitBoxes();
    EXPECT_FALSE(Find<QCheckBox>("OutPutSelectCheck_2")->isChecked());
    EXPECT_EQ(Level("OnlineLevelOffset"), 0.0F);
    window->Timer1_Tick();
    EXPECT_EQ(Status(), "COM1 still plays the levels of the online session: switch it off and on");

    const QString path = QString::fromStdString(folder.Path("session.txt"));
    boxes.ExpectSaveFile(QString(), path);
    ShowTab(OnlineTab);
    Click("SaveTranscript");
    const std::string text = ReadText(path.toStdString());
    EXPECT_THAT(text, testing::StartsWith("Online session on COM1 (pts)\n"));
    EXPECT_THAT(text,
                HasSubstr("56 02 12 95  V,2,18 Volume Output = 3,-96dB, CS3318 = 18/&H12  reply F0 after "));
    std::string packets;
    const QRegularExpression line(
        u"^[-0-9]{10} [:.0-9]{12}  ([ 0-9A-F]+)  .*(no reply|reply F0|reply 27 02 05 D1) after \\d+ ms$"_s,
        QRegularExpression::MultilineOption);
    int silent = 0;
    for (const auto& match : line.globalMatch(QString::fromStdString(text))) {
        const QByteArray packet = QByteArray::fromHex(match.captured(1).toLatin1());
        packets += PacketText(
            {reinterpret_cast<const std::uint8_t*>(packet.data()), static_cast<std::size_t>(packet.size())});
        silent += match.captured(2) == u"no reply"_s;
    }
    EXPECT_EQ("D R " + packets, Requests()) << "the session's own, without those of the search";
    EXPECT_EQ(silent, 1 + 4);
}

TEST_F(DeviceWindow, SafeLevelsRiseByStepsAndFallAtOnce) {
    Start();
    Config.Modes[0].OutputLevels[7].MaximumLevel = -60;
    GoOnline();
    std::string rise;
    for (int value = 18 + 12; value <= 210; value += 12)
        rise += Pass('V', {value, value, value, value, value, value, value, std::min(value, 90)});
    Click("SafeLevels");
    AwaitRequests(heard);
    ShowTab(OutputTrimsTab);
    Served(Pass('M', 0) + rise);
    Click("OutPutSelectCheck_0");
    Served(Pass('V', {18, 210, 210, 210, 210, 210, 210, 90}));
}

TEST_F(DeviceWindow, EndingWaitsForThePacketUnderWay) {
    const std::function<void()> ends[] = {[this] { Click("OnlineCancel"); }, [this] { window->close(); }};
    for (const auto& end : ends) {
        constexpr int late = 300;
        Start({.Faults = Faults({"late-reply:300@volume:17"})});
        GoOnline();
        ShowTab(OutputTrimsTab);
        Served(Pass('M', 0) + Pass('V', 210) + Pass('V', 210));
        QElapsedTimer time;
        time.start();
        ShowTab(OnlineTab);
        Served("V0=210 ");
        end();
        EXPECT_TRUE(window->isVisible()) << "the unit is restarted first";
        Served("R ");
        EXPECT_GE(time.elapsed(), late) << "its reply could pass for the restart's";
        AwaitOffline();
    }
    Await([this] { return !window->isVisible(); }, "the window's end");
}

} // namespace
