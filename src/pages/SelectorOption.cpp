#include "pages/SelectorOption.h"

#include "controls/Contrast.h"
#include "controls/LayoutHelpers.h"
#include "controls/LinkGroupLook.h"

#include <QPainter>
#include <QStyleOptionButton>

#include <algorithm>

namespace vek {

namespace {

constexpr int nameCharacters = 12; // room for a name; the rest is in the tool tip
constexpr double chosenTint = 0.28;
constexpr double quietTint = 0.10;
constexpr double corner = 3;
constexpr int stripeWidth = 3;

} // namespace

SelectorOption::SelectorOption(const QString& word, std::size_t index, QWidget* parent)
    : QRadioButton(QString::number(index + 1), parent), word_(word) {
    setAccessibleName(word + u' ' + text());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SelectorOption::ShowState(const SelectorState& state) {
    if (state == state_)
        return;
    const bool otherWidth = state.Name.isEmpty() != state_.Name.isEmpty();
    state_ = state;
    const QString number = word_ + u' ' + text();
    setAccessibleName(state.Name.isEmpty() ? number : number + u' ' + state.Name);
    setAccessibleDescription(state.Words);
    SetPlainToolTip(*this, accessibleName() + u'\n' + state.Words);
    if (otherWidth)
        updateGeometry();
    update();
}

void SelectorOption::SetConcerned(bool concerned) {
    if (concerned_ == concerned)
        return;
    concerned_ = concerned;
    update();
}

int SelectorOption::MarkWidth() const { return fontMetrics().height(); }

QSize SelectorOption::sizeHint() const {
    const QSize number = QRadioButton::sizeHint();
    const int name = state_.Name.isEmpty() ? 0 : fontMetrics().averageCharWidth() * nameCharacters;
    return {number.width() + name + MarkWidth(), number.height()};
}

QSize SelectorOption::minimumSizeHint() const {
    const QSize number = QRadioButton::sizeHint();
    return {number.width() + MarkWidth(), number.height()};
}

int SelectorOption::NameLeft() const {
    QStyleOptionButton option;
    initStyleOption(&option);
    const int left = style()->subElementRect(QStyle::SE_RadioButtonContents, &option, this).left();
    return left + fontMetrics().horizontalAdvance(text()) + fontMetrics().averageCharWidth();
}

void SelectorOption::PaintMark(QPainter& painter, const QRect& area) const {
    if (state_.LinkGroup != 0) {
        painter.setPen(GroupColour(state_.LinkGroup, palette()));
        painter.drawText(area, Qt::AlignCenter, GroupLetter(state_.LinkGroup));
        return;
    }
    if (!state_.Used)
        return;
    const double size = area.height() / 3.5;
    painter.setPen(Qt::NoPen);
    painter.setBrush(LighterText(palette().color(QPalette::WindowText), palette().color(QPalette::Window)));
    painter.drawEllipse(QRectF(area).center(), size / 2, size / 2);
}

void SelectorOption::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor window = palette().color(QPalette::Window);
    const QColor text = palette().color(QPalette::WindowText);
    QColor behind = window;
    if (isChecked()) {
        behind = Blended(palette().color(QPalette::Highlight), window, concerned_ ? chosenTint : quietTint);
        painter.setPen(Qt::NoPen);
        painter.setBrush(behind);
        painter.drawRoundedRect(rect(), corner, corner);
    }
    if (state_.LinkGroup != 0)
        painter.fillRect(QRect(width() - stripeWidth, 1, stripeWidth, height() - 2),
                         GroupColour(state_.LinkGroup, palette()));

    const QColor lighter = LighterText(text, behind);
    QStyleOptionButton option;
    initStyleOption(&option);
    if (!concerned_ || (!state_.Used && !isChecked()))
        option.palette.setColor(QPalette::WindowText, lighter);
    style()->drawControl(QStyle::CE_RadioButton, &option, &painter, this);

    const QRect mark(width() - stripeWidth - MarkWidth(), 0, MarkWidth(), height());
    const QRect name(NameLeft(), 0, std::max(0, mark.left() - NameLeft()), height());
    painter.setPen(isChecked() && concerned_ ? text : lighter);
    painter.drawText(name, Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(state_.Name, Qt::ElideRight, name.width()));
    PaintMark(painter, mark);
}

} // namespace vek
