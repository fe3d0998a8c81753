// The tabs of the main window.
#pragma once

#include <QTabWidget>

namespace vek {

class PageTabs : public QTabWidget {
    Q_OBJECT

  public:
    using QTabWidget::QTabWidget;

  Q_SIGNALS:
    /// Once, when the first page can be seen.
    void Painted();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    bool painted_ = false;
};

} // namespace vek
