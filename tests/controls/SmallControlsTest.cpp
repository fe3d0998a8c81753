// The controls without a rule of their own, and what the others share.
#include "controls/AddressLabel.h"
#include "controls/ElidedLabel.h"
#include "controls/TextConversion.h"
#include "controls/UpDownButtons.h"
#include "support/Windows.h"

#include <QContextMenuEvent>
#include <QSignalSpy>

#include <functional>

namespace vek {
namespace {

using namespace Qt::StringLiterals;

struct AddressLabelTest : testing::Test {
    AddressLabelTest() { ShowActive(label); }
    AddressLabel label{u"Step Up In"_s};
    QSignalSpy clicks{&label, &AddressLabel::clicked};
    QSignalSpy menus{&label, &AddressLabel::MenuRequested};
};

TEST_F(AddressLabelTest, ShowsOnlyWhatItsOwnerSets) {
    EXPECT_EQ(label.accessibleName(), "Step Up In"_L1);
    label.SetOff();
    EXPECT_EQ(label.text(), "OFF"_L1);
    EXPECT_FALSE(label.isChecked());
    QTest::mouseClick(&label, Qt::LeftButton);
    QTest::keyClick(&label, Qt::Key_Space);
    EXPECT_EQ(clicks.count(), 2);
    EXPECT_FALSE(label.isChecked());
    label.SetAddress(1999);
    EXPECT_EQ(label.text(), "1999"_L1);
    EXPECT_TRUE(label.isChecked());
    EXPECT_EQ(menus.count(), 0);
}

TEST_F(AddressLabelTest, AsksForItsMenuOnce) {
    const QPoint at(3, 4);
    QTest::mousePress(&label, Qt::RightButton, {}, at);
    QContextMenuEvent byMouse(QContextMenuEvent::Mouse, at, label.mapToGlobal(at));
    QApplication::sendEvent(&label, &byMouse);
    ASSERT_EQ(menus.count(), 1);
    EXPECT_EQ(menus.back().front().toPoint(), label.mapToGlobal(at));
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, at, label.mapToGlobal(at));
    QApplication::sendEvent(&label, &byKey);
    ASSERT_EQ(menus.count(), 2);
    EXPECT_EQ(menus.back().front().toPoint(), label.mapToGlobal(label.rect().center()));
    EXPECT_EQ(clicks.count(), 0);
    EXPECT_TRUE(byMouse.isAccepted() && byKey.isAccepted());
}

TEST(ElidedLabel, GivesWayButKeepsALittleRoom) {
    ElidedLabel label(QString(200, u'n'));
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    const int character = label.fontMetrics().averageCharWidth();
    label.setContentsMargins(6, 0, 9, 0);
    EXPECT_EQ(label.minimumSizeHint().width(), 8 * character + 15);
    label.setText(u"i"_s);
    EXPECT_EQ(label.minimumSizeHint().width(), label.sizeHint().width()) << "no more than the text takes";
}

struct UpDownButtonsTest : testing::Test {
    UpDownButtonsTest() {
        buttons.resize(20, 40);
        ShowActive(buttons);
        QObject::connect(&buttons, &UpDownButtons::Pressed, [this] { seen += "pressed "; });
        QObject::connect(&buttons, &UpDownButtons::Step,
                         [this](int by) { seen += by > 0 ? "up " : "down "; });
        QObject::connect(&buttons, &UpDownButtons::Released, [this] { seen += "released "; });
    }
    UpDownButtons buttons;
    QAbstractButton& up = Child<QAbstractButton>(buttons, "Up");
    QAbstractButton& down = Child<QAbstractButton>(buttons, "Down");
    QTimer& timer = Child<QTimer>(buttons, "Timer1");
    std::string seen;
};

TEST_F(UpDownButtonsTest, StepInTheirDirectionWhileHeld) {
    buttons.SetAccessibleTitle(u"Base"_s);
    for (QAbstractButton* button : {&up, &down}) {
        const std::string step = button == &up ? "up " : "down ";
        EXPECT_EQ(button->accessibleName().toStdString() + ' ', "Base " + step);
        QTest::mousePress(button, Qt::LeftButton);
        EXPECT_EQ(timer.interval(), 1000);
        QTest::mouseMove(button, {-50, -50}); // slipping off the button does not end the hold
        buttons.Timer1_Tick();
        EXPECT_EQ(timer.interval(), 100);
        EXPECT_TRUE(button->isDown() && timer.isActive());
        QTest::mouseRelease(button, Qt::LeftButton, {}, {-50, -50});
        buttons.Timer1_Tick();
        EXPECT_EQ(std::exchange(seen, {}), "pressed " + step + step + "released ");
        EXPECT_FALSE(button->isDown() || timer.isActive());
        EXPECT_EQ(button->focusPolicy(), Qt::NoFocus);
    }
    EXPECT_LT(up.y(), down.y());
}

TEST_F(UpDownButtonsTest, AnInterruptedHoldLeavesNoButtonDown) {
    QEvent covered(QEvent::WindowDeactivate);
    const std::function<void()> endings[] = {[&] { buttons.hide(); },
                                             [&] { QApplication::sendEvent(&buttons, &covered); }};
    for (const auto& end : endings)
        for (QAbstractButton* button : {&up, &down}) {
            buttons.show();
            QTest::mousePress(button, Qt::LeftButton);
            seen.clear();
            end();
            EXPECT_FALSE(button->isDown() || timer.isActive());
            EXPECT_EQ(seen, "") << "who hears it may open a message box";
            QApplication::processEvents();
            QTest::mouseRelease(button, Qt::LeftButton);
            end();
            QApplication::processEvents();
            EXPECT_EQ(seen, "released ");
        }
    buttons.show();
    QTest::mousePress(&up, Qt::LeftButton);
    buttons.setEnabled(false);
    EXPECT_EQ(seen, "released pressed up released ");
}

TEST_F(UpDownButtonsTest, APressThatEndsItselfMakesNoStep) {
    QObject::connect(&buttons, &UpDownButtons::Pressed, &buttons, &QWidget::hide);
    QTest::mousePress(&up, Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_EQ(seen, "pressed released ");
    EXPECT_FALSE(timer.isActive());
}

TEST(TextConversion, LineEndsAndTheCodePage) {
    const struct {
        const char* Bytes;
        QString Lines;
        const char* Back;
    } cases[] = {{"a\r\nb\rc\nd", u"a\nb\nc\nd"_s, "a\r\nb\r\nc\r\nd"},
                 {"\x80\xE9", u"\u20AC\u00E9"_s, "\x80\xE9"},
                 {"\n\r", u"\n\n"_s, "\r\n\r\n"}};
    for (const auto& c : cases) {
        EXPECT_EQ(LinesFromBytes(c.Bytes), c.Lines);
        EXPECT_EQ(LinesToBytes(c.Lines), c.Back);
    }
    EXPECT_EQ(LinesToBytes(u"a\r\nb\rc"_s), "a\r\nb\r\nc");
    EXPECT_EQ(ToBytes(u"\u2192\U0001F600x"_s), "??x");
    EXPECT_EQ(ElementName("Modes", 7), "Modes_7"_L1);
}

} // namespace
} // namespace vek
