// The overview in the window: what it follows and what it does.
#include "editor/EditorFixture.h"

#include "model/ClipboardText.h"
#include "pages/Overview.h"

#include <algorithm>
#include <ctime>

using namespace vek;
using namespace vek::test;

namespace {

class OverviewTabTest : public EditorTest {
  protected:
    void SetUp() override {
        Activate();
        tabs = Find<QTabWidget>(u"SSTab1"_s);
    }
    Overview& Shown() {
        Trigger(u"ShowOverview"_s);
        return *Find<Overview>(u"Overview"_s);
    }
    static void Give(const std::string& text) {
        QGuiApplication::clipboard()->setText(QString::fromStdString(text));
    }

    QTabWidget* tabs = nullptr;
};

const OutputLevelRecord quiet = {.MaximumLevel = -6, .StartLevel = -12};

} // namespace

TEST_F(OverviewTabTest, IsMadeWhenItIsFirstShownAndFollowsTheWindow) {
    Trigger(u"DEFAULT"_s);
    Click(u"UsePanel_2"_s);
    EXPECT_EQ(window->findChild<Overview*>(), nullptr);
    Overview& overview = Shown();
    EXPECT_EQ(tabs->currentIndex(), OverviewTab);
    EXPECT_TRUE(overview.hasFocus());
    EXPECT_EQ(overview.Current(), (OverviewPlace{0, 2}));
    EXPECT_TRUE(overview.Content().Rows[0].Used);
    Click(u"Modes_3"_s);
    EXPECT_EQ(overview.Current(), (OverviewPlace{3, 2}));
    EXPECT_FALSE(overview.Content().Rows[3].Used);
    Trigger(u"DEFAULT"_s);
    EXPECT_TRUE(overview.Content().Rows[3].Used);
    const auto heading = [this] { return Find<QLabel>(u"PageHeading"_s)->text(); };
    overview.Compare({0, 3});
    EXPECT_EQ(heading(), u"Overview: Mode 1 compared with Mode 4"_s);
    overview.Compare({});
    EXPECT_EQ(heading(), u"Overview of all modes and outputs"_s);
    Trigger(u"EditUndo"_s);
    EXPECT_EQ(tabs->currentIndex(), RemotePanelsTab) << "where the change was";
    EXPECT_FALSE(Shown().Content().Rows[3].Used);

    tabs->setCurrentIndex(LevelsTab);
    Click(u"UsePanel_2"_s);
    Type(u"PanelMaximumLevel"_s, u"3"_s);
    const OutputLevelRecord& levels = Shown().Content().Rows[3].Cells[2].Levels;
    EXPECT_EQ(levels.MaximumLevel, 3) << "what was edited meanwhile";
    OpenAnyway(QString::fromStdString(DataPath("08.VMC")));
    EXPECT_EQ(levels, Config.Modes[3].OutputLevels[2]) << "another file";
}

TEST_F(OverviewTabTest, ShowsProblemsAndNames) {
    Give(CopyPointText({.MaximumLevel = -40, .MinimumLevel = 0}));
    Overview& overview = Shown();
    Q_EMIT overview.PasteRequested({4, 5});
    tabs->setCurrentIndex(NotesTab);
    QTest::keyClicks(Find<QPlainTextEdit>(u"Text1"_s), u"Output 6: Hall"_s);
    const OverviewCell& cell = Shown().Content().Rows[4].Cells[5];
    EXPECT_EQ(cell.Problems.Mark, Severity::Error);
    EXPECT_EQ(overview.WordsFor({4, 5}).first(), "Mode 5, Output 6 Hall"_L1);
    EXPECT_EQ(overview.WordsFor({4, 5}).filter(u"Check: the minimum level 0dB is not below"_s).size(), 1);
}

TEST_F(OverviewTabTest, GoesToTheControlOfWhatWasHit) {
    const std::tuple<OverviewPlace, int, const char*> cases[] = {
        {{2, 3, OverviewPart::Inputs}, RemotePanelsTab, "RemotePaneInputs_3"},
        {{4, 1, OverviewPart::Selects}, RemotePanelsTab, "RemotePanelSelects_1"},
        {{5, 7, OverviewPart::Levels}, LevelsTab, "PanelMaximumLevel"},
        {{6, {}}, RemotePanelsTab, "RemotePaneInputs_0"}}; // the output stays
    for (const auto& [place, tab, control] : cases) {
        Q_EMIT Shown().Activated(place);
        EXPECT_EQ(tabs->currentIndex(), tab) << control;
        EXPECT_TRUE(Find(QString::fromLatin1(control))->isAncestorOf(window->focusWidget())) << control;
        EXPECT_TRUE(Chosen(Element("Modes", *place.Mode))) << control;
        EXPECT_TRUE(Chosen(Element("UsePanel", place.Output.value_or(7)))) << control;
    }
    Shown().SetCurrent({1, 5});
    QTest::keyClick(&Shown(), Qt::Key_Return);
    EXPECT_TRUE(Chosen(u"Modes_1"_s) && Chosen(u"UsePanel_5"_s));
    tabs->setTabEnabled(RemotePanelsTab, false);
    Q_EMIT Shown().Activated({0, 0, OverviewPart::Inputs});
    EXPECT_EQ(tabs->currentIndex(), LevelsTab) << "online the other page cannot be used";
}

TEST_F(OverviewTabTest, CopiesAndPastesLikeTheSelectors) {
    Overview& overview = Shown();
    Give(CopyPointText(quiet));
    Q_EMIT overview.PasteRequested({5, 6});
    EXPECT_EQ(Config.Modes[5].OutputLevels[6], quiet);
    EXPECT_TRUE(Chosen(u"Modes_5"_s));
    Q_EMIT overview.CopyRequested({5, {}});
    Q_EMIT overview.PasteRequested({1, {}});
    EXPECT_EQ(Config.Modes[1], Config.Modes[5]);
    Q_EMIT overview.CopyRequested({0, 0});
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), CopyPointText({}));
    const MatrixConfig before = Config;
    Give("nothing of this");
    boxes.ExpectMessage(u"Paste Failed!"_s, u"An error occurred in output paste"_s);
    Q_EMIT overview.PasteRequested({7, 7});
    Settle();
    EXPECT_EQ(Config, before);
    EXPECT_TRUE(Chosen(u"Modes_5"_s)) << "nor is the mode another";
}

TEST_F(OverviewTabTest, AnEditIsPaintedWithinAFrame) {
    OpenAnyway(QString::fromStdString(DataPath("02.VMC")));
    Shown();
    std::vector<double> milliseconds;
    const auto time = [] {
        timespec now = {};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
        return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
    };
    for (int run = 0; run < 20; ++run) {
        OutputLevelRecord levels = quiet;
        levels.StartLevel = static_cast<float>(-10 - run);
        Give(CopyPointText(levels));
        const double start = time();
        Q_EMIT Shown().PasteRequested({static_cast<std::size_t>(run % 8), 3});
        QCoreApplication::processEvents();
        milliseconds.push_back(time() - start);
    }
    std::ranges::nth_element(milliseconds, milliseconds.begin() + 10);
    EXPECT_LT(milliseconds[10], 16);
}
