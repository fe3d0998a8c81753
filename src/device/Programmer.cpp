#include "device/Programmer.h"

#include "base/Errors.h"
#include "device/ProgrammingTexts.h"
#include "device/VekComms.h"
#include "model/ConfigFile.h"

namespace vek {

Programmer::Programmer(QWidget& window, const EditorServices& services, PortTurns& turns,
                       const DeviceTypeList& types)
    : QObject(&window), window_(window), services_(services), turns_(turns), types_(types),
      journal_(services.StateFolder) {}

void Programmer::Program(const ProgrammingJob& job) {
    VekComms form(services_, turns_, types_, job, &window_);
    form.exec();
    // The journal tells as well, unless it could not be written.
    if (form.Programmed()) {
        programmed_ = job.Config;
        seen_ = journal_.ChangeMark();
    }
    if (const auto attempt = form.LastAttempt())
        Tell(*attempt);
    if (!form.HistoryProblem().isEmpty())
        Q_EMIT Told(form.HistoryProblem());
    Q_EMIT Ended();
}

void Programmer::Tell(const JournalEntry& attempt) {
    // An attempt that sent nothing leaves the device as it was.
    const bool sent = attempt.DeviceCode != 0;
    if (!sent && attempt.Port == incompletePort_) {
        result_ = IncompleteText(QString::fromStdString(attempt.Port));
        return;
    }
    result_ = ResultText(attempt);
    if (sent) {
        const bool whole = attempt.BlocksAcknowledged == attempt.Blocks;
        incompletePort_ = whole ? std::string() : attempt.Port;
    }
}

const MatrixConfig* Programmer::LastProgrammed() {
    if (const auto mark = journal_.ChangeMark(); mark != seen_) {
        seen_ = mark;
        try {
            if (const auto attempt = journal_.LastProgrammed())
                programmed_ = LoadConfig(attempt->ConfigPath());
        } catch (const FileError&) {
            // What was known before stays.
        }
    }
    return programmed_ ? &*programmed_ : nullptr;
}

} // namespace vek
