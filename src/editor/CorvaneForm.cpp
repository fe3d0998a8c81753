#include "editor/CorvaneForm.h"

#include "controls/KeyFilteredLineEdit.h"
#include "controls/LevelTrim.h"
#include "controls/NotesBox.h"
#include "device/DoctorWindow.h"
#include "device/OnlineControl.h"
#include "device/Programmer.h"
#include "device/VekComms.h"
#include "editing/AddressMenus.h"
#include "editing/ClipboardMenus.h"
#include "editing/LevelLimits.h"
#include "editing/UndoActions.h"
#include "editor/CommandTable.h"
#include "editor/EditorMenus.h"
#include "editor/EditorPanels.h"
#include "editor/EditorStatusBar.h"
#include "editor/EditorToolBar.h"
#include "editor/ExportCommands.h"
#include "editor/FileBars.h"
#include "editor/FileCommands.h"
#include "editor/FileDrop.h"
#include "editor/HistoryCommands.h"
#include "editor/OverviewControl.h"
#include "editor/RecoveryKeeper.h"
#include "model/ConfigFile.h"
#include "model/ProgramState.h"
#include "pages/AddressesPage.h"
#include "pages/LevelsPage.h"
#include "pages/LevelsTable.h"
#include "pages/NotesPage.h"
#include "pages/OnlinePage.h"
#include "pages/OnlineStrip.h"
#include "pages/PageHeading.h"
#include "pages/PageScroll.h"
#include "pages/PageTabs.h"
#include "pages/PortRows.h"
#include "pages/RemotePanelsPage.h"
#include "pages/Selectors.h"
#include "pages/TrimPage.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr int tickMilliseconds = 500;
constexpr int messageMilliseconds = 15000;
constexpr int longestKeeping = 10000; // milliseconds, as those below
constexpr int longestEnding = 1600;
constexpr int leastKeeping = 200;
constexpr QSize usualSize(1040, 700); // with text of the usual height
constexpr int usualTextHeight = 16;   // pixels

bool ShowsOneOutput(int page) { return page == LevelsTab || page == AddressesTab; }

} // namespace

CorvaneForm::CorvaneForm(const EditorServices& services, std::string commandLine, QWidget* parent)
    : QMainWindow(parent), services_(services), commandLine_(std::move(commandLine)),
      messages_(*this, services.Boxes), toolBar_(new EditorToolBar(this)), SSTab1_(new PageTabs(this)),
      pages_(MakeTabs(*SSTab1_)), view_(pages_, history_), settings_(services.SettingsFile),
      recovery_(new RecoveryKeeper(services.StateFolder, file_, this)),
      files_(new FileCommands(*this, view_, services.Boxes, file_, *recovery_, settings_)),
      exports_(new ExportCommands(*this, view_, services.Boxes)),
      programmer_(new Programmer(*this, services, turns_, types_)),
      dispatch_(*this, view_, *files_, *exports_, services, *programmer_, messages_),
      status_(new EditorStatusBar(this)) {
    setObjectName(u"CorvaneForm"_s);
    LayOut();
    setWindowTitle(ProgramTitle());
    SSTab1_->setCurrentIndex(RemotePanelsTab);
    NewConfiguration();
    view_.ReadSelectors();
    history_.Begin(Config);
    MakeCommands();
    ConnectSelectors();
    ShowState();
    Timer1_.start(tickMilliseconds);
    Timer4_.start(tickMilliseconds);
}

CorvaneForm::~CorvaneForm() = default;

void CorvaneForm::LayOut() {
    SSTab1_->setObjectName(u"SSTab1"_s);
    addToolBar(toolBar_);
    setStatusBar(status_);
    column_ = new QVBoxLayout;
    bars_ = new FileBars(*this, *column_, *files_, file_, *recovery_,
                         [this](const std::function<void()>& action) { Replace(action); });
    column_->addWidget(pages_.Heading);
    column_->addWidget(SSTab1_, 1);
    auto* centre = new QWidget(this);
    auto* columns = new QHBoxLayout(centre);
    auto* selectors = new PageScroll(centre);
    selectors->Hold(pages_.Selectors);
    selectors->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    selectors->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    columns->addWidget(selectors);
    columns->addLayout(column_, 1);
    setCentralWidget(centre);
    // The desktop puts a title and an edge around it.
    const int title = 2 * style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const QSize wanted = usualSize * qMax(usualTextHeight, fontMetrics().height()) / usualTextHeight;
    resize(wanted.boundedTo(screen()->availableSize() - QSize(0, title)));
    restoreGeometry(QByteArray::fromHex(QByteArray::fromStdString(settings_.Geometry())));
}

