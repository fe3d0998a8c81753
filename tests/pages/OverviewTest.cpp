#include "pages/Overview.h"

#include "pages/OverviewAccessible.h"
#include "support/Windows.h"

using namespace vek;
using namespace Qt::StringLiterals;

namespace {

constexpr OverviewMetrics metrics = {.LineHeight = 16, .CharacterWidth = 8, .Width = 1000};
constexpr std::array<bool, modeCount> twoUsed = {true, true};

/// Mode 1 with a group of outputs 1 and 2, the others alone, mode 2 the same without the group.
MatrixConfig Example() {
    MatrixConfig config;
    for (const std::size_t mode : {0U, 1U}) {
        config.Modes[mode] = DefaultMode();
        config.Modes[mode].OutputPanels[4] = {};
    }
    config.Modes[0].LinkGroup[0] = config.Modes[0].LinkGroup[1] = 2;
    config.Modes[0].OutputPanels[2].UsePreviousRoute = flagTrue;
    config.Modes[0].OutputPanels[2].PanelInputs = "15";
    return config;
}

Finding Found(Severity severity, std::optional<std::size_t> mode, std::optional<std::size_t> output) {
    return {severity, "Mode 1 Evening, Output 4 Foyer: found", {FieldKind::Levels, mode, output}};
}

const Names names("Input 1: Lectern\r\nOutput 4: Foyer\r\nMode 1: Evening\r\nPanel 3: Bar");

} // namespace

TEST(OverviewCells, TellUseProblemsAndSameSettings) {
    const OverviewContent content = MakeOverviewContent(
        Example(), names,
        {Found(Severity::Note, 0, 3), Found(Severity::Warning, 0, 3), Found(Severity::Error, 0, std::nullopt),
         Found(Severity::Error, std::nullopt, 3)});
    const auto& rows = content.Rows;
    EXPECT_TRUE(rows[1].Used && rows[0].Cells[3].Used);
    EXPECT_FALSE(rows[2].Used || rows[0].Cells[4].Used || rows[2].Cells[0].Used);
    EXPECT_EQ(rows[0].Cells[0].Leader, std::nullopt) << "it leads itself";
    EXPECT_EQ(rows[0].Problems.Mark, Severity::Error);
    EXPECT_EQ(rows[0].Cells[3].Problems.Mark, Severity::Warning);
    EXPECT_EQ(rows[0].Cells[0].Problems.Mark, std::nullopt);
    EXPECT_TRUE(SameSettings(rows[0].Cells[3], rows[1].Cells[3])) << "but for what was found";
    EXPECT_FALSE(SameSettings(rows[0].Cells[0], rows[1].Cells[0]));
}

TEST(OverviewCells, AreToldInWords) {
    const OverviewContent content = MakeOverviewContent(Example(), names, {Found(Severity::Warning, 0, 3)});
    const std::pair<std::size_t, const char*> cases[] = {
        {1,
         "Mode 1 Evening, Output 2|Link group 2 (B)|Its input follows Output 1|"
         "Level: -36dB to +6dB in steps of +1dB, start at 0dB|Mute on minimum level|Volume remote panels: 2"},
        {2, "Mode 1 Evening, Output 3|Input sequence: 1 Lectern, 5|After recall: the previous input stays|"
            "Level: -36dB to +6dB in steps of +1dB, start at 0dB|Mute on minimum level|"
            "Volume remote panels: 3 Bar|Input selector remote panels: 3 Bar"},
        {3, "Mode 1 Evening, Output 4 Foyer|Input sequence: OFF, 1 Lectern, 2, 3, 4, 5, 6, 7, 8|After "
            "recall: OFF|"
            "Level: -36dB to +6dB in steps of +1dB, start at 0dB|Mute on minimum level|"
            "Volume remote panels: 4|Input selector remote panels: 4|Check: found"}};
    for (const auto& [output, words] : cases)
        EXPECT_EQ(CellWords(content, 0, output).join(u'|').toStdString(), words);
    EXPECT_EQ(RowWords(content, 0).join(u'|'), "Mode 1 Evening|7 of 8 outputs have inputs"_L1);
    EXPECT_EQ(RowWords(content, 2).join(u'|'), "Mode 3|Not used: no output has inputs"_L1);
}

