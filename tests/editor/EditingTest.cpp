// Editing by mouse and keyboard: level rules, address menus, clipboard, links.
#include "editor/EditorFixture.h"

#include "controls/dBText.h"
#include "model/ClipboardText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>

using namespace vek;
using namespace vek::test;

namespace {

class Editing : public EditorTest {
  protected:
    float LevelOf(const char* control) { return Find<dBText>(QString::fromLatin1(control))->Level(); }
    OutputLevelRecord& Levels() { return Config.Modes[0].OutputLevels[0]; }
    QString TextOf(const QString& label) { return Find<QAbstractButton>(label)->text(); }
    void SetClipboard(const std::string& text) {
        QGuiApplication::clipboard()->setText(
            QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())));
    }
    /// Opens the context menu of a selector and chooses an entry.
    void Choose(const QString& selector, const QString& entry) {
        QTest::mouseClick(Find(selector), Qt::RightButton);
        Trigger(entry);
        for (QMenu* menu : window->findChildren<QMenu*>())
            menu->close();
    }
};

} // namespace

TEST_F(Editing, RefusedLevelsSpringBackAfterOneMessage) {
    const QString restoring = QStringLiteral("\r\nRestoring original value");
    boxes.ExpectMessage(
        QStringLiteral("Max Level error"),
        QStringLiteral("The Maximum level you set is below the start level set") + restoring,
        MessageIcon::Exclamation, [this] {
            // The box takes the focus away from the level.
            Part<QLineEdit>(QStringLiteral("PanelMaximumLevel"), QStringLiteral("Text1"))->clearFocus();
        });
    auto* text = Part<QLineEdit>(QStringLiteral("PanelMaximumLevel"), QStringLiteral("Text1"));
    window->activateWindow();
    text->setFocus();
    Type(QStringLiteral("PanelMaximumLevel"), QStringLiteral("-3"));
    text->clearFocus();
    EXPECT_EQ(LevelOf("PanelMaximumLevel"), 6.0F);
    EXPECT_FALSE(ConfigDiffers());
}

TEST_F(Editing, WithPreviousStartTheStartLevelFollows) {
    Click(QStringLiteral("RemotePreviousNotSetStartLevel_1"));
    EXPECT_FALSE(Find(QStringLiteral("RemoteStartLevel"))->isVisibleTo(window.get()) &&
                 !Find(QStringLiteral("RemoteStartLevel"))->isHidden());
    Type(QStringLiteral("PanelMaximumLevel"), QStringLiteral("-3.5"));
    EXPECT_EQ(Levels().MaximumLevel, -3.5F);
    EXPECT_EQ(Levels().StartLevel, -3.5F);
    EXPECT_EQ(LevelOf("RemoteStartLevel"), -3.5F);
    Click(QStringLiteral("RemotePreviousNotSetStartLevel_0"));
    EXPECT_FALSE(Find(QStringLiteral("RemoteStartLevel"))->isHidden());
}

TEST_F(Editing, LimitsAreTakenFromTheSlider) {
    for (int i = 0; i < 4; ++i)
        PressKnob(QStringLiteral("LevelTrim1"), Qt::Key_Up);
    Click(QStringLiteral("UseSliderToSet_1"));
    EXPECT_EQ(Levels().StartLevel, 4.0F);
    boxes.ExpectMessage(
        QStringLiteral("Min Level error"),
        QStringLiteral("The Minimum level you set is above the start level set\r\nRestoring original value"));
    PressKnob(QStringLiteral("LevelTrim1"), Qt::Key_Up);
    Click(QStringLiteral("UseSliderToSet_2"));
    EXPECT_EQ(Levels().MinimumLevel, -36.0F);
    EXPECT_EQ(LevelOf("PanelMinimumLevel"), -36.0F);
    Click(QStringLiteral("UseSliderToSet_0"));
    EXPECT_EQ(Levels().MaximumLevel, 5.0F);
    // The slider's level belongs to the mode and output.
    Click(QStringLiteral("UsePanel_1"));
    Click(QStringLiteral("UseSliderToSet_1"));
    EXPECT_EQ(Config.Modes[0].OutputLevels[1].StartLevel, 0.0F);
}

TEST_F(Editing, AddressLabelsAndTheirMenus) {
    Click(QStringLiteral("UsePanel_2"));
    Click(QStringLiteral("VolumeVekNetLabel_5"));
    EXPECT_EQ(TextOf(QStringLiteral("VolumeVekNetLabel_5")), QString::number(512 + 48 + 4 * 2 + 1));
    QTest::keyClick(Find(QStringLiteral("VolumeVekNetLabel_5")), Qt::Key_Space);
    EXPECT_EQ(TextOf(QStringLiteral("VolumeVekNetLabel_5")), QStringLiteral("OFF"));

    QTest::mousePress(Find(QStringLiteral("VekNetLabelRouteControl_4")), Qt::RightButton);
    auto* menu = Find<QMenu>(QStringLiteral("mnuHiddenGlobalSelects"));
    EXPECT_TRUE(menu->isVisible());
    menu->close();
    // A mode label has no function to remember.
    QTest::mousePress(Find(QStringLiteral("VekNetLabel2_1")), Qt::RightButton);
    Find<QMenu>(QStringLiteral("mnuHiddenModeVekNet"))->close();
    Trigger(QStringLiteral("mnuHiddenGlobalSelectsAllEnableOne"));
    AddressEnables expected;
    for (auto& flags : expected.RouteControlAddressEnable)
        flags[4] = flagTrue;
    EXPECT_EQ(Config.Addresses, expected);
    ConfigChanged = false;
    Trigger(QStringLiteral("mnuHiddenGlobalSelectsAllEnableOne"));
    EXPECT_TRUE(ConfigChanged) << "an entry marks the configuration as changed even when no flag changed";
    Trigger(QStringLiteral("mnuHiddenOuputSelectAll"));
    Trigger(QStringLiteral("mnuHiddenOuputDeSelectOutputs"));
    EXPECT_EQ(TextOf(QStringLiteral("VekNetLabelRoute_6")), QString::number(512 + 80 + 8 * 2 + 6));
    EXPECT_EQ(TextOf(QStringLiteral("VekNetLabelRoute_7")), QStringLiteral("OFF"));
}

