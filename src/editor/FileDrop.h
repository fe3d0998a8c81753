// A configuration file that is dropped on the window.
#pragma once

#include <QObject>
#include <QString>

#include <string>

class QWidget;

namespace vek {

/// Takes one local *.VMC file wherever it is dropped on the window, before the boxes in it take its name for
/// a text. Other drops go where they always went.
class FileDrop : public QObject {
    Q_OBJECT

  public:
    /// Belongs to the window.
    explicit FileDrop(QWidget& window);

    /// While a reason is set, files are refused with it.
    void SetRefusal(const QString& reason) { refusal_ = reason; }

  Q_SIGNALS:
    /// From the event loop, when the drop is over for the program that it comes from. A path in the system's
    /// own bytes.
    void Dropped(const std::string& path);
    void Refused(const QString& reason);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void WatchSystemWindow();

    QWidget& window_;
    QString refusal_;
};

} // namespace vek
