// A line of help on a page.
#pragma once

#include <QLabel>

namespace vek {

/// Wraps; a little smaller than the controls, in the ordinary text colour so that it can be read in any
/// palette.
inline QLabel* MakeHint(const QString& text, QWidget* parent) {
    auto* hint = new QLabel(text, parent);
    QFont font = hint->font();
    font.setPointSizeF(font.pointSizeF() * 0.9);
    hint->setFont(font);
    hint->setWordWrap(true);
    return hint;
}

} // namespace vek
