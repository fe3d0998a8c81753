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

using namespace Qt::StringLiterals;

namespace {

constexpr PortRowNames rowNames = {"Option1", "VekType", "Blanking", "Blanking1", false};
constexpr int progressMaximum = 1000;

} // namespace

VekComms::VekComms(const EditorServices& services, const DeviceTypeList& types, const DownloadImage& image,
                   QWidget* parent)
    : QDialog(parent), dialogs_(services.Boxes), image_(image), MSComm1_(services.MakeSerialControl()),
      Timer1_(services.MakeTimer()), ports_(new PortRows(rowNames, services.PortNames, this)),
      link_(*MSComm1_, *Timer1_, types, *this) {
    setObjectName(u"VekComms"_s);
    setWindowTitle(tr("Vek program"));
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    layout->addWidget(ports_);
    layout->addWidget(MakePleaseWait());
    layout->addStretch(1);
    layout->addLayout(MakeButtons());
    setMinimumWidth(fontMetrics().averageCharWidth() * 72);
    connect(ports_, &PortRows::Chosen, this, [this] { ProgramVekButton_->setEnabled(!link_.Busy()); });
}

VekComms::~VekComms() = default;

QWidget* VekComms::MakePleaseWait() {
    PleaseWait_ = new QWidget(this);
    PleaseWait_->setObjectName(u"PleaseWait"_s);
    KeepPlaceWhenHidden(PleaseWait_);
    Label3_ = new QLabel(PleaseWait_);
    Label3_->setObjectName(u"Label3"_s);
    auto* Label1 = new QLabel(tr("Percentage complete"), PleaseWait_);
    Label1->setObjectName(u"Label1"_s);
    Label2_ = new QLabel(PleaseWait_);
    Label2_->setObjectName(u"Label2"_s);
    ProgressBar1_ = new QProgressBar(PleaseWait_);
    ProgressBar1_->setObjectName(u"ProgressBar1"_s);
    ProgressBar1_->setRange(0, progressMaximum);
    ProgressBar1_->setValue(0);
    ProgressBar1_->setTextVisible(false);
    auto* grid = new QGridLayout(PleaseWait_);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(Label3_, 0, 0, 1, 2);
    grid->addWidget(ProgressBar1_, 1, 0, 1, 2);
    grid->addWidget(Label1, 2, 0);
    grid->addWidget(Label2_, 2, 1, Qt::AlignRight);
    grid->setColumnStretch(0, 1);
    PleaseWait_->setVisible(false);
    return PleaseWait_;
}

QLayout* VekComms::MakeButtons() {
    Command1_ = new QPushButton(tr("&Search for Vek"), this);
    Command1_->setObjectName(u"Command1"_s);
    ProgramVekButton_ = new QPushButton(tr("&Program Vek"), this);
    ProgramVekButton_->setObjectName(u"ProgramVek"_s);
    ProgramVekButton_->setDefault(true);
    ProgramVekButton_->setEnabled(false);
    auto* Command2 = new QPushButton(tr("Cancel"), this);
    Command2->setObjectName(u"Command2"_s);
    connect(Command1_, &QPushButton::clicked, this, &VekComms::Search);
    connect(ProgramVekButton_, &QPushButton::clicked, this, &VekComms::Program);
    connect(Command2, &QPushButton::clicked, this, &VekComms::reject);
    auto* row = new QHBoxLayout;
    row->addWidget(Command1_);
    row->addStretch(1);
    row->addWidget(ProgramVekButton_);
    row->addWidget(Command2);
    return row;
}

void VekComms::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (activated_)
        return;
    activated_ = true;
    // The search waits in event loops of its own; the window has to be up first.
    QTimer::singleShot(0, this, [this] { Run([this] { link_.Activate(); }); });
}

template <typename Operation>
void VekComms::Run(Operation operation) {
    if (link_.Busy() || closeWanted_)
        return;
    Command1_->setEnabled(false);
    ports_->LockOptions(true);
    operation();
    ports_->LockOptions(false);
    Command1_->setEnabled(true);
    if (closeWanted_)
        QDialog::reject();
}

void VekComms::Search() {
    Run([this] {
        ports_->RefreshDevices();
        link_.search_for_vek();
    });
}

void VekComms::Program() {
    Run([this] {
        ProgramVekButton_->setEnabled(false);
        link_.ProgramVek(image_);
        closeWanted_ = true;
    });
}

void VekComms::reject() {
    closeWanted_ = true;
    link_.Cancel();
    if (!link_.Busy())
        QDialog::reject();
}

void VekComms::EnableProgramVek(bool enabled) { ProgramVekButton_->setEnabled(enabled); }

void VekComms::ShowPleaseWait(bool visible) { PleaseWait_->setVisible(visible); }

void VekComms::SetLabel2(const std::string& percentage) { Label2_->setText(FromConstant(percentage)); }

void VekComms::SetLabel3(const std::string& activity) { Label3_->setText(FromConstant(activity)); }

void VekComms::SetProgressBar1(int value) { ProgressBar1_->setValue(value); }

void VekComms::ErrorMessage(const std::string& title, const std::string& text) {
    dialogs_.Message(this, MessageIcon::Exclamation, FromConstant(title), FromConstant(text));
}

bool VekComms::AskYesNo(const std::string& title, const std::string& text) {
    return dialogs_.AskYesNo(this, FromConstant(title), FromConstant(text), Answer::No) == Answer::Yes;
}

} // namespace vek
