#include "model/ProgramState.h"

#include "model/ConfigFile.h"

namespace vek {

MatrixConfig Config;
MatrixConfig SavedConfig;
bool ConfigChanged = false;
std::string CurrentFileName;

void NewConfiguration() {
    Config = MatrixConfig();
    ConfigChanged = false;
    CurrentFileName.clear();
    SavedConfig = Config;
}

bool ConfigDiffers() { return Config != SavedConfig; }

void ReadConfigFile(const std::string& path) { Config = LoadConfig(path); }

void WriteConfigFile(const std::string& path) { SaveConfig(path, Config); }

} // namespace vek
