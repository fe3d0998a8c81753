// The table of the serial ports COM1 to COM4 as the programming window and the online page show it.
#pragma once

#include "link/PortTable.h"

#include <QStringList>
#include <QWidget>

#include <array>
#include <functional>

class QButtonGroup;
class QFrame;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace vek {

/// Names of the controls; element i of each is Name_i, except for a blanking label that all rows share the
/// name of.
struct PortRowNames {
    std::string_view Option;
    std::string_view Type;
    std::string_view Blanking;
    std::string_view BlankingLabel;
    bool NumberedBlankingLabel;
};

class ElidedLabel;

class PortRows : public QWidget {
    Q_OBJECT

  public:
    /// Tells the device of each port ("ttyUSB0"), empty where there is none. Asking takes a look at all
    /// ports, so it is done when the table is shown and by RefreshDevices(), not before.
    using DeviceNames = std::function<QStringList()>;

    PortRows(const PortRowNames& names, DeviceNames deviceNames, QWidget* parent = nullptr);

    /// Looks anew which devices there are: adapters come and go.
    void RefreshDevices();
    /// The port of a row as the user reads it: "COM1 (ttyUSB0)".
    QString PortName(std::size_t row) const;

    void ShowBlanking(std::size_t row, bool visible);
    void ShowOption(std::size_t row, bool visible);
    void EnableOption(std::size_t row, bool enabled);
    void SelectOption(std::size_t row, bool selected);
    bool OptionSelected(std::size_t row) const;
    void ShowVekType(std::size_t row, bool visible);
    void SetVekType(std::size_t row, const std::string& text);

    /// While locked the user cannot choose a row.
    void LockOptions(bool locked);

  Q_SIGNALS:
    /// The user chose a row; not raised by SelectOption().
    void Chosen(std::size_t row);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    struct Row {
        QLabel* Number;
        ElidedLabel* Device;
        QRadioButton* Option;
        QLineEdit* VekType;
        QFrame* Blanking;
    };
    Row MakeRow(const PortRowNames& names, std::size_t row);
    void ShowDevice(std::size_t row, const QString& device);

    DeviceNames deviceNames_;
    QStringList devices_; ///< by row
    std::array<Row, portCount> rows_;
    QButtonGroup* options_;
};

/// Forwards the table part of a view of the link to PortRows.
template <typename View>
class WithPortRows : public View {
  public:
    void ShowBlanking(std::size_t row, bool visible) override { Ports().ShowBlanking(row, visible); }
    void ShowOption(std::size_t row, bool visible) override { Ports().ShowOption(row, visible); }
    void EnableOption(std::size_t row, bool enabled) override { Ports().EnableOption(row, enabled); }
    void SelectOption(std::size_t row, bool selected) override { Ports().SelectOption(row, selected); }
    bool OptionSelected(std::size_t row) const override { return Ports().OptionSelected(row); }
    void ShowVekType(std::size_t row, bool visible) override { Ports().ShowVekType(row, visible); }
    void SetVekType(std::size_t row, const std::string& text) override { Ports().SetVekType(row, text); }

  protected:
    virtual PortRows& Ports() const = 0;
};

} // namespace vek
