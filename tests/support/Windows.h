// Putting widgets under test on the screen.
#pragma once

#include <QtTest>
#include <QtWidgets>

#include <gtest/gtest.h>

namespace vek {

/// Shows the widget and gives its window the keyboard.
inline void ShowActive(QWidget& widget) {
    widget.show();
    widget.activateWindow();
    QApplication::setActiveWindow(&widget);
    QApplication::processEvents();
    ASSERT_TRUE(widget.isActiveWindow());
}

/// The child of that object name; fails the test when there is none.
template <class Widget>
Widget& Child(QWidget& parent, const char* name) {
    auto* child = parent.findChild<Widget*>(QLatin1StringView(name));
    if (child == nullptr)
        throw std::runtime_error(std::string("no child named ") + name);
    return *child;
}

/// Presses, moves and releases the left button; the way is relative to where the widget was pressed.
inline void DragBy(QWidget& widget, QPoint way) {
    const QPoint grab = widget.rect().center();
    QTest::mousePress(&widget, Qt::LeftButton, {}, grab);
    // The widget follows the pointer, so each position is taken from where the widget is by then.
    const QPoint target = widget.mapToParent(grab) + way;
    QTest::mouseMove(&widget, widget.mapFromParent(target));
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, widget.mapFromParent(target));
}

} // namespace vek
