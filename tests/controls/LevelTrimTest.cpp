#include "controls/LevelTrim.h"

#include "controls/ControlTest.h"

using namespace vek;
using namespace Qt::StringLiterals;

constexpr FaderTrack track = {30.0F, 145.0F, 15.0F}; // 100 units of travel
constexpr LevelRange usual = {6.0F, -18.0F};

TEST(LevelTrimGeometry, LevelAndKnobPositionAreLinearAndInverse) {
    const std::tuple<LevelRange, float, float> cases[] = {
        {usual, 30, 6}, {usual, 130, -18}, {usual, 55, 0}, {{10, -62}, 30, 10}, {{10, -62}, 55, -8}};
    for (const auto& [range, top, level] : cases) {
        EXPECT_EQ(LevelAtKnobTop(track, range, top), level) << top;
        EXPECT_EQ(KnobTopAtLevel(track, range, level), top) << level;
    }
    const LevelRange tenths = {5.0F, -5.0F}; // a tenth of a dB per unit: 2.5, 1.5, -2.5, -2.6 dB
    const std::pair<float, float> halvesToEven[] = {{55, 2}, {65, 2}, {105, -2}, {106, -3}};
    for (const auto& [top, level] : halvesToEven)
        EXPECT_EQ(LevelAtKnobTop(track, tenths, top), level);
}

TEST(LevelTrimGeometry, StaysOnTheTrackAndWithinTheLimits) {
    EXPECT_EQ(LimitKnobTop(track, -5.0F), 30.0F);
    EXPECT_EQ(LimitKnobTop(track, 131.0F), 130.0F);
    EXPECT_EQ(KnobTopAtLevel(track, usual, 40.0F), 30.0F);
    EXPECT_EQ(KnobTopAtLevel(track, usual, -96.0F), 130.0F);
    EXPECT_EQ(WholeLevel(usual, -1e300), -18.0F);
    EXPECT_EQ(WholeLevel(usual, -3.5), -4.0F);
    // Nothing to travel, no range to show: still a position and a level.
    EXPECT_EQ(KnobTopAtLevel(track, {4.0F, 4.0F}, 4.0F), 30.0F);
    EXPECT_EQ(LevelAtKnobTop({30.0F, 45.0F, 15.0F}, usual, 30.0F), 6.0F);
    EXPECT_EQ(ScaleLevels({10.0F, -62.0F}), (std::array{10.0F, -14.0F, -38.0F, -62.0F}));
}

TEST(LevelTrimGeometry, AClickBesideTheKnobStepsTowardsThePointer) {
    // 100 units for 24 dB: 25 for a page step, 4.2 for a decibel. From the level, wanted top, level then.
    const std::tuple<float, float, float> cases[] = {
        {0, 30, 6}, {-10, 30, -4},   {-10, -500, -4}, {6, 999, 0},     {-6, 93, -9},
        {6, 31, 5}, {-18, 125, -17}, {6, 20, 6},      {12.25F, 90, 0}, {2.5F, 40, 4}};
    for (const auto& [level, top, then] : cases)
        EXPECT_EQ(LevelAfterClick(track, usual, level, top), then) << level << " towards " << top;
    EXPECT_TRUE(HasDecibelTicks(track, usual));
    EXPECT_FALSE(HasDecibelTicks(track, {8, -18}));
}

struct LevelTrimTest : LevelControlTest<LevelTrim> {
    LevelTrimTest() : LevelControlTest("Text2") { window.resize(120, 300); }

    void Enter(const QString& text) {
        Type(text);
        QTest::keyClick(&readOut, Qt::Key_Return);
    }
    /// The second press of a double click.
    void PressAgain() {
        QMouseEvent second(QEvent::MouseButtonDblClick, QPointF(5, 5), knob.mapToGlobal(QPointF(5, 5)),
                           Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&knob, &second);
    }
    void RepeatDown() {
        QKeyEvent again(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier, {}, true);
        QApplication::sendEvent(&knob, &again);
    }

    LevelTrim& fader = control;
    QWidget& knob = Child<QWidget>(fader, "Command1");
    QLineEdit& readOut = edit;
};

