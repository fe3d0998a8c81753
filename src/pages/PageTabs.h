// The tabs of the main window.
#pragma once

#include <QTabWidget>

namespace vek {

/// Asks its pages for their least size only when the window has been painted: to lay out the pages that do
/// not show would take as long as the rest of the start.
class PageTabs : public QTabWidget {
    Q_OBJECT

  public:
    using QTabWidget::QTabWidget;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    bool painted_ = false;
};

} // namespace vek
