// The column beside the pages that chooses what they show: the frames "Mode" and "Output".
#pragma once

#include "model/Config.h"
#include "model/Names.h"
#include "pages/SelectorOption.h"

#include <QWidget>

#include <array>
#include <string_view>

namespace vek {

class Selectors : public QWidget {
    Q_OBJECT

  public:
    explicit Selectors(QWidget* parent = nullptr);

    /// Shows what the modes are called and which are in use, and the same of the outputs in a mode (0 … 7).
    void ShowStates(const MatrixConfig& config, std::size_t mode, const Names& names);
    /// Whether the page in front shows the chosen output, or all of them.
    void SetOutputConcerned(bool concerned);

    // Owned by this widget.
    std::array<SelectorOption*, modeCount> Modes;
    std::array<SelectorOption*, outputCount> UsePanel;

  Q_SIGNALS:
    void ModeChosen();
    void OutputChosen();
    /// Right click or menu key on a mode or an output (0 … 7).
    void ModeMenuRequested(std::size_t mode, const QPoint& globalPosition);
    void OutputMenuRequested(std::size_t output, const QPoint& globalPosition);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    using ChosenSignal = void (Selectors::*)();
    QWidget* MakeFrame(const QString& title, std::string_view name, std::array<SelectorOption*, 8>& options,
                       ChosenSignal chosen);
    void RequestMenu(QObject* option, const QPoint& globalPosition);
};

} // namespace vek
