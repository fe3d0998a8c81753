// Editing by mouse and keyboard: level rules, address menus, clipboard, links.
#include "editor/EditorFixture.h"

#include "controls/dBText.h"
#include "model/ClipboardText.h"

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

TEST_F(Editing, ARefusedLevelSpringsBackAndTheClickThatLeftItCounts) {
    const QString text =
        u"The Maximum level you set is below the start level set\r\nRestoring original value"_s;
    ShowTab(LevelsTab);
    Activate();
    auto* maximum = Part<QLineEdit>(u"PanelMaximumLevel"_s, u"Text1"_s);
    for (const char* clicked :
         {"Modes_2", "UsePanel_3", "RemoteMuteOnMin", "RemotePreviousNotSetStartLevel_1"}) {
        auto* button = Find<QAbstractButton>(QString::fromLatin1(clicked));
        const bool checkedBefore = button->isChecked();
        maximum->setFocus();
        ASSERT_TRUE(maximum->hasFocus());
        maximum->selectAll();
        QTest::keyClicks(maximum, u"-3"_s);
        Press(button);
        Settle(); // a box would be an unexpected one
        ASSERT_FALSE(maximum->hasFocus()) << clicked;
        EXPECT_TRUE(button->isDown()) << clicked;
        EXPECT_EQ(LevelOf("PanelMaximumLevel"), 6.0F);
        boxes.ExpectMessage(u"Max Level error"_s, text, MessageIcon::Exclamation,
                            [&] { EXPECT_TRUE(button->isChecked() != checkedBefore && !button->isDown()); });
        Release(button);
        QTest::qWait(20); // the look whether the button is still held
        Settle();
        EXPECT_TRUE(boxes.Done()) << clicked;
    }
    for (const ModeRecord& mode : Config.Modes)
        for (const OutputLevelRecord& levels : mode.OutputLevels)
            EXPECT_EQ(levels.MaximumLevel, 6.0F);

    boxes.ExpectMessage(
        u"Max Level error"_s,
        u"The Maximum level you set is below the minimum level set\r\nRestoring original value"_s);
    Type(u"PanelMaximumLevel"_s, u"-50"_s);
    maximum->clearFocus();
    Settle();
    EXPECT_EQ(LevelOf("PanelMaximumLevel"), 6.0F) << "told once, although the box was left as well";
}

TEST_F(Editing, ALevelEnteredAsItIsDisplayedIsStored) {
    const std::tuple<const char*, float OutputLevelRecord::*, float, const char*, float> cases[] = {
        {"PanelMaximumLevel", &OutputLevelRecord::MaximumLevel, 6.3F, "6", 6.0F},
        {"PanelMinimumLevel", &OutputLevelRecord::MinimumLevel, -36.2F, "-36", -36.0F},
        {"RemoteStartLevel", &OutputLevelRecord::StartLevel, -1.2F, "-1", -1.0F},
        {"RemoteStepLevel", &OutputLevelRecord::StepLevel, 0.3F, "0.5", 0.5F}};
    ShowTab(LevelsTab);
    Activate();
    for (const auto& [name, field, stored, typed, expected] : cases) {
        SCOPED_TRACE(typed);
        const QString control = QString::fromLatin1(name);
        auto* box = Part<QLineEdit>(control, u"Text1"_s);
        Config.Modes[0].OutputLevels[0] = {};
        Levels().*field = stored;
        Click(u"Modes_1"_s); // which stores what is shown
        Config.Modes[0].OutputLevels[0] = {};
        Levels().*field = stored;
        Click(u"Modes_0"_s);
        box->setFocus();
        box->clearFocus();
        EXPECT_EQ(Levels().*field, stored) << "looked at only";
        Type(control, QString::fromLatin1(typed));
        EXPECT_EQ(Levels().*field, expected);
    }
    Levels().MaximumLevel = 0.3F;
    Click(u"UsePanel_0"_s);
    PressKnob(u"LevelTrim1"_s, Qt::Key_Home);
    PressKnob(u"LevelTrim1"_s, Qt::Key_End);
    Click(u"UseSliderToSet_0"_s);
    EXPECT_EQ(Levels().MaximumLevel, 10.0F);
}

