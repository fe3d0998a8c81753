#include "device/VekComms.h"

#include "controls/ElidedLabel.h"
#include "controls/LayoutHelpers.h"
#include "controls/TextConversion.h"
#include "device/DoctorWindow.h"
#include "device/LastWords.h"
#include "device/PortTurns.h"
#include "device/ProgrammingTexts.h"
#include "inspect/ConfigCheck.h"
#include "link/OutcomeTexts.h"
#include "link/Packets.h"
#include "model/RecordLayout.h"
#include "pages/PortRows.h"

#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int leastCharacters = 72;
constexpr int usualCharacters = 100;
constexpr PortRowNames rowNames = {"Option1", "VekType", "Finding", "Blanking", "Blanking1", false};

} // namespace

VekComms::VekComms(const EditorServices& services, PortTurns& turns, const DeviceTypeList& types,
                   const ProgrammingJob& job, QWidget* parent)
    : QDialog(parent), services_(services), turns_(turns), types_(types), job_(job),
      journal_(services.StateFolder), messages_(*this, services.Boxes),
      MSComm1_(services.MakeSerialControl()), Timer1_(services.MakeTimer()),
      ports_(new PortRows(rowNames, {services.PortNames, services.FactsOfPort}, this)),
      link_(*MSComm1_, *Timer1_, types, *this) {
    setObjectName(u"VekComms"_s);
    setWindowTitle(tr("Vek program"));
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    layout->addWidget(MakeSummary());
    layout->addWidget(ports_);
    layout->addWidget(MakePleaseWait());
    layout->addStretch(1);
    layout->addLayout(MakeButtons());
    const int character = fontMetrics().averageCharWidth();
    setMinimumWidth(character * leastCharacters);
    resize(std::min(character * usualCharacters, screen()->availableSize().width()), sizeHint().height());
    connect(ports_, &PortRows::Chosen, this,
            [this] { ProgramVekButton_->setEnabled(!conversation_.Running()); });
}

VekComms::~VekComms() {
    EndAttempt(AttemptResult::Ended);
    if (ending_ && !IncompletePort().isEmpty())
        SayOnStandardError(IncompleteText(IncompletePort()));
}

QWidget* VekComms::MakeSummary() {
    auto* summary = new QWidget(this);
    auto* sends = new ElidedLabel(SendsText(job_.Config, job_.File), summary);
    sends->setObjectName(u"SendsWhat"_s);
    SetPlainToolTip(*sends, QString::fromStdString(job_.File));
    QFont bold = sends->font();
    bold.setBold(true);
    sends->setFont(bold);
    auto* problems = new QLabel(FromConstant(CountText(CheckConfig({job_.Config, {}}))), summary);
    problems->setObjectName(u"Problems"_s);
    auto* column = new QVBoxLayout(summary);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(sends);
    column->addWidget(problems);
    return summary;
}

QWidget* VekComms::MakePleaseWait() {
    PleaseWait_ = new QWidget(this);
    PleaseWait_->setObjectName(u"PleaseWait"_s);
    KeepPlaceWhenHidden(PleaseWait_);
    Label3_ = new QLabel(PleaseWait_);
    Label3_->setObjectName(u"Label3"_s);
    details_ = new QLabel(PleaseWait_);
    details_->setObjectName(u"DownloadDetails"_s);
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
    grid->addWidget(Label3_, 0, 0, 1, 3);
    grid->addWidget(ProgressBar1_, 1, 0, 1, 3);
    grid->addWidget(details_, 2, 0);
    grid->addWidget(Label1, 2, 1);
    grid->addWidget(Label2_, 2, 2, Qt::AlignRight);
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
    whatIsWrong_ = new QPushButton(tr("&What is wrong?"), this);
    whatIsWrong_->setObjectName(u"WhatIsWrong"_s);
    whatIsWrong_->setVisible(false);
    connect(Command1_, &QPushButton::clicked, this, &VekComms::Search);
    connect(whatIsWrong_, &QPushButton::clicked, this, &VekComms::AskDoctor);
    connect(ProgramVekButton_, &QPushButton::clicked, this, &VekComms::Program);
    connect(Command2, &QPushButton::clicked, this, &VekComms::reject);
    auto* row = new QHBoxLayout;
    row->addWidget(Command1_);
    row->addWidget(whatIsWrong_);
    searchHint_ = PortRows::MakeSearchHint(this);
    row->addWidget(searchHint_, 1);
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
        if (!failure)
            return;
        Recover();
        messages_.ShowFailure(failure);
    });
}

