#include "pages/EditorPages.h"

#include "pages/AddressesPage.h"
#include "pages/LevelsPage.h"
#include "pages/NotesPage.h"
#include "pages/OnlinePage.h"
#include "pages/OnlineStrip.h"
#include "pages/PageHeading.h"
#include "pages/PageScroll.h"
#include "pages/RemotePanelsPage.h"
#include "pages/Rs232Page.h"
#include "pages/Selectors.h"
#include "pages/TrimPage.h"

#include <QTabWidget>

namespace vek {

namespace {

/// Where nothing has to be wide, pages do not stretch over large screens: no reader likes to follow a row
/// across them. In characters of average width.
constexpr int widestPage = 170;

const char* const captions[] = {
    QT_TR_NOOP("Remote Panels"), QT_TR_NOOP("Levels"),      QT_TR_NOOP("VekNet Addresses"),
    QT_TR_NOOP("RS232 Codes"),   QT_TR_NOOP("Input Trims"), QT_TR_NOOP("Output Trims"),
    QT_TR_NOOP("Notes"),         QT_TR_NOOP("Online")};

/// A page whose place is the tab; below its least size it scrolls.
template <typename Page>
Page* Place(QTabWidget& tabs, PageTab tab, Page* page) {
    page->setMaximumWidth(page->fontMetrics().averageCharWidth() * widestPage);
    static_cast<PageScroll*>(tabs.widget(tab))->Hold(page);
    return page;
}

} // namespace

EditorPages MakeTabs(QTabWidget& tabs) {
    for (const char* caption : captions)
        tabs.addTab(new PageScroll, QObject::tr(caption));
    EditorPages pages;
    // The overview scrolls by itself.
    pages.OverviewPage = new QWidget;
    tabs.addTab(pages.OverviewPage, QObject::tr("Overview"));
    pages.Selectors = new Selectors(tabs.parentWidget());
    pages.Heading = new PageHeading(tabs.parentWidget());
    return pages;
}

void MakePages(EditorPages& pages, QTabWidget& tabs, const PortSources& ports) {
    pages.RemotePanels = Place(tabs, RemotePanelsTab, new RemotePanelsPage);
    pages.Levels = Place(tabs, LevelsTab, new LevelsPage);
    pages.Addresses = Place(tabs, AddressesTab, new AddressesPage);
    pages.Rs232 = Place(tabs, Rs232Tab, new Rs232Page);
    pages.InputTrims = Place(tabs, InputTrimsTab,
                             new TrimPage("InputLevelTrim", QObject::tr("Input Trims"), NameKind::Input));
    pages.OutputTrims = Place(tabs, OutputTrimsTab,
                              new TrimPage("OutputLevelTrim", QObject::tr("Output Trims"), NameKind::Output));
    pages.Notes = Place(tabs, NotesTab, new NotesPage);
    pages.Online = Place(tabs, OnlineTab, new OnlinePage(ports));
    pages.Strip = new OnlineStrip(tabs.parentWidget());
}

} // namespace vek
