#include "editor/CommandDispatch.h"

#include "dialogs/AboutForm.h"
#include "dialogs/Guarded.h"
#include "dialogs/LinkingForm.h"
#include "dialogs/VekNetBaseForm.h"
#include "editor/ExportCommands.h"
#include "editor/FileCommands.h"
#include "editor/ModelView.h"
#include "editor/VekComms.h"
#include "model/ProgramState.h"

#include <QCoreApplication>

namespace vek {

CommandDispatch::CommandDispatch(QWidget& window, ModelView& view, FileCommands& files,
                                 ExportCommands& exports, const EditorServices& services,
                                 const DeviceTypeList& types)
    : window(window), view(view), files(files), exports(exports), services(services), types(types) {}

void CommandDispatch::DispatchCommand(std::string_view key) {
    Guarded(services.Boxes, &window, [this, key] {
        view.StoreView();
        view.ShowMode();
        Run(key);
    });
}

void CommandDispatch::Run(std::string_view key) {
    struct Command {
        std::string_view Key;
        void (*Action)(CommandDispatch&);
    };
    static constexpr Command commands[] = {
        {"NEW", [](CommandDispatch& d) { d.files.NewCommand(); }},
        {"OPEN", [](CommandDispatch& d) { d.files.OpenFileCommand(); }},
        {"SAVE", [](CommandDispatch& d) { d.files.SaveCommand(); }},
        {"SAVEAS", [](CommandDispatch& d) { d.files.SaveAsCommand(); }},
        {"PRINT", [](CommandDispatch& d) { d.exports.PrintCommand(); }},
        {"TEXT", [](CommandDispatch& d) { d.exports.TextCommand(); }},
        {"CSV", [](CommandDispatch& d) { d.exports.CsvCommand(); }},
        {"EXPORT", [](CommandDispatch& d) { d.exports.ExportCommand(); }},
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
    ModeRecord& mode = view.Mode();
    if (!IsBlankMode(mode) &&
        services.Boxes.AskYesNo(&window, QObject::tr("Reset to default"),
                                QObject::tr("Do you wish to reset this mode to default settings?")) !=
            Answer::Yes)
        return;
    mode = DefaultMode();
    view.ShowMode();
}

void CommandDispatch::GroupOutputs() {
    LinkingForm form(view.LinkGroup, &window);
    if (form.exec() != QDialog::Accepted)
        return;
    view.LinkGroup = form.Groups();
    view.StoreView();
    view.ShowMode();
}

void CommandDispatch::SetBaseAddress() {
    VekNetBaseForm form(Config.VekNetBase, services.Boxes, &window);
    form.exec();
    Config.VekNetBase = form.Base();
    ConfigChanged = ConfigChanged || form.Changed();
    view.ShowMode();
}

void CommandDispatch::Download() {
    const DownloadImage image = BuildImageFromConfig(view);
    VekComms form(services, types, image, &window);
    form.exec();
}

void CommandDispatch::About() {
    AboutForm form(QCoreApplication::applicationVersion(), &window);
    form.exec();
}

} // namespace vek
