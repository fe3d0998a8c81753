#include "controls/RemoteNumberPanel.h"

#include "support/Windows.h"

#include <QAction>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QToolTip>
#include <QVBoxLayout>

namespace vek {
namespace {

using namespace Qt::StringLiterals;

constexpr auto volumes = NumberList::VolumePanels;
constexpr auto inputs = NumberList::InputSequence;
constexpr auto selectors = NumberList::SelectorPanels;

TEST(NumberListRules, DecideOnEveryKey) {
    TakenMarks taken;
    taken[2] = 5;  // panel "3"
    taken[15] = 8; // panel "G"
    const struct {
        NumberList List;
        std::u16string_view Rest;
        std::u16string_view Accepted;
        std::u16string_view Taken;
    } cases[] = {
        {volumes, u"", u"12456789ABCDEFabcdef", u"3Gg"},
        {volumes, u"1aF", u"2456789BCDEbcde", u"3Gg"},
        {volumes, u"1245", u"", u""},
        {selectors, u"", u"12456789ABCDEFabcdef", u"3Gg"},
        {selectors, u"1245", u"", u"3Gg"},
        {inputs, u"", u"012345678", u""},
        {inputs, u"12", u"0345678", u""},
        {inputs, u"12345678", u"0", u""},
        {inputs, u"999999999", u"", u""},
    };
    for (const auto& c : cases) {
        std::u16string accepted;
        std::u16string refused;
        for (char16_t key = 0; key < 0x700; ++key) { // beyond ASCII too: other digits, dotless letters
            const KeyVerdict verdict = CheckListKey(c.List, key, c.Rest, taken);
            if (verdict != KeyVerdict::Discard)
                (verdict == KeyVerdict::Accept ? accepted : refused) += key;
        }
        EXPECT_EQ(accepted, c.Accepted);
        EXPECT_EQ(refused, c.Taken);
    }
}

TEST(NumberListRules, PutPanelsInOrderAndLeaveInputsAlone) {
    EXPECT_EQ(OrderedList(volumes, u"gA91"), u"19AG");
    EXPECT_EQ(OrderedList(selectors, u"b"), u"B");
    EXPECT_EQ(OrderedList(inputs, u"3102"), u"3102");
}

struct RemoteNumberPanelTest : testing::Test {
    RemoteNumberPanelTest() {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&other);
        column->addWidget(&panel);
        ShowActive(window);
        edit.setFocus();
    }

    void Start(NumberList list, const QString& contents = {}) {
        panel.SetMode(static_cast<int>(list));
        panel.SetContents(contents);
        edit.setFocus();
        edit.end(false);
        changes.clear();
    }

