// The panels of problems and changes, and what the status bar tells of them.
#include "editor/EditorFixture.h"

using namespace vek;
using namespace vek::test;

namespace {

class Panels : public EditorTest {
  protected:
    Panels() { Activate(); }
    QString Field(const char* name) { return Find<QLabel>(QString::fromLatin1(name))->text(); }
    QListWidget& Entries(const char* panel) {
        return *Find(QString::fromLatin1(panel))->findChild<QListWidget*>(u"Entries"_s);
    }
    QStringList Lines(const char* panel) {
        QStringList lines;
        for (int row = 0; row < Entries(panel).count(); ++row)
            lines += Entries(panel).item(row)->text();
        return lines;
    }
    void Key(int key) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key));
        Settle();
    }
};

} // namespace

TEST_F(Panels, ProblemsAreCountedAndListedAndGoneTo) {
    Type(u"RemotePaneInputs_0"_s, u"1"_s);
    Type(u"RemotePanelVolumes_0"_s, u"1"_s);
    Type(u"RemotePanelVolumes_2"_s, u"3"_s);
    QTRY_COMPARE_WITH_TIMEOUT(Field("StatusProblems"), u"1 warning"_s, 500);
    Config.Modes[1].OutputLevels[4].StartLevel = 20.0F; // as a file can have it
    window->Timer1_Tick();
    QTRY_COMPARE_WITH_TIMEOUT(Field("StatusProblems"), u"1 error, 1 warning"_s, 500);

    Click(u"Modes_4"_s);
    ShowTab(NotesTab);
    Key(Qt::Key_F8);
    const QStringList lines = Lines("ProblemsPanel");
    ASSERT_EQ(lines.size(), 8) << "with an output without inputs for each note";
    EXPECT_EQ(lines[0], u"Error: Mode 2, Output 5: the start level +20dB is above the maximum level +6dB"_s);
    EXPECT_EQ(lines[1], u"Warning: Mode 1, Output 3: has remote panels, but no inputs"_s);
    Key(Qt::Key_Return);
    EXPECT_EQ(ShownTab(), LevelsTab);
    EXPECT_TRUE(Chosen(u"Modes_1"_s) && Chosen(u"UsePanel_4"_s));
    EXPECT_TRUE(Find<QTabWidget>(u"SSTab1"_s)->currentWidget()->isAncestorOf(QApplication::focusWidget()));
    EXPECT_EQ(TextIn(u"RemoteStartLevel"_s), u"+20dB"_s);

    OpenAnyway(QString::fromStdString(DataPath("01.VMC")));
    Trigger(u"NEW"_s);
    QTRY_COMPARE_WITH_TIMEOUT(Field("StatusProblems"), u"1 warning"_s, 500);
    EXPECT_EQ(Lines("ProblemsPanel"),
              QStringList(u"Warning: No mode is in use: no output has inputs in any mode"_s));
    Key(Qt::Key_F8);
    EXPECT_FALSE(Find(u"ProblemsPanel"_s)->isVisible() || Find<QAction>(u"ShowProblems"_s)->isChecked());
    QTest::mouseClick(Find(u"StatusProblems"_s), Qt::LeftButton);
    EXPECT_TRUE(Find(u"ProblemsPanel"_s)->isVisible() && Find<QAction>(u"ShowProblems"_s)->isChecked());
}

TEST_F(Panels, ChangesAreListedAndTakenBackOneByOne) {
    Type(u"PanelMaximumLevel"_s, u"3"_s);
    PressKnob(u"OutputLevelTrim_1"_s, Qt::Key_Down);
    QTest::mouseClick(Find(u"StatusChanges"_s), Qt::LeftButton);
    const QStringList both = {u"Mode 1, Output 1: Maximum level +6dB -> +3dB"_s,
                              u"Output trim 2 0dB -> -1dB"_s};
    EXPECT_EQ(Lines("ChangesPanel"), both);
    Click(u"Modes_3"_s);
    for (const auto& [row, field] :
         {std::pair(1, u"OutputLevelTrim_1"_s), std::pair(0, u"PanelMaximumLevel"_s)}) {
        Entries("ChangesPanel").setCurrentRow(row);
        Entries("ChangesPanel").setFocus();
        Key(Qt::Key_Return);
        EXPECT_TRUE(Find(field)->isAncestorOf(QApplication::focusWidget()));
    }
    EXPECT_TRUE(Chosen(u"Modes_0"_s));
    EXPECT_EQ(ShownTab(), LevelsTab);
    Entries("ChangesPanel").setFocus();
    Key(Qt::Key_Delete);
    EXPECT_EQ(Lines("ChangesPanel"), both.mid(1));
    EXPECT_EQ(Config.Modes[0].OutputLevels[0].MaximumLevel, 6.0F);
    EXPECT_EQ(TextIn(u"PanelMaximumLevel"_s), u"+6dB"_s);
    EXPECT_EQ(EditText("EditUndo"), u"&Undo: take back Mode 1, Output 1: Maximum level (1 change)"_s);
    Click(u"TakeBack"_s);
    EXPECT_EQ(Lines("ChangesPanel"), QStringList(u"No differences"_s));
    EXPECT_FALSE(Find(u"TakeBack"_s)->isEnabled());
    EXPECT_FALSE(ConfigDiffers());
    Trigger(u"EditUndo"_s);
    Trigger(u"EditUndo"_s);
    QTRY_COMPARE_WITH_TIMEOUT(Lines("ChangesPanel"), both, 500);
}

TEST_F(Panels, ChangesAreThoseFromWhatIsChosen) {
    Key(Qt::Key_F7);
    auto* base = Find<QComboBox>(u"ComparedWith"_s);
    EXPECT_FALSE(qobject_cast<QStandardItemModel*>(base->model())->item(2)->isEnabled())
        << "nothing was programmed";
    boxes.ExpectOpenFile(QString(), std::nullopt);
    QTest::keyClick(base, Qt::Key_Down);
    EXPECT_EQ(base->currentIndex(), 0);
    boxes.ExpectOpenFile(QString(), QString::fromStdString(DataPath("02.VMC")));
    QTest::keyClick(base, Qt::Key_Down);
    EXPECT_EQ(base->currentText(), u"Another file: 02.VMC…"_s);
    EXPECT_GT(Lines("ChangesPanel").size(), 5);
    Entries("ChangesPanel").setFocus();
    for (int i = 0; i < 2000 && Find(u"TakeBack"_s)->isEnabled(); ++i)
        QTest::keyClick(&Entries("ChangesPanel"), Qt::Key_Delete);
    EXPECT_EQ(Differing(Bytes(), ReadText(DataPath("02.VMC"))), "");
}

TEST_F(Panels, OnlineWhatIsTakenBackIsHeardOrTheReasonIsTold) {
    Type(u"RemotePaneInputs_0"_s, u"1"_s);
    PressKnob(u"OutputLevelTrim_2"_s, Qt::Key_Down);
    Key(Qt::Key_F7);
    GoOnline();
    auto* takeBack = Find<QPushButton>(u"TakeBack"_s);
    EXPECT_FALSE(takeBack->isEnabled());
    EXPECT_EQ(takeBack->toolTip(), u"Its page is disabled while online"_s);
    ShowTab(OutputTrimsTab);
    port.Sent.clear();
    Entries("ChangesPanel").setCurrentRow(1);
    Click(u"TakeBack"_s);
    ASSERT_EQ(port.Sent.size(), 8U);
    EXPECT_EQ(port.Sent[2], "56 02 D2 D5") << "0 dB again";
}
