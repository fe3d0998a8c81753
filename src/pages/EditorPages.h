// The pages of the main window and what they are called.
#pragma once

#include "pages/PageTab.h"

class QTabWidget;
class QWidget;

namespace vek {

class AddressesPage;
class LevelsPage;
class NotesPage;
class OnlinePage;
class OnlineStrip;
class PageHeading;
class RemotePanelsPage;
class Rs232Page;
class Selectors;
class TrimPage;
struct PortSources;

/// The widgets that show and edit the configuration; owned by the window. The pages and the strip are made
/// when the window has been painted, all at a time, and null before: their hundreds of controls would hold it
/// up.
struct EditorPages {
    vek::Selectors* Selectors = nullptr;
    PageHeading* Heading = nullptr;
    RemotePanelsPage* RemotePanels = nullptr;
    LevelsPage* Levels = nullptr;
    AddressesPage* Addresses = nullptr;
    Rs232Page* Rs232 = nullptr;
    TrimPage* InputTrims = nullptr;
    TrimPage* OutputTrims = nullptr;
    NotesPage* Notes = nullptr;
    OnlinePage* Online = nullptr;
    OnlineStrip* Strip = nullptr;
    QWidget* OverviewPage = nullptr; ///< empty: the overview is made when it is first wanted

    bool Made() const { return Levels != nullptr; }
};

// The tabs get their pages. Selectors, heading and strip have no place yet.

/// Makes the tabs, selectors and heading.
EditorPages MakeTabs(QTabWidget& tabs);
/// Makes the rest.
void MakePages(EditorPages& pages, QTabWidget& tabs, const PortSources& ports);

} // namespace vek