    QWidget window;
    QLineEdit other;
    RemoteNumberPanel panel;
    QLineEdit& edit = Child<QLineEdit>(panel, "Text1");
    QLabel& label = Child<QLabel>(panel, "Label1");
    QMenu& menu = Child<QMenu>(panel, "mnuHidden");
    QSignalSpy changes{&panel, &RemoteNumberPanel::Change};
};

TEST_F(RemoteNumberPanelTest, TypedListsKeepTheRules) {
    const struct {
        NumberList List;
        const char* Typed;
        const char* Contents;
    } cases[] = {{inputs, "121", "12"},    {inputs, "9a", ""},       {inputs, "8765432100", "876543210"},
                 {volumes, "aA", "A"},     {volumes, "0g2b", "2BG"}, {volumes, "43215", "1234"},
                 {selectors, "2 1-", "12"}};
    for (const auto& c : cases) {
        Start(c.List);
        QTest::keyClicks(&edit, QLatin1StringView(c.Typed));
        EXPECT_EQ(panel.Contents(), QLatin1StringView(c.Contents)) << c.Typed;
        EXPECT_EQ(changes.count(), panel.Contents().size()) << c.Typed;
    }
}

TEST_F(RemoteNumberPanelTest, ChangeComesBeforeTheListIsPutInOrder) {
    Start(volumes, u"2"_s);
    QStringList seen;
    QObject::connect(&panel, &RemoteNumberPanel::Change, &panel, [&] { seen += panel.Contents(); });
    QTest::keyClicks(&edit, u"b1"_s);
    EXPECT_EQ(seen, (QStringList{u"2b"_s, u"2B1"_s}));
    EXPECT_EQ(panel.Contents(), "12B"_L1);
    QTest::keyClick(&edit, Qt::Key_Backspace);
    EXPECT_EQ(panel.Contents(), "2B"_L1) << "Backspace takes what was typed last";
    QTest::keyClick(&edit, Qt::Key_Delete);
    EXPECT_EQ(panel.Contents(), "B"_L1);
    EXPECT_EQ(seen.size(), 4);
}

TEST_F(RemoteNumberPanelTest, PastedListsAndSelectionsPassTheSameRules) {
    Start(volumes, u"4567"_s);
    QApplication::clipboard()->setText(u"panels: 9, 9, A, 0, 4, 1, 2"_s);
    QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(panel.Contents(), "4567"_L1) << "full";
    edit.setSelection(0, 3);
    QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(panel.Contents(), "79AE"_L1); // "panels" gives A and E, then 9
    QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(panel.Contents(), "4567"_L1);
}

TEST_F(RemoteNumberPanelTest, UndoPassesOverTheOrdering) {
    Start(volumes, u"ca"_s); // a file may hold this
    QTest::keyClicks(&edit, u"b"_s);
    EXPECT_EQ(panel.Contents(), "ABC"_L1);
    changes.clear();
    QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(panel.Contents(), "ca"_L1);
    EXPECT_EQ(changes.count(), 1);
    edit.redo();
    QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(panel.Contents(), "ABC"_L1);
    edit.end(false);
    QTest::keyClicks(&edit, u"1"_s);
    QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(panel.Contents(), "ABC"_L1) << "one edit at a time";
}

TEST_F(RemoteNumberPanelTest, ContentsFromCodeAreShownAsTheyAre) {
    Start(volumes);
    panel.setProperty("Contents", u"  gba1234567890  "_s);
    EXPECT_EQ(panel.Contents(), "gba1234567890"_L1);
    panel.setProperty("Contents", u"Linked - 3 "_s);
    EXPECT_EQ(panel.Contents(), QString());
    EXPECT_EQ(label.text(), "Linked - 3"_L1);
    EXPECT_TRUE(label.isVisible() && edit.isHidden() && edit.isReadOnly());
    EXPECT_EQ(label.alignment(), Qt::AlignCenter);
    panel.SetContents(u"1"_s);
    EXPECT_TRUE(edit.isVisible() && label.isHidden() && !edit.isReadOnly());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(RemoteNumberPanelTest, LeavingAfterAnEditRaisesChange) {
    Start(inputs, u"12"_s);
    other.setFocus();
    EXPECT_EQ(changes.count(), 0);
    edit.setFocus();
    EXPECT_EQ(edit.selectedText(), "12"_L1);
    QTest::keyClicks(&edit, u"3"_s);
    other.setFocus();
    EXPECT_EQ(changes.count(), 2);
    edit.setFocus();
    QTest::keyClicks(&edit, u"4"_s);
    panel.SetContents(u"Linked - 1"_s); // takes the focus away from the box
    EXPECT_TRUE(label.hasFocus());
    panel.SetContents(u"12"_s);
    EXPECT_TRUE(edit.hasFocus());
    other.setFocus();
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(RemoteNumberPanelTest, KeyTypedLetsTheMarksBeRefreshedFirst) {
    Start(selectors);
    int typed = 0;
    QObject::connect(&panel, &RemoteNumberPanel::KeyTyped, &panel, [&] {
        ++typed;
        TakenMarks marks;
        marks[10] = 5;
        panel.SetTakenMarks(marks);
    });
    QTest::keyClicks(&edit, u"b"_s);
    EXPECT_EQ(panel.Contents(), QString());
    EXPECT_EQ(QToolTip::text(), "Panel B is used by output 5"_L1);
    QTest::keyClick(&edit, Qt::Key_Backspace);
    EXPECT_EQ(typed, 2);
    Start(inputs);
    QTest::keyClicks(&edit, u"1"_s);
    EXPECT_EQ(typed, 2);
}

TEST_F(RemoteNumberPanelTest, OnlyItsOwnMenuOpens) {
    QSignalSpy links(&panel, &RemoteNumberPanel::LinkClicked);
    QAction& mnuLink = Child<QAction>(panel, "mnuLink");
    EXPECT_EQ(mnuLink.text().remove(u'&'), "Link Outputs"_L1);
    for (const QString& contents : {u"12"_s, u"Linked - 3"_s}) {
        Start(volumes, contents);
        QWidget* display = QApplication::focusWidget();
        for (const bool byMouse : {true, false}) {
            // The mouse opens it with its press; the event that follows must not bring another menu.
            if (byMouse)
                QTest::mousePress(display, Qt::RightButton);
            QContextMenuEvent wanted(byMouse ? QContextMenuEvent::Mouse : QContextMenuEvent::Keyboard, {3, 3},
                                     display->mapToGlobal(QPoint(3, 3)));
            QApplication::sendEvent(display, &wanted);
            EXPECT_EQ(QApplication::activePopupWidget(), &menu);
            mnuLink.trigger();
            menu.close();
        }
    }
    EXPECT_EQ(links.count(), 4);
    EXPECT_EQ(changes.count(), 0);
}

} // namespace
} // namespace vek