TEST_F(Editing, TheSlidersLevelIsKeptByModeAndOutput) {
    const auto slider = [this] { return Find(u"LevelTrim1"_s)->property("Level").toFloat(); };
    PressKnob(u"LevelTrim1"_s, Qt::Key_PageDown);
    Click(u"UsePanel_1"_s);
    EXPECT_EQ(slider(), 0.0F);
    PressKnob(u"LevelTrim1"_s, Qt::Key_Up);
    Click(u"Modes_3"_s);
    EXPECT_EQ(slider(), 0.0F);
    Click(u"Modes_0"_s);
    EXPECT_EQ(slider(), 1.0F);
    Click(u"UsePanel_0"_s);
    EXPECT_EQ(slider(), -6.0F);
    EXPECT_FALSE(ConfigDiffers()) << "it is no part of the configuration";
    Trigger(u"NEW"_s);
    EXPECT_EQ(slider(), 0.0F);
}

TEST_F(Editing, WithPreviousStartTheStartLevelFollows) {
    Click(u"RemotePreviousNotSetStartLevel_1"_s);
    EXPECT_TRUE(Find(u"RemoteStartLevel"_s)->isHidden());
    Type(u"PanelMaximumLevel"_s, u"-3.5"_s);
    EXPECT_EQ(Levels().MaximumLevel, -3.5F);
    EXPECT_EQ(Levels().StartLevel, -3.5F);
    EXPECT_EQ(LevelOf("RemoteStartLevel"), -3.5F);
    Click(u"RemotePreviousNotSetStartLevel_0"_s);
    EXPECT_FALSE(Find(u"RemoteStartLevel"_s)->isHidden());
}

TEST_F(Editing, LimitsAreTakenFromTheSlider) {
    for (int i = 0; i < 4; ++i)
        PressKnob(u"LevelTrim1"_s, Qt::Key_Up);
    Click(u"UseSliderToSet_1"_s);
    EXPECT_EQ(Levels().StartLevel, 4.0F);
    boxes.ExpectMessage(
        u"Min Level error"_s,
        u"The Minimum level you set is above the start level set\r\nRestoring original value"_s);
    PressKnob(u"LevelTrim1"_s, Qt::Key_Up);
    Click(u"UseSliderToSet_2"_s);
    EXPECT_EQ(Levels().MinimumLevel, -36.0F);
    EXPECT_EQ(LevelOf("PanelMinimumLevel"), -36.0F);
    Click(u"UseSliderToSet_0"_s);
    EXPECT_EQ(Levels().MaximumLevel, 5.0F);
}

