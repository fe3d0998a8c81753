// The page "RS232 Codes": the codes with which a host drives each output. They are the same in every
// configuration.
#pragma once

#include "model/Names.h"

#include <QWidget>

#include <array>
#include <vector>

class QLabel;

namespace vek {

class NameLabel;

/// The codes are texts to select and copy; arrow keys go from one to the next.
class Rs232Page : public QWidget {
    Q_OBJECT

  public:
    explicit Rs232Page(QWidget* parent = nullptr);

    void ShowNames(const Names& names);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void MakeHeadings();
    void MakeRow(std::size_t output);

    std::array<NameLabel*, outputCount> names_ = {};
    std::vector<QLabel*> codes_; ///< row by row
    bool selectable_ = false;
};

} // namespace vek
