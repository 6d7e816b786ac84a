// Load and release sequences of the data files. Each file's location is a
// setting (registry on Windows, XDG configuration files on POSIX) or a fixed
// name in the directory of the library file itself.
#include "time/startup.h"

#include <cstring>
#include <strings.h>

#include "calendar/meteor.h"
#include "kvxlib.h"
#include "platform/settings.h"
#include "solar/ephem/jpl_de.h"
#include "solar/ephem/planet_xyz.h"
#include "time/delta_t.h"

namespace kvx::startup {

namespace {

bool gOnMemory = false;
int gPlanetEarth = 0;
double gPlanetEarthStart = 0.0, gPlanetEarthEnd = 0.0;

bool EqualsNoCase(const char *a, const char *b) {
#ifdef _WIN32
    return _stricmp(a, b) == 0;
#else
    return strcasecmp(a, b) == 0;
#endif
}

// Bounded append within kPathBytes (strncat semantics).
void AppendBounded(char *out, const char *tail) {
    const size_t used = std::strlen(out);
    if (used + 1 >= kPathBytes) return;
    std::strncat(out, tail, kPathBytes - used - 1);
}

}  // namespace

bool ReadOnMemory() {
    char value[kOnMemoryBytes] = {};
    if (!platform::ReadSetting("OnMemory", value, sizeof value)) return false;
    return EqualsNoCase(value, "yes") || EqualsNoCase(value, "true");
}

void BuildPath(const char *name, const char *defaultName, char *out) {
    out[0] = '\0';
    if (platform::ReadSetting(name, out, kPathBytes)) return;
    const size_t reserve = std::strlen(defaultName);
    const size_t room = reserve < kPathBytes ? kPathBytes - reserve : 1;
    if (!platform::ModuleFileName(out, room)) out[0] = '\0';
    // Keep the directory: cut just after the last separator.
    size_t cut = std::strlen(out);
    while (cut > 0 && out[cut - 1] != '\\' && out[cut - 1] != '/' && out[cut - 1] != ':') --cut;
    out[cut] = '\0';
    AppendBounded(out, defaultName);
}

void Load() {
    char path[kPathBytes];
    gOnMemory = ReadOnMemory();

    BuildPath("DtUtFile", "kvxjdt.dat", path);
    deltat::LoadFile(path);

    BuildPath("PlanetXyzFile", "planet.xyz", path);
    gPlanetEarth = 0;
    if (planetxyz::Open(path, gOnMemory))
        gPlanetEarth = planetxyz::Range(-3, &gPlanetEarthStart, &gPlanetEarthEnd);

    // Without a setting the path is the library's directory itself, which
    // does not open as a file.
    BuildPath("JplEphUnixFile", "", path);
    if (path[0] != '\0' && jpl::OpenMain(path, gOnMemory)) jpl::LoadMoonFile(path);

    if (!jpl::MoonHandle()) {
        BuildPath("MoonXyzFile", "moon.xyz", path);
        jpl::LoadMoonFile(path);
    }

    BuildPath("MeteorFile", "meteor.txt", path);
    meteor::LoadFile(path);
}

void Release() {
    deltat::Release();
    meteor::Release();
    planetxyz::Release();
    gPlanetEarth = 0;
    jpl::CloseMoon();
    jpl::CloseMain();
}

int PlanetFileEarthRange(double *start, double *end) {
    if (start) *start = gPlanetEarthStart;
    if (end) *end = gPlanetEarthEnd;
    return gPlanetEarth;
}

}  // namespace kvx::startup

namespace {

void FromReader(const kvx::jpl::Reader &r, DataFileInfo *out) {
    *out = DataFileInfo{};
    out->start = r.startJd;
    out->end = r.endJd;
    out->step = r.stepDays;
    const double records = (r.endJd - r.startJd) / r.stepDays;
    out->count = (records >= 0.0 && records < 2e9) ? static_cast<int32_t>(records + 0.5) : 0;
    out->version = r.deNumber;
}

}  // namespace

extern "C" int32_t GetDataFileInfo(int32_t file, int32_t index, DataFileInfo *out) {
    if (!out) return 0;
    switch (file) {
    case KVX_DATA_JPL_DE:
    case KVX_DATA_MOON: {
        const kvx::jpl::Reader *r = file == KVX_DATA_JPL_DE ? kvx::jpl::MainHandle() : kvx::jpl::MoonHandle();
        if (index != 0 || !r) return 0;
        FromReader(*r, out);
        return 1;
    }
    case KVX_DATA_PLANET: {
        kvx::planetxyz::BlockInfo b;
        if (!kvx::planetxyz::Block(index, &b)) return 0;
        *out = DataFileInfo{b.first, b.last, b.step, b.rows, 0, b.fileNumber, b.body};
        return 1;
    }
    case KVX_DATA_DELTA_T: {
        double oldest, newest;
        if (index != 0 || !kvx::deltat::LoadedSpan(&oldest, &newest)) return 0;
        *out = DataFileInfo{oldest, newest, 0.0, kvx::deltat::LoadedCount(), kvx::deltat::LoadedVersion(), 0, 0};
        return 1;
    }
    default: return 0;
    }
}
