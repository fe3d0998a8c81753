// Writes the recovery copy of a running editor while its user goes on.
#pragma once

#include "userstate/RecoveryCopies.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace vek {

/// A thread of its own does all the writing, so that nobody waits for the disk who does not ask to. Only the
/// latest wish counts. The copy stays held until this object ends; then it is there for the next start unless
/// it was removed.
class RecoveryWriter {
  public:
    /// Told in the writing thread: why a copy could not be written, or nothing once it could.
    using Written = std::function<void(const std::string& failure)>;

    RecoveryWriter(std::string folder, Written written);
    RecoveryWriter(const RecoveryWriter&) = delete;
    RecoveryWriter& operator=(const RecoveryWriter&) = delete;
    /// Carries out the last wish first.
    ~RecoveryWriter();

    void Write(std::vector<std::byte> record, RecoveryOrigin origin);
    void Remove();
    /// Goes on with a copy that was found: the next one takes its place.
    void Adopt(RecoveryCopy copy);

    /// Waits until the last wish has been carried out, or so many milliseconds; false when time was up.
    bool Flush(int milliseconds);

  private:
    struct Wish {
        enum { Nothing, Copy, Removal } What = Nothing;
        std::vector<std::byte> Record;
        RecoveryOrigin Origin;
    };

    void Ask(Wish wish);
    void Run();
    void CarryOut(const Wish& wish);

    std::string folder_;
    Written written_;
    std::mutex guard_;
    std::condition_variable changed_;
    Wish wish_;
    bool busy_ = false;
    bool ending_ = false;
    std::optional<RecoveryCopy> copy_; ///< the writing thread's while it is busy
    std::thread thread_;
};

} // namespace vek
