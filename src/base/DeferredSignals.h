// Ending the program in order while a file is being written.
#pragma once

namespace vek {

/// While one of these exists, in any thread, SIGINT, SIGTERM and SIGHUP wait; when the last one is gone they
/// end the program as they would have. A signal that the program handles or ignores is left alone.
class DeferredSignals {
  public:
    DeferredSignals();
    DeferredSignals(const DeferredSignals&) = delete;
    DeferredSignals& operator=(const DeferredSignals&) = delete;
    ~DeferredSignals();
};

} // namespace vek
