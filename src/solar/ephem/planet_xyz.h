// The planet position file ("planet.xyz"): precomputed heliocentric
// positions and velocities of the Earth, the planets and the dwarf planets
// at equal steps, one block per body, interpolated with a ten-point
// Lagrange polynomial. Vectors are heliocentric, on the J2000.0 equatorial
// axes, in AU and AU/day.
#pragma once

#include <cstdint>

#include "platform/file.h"

namespace kvx::planetxyz {

// Builds the directory of the file at `path` (replacing nothing: Release
// first). With onMemory the file is then read into memory and closed.
// Returns 1 when the directory was built, else 0.
int Open(const char *path, bool onMemory);

// As Open, over an already open source (a file, or bytes in memory that the
// caller keeps alive until Release), which the reader takes over.
int OpenFrom(platform::Source source, bool onMemory);

// Position (AU) and optional velocity (AU/day, may be null) of library body
// `body` (-3 Earth, 0..7 Mercury..Pluto, 8 Eris, 9 Ceres, 10 Makemake,
// 11 Haumea) at Julian date jd (the file's time scale: TT). Returns 1 and
// fills the outputs, or 0 when the body is absent, jd lies outside the
// body's [first, last] or a read fails. Lookups read with positioned reads
// (or from the image) and change nothing: any number of threads may look up
// at once between Open and Release.
int Lookup(int body, double jd, double pos[3], double vel[3]);

// First and last Julian dates of the body's block; 1, or 0 when absent.
int Range(int body, double *first, double *last);

// One block of the directory, in file order.
struct BlockInfo {
    int32_t body;        // library code
    int32_t fileNumber;  // 199 Mercury ... 1399 Haumea
    double first, last, step;
    int32_t rows;        // data rows
};
// Block `index` (0 .. blocks - 1) of the loaded file; false past the end or
// when no file is loaded. The directory outlives OnMemory's closing of the
// file.
bool Block(int index, BlockInfo *out);

// Closes the file, frees the image and empties the directory.
void Release();

}  // namespace kvx::planetxyz
