// Delta T = TT - UT: the delta-T file loaded at start-up, the built-in
// TAI - UTC steps of 1961-1971, and the polynomial expressions of
// F. Espenak and J. Meeus, "Five Millennium Canon of Solar Eclipses:
// -1999 to +3000" (NASA TP-2006-214141, 2006), with the correction for the
// lunar secular acceleration -0.000012932 (y - 1955)^2 s given there.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "kvxlib.h"
#include "platform/file.h"
#include "time/delta_t.h"

namespace kvx::deltat {

namespace {

struct Entry {
    double jd;
    double dt;  // days
};

// The loaded table, newest entry first; null when none is loaded. Written
// only at start-up and unload, read without locking in between.
Entry *gTable = nullptr;
int32_t gCount = 0;
int32_t gVersion = -1;

// Five years past the newest entry the file still holds its last value.
constexpr double kHoldDays = 1826.2110000000002;

constexpr int kLineLength = 128;  // 127 characters and the terminator
constexpr char kHeader[] = "# KVXJDT VER.";
constexpr size_t kHeaderLength = 13;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Step lookup in the loaded table: entry hi of a bisection over a table
// sorted newest first, or the newest entry up to five years past it.
bool FromTable(double jd, double *dt) {
    if (!gTable || gCount < 1) return false;
    const double newest = gTable[0].jd;
    if (gTable[gCount - 1].jd <= jd && jd <= newest) {
        int32_t lo = 0, hi = gCount - 1;
        while (hi - lo > 1) {
            const int32_t mid = (lo + hi) / 2;
            if (gTable[mid].jd > jd) lo = mid;
            else hi = mid;
        }
        *dt = gTable[hi].dt;
        return true;
    }
    if (newest < jd && jd <= newest + kHoldDays) {
        *dt = gTable[0].dt;
        return true;
    }
    return false;
}

// Delta T in seconds, before the secular-acceleration correction, from the
// early UTC steps or the Espenak-Meeus polynomial of the integer year.
double BuiltInSeconds(double jd, int32_t year, double y) {
    if (kTaiUtc[0].startJd <= jd && jd < kTaiUtc[kTaiUtcRows - 1].startJd) {
        int row = 0;
        while (row + 1 < kTaiUtcRows - 1 && kTaiUtc[row + 1].startJd <= jd) ++row;
        const TaiUtcRow &r = kTaiUtc[row];
        return r.offset + (jd - 2400000.5 - r.referenceMjd) * r.rate + 32.184;
    }
    if (year < -499) {
        const double u = (y - 1820.0) / 100.0;
        return -20.0 + 32.0 * u * u;
    }
    if (year <= 500) {
        const double u = y / 100.0;
        const double u2 = u * u, u3 = u2 * u, u4 = u3 * u, u5 = u4 * u, u6 = u5 * u;
        return 10583.6 - 1014.41 * u + 33.78311 * u2 - 5.952053 * u3 - 0.1798452 * u4 + 0.022174192 * u5 +
               0.0090316521 * u6;
    }
    if (year <= 1600) {
        const double u = (y - 1000.0) / 100.0;
        const double u2 = u * u, u3 = u2 * u, u4 = u3 * u, u5 = u4 * u, u6 = u5 * u;
        return 1574.2 - 556.01 * u + 71.23472 * u2 + 0.319781 * u3 - 0.8503463 * u4 - 0.005050998 * u5 +
               0.0083572073 * u6;
    }
    if (year <= 1700) {
        const double t = y - 1600.0;
        const double t2 = t * t, t3 = t2 * t;
        return 120.0 - 0.9808 * t - 0.01532 * t2 + t3 / 7129.0;
    }
    if (year <= 1800) {
        const double t = y - 1700.0;
        const double t2 = t * t, t3 = t2 * t, t4 = t3 * t;
        return 8.83 + 0.1603 * t - 0.0059285 * t2 + 0.00013336 * t3 - t4 / 1174000.0;
    }
    if (year <= 1860) {
        const double t = y - 1800.0;
        const double t2 = t * t, t3 = t2 * t, t4 = t3 * t, t5 = t4 * t, t6 = t5 * t, t7 = t6 * t;
        return 13.72 - 0.332447 * t + 0.0068612 * t2 + 0.0041116 * t3 - 0.00037436 * t4 + 1.21272e-5 * t5 -
               1.699e-7 * t6 + 8.75e-10 * t7;
    }
    if (year <= 1900) {
        const double t = y - 1860.0;
        const double t2 = t * t, t3 = t2 * t, t4 = t3 * t, t5 = t4 * t;
        return 7.62 + 0.5737 * t - 0.251754 * t2 + 0.01680668 * t3 - 0.0004473624 * t4 + t5 / 233174.0;
    }
    if (year <= 1920) {
        const double t = y - 1900.0;
        const double t2 = t * t, t3 = t2 * t, t4 = t3 * t;
        return -2.79 + 1.494119 * t - 0.0598939 * t2 + 0.0061966 * t3 - 0.000197 * t4;
    }
    if (year <= 1941) {
        const double t = y - 1920.0;
        const double t2 = t * t, t3 = t2 * t;
        return 21.2 + 0.84493 * t - 0.0761 * t2 + 0.0020936 * t3;
    }
    if (year <= 1960) {
        const double t = y - 1950.0;
        const double t2 = t * t, t3 = t2 * t;
        return 29.07 + 0.407 * t - t2 / 233.0 + t3 / 2547.0;
    }
    if (year <= 1986) {
        const double t = y - 1975.0;
        const double t2 = t * t, t3 = t2 * t;
        return 45.45 + 1.067 * t - t2 / 260.0 - t3 / 718.0;
    }
    if (year <= 2005) {
        const double t = y - 2000.0;
        const double t2 = t * t, t3 = t2 * t, t4 = t3 * t, t5 = t4 * t;
        return 63.86 + 0.3345 * t - 0.060374 * t2 + 0.0017275 * t3 + 0.000651814 * t4 + 2.373599e-5 * t5;
    }
    if (year <= 2050) {
        const double t = y - 2000.0;
        return 62.92 + 0.32217 * t + 0.005589 * t * t;
    }
    const double u = (y - 1820.0) / 100.0;
    if (year <= 2150) return -20.0 + 32.0 * u * u - 0.5628 * (2150.0 - y);
    return -20.0 + 32.0 * u * u;
}

void FreeTable() {
    std::free(gTable);
    gTable = nullptr;
    gCount = 0;
}

}  // namespace

double DeltaTDays(double jd) {
    double dt;
    if (FromTable(jd, &dt)) return dt;
    int32_t year, month;
    JdToDate(jd, &year, &month, nullptr);
    const double y = year + (month - 0.5) / 12.0;
    const double c = y - 1955.0;
    const double seconds = BuiltInSeconds(jd, year, y) + -1.2932e-5 * c * c;
    return seconds / 86400.0;
}

bool LoadFile(const char *path) { return platform::LoadFromPath(path, platform::OpenMode::kText, LoadFrom); }

bool LoadFrom(const platform::Source &source) {
    platform::LineReader f(source);

    int32_t capacity = 10, count = 0;
    Entry *table = static_cast<Entry *>(std::malloc(sizeof(Entry) * capacity));
    gVersion = -1;
    bool ok = table != nullptr;
    char line[kLineLength];

    bool haveLine = ok && f.Next(line, sizeof line);
    if (!haveLine) ok = false;  // empty file
    if (ok) {
        if (IsDigit(line[0])) {
            gVersion = 1;
        } else if (std::strncmp(line, kHeader, kHeaderLength) == 0) {
            gVersion = static_cast<int32_t>(std::strtol(line + kHeaderLength, nullptr, 10));
            if (gVersion < 1) ok = false;
            else haveLine = f.Next(line, sizeof line);
        } else {
            ok = false;
        }
    }
    while (ok && haveLine) {
        if (count == capacity) {
            capacity += 10;
            Entry *grown = static_cast<Entry *>(std::realloc(table, sizeof(Entry) * capacity));
            if (!grown) {
                ok = false;
                break;
            }
            table = grown;
        }
        const char *gap = std::strpbrk(line, " \t");
        if (!gap) {  // a blank line or a single number rejects the file
            ok = false;
            break;
        }
        const double jd = std::strtod(line, nullptr);
        const double value = std::strtod(gap, nullptr);
        table[count].jd = jd;
        table[count].dt = gVersion == 1 ? value : (value + 32.184) / 86400.0;
        ++count;
        haveLine = f.Next(line, sizeof line);
    }
    if (!ok) {
        std::free(table);
        return false;
    }
    FreeTable();
    gTable = table;
    gCount = count;
    return true;
}

void Release() { FreeTable(); }

int32_t LoadedCount() { return gCount; }
int32_t LoadedVersion() { return gVersion; }
bool LoadedSpan(double *oldest, double *newest) {
    if (!gTable || gCount < 1) return false;
    *oldest = gTable[gCount - 1].jd;
    *newest = gTable[0].jd;
    return true;
}

}  // namespace kvx::deltat

extern "C" double UtToDt(double jd) { return jd + kvx::deltat::DeltaTDays(jd); }

extern "C" double DtToUt(double jde) { return jde - kvx::deltat::DeltaTDays(jde); }

extern "C" int32_t IsValidJdtFile(void) { return (kvx::deltat::gTable && kvx::deltat::gVersion == 2) ? 1 : 0; }
