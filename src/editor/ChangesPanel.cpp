#include "editor/ChangesPanel.h"

#include "base/Errors.h"
#include "dialogs/Dialogs.h"
#include "editing/ModelView.h"
#include "editor/FileCommands.h"
#include "editor/PanelEntries.h"
#include "model/ConfigFile.h"
#include "model/ProgramState.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <utility>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int leastCharacters = 12; // of what is compared with

} // namespace

ChangesPanel::ChangesPanel(ModelView& view, const PlaceFinder& places, Dialogs& boxes,
                           LastProgrammed lastProgrammed, QWidget* parent)
    : QDockWidget(tr("What changed"), parent), view_(view), places_(places), boxes_(boxes),
      lastProgrammed_(std::move(lastProgrammed)) {
    setObjectName(u"ChangesPanel"_s);
    setWidget(MakeContents());
    connect(comparedWith_, &QComboBox::activated, this, &ChangesPanel::Choose);
    connect(entries_, &QListWidget::itemActivated, this, &ChangesPanel::GoTo);
    connect(entries_, &QListWidget::currentRowChanged, this, &ChangesPanel::ShowWhatCanBeTakenBack);
    connect(takeBack_, &QPushButton::clicked, this, &ChangesPanel::TakeBack);
    auto* remove = new QShortcut(QKeySequence(Qt::Key_Delete), entries_);
    remove->setContext(Qt::WidgetShortcut);
    connect(remove, &QShortcut::activated, this, &ChangesPanel::TakeBack);
}

QWidget* ChangesPanel::MakeContents() {
    auto* contents = new QWidget(this);
    comparedWith_ = new QComboBox(contents);
    comparedWith_->setObjectName(u"ComparedWith"_s);
    comparedWith_->addItems({tr("The saved file"), tr("Another file…"), tr("What was programmed last")});
    comparedWith_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    comparedWith_->setMinimumContentsLength(leastCharacters);
    auto* label = new QLabel(tr("&Compared with"), contents);
    label->setBuddy(comparedWith_);
    takeBack_ = new QPushButton(tr("&Take back"), contents);
    takeBack_->setObjectName(u"TakeBack"_s);
    entries_ = MakeEntries(tr("What changed"), contents);
    contents->setFocusProxy(entries_);
    auto* column = new QVBoxLayout(contents);
    column->setContentsMargins(6, 6, 6, 6);
    column->addWidget(label);
    column->addWidget(comparedWith_);
    column->addWidget(entries_, 1);
    column->addWidget(takeBack_, 0, Qt::AlignRight);
    return contents;
}

void ChangesPanel::showEvent(QShowEvent* event) {
    Look();
    QDockWidget::showEvent(event);
}

void ChangesPanel::Choose(int base) {
    if (base != OtherFile || ChooseFile())
        base_ = static_cast<Base>(base);
    comparedWith_->setCurrentIndex(base_);
    Look();
}

bool ChangesPanel::ChooseFile() {
    const auto path =
        boxes_.OpenFile(window(), QString::fromStdString(CurrentFileName), ConfigurationFiles());
    if (!path)
        return false;
    const QString name = QString::fromStdString(FileNameOf(path->toStdString()));
    try {
        otherFile_ = LoadConfig(path->toStdString());
    } catch (const FileError& error) {
        TellUnreadable(boxes_, window(), name, path->toStdString(), error);
        return false;
    }
    comparedWith_->setItemText(OtherFile, tr("Another file: %1…").arg(name));
    return true;
}

const MatrixConfig& ChangesPanel::BaseConfig() const {
    if (base_ == OtherFile)
        return otherFile_;
    const MatrixConfig* programmed = base_ == Programmed ? lastProgrammed_() : nullptr;
    return programmed != nullptr ? *programmed : SavedConfig;
}

void ChangesPanel::Look() {
    auto* model = qobject_cast<QStandardItemModel*>(comparedWith_->model());
    model->item(Programmed)->setEnabled(lastProgrammed_() != nullptr);
    if (after_ != Config || before_ != BaseConfig())
        Fill();
    ShowWhatCanBeTakenBack();
}

void ChangesPanel::Fill() {
    const int row = entries_->currentRow();
    before_ = BaseConfig();
    after_ = Config;
    differences_ = FieldDifferences({before_, {}}, {Config, {}});
    const QSignalBlocker quiet(entries_);
    entries_->clear();
    for (const FieldDifference& difference : differences_)
        AddEntry(*entries_, QString::fromStdString(difference.Line()));
    FinishEntries(*entries_, tr("No differences"), row);
}

const FieldDifference* ChangesPanel::Current() const {
    const auto row = static_cast<std::size_t>(entries_->currentRow());
    return row < differences_.size() ? &differences_[row] : nullptr;
}

QString ChangesPanel::Refusal(const FieldDifference& difference) const {
    if (!places_.Reachable(difference.Place))
        return tr("Its page is disabled while online");
    const auto config = vek::TakenBack(difference, before_, Config);
    if (!config)
        return tr("The notes have no room for the line");
    if (DifferInFollowersOnly(Config, *config))
        return tr("A linked output has what the first of its group has");
    return {};
}

void ChangesPanel::ShowWhatCanBeTakenBack() {
    const FieldDifference* current = Current();
    const QString refusal = current != nullptr ? Refusal(*current) : QString();
    takeBack_->setEnabled(current != nullptr && refusal.isEmpty());
    takeBack_->setToolTip(refusal.isEmpty() ? tr("Gives the field its value before (Delete)") : refusal);
}

void ChangesPanel::GoTo() {
    const FieldDifference* current = Current();
    if (current == nullptr)
        return;
    if (places_.Reachable(current->Place))
        places_.Enter(current->Place);
    else
        Q_EMIT Told(tr("Its page is disabled while online"));
}

void ChangesPanel::TakeBack() {
    view_.StoreView();
    Look();
    const FieldDifference* current = Current();
    if (current == nullptr)
        return;
    if (const QString refusal = Refusal(*current); !refusal.isEmpty()) {
        Q_EMIT Told(refusal);
        return;
    }
    const FieldKind kind = current->Place.Kind;
    view_.TakeBack(QString::fromStdString(current->Field), *vek::TakenBack(*current, before_, Config));
    Q_EMIT TakenBack(kind);
    Look();
}

} // namespace vek
