#include "controls/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace vek {

ElidedLabel::ElidedLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const {
    const QMargins margins = contentsMargins();
    const int least = fontMetrics().averageCharWidth() * 8 + margins.left() + margins.right();
    return {qMin(least, sizeHint().width()), QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect area = contentsRect();
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, area.width());
    const Qt::Alignment flags = QStyle::visualAlignment(layoutDirection(), alignment());
    style()->drawItemText(&painter, area, static_cast<int>(flags), palette(), isEnabled(), shown,
                          foregroundRole());
}

} // namespace vek
