#include "editor/FileDrop.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>
#include <QWindow>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

/// The configuration file that is dragged; empty when it is something else.
QString DraggedFile(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    if (urls.size() != 1 || !urls.front().isLocalFile())
        return {};
    const QString path = urls.front().toLocalFile();
    return path.endsWith(".VMC"_L1, Qt::CaseInsensitive) && QFileInfo(path).isFile() ? path : QString();
}

} // namespace

FileDrop::FileDrop(QWidget& window) : QObject(&window), window_(window) {
    window_.setAcceptDrops(true);
    window_.installEventFilter(this);
    WatchSystemWindow();
}

void FileDrop::WatchSystemWindow() {
    // The boxes hear of a drag before the widget that they stand on, but after the window of the system.
    if (QWindow* window = window_.windowHandle())
        window->installEventFilter(this);
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &window_) {
        if (event->type() == QEvent::WinIdChange)
            WatchSystemWindow();
        return false;
    }
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return false;
    auto* drop = static_cast<QDropEvent*>(event);
    const QString path = DraggedFile(*drop->mimeData());
    if (path.isEmpty())
        return false;
    if (!refusal_.isEmpty() || QApplication::activeModalWidget() != nullptr) {
        if (type == QEvent::DragEnter && !refusal_.isEmpty())
            Q_EMIT Refused(refusal_);
        drop->ignore();
        return true;
    }
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (type == QEvent::Drop)
        QTimer::singleShot(0, this, [this, file = path.toStdString()] { Q_EMIT Dropped(file); });
    return true;
}

} // namespace vek
