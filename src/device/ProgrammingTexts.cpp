#include "device/ProgrammingTexts.h"

#include "controls/TextConversion.h"
#include "model/ConfigFile.h"
#include "model/VekNetAddresses.h"

#include <QObject>

#include <algorithm>

namespace vek {

namespace {

QString RetriesText(int retries) {
    return retries == 1 ? QObject::tr("1 retry") : QObject::tr("%1 retries").arg(retries);
}

QString ModesText(const MatrixConfig& config) {
    const auto used =
        std::ranges::count_if(config.Modes, [](const auto& mode) { return !IsBlankMode(mode); });
    return used == 1 ? QObject::tr("1 mode in use") : QObject::tr("%1 modes in use").arg(used);
}

/// "11:24", of the place and time of the attempt.
QString TimeOfDay(const JournalEntry& attempt) {
    return QString::fromStdString(JournalTime(attempt)).section(u'T', 1).left(5);
}

} // namespace

QString SendsText(const MatrixConfig& config, const std::string& file) {
    return QObject::tr("Sends %1 (%2, VekNet %3 to %4)")
        .arg(file.empty() ? QObject::tr("a configuration without a file")
                          : QString::fromStdString(FileNameOf(file)),
             ModesText(config))
        .arg(config.VekNetBase)
        .arg(LastVekNetAddress(config.VekNetBase));
}

QString ShortPortName(const QString& port) { return port.section(u' ', 0, 0); }

QString SearchText(const SearchStep& step) {
    const QString text = QObject::tr("asked at %1 baud, %2 of %3")
                             .arg(FromConstant(step.Settings.substr(0, step.Settings.find(','))))
                             .arg(step.Number)
                             .arg(step.Count);
    return step.Pass == 1 ? text : QObject::tr("%1, once more").arg(text);
}

QString DetailsText(const DownloadProgress& progress, std::int64_t milliseconds) {
    constexpr int perSecond = 1000;
    const QString text = QObject::tr("Block %1 of %2 · %3")
                             .arg(progress.Acknowledged)
                             .arg(progress.Blocks)
                             .arg(RetriesText(progress.Retries));
    if (progress.Acknowledged == 0 || progress.Acknowledged == progress.Blocks)
        return text;
    const std::int64_t left =
        milliseconds * (progress.Blocks - progress.Acknowledged) / progress.Acknowledged;
    return QObject::tr("%1 · %2 s left").arg(text).arg((left + perSecond - 1) / perSecond);
}

QString IncompleteText(const QString& port) {
    return QObject::tr("%1 holds an incomplete configuration: program it again").arg(port);
}

QString ResultText(const JournalEntry& attempt) {
    const QString port = QString::fromStdString(attempt.Port);
    if (attempt.Result == AttemptResult::Programmed)
        return QObject::tr("Programmed %1 %2 on %3, %4, %5 blocks, %6")
            .arg(QString::fromStdString(attempt.DeviceName), QString::fromStdString(attempt.DeviceVersion),
                 port, TimeOfDay(attempt))
            .arg(attempt.Blocks)
            .arg(RetriesText(attempt.Retries));
    // The first block follows at once when a device has answered.
    if (attempt.DeviceCode == 0)
        return QObject::tr("Not programmed: %1, %2, %3")
            .arg(FromConstant(ResultName(attempt.Result)), port, TimeOfDay(attempt));
    if (attempt.BlocksAcknowledged < attempt.Blocks)
        return IncompleteText(port);
    return QObject::tr("%1 holds the whole configuration, but did not restart: switch it off and on")
        .arg(port);
}

} // namespace vek
