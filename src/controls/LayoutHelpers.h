// Small helpers of the pages' layouts and labels.
#pragma once

#include <QFontDatabase>
#include <QFontMetrics>
#include <QLabel>
#include <QStringList>
#include <QTextDocument>

#include <algorithm>

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
    if (font.pointSizeF() < widget.font().pointSizeF())
        font.setPointSizeF(widget.font().pointSizeF());
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

/// The same for lines of any length: where one is wider than `width` pixels, they wrap there.
inline QString WrappedToolTip(const QStringList& lines, const QFontMetrics& metrics, int width) {
    const QString text = lines.join(u'\n');
    const auto fits = [&](const QString& line) { return metrics.horizontalAdvance(line) <= width; };
    if (std::ranges::all_of(lines, fits))
        return PlainToolTip(text);
    return QStringLiteral("<table width=\"%1\"><tr><td>%2</td></tr></table>")
        .arg(QString::number(width), Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal));
}

/// A tool tip of a widget or an action that shows a name as it is.
template <typename Pointed>
void SetPlainToolTip(Pointed& pointed, const QString& text) {
    if (const QString shown = PlainToolTip(text); pointed.toolTip() != shown)
        pointed.setToolTip(shown);
}

} // namespace vek
