#include "controls/RemoteNumberPanel.h"

#include "controls/ControlTest.h"

using namespace vek;
using namespace Qt::StringLiterals;

constexpr auto volumes = NumberList::VolumePanels;
constexpr auto inputs = NumberList::InputSequence;
constexpr auto selectors = NumberList::SelectorPanels;

TEST(NumberListRules, DecideOnEveryKeyAndOrder) {
    TakenMarks marks;
    marks[2] = 5;  // panel "3"
    marks[15] = 8; // panel "G"
    const std::tuple<NumberList, std::u16string_view, std::u16string_view, std::u16string_view> cases[] = {
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
    for (const auto& [list, rest, expected, taken] : cases) {
        std::u16string accepted;
        std::u16string refused;
        for (char16_t key = 0; key < 0x700; ++key) { // beyond ASCII too: other digits, dotless letters
            const KeyVerdict verdict = CheckListKey(list, key, rest, marks);
            if (verdict != KeyVerdict::Discard)
                (verdict == KeyVerdict::Accept ? accepted : refused) += key;
        }
        EXPECT_EQ(accepted, expected);
        EXPECT_EQ(refused, taken);
    }
    EXPECT_EQ(OrderedList(volumes, u"gA91"), u"19AG");
    EXPECT_EQ(OrderedList(inputs, u"3102"), u"3102");
}

struct RemoteNumberPanelTest : ControlTest<RemoteNumberPanel> {
    void Start(NumberList list, const QString& contents = {}) {
        panel.SetMode(static_cast<int>(list));
        panel.SetContents(contents);
        edit.setFocus();
        edit.end(false);
        changes.clear();
    }

    RemoteNumberPanel& panel = control;
    QLineEdit& edit = Child<QLineEdit>(panel, "Text1");
    QLabel& label = Child<QLabel>(panel, "Label1");
    QMenu& menu = Child<QMenu>(panel, "mnuHidden");
    QSignalSpy changes{&panel, &RemoteNumberPanel::Change};
};

TEST_F(RemoteNumberPanelTest, ChangeComesBeforeTheListIsPutInOrder) {
    Start(volumes, u"2"_s);
    QStringList seen;
    QObject::connect(&panel, &RemoteNumberPanel::Change, &panel, [&] { seen += panel.Contents(); });
    QTest::keyClicks(&edit, u"b1"_s);
    EXPECT_EQ(seen, (QStringList{u"2b"_s, u"2B1"_s}));
    EXPECT_EQ(panel.Contents(), "12B"_L1);
    QTest::keyClick(&edit, Qt::Key_Backspace);
    EXPECT_EQ(panel.Contents(), "2B"_L1) << "Backspace takes what was typed last";
    EXPECT_EQ(seen.size(), 3);
}

TEST_F(RemoteNumberPanelTest, ContentsFromCodeAreShownAsTheyAre) {
    Start(volumes);
    panel.setProperty("Contents", u"  gba1234567890  "_s);
    EXPECT_EQ(panel.Contents(), "gba1234567890"_L1);
    panel.setProperty("Contents", u"Linked - 3 "_s);
    EXPECT_EQ(panel.Contents(), QString());
    EXPECT_EQ(label.text(), "Linked - 3"_L1);
    EXPECT_TRUE(label.isVisible() && edit.isHidden() && edit.isReadOnly());
    panel.SetContents(u"1"_s);
    EXPECT_TRUE(edit.isVisible() && label.isHidden() && !edit.isReadOnly());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(RemoteNumberPanelTest, LeavingAfterAnEditRaisesChange) {
    Start(inputs, u"12"_s);
    other.setFocus();
    EXPECT_EQ(changes.count(), 0);
    edit.setFocus();
    QTest::keyClicks(&edit, u"3"_s);
    other.setFocus();
    EXPECT_EQ(changes.count(), 2);
    edit.setFocus();
    QTest::keyClicks(&edit, u"4"_s);
    panel.SetContents(u"Linked - 1"_s); // takes the focus away from the box
    EXPECT_TRUE(label.hasFocus());
    panel.SetContents(u"12"_s);
    EXPECT_TRUE(edit.hasFocus());
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(RemoteNumberPanelTest, OnlyItsOwnMenuOpens) {
    QSignalSpy links(&panel, &RemoteNumberPanel::LinkClicked);
    for (const QString& contents : {u"12"_s, u"Linked - 3"_s})
        for (const auto reason : {QContextMenuEvent::Mouse, QContextMenuEvent::Keyboard}) {
            Start(volumes, contents);
            QWidget* display = QApplication::focusWidget();
            // The mouse opens it with its press; the event that follows must not bring another menu.
            if (reason == QContextMenuEvent::Mouse)
                QTest::mousePress(display, Qt::RightButton);
            QContextMenuEvent wanted(reason, {3, 3}, display->mapToGlobal(QPoint(3, 3)));
            QApplication::sendEvent(display, &wanted);
            EXPECT_EQ(QApplication::activePopupWidget(), &menu);
            Child<QAction>(panel, "mnuLink").trigger();
            menu.close();
        }
    EXPECT_EQ(links.count(), 4);
    EXPECT_EQ(changes.count(), 0);
}