void CorvaneForm::MakeCommands() {
    connect(toolBar_, &EditorToolBar::Triggered, this, &CorvaneForm::Dispatch);
    clipboard_ = new ClipboardMenus(*pages_.Selectors, view_, messages_, this);
    menus_ = new EditorMenus({.Window = *this,
                              .Tabs = *SSTab1_,
                              .Pages = pages_,
                              .View = view_,
                              .Clipboard = *clipboard_,
                              .Exports = *exports_,
                              .Settings = settings_,
                              .TemplateFolders = services_.TemplateFolders});
    connect(menus_, &EditorMenus::FileChosen, this,
            [this](const std::string& path) { Replace([&] { files_->OpenNamed(path); }); });
    connect(menus_, &EditorMenus::TemplateChosen, this,
            [this](const std::string& path) { Replace([&] { files_->NewFromTemplate(path); }); });
    connect(menus_, &EditorMenus::DoctorWanted, this, &CorvaneForm::ShowDoctor);
    const PlaceFinder places(view_, pages_, *SSTab1_);
    undo_ = std::make_unique<UndoActions>(view_, places, menus_->Edit(), *this);
    connect(undo_.get(), &UndoActions::Taken, this, &CorvaneForm::LevelsRestored);
    watch_ = new ConfigWatch(history_, this);
    panels_ = new EditorPanels(*this, view_, places, services_.Boxes, *status_, *watch_,
                               [this] { return programmer_->LastProgrammed(); });
    connect(panels_, &EditorPanels::TakenBack, this, &CorvaneForm::LevelsRestored);

    const auto tell = [this](const QString& text) { status_->showMessage(text, messageMilliseconds); };
    connect(files_, &FileCommands::Told, this, tell);
    connect(panels_, &EditorPanels::Told, this, tell);
    connect(exports_, &ExportCommands::Failed, this, tell);
    connect(recovery_, &RecoveryKeeper::Failed, this, tell);
    connect(programmer_, &Programmer::Told, this, tell);
    connect(programmer_, &Programmer::Ended, this, [this] { online_->ForgetRemains(); });
    connect(&history_, &EditHistory::Changed, recovery_, &RecoveryKeeper::Look);

    programmed_ = new HistoryCommands(*this, services_.Boxes, *files_, *programmer_,
                                      [this](const std::function<void()>& action) { Replace(action); });
    connect(menus_, &EditorMenus::HistoryWanted, programmed_, &HistoryCommands::Show);
    connect(programmed_, &HistoryCommands::Told, this, tell);

    drop_ = new FileDrop(*this);
    connect(drop_, &FileDrop::Refused, this, tell);
    connect(drop_, &FileDrop::Dropped, this,
            [this](const std::string& path) { Replace([&] { files_->OpenNamed(path); }); });

    Timer1_.setObjectName(u"Timer1"_s);
    connect(&Timer1_, &QTimer::timeout, this, &CorvaneForm::Timer1_Tick);
    Timer4_.setObjectName(u"Timer4"_s);
    Timer4_.setSingleShot(true);
    connect(&Timer4_, &QTimer::timeout, this, &CorvaneForm::Timer4_Tick);
}

void CorvaneForm::ConnectSelectors() {
    connect(SSTab1_, &PageTabs::Painted, this, &CorvaneForm::FinishStart);
    connect(SSTab1_, &QTabWidget::currentChanged, this, [this](int page) {
        FinishStart();
        pages_.Heading->ShowPage(page);
        pages_.Selectors->SetOutputConcerned(ShowsOneOutput(page));
    });
    pages_.Selectors->SetOutputConcerned(ShowsOneOutput(RemotePanelsTab));

    connect(pages_.Selectors, &Selectors::ModeChosen, this, [this] {
        SelectionChanged();
        online_->ModeChosen();
    });
    connect(pages_.Selectors, &Selectors::OutputChosen, this, [this] {
        SelectionChanged();
        if (online_)
            online_->LevelsChanged();
    });
}

