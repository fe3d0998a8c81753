#include "editor/CorvaneForm.h"

#include "controls/LevelTrim.h"
#include "controls/NotesBox.h"
#include "dialogs/Guarded.h"
#include "editor/AddressMenus.h"
#include "editor/ClipboardMenus.h"
#include "editor/CommandTable.h"
#include "editor/EditorStatusBar.h"
#include "editor/EditorToolBar.h"
#include "editor/ExportCommands.h"
#include "editor/FileCommands.h"
#include "editor/LevelLimits.h"
#include "editor/OnlineControl.h"
#include "model/ConfigFile.h"
#include "model/ProgramState.h"
#include "pages/AddressesPage.h"
#include "pages/LevelsPage.h"
#include "pages/NotesPage.h"
#include "pages/OnlineStrip.h"
#include "pages/PageTabs.h"
#include "pages/RemotePanelsPage.h"
#include "pages/Selectors.h"
#include "pages/TrimPage.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QRadioButton>

namespace vek {

namespace {

constexpr int tickMilliseconds = 500;
constexpr int messageMilliseconds = 15000;
constexpr QSize usualSize(1040, 700);

} // namespace

CorvaneForm::CorvaneForm(const EditorServices& services, const QString& commandLine, QWidget* parent)
    : QMainWindow(parent), services(services), commandLine(commandLine), toolBar(new EditorToolBar(this)),
      SSTab1(new PageTabs(this)), pages(MakeEditorPages(*SSTab1, services.PortNames)),
      strip(new OnlineStrip(this)), view(pages), files(new FileCommands(*this, view, services.Boxes)),
      exports(new ExportCommands(*this, view, services.Boxes)),
      dispatch(*this, view, *files, *exports, services, types), status(new EditorStatusBar(this)) {
    setObjectName(QStringLiteral("CorvaneForm"));
    Guarded(services.Boxes, this, [this] { CheckDeviceTypes(this->services.Store, types); });
    LayOut();
    setWindowTitle(ProgramTitle());
    online = new OnlineControl(*this,
                               {*SSTab1, *pages.Online, *strip, *pages.Levels->LevelTrim1, *pages.InputTrims,
                                *pages.OutputTrims, view},
                               services, types);
    SSTab1->setCurrentIndex(RemotePanelsTab);
    NewConfiguration();
    view.ReadSelectors();
    view.ShowAll();
    MakeCommands();
    ConnectPages();
    ShowOnline();
    Timer1.start(tickMilliseconds);
    Timer4.start(tickMilliseconds);
}

CorvaneForm::~CorvaneForm() = default;

void CorvaneForm::LayOut() {
    SSTab1->setObjectName(QStringLiteral("SSTab1"));
    addToolBar(toolBar);
    setStatusBar(status);
    auto* right = new QVBoxLayout;
    right->addWidget(SSTab1, 1);
    right->addWidget(strip);
    auto* centre = new QWidget(this);
    auto* columns = new QHBoxLayout(centre);
    columns->addWidget(pages.Selectors);
    columns->addLayout(right, 1);
    setCentralWidget(centre);
    resize(usualSize);
}

void CorvaneForm::MakeCommands() {
    connect(toolBar, &EditorToolBar::Triggered, this, &CorvaneForm::Dispatch);
    auto* quit = new QAction(this);
    quit->setShortcut(QKeySequence(tr("Ctrl+Q")));
    connect(quit, &QAction::triggered, this, &QWidget::close);
    addAction(quit);

    const auto showFailure = [this](const QString& why) { status->showMessage(why, messageMilliseconds); };
    connect(files, &FileCommands::Failed, this, showFailure);
    connect(exports, &ExportCommands::Failed, this, showFailure);

    Timer1.setObjectName(QStringLiteral("Timer1"));
    connect(&Timer1, &QTimer::timeout, this, &CorvaneForm::Timer1_Tick);
    Timer4.setObjectName(QStringLiteral("Timer4"));
    Timer4.setSingleShot(true);
    connect(&Timer4, &QTimer::timeout, this, &CorvaneForm::Timer4_Tick);
}

void CorvaneForm::ConnectPages() {
    new AddressMenus(*pages.Addresses, view, services.Boxes, this);
    new ClipboardMenus(*pages.Selectors, view, services.Boxes, this);
    new LevelLimits(*pages.Levels, view, services.Boxes, this);

    connect(pages.Selectors, &Selectors::ModeChosen, this, &CorvaneForm::SelectionChanged);
    connect(pages.Selectors, &Selectors::OutputChosen, this, [this] {
        SelectionChanged();
        online->LevelsChanged();
    });
    connect(pages.RemotePanels, &RemotePanelsPage::ListEdited, this, &CorvaneForm::PanelListEdited);
    // The box puts its list in order after telling of the edit; this takes the ordered list.
    connect(pages.RemotePanels, &RemotePanelsPage::ListEdited, this, &CorvaneForm::PanelListEdited,
            Qt::QueuedConnection);
    connect(pages.RemotePanels, &RemotePanelsPage::RouteEdited, this, &CorvaneForm::RouteEdited);
    connect(pages.RemotePanels, &RemotePanelsPage::LinkClicked, this, [this] { Dispatch("LINK"); });
    connect(pages.RemotePanels, &RemotePanelsPage::KeyTyped, this,
            [this] { pages.RemotePanels->RefreshTakenMarks(view.Mode()); });
    connect(pages.Levels->LevelTrim1, &LevelTrim::Change, this, &CorvaneForm::LevelMoved);
    for (TrimPage* trims : {pages.InputTrims, pages.OutputTrims}) {
        connect(trims, &TrimPage::Edited, this, [this] {
            view.StoreView();
            online->LevelsChanged();
        });
    }
    connect(pages.InputTrims, &TrimPage::TextClicked, this,
            [this](std::size_t i) { online->SelectInput(i); });
    connect(pages.OutputTrims, &TrimPage::TextClicked, this,
            [this](std::size_t i) { pages.Selectors->UsePanel[i]->setChecked(true); });
    connect(pages.Notes->Text1, &NotesBox::Edited, this, [this] { view.StoreView(); });
    connect(online, &OnlineControl::OnlineChanged, this, &CorvaneForm::ShowOnline);
    connect(online, &OnlineControl::Unwound, this, &QWidget::close, Qt::QueuedConnection);
}

void CorvaneForm::SelectionChanged() {
    Guarded(services.Boxes, this, [this] {
        view.StoreView();
        view.ReadSelectors();
        view.ShowMode();
    });
}

void CorvaneForm::PanelListEdited() {
    Guarded(services.Boxes, this, [this] {
        view.StoreView();
        pages.RemotePanels->RefreshTakenMarks(view.Mode());
    });
}

void CorvaneForm::RouteEdited() {
    Guarded(services.Boxes, this, [this] {
        view.StoreView();
        view.ShowMode();
    });
}

void CorvaneForm::LevelMoved() {
    view.WorkingLevel() = pages.Levels->LevelTrim1->Level();
    online->LevelsChanged();
}

void CorvaneForm::Dispatch(std::string_view key) {
    const ToolbarCommand* command = FindToolbarCommand(key);
    if (online->IsOnline() && command && !command->WhileOnline)
        return;
    // Leaving a box takes over what was typed into it.
    QWidget* focus = QApplication::focusWidget();
    auto* box = focus && isAncestorOf(focus) ? qobject_cast<QLineEdit*>(focus) : nullptr;
    if (box)
        box->clearFocus();
    dispatch.DispatchCommand(key);
    if (key == "ONLINE")
        SSTab1->setCurrentIndex(OnlineTab);
    if (box && !QApplication::focusWidget())
        box->setFocus();
    Timer1_Tick();
}

void CorvaneForm::ShowOnline() {
    toolBar->SetOnline(online->IsOnline());
    Timer1_Tick();
}

QString CorvaneForm::ProgramTitle() const {
    return tr("Vorn Matrix Editor ") + QCoreApplication::applicationVersion();
}

void CorvaneForm::Timer1_Tick() {
    const bool named = !CurrentFileName.empty();
    const QString title = named ? QString::fromStdString(FileNameOf(CurrentFileName)) : ProgramTitle();
    if (windowTitle() != title)
        setWindowTitle(title);
    toolBar->Action("SAVE")->setEnabled(named);
    online->CheckPort();
    status->ShowState(online->IsOnline() ? online->PortName() : QString());
}

void CorvaneForm::Timer4_Tick() {
    Timer4.stop();
    files->OpenFileAtStartup(commandLine);
    Timer1_Tick();
}

void CorvaneForm::closeEvent(QCloseEvent* event) {
    if (!online->Shutdown()) {
        event->ignore();
        return;
    }
    Timer1.stop();
    Timer4.stop();
    QMainWindow::closeEvent(event);
}

} // namespace vek
