// The one configuration that the program edits, and what it knows about it. Used by the one user-interface
// thread.
#pragma once

#include "model/Config.h"

#include <string>

namespace vek {

extern MatrixConfig Config;         ///< the configuration being edited
extern MatrixConfig SavedConfig;    ///< Config as last created, opened or saved
extern bool ConfigChanged;          ///< set by every edit; cleared by new, open and save
extern std::string CurrentFileName; ///< UTF-8 path last opened or saved; empty for a new configuration
/// What a configuration without a name was made of ("hall.VMC"), in UTF-8; empty for nothing.
extern std::string ConfigOrigin;

/// What the user sees as the configuration's name: that of its file, without folders, or else its origin;
/// empty for a new one.
std::string ShownFileName();

/// Gives every field of Config its default and forgets file name and origin; Config and SavedConfig are equal
/// afterwards.
void NewConfiguration();

/// True when any field of Config differs from SavedConfig.
bool ConfigDiffers();

/// Reads a file into Config. Throws FileError with Config as it was; SavedConfig is left alone either way.
void ReadConfigFile(const std::string& path);

/// Writes Config to a file. Throws FileError with the old file as it was.
void WriteConfigFile(const std::string& path);

} // namespace vek