void VekComms::Recover() {
    ports_->LockChoice(false);
    ports_->Clear();
    PleaseWait_->setVisible(false);
    searchHint_->setVisible(true);
    Command1_->setEnabled(true);
    Command1_->setFocus();
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
    whatIsWrong_->setVisible(false);
}

void VekComms::AskDoctor() {
    doctor_.reset();
    doctor_ = std::make_unique<DoctorWindow>(services_, turns_, types_, false, this);
    doctor_->open();
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
    whatIsWrong_->setVisible(!ports_->AnyMatrixVek());
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
    searchHint_->setVisible(false);
    BeginAttempt(row);
    const ConfigureResult result = co_await link_.ProgramVek(row, job_.Image, *this);
    if (result == ConfigureResult::EndedEarly)
        EndAttempt(AttemptResult::Ended);
    QDialog::reject();
}

void VekComms::BeginAttempt(std::size_t row) {
    begun_ = false;
    const JournalEntry entry = {
        .File = job_.File,
        .Port = ports_->PortName(row).toStdString(),
        .AdapterSerialNumber = services_.FactsOfPort(row).SerialNumber,
        .Blocks = BlockCount(job_.Image.Length),
        .ImageDigest = services_.ImageDigest(job_.Image),
    };
    attempt_.emplace(journal_, entry, EncodeRecord(job_.Config), services_.Clock);
    TakeProblem();
}

void VekComms::EndAttempt(AttemptResult result) {
    if (!attempt_)
        return;
    attempt_->End(result);
    TakeProblem();
}

void VekComms::TakeProblem() {
    if (!attempt_->Problem().empty())
        historyProblem_ = QString::fromStdString(attempt_->Problem());
}

std::optional<JournalEntry> VekComms::LastAttempt() const {
    return attempt_ ? std::optional(attempt_->Entry()) : std::nullopt;
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
    EndAttempt(ending_ ? AttemptResult::Ended : AttemptResult::Cancelled);
    QDialog::reject();
}

void VekComms::Searching(const SearchStep& step) {
    if (PleaseWait_->isHidden())
        ports_->ShowSearch(searchedRow_, SearchText(step));
    else
        details_->setText(tr("The device is %1").arg(SearchText(step)));
}

void VekComms::PortSearched(std::size_t row, const PortFinding& finding) {
    ports_->ShowFinding(row, finding);
}

Task<> VekComms::Failed(Failure failure) {
    if (ending_)
        co_return;
    if (attempt_) {
        attempt_->End(failure.Kind);
        TakeProblem();
    }
    const MessageText message = TextOf(failure);
    asking_ = true;
    co_await messages_.Shown(MessageIcon::Exclamation, FromConstant(message.Title),
                             FromConstant(message.Text));
    asking_ = false;
}

void VekComms::DeviceFound(const PortFinding& finding) { attempt_->Found(finding); }

void VekComms::DownloadBegins() {
    begun_ = true;
    attempt_->DownloadBegins();
    TakeProblem();
    downloadBegan_ = services_.Clock();
}

void VekComms::Progress(DownloadProgress progress) {
    progress_ = progress;
    attempt_->Progress(progress);
    details_->setText(DetailsText(progress, services_.Clock() - downloadBegan_));
    Label2_->setText(FromConstant(PercentText(progress)));
    ProgressBar1_->setValue(TenthsOf(progress));
}

Task<bool> VekComms::WantsAnother() {
    programmed_ = true;
    EndAttempt(AttemptResult::Programmed);
    const bool another =
        co_await messages_.Confirmed(tr("All sent ok"), tr("Program another vek"), Answer::No);
    if (another)
        BeginAttempt(*ports_->ChosenRow());
    co_return another;
}

} // namespace vek
