// The buttons that end a dialog.
#pragma once

#include <QString>

class QDialog;
class QDialogButtonBox;
class QPushButton;

namespace vek {

struct DialogButtons {
    QDialogButtonBox* Box; ///< goes at the end of the dialog's layout
    QPushButton* Done;     ///< the default button, not connected yet
    QPushButton* Cancel;   ///< rejects the dialog, as Escape does
};

/// Makes `Done` (with the given caption) and `Cancel`, owned by the dialog.
DialogButtons MakeDialogButtons(QDialog* dialog, const QString& doneCaption);

} // namespace vek
