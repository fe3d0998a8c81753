// One undo for everything that edits the configuration.
#include "editor/EditorFixture.h"

#include "model/ClipboardText.h"

#include <random>

using namespace vek;
using namespace vek::test;

namespace {

class Undo : public EditorTest {
  protected:
    void Copy(const std::string& text) {
        QGuiApplication::clipboard()->setText(QString::fromStdString(text));
    }
};

} // namespace

TEST_F(Undo, NamesItsStepsAndGoesToThem) {
    EXPECT_EQ(EditText("EditUndo"), u"&Undo"_s);
    EXPECT_FALSE(Find<QAction>(u"EditUndo"_s)->isEnabled());
    ShowTab(LevelsTab);
    Click(u"Modes_1"_s);
    Click(u"UsePanel_2"_s);
    Type(u"PanelMaximumLevel"_s, u"3"_s);
    EXPECT_EQ(EditText("EditUndo"), u"&Undo: Mode 2, Output 3: Maximum level +6dB -> +3dB"_s);
    Click(u"Modes_7"_s);
    Click(u"UsePanel_7"_s);
    ShowTab(NotesTab);
    Trigger(u"EditUndo"_s);
    EXPECT_EQ(Config, MatrixConfig());
    EXPECT_TRUE(Chosen(u"Modes_1"_s) && Chosen(u"UsePanel_2"_s));
    EXPECT_EQ(ShownTab(), LevelsTab);
    EXPECT_EQ(TextIn(u"PanelMaximumLevel"_s), u"+6dB"_s);
    EXPECT_EQ(EditText("EditRedo"), u"&Redo: Mode 2, Output 3: Maximum level +6dB -> +3dB"_s);
    EXPECT_FALSE(Find<QAction>(u"EditUndo"_s)->isEnabled());
    Trigger(u"EditRedo"_s);
    EXPECT_EQ(Config.Modes[1].OutputLevels[2].MaximumLevel, 3.0F);
}

TEST_F(Undo, StepsTellTheNamesOfTheNotes) {
    Find<QPlainTextEdit>(u"Text1"_s)->setPlainText(u"Mode 1: Caf\u00E9\nOutput 2: Foyer"_s);
    ShowTab(OutputTrimsTab);
    PressKnob(u"OutputLevelTrim_1"_s, Qt::Key_Down);
    EXPECT_EQ(EditText("EditUndo"), u"&Undo: Output trim 2 Foyer 0dB -> -1dB"_s);
    Copy(CopyModeText(DefaultMode()));
    Trigger(u"mnuHiddenModePaste"_s);
    EXPECT_EQ(EditText("EditUndo").toStdString(), "&Undo: paste Mode 1 Caf\u00E9 (24 changes)");
    Trigger(u"EditUndo"_s);
    EXPECT_EQ(ShownTab(), RemotePanelsTab);
    EXPECT_EQ(Config.Modes[0], ModeRecord());
}

TEST_F(Undo, ANameThatIsTypedIsAnEditOfTheNotes) {
    Activate();
    ShowTab(NotesTab);
    auto* names = Find<QTableWidget>(u"NamesTable"_s);
    const auto type = [&] {
        names->setFocus();
        for (const char key : std::string_view("Hi"))
            QTest::keyClick(QApplication::focusWidget(), key);
    };
    type();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    Settle();
    type();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Find<QPlainTextEdit>(u"Text1"_s)->toPlainText(), u"Input 1: Hi"_s);
    Find(u"Modes_0"_s)->setFocus();
    const QString taken = u"&Redo: Notes, line 2: none -> \"Input 2: Hi\""_s;
    EXPECT_EQ(EditText("EditRedo"), taken) << "nothing is left in the box";
    type();
    Trigger(u"DEFAULT"_s);
    EXPECT_EQ(Config.Notes.Trimmed(), "Input 1: Hi\r\nInput 2: Hi")
        << "commands take over what is being typed";
}

