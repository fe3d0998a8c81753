// The page "VekNet Addresses": a label per address function; those of the per-output groups show the current
// output.
#pragma once

#include "model/Names.h"
#include "model/VekNetAddresses.h"

#include <QWidget>

#include <array>
#include <span>

class QGridLayout;

namespace vek {

class AddressLabel;
class FocusGrid;
class NameLabel;

class AddressesPage : public QWidget {
    Q_OBJECT

  public:
    explicit AddressesPage(QWidget* parent = nullptr);

    /// The labels of a group by function index. Owned by this page.
    std::span<AddressLabel*> Labels(AddressGroup group);

    /// Captions every label: base plus offset where the function is enabled, "OFF" elsewhere.
    void ShowAddresses(const AddressEnables& enables, int base, std::size_t output);

    /// Names the rows, and what a screen reader says.
    void ShowNames(const Names& names);

  Q_SIGNALS:
    void Clicked(vek::AddressGroup group, std::size_t function);
    void MenuRequested(vek::AddressGroup group, std::size_t function, const QPoint& globalPosition);

  private:
    struct Frame;

    Frame MakeFrame(const QString& title);
    QWidget* MakeModeFrame();
    QWidget* MakeInputFrame();
    QWidget* MakeVolumeFrame();
    /// The rows of a group, each with a label of either side.
    void AddRows(Frame& frame, AddressGroup group);
    AddressLabel* MakeLabel(AddressGroup group, std::size_t function);
    QString MeaningOf(AddressGroup group, std::size_t function) const;
    void TellMeanings();

    Names names_;
    std::size_t output_ = 0;
    std::array<NameLabel*, modeCount> modeNames_ = {};
    std::array<NameLabel*, inputCount> inputNames_ = {};

    std::array<AddressLabel*, modeFunctionCount> VekNetLabel2_ = {};
    std::array<AddressLabel*, routeFunctionCount> VekNetLabelRoute_ = {};
    std::array<AddressLabel*, routeControlFunctionCount> VekNetLabelRouteControl_ = {};
    std::array<AddressLabel*, volumeFunctionCount> VolumeVekNetLabel_ = {};
};

} // namespace vek
