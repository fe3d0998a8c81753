// The line above the pages that says what the page in front shows.
#pragma once

#include "controls/ElidedLabel.h"
#include "model/Names.h"

#include <vector>

namespace vek {

/// "Levels of Mode 2 Evening, Output 3 Foyer", in bold type. An empty line until a page is shown: another
/// font takes its time.
class PageHeading : public ElidedLabel {
    Q_OBJECT

  public:
    explicit PageHeading(QWidget* parent = nullptr);

    /// The page in front, a PageTab.
    void ShowPage(int tab);
    /// The chosen mode and output, 0 … 7.
    void ShowPlace(std::size_t mode, std::size_t output, const Names& names);
    /// The modes (0 … 7) that the overview compares; fewer than two for none.
    void ShowCompared(const std::vector<std::size_t>& modes);

  private:
    void ShowText();
    QString OverviewText() const;

    int tab_ = 0;
    QString mode_;
    QString output_;
    Names names_;
    std::vector<std::size_t> compared_;
};

} // namespace vek
