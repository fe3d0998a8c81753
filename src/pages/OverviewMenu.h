// What can be done with the current place of the overview.
#pragma once

#include "pages/OverviewCells.h"
#include "pages/OverviewGeometry.h"

#include <QMenu>

namespace vek {

class Overview;

/// Belongs to the overview, whose signals it raises, and goes when it is closed.
class OverviewMenu : public QMenu {
    Q_OBJECT

  public:
    explicit OverviewMenu(Overview& overview);

  private:
    using Wish = void (Overview::*)(const OverviewPlace& place);

    void AddWish(const QString& text, Wish wish, const OverviewPlace& place);
    void AddPlaceEntries();
    void AddCompareEntries();
    void AddZoomEntry(const QString& text, int percent);
    QString Called(NameKind kind, std::size_t index) const;

    Overview& overview_;
    const OverviewPlace place_;
};

} // namespace vek
