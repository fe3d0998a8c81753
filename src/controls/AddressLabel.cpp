#include "controls/AddressLabel.h"

#include "controls/Contrast.h"
#include "controls/FocusGrid.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr double cornerRadius = 4.0;
constexpr int leastMargins = 8; // at the left and the right together, pixels

} // namespace

AddressLabel::AddressLabel(QWidget* parent) : QAbstractButton(parent) {
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
}

void AddressLabel::SetMeaning(const QString& meaning) {
    meaning_ = meaning;
    TellName();
}

void AddressLabel::ShowAddress(int address, bool enabled) {
    setChecked(enabled);
    address_ = address;
    const QString shown = enabled ? QString::number(address) : tr("OFF");
    if (text() != shown)
        setText(shown);
    TellName();
}

void AddressLabel::TellName() {
    const QString state = isChecked() ? tr("on") : tr("off");
    setAccessibleName(tr("%1, address %2, %3").arg(meaning_, QString::number(address_), state));
}

QSize AddressLabel::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    return {metrics.horizontalAdvance(u"00000"_s) + metrics.height(), metrics.height() + 8};
}

QSize AddressLabel::minimumSizeHint() const {
    QFont bold = font();
    bold.setBold(true);
    return {QFontMetrics(bold).horizontalAdvance(u"0000"_s) + leastMargins, sizeHint().height()};
}

void AddressLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    const QPalette& colours = palette();
    QFont shown = font();
    if (isChecked()) {
        // On: filled and bold. Off: an empty dashed frame. The two differ without any colour.
        const QColor text = colours.color(QPalette::HighlightedText);
        const QColor fill = ReadableOn(colours.color(QPalette::Highlight), text);
        painter.setPen(QPen(fill, 1));
        painter.setBrush(fill);
        painter.drawRoundedRect(box, cornerRadius, cornerRadius);
        painter.setPen(text);
        shown.setBold(true);
    } else {
        const QColor strong = colours.color(QPalette::WindowText);
        const QColor behind = colours.color(QPalette::Window);
        const QColor line = underMouse() ? strong : LighterText(strong, behind, visibleContrast);
        painter.setPen(QPen(line, 1, Qt::DashLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(box, cornerRadius, cornerRadius);
        painter.setPen(LighterText(strong, behind));
    }
    painter.setFont(shown);
    painter.drawText(rect(), Qt::AlignCenter, text());
    if (ShowsFocus(*this)) {
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
