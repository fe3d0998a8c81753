// The selectors and the pages with faders: levels and trims.
#include "controls/LevelTrim.h"
#include "controls/dBText.h"
#include "pages/LevelsPage.h"
#include "pages/PageLayout.h"
#include "pages/Selectors.h"
#include "pages/TrimPage.h"

using namespace vek;
using namespace Qt::StringLiterals;

TEST(LevelsPage, EachRowHasItsCaptionItsLimitsAndItsButton) {
    LevelsPage page;
    ShowActive(page);
    const std::tuple<dBText*, QString, float, float, QString> rows[] = {
        {page.PanelMaximumLevel, u"Maximum Level"_s, -96, 22, u"Set Max Level"_s},
        {page.RemoteStartLevel, u"Start Level"_s, -96, 22, u"Set Start Level"_s},
        {page.PanelMinimumLevel, u"Minimum Level"_s, -96, 22, u"Set Min Level"_s},
        {page.RemoteStepLevel, u"Level Steps"_s, 0.5F, 20, QString()},
    };
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const auto& [box, caption, minimum, maximum, buttonCaption] = rows[i];
        EXPECT_EQ(Caption(page, *box, Qt::LeftEdge), caption);
        EXPECT_EQ(box->accessibleName(), caption);
        EXPECT_EQ(box->MinLevel(), minimum);
        EXPECT_EQ(box->MaxLevel(), maximum);
        if (buttonCaption.isEmpty())
            continue;
        const QPushButton& button = *page.UseSliderToSet[i]; // SetMaximum, SetStart, SetMinimum
        EXPECT_EQ(button.text(), buttonCaption);
        EXPECT_NEAR(button.geometry().center().y(), box->geometry().center().y(), 2);
    }
    for (const bool shown : {false, true}) {
        page.ShowStartLevel(shown);
        EXPECT_EQ(page.RemoteStartLevel->isVisible(), shown);
        EXPECT_EQ(page.UseSliderToSet[SetStart]->isVisible(), shown);
    }
    EXPECT_EQ(page.LevelTrim1->MaxLevel(), 10.0F);
    EXPECT_EQ(page.LevelTrim1->MinLevel(), -62.0F);
    EXPECT_EQ(page.LevelTrim1->accessibleName(), "Level of the output"_L1);
    EXPECT_EQ(page.RemotePreviousNotSetStartLevel[0]->text(), "Use Fixed Start Level"_L1);
    EXPECT_EQ(page.RemotePreviousNotSetStartLevel[1]->text(), "Use Previous Start Level"_L1);
}

TEST(TrimPage, EachFaderHasItsNumberAndTheRangeOfTrimsAndTellsItsEdits) {
    TrimPage page("OutputLevelTrim", u"Output Trims"_s, NameKind::Output);
    page.resize(800, 400);
    ShowActive(page);
    QSignalSpy edits(&page, &TrimPage::Edited);
    QSignalSpy clicks(&page, &TrimPage::TextClicked);
    for (std::size_t i = 0; i < page.Trims.size(); ++i) {
        LevelTrim& trim = *page.Trims[i];
        const QString caption = u"Output %1"_s.arg(i + 1);
        EXPECT_EQ(Caption(page, trim, Qt::TopEdge), caption);
        EXPECT_EQ(trim.accessibleName(), QString(u"Output Trims, "_s + caption));
        EXPECT_EQ(trim.MaxLevel(), 6.0F);
        EXPECT_EQ(trim.MinLevel(), -18.0F);
        QTest::keyClick(&Child<QWidget>(trim, "Command1"), Qt::Key_Down);
        EXPECT_EQ(edits.count(), i + 1);
        QTest::mouseClick(&Child<QWidget>(trim, "Text2"), Qt::LeftButton);
        ASSERT_EQ(clicks.count(), i + 1);
        EXPECT_EQ(clicks.back().front().value<std::size_t>(), i);
    }
    page.Trims[0]->findChild<QWidget*>(u"Text2"_s)->setFocus();
    for (LevelTrim* trim : page.Trims)
        for (const char* part : {"Text2", "Command1"}) {
            EXPECT_EQ(QApplication::focusWidget(), &Child<QWidget>(*trim, part));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
}

TEST(Selectors, TellTheOneChosenAndOpenItsMenu) {
    Selectors selectors;
    ShowActive(selectors);
    QString told;
    QPoint wanted; // where a menu must open, global
    const auto menu = [&](const QString& text) {
        return [&, text](std::size_t i, QPoint at) { told += text.arg(i).arg(at == wanted); };
    };
    QObject::connect(&selectors, &Selectors::ModeChosen, [&] { told += "mode"_L1; });
    QObject::connect(&selectors, &Selectors::OutputChosen, [&] { told += "output"_L1; });
    QObject::connect(&selectors, &Selectors::ModeMenuRequested, menu(u"mode menu %1 at %2"_s));
    QObject::connect(&selectors, &Selectors::OutputMenuRequested, menu(u"output menu %1 at %2"_s));

    EXPECT_TRUE(selectors.Modes[0]->isChecked() && selectors.UsePanel[0]->isChecked());
    for (const auto& [options, title] :
         {std::pair(selectors.Modes, u"Mode"_s), std::pair(selectors.UsePanel, u"Output"_s)})
        for (const std::size_t i : {7U, 6U, 5U, 4U, 3U, 2U, 1U, 0U}) {
            QRadioButton& option = *options[i];
            EXPECT_EQ(option.text(), QString::number(i + 1));
            EXPECT_EQ(option.accessibleName(), u"%1 %2"_s.arg(title).arg(i + 1));
            QTest::mouseClick(&option, Qt::LeftButton, {}, {8, option.height() / 2});
            EXPECT_TRUE(option.isChecked());
            EXPECT_EQ(std::exchange(told, {}), title.toLower()) << "once, and not for the one left";

            QRadioButton& other = *options[7 - i];
            const QPoint at(5, 5);
            wanted = other.mapToGlobal(at);
            QTest::mousePress(&other, Qt::RightButton, {}, at);
            QContextMenuEvent byMouse(QContextMenuEvent::Mouse, at, wanted);
            QApplication::sendEvent(&other, &byMouse);
            EXPECT_EQ(std::exchange(told, {}), u"%1 menu %2 at 1"_s.arg(title.toLower()).arg(7 - i))
                << "once";
            EXPECT_TRUE(option.isChecked()) << "a menu chooses nothing";
        }
    selectors.Modes[0]->setFocus();
    QTest::keyClick(selectors.Modes[0], Qt::Key_Down);
    EXPECT_TRUE(selectors.Modes[1]->isChecked());
    EXPECT_TRUE(selectors.UsePanel[0]->isChecked());
    EXPECT_EQ(told, "mode"_L1);
}
