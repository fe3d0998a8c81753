// The pages of the main window and what they are called.
#pragma once

#include <QStringList>

#include <functional>

class QTabWidget;
class QWidget;

namespace vek {

class AddressesPage;
class LevelsPage;
class NotesPage;
class OnlinePage;
class RemotePanelsPage;
class Selectors;
class TrimPage;

/// The tabs of SSTab1 in order.
enum PageTab : int {
    RemotePanelsTab = 0,
    LevelsTab = 1,
    AddressesTab = 2,
    Rs232Tab = 3,
    InputTrimsTab = 4,
    OutputTrimsTab = 5,
    NotesTab = 6,
    OnlineTab = 7,
};

/// The widgets that show and edit the configuration; owned by the window.
struct EditorPages {
    vek::Selectors* Selectors;
    RemotePanelsPage* RemotePanels;
    LevelsPage* Levels;
    AddressesPage* Addresses;
    TrimPage* InputTrims;
    TrimPage* OutputTrims;
    NotesPage* Notes;
    OnlinePage* Online;
};

/// Makes the selectors (without a place yet) and the pages, which become the tabs. `deviceNames` tells the
/// devices of COM1 … COM4.
EditorPages MakeEditorPages(QTabWidget& tabs, std::function<QStringList()> deviceNames);

} // namespace vek
