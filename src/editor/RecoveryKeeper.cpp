#include "editor/RecoveryKeeper.h"

#include "base/Errors.h"
#include "editor/FileOnDisk.h"
#include "model/ProgramState.h"
#include "model/RecordLayout.h"

#include <chrono>
#include <ctime>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds leastInterval(2);

std::string FolderIn(const std::string& stateFolder) {
    return stateFolder.empty() ? std::string() : stateFolder + "/recovery";
}

std::vector<std::byte> PresentRecord() {
    const RecordBytes bytes = EncodeRecord(Config);
    return {bytes.begin(), bytes.end()};
}

} // namespace

RecoveryKeeper::RecoveryKeeper(const std::string& stateFolder, const FileOnDisk& file, QObject* parent)
    : QObject(parent), folder_(FolderIn(stateFolder)), file_(file),
      writer_(folder_, [this](const std::string& failure) {
          QMetaObject::invokeMethod(
              this, [this, text = QString::fromStdString(failure)] { Written(text); }, Qt::QueuedConnection);
      }) {
    interval_.setObjectName(u"RecoveryInterval"_s);
    interval_.setParent(this);
    interval_.setSingleShot(true);
    interval_.setInterval(leastInterval);
    connect(&interval_, &QTimer::timeout, this, &RecoveryKeeper::Look);
}

void RecoveryKeeper::Look() {
    if (folder_.empty())
        return;
    if (!ConfigDiffers()) {
        if (copied_)
            writer_.Remove();
        copied_ = false;
        kept_.reset();
    } else if (!interval_.isActive()) {
        Write();
    }
}

bool RecoveryKeeper::Finish(int milliseconds) {
    interval_.stop();
    Look();
    return writer_.Flush(milliseconds);
}

void RecoveryKeeper::Write() {
    if (kept_ == Config)
        return;
    kept_ = Config;
    copied_ = true;
    writer_.Write(PresentRecord(), OriginNow());
    interval_.start();
}

void RecoveryKeeper::Written(const QString& failure) {
    const bool toldAlready = failed_;
    failed_ = !failure.isEmpty();
    if (!failed_)
        return;
    kept_.reset(); // tried again
    if (!toldAlready)
        Q_EMIT Failed(tr("Unsaved changes are not kept for recovery: %1").arg(failure));
}

RecoveryOrigin RecoveryKeeper::OriginNow() const {
    return {.File = file_.Path(),
            .Named = file_.Named(),
            .Time = std::time(nullptr),
            .SavedDigest = file_.SavedDigest()};
}

std::optional<RecoveryCopy> RecoveryKeeper::TakeFound() const {
    if (folder_.empty())
        return std::nullopt;
    const RecoveryFolder folder(folder_);
    folder.Prune(std::time(nullptr));
    return folder.TakeNewest();
}

void RecoveryKeeper::Adopt(RecoveryCopy copy) {
    writer_.Adopt(std::move(copy));
    copied_ = true;
    kept_ = Config;
}

void RecoveryKeeper::LeaveBehind() const { Leave(PresentRecord(), OriginNow()); }

void RecoveryKeeper::LeaveOtherVersion(std::span<const std::byte> record) const {
    RecoveryOrigin origin = OriginNow();
    origin.Kind = RecoveryKind::OtherVersion;
    Leave(record, origin);
}

void RecoveryKeeper::Leave(std::span<const std::byte> record, const RecoveryOrigin& origin) const {
    if (folder_.empty())
        throw FileError("there is no folder for recovery copies");
    RecoveryCopy::Create(folder_).Write(record, origin);
}

} // namespace vek
