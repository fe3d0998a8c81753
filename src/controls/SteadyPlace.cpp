#include "controls/SteadyPlace.h"

namespace vek {

SteadyPlace::SteadyPlace(QLabel* label, int characters, int lines, QWidget* parent)
    : QWidget(parent), label_(label), characters_(characters), lines_(lines) {
    label_->setParent(this);
}

QSize SteadyPlace::sizeHint() const {
    const QFontMetrics metrics = label_->fontMetrics();
    const QMargins margins = label_->contentsMargins();
    return {metrics.averageCharWidth() * characters_ + margins.left() + margins.right(),
            metrics.lineSpacing() * lines_ + margins.top() + margins.bottom()};
}

void SteadyPlace::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    label_->setGeometry(rect());
}

} // namespace vek
