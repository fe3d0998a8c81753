// The Vorn Matrix Editor.

#include "dialogs/Dialogs.h"
#include "editor/CorvaneForm.h"
#include "platform/ComPorts.h"
#include "platform/JsonRegistryStore.h"
#include "platform/QtOneShotTimer.h"
#include "platform/QtSerialControl.h"

#include <CLI/CLI.hpp>

#include <QApplication>
#include <QIcon>
#include <QTimer>

namespace {

using namespace Qt::StringLiterals;

using namespace vek;

constexpr std::chrono::milliseconds iconDelay(100);

/// The devices behind COM1 … COM4 as the user knows them, empty where there is none.
QStringList PortNames() {
    QStringList names;
    for (std::size_t row = 0; row < portCount; ++row)
        names += QString();
    for (const ComPort& port : FindComPorts())
        names[port.Number - 1] = QString::fromStdString(port.ShownName);
    return names;
}

/// Everything on the command line that is no option: a path may come in several words.
QString Joined(const std::vector<std::string>& words) {
    QStringList list;
    for (const std::string& word : words)
        list += QString::fromLocal8Bit(word.c_str());
    return list.join(u' ');
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"vorn-matrix-editor"_s);
    QApplication::setApplicationDisplayName(QString());
    QApplication::setApplicationVersion(QLatin1StringView(VEK_VERSION));
    QApplication::setDesktopFileName(u"vorn-matrix-editor"_s);

    CLI::App commandLine("Configuration editor of the Matrix Vek", "vorn-matrix-editor");
    std::vector<std::string> words;
    commandLine.add_option("FILE", words, "Configuration file (*.VMC) to open");
    commandLine.set_version_flag("--version", VEK_VERSION);
    try {
        commandLine.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        const int status = commandLine.exit(error);
        return status == 0 ? 0 : 2;
    }

    JsonRegistryStore store = JsonRegistryStore::OfThisMachine();
    const EditorServices services = {
        .Boxes = ScreenDialogs(),
        .Store = store,
        .MakeSerialControl = [] { return std::make_unique<QtSerialControl>(); },
        .MakeTimer = [] { return std::make_unique<QtOneShotTimer>(); },
        .PortNames = PortNames,
    };
    CorvaneForm window(services, Joined(words));
    window.show();
    // Drawing it in all the sizes that a desktop asks for would hold up the window itself.
    QTimer::singleShot(iconDelay, &application,
                       [] { QApplication::setWindowIcon(QIcon(u":/icons/vorn-matrix-editor.svg"_s)); });
    return QApplication::exec();
}
