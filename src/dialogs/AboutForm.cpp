#include "dialogs/AboutForm.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int titleCharacters = 44; // room for the title beside the buttons of the window's frame

} // namespace

AboutForm::AboutForm(const QString& version, QWidget* parent) : QDialog(parent) {
    setWindowTitle(tr("About Vorn Matrix Editor"));
    auto* name = new QLabel(tr("Vorn Matrix Editor"), this);
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setBold(true);
    name->setFont(large);
    auto* number = new QLabel(tr("Version %1").arg(version), this);
    number->setObjectName("Version"_L1);
    number->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* purpose = new QLabel(tr("Configuration editor of the Matrix Vek"), this);
    purpose->setMinimumWidth(fontMetrics().averageCharWidth() * titleCharacters);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    for (QWidget* part : std::initializer_list<QWidget*>{name, number, purpose, buttons})
        column->addWidget(part);
}

} // namespace vek
