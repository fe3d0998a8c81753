// The pages with faders: levels and trims.
#include "controls/LevelTrim.h"
#include "controls/dBText.h"
#include "pages/LevelsPage.h"
#include "pages/PageLayout.h"
#include "pages/TrimPage.h"

#include <QCheckBox>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>

namespace vek {
namespace {

using namespace Qt::StringLiterals;

struct LevelsPageTest : testing::Test {
    LevelsPageTest() { ShowActive(page); }
    LevelsPage page;
};

TEST_F(LevelsPageTest, EachRowHasItsCaptionItsLimitsAndItsButton) {
    const struct {
        dBText* Box;
        const char* Name;
        QString Caption;
        float Minimum;
        float Maximum;
        const char* Button; ///< empty: none in this row
        QString ButtonCaption;
    } rows[] = {
        {page.PanelMaximumLevel, "PanelMaximumLevel", u"Maximum Level"_s, -96, 22, "UseSliderToSet_0",
         u"Set Max Level"_s},
        {page.RemoteStartLevel, "RemoteStartLevel", u"Start Level"_s, -96, 22, "UseSliderToSet_1",
         u"Set Start Level"_s},
        {page.PanelMinimumLevel, "PanelMinimumLevel", u"Minimum Level"_s, -96, 22, "UseSliderToSet_2",
         u"Set Min Level"_s},
        {page.RemoteStepLevel, "RemoteStepLevel", u"Level Steps"_s, 0.5F, 20, "", {}},
    };
    int above = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Name);
        ASSERT_EQ(row.Box, &Child<dBText>(page, row.Name));
        EXPECT_EQ(Caption(page, *row.Box, Qt::LeftEdge), row.Caption);
        EXPECT_EQ(row.Box->accessibleName(), row.Caption);
        EXPECT_EQ(row.Box->MinLevel(), row.Minimum);
        EXPECT_EQ(row.Box->MaxLevel(), row.Maximum);
        const int centre = row.Box->geometry().center().y();
        EXPECT_GT(centre, above);
        above = centre;
        if (*row.Button == '\0')
            continue;
        auto& button = Child<QPushButton>(page, row.Button);
        EXPECT_EQ(button.text(), row.ButtonCaption);
        EXPECT_FALSE(button.autoDefault());
        EXPECT_NEAR(button.geometry().center().y(), centre, 2);
    }
    for (std::size_t i = 0; i < page.UseSliderToSet.size(); ++i)
        EXPECT_EQ(page.UseSliderToSet[i]->objectName(), u"UseSliderToSet_%1"_s.arg(i));
    EXPECT_EQ(Caption(page, *page.UseSliderToSet[SetMaximum], Qt::TopEdge), "Set Level from Slider"_L1);
    EXPECT_EQ(FrameTitle(*page.LevelTrim1), "Levels and Operation"_L1);
}

TEST_F(LevelsPageTest, TheSliderHasItsOwnRange) {
    EXPECT_EQ(page.LevelTrim1->MaxLevel(), 10.0F);
    EXPECT_EQ(page.LevelTrim1->MinLevel(), -62.0F);
    EXPECT_EQ(page.LevelTrim1->accessibleName(), "Level of the output"_L1);
    EXPECT_EQ(Caption(page, *page.LevelTrim1, Qt::TopEdge), "Level"_L1);
}

TEST_F(LevelsPageTest, TheStartLevelComesAndGoesWithoutMovingAnything) {
    EXPECT_TRUE(page.FixedStart());
    const QRect below = page.PanelMinimumLevel->geometry();
    const QRect option = page.RemotePreviousNotSetStartLevel[1]->geometry();
    for (const bool shown : {false, true}) {
        page.ShowStartLevel(shown);
        page.layout()->activate();
        QApplication::processEvents();
        EXPECT_EQ(page.RemoteStartLevel->isVisible(), shown);
        EXPECT_EQ(page.StartLevelLabel->isVisible(), shown);
        EXPECT_EQ(page.UseSliderToSet[SetStart]->isVisible(), shown);
        EXPECT_EQ(page.PanelMinimumLevel->geometry(), below);
        EXPECT_EQ(page.RemotePreviousNotSetStartLevel[1]->geometry(), option);
    }
    EXPECT_EQ(page.StartLevelLabel->text(), "Start Level"_L1);
}

