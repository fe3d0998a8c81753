// What the editor takes from outside: boxes, serial ports, clocks, the per-machine store and the user's
// folders.
#pragma once

#include "link/DownloadImage.h"
#include "link/PortFacts.h"
#include "link/RegistryStore.h"
#include "link/SerialControl.h"
#include "userstate/AttemptRecord.h"

#include <QStringList>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vek {

class Dialogs;

struct EditorServices {
    Dialogs& Boxes;
    RegistryStore& Store;
    std::function<std::unique_ptr<SerialControl>()> MakeSerialControl;
    std::function<std::unique_ptr<OneShotTimer>()> MakeTimer;
    /// The devices behind COM1 … COM4 as the user knows them ("ttyUSB0"), empty where there is none. Asked
    /// anew each time, because adapters come and go.
    std::function<QStringList()> PortNames;
    /// What the system tells of COM1 … COM4 (row 0 … 3) besides; takes some milliseconds.
    std::function<PortFacts(std::size_t row)> FactsOfPort = [](std::size_t) { return PortFacts(); };
    /// Tries neededSettings on the port of a row and returns those that it refuses.
    std::function<std::vector<std::string>(std::size_t row)> RefusedSettings = [](std::size_t) {
        return std::vector<std::string>();
    };
    /// By what a download image can be told from others.
    std::function<std::string(const DownloadImage&)> ImageDigest = [](const DownloadImage&) {
        return std::string();
    };
    /// For what is measured.
    AttemptRecord::Clock Clock = SteadyMilliseconds;
    /// Where recovery copies and the programming history are kept, a path in the system's own bytes; empty
    /// for nowhere.
    std::string StateFolder = {};
    /// Where the user's settings are kept; empty for nowhere.
    std::string SettingsFile = {};
    /// Where templates are looked for, the user's own folder last.
    std::vector<std::string> TemplateFolders = {};
};

} // namespace vek