TEST_F(LevelTrimTest, PropertiesMoveTheKnobWithoutEvents) {
    fader.setProperty("Level", 6.0F);
    const int top = knob.y();
    fader.setProperty("Level", -18.0F);
    EXPECT_EQ(knob.geometry().bottom(), fader.height() - 2) << "the bottom of the track";
    fader.setProperty("MinLevel", -30.0F);
    fader.setProperty("MaxLevel", -18.0F);
    EXPECT_EQ(knob.y(), top);
    fader.SetLevel(12.25F); // beyond the limits and between decibels: kept as it is
    EXPECT_EQ(fader.Level(), 12.25F);
    EXPECT_EQ(readOut.text(), "+12.25dB"_L1);
    EXPECT_EQ(knob.y(), top);
    EXPECT_EQ(changes.count(), 0);
    fader.SetLevel(-30.0F);
    window.resize(120, 500);
    QApplication::processEvents();
    EXPECT_EQ(knob.geometry().bottom(), fader.height() - 2) << "the knob follows the size";
}

TEST_F(LevelTrimTest, DragFollowsThePointerAndRaisesChangeOnRelease) {
    DragBy(knob, {0, -1000});
    EXPECT_EQ(readOut.text(), "+6dB"_L1);
    EXPECT_EQ(changes.count(), 1);
    DragBy(knob, {40, 2000});
    EXPECT_EQ(Now(), State(-18, 2));

    QTest::mousePress(&knob, Qt::LeftButton, {}, {5, 3});
    QTest::mouseMove(&knob, {5, 3 - 40});
    EXPECT_EQ(knob.geometry().bottom(), fader.height() - 2 - 40)
        << "the grabbed point stays under the pointer";
    const double travel = fader.height() - 1 - readOut.height() - 8 - knob.height();
    EXPECT_EQ(fader.Level(), static_cast<float>(std::nearbyint(-18 + 24 * 40 / travel)));
    EXPECT_EQ(changes.count(), 2) << "no event during the drag";
    QTest::mouseRelease(&knob, Qt::LeftButton);
    QTest::mouseClick(&knob, Qt::LeftButton);
    EXPECT_EQ(changes.count(), 4) << "a release without a move counts too";
}

TEST_F(LevelTrimTest, AnInterruptedDragEndsWithItsChange) {
    QTest::mousePress(&knob, Qt::LeftButton);
    QTest::mouseMove(&knob, knob.rect().center() - QPoint(0, 30));
    const float level = fader.Level();
    fader.setEnabled(false);
    QTest::mouseMove(&knob, knob.rect().center() + QPoint(0, 60));
    QApplication::processEvents();
    EXPECT_EQ(Now(), State(level, 1));
}

