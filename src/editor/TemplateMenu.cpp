#include "editor/TemplateMenu.h"

#include "editor/MenuTexts.h"

#include <QMenu>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace vek {

namespace fs = std::filesystem;

using namespace Qt::StringLiterals;

namespace {

constexpr const char* configurationSuffix = ".VMC";
constexpr std::size_t mostOfAFolder = 30; // what a menu can show

std::vector<fs::path> ConfigurationsIn(const std::string& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code unknown; // a link may lead nowhere
        if (entry->path().extension() == configurationSuffix && entry->is_regular_file(unknown))
            files.push_back(entry->path());
    }
    std::ranges::sort(files);
    files.resize(std::min(files.size(), mostOfAFolder));
    return files;
}

} // namespace

TemplateMenu::TemplateMenu(QMenu& menu, std::vector<std::string> folders)
    : QObject(&menu), menu_(menu), folders_(std::move(folders)) {
    menu_.setToolTipsVisible(true);
    connect(&menu_, &QMenu::aboutToShow, this, &TemplateMenu::Fill);
}

void TemplateMenu::Fill() {
    menu_.clear();
    std::size_t count = 0;
    for (const std::string& folder : folders_) {
        menu_.addSeparator();
        for (const fs::path& file : ConfigurationsIn(folder)) {
            QAction* action =
                menu_.addAction(NumberedText(count, QString::fromStdString(file.stem().string())), this,
                                [this, path = file.string()] { Q_EMIT Chosen(path); });
            action->setObjectName(u"Template_%1"_s.arg(count++));
            action->setStatusTip(QString::fromStdString(file.string()));
        }
    }
    if (folders_.empty() || folders_.back().empty())
        return;
    menu_.addSeparator();
    menu_.addAction(tr("Your own go into %1").arg(MenuText(QString::fromStdString(folders_.back()))))
        ->setEnabled(false);
}

} // namespace vek
