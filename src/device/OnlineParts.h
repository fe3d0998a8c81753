// The parts of the main window that an online session reads and drives.
#pragma once

class QTabWidget;

namespace vek {

class LevelTrim;
class ModelView;
class OnlinePage;
class OnlineStrip;
class TrimPage;
class UserSettings;

/// Owned by the window.
struct OnlineParts {
    QTabWidget& SSTab1;
    OnlinePage& Page;
    OnlineStrip& Strip;
    LevelTrim& Level;
    TrimPage& InputTrims;
    TrimPage& OutputTrims;
    const ModelView& View;
    UserSettings& Settings;
};

} // namespace vek
