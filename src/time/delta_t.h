// The delta-T file: loaded once at start-up, released at unload; and the
// built-in TAI - UTC steps used where no file covers a date.
#pragma once

#include <cstdint>

#include "platform/file.h"

namespace kvx::deltat {

// Loads the delta-T file at `path` into the process-wide table (replacing
// none: call Release first). Returns true when a table was kept. A file of
// a header line and no data lines is kept as an empty table, which Delta T
// ignores (it falls back to the built-in rules).
bool LoadFile(const char *path);

// As LoadFile, from an open source (a file, or the file's bytes in memory).
bool LoadFrom(const platform::Source &source);

// Frees the loaded table, if any; Delta T falls back to the built-in rules.
void Release();

// Delta T = TT - UT in days at Julian date jd: the loaded table, else the
// built-in TAI - UTC steps or the Espenak-Meeus polynomials.
double DeltaTDays(double jd);

// Number of entries of the loaded table (0 when none or empty) and the
// format version of the last load attempt (-1 before any).
int32_t LoadedCount();
int32_t LoadedVersion();
// Oldest and newest Julian dates of the loaded table; false when none.
bool LoadedSpan(double *oldest, double *newest);

// One row of the TAI - UTC table of 1961-1971: from startJd on,
// TAI - UTC = offset + (MJD - referenceMjd) * rate seconds.
struct TaiUtcRow {
    double startJd;
    double offset;
    double referenceMjd;
    double rate;
};
// The rows, the last one only closing the range.
extern const TaiUtcRow kTaiUtc[];
extern const int kTaiUtcRows;

}  // namespace kvx::deltat
