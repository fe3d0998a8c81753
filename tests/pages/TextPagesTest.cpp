// The pages of texts: remote panels, RS232 codes and notes.
#include "controls/NotesBox.h"
#include "controls/RemoteNumberPanel.h"
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

TEST_F(RemotePanelsPageTest, RefusesThePanelsOfOtherOutputs) {
    ModeRecord mode;
    mode.OutputPanels[4].PanelVolumes = "1";
    mode.OutputPanels[5].PanelSelects = "2";
    page.RefreshTakenMarks(mode);
    for (std::size_t output = 0; output < outputCount; ++output) {
        for (const auto& list : lists)
            QTest::keyClicks(&Text(list.Boxes[output]), u"12"_s);
        EXPECT_EQ(page.RemotePaneInputs[output]->Contents(), "12"_L1);
        EXPECT_EQ(page.RemotePanelVolumes[output]->Contents(), output == 4 ? "12"_L1 : "2"_L1);
        EXPECT_EQ(page.RemotePanelSelects[output]->Contents(), output == 5 ? "12"_L1 : "1"_L1);
    }
    QTest::keyClicks(&Text(page.RemotePanelSelects[0]), u"2"_s);
    EXPECT_EQ(QToolTip::text(), "Panel 2 is used by output 6"_L1);
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
