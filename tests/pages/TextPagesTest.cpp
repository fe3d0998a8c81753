// The pages of texts: remote panels, RS232 codes and notes.
#include "controls/NotesBox.h"
#include "controls/RemoteNumberPanel.h"
#include "pages/NamesTable.h"
#include "pages/NotesPage.h"
#include "pages/PageLayout.h"
#include "pages/RemotePanelsPage.h"
#include "pages/Rs232Page.h"

using namespace vek;
using namespace Qt::StringLiterals;

struct RemotePanelsPageTest : testing::Test {
    RemotePanelsPageTest() {
        page.resize(900, 500);
        ShowActive(page);
    }

    static QLineEdit& Text(RemoteNumberPanel* box) { return Child<QLineEdit>(*box, "Text1"); }

    RemotePanelsPage page;
    const struct {
        std::array<RemoteNumberPanel*, outputCount>& Boxes;
        QString Heading; ///< the accessible name begins with it
        NumberList List;
    } lists[3] = {{page.RemotePaneInputs, u"Input Sequence"_s, NumberList::InputSequence},
                  {page.RemotePanelVolumes, u"Volume Remote Panels"_s, NumberList::VolumePanels},
                  {page.RemotePanelSelects, u"Input Selector Remote Panels"_s, NumberList::SelectorPanels}};
};

TEST_F(RemotePanelsPageTest, EachBoxIsNamedByItsOutputAndItsColumn) {
    for (std::size_t output = 0; output < outputCount; ++output) {
        const QString number = u"Output %1"_s.arg(output + 1);
        for (const auto& list : lists) {
            RemoteNumberPanel& box = *list.Boxes[output];
            EXPECT_EQ(Text(&box).accessibleName().toLower(),
                      u"%1 of %2"_s.arg(list.Heading, number).toLower());
            EXPECT_EQ(box.Mode(), static_cast<int>(list.List));
            EXPECT_EQ(Caption(page, box, Qt::LeftEdge), number);
            EXPECT_EQ(Caption(page, box, Qt::TopEdge), list.Heading);
        }
        const QCheckBox& check = *page.UsePreviousRouteCheck[output];
        EXPECT_EQ(check.accessibleName(), QString(number + u" uses the previous route"_s));
    }
}

TEST_F(RemotePanelsPageTest, TellsOfKeysAndWishesToLink) {
    std::string seen;
    QObject::connect(&page, &RemotePanelsPage::KeyTyped, [&] { seen += "key "; });
    QObject::connect(&page, &RemotePanelsPage::LinkClicked, [&] { seen += "link "; });
    for (const auto& list : lists)
        for (RemoteNumberPanel* box : list.Boxes) {
            QTest::keyClicks(&Text(box), u"3"_s);
            Child<QAction>(*box, "mnuLink").trigger();
            EXPECT_EQ(std::exchange(seen, {}),
                      list.List == NumberList::InputSequence ? "link " : "key link ");
        }
}

TEST(Rs232Page, EachCodeStandsUnderItsCommandBesideItsOutput) {
    Rs232Page page;
    page.resize(900, 500);
    ShowActive(page);
    const std::pair<const char*, const char*> commands[] = {
        // with output 1's code
        {"Volume Step Up", "U1"}, {"Volume Step Down", "D1"}, {"Volume Level", "V1n"}, {"Next Input", "N1"},
        {"Previous Input", "P1"}, {"Select Input", "I1n"},    {"Mute On", "M1"},       {"Mute Off", "m1"}};
    for (int i = 0; i < 64; ++i) {
        auto& label = Child<QLabel>(page, qPrintable(u"RS232Label_%1"_s.arg(i)));
        const auto& [heading, code] = commands[i % 8];
        const QString output = QString::number(i / 8 + 1);
        EXPECT_EQ(label.text(), QString::fromLatin1(code).replace(u'1', output));
        EXPECT_TRUE(i >= 8 || Caption(page, label, Qt::TopEdge) == QLatin1StringView(heading)) << heading;
        EXPECT_TRUE(i % 8 != 0 || Caption(page, label, Qt::LeftEdge) == "Output "_L1 + output) << i;
    }
    page.ShowNames(Names("Output 3: Foyer"));
    EXPECT_EQ(Caption(page, Child<QLabel>(page, "RS232Label_16"), Qt::LeftEdge), "Foyer"_L1);
    // The keyboard selects a code, and copies it.
    QTest::keyClick(&page, Qt::Key_Tab);
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Down})
        QTest::keyClick(QApplication::focusWidget(), key);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "D3"_L1);
}

