#include "pages/EditorPages.h"

#include "pages/AddressesPage.h"
#include "pages/LevelsPage.h"
#include "pages/NotesPage.h"
#include "pages/OnlinePage.h"
#include "pages/RemotePanelsPage.h"
#include "pages/Rs232Page.h"
#include "pages/Selectors.h"
#include "pages/TrimPage.h"

#include <QTabWidget>

namespace vek {

EditorPages MakeEditorPages(QTabWidget& tabs, std::function<QStringList()> deviceNames) {
    const EditorPages pages = {
        .Selectors = new Selectors(tabs.parentWidget()),
        .RemotePanels = new RemotePanelsPage,
        .Levels = new LevelsPage,
        .Addresses = new AddressesPage,
        .InputTrims = new TrimPage("InputLevelTrim", QObject::tr("Input Trims"), QObject::tr("Input %1")),
        .OutputTrims = new TrimPage("OutputLevelTrim", QObject::tr("Output Trims"), QObject::tr("Output %1")),
        .Notes = new NotesPage,
        .Online = new OnlinePage(std::move(deviceNames)),
    };
    tabs.addTab(pages.RemotePanels, QObject::tr("Remote Panels"));
    tabs.addTab(pages.Levels, QObject::tr("Levels"));
    tabs.addTab(pages.Addresses, QObject::tr("VekNet Addresses"));
    tabs.addTab(new Rs232Page, QObject::tr("RS232 Codes"));
    tabs.addTab(pages.InputTrims, QObject::tr("Input Trims"));
    tabs.addTab(pages.OutputTrims, QObject::tr("Output Trims"));
    tabs.addTab(pages.Notes, QObject::tr("Notes"));
    tabs.addTab(pages.Online, QObject::tr("Online"));
    return pages;
}

} // namespace vek
