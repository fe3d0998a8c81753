#include "controls/StatementLabel.h"

#include "controls/LayoutHelpers.h"

#include <QPainter>
#include <QStyle>

namespace vek {

namespace {

constexpr int wordCharacters = 10; // of a word that goes to the second line
constexpr int flags = Qt::AlignLeading | Qt::AlignVCenter | Qt::TextWordWrap;

} // namespace

StatementLabel::StatementLabel(QWidget* parent) : QLabel(parent) { setTextFormat(Qt::PlainText); }

void StatementLabel::Show(const QString& text, const QString& shorter) {
    shorter_ = shorter;
    if (this->text() == text)
        return;
    setText(text);
    SetPlainToolTip(*this, text);
}

QString StatementLabel::Fitting(const QRect& area) const {
    for (const QString& candidate : {text(), shorter_}) {
        if (fontMetrics().boundingRect(area, flags, candidate).height() <= area.height())
            return candidate;
    }
    // The first line ends with a word, and so before the edge.
    const int room = lines * area.width() - fontMetrics().averageCharWidth() * wordCharacters;
    return fontMetrics().elidedText(shorter_, Qt::ElideRight, room);
}

void StatementLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect area = contentsRect();
    style()->drawItemText(&painter, area, flags, palette(), isEnabled(), Fitting(area), foregroundRole());
}

} // namespace vek
