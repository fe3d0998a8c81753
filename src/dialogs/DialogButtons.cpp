#include "dialogs/DialogButtons.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>

namespace vek {

using namespace Qt::StringLiterals;

DialogButtons MakeDialogButtons(QDialog* dialog, const QString& doneCaption) {
    auto* box = new QDialogButtonBox(dialog);
    auto* done = box->addButton(doneCaption, QDialogButtonBox::AcceptRole);
    done->setObjectName("Done"_L1);
    done->setDefault(true);
    auto* cancel = box->addButton(QDialog::tr("&Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName("Cancel"_L1);
    QObject::connect(box, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    return {box, done, cancel};
}

} // namespace vek
