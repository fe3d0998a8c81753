#include "device/VekComms.h"

#include "controls/LayoutHelpers.h"
#include "controls/TextConversion.h"
#include "device/LastWords.h"
#include "device/PortTurns.h"
#include "inspect/ConfigCheck.h"
#include "link/OutcomeTexts.h"
#include "pages/PortRows.h"

#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr PortRowNames rowNames = {"Option1", "VekType", "Blanking", "Blanking1", false};

} // namespace

VekComms::VekComms(const EditorServices& services, PortTurns& turns, const DeviceTypeList& types,
                   const DownloadImage& image, QWidget* parent)
    : QDialog(parent), turns_(turns), image_(image), messages_(*this, services.Boxes),
      MSComm1_(services.MakeSerialControl()), Timer1_(services.MakeTimer()),
      ports_(new PortRows(rowNames, services.PortNames, this)), link_(*MSComm1_, *Timer1_, types, *this) {
    setObjectName(u"VekComms"_s);
    setWindowTitle(tr("Vek program"));
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    layout->addWidget(ports_);
    layout->addWidget(MakePleaseWait());
    layout->addStretch(1);
    problems_ = new QLabel(this);
    problems_->setObjectName(u"Problems"_s);
    problems_->setAlignment(Qt::AlignRight);
    layout->addWidget(problems_);
    layout->addLayout(MakeButtons());
    setMinimumWidth(fontMetrics().averageCharWidth() * 72);
    connect(ports_, &PortRows::Chosen, this,
            [this] { ProgramVekButton_->setEnabled(!conversation_.Running()); });
}

VekComms::~VekComms() {
    if (ending_ && !IncompletePort().isEmpty())
        SayOnStandardError(
            tr("%1 holds an incomplete configuration: program it again").arg(IncompletePort()));
}

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
    ProgressBar1_->setRange(0, fullProgress);
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
    // The window has to be up first.
    QTimer::singleShot(0, this, &VekComms::Search);
}

void VekComms::Converse(Task<> task) {
    conversation_.Start(std::move(task), [this](const std::exception_ptr& failure) {
        if (failure)
            messages_.ShowRunTimeError(failure);
    });
}

void VekComms::Search() {
    if (!conversation_.Running())
        Converse(SearchAllPorts());
}

void VekComms::DisableButtons() {
    // A button that is disabled hands its focus on, to Cancel in the end, which the next key would press.
    setFocus();
    ProgramVekButton_->setEnabled(false);
    Command1_->setEnabled(false);
}

Task<> VekComms::SearchAllPorts() {
    DisableButtons();
    ports_->RefreshDevices();
    if (!turns_.Free())
        ports_->BeginWait(tr("Waiting for the search on the Online page, which uses the same ports"));
    PortTurns::Turn turn(turns_);
    co_await turn;
    ports_->BeginSearch();
    co_await link_.search_for_vek();
    ports_->EndSearch();
    Command1_->setEnabled(true);
    if (!ports_->FocusFirstFound())
        Command1_->setFocus();
}

void VekComms::Program() {
    const auto row = ports_->ChosenRow();
    if (row && !conversation_.Running())
        Converse(ProgramOnPort(*row));
}

Task<> VekComms::ProgramOnPort(std::size_t row) {
    DisableButtons();
    ports_->LockChoice(true);
    Label3_->setText(turns_.Free() ? tr("Please wait programing vek")
                                   : tr("Waiting for the search on the Online page"));
    PleaseWait_->setVisible(true);
    PortTurns::Turn turn(turns_);
    co_await turn;
    Label3_->setText(tr("Please wait programing vek"));
    co_await link_.ProgramVek(row, image_, *this);
    QDialog::reject();
}

void VekComms::EndInOrder() {
    ending_ = true;
    if (IncompletePort().isEmpty() || asking_)
        reject();
    else
        link_.EndEarly();
}

QString VekComms::IncompletePort() const {
    const auto row = ports_->ChosenRow();
    const bool incomplete = begun_ && progress_.Acknowledged < progress_.Blocks;
    return row && incomplete ? ports_->PortName(*row) : QString();
}

void VekComms::reject() {
    conversation_.Cancel();
    QDialog::reject();
}

void VekComms::PortSearched(std::size_t row, const PortFinding& finding) {
    ports_->ShowFinding(row, finding);
}

Task<> VekComms::Failed(Failure failure) {
    if (ending_)
        co_return;
    const MessageText message = TextOf(failure);
    asking_ = true;
    co_await messages_.Shown(MessageIcon::Exclamation, FromConstant(message.Title),
                             FromConstant(message.Text));
    asking_ = false;
}

void VekComms::DownloadBegins() { begun_ = true; }

void VekComms::Progress(DownloadProgress progress) {
    progress_ = progress;
    begun_ = begun_ && progress.Acknowledged > 0;
    Label2_->setText(FromConstant(PercentText(progress)));
    ProgressBar1_->setValue(TenthsOf(progress));
}

void VekComms::TellProblemsOf(const MatrixConfig& config) {
    problems_->setText(FromConstant(CountText(CheckConfig({config, {}}))));
}

Task<bool> VekComms::WantsAnother() {
    programmed_ = true;
    return messages_.Confirmed(tr("All sent ok"), tr("Program another vek"), Answer::No);
}

} // namespace vek
