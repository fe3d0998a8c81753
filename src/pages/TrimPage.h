// The pages "Input Trims" and "Output Trims": eight faders in a row.
#pragma once

#include <QWidget>

#include <array>
#include <cstddef>
#include <string_view>

namespace vek {

class LevelTrim;

class TrimPage : public QWidget {
    Q_OBJECT

  public:
    /// `name` is the name of the control array, `caption` stands above each fader ("Input %1").
    TrimPage(std::string_view name, const QString& title, const QString& caption, QWidget* parent = nullptr);

    std::array<LevelTrim*, 8> Trims; ///< owned by this page

  Q_SIGNALS:
    void Edited();
    void TextClicked(std::size_t index);
};

} // namespace vek
