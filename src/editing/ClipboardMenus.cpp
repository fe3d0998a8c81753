#include "editing/ClipboardMenus.h"

#include "base/Errors.h"
#include "controls/TextConversion.h"
#include "dialogs/WindowMessages.h"
#include "editing/ModelView.h"
#include "model/ClipboardText.h"
#include "model/ProgramState.h"
#include "pages/Selectors.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QRadioButton>

namespace vek {

namespace {

struct MenuEntry {
    const char* Name;
    const char* Caption;
};

void PutOnClipboard(const std::string& text) { QGuiApplication::clipboard()->setText(FromBytes(text)); }

std::string ClipboardBytes() { return ToBytes(QGuiApplication::clipboard()->text()); }

/// Pasting would tell of a run-time error.
template <typename Read>
bool CanBeRead(Read read) {
    try {
        return read();
    } catch (const RunTimeError&) {
        return false;
    }
}

QMenu* MakeMenu(QWidget* owner, const char* name) {
    auto* menu = new QMenu(owner);
    menu->setObjectName(QString::fromLatin1(name));
    return menu;
}

QAction* AddEntry(QMenu* menu, const MenuEntry& entry) {
    QAction* action = menu->addAction(QString::fromLatin1(entry.Caption));
    action->setObjectName(QString::fromLatin1(entry.Name));
    return action;
}

} // namespace

ClipboardMenus::ClipboardMenus(Selectors& selectors, ModelView& view, WindowMessages& messages,
                               QObject* parent)
    : QObject(parent), selectors_(selectors), view_(view), messages_(messages) {
    QMenu* modeMenu = MakeMenu(&selectors, "HiddenModeMenu");
    QMenu* outputMenu = MakeMenu(&selectors, "HiddenOuputMenu");
    connect(AddEntry(modeMenu, {"mnuHiddenModeCopy", "Copy"}), &QAction::triggered, this,
            [this] { CopyMode(menuMode_); });
    connect(AddEntry(modeMenu, {"mnuHiddenModePaste", "Paste"}), &QAction::triggered, this,
            [this] { PasteMode(menuMode_); });
    connect(AddEntry(outputMenu, {"mnuHiddenOuputCopy", "Copy"}), &QAction::triggered, this,
            [this] { CopyOutput(CurrentMode(), menuOutput_); });
    connect(AddEntry(outputMenu, {"mnuHiddenOuputPaste", "Paste"}), &QAction::triggered, this,
            [this] { PasteOutput(CurrentMode(), menuOutput_); });
    connect(&selectors, &Selectors::ModeMenuRequested, this,
            [this, modeMenu](std::size_t mode, const QPoint& at) {
                menuMode_ = mode;
                modeMenu->popup(at);
            });
    connect(&selectors, &Selectors::OutputMenuRequested, this,
            [this, outputMenu](std::size_t output, const QPoint& at) {
                menuOutput_ = output;
                outputMenu->popup(at);
            });
}

std::size_t ClipboardMenus::CurrentMode() const { return static_cast<std::size_t>(view_.CurrentMode()); }

void ClipboardMenus::CopyMode(std::size_t mode) { PutOnClipboard(CopyModeText(Config.Modes[mode])); }

void ClipboardMenus::CopyOutput(std::size_t mode, std::size_t output) {
    Guarded(messages_, [&] { PutOnClipboard(CopyPointText(Config.Modes[mode].OutputLevels[output])); });
}

void ClipboardMenus::PasteMode(std::size_t mode) {
    Guarded(messages_, [&] {
        if (const auto pasted = PasteModeText(ClipboardBytes()))
            view_.PasteMode(mode, *pasted);
        else
            PasteFailed(tr("An error occurred in mode paste"));
    });
}

void ClipboardMenus::PasteOutput(std::size_t mode, std::size_t output) {
    Guarded(messages_, [&] {
        if (const auto levels = PastePointText(ClipboardBytes())) {
            selectors_.Modes[mode]->setChecked(true);
            view_.PasteOutput(output, *levels);
        } else {
            PasteFailed(tr("An error occurred in output paste"));
        }
    });
}

bool ClipboardMenus::HoldsMode() {
    return CanBeRead([] { return PasteModeText(ClipboardBytes()).has_value(); });
}

bool ClipboardMenus::HoldsOutput() {
    return CanBeRead([] { return PastePointText(ClipboardBytes()).has_value(); });
}

void ClipboardMenus::PasteFailed(const QString& text) {
    messages_.Show(MessageIcon::Exclamation, tr("Paste Failed!"), text);
}

} // namespace vek
