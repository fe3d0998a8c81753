// The page "VekNet Addresses": a label per address function; those of the per-output groups show the current
// output.
#pragma once

#include "model/VekNetAddresses.h"

#include <QWidget>

#include <array>
#include <span>

class QGridLayout;

namespace vek {

class AddressLabel;

class AddressesPage : public QWidget {
    Q_OBJECT

  public:
    explicit AddressesPage(QWidget* parent = nullptr);

    /// The labels of a group by function index. Owned by this page.
    std::span<AddressLabel*> Labels(AddressGroup group);

    /// Captions every label: base plus offset where the function is enabled, "OFF" elsewhere.
    void ShowAddresses(const AddressEnables& enables, int base, std::size_t output);

  Q_SIGNALS:
    void Clicked(vek::AddressGroup group, std::size_t function);
    void MenuRequested(vek::AddressGroup group, std::size_t function, const QPoint& globalPosition);

  private:
    QWidget* MakeModeFrame();
    QWidget* MakeInputFrame();
    QWidget* MakeVolumeFrame();
    void AddPair(QGridLayout* grid, int row, const QString& caption, AddressGroup group,
                 std::size_t function);
    AddressLabel* MakeLabel(AddressGroup group, std::size_t function, const QString& caption);

    std::array<AddressLabel*, modeFunctionCount> VekNetLabel2_ = {};
    std::array<AddressLabel*, routeFunctionCount> VekNetLabelRoute_ = {};
    std::array<AddressLabel*, routeControlFunctionCount> VekNetLabelRouteControl_ = {};
    std::array<AddressLabel*, volumeFunctionCount> VolumeVekNetLabel_ = {};
};

} // namespace vek
