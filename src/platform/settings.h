// Where the data-file settings come from, and where the library itself is.
//
// Windows: string values under HKEY_CURRENT_USER, then HKEY_LOCAL_MACHINE,
// key "SOFTWARE\Pelorin\kvxlib\6.0". POSIX: the same values in text files,
// one "Name=Value" per line ('#' starts a comment line), read from the
// per-user file ${XDG_CONFIG_HOME:-$HOME/.config}/Pelorin/kvxlib/6.0.conf
// and then from the first Pelorin/kvxlib/6.0.conf that exists under the
// directories of ${XDG_CONFIG_DIRS:-/etc/xdg} (the freedesktop.org base
// directory conventions). A value found in the per-user store hides only that value.
#pragma once

#include <cstddef>
#include <string>

namespace kvx::platform {

// Reads setting `name` into buf (size bytes, terminator included): the
// per-user store first, then the machine-wide one. False when neither holds
// the value or it does not fit.
bool ReadSetting(const char *name, char *buf, size_t size);

// Full path of the library's own file, truncated to size - 1 characters.
// False (and buf "") when the platform cannot tell.
bool ModuleFileName(char *buf, size_t size);

// Windows: the module handle given to the entry point (unused elsewhere).
void SetModuleHandle(void *module);

// POSIX: the value of `name` in one configuration file (exposed for tests).
bool ReadSettingFromFile(const char *file, const char *name, char *buf, size_t size);
// POSIX: the same from the text of such a file, text[0..length).
bool ReadSettingFromText(const char *text, size_t length, const char *name, char *buf, size_t size);

#ifndef _WIN32
// The per-user settings file (empty when neither XDG_CONFIG_HOME nor HOME is
// an absolute path) and the first existing machine-wide one (empty if none).
std::string UserFile();
std::string MachineFile();
#endif

}  // namespace kvx::platform
