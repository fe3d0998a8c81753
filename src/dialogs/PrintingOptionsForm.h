// The dialog that chooses the sections of the report before it is printed or exported.
#pragma once

#include "model/ReportOptions.h"

#include <QDialog>

#include <array>

class QCheckBox;

namespace vek {

/// Show with exec(); the choices count only when OptionsCancelled() is false afterwards.
class PrintingOptionsForm : public QDialog {
    Q_OBJECT

  public:
    /// Shows the options as they are; `optionsForPrinting` decides between the captions of printing and of
    /// exporting.
    PrintingOptionsForm(const PrintingOptions& options, bool optionsForPrinting, QWidget* parent = nullptr);

    /// The options given, or those chosen once Done was pressed.
    const PrintingOptions& Options() const { return options_; }
    /// True until Done was pressed.
    bool OptionsCancelled() const { return cancelled_; }

  private:
    void TakeChoices();

    PrintingOptions options_;
    bool cancelled_ = true;
    std::array<QCheckBox*, 6> checks_ = {};
};

} // namespace vek
