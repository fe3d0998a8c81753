#include "controls/AddressLabel.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr double cornerRadius = 4.0;

} // namespace

AddressLabel::AddressLabel(const QString& function, QWidget* parent) : QAbstractButton(parent) {
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(function);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
}

void AddressLabel::SetAddress(int address) { Show(true, QString::number(address)); }

void AddressLabel::SetOff() { Show(false, tr("OFF")); }

void AddressLabel::Show(bool enabled, const QString& shown) {
    setChecked(enabled);
    if (text() != shown)
        setText(shown);
}

QSize AddressLabel::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return {metrics.horizontalAdvance(u"00000"_s) + metrics.height(), metrics.height() + 8};
}

void AddressLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    const QPalette& colours = palette();
    QFont shown = font();
    if (isChecked()) {
        // On: filled and bold. Off: an empty dashed frame. The two differ without any colour.
        painter.setPen(QPen(colours.color(QPalette::Highlight), 1));
        painter.setBrush(colours.color(QPalette::Highlight));
        painter.drawRoundedRect(box, cornerRadius, cornerRadius);
        painter.setPen(colours.color(QPalette::HighlightedText));
        shown.setBold(true);
    } else {
        QColor line = colours.color(QPalette::WindowText);
        line.setAlphaF(underMouse() ? 0.9F : 0.45F);
        painter.setPen(QPen(line, 1, Qt::DashLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(box, cornerRadius, cornerRadius);
        QColor faint = colours.color(QPalette::WindowText);
        faint.setAlphaF(0.75F);
        painter.setPen(faint);
    }
    painter.setFont(shown);
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (hasFocus()) {
        painter.setPen(QPen(colours.color(QPalette::WindowText), 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.75, 0.75, -0.75, -0.75), cornerRadius + 1,
                                cornerRadius + 1);
    }
}

void AddressLabel::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton) {
        Q_EMIT MenuRequested(event->globalPosition().toPoint());
        event->accept();
        return;
    }
    QAbstractButton::mousePressEvent(event);
}

void AddressLabel::contextMenuEvent(QContextMenuEvent* event) {
    // The mouse has been served by its press already.
    if (event->reason() == QContextMenuEvent::Keyboard)
        Q_EMIT MenuRequested(mapToGlobal(rect().center()));
    event->accept();
}

void AddressLabel::enterEvent(QEnterEvent* event) {
    update();
    QAbstractButton::enterEvent(event);
}

void AddressLabel::leaveEvent(QEvent* event) {
    update();
    QAbstractButton::leaveEvent(event);
}

} // namespace vek