void CorvaneForm::FinishStart() {
    if (pages_.Made())
        return;
    Guarded(messages_, [this] { CheckDeviceTypes(services_.Store, types_); });
    toolBar_->ShowIcons();
    MakePages(pages_, *SSTab1_, {services_.PortNames, services_.FactsOfPort});
    column_->addWidget(pages_.Strip);
    online_ = std::make_unique<OnlineControl>(OnlineParts{*SSTab1_, *pages_.Online, *pages_.Strip,
                                                          *pages_.Levels->LevelTrim1, *pages_.InputTrims,
                                                          *pages_.OutputTrims, view_, settings_},
                                              services_, turns_, types_, messages_);
    pages_.Heading->ShowPage(SSTab1_->currentIndex());
    view_.ShowAll();
    ConnectPages();
    menus_->Fill();
    ShowOnline();
}

void CorvaneForm::ConnectPages() {
    new AddressMenus(*pages_.Addresses, view_, messages_, this);
    new LevelLimits(*pages_.Levels, view_, messages_, this);
    // Behind SelectionChanged: it follows what the view has become.
    new OverviewControl({*SSTab1_, pages_, view_, *watch_, *clipboard_, *exports_}, *this);
    connect(pages_.RemotePanels, &RemotePanelsPage::ListEdited, this, &CorvaneForm::PanelListEdited);
    // The box puts its list in order after telling of the edit; this takes the ordered list.
    connect(pages_.RemotePanels, &RemotePanelsPage::ListEdited, this, &CorvaneForm::PanelListEdited,
            Qt::QueuedConnection);
    connect(pages_.RemotePanels, &RemotePanelsPage::RouteEdited, this, &CorvaneForm::RouteEdited);
    connect(pages_.RemotePanels, &RemotePanelsPage::LinkClicked, this, [this] { Dispatch("LINK"); });
    connect(pages_.RemotePanels, &RemotePanelsPage::KeyTyped, this,
            [this] { pages_.RemotePanels->RefreshTakenMarks(view_.Mode()); });
    connect(pages_.Levels->LevelTrim1, &LevelTrim::Change, this, &CorvaneForm::LevelMoved);
    connect(pages_.Levels, &LevelsPage::Edited, this, [this] { view_.StoreView(); });
    connect(pages_.Levels->Outputs, &LevelsTable::OutputWanted, this,
            [this](std::size_t i) { pages_.Selectors->UsePanel[i]->setChecked(true); });
    for (TrimPage* trims : {pages_.InputTrims, pages_.OutputTrims}) {
        connect(trims, &TrimPage::Edited, this, [this] {
            view_.StoreView();
            online_->LevelsChanged();
        });
    }
    connect(pages_.InputTrims, &TrimPage::TextClicked, this,
            [this](std::size_t i) { online_->SelectInput(i); });
    connect(pages_.OutputTrims, &TrimPage::TextClicked, this,
            [this](std::size_t i) { pages_.Selectors->UsePanel[i]->setChecked(true); });
    connect(pages_.Notes->Text1, &NotesBox::Edited, this, [this] { view_.StoreView(); });
    connect(pages_.Online->WhatIsWrong, &QPushButton::clicked, this, &CorvaneForm::ShowDoctor);
    connect(online_.get(), &OnlineControl::OnlineChanged, this, &CorvaneForm::ShowOnline);
    connect(
        online_.get(), &OnlineControl::ReadyToClose, this,
        [this] {
            if (ending_.isActive())
                FinishEnding();
            else
                close();
        },
        Qt::QueuedConnection);
}

void CorvaneForm::LevelsRestored(FieldKind kind) {
    if (online_ && (kind == FieldKind::InputTrims || kind == FieldKind::OutputTrims))
        online_->LevelsChanged();
}

void CorvaneForm::SelectionChanged() {
    FinishStart();
    Guarded(messages_, [this] {
        view_.StoreView();
        history_.EndVisit();
        view_.ReadSelectors();
        view_.ShowMode();
    });
}

void CorvaneForm::PanelListEdited() {
    Guarded(messages_, [this] {
        view_.StoreView();
        pages_.RemotePanels->RefreshTakenMarks(view_.Mode());
    });
}

void CorvaneForm::RouteEdited() {
    Guarded(messages_, [this] {
        view_.StoreView();
        view_.ShowMode();
    });
}

void CorvaneForm::LevelMoved() {
    view_.SetSliderLevel(pages_.Levels->LevelTrim1->Level());
    online_->LevelsChanged();
}

void CorvaneForm::Dispatch(std::string_view key) {
    FinishStart();
    const ToolbarCommand* command = FindToolbarCommand(key);
    if (online_->IsOnline() && command && !command->WhileOnline)
        return;
    FinishTyping();
    dispatch_.DispatchCommand(key);
    if (key == "ONLINE")
        SSTab1_->setCurrentIndex(OnlineTab);
    Timer1_Tick();
}

