#include "editor/VekComms.h"

#include "controls/KeepPlace.h"
#include "controls/TextConversion.h"
#include "dialogs/Dialogs.h"

#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

namespace vek {

namespace {

constexpr PortRowNames rowNames = {"Option1", "VekType", "Blanking", "Blanking1", false};
constexpr int progressMaximum = 1000;

} // namespace

VekComms::VekComms(const EditorServices& services, const DeviceTypeList& types, const DownloadImage& image,
                   QWidget* parent)
    : QDialog(parent), dialogs(services.Boxes), image(image), MSComm1(services.MakeSerialControl()),
      Timer1(services.MakeTimer()), ports(new PortRows(rowNames, services.PortNames, this)),
      link(*MSComm1, *Timer1, types, *this) {
    setObjectName(QStringLiteral("VekComms"));
    setWindowTitle(tr("Vek program"));
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    layout->addWidget(ports);
    layout->addWidget(MakePleaseWait());
    layout->addStretch(1);
    layout->addLayout(MakeButtons());
    setMinimumWidth(fontMetrics().averageCharWidth() * 72);
    connect(ports, &PortRows::Chosen, this, [this] { ProgramVekButton->setEnabled(!link.Busy()); });
}

VekComms::~VekComms() = default;

QWidget* VekComms::MakePleaseWait() {
    PleaseWait = new QWidget(this);
    PleaseWait->setObjectName(QStringLiteral("PleaseWait"));
    KeepPlaceWhenHidden(PleaseWait);
    Label3 = new QLabel(PleaseWait);
    Label3->setObjectName(QStringLiteral("Label3"));
    auto* Label1 = new QLabel(tr("Percentage complete"), PleaseWait);
    Label1->setObjectName(QStringLiteral("Label1"));
    Label2 = new QLabel(PleaseWait);
    Label2->setObjectName(QStringLiteral("Label2"));
    ProgressBar1 = new QProgressBar(PleaseWait);
    ProgressBar1->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1->setRange(0, progressMaximum);
    ProgressBar1->setValue(0);
    ProgressBar1->setTextVisible(false);
    auto* grid = new QGridLayout(PleaseWait);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(Label3, 0, 0, 1, 2);
    grid->addWidget(ProgressBar1, 1, 0, 1, 2);
    grid->addWidget(Label1, 2, 0);
    grid->addWidget(Label2, 2, 1, Qt::AlignRight);
    grid->setColumnStretch(0, 1);
    PleaseWait->setVisible(false);
    return PleaseWait;
}

QLayout* VekComms::MakeButtons() {
    Command1 = new QPushButton(tr("&Search for Vek"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    ProgramVekButton = new QPushButton(tr("&Program Vek"), this);
    ProgramVekButton->setObjectName(QStringLiteral("ProgramVek"));
    ProgramVekButton->setDefault(true);
    ProgramVekButton->setEnabled(false);
    auto* Command2 = new QPushButton(tr("Cancel"), this);
    Command2->setObjectName(QStringLiteral("Command2"));
    connect(Command1, &QPushButton::clicked, this, &VekComms::Search);
    connect(ProgramVekButton, &QPushButton::clicked, this, &VekComms::Program);
    connect(Command2, &QPushButton::clicked, this, &VekComms::reject);
    auto* row = new QHBoxLayout;
    row->addWidget(Command1);
    row->addStretch(1);
    row->addWidget(ProgramVekButton);
    row->addWidget(Command2);
    return row;
}

void VekComms::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (activated)
        return;
    activated = true;
    // The search waits in event loops of its own; the window has to be up first.
    QTimer::singleShot(0, this, [this] { Run([this] { link.Activate(); }); });
}

template <typename Operation>
void VekComms::Run(Operation operation) {
    if (link.Busy() || closeWanted)
        return;
    Command1->setEnabled(false);
    ports->LockOptions(true);
    operation();
    ports->LockOptions(false);
    Command1->setEnabled(true);
    if (closeWanted)
        QDialog::reject();
}

void VekComms::Search() {
    Run([this] {
        ports->RefreshDevices();
        link.search_for_vek();
    });
}

void VekComms::Program() {
    Run([this] {
        ProgramVekButton->setEnabled(false);
        link.ProgramVek(image);
        closeWanted = true;
    });
}

void VekComms::reject() {
    closeWanted = true;
    link.Cancel();
    if (!link.Busy())
        QDialog::reject();
}

void VekComms::EnableProgramVek(bool enabled) { ProgramVekButton->setEnabled(enabled); }

void VekComms::ShowPleaseWait(bool visible) { PleaseWait->setVisible(visible); }

void VekComms::SetLabel2(const std::string& percentage) { Label2->setText(FromConstant(percentage)); }

void VekComms::SetLabel3(const std::string& activity) { Label3->setText(FromConstant(activity)); }

void VekComms::SetProgressBar1(int value) { ProgressBar1->setValue(value); }

void VekComms::ErrorMessage(const std::string& title, const std::string& text) {
    dialogs.Message(this, MessageIcon::Exclamation, FromConstant(title), FromConstant(text));
}

bool VekComms::AskYesNo(const std::string& title, const std::string& text) {
    return dialogs.AskYesNo(this, FromConstant(title), FromConstant(text), Answer::No) == Answer::Yes;
}

} // namespace vek