TEST_F(LevelTrimTest, KeysMoveTheKnobAndAHeldOneRaisesTwoChanges) {
    const std::pair<Qt::Key, float> cases[] = {
        {Qt::Key_Up, 1},     {Qt::Key_PageUp, 6},     {Qt::Key_PageDown, 0}, {Qt::Key_Down, -1},
        {Qt::Key_Home, -18}, {Qt::Key_PageDown, -18}, {Qt::Key_End, 6},      {Qt::Key_Up, 6}};
    for (const auto& [key, level] : cases) {
        changes.clear();
        QTest::keyClick(&knob, key);
        EXPECT_EQ(Now(), State(level, 1));
    }
    fader.SetLevel(2.5F);
    QTest::keyClick(&knob, Qt::Key_Up);
    EXPECT_EQ(fader.Level(), 4.0F) << "whole decibels, halves to even";

    fader.SetLevel(-1.0F);
    changes.clear();
    QTest::keyPress(&knob, Qt::Key_Down);
    EXPECT_EQ(changes.count(), 1);
    for (int i = 0; i < 5; ++i)
        RepeatDown();
    EXPECT_EQ(Now(), State(-7, 1));
    QTest::keyRelease(&knob, Qt::Key_Down);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(LevelTrimTest, TheWheelMovesTheFaderThatHasTheFocus) {
    const auto turn = [&](int delta) {
        QWheelEvent event(QPointF(10, 100), fader.mapToGlobal(QPointF(10, 100)), {}, {0, delta}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event); // only those go on to the parent
        qApp->notify(&knob, &event);
        return event.isAccepted();
    };
    other.setFocus();
    EXPECT_FALSE(turn(120)) << "the page scrolls";
    EXPECT_EQ(Now(), State(0, 0));
    knob.setFocus();
    const std::tuple<int, float, int> cases[] = {{120, 1, 1},  {-360, -2, 2}, {-50, -2, 2}, {-50, -2, 2},
                                                 {-50, -3, 3}, {-90, -4, 4},  {9000, 6, 5}, {120, 6, 5}};
    for (const auto& [delta, level, raised] : cases) {
        EXPECT_TRUE(turn(delta));
        EXPECT_EQ(Now(), State(level, raised)) << delta;
    }
    Type(u"-4"_s);
    turn(120);
    EXPECT_EQ(fader.Level(), -3.0F) << "what was typed counts";
}

TEST_F(LevelTrimTest, ClicksBesideTheKnobStepAndNeverMakeADoubleClick) {
    const QPoint below(5, fader.height() - 3);
    QTest::mouseClick(&fader, Qt::LeftButton, {}, below);
    EXPECT_EQ(Now(), State(-6, 1));
    EXPECT_TRUE(knob.hasFocus());
    QTest::mouseClick(&fader, Qt::RightButton, {}, below);
    QTest::mouseClick(&fader, Qt::LeftButton, {}, {fader.width() - 2, knob.geometry().center().y()});
    EXPECT_EQ(Now(), State(-6, 1));
    // The knob comes under the pointer; the second click is one on the knob.
    QTest::mouseClick(&knob, Qt::LeftButton);
    const QPoint step(5, knob.geometry().bottom() + 12);
    QTest::mouseClick(&fader, Qt::LeftButton, {}, step);
    const float level = fader.Level();
    EXPECT_LT(level, -6.0F);
    PressAgain();
    EXPECT_EQ(fader.Level(), level);
}

TEST_F(LevelTrimTest, ADoubleClickGoesToZeroWithItsRelease) {
    fader.SetLevel(-12.0F);
    QTest::mouseClick(&knob, Qt::LeftButton);
    PressAgain();
    EXPECT_EQ(Now(), State(0, 1)) << "told when the button is released, as after a drag";
    QTest::mouseMove(&knob, {5, 60});
    QTest::mouseRelease(&knob, Qt::LeftButton);
    EXPECT_EQ(Now(), State(0, 2));
    fader.SetMaxLevel(-3.0F);
    QTest::mouseDClick(&knob, Qt::LeftButton);
    EXPECT_EQ(fader.Level(), -3.0F) << "within the limits";
}

TEST_F(LevelTrimTest, MarksTakeTheirRoomOnceAndAreTold) {
    const auto describe = [&] {
        return QAccessible::queryAccessibleInterface(&knob)->text(QAccessible::Description);
    };
    fader.ShowMarks({{3.0F, -12.0F}, -6.0F});
    const int left = knob.x();
    EXPECT_GT(left, 0);
    EXPECT_EQ(describe(), "From -12dB to +3dB, start at -6dB"_L1);
    const auto startMark = [&] { // how many pixels left of the knob are painted
        const QImage image = fader.grab({0, readOut.height(), left, fader.height()}).toImage();
        int marked = 0;
        for (int y = 0; y < image.height(); ++y)
            marked += image.pixel(left - 3, y) != image.pixel(0, 0);
        return marked;
    };
    EXPECT_GT(startMark(), 0);
    fader.ShowMarks({{3.0F, -12.0F}, std::nullopt});
    EXPECT_EQ(startMark(), 0);
    EXPECT_EQ(knob.x(), left) << "nothing moves when the start level has no place";
    EXPECT_EQ(describe(), "From -12dB to +3dB"_L1);
}

TEST_F(LevelTrimTest, TypedLevelsAreWholeAndLimited) {
    const std::tuple<const char*, float, const char*, int> cases[] = {
        {"12", 6, "+6dB", 1}, {"8", 6, "+6dB", 0}, {"-3.5", -18, "-18dB", 1}, {"-9", 0, "0dB", 1},
        {"+4", 4, "+4dB", 1}, {"4", 4, "+4dB", 0}, {"9.e x-1", -1, "-1dB", 1}};
    float told = 0;
    QObject::connect(&fader, &LevelTrim::Change, &fader, [&] { told = fader.Level(); });
    for (const auto& [typed, level, text, raised] : cases) {
        changes.clear();
        Enter(QLatin1StringView(typed));
        EXPECT_EQ(fader.Level(), level) << typed;
        EXPECT_EQ(told, level) << "the event comes after the level";
        EXPECT_EQ(readOut.text(), QLatin1StringView(text)) << typed;
        EXPECT_EQ(changes.count(), raised) << typed;
    }
}

TEST_F(LevelTrimTest, LeavingTheReadOutAcceptsOnlyAnEdit) {
    fader.SetLevel(-3.5F);
    readOut.setFocus();
    other.setFocus();
    EXPECT_EQ(Now(), State(-3.5F, 0));
    readOut.setFocus();
    QTest::keyClicks(&readOut, u"-4"_s);
    other.setFocus();
    EXPECT_EQ(Now(), State(-4, 1));
}

TEST_F(LevelTrimTest, IsASliderForAssistiveTechnology) {
    fader.SetAccessibleTitle(u"Input 3 trim"_s);
    QAccessibleInterface* slider = QAccessible::queryAccessibleInterface(&knob);
    ASSERT_NE(slider->valueInterface(), nullptr);
    EXPECT_EQ(slider->role(), QAccessible::Slider);
    EXPECT_EQ(slider->text(QAccessible::Name), "Input 3 trim"_L1);
    QAccessibleValueInterface& value = *slider->valueInterface();
    for (const int level : {-60, -20}) {
        value.setCurrentValue(level);
        EXPECT_EQ(value.currentValue().toFloat(), -18.0F);
        EXPECT_EQ(changes.count(), 1) << "once: -20 is no other level";
    }
    EXPECT_EQ(value.maximumValue().toFloat(), 6.0F);
    EXPECT_EQ(value.minimumValue().toFloat(), -18.0F);
    EXPECT_EQ(readOut.accessibleName(), "Input 3 trim in dB"_L1);
}

TEST_F(LevelTrimTest, OnlyTheLeftButtonAndItsOwnKeysMoveTheKnob) {
    QTest::mousePress(&knob, Qt::RightButton);
    QTest::mouseMove(&knob, {5, -50});
    QTest::mousePress(&knob, Qt::LeftButton);
    QTest::mouseRelease(&knob, Qt::RightButton);
    EXPECT_EQ(changes.count(), 0) << "the drag goes on";
    QTest::mouseRelease(&knob, Qt::LeftButton);
    fader.hide();
    QApplication::processEvents();
    EXPECT_EQ(changes.count(), 1) << "nothing is left to end";
    QKeyEvent foreign(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
    QApplication::sendEvent(&knob, &foreign);
    EXPECT_FALSE(foreign.isAccepted());
    EXPECT_EQ(Now(), State(0, 1));
}

TEST_F(LevelTrimTest, AHeldKeyEndsWithTheFocusOrTheWindow) {
    QEvent covered(QEvent::WindowDeactivate);
    const std::function<void()> endings[] = {[&] { other.setFocus(); }, [&] { fader.hide(); },
                                             [&] { QApplication::sendEvent(&window, &covered); }};
    for (const auto& end : endings) {
        fader.show();
        knob.setFocus();
        RepeatDown();
        changes.clear();
        end();
        QApplication::processEvents();
        EXPECT_EQ(changes.count(), 1);
        QTest::keyRelease(&knob, Qt::Key_Down);
        EXPECT_EQ(changes.count(), 1);
    }
}

TEST_F(LevelTrimTest, TabReachesTheReadOutBeforeTheKnob) {
    other.setFocus();
    QTest::keyClick(&other, Qt::Key_Tab);
    EXPECT_TRUE(readOut.hasFocus());
    EXPECT_EQ(readOut.selectedText(), readOut.text());
    QTest::keyClick(&readOut, Qt::Key_Tab);
    EXPECT_TRUE(knob.hasFocus());
    Enter(u"3"_s);
    EXPECT_EQ(readOut.selectedText(), "+3dB"_L1) << "the next digit starts a new level";
}
