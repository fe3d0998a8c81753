#include "pages/PageTabs.h"

#include <QTabBar>
#include <QTimer>

namespace vek {

QSize PageTabs::sizeHint() const { return painted_ ? QTabWidget::sizeHint() : tabBar()->sizeHint(); }

QSize PageTabs::minimumSizeHint() const {
    return painted_ ? QTabWidget::minimumSizeHint() : tabBar()->minimumSizeHint();
}

bool PageTabs::hasHeightForWidth() const { return painted_ && QTabWidget::hasHeightForWidth(); }

void PageTabs::paintEvent(QPaintEvent* event) {
    QTabWidget::paintEvent(event);
    if (painted_)
        return;
    QTimer::singleShot(0, this, [this] {
        painted_ = true;
        updateGeometry();
    });
}

} // namespace vek