TEST(OverviewGeometry, FillsTheWidthAndScrollsWhenItMust) {
    for (const auto& [width, fits] : {std::pair(1000, true), std::pair(500, false)}) {
        const OverviewGeometry geometry({16, 8, width}, twoUsed);
        EXPECT_EQ(geometry.Size().width() <= width, fits) << width;
        EXPECT_GE(geometry.Cell(0, 7).width(), 11 * 8);
        EXPECT_LT(geometry.Cell(0, 0).right(), geometry.Cell(0, 1).left());
        EXPECT_LT(geometry.Cell(0, 0).bottom(), geometry.Cell(1, 0).top());
    }
    const OverviewGeometry geometry(metrics, twoUsed);
    EXPECT_GT(geometry.Cell(1, 0).height(), 2 * geometry.Cell(2, 0).height()) << "modes that are not used";
    EXPECT_LE(geometry.Cell(7, 7).bottom(), geometry.Size().height());
}

TEST(OverviewGeometry, FindsWhatIsAtAPoint) {
    const OverviewGeometry geometry(metrics, twoUsed);
    for (const std::size_t mode : {0U, 3U, 7U}) {
        for (const std::size_t output : {0U, 7U})
            EXPECT_EQ(geometry.At(geometry.Cell(mode, output).center()), (OverviewPlace{mode, output}));
        EXPECT_EQ(geometry.At(geometry.RowHeader(mode).center()), (OverviewPlace{mode, {}}));
        EXPECT_EQ(geometry.At(geometry.ColumnHeader(mode).center()), (OverviewPlace{{}, mode}));
    }
    for (const QPoint point : {QPoint(2, 2), geometry.Cell(0, 0).bottomRight() + QPoint(2, 2), QPoint(-5, 60),
                               QPoint(60, -5), QPoint(5000, 60)})
        EXPECT_EQ(geometry.At(point), std::nullopt) << point.x();

    const QRect cell = geometry.Cell(0, 3);
    for (const OverviewSigns signs : {OverviewSigns{}, OverviewSigns{true, true}}) {
        const OverviewCellParts parts = geometry.Parts(cell, signs);
        const std::pair<QRect, OverviewPart> cases[] = {
            {parts.Inputs, OverviewPart::Inputs},   {parts.Levels, OverviewPart::Levels},
            {parts.Volumes, OverviewPart::Volumes}, {parts.Selects, OverviewPart::Selects},
            {parts.Mute, OverviewPart::Mute},       {parts.Group, OverviewPart::Group}};
        for (const auto& [part, expected] : cases) {
            EXPECT_TRUE(cell.contains(part) || !signs.Linked);
            EXPECT_EQ(geometry.PartAt(cell, signs, part.center()),
                      part.isEmpty() ? OverviewPart::Cell : expected);
        }
    }
}

TEST(OverviewGeometry, LevelsStandOnTheTrackInTheirOrder) {
    const OverviewGeometry geometry(metrics, twoUsed);
    const QRect track = geometry.Track(geometry.Parts(geometry.Cell(0, 0), {}).Levels);
    EXPECT_EQ(geometry.LevelX(track, -96), track.left());
    EXPECT_EQ(geometry.LevelX(track, 22), track.left() + track.width());
    EXPECT_EQ(geometry.LevelX(track, -1000), track.left());
    for (int level = -90; level < 20; level += 10)
        EXPECT_LT(geometry.LevelX(track, static_cast<float>(level)),
                  geometry.LevelX(track, static_cast<float>(level + 10)));
}

TEST(OverviewGeometry, ChipsBecomeRunsAndThenFewer) {
    const auto width = [](const InputChip& chip) { return chip.First == chip.Last ? 10 : 20; };
    const std::tuple<const char*, int, const char*> cases[] = {{"", 90, ""},
                                                               {"012345678", 90, "0 1 2 3 4 5 6 7 8"},
                                                               {"012345678", 89, "0 1-8"},
                                                               {"123457", 50, "1 2-5 7"},
                                                               {"1237", 39, "1 2 +"}, // no run is worth it
                                                               {"80123", 45, "8 0 1-3"},
                                                               {"8642", 30, "8 6 +"},
                                                               {"8x*/", 30, "8 x +"}};
    for (const auto& [inputs, room, expected] : cases) {
        std::string chips;
        for (const InputChip& chip : FittingChips(inputs, room, width)) {
            chips += chips.empty() ? "" : " ";
            chips += chip.More ? "+" : std::string(1, chip.First);
            if (chip.First != chip.Last)
                chips += std::string("-") + chip.Last;
        }
        EXPECT_EQ(chips, expected) << inputs;
    }
}

