// The table of the serial ports COM1 to COM4 as the programming window and the online page show it.
#pragma once

#include "link/PortFacts.h"
#include "link/PortFinding.h"

#include <QStringList>
#include <QWidget>

#include <array>
#include <functional>
#include <optional>

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
    std::string_view Finding;
    std::string_view Blanking;
    std::string_view BlankingLabel;
    bool NumberedBlankingLabel;
};

/// What is known of COM1 … COM4. Asked anew each time, because adapters come and go.
struct PortSources {
    /// The device of each port ("ttyUSB0"), empty where there is none.
    std::function<QStringList()> Names;
    /// What the system tells of row 0 … 3 besides.
    std::function<PortFacts(std::size_t row)> Facts;
};

class ElidedLabel;

class PortRows : public QWidget {
    Q_OBJECT

  public:
    /// Asking the sources takes a look at all ports, so it is done when the table is shown and by
    /// RefreshDevices(), not before.
    PortRows(const PortRowNames& names, PortSources sources, QWidget* parent = nullptr);

    /// What stands beside the button of a search.
    static QLabel* MakeSearchHint(QWidget* parent);

    /// Looks anew which devices there are: adapters come and go.
    void RefreshDevices();
    /// The port of a row as the user reads it: "COM1 (ttyUSB0)".
    QString PortName(std::size_t row) const;

    /// A search begins: nothing is known of any port, and none can be chosen.
    void BeginSearch();
    /// A search has to wait; the rows say why.
    void BeginWait(const QString& why);
    /// How far the search of this port is.
    void ShowSearch(std::size_t row, const QString& text);
    void ShowFinding(std::size_t row, const PortFinding& finding);
    /// The search has ended: the user may choose a Matrix Vek; none is chosen yet.
    void EndSearch();
    bool AnyMatrixVek() const;
    /// Gives the focus to the first option that can be chosen; false when there is none.
    bool FocusFirstFound();
    /// No port can be chosen any more, and what was found is forgotten.
    void Clear();

    /// Row 0 … 3 of the option that is checked.
    std::optional<std::size_t> ChosenRow() const;

    /// While locked no other option can become the checked one by mouse or by key.
    void LockChoice(bool locked);

  Q_SIGNALS:
    void Chosen(std::size_t row);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    struct Row {
        QLabel* Number;
        ElidedLabel* Device;
        QRadioButton* Option;
        QLineEdit* VekType;
        ElidedLabel* Finding;
        QFrame* Blanking;
        QLabel* BlankingLabel;
        bool Selectable = false; ///< a Matrix Vek is there
    };
    Row MakeRow(const PortRowNames& names, std::size_t row);
    void ShowDevice(std::size_t row, const QString& device);
    static void ShowText(const Row& row, const QString& finding);
    static void ShowOption(const Row& row, bool visible);
    void EnableOptions();
    void DeselectAll();
    void Cover(const QString& text);

    PortSources sources_;
    QStringList devices_; ///< by row
    std::array<Row, portCount> rows_;
    QButtonGroup* options_;
    bool locked_ = false;
};

} // namespace vek
