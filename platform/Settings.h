// The per-user settings store, for reading only.
#pragma once

#include <optional>
#include <string>

namespace platform {

/// The value of a key, or nothing. The store is one file per application in the user's configuration folder
/// (INI form): [section], key=value.
std::optional<std::string> ReadSetting(const std::string& application, const std::string& section,
                                       const std::string& key);

/// Path of an application's settings file, for a program that owns it.
std::string SettingsFile(const std::string& application);

/// Whether a file of settings stands there or can be made: what is no file (a folder, a pipe that would keep
/// its reader waiting) is left alone.
bool MayOpenSettings(const std::string& file);

}  // namespace platform
