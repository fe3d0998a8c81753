// The About box.
#pragma once

#include <QDialog>

namespace vek {

/// Shows the program's name and its version (major.minor.revision).
class AboutForm : public QDialog {
    Q_OBJECT

  public:
    explicit AboutForm(const QString& version, QWidget* parent = nullptr);
};

} // namespace vek