struct OverviewTest : testing::Test {
    OverviewTest() {
        InstallOverviewAccessible();
        overview.resize(900, 420);
        overview.Show(Example(), names, {});
        overview.show();
        overview.activateWindow();
        QApplication::setActiveWindow(&overview);
        overview.setFocus();
        QCoreApplication::processEvents();
        overview.viewport()->installEventFilter(&painted);
    }
    void Click(const OverviewPlace& place, Qt::KeyboardModifiers keys = {}) {
        QTest::mouseClick(overview.viewport(), Qt::LeftButton, keys, overview.RectOf(place).center());
    }
    QRegion Painted() {
        painted.Region = {};
        QCoreApplication::processEvents();
        return painted.Region;
    }

    /// What is painted again.
    struct PaintWatch : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint)
                Region += static_cast<QPaintEvent*>(event)->region();
            return false;
        }
        QRegion Region;
    };

    Overview overview;
    PaintWatch painted;
};

TEST_F(OverviewTest, OnlyWhatChangedIsPaintedAgain) {
    MatrixConfig config = Example();
    overview.Show(config, names, {});
    EXPECT_TRUE(Painted().isEmpty()) << "nothing changed";
    config.Modes[1].OutputLevels[3].StartLevel = -3;
    overview.Show(config, names, {Found(Severity::Note, 0, std::nullopt)});
    EXPECT_EQ(Painted(), QRegion(overview.RectOf({1, 3})) + overview.RectOf({0, std::nullopt}));
    overview.Compare({0, 1});
    Painted();
    config.Modes[1].OutputLevels[3].StartLevel = 0;
    overview.Show(config, names, {Found(Severity::Note, 0, std::nullopt)});
    EXPECT_EQ(Painted(), QRegion(overview.RectOf({0, 3})) + overview.RectOf({1, 3}))
        << "both are equal again";
    config.Modes[7] = DefaultMode();
    overview.Show(config, names, {});
    EXPECT_EQ(Painted().boundingRect(), overview.viewport()->rect()) << "a row has become higher";
}

TEST_F(OverviewTest, KeysMoveThePlaceAndSayWhatIsWanted) {
    const std::tuple<Qt::Key, std::optional<std::size_t>, std::optional<std::size_t>> moves[] = {
        {Qt::Key_Right, 0, 1},    {Qt::Key_Down, 1, 1},  {Qt::Key_End, 1, 7},   {Qt::Key_Right, 1, 7},
        {Qt::Key_PageDown, 7, 7}, {Qt::Key_Down, 7, 7},  {Qt::Key_Home, 7, {}}, {Qt::Key_Left, 7, {}},
        {Qt::Key_PageUp, 0, {}},  {Qt::Key_Right, 0, 0}, {Qt::Key_Up, 0, 0}};
    for (const auto& [key, mode, output] : moves) {
        QTest::keyClick(&overview, key);
        EXPECT_EQ(overview.Current(), (OverviewPlace{mode, output})) << key;
        EXPECT_TRUE(overview.viewport()->rect().contains(overview.RectOf(overview.Current())))
            << "scrolled to";
    }
    const std::tuple<Qt::Key, Qt::KeyboardModifiers, void (Overview::*)(const OverviewPlace&)> wishes[] = {
        {Qt::Key_Return, Qt::NoModifier, &Overview::Activated},
        {Qt::Key_C, Qt::ControlModifier, &Overview::CopyRequested},
        {Qt::Key_V, Qt::ControlModifier, &Overview::PasteRequested}};
    for (const auto& [key, modifiers, signal] : wishes) {
        const QSignalSpy spy(&overview, signal);
        QTest::keyClick(&overview, key, modifiers);
        ASSERT_EQ(spy.count(), 1) << key;
        EXPECT_EQ(spy.at(0).at(0).value<OverviewPlace>(), overview.Current());
    }
}

