#include "pages/PageScroll.h"

#include <QEvent>

namespace vek {

namespace {

constexpr int leastLines = 4;

} // namespace

PageScroll::PageScroll(QWidget* parent) : QScrollArea(parent) {
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
}

void PageScroll::Hold(QWidget* page) {
    setWidget(page);
    // The colour of what is around shows through, also where a page does not reach.
    page->setAutoFillBackground(false);
}

QSize PageScroll::sizeHint() const { return widget() == nullptr ? minimumSizeHint() : widget()->sizeHint(); }

QSize PageScroll::minimumSizeHint() const {
    const int line = fontMetrics().lineSpacing();
    const QSize least(line * leastLines * 2, line * leastLines);
    return widget() == nullptr ? least : least.boundedTo(widget()->minimumSizeHint());
}

bool PageScroll::eventFilter(QObject* watched, QEvent* event) {
    // What lies in it wants another size, and so does this.
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}

} // namespace vek
