// The link doctor: what stands in the way of a Matrix Vek, port by port, and the likeliest cause.
#pragma once

#include "device/EditorServices.h"
#include "dialogs/WindowMessages.h"
#include "link/DoctorReport.h"
#include "link/LinkDoctor.h"

#include <QDialog>

#include <memory>
#include <vector>

class QLabel;
class QPushButton;
class QTextCursor;
class QTextEdit;

namespace vek {

class PortTurns;

/// Opened window-modal; waits for its turn, then examines all ports and fills in as it goes. Closing it ends
/// the examination at once and leaves every port closed.
class DoctorWindow : public QDialog {
    Q_OBJECT

  public:
    /// All must outlive the window. While `online` it examines nothing and says why.
    DoctorWindow(const EditorServices& services, PortTurns& turns, const DeviceTypeList& types, bool online,
                 QWidget* parent);

  public Q_SLOTS:
    void open() override;
    /// Escape and the window's close button.
    void reject() override;

  private:
    QLayout* MakeButtons();
    void Examine();
    Task<> ExamineInTurn();
    void ShowLines(std::vector<ReportLine> lines);
    void Append(QTextCursor& end, const ReportLine& line) const;
    void CopyText() const;

    const EditorServices& services_;
    PortTurns& turns_;
    const DeviceTypeList& types_;
    bool online_;
    WindowMessages messages_;
    std::unique_ptr<SerialControl> port_;
    std::unique_ptr<OneShotTimer> timer_;
    std::unique_ptr<LinkDoctor> doctor_;
    std::vector<ReportLine> lines_; ///< shown
    QTextEdit* entries_;
    QLabel* state_;
    QPushButton* again_;
    RunningTask conversation_;
};

} // namespace vek
