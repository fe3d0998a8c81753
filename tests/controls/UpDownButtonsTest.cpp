#include "controls/UpDownButtons.h"
#include "support/Windows.h"

#include <functional>

using namespace vek;
using namespace Qt::StringLiterals;

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
    }
}

TEST_F(UpDownButtonsTest, AnInterruptedHoldLeavesNoButtonDown) {
    QEvent covered(QEvent::WindowDeactivate);
    const std::function<void()> endings[] = {[&] { buttons.hide(); },
                                             [&] { QApplication::sendEvent(&buttons, &covered); }};
    for (const auto& end : endings) {
        buttons.show();
        QTest::mousePress(&up, Qt::LeftButton);
        seen.clear();
        end();
        EXPECT_FALSE(up.isDown() || timer.isActive());
        EXPECT_EQ(seen, "") << "who hears it may open a message box";
        QApplication::processEvents();
        QTest::mouseRelease(&up, Qt::LeftButton);
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
