#include "editor/RecentFiles.h"

#include "controls/LayoutHelpers.h"
#include "editor/MenuTexts.h"
#include "model/ConfigFile.h"
#include "userstate/UserSettings.h"

#include <QMenu>

namespace vek {

using namespace Qt::StringLiterals;

RecentFiles::RecentFiles(QMenu& menu, UserSettings& settings)
    : QObject(&menu), menu_(menu), settings_(settings) {
    menu_.setToolTipsVisible(true);
    connect(&menu_, &QMenu::aboutToShow, this, &RecentFiles::Fill);
}

void RecentFiles::Fill() {
    menu_.clear();
    const auto files = settings_.RecentFiles();
    for (std::size_t i = 0; i < files.size(); ++i) {
        const QString path = QString::fromStdString(files[i]);
        QAction* action = menu_.addAction(NumberedText(i, QString::fromStdString(FileNameOf(files[i]))), this,
                                          [this, file = files[i]] { Q_EMIT Chosen(file); });
        action->setObjectName(u"RecentFile_%1"_s.arg(i));
        SetPlainToolTip(*action, path);
        action->setStatusTip(path);
    }
    menu_.addSeparator();
    QAction* clear = menu_.addAction(tr("&Clear List"), this, [this] { settings_.ForgetFiles(); });
    clear->setObjectName(u"ClearRecentFiles"_s);
    clear->setEnabled(!files.empty());
}

} // namespace vek