TEST(NotesPage, TellsHowMuchRoomIsLeft) {
    NotesPage page;
    ShowActive(page);
    const auto* remaining = page.findChild<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
    EXPECT_EQ(page.Text1->accessibleName(), "Notes"_L1);
    page.Text1->SetBytes("abc\r\n");
    EXPECT_EQ(remaining->text(), "1495 of 1500 characters left"_L1);
    QTest::keyClicks(page.Text1, u"xy"_s);
    EXPECT_EQ(remaining->text(), "1493 of 1500 characters left"_L1);
}

struct NamesTableTest : testing::Test {
    NamesTableTest() {
        ShowActive(page);
        QObject::connect(page.Text1, &NotesBox::Edited, [this] { ++edits; });
    }
    QString Name(int row) const { return page.Names->item(row, 0)->text(); }
    /// Types on a row as it is, without opening it.
    void Type(int row, const QString& text) {
        page.Names->setFocus();
        page.Names->setCurrentCell(row, 0);
        for (const QChar character : text)
            QTest::keyClick(QApplication::focusWidget(), character.toLatin1());
    }
    void Press(Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        QCoreApplication::processEvents();
    }

    NotesPage page;
    int edits = 0;
};

constexpr int output3 = 10; // rows
constexpr int panelA = 33;

TEST_F(NamesTableTest, ShowsWhatTheNotesSay) {
    page.Text1->SetBytes("Hall\r\nOUTPUT 3: <i>Caf\xE9</i>\r\npanel a: Bar");
    EXPECT_EQ(page.Names->verticalHeaderItem(panelA)->text(), "Panel A"_L1);
    EXPECT_EQ(Name(output3), u"<i>Caf\u00E9</i>"_s);
    EXPECT_TRUE(page.Names->item(output3, 0)->toolTip().contains("&lt;i&gt;"_L1));
    EXPECT_EQ(Name(panelA), "Bar"_L1);
    page.Text1->moveCursor(QTextCursor::End);
    QTest::keyClicks(page.Text1, u"s"_s);
    EXPECT_EQ(Name(panelA), "Bars"_L1);
    page.Text1->SetBytes("");
    EXPECT_EQ(Name(output3), QString());
}

TEST_F(NamesTableTest, ANameChangesItsLineAlone) {
    page.Text1->SetBytes("Hall\routput 3 : Foyer\r\n\tMode 1: A\r\nend");
    page.Text1->moveCursor(QTextCursor::End);
    Type(output3, u"Bar "_s);
    EXPECT_EQ(edits, 0) << "typed, not entered";
    Press(Qt::Key_Return);
    EXPECT_EQ(page.Text1->Bytes(), "Hall\rOutput 3: Bar\r\n\tMode 1: A\r\nend");
    EXPECT_EQ(page.Text1->textCursor().position(), page.Text1->document()->characterCount() - 1);
    EXPECT_EQ(Name(output3), "Bar"_L1);
    EXPECT_EQ(page.Names->currentRow(), output3 + 1);
    Type(panelA, u"B"_s);
    Press(Qt::Key_Tab);
    EXPECT_EQ(page.Text1->Bytes(), "Hall\rOutput 3: Bar\r\n\tMode 1: A\r\nPanel A: B\r\nend");
    Type(panelA, u"C"_s);
    Press(Qt::Key_Escape);
    EXPECT_EQ(edits, 2);
    Type(output3, {});
    Press(Qt::Key_Delete);
    EXPECT_EQ(page.Text1->Bytes(), "Hall\r\tMode 1: A\r\nPanel A: B\r\nend");
    EXPECT_EQ(edits, 3);
}

TEST_F(NamesTableTest, TakesWhatTheNotesCanHold) {
    page.Text1->SetBytes(std::string(notesLength - std::string_view("\r\nOutput 3: AB").size(), 'x'));
    Type(output3, u"ABC"_s);
    EXPECT_EQ(QToolTip::text(), "The notes, which keep the names, hold 1500 characters"_L1);
    QGuiApplication::clipboard()->setText(u"\u0416\u2028"_s);
    QTest::keySequence(QApplication::focusWidget(), QKeySequence::Paste);
    EXPECT_EQ(QToolTip::text(), "The notes cannot hold this character"_L1);
    Press(Qt::Key_Return);
    EXPECT_EQ(Name(output3), "AB"_L1);
    EXPECT_EQ(page.Text1->Remaining(), 0);
    page.Names->item(panelA, 0)->setText(u"D"_s);
    EXPECT_EQ(Name(panelA), QString());
    EXPECT_EQ(edits, 1);
}
