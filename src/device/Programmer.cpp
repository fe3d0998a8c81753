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
    if (form.Programmed())
        programmed_ = job.Config;
    if (const auto attempt = form.LastAttempt())
        result_ = ResultText(*attempt);
    if (!form.HistoryProblem().isEmpty())
        Q_EMIT Told(form.HistoryProblem());
    Q_EMIT Ended();
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
