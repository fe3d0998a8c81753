// The line above the pages that says what the page in front shows.
#pragma once

#include "controls/ElidedLabel.h"
#include "model/Names.h"

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

  private:
    void ShowText();

    int tab_ = 0;
    QString mode_;
    QString output_;
};

} // namespace vek
