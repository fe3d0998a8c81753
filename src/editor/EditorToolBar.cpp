#include "editor/EditorToolBar.h"

#include "controls/TextConversion.h"
#include "editor/CommandTable.h"

#include <QAction>
#include <QEvent>
#include <QIcon>
#include <QPixmap>

namespace vek {

using namespace Qt::StringLiterals;

namespace {

constexpr std::string_view saveKey = "SAVE";
constexpr int linesWithTexts = 42; // of a window in which the pages can spare a line

} // namespace

EditorToolBar::EditorToolBar(QWidget* parent) : QToolBar(parent) {
    setObjectName(u"Toolbar1"_s);
    setWindowTitle(tr("Commands"));
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    parent->installEventFilter(this);
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    QPixmap empty(iconSize());
    empty.fill(Qt::transparent);
    const QIcon place(empty);
    for (const ToolbarCommand& command : ToolbarCommands()) {
        if (command.StartsGroup)
            addSeparator();
        QAction* action = addAction(FromConstant(command.MenuCaption));
        action->setIconText(FromConstant(command.Caption));
        const QString key = FromConstant(command.Key);
        action->setObjectName(key);
        const QKeySequence shortcut(FromConstant(command.Shortcut));
        action->setShortcut(shortcut);
        const QString keys = shortcut.toString(QKeySequence::NativeText);
        action->setToolTip(keys.isEmpty() ? FromConstant(command.ToolTip)
                                          : FromConstant(command.ToolTip) + u" ("_s + keys + u')');
        action->setIcon(place);
        widgetForAction(action)->setObjectName(key);
        connect(action, &QAction::triggered, this, [this, &command] { Q_EMIT Triggered(command.Key); });
    }
}

QAction* EditorToolBar::Action(std::string_view key) const {
    return findChild<QAction*>(FromConstant(key), Qt::FindDirectChildrenOnly);
}

void EditorToolBar::SetOnline(bool online) {
    for (const ToolbarCommand& command : ToolbarCommands()) {
        if (command.Key != saveKey)
            Action(command.Key)->setEnabled(!online || command.WhileOnline);
    }
}

void EditorToolBar::ShowIcons() {
    iconsShown_ = true;
    const bool dark =
        palette().color(QPalette::Window).lightness() < palette().color(QPalette::WindowText).lightness();
    const QString folder = dark ? u":/icons/dark/%1.svg"_s : u":/icons/light/%1.svg"_s;
    for (const ToolbarCommand& command : ToolbarCommands())
        Action(command.Key)->setIcon(QIcon(folder.arg(FromConstant(command.Key).toLower())));
}

void EditorToolBar::changeEvent(QEvent* event) {
    QToolBar::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && iconsShown_)
        ShowIcons();
    if (event->type() == QEvent::FontChange)
        widthWithTexts_ = 0;
}

void EditorToolBar::resizeEvent(QResizeEvent* event) {
    QToolBar::resizeEvent(event);
    FitTexts();
}

bool EditorToolBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize)
        FitTexts();
    return QToolBar::eventFilter(watched, event);
}

void EditorToolBar::FitTexts() {
    if (toolButtonStyle() == Qt::ToolButtonTextUnderIcon || widthWithTexts_ == 0) {
        setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        widthWithTexts_ = sizeHint().width();
    }
    const bool room =
        width() >= widthWithTexts_ && window()->height() >= fontMetrics().height() * linesWithTexts;
    setToolButtonStyle(room ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly);
}

} // namespace vek
