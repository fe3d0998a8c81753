#include "pages/PageTabs.h"

#include <QTabBar>
#include <QTimer>

namespace vek {

QSize PageTabs::sizeHint() const { return painted ? QTabWidget::sizeHint() : tabBar()->sizeHint(); }

QSize PageTabs::minimumSizeHint() const {
    return painted ? QTabWidget::minimumSizeHint() : tabBar()->minimumSizeHint();
}

bool PageTabs::hasHeightForWidth() const { return painted && QTabWidget::hasHeightForWidth(); }

void PageTabs::paintEvent(QPaintEvent* event) {
    QTabWidget::paintEvent(event);
    if (painted)
        return;
    QTimer::singleShot(0, this, [this] {
        painted = true;
        updateGeometry();
    });
}

} // namespace vek