void CorvaneForm::FinishTyping() {
    // Also while another window is in front.
    if (auto* box = qobject_cast<KeyFilteredLineEdit*>(focusWidget()))
        box->Finish();
}

void CorvaneForm::Replace(const std::function<void()>& action) {
    FinishStart();
    FinishTyping();
    Guarded(messages_, [&] {
        view_.StoreView();
        view_.ShowMode();
        action();
    });
    Timer1_Tick();
}

void CorvaneForm::ShowOnline() {
    toolBar_->SetOnline(online_->IsOnline());
    bars_->SetOnline(online_->IsOnline());
    menus_->SetOnline(online_->IsOnline());
    programmed_->SetOnline(online_->IsOnline());
    drop_->SetRefusal(online_->IsOnline() ? tr("No file can be opened while online") : QString());
    undo_->Refresh();
    Timer1_Tick();
}

void CorvaneForm::ShowDoctor() {
    FinishTyping();
    doctor_.reset();
    doctor_ = std::make_unique<DoctorWindow>(services_, turns_, types_, online_->IsOnline(), this);
    doctor_->open();
}

QString CorvaneForm::ProgramTitle() const {
    return tr("Vorn Matrix Editor ") + QCoreApplication::applicationVersion();
}

void CorvaneForm::Timer1_Tick() {
    FinishStart();
    online_->CheckPort();
    recovery_->Look();
    bars_->LookAtFile();
    panels_->Look();
    ShowState();
}

void CorvaneForm::ShowState() {
    const bool named = !CurrentFileName.empty();
    // Qt takes "[*]" for the place of a mark unless it stands there twice.
    const QString title =
        named ? QString::fromStdString(FileNameOf(CurrentFileName)).replace("[*]"_L1, "[*][*]"_L1)
              : ProgramTitle();
    if (windowTitle() != title)
        setWindowTitle(title);
    toolBar_->Action("SAVE")->setEnabled(named);
    const QString remains = online_ ? online_->Remains() : QString();
    status_->ShowState(file_.Path(), online_ && online_->IsOnline() ? online_->PortName() : QString(),
                       remains.isEmpty() ? programmer_->Result() : remains);
}

void CorvaneForm::Timer4_Tick() {
    FinishStart();
    Timer4_.stop();
    files_->OpenFileAtStartup(commandLine_);
    bars_->OfferRecovered();
    Timer1_Tick();
}

void CorvaneForm::TakeOver() {
    FinishStart();
    FinishTyping();
    Guarded(messages_, [this] { view_.StoreView(); });
}

void CorvaneForm::PrepareForSessionEnd() {
    TakeOver();
    EndProgramming();
    online_->Disconnect();
    recovery_->Finish(longestEnding);
}

void CorvaneForm::EndProgramming() {
    if (auto* programming = findChild<VekComms*>())
        programming->EndInOrder();
}

void CorvaneForm::EndInOrder() {
    if (ending_.isActive() || ended_)
        return;
    ending_.setSingleShot(true);
    connect(&ending_, &QTimer::timeout, this, &CorvaneForm::FinishEnding);
    ending_.start(longestEnding);
    TakeOver();
    recovery_->Look();
    if (auto* programming = findChild<VekComms*>()) {
        connect(programming, &QDialog::finished, this, &CorvaneForm::GoOffline, Qt::QueuedConnection);
        programming->EndInOrder();
    } else {
        GoOffline();
    }
}

void CorvaneForm::EndAtOnce() {
    if (online_)
        online_->RestartBlindly();
    recovery_->Finish(leastKeeping);
}

void CorvaneForm::GoOffline() {
    if (online_->ShutdownSilently())
        FinishEnding();
}

void CorvaneForm::FinishEnding() {
    if (std::exchange(ended_, true))
        return;
    settings_.SetGeometry(saveGeometry().toHex().toStdString());
    recovery_->Finish(std::max(ending_.remainingTime(), leastKeeping));
    ending_.stop();
    Q_EMIT Ended();
}

void CorvaneForm::closeEvent(QCloseEvent* event) {
    TakeOver();
    if (!online_->Shutdown()) {
        event->ignore();
        return;
    }
    settings_.SetGeometry(saveGeometry().toHex().toStdString());
    // Closing asks nothing; what is not saved is offered at the next start.
    recovery_->Finish(longestKeeping);
    Timer1_.stop();
    Timer4_.stop();
    QMainWindow::closeEvent(event);
}

} // namespace vek
