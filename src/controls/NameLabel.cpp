#include "controls/NameLabel.h"

#include "controls/Contrast.h"
#include "controls/LayoutHelpers.h"

namespace vek {

namespace {

// In average characters.
constexpr int mostWanted = 18;
constexpr int leastWanted = 7;

} // namespace

NameLabel::NameLabel(QWidget* parent) : ElidedLabel({}, parent, Qt::ElideRight) { hide(); }

void NameLabel::SetName(const QString& name) {
    if (name == text())
        return;
    setText(name);
    SetPlainToolTip(*this, name);
    setHidden(name.isEmpty());
}

QSize NameLabel::sizeHint() const {
    const QSize whole = ElidedLabel::sizeHint();
    return {qMin(whole.width(), fontMetrics().averageCharWidth() * mostWanted), whole.height()};
}

QSize NameLabel::minimumSizeHint() const {
    const QSize more = ElidedLabel::minimumSizeHint();
    return {qMin(more.width(), fontMetrics().averageCharWidth() * leastWanted), more.height()};
}

QColor NameLabel::TextColour() const {
    return LighterText(ElidedLabel::TextColour(), palette().color(backgroundRole()));
}

} // namespace vek
