#include "dialogs/PrintingOptionsForm.h"

#include "dialogs/DialogButtons.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

struct Section {
    bool PrintingOptions::*Flag;
    const char* Name;
    const char* Caption;
};

/// In the order of the dialog.
constexpr std::array<Section, 6> sections = {{
    {&PrintingOptions::IncludeNotes, "IncludeNotesCheck", "Include &Notes"},
    {&PrintingOptions::IncludeOutputTrims, "IncludeOutputTrimsCheck", "Include Output &Trims"},
    {&PrintingOptions::IncludeInputTrims, "IncludeInputTrimsCheck", "Include &Input Trims"},
    {&PrintingOptions::IncludeOutputs, "IncludeOutputsCheck", "Include &Output Configurations"},
    {&PrintingOptions::IncludeRS232, "IncludeRS232Check", "Include &RS232 Commands"},
    {&PrintingOptions::IncludeVekNet, "IncludeVekNetCheck", "Include &VekNet Addresses"},
}};

} // namespace

PrintingOptionsForm::PrintingOptionsForm(const PrintingOptions& options, bool optionsForPrinting,
                                         QWidget* parent)
    : QDialog(parent), options_(options) {
    setWindowTitle(optionsForPrinting ? tr("Printing Options") : tr("Export Options"));
    auto* frame = new QGroupBox(tr("Sections"), this);
    frame->setObjectName("Frame1"_L1);
    auto* list = new QVBoxLayout(frame);
    for (std::size_t i = 0; i < sections.size(); ++i) {
        checks_[i] = new QCheckBox(tr(sections[i].Caption), frame);
        checks_[i]->setObjectName(QLatin1StringView(sections[i].Name));
        checks_[i]->setChecked(options.*sections[i].Flag);
        list->addWidget(checks_[i]);
    }

    const DialogButtons buttons = MakeDialogButtons(this, optionsForPrinting ? tr("&Print") : tr("&Export"));
    connect(buttons.Done, &QPushButton::clicked, this, &PrintingOptionsForm::TakeChoices);
    auto* column = new QVBoxLayout(this);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->addWidget(frame);
    column->addWidget(buttons.Box);
    checks_.front()->setFocus();
}

void PrintingOptionsForm::TakeChoices() {
    cancelled_ = false;
    for (std::size_t i = 0; i < sections.size(); ++i)
        options_.*sections[i].Flag = checks_[i]->checkState() == Qt::Checked;
    accept();
}

} // namespace vek
