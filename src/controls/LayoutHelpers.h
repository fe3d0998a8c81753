// Small helpers of the pages' layouts and labels.
#pragma once

#include <QFontDatabase>
#include <QLabel>
#include <QTextDocument>

namespace vek {

/// A line of help on a page. Wraps; a little smaller than the controls, in the ordinary text colour so that
/// it can be read in any palette.
inline QLabel* MakeHint(const QString& text, QWidget* parent) {
    auto* hint = new QLabel(text, parent);
    QFont font = hint->font();
    font.setPointSizeF(font.pointSizeF() * 0.9);
    hint->setFont(font);
    hint->setWordWrap(true);
    return hint;
}

/// For codes and columns: the desktop's fixed-width font, no smaller than the widget's own.
inline QFont FixedFont(const QWidget& widget) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(qMax(font.pointSizeF(), widget.font().pointSizeF()));
    return font;
}

/// The widget's room in its layout stays empty while it is hidden, so that the others do not move.
inline void KeepPlaceWhenHidden(QWidget* widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

/// The text for a tool tip that shows it as it is, angle brackets included.
inline QString PlainToolTip(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

/// A tool tip of a widget or an action that shows a name as it is.
template <typename Pointed>
void SetPlainToolTip(Pointed& pointed, const QString& text) {
    if (const QString shown = PlainToolTip(text); pointed.toolTip() != shown)
        pointed.setToolTip(shown);
}

} // namespace vek
