#include "dialogs/OutputLabel.h"

#include "controls/Contrast.h"
#include "controls/FocusGrid.h"
#include "controls/LayoutHelpers.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr double radius = 4.0;
constexpr int padding = 6;     // at the left and the right, pixels
constexpr int mostOfName = 11; // average characters; nine of them stand side by side

} // namespace

OutputLabel::OutputLabel(int number, const QString& name, QWidget* parent)
    : QLabel(QString::number(number), parent), name_(name) {
    setObjectName(u"Label1_%1"_s.arg(number - 1));
    setAlignment(Qt::AlignCenter);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::OpenHandCursor);
    const QString help = tr("Drag the number to a frame, or press 0 to 4");
    SetPlainToolTip(*this, name.isEmpty() ? help : name + u'\n' + help);
}

QFont OutputLabel::NumberFont() const {
    QFont bold = font();
    bold.setBold(true);
    return bold;
}

QSize OutputLabel::sizeHint() const {
    const int number = QFontMetrics(NumberFont()).horizontalAdvance(text());
    const QFontMetrics metrics = fontMetrics();
    const int name = name_.isEmpty() ? 0 : metrics.horizontalAdvance(u' ' + name_) + 1;
    const int most = metrics.averageCharWidth() * mostOfName;
    return {number + std::min(name, most) + 2 * padding, metrics.height() + padding};
}

void OutputLabel::PutBack() { move(home_); }

void OutputLabel::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    dragging_ = true;
    grab_ = event->position().toPoint();
    home_ = pos();
    raise();
    setCursor(Qt::ClosedHandCursor);
}

void OutputLabel::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_)
        return;
    const QPoint wanted = pos() + event->position().toPoint() - grab_;
    const QSize room = parentWidget()->size() - size();
    move(std::clamp(wanted.x(), 0, room.width()), std::clamp(wanted.y(), 0, room.height()));
    Q_EMIT Moved();
}

void OutputLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && dragging_)
        EndDrag();
}

void OutputLabel::EndDrag() {
    dragging_ = false;
    setCursor(Qt::OpenHandCursor);
    update();
    Q_EMIT Dropped();
}

void OutputLabel::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    window()->setAttribute(Qt::WA_KeyboardFocusChange); // from here on the focus is to be seen
    update();
    if (dragging_) { // the pointer has it; only Escape takes it away
        if (key != Qt::Key_Escape)
            return;
        PutBack();
        EndDrag();
    } else if (key >= Qt::Key_0 && key <= Qt::Key_4)
        Q_EMIT GroupTyped(key - Qt::Key_0);
    else if (key == Qt::Key_Right || key == Qt::Key_Down)
        Q_EMIT FocusWanted(+1);
    else if (key == Qt::Key_Left || key == Qt::Key_Up)
        Q_EMIT FocusWanted(-1);
    else
        QLabel::keyPressEvent(event);
}

void OutputLabel::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    update();
}

void OutputLabel::focusOutEvent(QFocusEvent* event) {
    QLabel::focusOutEvent(event);
    update();
}

void OutputLabel::paintEvent(QPaintEvent*) {
    const QPalette& colours = palette();
    const QColor fill = colours.color(QPalette::Button);
    const QColor strong = colours.color(QPalette::ButtonText);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool marked = dragging_ || ShowsFocus(*this);
    const QColor frame = marked ? strong : LighterText(strong, fill, visibleContrast);
    painter.setPen(QPen(frame, marked ? 2 : 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius, radius);

    const QFont numberFont = NumberFont();
    const QFontMetrics metrics = fontMetrics();
    const int number = QFontMetrics(numberFont).horizontalAdvance(text());
    const int blank = metrics.horizontalAdvance(u' ');
    const QRect room = rect().adjusted(padding, 0, -padding, 0);
    const QString name = metrics.elidedText(name_, Qt::ElideRight, room.width() - number - blank);
    // Both together stand in the middle.
    const int whole = number + (name.isEmpty() ? 0 : blank + metrics.horizontalAdvance(name));
    const QRect line = QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, {whole, room.height()}, room);
    const auto alignment = [this](Qt::Alignment side) {
        return static_cast<int>(QStyle::visualAlignment(layoutDirection(), side | Qt::AlignVCenter)) |
               Qt::TextDontClip;
    };
    painter.setFont(numberFont);
    painter.setPen(strong);
    painter.drawText(line, alignment(Qt::AlignLeft), text());
    painter.setFont(font());
    painter.setPen(LighterText(strong, fill));
    painter.drawText(line, alignment(Qt::AlignRight), name);
}

} // namespace vek
