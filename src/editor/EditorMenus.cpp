#include "editor/EditorMenus.h"

#include "controls/TextConversion.h"
#include "dialogs/ManualForm.h"
#include "editing/ClipboardMenus.h"
#include "editing/ModelView.h"
#include "editor/ExportCommands.h"
#include "editor/MenuTexts.h"
#include "editor/RecentFiles.h"
#include "editor/TemplateMenu.h"
#include "pages/EditorPages.h"
#include "pages/PageTabs.h"
#include "pages/Selectors.h"

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <string_view>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

enum MenuIndex : int { FileMenu, EditMenu, ModeMenu, OutputMenu, DeviceMenu, ViewMenu, HelpMenu };

struct MenuTitle {
    const char* Name;
    const char* Title;
};

constexpr MenuTitle titles[] = {
    {"FileMenu", QT_TR_NOOP("&File")},     {"EditMenu", QT_TR_NOOP("&Edit")},
    {"ModeMenu", QT_TR_NOOP("&Mode")},     {"OutputMenu", QT_TR_NOOP("&Output")},
    {"DeviceMenu", QT_TR_NOOP("&Device")}, {"ViewMenu", QT_TR_NOOP("&View")},
    {"HelpMenu", QT_TR_NOOP("&Help")},
};

/// An action or a menu of the window by its name, in the order of the menu; an empty name is a separator, "*"
/// stands for the modes, the outputs or the pages.
struct MenuEntry {
    MenuIndex Menu;
    std::string_view Name;
};

constexpr MenuEntry entries[] = {
    {FileMenu, "NEW"},
    {FileMenu, "Templates"},
    {FileMenu, "OPEN"},
    {FileMenu, "RecentFiles"},
    {FileMenu, ""},
    {FileMenu, "SAVE"},
    {FileMenu, "SAVEAS"},
    {FileMenu, ""},
    {FileMenu, "PRINT"},
    {FileMenu, "PrintOverview"},
    {FileMenu, "TEXT"},
    {FileMenu, "CSV"},
    {FileMenu, "EXPORT"},
    {FileMenu, ""},
    {FileMenu, "Quit"},
    {EditMenu, ""},
    {EditMenu, "CopyMode"},
    {EditMenu, "PasteMode"},
    {EditMenu, "CopyOutput"},
    {EditMenu, "PasteOutput"},
    {ModeMenu, "*"},
    {ModeMenu, ""},
    {ModeMenu, "DEFAULT"},
    {OutputMenu, "*"},
    {OutputMenu, ""},
    {OutputMenu, "LINK"},
    {DeviceMenu, "ONLINE"},
    {DeviceMenu, "DOWNLOAD"},
    {DeviceMenu, "MuteAllOutputs"},
    {DeviceMenu, "ProgrammingHistory"},
    {DeviceMenu, "LinkDoctor"},
    {DeviceMenu, ""},
    {DeviceMenu, "BASE"},
    {ViewMenu, "*"},
    {ViewMenu, "ShowOverview"},
    {ViewMenu, ""},
    {ViewMenu, "PreviousPage"},
    {ViewMenu, "NextPage"},
    {ViewMenu, ""},
    {ViewMenu, "ShowProblems"},
    {ViewMenu, "ShowChanges"},
    {HelpMenu, "ShowManual"},
    {HelpMenu, "ABOUT"},
};

/// Before which character of its caption the mark of a page's key stands.
constexpr int pageMarks[OverviewTab] = {0, 0, 7, 2, 0, 7, 0, 5};

} // namespace

EditorMenus::EditorMenus(const MenuParts& parts) : QObject(&parts.Window), parts_(parts) {
    for (const MenuTitle& title : titles) {
        QMenu* menu = parts.Window.menuBar()->addMenu(tr(title.Title));
        menu->setObjectName(QLatin1StringView(title.Name));
        menu->setToolTipsVisible(true);
        menus_.push_back(menu);
    }
    edit_ = Menu(EditMenu);
}

void EditorMenus::Fill() {
    MakeFileMenus();
    MakeEditActions();
    modes_ = MakeChoices(NameKind::Mode, "ChooseMode", u"Alt+"_s);
    outputs_ = MakeChoices(NameKind::Output, "ChooseOutput", u"Ctrl+"_s);
    MakePageActions();
    connect(Make("ShowManual", tr("&Manual"), u"F1"_s), &QAction::triggered, this, &EditorMenus::ShowManual);
    connect(Make("ProgrammingHistory", tr("Programming &History ..."), {}), &QAction::triggered, this,
            &EditorMenus::HistoryWanted);
    connect(Make("LinkDoctor", tr("&What Is Wrong? ..."), {}), &QAction::triggered, this,
            &EditorMenus::DoctorWanted);
    for (const MenuEntry& entry : entries) {
        QMenu* menu = Menu(entry.Menu);
        const QString name = FromConstant(entry.Name);
        if (entry.Name.empty()) {
            menu->addSeparator();
        } else if (entry.Name == "*") {
            menu->addActions(entry.Menu == ModeMenu     ? modes_.Actions
                             : entry.Menu == OutputMenu ? outputs_.Actions
                                                        : pages_);
        } else if (auto* below = parts_.Window.findChild<QMenu*>(name)) {
            menu->addMenu(below);
        } else {
            menu->addAction(parts_.Window.findChild<QAction*>(name));
        }
    }
    connect(Menu(ModeMenu), &QMenu::aboutToShow, this,
            [this] { ShowChoices(modes_, static_cast<std::size_t>(parts_.View.CurrentMode())); });
    connect(Menu(OutputMenu), &QMenu::aboutToShow, this,
            [this] { ShowChoices(outputs_, parts_.View.Output()); });
    connect(Menu(ViewMenu), &QMenu::aboutToShow, this, &EditorMenus::ShowPages);
    connect(edit_, &QMenu::aboutToShow, this, &EditorMenus::ShowPastes);
}

