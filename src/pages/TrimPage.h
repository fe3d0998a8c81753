// The pages "Input Trims" and "Output Trims": eight faders in a row.
#pragma once

#include "model/Names.h"

#include <QWidget>

#include <array>
#include <cstddef>
#include <string_view>

namespace vek {

class LevelTrim;
class NameLabel;

class TrimPage : public QWidget {
    Q_OBJECT

  public:
    /// `name` is the name of the control array; what is trimmed stands above each fader ("Input 1").
    TrimPage(std::string_view name, const QString& title, NameKind kind, QWidget* parent = nullptr);

    /// Names what is trimmed.
    void ShowNames(const Names& names);

    std::array<LevelTrim*, 8> Trims; ///< owned by this page

  Q_SIGNALS:
    void Edited();
    void TextClicked(std::size_t index);

  private:
    NameKind kind_;
    std::array<NameLabel*, 8> names_;
};

} // namespace vek
