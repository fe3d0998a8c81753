#include "userstate/RecoveryWriter.h"

#include "base/Errors.h"

#include <chrono>
#include <utility>

namespace vek {

RecoveryWriter::RecoveryWriter(std::string folder, Written written)
    : folder_(std::move(folder)), written_(std::move(written)) {}

RecoveryWriter::~RecoveryWriter() {
    {
        const std::scoped_lock lock(guard_);
        ending_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable())
        thread_.join();
}

void RecoveryWriter::Write(std::vector<std::byte> record, RecoveryOrigin origin) {
    Ask({Wish::Copy, std::move(record), std::move(origin)});
}

void RecoveryWriter::Remove() { Ask({Wish::Removal, {}, {}}); }

void RecoveryWriter::Ask(Wish wish) {
    {
        const std::scoped_lock lock(guard_);
        wish_ = std::move(wish);
        // Most programs end without an edit that needs it.
        if (!thread_.joinable())
            thread_ = std::thread([this] { Run(); });
    }
    changed_.notify_all();
}

void RecoveryWriter::Adopt(RecoveryCopy copy) {
    std::unique_lock lock(guard_);
    changed_.wait(lock, [this] { return !busy_; });
    if (copy_)
        copy_->Remove();
    copy_.reset();
    copy_.emplace(std::move(copy));
}

bool RecoveryWriter::Flush(int milliseconds) {
    std::unique_lock lock(guard_);
    return changed_.wait_for(lock, std::chrono::milliseconds(milliseconds),
                             [this] { return !busy_ && wish_.What == Wish::Nothing; });
}

void RecoveryWriter::Run() {
    std::unique_lock lock(guard_);
    for (;;) {
        changed_.wait(lock, [this] { return ending_ || wish_.What != Wish::Nothing; });
        if (wish_.What == Wish::Nothing)
            return;
        const Wish wish = std::exchange(wish_, {});
        busy_ = true;
        lock.unlock();
        CarryOut(wish);
        lock.lock();
        busy_ = false;
        changed_.notify_all();
    }
}

void RecoveryWriter::CarryOut(const Wish& wish) {
    if (wish.What == Wish::Removal) {
        if (copy_)
            copy_->Remove();
        copy_.reset();
        return;
    }
    try {
        if (!copy_)
            copy_.emplace(RecoveryCopy::Create(folder_));
        copy_->Write(wish.Record, wish.Origin);
        written_({});
    } catch (const FileError& error) {
        written_(error.what());
    }
}

} // namespace vek
