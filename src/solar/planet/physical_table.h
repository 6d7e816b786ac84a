// Rotation elements and constant physical data of the planets and Pluto,
// indexed by body code 0..7 (physical_table.cpp).
#pragma once

#include "kvxlib.h"

namespace kvx::physical {

// What a periodic term of the rotation elements adds to.
enum class Target { kRa, kDec, kW };

// amplitude x sin (or cos for the declination) of phase + rate x argument,
// degrees; the argument is Julian centuries from J2000.0 (TDB) unless
// perDay, then days.
struct PeriodicTerm {
    int code;
    Target target;
    double amplitude, phase, rate;
    bool perDay;
};

extern const PlanetPhysical gPlanetPhysical[8];
extern const PeriodicTerm gPeriodicTerms[];
extern const int gPeriodicTermCount;

// Jupiter's System I and II prime meridians, W = w0 + rate x (JDE -
// 2433282.5): Meeus, Astronomical Algorithms (2nd ed. 1998), ch. 43.
inline constexpr double kJupiterSystemEpoch = 2433282.5;
inline constexpr double kJupiterSystem1[2] = {17.710, 877.90003539};
inline constexpr double kJupiterSystem2[2] = {16.838, 870.27003539};

// Outer edge of Saturn's ring A at 1 AU, arcseconds (Meeus ch. 45).
inline constexpr double kSaturnRingAt1Au = 375.35;

}  // namespace kvx::physical
