// The pages of texts: remote panels, RS232 codes and notes.
#include "controls/NotesBox.h"
#include "controls/RemoteNumberPanel.h"
#include "pages/NotesPage.h"
#include "pages/PageLayout.h"
#include "pages/RemotePanelsPage.h"
#include "pages/Rs232Page.h"

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QToolTip>

namespace vek {
namespace {

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
        const char* Name;
        QString Heading;
        QString AccessibleName;
        NumberList List;
    } lists[3] = {{page.RemotePaneInputs, "RemotePaneInputs", u"Input Sequence"_s,
                   u"Input sequence of output %1"_s, NumberList::InputSequence},
                  {page.RemotePanelVolumes, "RemotePanelVolumes", u"Volume Remote Panels"_s,
                   u"Volume remote panels of output %1"_s, NumberList::VolumePanels},
                  {page.RemotePanelSelects, "RemotePanelSelects", u"Input Selector Remote Panels"_s,
                   u"Input selector remote panels of output %1"_s, NumberList::SelectorPanels}};
};

TEST_F(RemotePanelsPageTest, EachBoxIsNamedByItsOutputAndItsColumn) {
    for (std::size_t output = 0; output < outputCount; ++output) {
        int left = 0;
        for (const auto& list : lists) {
            RemoteNumberPanel& box = *list.Boxes[output];
            EXPECT_EQ(box.objectName(), u"%1_%2"_s.arg(QLatin1StringView(list.Name)).arg(output));
            EXPECT_EQ(Text(&box).accessibleName(), list.AccessibleName.arg(output + 1));
            EXPECT_EQ(box.Mode(), static_cast<int>(list.List));
            EXPECT_EQ(Caption(page, box, Qt::LeftEdge), u"Output %1"_s.arg(output + 1));
            EXPECT_GT(box.x(), left);
            left = box.x();
        }
        QCheckBox& check = *page.UsePreviousRouteCheck[output];
        EXPECT_EQ(check.objectName(), u"UsePreviousRouteCheck_%1"_s.arg(output));
        EXPECT_EQ(check.text(), "Use previous route"_L1);
        EXPECT_EQ(check.accessibleName(), u"Output %1 uses the previous route"_s.arg(output + 1));
        EXPECT_EQ(Caption(page, check, Qt::LeftEdge), u"Output %1"_s.arg(output + 1));
        EXPECT_GT(check.x(), left);
    }
    for (const auto& list : lists)
        EXPECT_EQ(Caption(page, *list.Boxes[0], Qt::TopEdge), list.Heading);
    EXPECT_EQ(Caption(page, *page.UsePreviousRouteCheck[0], Qt::TopEdge), "Start Route"_L1);
    page.RemotePaneInputs[0]->setFocus();
    EXPECT_TRUE(TabOrder().starts_with("RemotePaneInputs_0 Text1,RemotePanelVolumes_0 Text1,"
                                       "RemotePanelSelects_0 Text1,UsePreviousRouteCheck_0,"));
}

TEST_F(RemotePanelsPageTest, TellsWhatTheUserDid) {
    QStringList seen;
    QObject::connect(&page, &RemotePanelsPage::ListEdited, [&] { seen += u"list"_s; });
    QObject::connect(&page, &RemotePanelsPage::RouteEdited, [&] { seen += u"route"_s; });
    QObject::connect(&page, &RemotePanelsPage::KeyTyped, [&] { seen += u"key"_s; });
    QObject::connect(&page, &RemotePanelsPage::LinkClicked, [&] { seen += u"link"_s; });
    for (std::size_t output = 0; output < outputCount; ++output) {
        for (const auto& list : lists) {
            QTest::keyClicks(&Text(list.Boxes[output]), u"3"_s);
            const bool inputs = list.List == NumberList::InputSequence;
            EXPECT_EQ(std::exchange(seen, {}),
                      inputs ? QStringList{u"list"_s} : (QStringList{u"key"_s, u"list"_s}));
            Child<QAction>(*list.Boxes[output], "mnuLink").trigger();
            EXPECT_EQ(std::exchange(seen, {}), QStringList{u"link"_s});
        }
        QTest::keyClick(page.UsePreviousRouteCheck[output], Qt::Key_Space);
        EXPECT_EQ(std::exchange(seen, {}), QStringList{u"route"_s});
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
    EXPECT_EQ(Child<QLabel>(page, "RS232Label_0").textInteractionFlags() & Qt::TextSelectableByMouse, 0);
    ShowActive(page);
    const struct {
        const char* Heading;
        const char* Code; ///< of output 1
    } commands[] = {{"Volume Step Up", "U1"}, {"Volume Step Down", "D1"}, {"Volume Level", "V1n"},
                    {"Next Input", "N1"},     {"Previous Input", "P1"},   {"Select Input", "I1n"},
                    {"Mute On", "M1"},        {"Mute Off", "m1"}};
    for (int i = 0; i < 64; ++i) {
        auto& label = Child<QLabel>(page, qPrintable(u"RS232Label_%1"_s.arg(i)));
        const QString output = QString::number(i / 8 + 1);
        EXPECT_EQ(label.text(), QString::fromLatin1(commands[i % 8].Code).replace(u'1', output));
        EXPECT_TRUE(label.textInteractionFlags() & Qt::TextSelectableByMouse);
        const QLabel& first = Child<QLabel>(page, qPrintable(u"RS232Label_%1"_s.arg(i - i % 8)));
        EXPECT_EQ(label.y(), first.y());
        if (i < 8) {
            EXPECT_EQ(Caption(page, label, Qt::TopEdge), QLatin1StringView(commands[i].Heading));
        }
        if (i % 8 == 0) {
            EXPECT_EQ(Caption(page, label, Qt::LeftEdge), QString(u"Output "_s + output));
        }
    }
}

TEST(NotesPage, TellsHowMuchRoomIsLeft) {
    NotesPage page;
    ShowActive(page);
    const auto remaining = [&] {
        return page.findChild<QLabel*>(QString(), Qt::FindDirectChildrenOnly)->text();
    };
    EXPECT_EQ(page.Text1->objectName(), "Text1"_L1);
    EXPECT_EQ(page.Text1->accessibleName(), "Notes"_L1);
    EXPECT_EQ(remaining(), "1500 of 1500 characters left"_L1);
    page.Text1->SetBytes("abc\r\n");
    EXPECT_EQ(remaining(), "1495 of 1500 characters left"_L1);
    QTest::keyClicks(page.Text1, u"xy"_s);
    EXPECT_EQ(remaining(), "1493 of 1500 characters left"_L1);
}

} // namespace
} // namespace vek