TEST_F(LevelsPageTest, EitherStartIsChosen) {
    const QString captions[] = {u"Use Fixed Start Level"_s, u"Use Previous Start Level"_s};
    for (const std::size_t chosen : {1U, 0U}) {
        QRadioButton& option = *page.RemotePreviousNotSetStartLevel[chosen];
        EXPECT_EQ(option.text(), captions[chosen]);
        EXPECT_EQ(option.objectName(), u"RemotePreviousNotSetStartLevel_%1"_s.arg(chosen));
        option.click();
        EXPECT_EQ(page.FixedStart(), chosen == 0);
    }
    EXPECT_EQ(page.RemoteMuteOnMin->text(), "Mute on Minimum Level"_L1);
    page.RemoteMuteOnMin->click();
    EXPECT_TRUE(page.FixedStart());
    EXPECT_TRUE(page.RemoteMuteOnMin->isChecked());
}

TEST_F(LevelsPageTest, TabGoesDownTheRows) {
    Child<QLineEdit>(*page.LevelTrim1, "Text2").setFocus();
    EXPECT_EQ(TabOrder(), "LevelTrim1 Text2,LevelTrim1 Command1,PanelMaximumLevel Text1,UseSliderToSet_0,"
                          "RemoteStartLevel Text1,UseSliderToSet_1,PanelMinimumLevel Text1,UseSliderToSet_2,"
                          "RemoteStepLevel Text1,RemoteMuteOnMin,RemotePreviousNotSetStartLevel_0");
}

struct TrimPageTest : testing::Test {
    TrimPageTest() {
        page.resize(800, 400);
        ShowActive(page);
    }
    TrimPage page{"OutputLevelTrim", u"Output Trims"_s, u"Output %1"_s};
};

TEST_F(TrimPageTest, EachFaderHasItsNumberAndTheRangeOfTrims) {
    EXPECT_EQ(FrameTitle(*page.Trims[0]), "Output Trims"_L1);
    int left = -1;
    for (std::size_t i = 0; i < page.Trims.size(); ++i) {
        LevelTrim& trim = *page.Trims[i];
        const QString caption = u"Output %1"_s.arg(i + 1);
        EXPECT_EQ(Caption(page, trim, Qt::TopEdge), caption);
        EXPECT_EQ(trim.objectName(), u"OutputLevelTrim_%1"_s.arg(i));
        EXPECT_EQ(trim.accessibleName(), QString(u"Output Trims, "_s + caption));
        EXPECT_EQ(trim.MaxLevel(), 6.0F);
        EXPECT_EQ(trim.MinLevel(), -18.0F);
        EXPECT_GT(trim.x(), left);
        left = trim.x();
    }
}

TEST_F(TrimPageTest, TellsEditsAndWhichReadOutWasClicked) {
    QSignalSpy edits(&page, &TrimPage::Edited);
    QSignalSpy clicks(&page, &TrimPage::TextClicked);
    for (std::size_t i = 0; i < page.Trims.size(); ++i) {
        QTest::keyClick(&Child<QWidget>(*page.Trims[i], "Command1"), Qt::Key_Down);
        EXPECT_EQ(edits.count(), i + 1);
        QTest::mouseClick(&Child<QWidget>(*page.Trims[i], "Text2"), Qt::LeftButton);
        ASSERT_EQ(clicks.count(), i + 1);
        EXPECT_EQ(clicks.back().front().value<std::size_t>(), i);
        EXPECT_EQ(page.Trims[i]->Level(), -1.0F);
    }
    Child<QLineEdit>(*page.Trims[0], "Text2").setFocus();
    EXPECT_TRUE(TabOrder().starts_with(
        "OutputLevelTrim_0 Text2,OutputLevelTrim_0 Command1,OutputLevelTrim_1 Text2,"));
}

} // namespace
} // namespace vek
