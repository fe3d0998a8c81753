#include "model/ProgramState.h"

#include "model/ConfigFile.h"

namespace vek {

MatrixConfig Config;
MatrixConfig SavedConfig;
bool ConfigChanged = false;
std::string CurrentFileName;
std::string ConfigOrigin;

std::string ShownFileName() { return CurrentFileName.empty() ? ConfigOrigin : FileNameOf(CurrentFileName); }

void NewConfiguration() {
    Config = MatrixConfig();
    ConfigChanged = false;
    CurrentFileName.clear();
    ConfigOrigin.clear();
    SavedConfig = Config;
}

bool ConfigDiffers() { return Config != SavedConfig; }

void ReadConfigFile(const std::string& path) { Config = LoadConfig(path); }

void WriteConfigFile(const std::string& path) { SaveConfig(path, Config); }

} // namespace vek
