#include "pages/PageTabs.h"

#include <QTimer>

#include <utility>

namespace vek {

QSize PageTabs::sizeHint() const {
    return {QTabWidget::sizeHint().width(), QTabWidget::minimumSizeHint().height()};
}

void PageTabs::paintEvent(QPaintEvent* event) {
    QTabWidget::paintEvent(event);
    // The pages themselves are painted before timers are served.
    if (!std::exchange(painted_, true))
        QTimer::singleShot(0, this, &PageTabs::Painted);
}

} // namespace vek
