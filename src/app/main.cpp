// The Vorn Matrix Editor.

#include "controls/VisibleMarks.h"
#include "dialogs/Dialogs.h"
#include "editor/CorvaneForm.h"
#include "editor/Endings.h"
#include "platform/ComPorts.h"
#include "platform/ImageDigest.h"
#include "platform/JsonRegistryStore.h"
#include "platform/PortInspection.h"
#include "platform/QtOneShotTimer.h"
#include "platform/QtSerialControl.h"
#include "userstate/UserFolders.h"

#include <CLI/CLI.hpp>

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QTimer>

#include <algorithm>
#include <optional>
#include <string_view>

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

std::string DeviceOfRow(std::size_t row) { return DeviceOfComPort(static_cast<int>(row) + 1); }

/// The examples lie beside the folder of the program, also where it was built.
std::string ExampleFolder() {
    return QDir::cleanPath(QCoreApplication::applicationDirPath() +
                           "/../share/vorn-matrix-editor/templates"_L1)
        .toStdString();
}

/// Everything on the command line that is no option: a path may come in several words.
std::string Joined(const std::vector<std::string>& words) {
    std::string joined;
    for (const std::string& word : words)
        (joined += joined.empty() ? "" : " ") += word;
    return joined;
}

/// The exit status, when the program has nothing more to do.
std::optional<int> ReadCommandLine(int argc, char* argv[], std::vector<std::string>& words) {
    CLI::App commandLine("Configuration editor of the Matrix Vek", "vorn-matrix-editor");
    commandLine.add_option("FILE", words, "Configuration file (*.VMC) to open");
    commandLine.set_version_flag("--version", VEK_VERSION);
    try {
        commandLine.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return commandLine.exit(error) == 0 ? 0 : 2;
    }
    return std::nullopt;
}

/// What is only printed needs no display; Qt would end the program where there is none.
bool AsksForText(int argc, char* argv[]) {
    constexpr std::string_view options[] = {"--version", "--help", "-h"};
    const auto end = std::find(argv + 1, argv + argc, std::string_view("--"));
    return std::any_of(argv + 1, end, [&](std::string_view argument) {
        return std::ranges::find(options, argument) != std::end(options);
    });
}

/// The exit status.
int RunEditor(const std::string& commandLine, Endings& endings) {
    JsonRegistryStore store = JsonRegistryStore::OfThisMachine();
    const EditorServices services = {
        .Boxes = ScreenDialogs(),
        .Store = store,
        .MakeSerialControl = [] { return std::make_unique<QtSerialControl>(); },
        .MakeTimer = [] { return std::make_unique<QtOneShotTimer>(); },
        .PortNames = PortNames,
        .FactsOfPort = [](std::size_t row) { return FactsOfDevice(DeviceOfRow(row)); },
        .RefusedSettings = [](std::size_t row) { return RefusedSettings(DeviceOfRow(row)); },
        .ImageDigest = ImageDigest,
        .StateFolder = UserStateFolder(),
        .SettingsFile = UserSettingsFile(),
        .TemplateFolders = {ExampleFolder(), UserTemplatesFolder()},
    };
    CorvaneForm window(services, commandLine);
    endings.Watch(window);
    QObject::connect(&window, &CorvaneForm::Ended, qApp, [] { QApplication::exit(); });
    QObject::connect(qApp, &QApplication::commitDataRequest, &window, &CorvaneForm::PrepareForSessionEnd,
                     Qt::DirectConnection);
    window.show();
    // Drawing it in all the sizes that a desktop asks for would hold up the window itself.
    QTimer::singleShot(iconDelay, qApp,
                       [] { QApplication::setWindowIcon(QIcon(u":/icons/vorn-matrix-editor.svg"_s)); });
    return QApplication::exec();
}

} // namespace

int main(int argc, char* argv[]) {
    if (AsksForText(argc, argv)) {
        std::vector<std::string> words;
        return ReadCommandLine(argc, argv, words).value_or(0);
    }
    Endings endings;
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"vorn-matrix-editor"_s);
    QApplication::setApplicationDisplayName(QString());
    QApplication::setApplicationVersion(QLatin1StringView(VEK_VERSION));
    QApplication::setDesktopFileName(u"vorn-matrix-editor"_s);
    VisibleMarks::Install();

    std::vector<std::string> words;
    if (const auto ended = ReadCommandLine(argc, argv, words))
        return *ended;

    const int status = RunEditor(Joined(words), endings);
    endings.Raise();
    return status;
}