TEST_F(Editing, AddressesArePlainSums) {
    Config.VekNetBase = 32767;
    Config.Addresses.ModeAddressEnable[15] = flagTrue;
    SavedConfig = Config;
    Click(QStringLiteral("UsePanel_1"));
    Config.Addresses.ModeAddressEnable[15] = flagTrue;
    EXPECT_EQ(TextOf(QStringLiteral("VekNetLabel2_15")), QStringLiteral("OFF"))
        << "the working copies rule until the configuration is shown";
    Click(QStringLiteral("VekNetLabel2_15"));
    EXPECT_EQ(TextOf(QStringLiteral("VekNetLabel2_15")), QStringLiteral("32782"));
}

TEST_F(Editing, ModesAndOutputsAreCopiedAndPasted) {
    Type(QStringLiteral("RemotePanelVolumes_1"), QStringLiteral("b2"));
    EXPECT_EQ(Config.Modes[0].OutputPanels[1].PanelVolumes.Trimmed(), "2B");
    Choose(QStringLiteral("Modes_0"), QStringLiteral("mnuHiddenModeCopy"));
    Choose(QStringLiteral("Modes_4"), QStringLiteral("mnuHiddenModePaste"));
    EXPECT_EQ(Config.Modes[4], Config.Modes[0]);
    EXPECT_NE(Config.Modes[3], Config.Modes[0]);

    Type(QStringLiteral("PanelMaximumLevel"), QStringLiteral("3.5"));
    Choose(QStringLiteral("UsePanel_0"), QStringLiteral("mnuHiddenOuputCopy"));
    Choose(QStringLiteral("UsePanel_7"), QStringLiteral("mnuHiddenOuputPaste"));
    EXPECT_EQ(Config.Modes[0].OutputLevels[7].MaximumLevel, 3.5F);

    // Pasted into the mode that is shown, the controls show it.
    SetClipboard(CopyModeText(DefaultMode()));
    Choose(QStringLiteral("Modes_0"), QStringLiteral("mnuHiddenModePaste"));
    Trigger(QStringLiteral("ONLINE"));
    EXPECT_EQ(Config.Modes[0], DefaultMode());
}

TEST_F(Editing, PastingAnythingElseFails) {
    const std::string before = Bytes();
    const auto fails = [&](const std::string& clipboard, bool mode) {
        SetClipboard(clipboard);
        boxes.ExpectMessage(QStringLiteral("Paste Failed!"),
                            mode ? QStringLiteral("An error occurred in mode paste")
                                 : QStringLiteral("An error occurred in output paste"));
        Choose(mode ? QStringLiteral("Modes_0") : QStringLiteral("UsePanel_0"),
               mode ? QStringLiteral("mnuHiddenModePaste") : QStringLiteral("mnuHiddenOuputPaste"));
        EXPECT_EQ(Differing(Bytes(), before), "");
    };
    fails("", true);
    fails("", false);
    fails(CopyPointText({}), true);
    fails(CopyModeText({}), false);
    fails(CopyPointText({}).substr(0, 20), false);
}

TEST_F(Editing, FollowersShowTheirLeader) {
    Config.Modes[0].LinkGroup = {0, 3, 0, 0, 3, 0, 0, 0};
    Config.Modes[0].OutputPanels[1].UsePreviousRoute = flagTrue;
    Config.Modes[0].OutputPanels[1].PanelInputs = "12";
    Choose(QStringLiteral("Modes_0"), QStringLiteral("mnuHiddenModeCopy"));
    Choose(QStringLiteral("Modes_0"), QStringLiteral("mnuHiddenModePaste"));
    EXPECT_EQ(Part<QLabel>(QStringLiteral("RemotePaneInputs_4"), QStringLiteral("Label1"))->text(),
              QStringLiteral("Linked - 2"));
    EXPECT_EQ(Part<QLabel>(QStringLiteral("RemotePanelSelects_4"), QStringLiteral("Label1"))->text(),
              QStringLiteral("Linked - 2"));
    EXPECT_TRUE(Find<QAbstractButton>(QStringLiteral("UsePreviousRouteCheck_4"))->isChecked());
    EXPECT_EQ(Part<QLineEdit>(QStringLiteral("RemotePaneInputs_1"), QStringLiteral("Text1"))->text(),
              QStringLiteral("12"));
}

TEST_F(Editing, PanelsOfOtherOutputsAreRefused) {
    Type(QStringLiteral("RemotePanelVolumes_0"), QStringLiteral("34"));
    Type(QStringLiteral("RemotePanelVolumes_1"), QStringLiteral("35"));
    Type(QStringLiteral("RemotePanelSelects_1"), QStringLiteral("3"));
    EXPECT_EQ(Config.Modes[0].OutputPanels[1].PanelVolumes.Trimmed(), "5");
    EXPECT_EQ(Config.Modes[0].OutputPanels[1].PanelSelects.Trimmed(), "3");
    Click(QStringLiteral("Modes_1"));
    Type(QStringLiteral("RemotePanelVolumes_1"), QStringLiteral("3"));
    EXPECT_EQ(Config.Modes[1].OutputPanels[1].PanelVolumes.Trimmed(), "3") << "each mode on its own";
}