TEST_F(OverviewTest, TheMouseHitsPartsAlsoWhenScrolled) {
    overview.SetZoom(200);
    overview.horizontalScrollBar()->setValue(150);
    const QRect cell = overview.RectOf({1, 2});
    const QSignalSpy spy(&overview, &Overview::Activated);
    QTest::mouseDClick(overview.viewport(), Qt::LeftButton, {}, cell.topLeft() + QPoint(30, 20));
    QTest::mouseDClick(overview.viewport(), Qt::LeftButton, {}, overview.RectOf({{}, 3}).center());
    ASSERT_EQ(spy.count(), 2);
    EXPECT_EQ(spy.at(0).at(0).value<OverviewPlace>(), (OverviewPlace{1, 2, OverviewPart::Inputs}));
    EXPECT_EQ(spy.at(1).at(0).value<OverviewPlace>(), (OverviewPlace{{}, 3}));
}

TEST_F(OverviewTest, KeysAndTheWheelZoomWithinLimits) {
    const auto turn = [&](int delta) {
        QWheelEvent wheel({50, 50}, overview.mapToGlobal(QPointF(50, 50)), {}, {0, delta}, Qt::NoButton,
                          Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(overview.viewport(), &wheel);
        return overview.Zoom();
    };
    const int before = overview.RectOf({0, 0}).height();
    EXPECT_EQ(turn(60), 100);
    EXPECT_EQ(turn(60), 110) << "a touchpad turns in small pieces";
    EXPECT_EQ(turn(120), 120);
    EXPECT_GT(overview.RectOf({0, 0}).height(), before);
    EXPECT_EQ(turn(-12000), 50);
    EXPECT_EQ(turn(120000), 300);
    QTest::keyClick(&overview, Qt::Key_Minus, Qt::ControlModifier);
    QTest::keyClick(&overview, Qt::Key_Minus, Qt::ControlModifier);
    QTest::keyClick(&overview, Qt::Key_Plus, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(overview.Zoom(), 290);
}

TEST_F(OverviewTest, TwoChosenRowsAreCompared) {
    const OverviewPlace rows[] = {{0, {}}, {1, {}}, {2, {}}};
    const std::pair<OverviewPlace, std::vector<std::size_t>> clicks[] = {
        {rows[0], {0}}, {rows[1], {0, 1}}, {rows[2], {1, 2}}, {rows[2], {1}}, {rows[0], {1, 0}}};
    for (const auto& [row, compared] : clicks) {
        Click(row, Qt::ControlModifier);
        EXPECT_EQ(overview.Compared(), compared);
    }
    EXPECT_EQ(overview.WordsFor({0, 3}).last(), "The same in Mode 2"_L1);
    EXPECT_EQ(overview.WordsFor({1, 2}).last(), "Different in Mode 1 Evening"_L1);
    QTest::keyClick(&overview, Qt::Key_Escape);
    EXPECT_TRUE(overview.Compared().empty());
}

TEST_F(OverviewTest, IsATableForAssistiveTechnology) {
    QAccessibleInterface* table = QAccessible::queryAccessibleInterface(&overview);
    ASSERT_NE(table->tableInterface(), nullptr);
    EXPECT_EQ(table->childCount(), 81);
    QAccessibleInterface* cell = table->tableInterface()->cellAt(0, 3);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(table->child(table->indexOfChild(cell)), cell);
    EXPECT_EQ(cell->text(QAccessible::Name), "Mode 1 Evening, Output 4 Foyer"_L1);
    EXPECT_TRUE(cell->text(QAccessible::Description).startsWith("Input sequence: OFF, 1 Lectern"_L1));
    EXPECT_EQ(cell->tableCellInterface()->rowIndex(), 0);
    EXPECT_EQ(cell->tableCellInterface()->columnIndex(), 3);
    EXPECT_EQ(cell->tableCellInterface()->columnHeaderCells().at(0)->text(QAccessible::Name),
              "Output 4 Foyer"_L1);
    EXPECT_EQ(cell->tableCellInterface()->rowHeaderCells().at(0)->text(QAccessible::Name),
              "Mode 1 Evening"_L1);
    const QPoint centre = cell->rect().center();
    EXPECT_EQ(table->childAt(centre.x(), centre.y()), cell);
    EXPECT_FALSE(cell->state().focused);
    cell->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(overview.Current(), (OverviewPlace{0, 3}));
    EXPECT_TRUE(cell->state().focused);
    EXPECT_EQ(table->focusChild(), cell);
    EXPECT_EQ(table->tableInterface()->cellAt(8, 0), nullptr);
}
