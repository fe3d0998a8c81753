#include "controls/VisibleMarks.h"

#include "controls/Contrast.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOption>

namespace vek {

using namespace Qt::StringLiterals;

void VisibleMarks::Install() {
    if (QApplication::style()->name() == "fusion"_L1)
        QApplication::setStyle(new VisibleMarks(QApplication::style()));
}

void VisibleMarks::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element != PE_IndicatorCheckBox && element != PE_IndicatorRadioButton)
        return;
    const QColor text = option->palette.color(QPalette::WindowText);
    const QColor window = option->palette.color(QPalette::Window);
    if (text.lightness() <= window.lightness())
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(LighterText(text, window, visibleContrast));
    painter->setBrush(Qt::NoBrush);
    const QRectF frame = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (element == PE_IndicatorCheckBox)
        painter->drawRect(frame);
    else
        painter->drawEllipse(frame);
    painter->restore();
}

} // namespace vek
