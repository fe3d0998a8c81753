// The manual in a window of its own.
#pragma once

#include <QDialog>

namespace vek {

/// Can be read beside the window that opened it.
class ManualForm : public QDialog {
    Q_OBJECT

  public:
    /// Shows the manual of that window, or brings it to the front.
    static void ShowFor(QWidget& window);

  private:
    explicit ManualForm(QWidget* parent);
};

} // namespace vek
