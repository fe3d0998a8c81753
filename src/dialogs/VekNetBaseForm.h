// The dialog that sets the VekNet base address of the unit.
#pragma once

#include "dialogs/WindowMessages.h"

#include <QDialog>

#include <cstdint>

class QLabel;

namespace vek {

class KeyFilteredLineEdit;
class UpDownButtons;

/// Children: `Text1`, `Up`, `Down`, `Done`, `Cancel`. Leaving the box limits the address to 1 … 2047; Enter
/// in the box takes the number as it stands. Show with exec(), then ask Changed() and Base().
class VekNetBaseForm : public QDialog {
    Q_OBJECT
    Q_PROPERTY(int Address READ Address WRITE SetAddress)

  public:
    /// `base` is shown as it is. The dialogs must outlive the form.
    VekNetBaseForm(std::int16_t base, Dialogs& dialogs, QWidget* parent = nullptr);

    /// The address being edited; setting it limits it to 1 … 2047 and shows it.
    int Address() const { return address_; }
    void SetAddress(int value);

    /// The base address after the dialog: the former one unless Done stored another.
    std::int16_t Base() const { return base_; }
    bool Changed() const { return changed_; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    double TypedNumber() const;
    void LeaveBox();
    void Store();
    void ShowBlock();

    WindowMessages messages_;
    std::int16_t base_;
    bool changed_ = false;
    int address_;
    KeyFilteredLineEdit* Text1_;
    UpDownButtons* buttons_;
    QLabel* block_;
};

} // namespace vek
