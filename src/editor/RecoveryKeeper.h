// Keeps what the user has not saved.
#pragma once

#include "model/Config.h"
#include "userstate/RecoveryWriter.h"

#include <QObject>
#include <QTimer>

#include <optional>
#include <string>

namespace vek {

class FileOnDisk;

/// As long as Config differs from SavedConfig there is a recovery copy of it, written again at most every two
/// seconds and never in the way of an edit. It outlives the program unless the differences go before.
class RecoveryKeeper : public QObject {
    Q_OBJECT

  public:
    /// Keeps nothing when there is no folder for the user's state. The file must outlive this object.
    RecoveryKeeper(const std::string& stateFolder, const FileOnDisk& file, QObject* parent);

    /// Brings the copy up to date if it is time to. For every edit and a periodic look.
    void Look();
    /// Brings the copy up to date and waits for that, so many milliseconds; false when it is not there then.
    bool Finish(int milliseconds);

    // Copies that are left behind by the present editor or were by an earlier one.

    /// The newest that no editor holds.
    std::optional<RecoveryCopy> TakeFound() const;
    /// The copy is Config now.
    void Adopt(RecoveryCopy copy);
    /// Leaves Config as it is; throws FileError.
    void LeaveBehind() const;
    /// Leaves what another program has made of the file; throws FileError.
    void LeaveOtherVersion(std::span<const std::byte> record) const;

  Q_SIGNALS:
    /// Why there is no copy; told once until one could be written again.
    void Failed(const QString& reason);

  private:
    void Write();
    void Written(const QString& failure);
    void Leave(std::span<const std::byte> record, const RecoveryOrigin& origin) const;
    RecoveryOrigin OriginNow() const;

    std::string folder_;
    const FileOnDisk& file_;
    std::optional<MatrixConfig> kept_; ///< what the copy holds, or will soon
    bool copied_ = false;              ///< there may be a copy
    bool failed_ = false;
    QTimer interval_; ///< runs while it is too early for the next copy
    RecoveryWriter writer_;
};

} // namespace vek
