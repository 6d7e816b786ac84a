// kvx data: which data files the library loaded, and from where.
//
// What was loaded and what it covers comes from the library's exports
// (GetDataFileInfo, GetJplDeVersion, IsValidPlanetXyzFile,
// IsValidMoonXyzFile, IsValidJdtFile, GetMeteorInfoCount). Where the files
// are the command looks up with the library's own settings reader (compiled
// into the CLI: per-user, then machine-wide configuration file, else the
// library's own directory).
#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <cmath>
#include <cstdio>
#include <cctype>
#include <cstring>
#include <string>
#include <vector>

#include "commands.h"
#include "report.h"
#include "platform/settings.h"

namespace kvx::cli {

namespace {

#ifdef _WIN32
// The directory of kvxlib.dll: the module that holds one of its exports.
std::string LibraryDirectory() {
    HMODULE module = nullptr;
    if (!GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCSTR>(&GetJplDeVersion), &module))
        return std::string();
    char p[MAX_PATH];
    const DWORD n = GetModuleFileNameA(module, p, sizeof p);
    if (n == 0 || n >= sizeof p) return std::string();
    const std::string path(p, n);
    return path.substr(0, path.find_last_of("\\/:") + 1);
}
#else
std::string LibraryDirectory() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void *>(&GetJplDeVersion), &info) == 0 || !info.dli_fname) return std::string();
    std::string p = info.dli_fname;
    return p.substr(0, p.find_last_of('/') + 1);
}
#endif

struct Located {
    std::string path;
    std::string from;  // "user settings", "machine settings", "default"
};

Located Locate(const char *name, const char *defaultName) {
#ifndef _WIN32
    char v[260];
    const std::string user = platform::UserFile(), machine = platform::MachineFile();
    if (!user.empty() && platform::ReadSettingFromFile(user.c_str(), name, v, sizeof v))
        return {v, "user settings " + user};
    if (!machine.empty() && platform::ReadSettingFromFile(machine.c_str(), name, v, sizeof v))
        return {v, "machine settings " + machine};
    return {LibraryDirectory() + defaultName, "default"};
#else
    // The registry, current user before machine, as the library reads it.
    char v[260];
    if (platform::ReadSetting(name, v, sizeof v)) return {v, "registry"};
    return {LibraryDirectory() + defaultName, "default"};
#endif
}

bool OnMemory() {
    std::string v = Locate("OnMemory", "").path;
    for (char &c : v) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return v == "yes" || v == "true";
}

std::string Date(double jd) {
    ADate d{};
    JdToDate2(jd, &d);
    char buf[32];
    std::snprintf(buf, sizeof buf, "%04d-%02d-%02d", d.year, d.month, d.day);
    return buf;
}

// What the library loaded of one data file (nothing: all zero).
DataFileInfo Info(int32_t file, int32_t index = 0) {
    DataFileInfo info{};
    GetDataFileInfo(file, index, &info);
    return info;
}

std::vector<DataFileInfo> PlanetBlocks() {
    std::vector<DataFileInfo> blocks;
    DataFileInfo b;
    while (GetDataFileInfo(KVX_DATA_PLANET, static_cast<int32_t>(blocks.size()), &b)) blocks.push_back(b);
    return blocks;
}

const char *PlanetName(int number) {
    static const char *const kNames[] = {"Mercury", "Venus", "Earth", "Mars",  "Jupiter",  "Saturn", "Uranus",
                                         "Neptune", "Pluto", "Eris",  "Ceres", "Makemake", "Haumea"};
    const int i = number / 100 - 1;
    return (number % 100 == 99 && i >= 0 && i < 13) ? kNames[i] : "?";
}

// "", or " (missing)" when no file is at the path: a configured path is
// shown even when the file is not there.
std::string Missing(const std::string &path) {
    if (path.empty()) return "";
    FILE *f = std::fopen(path.c_str(), "rb");
    if (!f) return " (missing)";
    std::fclose(f);
    return "";
}

std::string Span(double a, double b) {
    // Room for any double in %.1f (a damaged header may hold 1e308).
    char buf[768];
    std::snprintf(buf, sizeof buf, "JD %.1f to %.1f (%s to %s)", a, b, Date(a).c_str(), Date(b).c_str());
    return buf;
}

}  // namespace

bool DataOnMemory() { return OnMemory(); }

