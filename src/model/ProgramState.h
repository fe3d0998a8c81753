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

/// Gives every field of Config its default and forgets the file name; Config and SavedConfig are equal
/// afterwards.
void NewConfiguration();

/// True when any field of Config differs from SavedConfig.
bool ConfigDiffers();

/// Reads a file into Config. Throws FileError with Config as it was; SavedConfig is left alone either way.
void ReadConfigFile(const std::string& path);

/// Writes Config to a file. Throws FileError with the old file as it was.
void WriteConfigFile(const std::string& path);

} // namespace vek
