// The tabs of the main window.
#pragma once

#include <QTabWidget>

namespace vek {

class PageTabs : public QTabWidget {
    Q_OBJECT

  public:
    using QTabWidget::QTabWidget;

    /// As low as it can be: pages scroll, so that what is below them gets its room first.
    QSize sizeHint() const override;

  Q_SIGNALS:
    /// Once, when the first page can be seen.
    void Painted();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    bool painted_ = false;
};

} // namespace vek
