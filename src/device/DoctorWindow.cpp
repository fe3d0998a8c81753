#include "device/DoctorWindow.h"

#include "controls/TextConversion.h"
#include "device/PortTurns.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTextCursor>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int usualCharacters = 110; // of a line
constexpr int usualLines = 32;
constexpr int indentCharacters = 2; // of a fact below its port

} // namespace

DoctorWindow::DoctorWindow(const EditorServices& services, PortTurns& turns, const DeviceTypeList& types,
                           bool online, QWidget* parent)
    : QDialog(parent), services_(services), turns_(turns), types_(types), online_(online),
      messages_(*this, services.Boxes) {
    setObjectName(u"DoctorWindow"_s);
    setWindowTitle(tr("What is wrong?"));
    entries_ = new QTextEdit(this);
    entries_->setObjectName(u"Entries"_s);
    entries_->setAccessibleName(tr("What was found"));
    entries_->setUndoRedoEnabled(false);
    entries_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    entries_->setTabChangesFocus(true);
    state_ = new QLabel(this);
    state_->setObjectName(u"DoctorState"_s);
    state_->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(state_);
    layout->addWidget(entries_, 1);
    layout->addLayout(MakeButtons());
    const QSize usual(fontMetrics().averageCharWidth() * usualCharacters,
                      fontMetrics().lineSpacing() * usualLines);
    resize(usual.boundedTo(screen()->availableSize() * 0.9));
}

QLayout* DoctorWindow::MakeButtons() {
    auto* copy = new QPushButton(tr("&Copy text"), this);
    copy->setObjectName(u"CopyText"_s);
    again_ = new QPushButton(tr("&Examine again"), this);
    again_->setObjectName(u"ExamineAgain"_s);
    auto* close = new QPushButton(tr("Close"), this);
    close->setObjectName(u"CloseDoctor"_s);
    close->setDefault(true);
    connect(copy, &QPushButton::clicked, this, &DoctorWindow::CopyText);
    connect(again_, &QPushButton::clicked, this, &DoctorWindow::Examine);
    connect(close, &QPushButton::clicked, this, &DoctorWindow::reject);
    auto* row = new QHBoxLayout;
    row->addWidget(copy);
    row->addWidget(again_);
    row->addStretch(1);
    row->addWidget(close);
    return row;
}

void DoctorWindow::open() {
    QDialog::open();
    // The window has to be up first.
    QTimer::singleShot(0, this, &DoctorWindow::Examine);
}

void DoctorWindow::Examine() {
    if (conversation_.Running() || !isVisible())
        return;
    again_->setEnabled(false);
    entries_->setFocus();
    if (online_) {
        state_->setText(
            tr("While online the port is used by the session. Disconnect, then examine the ports."));
        return;
    }
    doctor_.reset();
    port_ = services_.MakeSerialControl();
    timer_ = services_.MakeTimer();
    doctor_ = std::make_unique<LinkDoctor>(*port_, *timer_, types_,
                                           PortSystem{services_.FactsOfPort, services_.RefusedSettings},
                                           [this] { ShowLines(ReportOf(doctor_->Examinations(), types_)); });
    conversation_.Start(ExamineInTurn(), [this](const std::exception_ptr& failure) {
        again_->setEnabled(true);
        if (!failure)
            return;
        state_->setText(tr("The examination was broken off"));
        messages_.ShowFailure(failure);
    });
}

Task<> DoctorWindow::ExamineInTurn() {
    state_->setText(tr("Waiting for the search, which uses the same ports"));
    PortTurns::Turn turn(turns_);
    co_await turn;
    state_->setText(
        tr("Examining the ports. Each is asked what a search asks: a known device is restarted, none "
           "is programmed."));
    co_await doctor_->ExamineAll();
    state_->setText(tr("All ports have been examined. Known devices were restarted, none was programmed."));
    std::vector<ReportLine> lines = ReportOf(doctor_->Examinations(), types_);
    std::ranges::move(ConclusionOf(doctor_->Examinations(), types_), std::back_inserter(lines));
    ShowLines(std::move(lines));
}

void DoctorWindow::ShowLines(std::vector<ReportLine> lines) {
    // What stays keeps its place and its selection.
    const auto [shown, wanted] = std::ranges::mismatch(lines_, lines);
    QTextCursor end(entries_->document());
    end.movePosition(QTextCursor::End);
    for (auto line = shown; line != lines_.end(); ++line) {
        end.movePosition(QTextCursor::StartOfBlock, QTextCursor::KeepAnchor);
        // And the end of the line above.
        end.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor);
        end.removeSelectedText();
    }
    for (auto line = wanted; line != lines.end(); ++line)
        Append(end, *line);
    lines_ = std::move(lines);
    auto* bar = entries_->verticalScrollBar();
    bar->setValue(bar->maximum());
}

void DoctorWindow::Append(QTextCursor& end, const ReportLine& line) const {
    const bool fact = line.Is == ReportLine::Kind::Fact;
    QTextBlockFormat block;
    block.setTopMargin(fact || entries_->document()->isEmpty() ? 0 : fontMetrics().height() / 2);
    block.setLeftMargin(fact ? indentCharacters * fontMetrics().averageCharWidth() : 0);
    QTextCharFormat text;
    text.setFontWeight(fact ? QFont::Normal : QFont::Bold);
    if (entries_->document()->isEmpty())
        end.setBlockFormat(block);
    else
        end.insertBlock(block);
    end.insertText(FromConstant(line.Text), text);
}

void DoctorWindow::CopyText() const {
    QGuiApplication::clipboard()->setText(QString::fromStdString(TextOf(lines_)));
}

void DoctorWindow::reject() {
    conversation_.Cancel();
    QDialog::reject();
}

} // namespace vek
