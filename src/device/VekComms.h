// The programming window: finds the devices on the serial ports and programs the chosen one.
#pragma once

#include "device/EditorServices.h"
#include "dialogs/WindowMessages.h"
#include "link/VekLink.h"

#include <QDialog>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

class QLabel;
class QProgressBar;
class QPushButton;

namespace vek {

class DoctorWindow;
class PortRows;
class PortTurns;

/// What is sent.
struct ProgrammingJob {
    DownloadImage Image;
    MatrixConfig Config; ///< of which the image was built
    std::string File;    ///< its path; empty for one without a file
};

/// Shown modally with exec(); waits for its turn and searches by itself once it is up. Closing it ends the
/// conversation with the device at once and leaves every port closed.
class VekComms : public QDialog, private LinkOutcomes, private ProgrammingOutcomes {
    Q_OBJECT

  public:
    /// All must outlive the window.
    VekComms(const EditorServices& services, PortTurns& turns, const DeviceTypeList& types,
             const ProgrammingJob& job, QWidget* parent = nullptr);
    ~VekComms() override;

    /// The program has to end: as Cancel, but a download leaves the device restarted. finished() follows,
    /// perhaps at once.
    void EndInOrder();
    /// A device has taken the whole configuration.
    bool Programmed() const { return programmed_; }
    /// The last attempt; nothing before the first.
    std::optional<JournalEntry> LastAttempt() const;
    /// That the programming history could not be written; empty when it was.
    const QString& HistoryProblem() const { return historyProblem_; }
    /// The port whose device holds a part of the configuration only; empty when there is none.
    QString IncompletePort() const;

  public Q_SLOTS:
    /// Escape and the window's close button.
    void reject() override;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void PortSearchBegins(std::size_t row) override { searchedRow_ = row; }
    void Searching(const SearchStep& step) override;
    void PortSearched(std::size_t row, const PortFinding& finding) override;
    Task<> Failed(Failure failure) override;
    void DeviceFound(const PortFinding& finding) override;
    void Progress(DownloadProgress progress) override;
    void DownloadBegins() override;
    Task<bool> WantsAnother() override;

    QWidget* MakeSummary();
    QWidget* MakePleaseWait();
    QLayout* MakeButtons();
    void BeginAttempt(std::size_t row);
    void EndAttempt(AttemptResult result);
    void TakeProblem();
    // Unless a conversation runs already.
    void Search();
    void Program();
    void DisableButtons();
    /// A conversation has ended with an exception: all can be tried again.
    void Recover();
    void AskDoctor();
    Task<> SearchAllPorts();
    Task<> ProgramOnPort(std::size_t row);
    void Converse(Task<> task);

    const EditorServices& services_;
    PortTurns& turns_;
    const DeviceTypeList& types_;
    const ProgrammingJob& job_;
    const ProgrammingJournal journal_;
    WindowMessages messages_;
    std::unique_ptr<SerialControl> MSComm1_;
    std::unique_ptr<OneShotTimer> Timer1_;
    PortRows* ports_;
    QWidget* PleaseWait_;
    QLabel* Label2_;
    QLabel* Label3_;
    QProgressBar* ProgressBar1_;
    QLabel* details_;
    QPushButton* Command1_;
    QLabel* searchHint_;
    QPushButton* whatIsWrong_;
    QPushButton* ProgramVekButton_;
    VekLink link_;
    bool activated_ = false;
    bool ending_ = false;
    bool asking_ = false; ///< the conversation waits for the user
    DownloadProgress progress_;
    bool begun_ = false;             ///< the download
    std::int64_t downloadBegan_ = 0; ///< by the clock of the services
    std::size_t searchedRow_ = 0;
    std::optional<AttemptRecord> attempt_;
    QString historyProblem_;
    bool programmed_ = false;
    std::unique_ptr<DoctorWindow> doctor_;
    RunningTask conversation_;
};

} // namespace vek
