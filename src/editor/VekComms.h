// The programming window: finds the devices on the serial ports and programs the chosen one.
#pragma once

#include "editor/EditorServices.h"
#include "link/VekLink.h"
#include "pages/PortRows.h"

#include <QDialog>

#include <memory>

class QLabel;
class QProgressBar;
class QPushButton;

namespace vek {

/// Shown modally with exec(); searches by itself once it is up. Closing it ends whatever it waits for and
/// leaves every port closed.
class VekComms : public QDialog, private WithPortRows<VekLinkView> {
    Q_OBJECT

  public:
    /// The services and the list must outlive the window.
    VekComms(const EditorServices& services, const DeviceTypeList& types, const DownloadImage& image,
             QWidget* parent = nullptr);
    ~VekComms() override;

  public Q_SLOTS:
    /// Escape and the window's close button: closes at once, or as soon as the running wait has unwound.
    void reject() override;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    PortRows& Ports() const override { return *ports_; }
    void EnableProgramVek(bool enabled) override;
    void ShowPleaseWait(bool visible) override;
    void SetLabel2(const std::string& percentage) override;
    void SetLabel3(const std::string& activity) override;
    void SetProgressBar1(int value) override;
    void ErrorMessage(const std::string& title, const std::string& text) override;
    bool AskYesNo(const std::string& title, const std::string& text) override;

    QWidget* MakePleaseWait();
    QLayout* MakeButtons();
    void Search();
    void Program();
    /// Runs one operation with the buttons locked; closes the window afterwards if that was asked for
    /// meanwhile.
    template <typename Operation>
    void Run(Operation operation);

    Dialogs& dialogs_;
    const DownloadImage& image_;
    std::unique_ptr<SerialControl> MSComm1_;
    std::unique_ptr<OneShotTimer> Timer1_;
    PortRows* ports_;
    QWidget* PleaseWait_;
    QLabel* Label2_;
    QLabel* Label3_;
    QProgressBar* ProgressBar1_;
    QPushButton* Command1_;
    QPushButton* ProgramVekButton_;
    VekLink link_;
    bool activated_ = false;
    bool closeWanted_ = false;
};

} // namespace vek
