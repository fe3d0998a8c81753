// Controls that come and go without moving the others.
#pragma once

#include <QWidget>

namespace vek {

/// The widget's room in its layout stays empty while it is hidden.
inline void KeepPlaceWhenHidden(QWidget* widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

} // namespace vek
