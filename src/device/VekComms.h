// The programming window: finds the devices on the serial ports and programs the chosen one.
#pragma once

#include "device/EditorServices.h"
#include "dialogs/WindowMessages.h"
#include "link/VekLink.h"

#include <QDialog>

#include <memory>

class QLabel;
class QProgressBar;
class QPushButton;

namespace vek {

class PortRows;
class PortTurns;

/// Shown modally with exec(); waits for its turn and searches by itself once it is up. Closing it ends the
/// conversation with the device at once and leaves every port closed.
class VekComms : public QDialog, private LinkOutcomes, private ProgrammingOutcomes {
    Q_OBJECT

  public:
    /// All must outlive the window.
    VekComms(const EditorServices& services, PortTurns& turns, const DeviceTypeList& types,
             const DownloadImage& image, QWidget* parent = nullptr);
    ~VekComms() override;

    /// The program has to end: as Cancel, but a download leaves the device restarted. finished() follows,
    /// perhaps at once.
    void EndInOrder();
    /// What the checks say of the configuration, above the button that programs.
    void TellProblemsOf(const MatrixConfig& config);
    /// A device has taken the whole configuration.
    bool Programmed() const { return programmed_; }
    /// The port whose device holds a part of the configuration only; empty when there is none.
    QString IncompletePort() const;

  public Q_SLOTS:
    /// Escape and the window's close button.
    void reject() override;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void PortSearched(std::size_t row, const PortFinding& finding) override;
    Task<> Failed(Failure failure) override;
    void Progress(DownloadProgress progress) override;
    void DownloadBegins() override;
    Task<bool> WantsAnother() override;

    QWidget* MakePleaseWait();
    QLayout* MakeButtons();
    // Unless a conversation runs already.
    void Search();
    void Program();
    void DisableButtons();
    Task<> SearchAllPorts();
    Task<> ProgramOnPort(std::size_t row);
    void Converse(Task<> task);

    PortTurns& turns_;
    const DownloadImage& image_;
    WindowMessages messages_;
    std::unique_ptr<SerialControl> MSComm1_;
    std::unique_ptr<OneShotTimer> Timer1_;
    PortRows* ports_;
    QWidget* PleaseWait_;
    QLabel* Label2_;
    QLabel* Label3_;
    QProgressBar* ProgressBar1_;
    QLabel* problems_;
    QPushButton* Command1_;
    QPushButton* ProgramVekButton_;
    VekLink link_;
    bool activated_ = false;
    bool ending_ = false;
    bool asking_ = false; ///< the conversation waits for the user
    DownloadProgress progress_;
    bool begun_ = false; ///< the download
    bool programmed_ = false;
    RunningTask conversation_;
};

} // namespace vek
