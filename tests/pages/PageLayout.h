// What stands where on a page that is shown, as the user sees it.
#pragma once

#include "support/Windows.h"

#include <QGroupBox>
#include <QLabel>

#include <limits>

namespace vek {

/// The text of the nearest label to the left of a control or above it.
inline QString Caption(QWidget& page, QWidget& control, Qt::Edge side) {
    const QRect place(control.mapTo(&page, QPoint()), control.size());
    QString caption;
    int nearest = std::numeric_limits<int>::max();
    for (const QLabel* label : page.findChildren<QLabel*>()) {
        const QRect other(label->mapTo(&page, QPoint()), label->size());
        const bool aligned = side == Qt::TopEdge ? std::abs(other.center().x() - place.center().x()) <= 80
                                                 : std::abs(other.center().y() - place.center().y()) <= 2;
        const int distance =
            side == Qt::TopEdge ? place.top() - other.bottom() : place.left() - other.right();
        if (!label->isVisible() || !aligned || distance < 0 || distance >= nearest)
            continue;
        nearest = distance;
        caption = label->text();
    }
    return caption;
}

/// The title of the frame around a control.
inline QString FrameTitle(const QWidget& control) {
    const QWidget* around = control.parentWidget();
    while (around != nullptr && qobject_cast<const QGroupBox*>(around) == nullptr)
        around = around->parentWidget();
    return around == nullptr ? QString() : qobject_cast<const QGroupBox*>(around)->title();
}

/// The controls that Tab reaches from the one with the focus on, itself included, until it comes round: the
/// names of the objects, those of a control's parts behind the control's own name.
inline std::string TabOrder() {
    QStringList order;
    const QWidget* first = QApplication::focusWidget();
    do {
        QWidget* focus = QApplication::focusWidget();
        const QString parent = focus->parentWidget()->objectName();
        order += parent.isEmpty() ? focus->objectName() : parent + u' ' + focus->objectName();
        QTest::keyClick(focus, Qt::Key_Tab);
    } while (QApplication::focusWidget() != first && order.size() < 100);
    return order.join(u',').toStdString();
}

} // namespace vek
