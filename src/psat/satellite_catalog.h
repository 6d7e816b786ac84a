// The satellite catalogue and the code arithmetic shared by the satellite
// routines.
#pragma once

#include <cstdint>

namespace kvx::psat {

// One catalogue entry; the fields after `planet` are in the record order
// index, name, then eight doubles.
struct SatelliteEntry {
    int32_t planet;  // planet number: -3 Earth, 2 Mars .. 7 Pluto
    int32_t index;   // from 1
    const char *name;
    double massRatio;  // satellite / planet
    double a, b, c;    // radii, km (b, c = -1: a sphere)
    double period;     // sidereal, days; negative retrograde; -1 none given
    double albedo;     // geometric
    double v10;        // absolute magnitude V(1,0)
    double oppMag;     // mean opposition magnitude
};

inline constexpr int kSatelliteCount = 24;
extern const SatelliteEntry kSatellites[kSatelliteCount];

// The catalogue entry of (planet, index), or null.
const SatelliteEntry *FindSatellite(int planet, int index);

// Satellite code of (planet, index): 100 x the planet's place from the Sun
// + index; -1 for another planet number.
int SatelliteCode(int planet, int index);

// True when a position theory exists for (planet, index).
bool HasTheory(int planet, int index);

}  // namespace kvx::psat
