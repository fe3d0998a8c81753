#include "controls/dBText.h"

#include "controls/ControlTest.h"

using namespace vek;
using namespace Qt::StringLiterals;

struct dBTextTest : LevelControlTest<dBText> {
    dBTextTest() : LevelControlTest("Text1") {
        box.SetMaxLevel(6.0F);
        box.SetMinLevel(-18.0F);
    }

    dBText& box = control;
    QWidget& up = Child<QWidget>(box, "Up");
    QWidget& down = Child<QWidget>(box, "Down");
    QTimer& timer = Child<QTimer>(box, "Timer1");
};

TEST_F(dBTextTest, PropertiesSnapLimitAndRaiseNothing) {
    box.setProperty("Level", -12.7F);
    EXPECT_EQ(edit.text(), "-12.5dB"_L1);
    box.setProperty("MinLevel", -6.0F);
    EXPECT_EQ(edit.text(), "-6dB"_L1);
    box.setProperty("MaxLevel", -8.0F);
    EXPECT_EQ(box.Level(), -8.0F);
    box.SetMaxLevel(6.0F);
    EXPECT_EQ(box.Snapped(3.3F), 3.0F);
    EXPECT_EQ(Now(), State(-6, 0));
}

TEST_F(dBTextTest, EnterTakesTheNumber) {
    const std::pair<const char*, const char*> cases[] = {
        {"-3", "-3dB"},
        {"2.3", "+2dB"},
        {"2.7", "+2.5dB"},
        {"29.7", "+2.5dB"},
        {"", "0dB"},
        {"--", "0dB"},
        {"888888888888888888888888888888888888888888888", "+6dB"},
        {"-88.8", "-18dB"},
        {"dB1", "+1dB"},
        {"+.5", "+0.5dB"}};
    for (const auto& [typed, text] : cases) {
        Type(QLatin1StringView(typed));
        if (*typed == '\0')
            QTest::keyClick(&edit, Qt::Key_Delete);
        changes.clear();
        QTest::keyClick(&edit, Qt::Key_Return);
        EXPECT_EQ(edit.text(), QLatin1StringView(text)) << typed;
        EXPECT_EQ(edit.selectedText(), edit.text()) << typed;
        EXPECT_EQ(changes.count(), 1) << typed;
    }
}

TEST_F(dBTextTest, LeavingComparesWithTheFormerWholeDecibels) {
    const std::tuple<float, const char*, float, int> cases[] = {// nothing typed: untouched
                                                                {3.0F, "", 3.0F, 0},
                                                                {1.5F, "", 1.5F, 1},
                                                                {1.5F, "2", 2.0F, 0},
                                                                {2.5F, "3", 3.0F, 1},
                                                                {3.0F, "3.5", 3.5F, 1}};
    for (const auto& [before, typed, after, raised] : cases) {
        box.SetLevel(before);
        edit.setFocus();
        if (*typed != '\0')
            Type(QLatin1StringView(typed));
        changes.clear();
        other.setFocus();
        EXPECT_EQ(Now(), State(after, raised)) << before << " " << typed;
    }
}

TEST_F(dBTextTest, HeldButtonsRepeatWithinTheLimitsAndRaiseOneChange) {
    box.SetLevel(5.0F);
    QTest::mousePress(&up, Qt::LeftButton);
    for (const float expected : {5.5F, 6.0F, 6.0F}) {
        EXPECT_EQ(box.Level(), expected);
        edit.deselect();
        QMetaObject::invokeMethod(timer.parent(), "Timer1_Tick");
        EXPECT_EQ(edit.selectedText(), edit.text()) << "the next digit starts a new level";
    }
    EXPECT_EQ(changes.count(), 0);
    QTest::mouseRelease(&up, Qt::LeftButton);
    QTest::mouseClick(&down, Qt::LeftButton);
    EXPECT_EQ(Now(), State(5.5F, 2));
}

TEST_F(dBTextTest, ButtonsTakeWhatWasTypedAndFinishTheBoxBefore) {
    dBText before;
    window.layout()->addWidget(&before);
    QSignalSpy beforeChanges(&before, &dBText::Change);
    Type(u"3"_s);
    QTest::mouseClick(&up, Qt::LeftButton);
    EXPECT_EQ(Now(), State(3.5F, 1));

    Child<QLineEdit>(before, "Text1").setFocus();
    QTest::keyClicks(QApplication::focusWidget(), u"-4"_s);
    QTest::mousePress(&up, Qt::LeftButton);
    EXPECT_EQ(before.Level(), -4.0F);
    EXPECT_EQ(beforeChanges.count(), 1);
    EXPECT_TRUE(edit.hasFocus());
}

TEST_F(dBTextTest, ArrowKeysStepFromWhatWasTyped) {
    Type(u"-2"_s);
    QTest::keyClick(&edit, Qt::Key_Up);
    EXPECT_EQ(edit.text(), "-1.5dB"_L1);
    QTest::keyClick(&edit, Qt::Key_Down);
    EXPECT_EQ(Now(), State(-2, 2));
    EXPECT_EQ(edit.selectedText(), edit.text()) << "the next digit starts a new level";
}
