#include "device/HistoryWindow.h"

#include "base/Errors.h"
#include "controls/LayoutHelpers.h"
#include "controls/TextConversion.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int usualLines = 18;
constexpr double mostOfScreen = 0.9;
constexpr int lookMilliseconds = 500; // other programs write into the journal as well

QString Details(const KeptAttempt& attempt) {
    const JournalEntry& entry = attempt.Entry;
    const std::pair<QString, const std::string&> lines[] = {
        {HistoryWindow::tr("File"), entry.File},
        {HistoryWindow::tr("Serial number of the adapter"), entry.AdapterSerialNumber},
        {HistoryWindow::tr("SHA-256 of the image"), entry.ImageDigest},
        {HistoryWindow::tr("User"), entry.User},
        {HistoryWindow::tr("Computer"), entry.Host},
    };
    QStringList text;
    for (const auto& [caption, value] : lines) {
        if (!value.empty())
            text += u"%1: %2"_s.arg(caption, QString::fromStdString(value));
    }
    return text.join(u'\n');
}

} // namespace

HistoryWindow::HistoryWindow(const ProgrammingJournal& journal, QWidget* parent)
    : QDialog(parent), journal_(journal) {
    setObjectName(u"HistoryWindow"_s);
    setWindowTitle(tr("Programming history"));
    entries_ = new QListWidget(this);
    entries_->setObjectName(u"Entries"_s);
    entries_->setAccessibleName(windowTitle());
    entries_->setUniformItemSizes(true);
    entries_->setFont(FixedFont(*this));
    connect(entries_, &QListWidget::itemActivated, this, [this] { forOffline_.front()->click(); });
    connect(entries_, &QListWidget::currentRowChanged, this, &HistoryWindow::EnableButtons);
    auto* column = new QVBoxLayout(this);
    column->addWidget(
        MakeHint(tr("What devices were given from this account, by this program and by vekctl."), this));
    column->addWidget(entries_, 1);
    column->addWidget(MakeButtons());
    Fill();
    // A file's name may be of any length.
    const int lines = entries_->sizeHintForColumn(0) + entries_->verticalScrollBar()->sizeHint().width();
    const int margins = layout()->contentsMargins().left() + layout()->contentsMargins().right();
    const QSize usual(lines + margins + 2 * entries_->frameWidth(), fontMetrics().lineSpacing() * usualLines);
    resize(usual.boundedTo(screen()->availableSize() * mostOfScreen).expandedTo(minimumSizeHint()));
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this] {
        if (isVisible())
            Look();
    });
    timer->start(lookMilliseconds);
}

QWidget* HistoryWindow::MakeButtons() {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    forOffline_ = {
        AddButton("OpenCopy", tr("&Open a copy"), buttons, &HistoryWindow::CopyWanted),
        AddButton("ProgramAgain", tr("&Program again ..."), buttons, &HistoryWindow::ProgramWanted)};
    forOne_ = {AddButton("WhatChanged", tr("What &changed"), buttons, &HistoryWindow::ChangesWanted),
               AddButton("ExportEntry", tr("&Export ..."), buttons, &HistoryWindow::ExportWanted)};
    auto* copy = new QPushButton(tr("Copy as &text"), buttons);
    copy->setObjectName(u"CopyText"_s);
    copy->setAutoDefault(false);
    connect(copy, &QPushButton::clicked, this, &HistoryWindow::CopyText);
    for (QPushButton* button : {forOffline_[0], forOne_[0], forOffline_[1], forOne_[1], copy})
        buttons->addButton(button, QDialogButtonBox::ActionRole);
    buttons->button(QDialogButtonBox::Close)->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    return buttons;
}

QPushButton* HistoryWindow::AddButton(const char* name, const QString& text, QWidget* parent, Wish wish) {
    auto* button = new QPushButton(text, parent);
    button->setObjectName(QLatin1StringView(name));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, wish] { Ask(wish); });
    return button;
}

void HistoryWindow::Look() {
    // What was forbidden may be allowed without a change of the folder.
    if (journal_.ChangeMark() != seen_ || !unreadable_.isEmpty())
        Fill();
}

void HistoryWindow::Read() {
    seen_ = journal_.ChangeMark();
    attempts_.clear();
    unreadable_.clear();
    try {
        attempts_ = journal_.FromNewest();
    } catch (const FileError& error) {
        unreadable_ =
            tr("The programming history cannot be read: %1").arg(QString::fromStdString(error.Reason()));
    }
}

void HistoryWindow::Fill() {
    const KeptAttempt* former = Current();
    const std::string stem = former != nullptr ? former->Stem : std::string();
    Read();
    const QSignalBlocker quiet(entries_);
    entries_->clear();
    const auto lines = JournalLines(attempts_);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        auto* item = new QListWidgetItem(QString::fromStdString(lines[i]), entries_);
        item->setToolTip(PlainToolTip(Details(attempts_[i])));
    }
    const auto same = std::ranges::find(attempts_, stem, &KeptAttempt::Stem);
    entries_->setCurrentRow(same == attempts_.end() ? 0 : static_cast<int>(same - attempts_.begin()));
    if (lines.empty()) {
        auto* none = new QListWidgetItem(
            unreadable_.isEmpty() ? tr("No device was programmed yet") : unreadable_, entries_);
        if (!unreadable_.isEmpty())
            none->setToolTip(PlainToolTip(QString::fromStdString(journal_.Folder())));
        none->setFlags(unreadable_.isEmpty() ? Qt::NoItemFlags : Qt::ItemIsEnabled);
        none->setFont(font());
    }
    EnableButtons();
}

void HistoryWindow::SetOnline(bool online) {
    online_ = online;
    EnableButtons();
}

void HistoryWindow::EnableButtons() {
    const bool any = Current() != nullptr;
    for (QPushButton* button : forOne_)
        button->setEnabled(any);
    for (QPushButton* button : forOffline_)
        button->setEnabled(any && !online_);
}

const KeptAttempt* HistoryWindow::Current() const {
    const auto row = static_cast<std::size_t>(entries_->currentRow());
    return row < attempts_.size() ? &attempts_[row] : nullptr;
}

void HistoryWindow::Ask(Wish wish) {
    if (const KeptAttempt* current = Current()) {
        // The list may be filled anew while the wish is carried out.
        const KeptAttempt attempt = *current;
        Q_EMIT(this->*wish)(attempt);
    }
}

void HistoryWindow::CopyText() const {
    QString text;
    for (const std::string& line : JournalLines(attempts_))
        text += QString::fromStdString(line) + u'\n';
    QApplication::clipboard()->setText(text);
}

} // namespace vek
