// POSIX settings: XDG configuration files in place of the registry, and
// dladdr for the library's own path in place of GetModuleFileNameA.
#ifndef _WIN32
#include <dlfcn.h>
#include <strings.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/file.h"
#include "platform/settings.h"

namespace kvx::platform {

namespace {

constexpr const char *kRelativePath = "/Pelorin/kvxlib/6.0.conf";

bool IsFile(const std::string &path) {
    struct stat st {};
    return stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

// An environment variable that is set, non-empty and an absolute path (the
// XDG base-directory rules treat relative paths as invalid and ignore them).
const char *AbsoluteEnv(const char *name) {
    const char *v = std::getenv(name);
    return (v && v[0] == '/') ? v : nullptr;
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

}  // namespace

std::string UserFile() {
    if (const char *home = AbsoluteEnv("XDG_CONFIG_HOME")) return std::string(home) + kRelativePath;
    if (const char *home = AbsoluteEnv("HOME")) return std::string(home) + "/.config" + kRelativePath;
    return std::string();
}

std::string MachineFile() {
    const char *dirs = std::getenv("XDG_CONFIG_DIRS");
    std::string list = (dirs && dirs[0]) ? dirs : "/etc/xdg";
    size_t start = 0;
    while (start <= list.size()) {
        size_t end = list.find(':', start);
        if (end == std::string::npos) end = list.size();
        const std::string dir = list.substr(start, end - start);
        if (!dir.empty() && dir[0] == '/' && IsFile(dir + kRelativePath)) return dir + kRelativePath;
        start = end + 1;
    }
    return std::string();
}

// A line is "Name=Value": blanks around the name are ignored and names
// compare without regard to case (as registry value names do); the value is
// everything after the first '=' up to the end of the line, as stored. The
// first line that names the value wins. Lines starting with '#' are
// comments; lines without '=' are ignored.
bool ReadSettingFromText(const char *text, size_t length, const char *name, char *buf, size_t size) {
    if ((!text && length) || !name || !buf || size == 0) return false;
    const std::string_view all(text, length), wanted(name);
    size_t at = 0;
    while (at < length) {
        size_t end = all.find('\n', at);
        if (end == std::string_view::npos) end = length;
        std::string_view line = all.substr(at, end - at);
        at = end + 1;
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        size_t p = 0;
        while (p < line.size() && IsBlank(line[p])) ++p;
        if (p == line.size() || line[p] == '#') continue;
        const size_t eq = line.find('=', p);
        if (eq == std::string_view::npos) continue;
        size_t nameEnd = eq;
        while (nameEnd > p && IsBlank(line[nameEnd - 1])) --nameEnd;
        // The name compares as a C string: up to a NUL byte in the line.
        std::string_view key = line.substr(p, nameEnd - p);
        key = key.substr(0, key.find('\0'));
        if (key.size() != wanted.size() || strncasecmp(key.data(), name, key.size()) != 0) continue;
        const std::string_view value = line.substr(eq + 1);
        // Like a registry read into a buffer too small, a value that does not
        // fit is not read at all.
        if (value.size() >= size || value.find('\0') != std::string_view::npos) return false;
        std::memcpy(buf, value.data(), value.size());
        buf[value.size()] = '\0';
        return true;
    }
    return false;
}

// The file is read whole (settings files are a few lines) and parsed as text.
bool ReadSettingFromFile(const char *file, const char *name, char *buf, size_t size) {
    if (!file || !file[0] || !name || !buf || size == 0) return false;
    Source source = OpenSource(file, OpenMode::kText);
    if (!IsOpen(source)) return false;
    bool found = false;
    if (LoadIntoMemory(&source, nullptr) == LoadResult::kOk)
        found = ReadSettingFromText(reinterpret_cast<const char *>(source.bytes), static_cast<size_t>(source.size),
                                    name, buf, size);
    CloseSource(&source);
    return found;
}

bool ReadSetting(const char *name, char *buf, size_t size) {
    const std::string user = UserFile();
    if (!user.empty() && ReadSettingFromFile(user.c_str(), name, buf, size)) return true;
    const std::string machine = MachineFile();
    return !machine.empty() && ReadSettingFromFile(machine.c_str(), name, buf, size);
}

bool ModuleFileName(char *buf, size_t size) {
    if (!buf || size == 0) return false;
    buf[0] = '\0';
    Dl_info info{};
    if (dladdr(reinterpret_cast<void *>(&ModuleFileName), &info) == 0 || !info.dli_fname) return false;
    std::strncpy(buf, info.dli_fname, size - 1);
    buf[size - 1] = '\0';
    return true;
}

void SetModuleHandle(void *) {}

}  // namespace kvx::platform
#endif