TEST_F(Undo, EditsOfOneFieldAreOneStepUntilItIsLeft) {
    Activate();
    ShowTab(NotesTab);
    auto* notes = Find<QPlainTextEdit>(u"Text1"_s);
    notes->setFocus();
    QTest::keyClicks(notes, u"one"_s);
    QTest::keyClick(notes, Qt::Key_Return);
    QTest::keyClicks(notes, u"two"_s);
    Find(u"Modes_0"_s)->setFocus();
    notes->setFocus();
    QTest::keyClicks(notes, u"!"_s);
    // The keys are the window's, also in the box.
    QTest::keyClick(notes, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(notes->toPlainText(), u"one\ntwo"_s);
    QTest::keyClick(notes, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(notes->toPlainText(), QString());
    QTest::keyClick(notes, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(notes, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(notes->toPlainText(), u"one\ntwo!"_s);

    ShowTab(OutputTrimsTab);
    for (int i = 0; i < 3; ++i)
        PressKnob(u"OutputLevelTrim_1"_s, Qt::Key_Down);
    PressKnob(u"OutputLevelTrim_2"_s, Qt::Key_Down);
    EXPECT_EQ(EditText("EditUndo"), u"&Undo: Output trim 3 0dB -> -1dB"_s);
    Trigger(u"EditUndo"_s);
    EXPECT_EQ(EditText("EditUndo"), u"&Undo: Output trim 2 0dB -> -3dB"_s);
    PressKnob(u"OutputLevelTrim_2"_s, Qt::Key_Down);
    PressKnob(u"OutputLevelTrim_2"_s, Qt::Key_Up);
    EXPECT_EQ(EditText("EditUndo"), u"&Undo: Output trim 2 0dB -> -3dB"_s) << "nothing came of it";
}

TEST_F(Undo, LeavesTheBlanksBeforeTheNotes) {
    auto* notes = Find<QPlainTextEdit>(u"Text1"_s);
    notes->setPlainText(u"  Hall"_s);
    const std::string typed = Bytes();
    PressKnob(u"OutputLevelTrim_1"_s, Qt::Key_Down);
    Trigger(u"EditUndo"_s);
    EXPECT_EQ(Differing(Bytes(), typed), "");
    EXPECT_EQ(notes->toPlainText(), u"  Hall"_s);
}

TEST_F(Undo, WhatIsTypedIsTakenBackFirst) {
    Activate();
    ShowTab(LevelsTab);
    Type(u"PanelMaximumLevel"_s, u"3"_s);
    auto* box = Part<QLineEdit>(u"PanelMaximumLevel"_s, u"Text1"_s);
    box->setFocus();
    QTest::keyClicks(box, u"5"_s);
    QTest::keyClick(box, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Config.Modes[0].OutputLevels[0].MaximumLevel, 3.0F);
    EXPECT_EQ(box->text(), u"+3dB"_s);
    // A level that is refused goes back by that alone.
    box->selectAll();
    QTest::keyClicks(box, u"-50"_s);
    boxes.ExpectMessage(
        u"Max Level error"_s,
        u"The Maximum level you set is below the minimum level set\r\nRestoring original value"_s);
    QTest::keyClick(box, Qt::Key_Z, Qt::ControlModifier);
    Settle();
    EXPECT_EQ(box->text(), u"+3dB"_s);
}

TEST_F(Undo, LinkedListsComeBack) {
    Type(u"RemotePaneInputs_3"_s, u"35"_s);
    Type(u"RemotePanelSelects_3"_s, u"7"_s);
    const std::string before = Bytes();
    QTimer::singleShot(0, window.get(), [this] {
        auto* dialog = window->findChild<QDialog*>();
        for (const char* output : {"Label1_0", "Label1_3"})
            QTest::keyClick(dialog->findChild<QWidget*>(QString::fromLatin1(output)), Qt::Key_1);
        dialog->findChild<QAbstractButton*>(u"Done"_s)->click();
    });
    Trigger(u"LINK"_s);
    EXPECT_EQ(EditText("EditUndo"), u"&Undo: link outputs of Mode 1 (4 changes)"_s);
    Click(u"Modes_2"_s);
    EXPECT_EQ(Config.Modes[0].OutputPanels[3].PanelInputs.Trimmed(), "");
    Trigger(u"EditUndo"_s);
    EXPECT_EQ(Differing(Bytes(), before), "");
    EXPECT_EQ(TextIn(u"RemotePaneInputs_3"_s), u"35"_s);
    Click(u"Modes_2"_s);
    EXPECT_EQ(Differing(Bytes(), before), "");
    Trigger(u"EditRedo"_s);
    EXPECT_EQ(Config.Modes[0].LinkGroup[3], 1);
}

TEST_F(Undo, EndsWhereAConfigurationBegins) {
    const TemporaryFolder folder;
    Type(u"RemotePaneInputs_0"_s, u"1"_s);
    boxes.ExpectSaveFile(QString(), QString::fromStdString(folder.Path("a.VMC")));
    ExpectSaved(u"a.VMC"_s);
    Trigger(u"SAVEAS"_s);
    Type(u"RemotePaneInputs_0"_s, u"12"_s);
    EXPECT_TRUE(Status().contains(u"|Unsaved changes|"_s));
    Trigger(u"EditUndo"_s);
    EXPECT_TRUE(Status().contains(u"|No unsaved changes|"_s)) << "the state that was saved";
    EXPECT_TRUE(Find<QAction>(u"EditUndo"_s)->isEnabled());
    Trigger(u"NEW"_s);
    EXPECT_FALSE(Find<QAction>(u"EditUndo"_s)->isEnabled() || Find<QAction>(u"EditRedo"_s)->isEnabled());
}

TEST_F(Undo, IsHeardOnlineAndStopsAtADisabledPage) {
    Type(u"RemotePaneInputs_0"_s, u"1"_s);
    GoOnline();
    EXPECT_FALSE(Find<QAction>(u"EditUndo"_s)->isEnabled());
    EXPECT_EQ(EditText("EditUndo"),
              u"&Undo: Mode 1, Output 1: Input sequence none -> 1 (its page is disabled while online)"_s);
    ShowTab(OutputTrimsTab);
    PressKnob(u"OutputLevelTrim_2"_s, Qt::Key_Down);
    port.Sent.clear();
    Trigger(u"EditUndo"_s);
    ASSERT_EQ(port.Sent.size(), 8U);
    EXPECT_EQ(port.Sent[2], "56 02 D2 D5") << "0 dB again";
    EXPECT_FALSE(Find<QAction>(u"EditUndo"_s)->isEnabled());
}

TEST_F(Undo, AllStepsBackAndForthGiveTheStartAndTheEnd) {
    const QStringList clicked =
        u"UsePreviousRouteCheck_2 RemoteMuteOnMin VekNetLabel2_4 VolumeVekNetLabel_3 "
        "RemotePreviousNotSetStartLevel_1 RemotePreviousNotSetStartLevel_0"_s.split(u' ');
    const QStringList triggered = u"mnuHiddenGlobalSelectsAllEnableOne mnuHiddenOuputSelectAll EXPORT "
                                  "mnuHiddenOuputDeSelectOutputs mnuHiddenModePaste "
                                  "EditUndo EditUndo EditRedo"_s.split(u' ');
    std::mt19937 random(7);
    const auto below = [&](std::size_t count) { return random() % count; };
    const auto any = [&](const QStringList& names) {
        return names[static_cast<qsizetype>(below(names.size()))];
    };
    // Files with linked outputs, whose own lists go without a step of their own.
    for (const char* sample : {"03.VMC", "08.VMC"}) {
        const QString path = QString::fromStdString(DataPath(sample));
        OpenAnyway(path);
        Copy(CopyModeText(DefaultMode()));
        const std::string start = Bytes();
        const bool differed = ConfigDiffers(); // followers are shown with their leader's start route
        for (int action = 0; action < 300; ++action) {
            switch (below(6)) {
            case 0:
                Click(Element(below(2) != 0 ? "Modes" : "UsePanel", below(8)));
                break;
            case 1:
                Click(any(clicked));
                break;
            case 2: {
                const QString name = any(triggered);
                if (name == u"EXPORT"_s)
                    boxes.ExpectSaveFile(path.chopped(3) + u"VEX"_s, std::nullopt);
                Trigger(name);
                break;
            }
            case 3:
                Type(u"RemoteStepLevel"_s, QString::number(1 + below(8)));
                break;
            case 4:
                PressKnob(Element("InputLevelTrim", below(8)), below(2) != 0 ? Qt::Key_Up : Qt::Key_Home);
                break;
            default:
                Type(Element("RemotePanelVolumes", below(8)), QString::number(below(9)));
            }
        }
        Click(u"Modes_0"_s);
        const std::string end = Bytes();
        int steps = 0;
        for (; Find<QAction>(u"EditUndo"_s)->isEnabled(); ++steps)
            Trigger(u"EditUndo"_s);
        EXPECT_GT(steps, 50);
        EXPECT_EQ(Differing(Bytes(), start), "");
        EXPECT_EQ(ConfigDiffers(), differed);
        for (; steps > 0; --steps)
            Trigger(u"EditRedo"_s);
        EXPECT_FALSE(Find<QAction>(u"EditRedo"_s)->isEnabled());
        Click(u"Modes_0"_s);
        EXPECT_EQ(Differing(Bytes(), end), "");
    }
}
