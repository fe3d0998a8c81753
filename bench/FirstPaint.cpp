// Linked into a program with a main window: tells its parent when the window has been painted for the first
// time, and what memory that took at most, and ends the program.

#include <QCoreApplication>
#include <QEvent>
#include <QMainWindow>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

/// In kB; the most that the process has had resident.
long PeakMemory() {
    std::FILE* status = std::fopen("/proc/self/status", "r");
    char line[256];
    long peak = 0;
    while (status && std::fgets(line, sizeof line, status)) {
        if (std::strncmp(line, "VmHWM:", 6) == 0)
            peak = std::strtol(line + 6, nullptr, 10);
    }
    if (status)
        std::fclose(status);
    return peak;
}

class FirstPaint final : public QObject {
  public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !painting && qobject_cast<QMainWindow*>(watched)) {
            painting = true;
            // The whole window is painted and flushed before events are served again.
            QTimer::singleShot(0, this, [] {
                std::printf("%ld\n", PeakMemory());
                std::fflush(stdout);
                std::_Exit(0);
            });
        }
        return false;
    }

  private:
    bool painting = false;
};

void Watch() {
    QCoreApplication* application = QCoreApplication::instance();
    application->installEventFilter(new FirstPaint(application));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(Watch)
