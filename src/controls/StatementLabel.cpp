#include "controls/StatementLabel.h"

#include "controls/LayoutHelpers.h"

#include <QPainter>
#include <QStyle>

namespace vek {

namespace {

constexpr int lines = 2;
constexpr int leastCharacters = 20; // of a line
constexpr int flags = Qt::AlignLeading | Qt::AlignVCenter | Qt::TextWordWrap;

} // namespace

StatementLabel::StatementLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void StatementLabel::Show(const QString& text, const QString& shorter) {
    shorter_ = shorter;
    if (this->text() == text)
        return;
    setText(text);
    SetPlainToolTip(*this, text);
}

QSize StatementLabel::sizeHint() const { return minimumSizeHint(); }

QSize StatementLabel::minimumSizeHint() const {
    const QMargins margins = contentsMargins();
    return {fontMetrics().averageCharWidth() * leastCharacters + margins.left() + margins.right(),
            fontMetrics().lineSpacing() * lines + margins.top() + margins.bottom()};
}

QString StatementLabel::Fitting(const QRect& area) const {
    for (const QString& candidate : {text(), shorter_}) {
        if (fontMetrics().boundingRect(area, flags, candidate).height() <= area.height())
            return candidate;
    }
    // A line ends at a word, on average half a word before the edge.
    const int room = lines * area.width() - fontMetrics().averageCharWidth() * leastCharacters / lines;
    return fontMetrics().elidedText(shorter_, Qt::ElideRight, room);
}

void StatementLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect area = contentsRect();
    style()->drawItemText(&painter, area, flags, palette(), isEnabled(), Fitting(area), foregroundRole());
}

} // namespace vek
