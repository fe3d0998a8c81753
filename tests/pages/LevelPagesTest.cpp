// The selectors and the pages with faders: levels and trims.
#include "controls/LevelTrim.h"
#include "controls/dBText.h"
#include "model/Names.h"
#include "pages/LevelsPage.h"
#include "pages/LevelsTable.h"
#include "pages/LevelsTableModel.h"
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
    const int minimumTop = page.PanelMinimumLevel->y();
    for (const bool shown : {false, true}) {
        page.ShowStartLevel(shown);
        page.layout()->activate();
        EXPECT_EQ(page.RemoteStartLevel->isVisible(), shown);
        EXPECT_EQ(page.UseSliderToSet[SetStart]->isVisible(), shown);
        EXPECT_NE(page.PreviousStartNote->isVisible(), shown) << "no hole";
        EXPECT_EQ(page.PanelMinimumLevel->y(), minimumTop) << "nothing jumps";
    }
    EXPECT_EQ(page.LevelTrim1->MaxLevel(), 10.0F);
    EXPECT_EQ(page.LevelTrim1->MinLevel(), -62.0F);
}

struct LevelsTableTest : testing::Test {
    LevelsTableTest() {
        ShowActive(page);
        levels[2] = {
            .MaximumLevel = 3.3F, .StartLevel = -12, .MinimumLevel = -30, .PreviousNotSetStartLevel = 1};
        page.ShowOutputs(levels, 2);
        QObject::connect(&table, &LevelsTable::Entered, [this](const auto& outputs, const LevelEntry& entry) {
            told.emplace_back(outputs, entry);
        });
    }
    using Column = LevelsTableModel::Column;
    QModelIndex Cell(int output, Column column) { return table.model()->index(output, column); }
    QString Text(int output, Column column) { return Cell(output, column).data().toString(); }
    void Choose(int first, int last, Column column) {
        table.setCurrentIndex(Cell(first, column));
        table.selectionModel()->select({Cell(first, column), Cell(last, column)},
                                       QItemSelectionModel::ClearAndSelect);
    }
    void Type(const QString& text, Qt::Key end = Qt::Key_Return) {
        for (const QChar key : text) {
            QWidget* box = table.findChild<QLineEdit*>(u"LevelEditor"_s);
            QTest::keyClick(box == nullptr ? &table : box, key.toLatin1());
        }
        QTest::keyClick(&Child<QLineEdit>(table, "LevelEditor"), end);
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    using Entries = std::vector<std::pair<std::vector<std::size_t>, LevelEntry>>;

    LevelsPage page;
    LevelsTable& table = *page.Outputs;
    std::array<OutputLevelRecord, outputCount> levels;
    Entries told;
};

TEST_F(LevelsTableTest, ShowsExactLevelsAndWhatCannotBeEdited) {
    page.ShowNames(Names("Output 3: <b>Foyer"));
    EXPECT_EQ(Text(2, Column::Maximum), u"+3.3"_s);
    EXPECT_EQ(Text(2, Column::Start), u"\u2013"_s);
    EXPECT_FALSE(Cell(2, Column::Start).flags().testFlag(Qt::ItemIsEditable));
    EXPECT_EQ(Text(1, Column::Start), u"0"_s);
    EXPECT_EQ(Cell(2, Column::PreviousStart).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_TRUE(Cell(2, Column::Step).data(LevelsTableModel::currentRole).toBool());
    EXPECT_FALSE(Cell(1, Column::Step).data(LevelsTableModel::currentRole).toBool());
    EXPECT_EQ(table.OutputText(2), u"Output 3 <b>Foyer"_s);
    EXPECT_NE(Cell(2, Column::OutputColumn).data(Qt::ToolTipRole).toString(), u"<b>Foyer"_s) << "no markup";
    const QImage before = table.grab().toImage();
    page.ShowNames({});
    EXPECT_NE(table.grab().toImage(), before) << "the name stands beside the number";
    EXPECT_EQ(Child<QWidget>(*page.LevelTrim1, "Command1").accessibleDescription(), u"From -30dB to +3dB"_s);
}

TEST_F(LevelsTableTest, AnEntryIsThatOfTheChosenCells) {
    table.setCurrentIndex(Cell(4, Column::Maximum));
    Type(u"+39.26"_s); // 9 is refused, the rest is snapped
    Choose(3, 5, Column::Minimum);
    Type(u"-88.5"_s);
    Choose(6, 6, Column::Step);
    Type(u"0"_s);
    Choose(0, 1, Column::Mute);
    QTest::keyClick(&table, Qt::Key_Space);
    const Entries expected = {{{4}, {.MaximumLevel = 3.0F}}, // "+3.26" without the tenths behind the 2
                              {{3, 4, 5}, {.MinimumLevel = -88.5F}},
                              {{6}, {.StepLevel = 0.5F}},
                              {{0, 1}, {.MuteOnMin = false}}};
    ASSERT_EQ(told.size(), expected.size());
    for (std::size_t i = 1; i < told.size(); ++i)
        EXPECT_EQ(told[i], expected[i]) << i;
    EXPECT_EQ(told[0].first, expected[0].first);
    EXPECT_EQ(told[0].second.MaximumLevel, page.PanelMaximumLevel->Snapped(3.26F));
}

TEST_F(LevelsTableTest, WhatIsLookedAtOrGivenUpEntersNothingAndArrowsStep) {
    for (const Qt::Key end : {Qt::Key_Return, Qt::Key_Escape}) {
        table.setCurrentIndex(Cell(2, Column::Maximum));
        QTest::keyClick(&table, Qt::Key_F2);
        EXPECT_EQ(Child<QLineEdit>(table, "LevelEditor").selectedText(), u"+3.3dB"_s);
        if (end == Qt::Key_Escape)
            QTest::keyClick(&Child<QLineEdit>(table, "LevelEditor"), Qt::Key_Up);
        Type({}, end);
        EXPECT_TRUE(told.empty());
    }
    QTest::keyClick(&table, Qt::Key_F2);
    QTest::keyClick(&Child<QLineEdit>(table, "LevelEditor"), Qt::Key_Down);
    page.PanelMaximumLevel->setFocus(); // leaving counts
    EXPECT_EQ(told, (Entries{{{2}, {.MaximumLevel = 2.5F}}}));
}

TEST_F(LevelsTableTest, AppliesTheChosenCellsOfOneOutputToTheOthers) {
    EXPECT_FALSE(page.ApplyToAll->isEnabled());
    QSignalSpy wanted(&table, &LevelsTable::OutputWanted);
    const auto click = [&](const QModelIndex& cell) {
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.visualRect(cell).center());
    };
    click(Cell(2, Column::Maximum));
    page.ApplyToAll->click();
    click(Cell(2, Column::OutputColumn)); // stands for all settings of its output
    page.ApplyToAll->click();
    const std::vector<std::size_t> others = {0, 1, 3, 4, 5, 6, 7};
    const LevelEntry all = {.MaximumLevel = 3.0F,
                            .MinimumLevel = -30.0F,
                            .StepLevel = 1.0F,
                            .MuteOnMin = true,
                            .PreviousNotSetStartLevel = true};
    EXPECT_EQ(told, (Entries{{others, {.MaximumLevel = 3.0F}}, {others, all}}));
    click(Cell(2, Column::Start));
    EXPECT_FALSE(page.ApplyToAll->isEnabled()) << "it has none";
    EXPECT_EQ(wanted.count(), 0) << "choosing rows chooses no output";
    click(Cell(5, Column::OutputColumn));
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, {},
                       table.visualRect(Cell(5, Column::OutputColumn)).center());
    table.setCurrentIndex(Cell(6, Column::OutputColumn));
    QTest::keyClick(&table, Qt::Key_Return);
    ASSERT_EQ(wanted.count(), 2);
    EXPECT_EQ(wanted[0].front().value<std::size_t>(), 5U);
    EXPECT_EQ(wanted[1].front().value<std::size_t>(), 6U);
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
