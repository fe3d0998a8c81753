#include "controls/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace vek {

ElidedLabel::ElidedLabel(const QString& text, QWidget* parent, Qt::TextElideMode leftOut)
    : QLabel(text, parent), leftOut_(leftOut) {
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
    const QString shown = fontMetrics().elidedText(text(), leftOut_, area.width());
    const Qt::Alignment flags = QStyle::visualAlignment(layoutDirection(), alignment());
    painter.setPen(TextColour());
    style()->drawItemText(&painter, area, static_cast<int>(flags), palette(), isEnabled(), shown);
}

QColor ElidedLabel::TextColour() const { return palette().color(foregroundRole()); }

} // namespace vek
