// The main window and the programming window with a scripted device.
#pragma once

#include "editor/EditorFixture.h"

#include "device/PortTurns.h"
#include "device/VekComms.h"

namespace vek::test {

/// Answers searches at 9600, acknowledges everything else and collects the blocks.
class ObligingDevice {
  public:
    explicit ObligingDevice(ScriptedPort& port) : port_(port) {
        port_.OnOutput = [this](const ByteVector& bytes) { Answer(bytes); };
    }
    ByteVector Image;
    int Restarts = 0;
    std::size_t SilentAfter = 1000; ///< blocks
    std::function<void(std::size_t block)> OnBlock;

  private:
    void Answer(const ByteVector& bytes) {
        if (Image.size() / 8 >= SilentAfter)
            return;
        if (bytes == ByteVector{'K'} && port_.Rate == "9600,n,8,2")
            port_.Reply(1, {39, 2, 5, 255 - 39 - 2 - 5, 0});
        if (bytes.size() == 11) {
            Image.insert(Image.end(), bytes.begin() + 2, bytes.begin() + 10);
            port_.Reply(1, {240, 0});
            if (OnBlock)
                OnBlock(Image.size() / 8);
        }
        if (bytes == ByteVector{255} && port_.Rate == "9600,e,8,1") {
            ++Restarts;
            port_.Reply(1, {240, 0});
        }
    }
    ScriptedPort& port_;
};

class Programming : public EditorTest {
  protected:
    Programming() {
        port.Present = {1};
        CheckDeviceTypes(store, types);
        for (std::size_t i = 0; i < job.Image.Buffer.size(); ++i)
            job.Image.Buffer[i] = static_cast<std::uint8_t>(i * 7);
        job.Image.Length = imageLength;
        services.StateFolder = folder.Path();
    }
    /// Shows the window and runs its search, which is over when this returns.
    std::unique_ptr<VekComms> Searched() {
        auto form = std::make_unique<VekComms>(services, turns, types, job);
        form->show();
        Settle();
        return form;
    }
    /// DOWNLOAD, and in its window the first port; the device falls silent after so many blocks.
    void Download(std::size_t silentAfter) {
        device.Image.clear();
        device.SilentAfter = 1000;
        QTimer user;
        user.callOnTimeout([&] {
            auto* form = window->findChild<VekComms*>();
            auto* option = form == nullptr ? nullptr : form->findChild<QRadioButton*>(u"Option1_0"_s);
            if (port.Step() || boxes.AnyOpen() || option == nullptr || option->isChecked())
                return;
            option->click();
            device.SilentAfter = silentAfter;
            Press(*form, "ProgramVek");
        });
        user.start(0);
        Trigger(u"DOWNLOAD"_s);
    }
    static QString TypeText(VekComms& form) { return form.findChild<QLineEdit*>(u"VekType_0"_s)->text(); }
    static QString Text(VekComms& form, const char* label) {
        return form.findChild<QLabel*>(QString::fromLatin1(label))->text();
    }
    /// Result, blocks and retries of the attempts that are kept, from the newest.
    std::string Kept() const {
        std::string kept;
        for (const KeptAttempt& attempt : ProgrammingJournal(services.StateFolder).FromNewest())
            kept += std::string(ResultName(attempt.Entry.Result)) + ' ' +
                    std::to_string(attempt.Entry.BlocksAcknowledged) + '/' +
                    std::to_string(attempt.Entry.Retries) + ';';
        return kept;
    }
    static void Press(VekComms& form, const char* button) {
        form.findChild<QAbstractButton*>(QString::fromLatin1(button))->click();
    }
    static bool Enabled(VekComms& form, const char* control) {
        return form.findChild<QWidget*>(QString::fromLatin1(control))->isEnabled();
    }

    PortTurns turns;
    DeviceTypeList types;
    ProgrammingJob job;
    const TemporaryFolder folder;
    ObligingDevice device{port};
};

} // namespace vek::test
