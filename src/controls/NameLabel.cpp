#include "controls/NameLabel.h"

#include "controls/Contrast.h"
#include "controls/LayoutHelpers.h"

namespace vek {

namespace {

constexpr int mostWanted = 18; // average characters

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

QColor NameLabel::TextColour() const {
    return LighterText(ElidedLabel::TextColour(), palette().color(backgroundRole()));
}

} // namespace vek
