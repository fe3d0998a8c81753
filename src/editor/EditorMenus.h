// The menu bar.
#pragma once

#include "model/Names.h"

#include <QList>
#include <QObject>

#include <string>
#include <vector>

class QAction;
class QMainWindow;
class QMenu;

namespace vek {

class ClipboardMenus;
class ExportCommands;
class ModelView;
class PageTabs;
class UserSettings;
struct EditorPages;

/// What the menus act on; owned by the window.
struct MenuParts {
    QMainWindow& Window;
    PageTabs& Tabs;
    const EditorPages& Pages;
    ModelView& View;
    ClipboardMenus& Clipboard;
    ExportCommands& Exports;
    UserSettings& Settings;
    std::vector<std::string> TemplateFolders; ///< paths in the system's own bytes
};

/// The menus are empty to begin with, but for what others put into them, and filled when the window has been
/// painted. Their entries are the window's actions by name, and those that only the menus have.
class EditorMenus : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object, which belongs to the window.
    explicit EditorMenus(const MenuParts& parts);

    /// For the actions that take back and make again.
    QMenu& Edit() { return *edit_; }
    void Fill();
    /// What would replace the configuration waits while online.
    void SetOnline(bool online);

  Q_SIGNALS:
    /// Paths in the system's own bytes.
    void FileChosen(const std::string& path);
    void TemplateChosen(const std::string& path);
    void HistoryWanted();
    void DoctorWanted();

  private:
    /// Actions that choose one of several things.
    struct Choices {
        NameKind Kind;
        QList<QAction*> Actions;
    };

    QMenu* Menu(int index) const { return menus_[static_cast<std::size_t>(index)]; }
    QAction* Make(const char* name, const QString& text, const QString& shortcut);
    void MakeEditActions();
    void MakeFileMenus();
    void MakePageActions();
    Choices MakeChoices(NameKind kind, const char* name, const QString& modifier);
    void ShowChoices(const Choices& choices, std::size_t chosen) const;
    void ShowPages() const;
    void ShowPastes() const;
    void TurnPages(int direction);
    void ShowManual();

    MenuParts parts_;
    std::vector<QMenu*> menus_;
    QMenu* edit_;
    QMenu* recent_ = nullptr;
    QMenu* templates_ = nullptr;
    Choices modes_ = {};
    Choices outputs_ = {};
    QList<QAction*> pages_;
};

} // namespace vek
