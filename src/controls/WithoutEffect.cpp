#include "controls/WithoutEffect.h"

#include <QGraphicsOpacityEffect>
#include <QWidget>

namespace vek {

namespace {

constexpr double pale = 0.45;

} // namespace

void DrawWithoutEffect(QWidget& control, const QString& reason) {
    if (control.accessibleDescription() == reason)
        return;
    control.setAccessibleDescription(reason);
    control.setToolTip(reason);
    if (reason.isEmpty()) {
        control.setGraphicsEffect(nullptr);
        return;
    }
    auto* effect = new QGraphicsOpacityEffect(&control);
    effect->setOpacity(pale);
    control.setGraphicsEffect(effect);
}

} // namespace vek
