// A control on the screen and what it tells.
#pragma once

#include "support/Windows.h"

#include <utility>

namespace vek {

/// The control below a box that takes the focus from it, in a window that has the keyboard.
template <class Control>
struct ControlTest : testing::Test {
    template <class... Arguments>
    explicit ControlTest(Arguments... arguments) : control(arguments...) {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&other);
        column->addWidget(&control);
        ShowActive(window);
    }

    QWidget window;
    QLineEdit other;
    Control control;
};

/// A control with a level and a box for its text.
template <class Control>
struct LevelControlTest : ControlTest<Control> {
    explicit LevelControlTest(const char* box) : edit(Child<QLineEdit>(this->control, box)) {}

    void Type(const QString& text) {
        edit.setFocus();
        edit.selectAll();
        QTest::keyClicks(&edit, text);
    }

    using State = std::pair<float, qsizetype>;
    /// The level and the number of changes told.
    State Now() const { return {this->control.Level(), changes.count()}; }

    QLineEdit& edit;
    QSignalSpy changes{&this->control, &Control::Change};
};

} // namespace vek
