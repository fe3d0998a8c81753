#include "pages/OverviewMenu.h"

#include "pages/Overview.h"

namespace vek {

using namespace Qt::StringLiterals;

OverviewMenu::OverviewMenu(Overview& overview)
    : QMenu(&overview), overview_(overview), place_(overview.Current()) {
    setObjectName(u"OverviewMenu"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    AddPlaceEntries();
    addSeparator();
    AddCompareEntries();
    addSeparator();
    AddZoomEntry(tr("Zoom In"), overview.Zoom() + Overview::zoomStep);
    AddZoomEntry(tr("Zoom Out"), overview.Zoom() - Overview::zoomStep);
    AddZoomEntry(tr("Normal Size"), Overview::usualZoom);
    addSeparator();
    connect(addAction(tr("Print Overview…")), &QAction::triggered, &overview, &Overview::PrintRequested);
}

QString OverviewMenu::Called(NameKind kind, std::size_t index) const {
    return PlaceWords(overview_.Content().Called, kind, index).replace(u'&', "&&"_L1);
}

void OverviewMenu::AddWish(const QString& text, Wish wish, const OverviewPlace& place) {
    connect(addAction(text), &QAction::triggered, this, [this, wish, place] {
        Q_EMIT(overview_.*wish)(place);
    });
}

void OverviewMenu::AddPlaceEntries() {
    const OverviewPlace mode = {place_.Mode, std::nullopt};
    const QString modeName = Called(NameKind::Mode, *mode.Mode);
    if (place_.Output) {
        const QString name = modeName + u", "_s + Called(NameKind::Output, *place_.Output);
        AddWish(tr("Go to %1").arg(name), &Overview::Activated, place_);
        addSeparator();
        AddWish(tr("Copy Levels of %1").arg(name), &Overview::CopyRequested, place_);
        AddWish(tr("Paste Levels to %1").arg(name), &Overview::PasteRequested, place_);
    } else {
        AddWish(tr("Go to %1").arg(modeName), &Overview::Activated, mode);
        addSeparator();
    }
    AddWish(tr("Copy %1").arg(modeName), &Overview::CopyRequested, mode);
    AddWish(tr("Paste to %1").arg(modeName), &Overview::PasteRequested, mode);
}

void OverviewMenu::AddCompareEntries() {
    const std::size_t mode = *place_.Mode;
    auto* with = addMenu(tr("Compare Mode %1 with").arg(mode + 1));
    for (std::size_t other = 0; other < modeCount; ++other) {
        if (other != mode)
            connect(with->addAction(Called(NameKind::Mode, other)), &QAction::triggered, this,
                    [this, mode, other] {
                        overview_.Compare({mode, other});
                    });
    }
    auto* end = addAction(tr("End Comparison"));
    end->setEnabled(!overview_.Compared().empty());
    connect(end, &QAction::triggered, this, [this] { overview_.Compare({}); });
}

void OverviewMenu::AddZoomEntry(const QString& text, int percent) {
    connect(addAction(text), &QAction::triggered, this, [this, percent] { overview_.SetZoom(percent); });
}

} // namespace vek
