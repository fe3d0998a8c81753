#include "editor/CommandDispatch.h"

#include "controls/TextConversion.h"
#include "device/Programmer.h"
#include "device/VekComms.h"
#include "dialogs/AboutForm.h"
#include "dialogs/LinkingForm.h"
#include "dialogs/VekNetBaseForm.h"
#include "dialogs/WindowMessages.h"
#include "editing/ModelView.h"
#include "editor/ExportCommands.h"
#include "editor/FileCommands.h"
#include "model/ProgramState.h"

#include <QCoreApplication>

namespace vek {

CommandDispatch::CommandDispatch(QWidget& window, ModelView& view, FileCommands& files,
                                 ExportCommands& exports, const EditorServices& services,
                                 Programmer& programmer, WindowMessages& messages)
    : window_(window), view_(view), files_(files), exports_(exports), services_(services),
      programmer_(programmer), messages_(messages) {}

void CommandDispatch::DispatchCommand(std::string_view key) {
    Guarded(messages_, [this, key] {
        view_.StoreView();
        view_.ShowMode();
        Run(key);
    });
}

void CommandDispatch::Run(std::string_view key) {
    struct Command {
        std::string_view Key;
        void (*Action)(CommandDispatch&);
    };
    static constexpr Command commands[] = {
        {"NEW", [](CommandDispatch& d) { d.files_.NewCommand(); }},
        {"OPEN", [](CommandDispatch& d) { d.files_.OpenFileCommand(); }},
        {"SAVE", [](CommandDispatch& d) { d.files_.SaveCommand(); }},
        {"SAVEAS", [](CommandDispatch& d) { d.files_.SaveAsCommand(); }},
        {"PRINT", [](CommandDispatch& d) { d.exports_.PrintCommand(); }},
        {"TEXT", [](CommandDispatch& d) { d.exports_.TextCommand(); }},
        {"CSV", [](CommandDispatch& d) { d.exports_.CsvCommand(); }},
        {"EXPORT", [](CommandDispatch& d) { d.exports_.ExportCommand(); }},
        {"DEFAULT", [](CommandDispatch& d) { d.ResetModeToDefault(); }},
        {"LINK", [](CommandDispatch& d) { d.GroupOutputs(); }},
        {"BASE", [](CommandDispatch& d) { d.SetBaseAddress(); }},
        {"DOWNLOAD", [](CommandDispatch& d) { d.Download(); }},
        {"ABOUT", [](CommandDispatch& d) { d.About(); }},
    };
    for (const Command& command : commands) {
        if (command.Key == key)
            command.Action(*this);
    }
}

void CommandDispatch::ResetModeToDefault() {
    if (!IsBlankMode(view_.Mode()) &&
        services_.Boxes.AskYesNo(&window_, QObject::tr("Reset to default"),
                                 QObject::tr("Do you wish to reset this mode to default settings?"),
                                 Answer::Yes,
                                 NumberAndName(view_.ShownNames(), NameKind::Mode,
                                               static_cast<std::size_t>(view_.CurrentMode()))) != Answer::Yes)
        return;
    view_.ResetMode();
}

void CommandDispatch::GroupOutputs() {
    LinkingForm form(view_.LinkGroups(), static_cast<std::size_t>(view_.CurrentMode()), view_.ShownNames(),
                     &window_);
    if (form.exec() == QDialog::Accepted)
        view_.SetLinkGroups(form.Groups());
}

void CommandDispatch::SetBaseAddress() {
    VekNetBaseForm form(Config.VekNetBase, services_.Boxes, &window_);
    form.exec();
    view_.SetBase(form.Base());
}

void CommandDispatch::Download() {
    const DownloadImage image = BuildImageFromConfig(view_);
    programmer_.Program({image, Config, files_.Path()});
}

void CommandDispatch::About() {
    AboutForm form(QCoreApplication::applicationVersion(), &window_);
    form.exec();
}

} // namespace vek
