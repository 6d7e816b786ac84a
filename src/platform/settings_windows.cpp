// Windows settings: the registry key of the library under the current user,
// then under the machine, and the module's own file name.
#ifdef _WIN32
#include <windows.h>

#include <cstring>

#include "platform/settings.h"

namespace kvx::platform {

namespace {

HMODULE gModule = nullptr;
constexpr const char *kKey = "SOFTWARE\\Pelorin\\kvxlib\\6.0";

bool ReadFromRoot(HKEY root, const char *name, char *buf, size_t size) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(root, kKey, 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) return false;
    DWORD length = static_cast<DWORD>(size);
    const LONG rc = RegQueryValueExA(key, name, nullptr, nullptr, reinterpret_cast<LPBYTE>(buf), &length);
    RegCloseKey(key);
    if (rc != ERROR_SUCCESS) return false;
    // A value stored without its terminator: terminate it if there is room.
    if (length == 0 || buf[length - 1] != '\0') {
        if (length >= size) return false;
        buf[length] = '\0';
    }
    return true;
}

}  // namespace

bool ReadSetting(const char *name, char *buf, size_t size) {
    if (!name || !buf || size == 0) return false;
    return ReadFromRoot(HKEY_CURRENT_USER, name, buf, size) || ReadFromRoot(HKEY_LOCAL_MACHINE, name, buf, size);
}

bool ModuleFileName(char *buf, size_t size) {
    if (!buf || size == 0) return false;
    buf[0] = '\0';
    const DWORD n = GetModuleFileNameA(gModule, buf, static_cast<DWORD>(size));
    if (n == 0) return false;
    buf[size - 1] = '\0';
    return true;
}

void SetModuleHandle(void *module) { gModule = static_cast<HMODULE>(module); }

bool ReadSettingFromFile(const char *, const char *, char *, size_t) { return false; }
bool ReadSettingFromText(const char *, size_t, const char *, char *, size_t) { return false; }

}  // namespace kvx::platform
#endif
