// What differs between two configurations, as a list.
#pragma once

#include <QDialog>
#include <QStringList>

namespace vek {

/// Lines that can be read and copied, in the list `Entries`.
class ChangesForm : public QDialog {
    Q_OBJECT

  public:
    ChangesForm(const QString& title, const QStringList& lines, QWidget* parent = nullptr);
};

} // namespace vek