QAction* EditorMenus::Make(const char* name, const QString& text, const QString& shortcut) {
    auto* action = new QAction(text, &parts_.Window);
    action->setObjectName(QLatin1StringView(name));
    action->setShortcut(QKeySequence(shortcut));
    parts_.Window.addAction(action);
    return action;
}

void EditorMenus::MakeFileMenus() {
    templates_ = new QMenu(tr("New from &Template"), &parts_.Window);
    templates_->setObjectName(u"Templates"_s);
    connect(new TemplateMenu(*templates_, parts_.TemplateFolders), &TemplateMenu::Chosen, this,
            &EditorMenus::TemplateChosen);
    recent_ = new QMenu(tr("Open &Recent"), &parts_.Window);
    recent_->setObjectName(u"RecentFiles"_s);
    connect(new RecentFiles(*recent_, parts_.Settings), &RecentFiles::Chosen, this, &EditorMenus::FileChosen);
    connect(Make("PrintOverview", tr("Print O&verview ..."), {}), &QAction::triggered, &parts_.Exports,
            &ExportCommands::PrintOverviewCommand);
    connect(Make("Quit", tr("&Quit"), u"Ctrl+Q"_s), &QAction::triggered, &parts_.Window, &QWidget::close);
}

void EditorMenus::MakeEditActions() {
    const auto mode = [this] { return static_cast<std::size_t>(parts_.View.CurrentMode()); };
    connect(Make("CopyMode", tr("Copy &Mode"), {}), &QAction::triggered, this,
            [this, mode] { parts_.Clipboard.CopyMode(mode()); });
    connect(Make("PasteMode", tr("Paste M&ode"), {}), &QAction::triggered, this,
            [this, mode] { parts_.Clipboard.PasteMode(mode()); });
    connect(Make("CopyOutput", tr("Copy &Levels of the Output"), {}), &QAction::triggered, this,
            [this, mode] { parts_.Clipboard.CopyOutput(mode(), parts_.View.Output()); });
    connect(Make("PasteOutput", tr("Paste L&evels of an Output"), {}), &QAction::triggered, this,
            [this, mode] { parts_.Clipboard.PasteOutput(mode(), parts_.View.Output()); });
}

EditorMenus::Choices EditorMenus::MakeChoices(NameKind kind, const char* name, const QString& modifier) {
    Choices choices = {kind, {}};
    for (std::size_t i = 0; i < CountOf(kind); ++i) {
        QAction* action = Make(name, {}, modifier + QString::number(i + 1));
        action->setObjectName(ElementName(name, i));
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, kind, i] {
            const Selectors& selectors = *parts_.Pages.Selectors;
            (kind == NameKind::Mode ? selectors.Modes : selectors.UsePanel)[i]->setChecked(true);
        });
        choices.Actions += action;
    }
    ShowChoices(choices, CountOf(kind));
    return choices;
}

void EditorMenus::ShowChoices(const Choices& choices, std::size_t chosen) const {
    for (std::size_t i = 0; i < CountOf(choices.Kind); ++i) {
        // The number is the key of the entry.
        QString text = MenuText(NumberAndName(parts_.View.ShownNames(), choices.Kind, i));
        const qsizetype number = FromConstant(NumberText(choices.Kind, i)).size() - 1;
        QAction* action = choices.Actions[static_cast<qsizetype>(i)];
        action->setText(text.insert(number, u'&'));
        action->setChecked(i == chosen);
    }
}

void EditorMenus::MakePageActions() {
    for (int page = 0; page < OverviewTab; ++page) {
        QAction* action = Make("ShowPage", parts_.Tabs.tabText(page).insert(pageMarks[page], u'&'), {});
        action->setObjectName(ElementName("ShowPage", static_cast<std::size_t>(page)));
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, page] { parts_.Tabs.setCurrentIndex(page); });
        pages_ += action;
    }
    connect(Make("PreviousPage", tr("Pre&vious Page"), u"Ctrl+PgUp"_s), &QAction::triggered, this,
            [this] { TurnPages(-1); });
    connect(Make("NextPage", tr("Ne&xt Page"), u"Ctrl+PgDown"_s), &QAction::triggered, this,
            [this] { TurnPages(+1); });
}

void EditorMenus::ShowPages() const {
    for (int page = 0; page < OverviewTab; ++page) {
        pages_[page]->setChecked(parts_.Tabs.currentIndex() == page);
        pages_[page]->setEnabled(parts_.Tabs.isTabEnabled(page));
    }
}

void EditorMenus::TurnPages(int direction) {
    const int count = parts_.Tabs.count();
    int page = parts_.Tabs.currentIndex();
    do {
        page = (page + direction + count) % count;
    } while (!parts_.Tabs.isTabEnabled(page));
    parts_.Tabs.setCurrentIndex(page);
}

void EditorMenus::ShowPastes() const {
    parts_.Window.findChild<QAction*>(u"PasteMode"_s)->setEnabled(ClipboardMenus::HoldsMode());
    parts_.Window.findChild<QAction*>(u"PasteOutput"_s)->setEnabled(ClipboardMenus::HoldsOutput());
}

void EditorMenus::SetOnline(bool online) {
    for (QMenu* menu : {recent_, templates_}) {
        if (menu != nullptr)
            menu->setEnabled(!online);
    }
}

void EditorMenus::ShowManual() { ManualForm::ShowFor(parts_.Window); }

} // namespace vek
