// The Online page, the strip and what going online changes in the window.
#include "editor/EditorFixture.h"

#include "pages/EditorPages.h"

#include <QCheckBox>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTabWidget>

using namespace vek;
using namespace vek::test;

namespace {

class OnlineWindow : public EditorTest {
  protected:
    OnlineWindow() {
        port.Present = {1};
        port.OnOutput = [this](const ByteVector& bytes) { Answer(bytes); };
        tabs = Find<QTabWidget>(QStringLiteral("SSTab1"));
    }
    void Answer(const ByteVector& bytes) {
        if (silent)
            return;
        if (bytes.size() == 6)
            port.Reply(1, {39, 1, 0, 255 - 39 - 1});
        if (bytes.size() == 4)
            port.Reply(1, {240});
    }
    void GoOnline() {
        tabs->setCurrentIndex(OnlineTab);
        Click(QStringLiteral("OnlineSearch"));
        boxes.ExpectMessage(QStringLiteral("Online"), QStringLiteral("Matrix Vek is now online."),
                            MessageIcon::None);
        Click(QStringLiteral("OnlinePort_0"));
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

TEST_F(OnlineWindow, GoingOnlineAndOff) {
    auto* strip = Find(QStringLiteral("OnlineLevelOffset"));
    EXPECT_FALSE(strip->isVisible());
    GoOnline();
    EXPECT_EQ(Find<QLineEdit>(QStringLiteral("VekType_0"))->text().right(3), QStringLiteral("1.0"));
    for (int tab = 0; tab < tabs->count(); ++tab)
        EXPECT_EQ(tabs->isTabEnabled(tab), tab == 1 || tab == 4 || tab == 5 || tab == 7) << tab;
    for (const char* command : {"NEW", "OPEN", "DEFAULT", "LINK", "BASE", "DOWNLOAD"})
        EXPECT_FALSE(Find<QAction>(QString::fromLatin1(command))->isEnabled()) << command;
    EXPECT_TRUE(Find<QAction>(QStringLiteral("SAVEAS"))->isEnabled());
    EXPECT_TRUE(strip->isVisible());
    EXPECT_EQ(tabs->currentIndex(), OnlineTab);

    Click(QStringLiteral("OnlineCancel"));
    EXPECT_EQ(port.Sent, std::vector<std::string>{"52 FF FF AF"});
    EXPECT_FALSE(port.PortOpen());
    EXPECT_TRUE(tabs->isTabEnabled(RemotePanelsTab));
    EXPECT_TRUE(Find<QAction>(QStringLiteral("NEW"))->isEnabled());
    EXPECT_FALSE(strip->isVisible());
    Click(QStringLiteral("UsePanel_3"));
    EXPECT_EQ(port.Sent.size(), 1U) << "nothing is sent while offline";
}

TEST_F(OnlineWindow, EditsAreHeard) {
    GoOnline();
    tabs->setCurrentIndex(OutputTrimsTab);
    EXPECT_EQ(Packets(), Routes(0) + allAtZero + allAtZero) << "routed, and the levels applied once more";
    PressKnob(QStringLiteral("OutputLevelTrim_2"), Qt::Key_Down);
    EXPECT_EQ(Packets(), Volumes([](int output) { return output == 2 ? 208 : 210; }));
    EXPECT_EQ(Config.OutputTrim[2], -1.0F);
    Click(QStringLiteral("OutPutSelectCheck_5"));
    EXPECT_EQ(Packets(), Volumes([](int output) { return output == 2 ? 208 : output == 5 ? 18 : 210; }));
    PressKnob(QStringLiteral("OnlineLevelOffset"), Qt::Key_Up);
    EXPECT_EQ(Packets(), Volumes([](int output) { return output == 2 ? 210 : output == 5 ? 18 : 212; }));
    Click(QStringLiteral("RouteOption_4"));
    EXPECT_EQ(Packets(), Routes(4) + Volumes([](int output) {
                             return output == 2 ? 210 : output == 5 ? 18 : 212;
                         }));

    tabs->setCurrentIndex(LevelsTab);
    Packets();
    Click(QStringLiteral("UsePanel_5"));
    EXPECT_EQ(Packets(), Volumes([](int output) { return output == 5 ? 210 : 18; }))
        << "only the output being edited is heard, muted or not";
    PressKnob(QStringLiteral("LevelTrim1"), Qt::Key_Down);
    EXPECT_EQ(Packets(), Volumes([](int output) { return output == 5 ? 208 : 18; }));

    tabs->setCurrentIndex(InputTrimsTab);
    Packets();
    QTest::mousePress(Part(QStringLiteral("InputLevelTrim_6"), QStringLiteral("Text2")), Qt::LeftButton);
    EXPECT_TRUE(Find<QRadioButton>(QStringLiteral("RouteOption_6"))->isChecked());
    EXPECT_EQ(Packets(), Routes(6) + Volumes([](int output) { return output == 5 ? 18 : 212; }));
    tabs->setCurrentIndex(OutputTrimsTab);
    QTest::mousePress(Part(QStringLiteral("OutputLevelTrim_7"), QStringLiteral("Text2")), Qt::LeftButton);
    EXPECT_TRUE(Find<QRadioButton>(QStringLiteral("UsePanel_7"))->isChecked());
}

TEST_F(OnlineWindow, DiagnosticsAreWrittenWhileSwitchedOn) {
    GoOnline();
    tabs->setCurrentIndex(InputTrimsTab);
    Click(QStringLiteral("ShowDiagnostics"));
    PressKnob(QStringLiteral("InputLevelTrim_0"), Qt::Key_Down);
    auto* text = Find(QStringLiteral("ShowDiagnostics"))
                     ->parentWidget()
                     ->findChild<QPlainTextEdit*>(QStringLiteral("Text2"));
    EXPECT_TRUE(text->toPlainText().startsWith(
        QStringLiteral("\nV,0,208 Volume Output = 1,-1dB, CS3318 = 208/&HD0\nV,1,208 ")))
        << text->toPlainText().toStdString();
    for (int i = 0; i < 700; ++i)
        PressKnob(QStringLiteral("InputLevelTrim_0"), i % 2 ? Qt::Key_Up : Qt::Key_Down);
    EXPECT_EQ(text->blockCount(), 5000);
}

TEST_F(OnlineWindow, AValueBeyondTheChipIsTheOverflowMessage) {
    GoOnline();
    Find(QStringLiteral("InputLevelTrim_0"))->setProperty("Level", 30.0F);
    boxes.ExpectMessage(QStringLiteral("Error!"), QStringLiteral("Overflow"));
    boxes.ExpectMessage(QStringLiteral("Error!"), QStringLiteral("Overflow"));
    tabs->setCurrentIndex(InputTrimsTab);
    EXPECT_EQ(Packets(), Routes(0)) << "no packet of it is sent";
}

TEST_F(OnlineWindow, APulledAdapterIsToldOnceAndDisconnects) {
    GoOnline();
    tabs->setCurrentIndex(InputTrimsTab);
    int sent = 0;
    port.OnOutput = [&](const ByteVector&) {
        if (++sent == 3)
            port.Vanish();
        else
            port.Reply(1, {240});
    };
    boxes.ExpectMessage(QStringLiteral("Error!"), QStringLiteral("Reply fail to Volume"));
    PressKnob(QStringLiteral("InputLevelTrim_0"), Qt::Key_Down);
    EXPECT_EQ(sent, 3);
    EXPECT_TRUE(tabs->isTabEnabled(RemotePanelsTab));
    EXPECT_TRUE(Find(QStringLiteral("OnlineSearch"))
                    ->isVisibleTo(Find(QStringLiteral("OnlineSearch"))->parentWidget()));
}

TEST_F(OnlineWindow, ClosingDisconnectsFirst) {
    GoOnline();
    silent = true;
    boxes.ExpectMessage(QStringLiteral("Error!"), QStringLiteral("No reply to restart"));
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(port.Sent, std::vector<std::string>(4, "52 FF FF AF"));
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(OnlineWindow, ClosingInsideAWaitWaitsForItsEnd) {
    GoOnline();
    tabs->setCurrentIndex(InputTrimsTab);
    port.Sent.clear();
    silent = true;
    bool closedInside = true;
    port.At(100, [&] {
        window->close();
        closedInside = !window->isVisible();
        silent = false;
    });
    PressKnob(QStringLiteral("InputLevelTrim_0"), Qt::Key_Down);
    QCoreApplication::processEvents();
    EXPECT_FALSE(closedInside);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(port.Sent.size(), 2U) << "the packet that was waited for, then the restart";
    EXPECT_EQ(port.Sent.back(), "52 FF FF AF");
    EXPECT_FALSE(port.PortOpen());
}