int RunData(const Args &args) {
    args.ExpectPositional(0, 0);
    const bool json = args.Flag("json");
    const bool onMemory = OnMemory();

    const Located jdtAt = Locate("DtUtFile", "kvxjdt.dat");
    const int jdtValid = IsValidJdtFile();
    const DataFileInfo jdt = Info(KVX_DATA_DELTA_T);

    const Located planetAt = Locate("PlanetXyzFile", "planet.xyz");
    const int planetOpen = IsValidPlanetXyzFile();
    const std::vector<DataFileInfo> blocks = PlanetBlocks();
    const char *planetState = planetOpen ? "open"
                              : (onMemory && !blocks.empty()) ? "read into memory (OnMemory)"
                                                              : "not loaded";

    const Located jplAt = Locate("JplEphUnixFile", "");
    const int deVersion = GetJplDeVersion();
    const DataFileInfo jpl = Info(KVX_DATA_JPL_DE);

    const int moonValid = IsValidMoonXyzFile();
    const Located moonAt = Locate("MoonXyzFile", "moon.xyz");
    const bool moonFromJpl = moonValid && deVersion >= 0;
    const DataFileInfo moon = Info(KVX_DATA_MOON);

    const Located meteorAt = Locate("MeteorFile", "meteor.txt");
    const int meteors = IsValidMeteorFile() ? GetMeteorInfoCount() : 0;

    if (json) {
        std::string bodies = "[";
        for (size_t i = 0; i < blocks.size(); ++i)
            bodies += (i ? ", " : "") + Json()
                                           .Int("number", blocks[i].number)
                                           .Str("body", PlanetName(blocks[i].number))
                                           .Num("first", blocks[i].start)
                                           .Num("last", blocks[i].end)
                                           .Num("step", blocks[i].step)
                                           .Int("rows", blocks[i].count)
                                           .Text();
        bodies += "]";
        std::string lines = "[";
        for (const auto &l : StartupDiagnostics()) lines += (lines.size() > 1 ? ", " : "") + JsonString(l);
        Json out;
        out.Raw("onMemory", onMemory ? "true" : "false")
            .Raw("startup_messages", lines + "]")
            .Raw("deltaT", Json()
                               .Str("path", jdtAt.path)
                               .Bool("exists", Missing(jdtAt.path).empty())
                               .Raw("valid", jdtValid ? "true" : "false")
                               .Num("oldest", jdt.count > 0 ? jdt.start : NAN)
                               .Raw("version", jdt.count > 0 ? std::to_string(jdt.version) : "null")
                               .Int("entries", jdt.count)
                               .Num("newest", jdt.count > 0 ? jdt.end : NAN)
                               .Text())
            .Raw("planets", Json().Str("path", planetAt.path).Bool("exists", Missing(planetAt.path).empty()).Str("state", planetState).Raw("bodies", bodies).Text())
            .Raw("jpl", Json()
                            .Str("path", jplAt.path)
                            .Raw("version", deVersion >= 0 ? std::to_string(deVersion) : "null")
                            .Num("start", deVersion >= 0 ? jpl.start : NAN)
                            .Num("end", deVersion >= 0 ? jpl.end : NAN)
                            .Num("step", deVersion >= 0 ? jpl.step : NAN)
                            .Text())
            .Raw("moon", Json()
                             .Str("source", moonFromJpl ? "jpl" : moonValid ? "moon.xyz" : "theory")
                             .Str("path", moonFromJpl ? jplAt.path : moonValid ? moonAt.path : "")
                             .Num("start", moonFromJpl ? jpl.start : moonValid ? moon.start : NAN)
                             .Num("end", moonFromJpl ? jpl.end : moonValid ? moon.end : NAN)
                             .Text())
            .Raw("meteors", Json().Str("path", meteorAt.path).Bool("exists", Missing(meteorAt.path).empty()).Int("count", meteors).Text());
        std::printf("%s\n", out.Text().c_str());
        return 0;
    }

    std::printf("OnMemory    %s\n", onMemory ? "on" : "off");
    std::printf("Delta T     %s (%s)%s\n", jdtAt.path.c_str(), jdtAt.from.c_str(), Missing(jdtAt.path).c_str());
    if (jdt.count > 0)
        std::printf("            version %d, %d entries, %s%s\n", jdt.version, jdt.count,
                    Span(jdt.start, jdt.end).c_str(), jdtValid ? "" : "; not in use as a version-2 file");
    else
        std::printf("            not loaded: built-in table and polynomials\n");
    std::printf("Planets     %s (%s)%s: %s\n", planetAt.path.c_str(), planetAt.from.c_str(),
                Missing(planetAt.path).c_str(), planetState);
    if (planetOpen || std::strcmp(planetState, "not loaded") != 0)
        for (const auto &b : blocks)
            std::printf("            %-8s %s, step %g d, %d rows\n", PlanetName(b.number), Span(b.start, b.end).c_str(),
                        b.step, b.count);
    if (deVersion >= 0)
        std::printf("JPL DE      %s (%s): DE%d, %s%s\n", jplAt.path.c_str(), jplAt.from.c_str(), deVersion,
                    Span(jpl.start, jpl.end).c_str(), onMemory ? "; read into memory, so not queried" : "");
    else
        std::printf("JPL DE      %s\n", jplAt.from == "default" ? "none (JplEphUnixFile not set)"
                                                           : (jplAt.path + " (" + jplAt.from + ")" + Missing(jplAt.path) +
                                                              ": not loaded").c_str());
    if (moonFromJpl)
        std::printf("Moon        from the JPL DE file, %s\n", Span(jpl.start, jpl.end).c_str());
    else if (moonValid)
        std::printf("Moon        %s (%s): %s\n", moonAt.path.c_str(), moonAt.from.c_str(), Span(moon.start, moon.end).c_str());
    else
        std::printf("Moon        built-in theory\n");
    if (meteors > 0)
        std::printf("Meteors     %s (%s): %d showers\n", meteorAt.path.c_str(), meteorAt.from.c_str(), meteors);
    else
        std::printf("Meteors     %s (%s)%s: none loaded\n", meteorAt.path.c_str(), meteorAt.from.c_str(),
                    Missing(meteorAt.path).c_str());
    std::printf("Start-up messages of the library%s\n", StartupDiagnostics().empty() ? ": none" : ":");
    for (const auto &l : StartupDiagnostics()) std::printf("  %s\n", l.c_str());
    return 0;
}

}  // namespace kvx::cli