TEST_F(Editing, TheTableOfAllOutputsObeysTheRulesOfTheBoxes) {
    ShowTab(LevelsTab);
    Activate();
    auto* table = Find<QTableView>(u"LevelsTable"_s);
    enum Column { Maximum = 1, Minimum = 3, Previous = 6 };
    const auto enter = [&](int first, int last, Column column, const QString& text) {
        const QAbstractItemModel& model = *table->model();
        table->setFocus();
        table->setCurrentIndex(model.index(first, column));
        table->selectionModel()->select({model.index(first, column), model.index(last, column)},
                                        QItemSelectionModel::ClearAndSelect);
        QTest::keyClick(table, column == Previous ? Qt::Key_Space : Qt::Key_F2);
        if (auto* box = table->findChild<QLineEdit*>(u"LevelEditor"_s)) {
            QTest::keyClicks(box, text);
            QTest::keyClick(box, Qt::Key_Return);
        }
        Settle();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    auto& outputs = Config.Modes[0].OutputLevels;
    const QString restoring = u"\r\nRestoring original value"_s;

    enter(0, 0, Maximum, u"3.5"_s);
    EXPECT_EQ(LevelOf("PanelMaximumLevel"), 3.5F) << "the boxes show it";
    Type(u"PanelMinimumLevel"_s, u"-40"_s);
    EXPECT_EQ(table->model()->index(0, Minimum).data().toString(), u"-40"_s) << "the table shows it";
    EXPECT_EQ(outputs[0].MinimumLevel, -40.0F);

    boxes.ExpectMessage(u"Max Level error"_s,
                        u"The Maximum level you set is below the start level set"_s + restoring);
    enter(4, 4, Maximum, u"-3"_s);
    EXPECT_EQ(outputs[4], OutputLevelRecord());
    enter(4, 4, Previous, {});
    enter(4, 4, Maximum, u"-3"_s);
    EXPECT_EQ(outputs[4].StartLevel, -3.0F) << "it follows";

    // Several at once are one step; who refuses keeps what it had.
    const auto before = Config;
    const QString reason = u": The Minimum level you set is above the maximum level set"_s;
    boxes.ExpectMessage(u"Min Level error"_s, u"Output 5"_s + reason + restoring);
    enter(3, 6, Minimum, u"-2.5"_s);
    for (const std::size_t output : {3U, 5U, 6U})
        EXPECT_EQ(outputs[output].MinimumLevel, -2.5F);
    EXPECT_EQ(outputs[4].MinimumLevel, -36.0F);
    EXPECT_EQ(EditText("EditUndo"), u"&Undo: set levels of 3 outputs of Mode 1 (3 changes)"_s);
    Trigger(u"EditUndo"_s);
    EXPECT_EQ(Config, before);
    EXPECT_TRUE(Chosen(u"UsePanel_3"_s) && boxes.Done());
}

TEST_F(Editing, WhatIsTypedInTheTableCountsBeforeACommand) {
    ShowTab(LevelsTab);
    Activate();
    auto* table = Find<QTableView>(u"LevelsTable"_s);
    Levels().MaximumLevel = 6.3F;
    table->setFocus();
    table->setCurrentIndex(table->model()->index(0, 1));
    QTest::keyClick(table, Qt::Key_8);
    Trigger(u"EditUndo"_s);
    EXPECT_EQ(Levels().MaximumLevel, 6.3F) << "entered, and taken back";
    QTest::keyClick(table, Qt::Key_8);
    Trigger(u"ONLINE"_s);
    EXPECT_EQ(Levels().MaximumLevel, 8.0F);
}

TEST_F(Editing, AddressLabelsAndTheirMenus) {
    Click(u"UsePanel_2"_s);
    Click(u"VolumeVekNetLabel_5"_s);
    EXPECT_EQ(TextOf(u"VolumeVekNetLabel_5"_s), QString::number(512 + 48 + 4 * 2 + 1));
    QTest::keyClick(Find(u"VolumeVekNetLabel_5"_s), Qt::Key_Space);
    EXPECT_EQ(TextOf(u"VolumeVekNetLabel_5"_s), u"OFF"_s);

    QTest::mousePress(Find(u"VekNetLabelRouteControl_4"_s), Qt::RightButton);
    auto* menu = Find<QMenu>(u"mnuHiddenGlobalSelects"_s);
    EXPECT_TRUE(menu->isVisible());
    menu->close();
    // A mode label has no function to remember.
    QTest::mousePress(Find(u"VekNetLabel2_1"_s), Qt::RightButton);
    Find<QMenu>(u"mnuHiddenModeVekNet"_s)->close();
    Trigger(u"mnuHiddenGlobalSelectsAllEnableOne"_s);
    for (const auto& flags : Config.Addresses.RouteControlAddressEnable)
        EXPECT_EQ(flags[4], flagTrue);
    ConfigChanged = false;
    Trigger(u"mnuHiddenGlobalSelectsAllEnableOne"_s);
    EXPECT_TRUE(ConfigChanged) << "an entry marks the configuration as changed even when no flag changed";
    Trigger(u"mnuHiddenOuputSelectAll"_s);
    Trigger(u"mnuHiddenOuputDeSelectOutputs"_s);
    EXPECT_EQ(TextOf(u"VekNetLabelRoute_6"_s), QString::number(512 + 80 + 8 * 2 + 6));
    EXPECT_EQ(TextOf(u"VekNetLabelRoute_7"_s), u"OFF"_s);
}

TEST_F(Editing, ModesAndOutputsAreCopiedAndPasted) {
    Type(u"RemotePanelVolumes_1"_s, u"b2"_s);
    EXPECT_EQ(Config.Modes[0].OutputPanels[1].PanelVolumes.Trimmed(), "2B");
    Choose(u"Modes_0"_s, u"mnuHiddenModeCopy"_s);
    Choose(u"Modes_4"_s, u"mnuHiddenModePaste"_s);
    EXPECT_EQ(Config.Modes[4], Config.Modes[0]);
    EXPECT_NE(Config.Modes[3], Config.Modes[0]);

    // Pasted into the mode that is shown, the controls show it.
    SetClipboard(CopyModeText(DefaultMode()));
    Choose(u"Modes_0"_s, u"mnuHiddenModePaste"_s);
    Trigger(u"ONLINE"_s);
    EXPECT_EQ(Config.Modes[0], DefaultMode());
}

TEST_F(Editing, PastingAnythingElseFails) {
    const std::string before = Bytes();
    SetClipboard(CopyPointText({}));
    boxes.ExpectMessage(u"Paste Failed!"_s, u"An error occurred in mode paste"_s);
    Choose(u"Modes_0"_s, u"mnuHiddenModePaste"_s);
    SetClipboard(CopyModeText({}));
    boxes.ExpectMessage(u"Paste Failed!"_s, u"An error occurred in output paste"_s);
    Choose(u"UsePanel_0"_s, u"mnuHiddenOuputPaste"_s);
    EXPECT_EQ(Differing(Bytes(), before), "");
}

TEST_F(Editing, FollowersShowTheirLeader) {
    Config.Modes[0].LinkGroup = {0, 3, 0, 0, 3, 0, 0, 0};
    Config.Modes[0].OutputPanels[1].UsePreviousRoute = flagTrue;
    Config.Modes[0].OutputPanels[1].PanelInputs = "12";
    Choose(u"Modes_0"_s, u"mnuHiddenModeCopy"_s);
    Choose(u"Modes_0"_s, u"mnuHiddenModePaste"_s);
    EXPECT_EQ(Part<QLabel>(u"RemotePaneInputs_4"_s, u"Label1"_s)->text(), u"Linked - 2"_s);
    EXPECT_EQ(Part<QLabel>(u"RemotePanelSelects_4"_s, u"Label1"_s)->text(), u"Linked - 2"_s);
    EXPECT_TRUE(Chosen(u"UsePreviousRouteCheck_4"_s));
    EXPECT_FALSE(Find(u"UsePreviousRouteCheck_4"_s)->isEnabled()) << "it would spring back";
    EXPECT_TRUE(Find(u"UsePreviousRouteCheck_1"_s)->isEnabled());
    EXPECT_EQ(TextIn(u"RemotePaneInputs_1"_s), u"12"_s);
    Click(u"UsePreviousRouteCheck_1"_s);
    EXPECT_FALSE(Chosen(u"UsePreviousRouteCheck_4"_s));
}

TEST_F(Editing, PanelsOfOtherOutputsAreRefused) {
    Type(u"RemotePanelVolumes_0"_s, u"34"_s);
    Type(u"RemotePanelVolumes_1"_s, u"35"_s);
    EXPECT_EQ(QToolTip::text(), u"Panel 3 is used by output 1"_s);
    Type(u"RemotePanelSelects_1"_s, u"3"_s);
    EXPECT_EQ(Config.Modes[0].OutputPanels[1].PanelVolumes.Trimmed(), "5");
    EXPECT_EQ(Config.Modes[0].OutputPanels[1].PanelSelects.Trimmed(), "3");
    Type(u"RemotePanelSelects_7"_s, u"34"_s);
    EXPECT_EQ(Config.Modes[0].OutputPanels[7].PanelSelects.Trimmed(), "4");
    Click(u"Modes_1"_s);
    Type(u"RemotePanelVolumes_1"_s, u"3"_s);
    EXPECT_EQ(Config.Modes[1].OutputPanels[1].PanelVolumes.Trimmed(), "3") << "each mode on its own";
    // A follower's own list has given way to its leader's.
    Config.Modes[2].LinkGroup = {1, 0, 0, 0, 0, 0, 0, 1};
    Config.Modes[2].OutputPanels[7].PanelSelects = "8";
    Click(u"Modes_2"_s);
    Type(u"RemotePanelSelects_0"_s, u"8"_s);
    EXPECT_EQ(Config.Modes[2].OutputPanels[0].PanelSelects.Trimmed(), "8");
}
