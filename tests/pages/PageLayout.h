// What stands where on a page that is shown, as the user sees it.
#pragma once

#include "support/Windows.h"

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

} // namespace vek
