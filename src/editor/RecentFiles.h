// The menu of the files that were opened or saved last.
#pragma once

#include <QObject>

#include <string>

class QMenu;

namespace vek {

class UserSettings;

/// Fills a menu whenever it is opened: `RecentFile_0` … `RecentFile_9`, the last file first, and
/// `ClearRecentFiles`.
class RecentFiles : public QObject {
    Q_OBJECT

  public:
    /// Belongs to the menu; the settings must outlive it.
    RecentFiles(QMenu& menu, UserSettings& settings);

  Q_SIGNALS:
    /// A path in the system's own bytes.
    void Chosen(const std::string& path);

  private:
    void Fill();

    QMenu& menu_;
    UserSettings& settings_;
};

} // namespace vek
