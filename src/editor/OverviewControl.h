// The main window's side of the page "Overview", which is made when it is first shown.
#pragma once

#include "pages/EditorPages.h"

#include <QObject>
#include <QTimer>

class QTabWidget;

namespace vek {

class ClipboardMenus;
class ConfigWatch;
class ExportCommands;
class ModelView;
class Overview;
struct OverviewPlace;

/// What the overview follows and acts on; owned by the window.
struct OverviewParts {
    QTabWidget& SSTab1;
    const EditorPages& Pages;
    ModelView& View;
    ConfigWatch& Watch;
    ClipboardMenus& Clipboard;
    ExportCommands& Exports;
};

class OverviewControl : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object, which belongs to the window. The window gets the action "ShowOverview".
    OverviewControl(const OverviewParts& parts, QWidget& window);

  private:
    void ShowPage();
    void Make();
    bool IsShown() const;
    void ConfigurationChanged();
    void Refresh();
    void FollowSelectors();
    void GoTo(const OverviewPlace& place);
    void Copy(const OverviewPlace& place);
    void Paste(const OverviewPlace& place);

    OverviewParts parts_;
    Overview* overview_ = nullptr;
    bool stale_ = true;
    QTimer refresh_; ///< at once, but behind what the edit sends to a device
};

} // namespace vek
