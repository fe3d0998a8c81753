// Ending the editor in order on a signal.
#pragma once

#include "base/Descriptor.h"

#include <QSocketNotifier>

#include <memory>

namespace vek {

class CorvaneForm;

/// Watches for SIGINT, SIGTERM and SIGHUP. One at a time.
class Endings {
  public:
    /// For the main thread before it makes others, which means before the application object. The rest needs
    /// that.
    Endings();

    /// Has the window end in order when a signal comes; whatever hangs then is ended by the system's alarm. A
    /// lost display ends the program, too, with no more than a word to the device.
    void Watch(CorvaneForm& window);

    /// Ends the program as the signal would have, if one came: who started it sees what ended it.
    void Raise() const;

  private:
    Descriptor blocked_;
    std::unique_ptr<QSocketNotifier> notifier_;
    int came_ = 0;
};

} // namespace vek
