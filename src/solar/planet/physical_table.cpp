// Source: B. A. Archinal et al. 2018, "Report of the IAU Working Group on
// Cartographic Coordinates and Rotational Elements: 2015", Celestial
// Mechanics and Dynamical Astronomy 130:22, Tables 1 (poles and prime
// meridians, with Mars from Kuchynka et al. 2014 and Jupiter's nutation-
// like terms Ja..Je) and 5 (radii). Geometric V albedos: Mallama, Krobusek
// & Pavlov 2017, Icarus 282, 19 (Mercury to Neptune); Pluto 0.52 (Buratti
// et al. 2017, Icarus 287, 207). Checked against the rotation axes of an
// independent implementation by tests/reference/physical_astronomy_engine.cjs.
#include "solar/planet/physical_table.h"

namespace kvx::physical {

namespace {

// Sidereal period in hours from the prime meridian's rate (degrees/day);
// negative for a retrograde rotation.
constexpr double PeriodHours(double rate) { return 360.0 / rate * 24.0; }

}  // namespace

// code, equatorial radius, polar radius (km), flattening, sidereal period
// (h), geometric albedo, pole RA0 RA1, Dec0 Dec1 (deg, deg/century), W0 (deg),
// W1 (deg/day).
const PlanetPhysical gPlanetPhysical[8] = {
    {0, 2440.53, 2438.26, (2440.53 - 2438.26) / 2440.53, PeriodHours(6.1385108), 0.142,
     281.0103, -0.0328, 61.4155, -0.0049, 329.5988, 6.1385108},
    {1, 6051.8, 6051.8, 0.0, PeriodHours(-1.4813688), 0.689, 272.76, 0.0, 67.16, 0.0, 160.20, -1.4813688},
    {2, 3396.19, 3376.20, (3396.19 - 3376.20) / 3396.19, PeriodHours(350.891982443297), 0.170,
     317.269202, -0.10927547, 54.432516, -0.05827105, 176.049863, 350.891982443297},
    {3, 71492.0, 66854.0, (71492.0 - 66854.0) / 71492.0, PeriodHours(870.5360000), 0.538,
     268.056595, -0.006499, 64.495303, 0.002413, 284.95, 870.5360000},
    {4, 60268.0, 54364.0, (60268.0 - 54364.0) / 60268.0, PeriodHours(810.7939024), 0.499,
     40.589, -0.036, 83.537, -0.004, 38.90, 810.7939024},
    {5, 25559.0, 24973.0, (25559.0 - 24973.0) / 25559.0, PeriodHours(-501.1600928), 0.488,
     257.311, 0.0, -15.175, 0.0, 203.81, -501.1600928},
    {6, 24764.0, 24341.0, (24764.0 - 24341.0) / 24764.0, PeriodHours(541.1397757), 0.442,
     299.36, 0.0, 43.46, 0.0, 249.978, 541.1397757},
    {7, 1188.3, 1188.3, 0.0, PeriodHours(56.3625225), 0.52, 132.993, 0.0, -6.163, 0.0, 302.695, 56.3625225},
};

const PeriodicTerm gPeriodicTerms[] = {
    // Mercury: the 88-day libration, M1..M5 in days.
    {0, Target::kW, 0.01067257, 174.7910857, 4.092335, true},
    {0, Target::kW, -0.00112309, 349.5821714, 8.184670, true},
    {0, Target::kW, -0.00011040, 164.3732571, 12.277005, true},
    {0, Target::kW, -0.00002539, 339.1643429, 16.369340, true},
    {0, Target::kW, -0.00000571, 153.9554286, 20.461675, true},
    // Mars (Kuchynka et al. 2014).
    {2, Target::kRa, 0.000068, 198.991226, 19139.4819985, false},
    {2, Target::kRa, 0.000238, 226.292679, 38280.8511281, false},
    {2, Target::kRa, 0.000052, 249.663391, 57420.7251593, false},
    {2, Target::kRa, 0.000009, 266.183510, 76560.6367950, false},
    {2, Target::kRa, 0.419057, 79.398797, 0.5042615, false},
    {2, Target::kDec, 0.000051, 122.433576, 19139.9407476, false},
    {2, Target::kDec, 0.000141, 43.058401, 38280.8753272, false},
    {2, Target::kDec, 0.000031, 57.663379, 57420.7517205, false},
    {2, Target::kDec, 0.000005, 79.476401, 76560.6495004, false},
    {2, Target::kDec, 1.591274, 166.325722, 0.5042615, false},
    {2, Target::kW, 0.000145, 129.071773, 19140.0328244, false},
    {2, Target::kW, 0.000157, 36.352167, 38281.0473591, false},
    {2, Target::kW, 0.000040, 56.668646, 57420.9295360, false},
    {2, Target::kW, 0.000001, 67.364003, 76560.2552215, false},
    {2, Target::kW, 0.000001, 104.792680, 95700.4387578, false},
    {2, Target::kW, 0.584542, 95.391654, 0.5042615, false},
    // Jupiter: Ja..Je (the Galilean satellites' perturbations of the pole).
    {3, Target::kRa, 0.000117, 99.360714, 4850.4046, false},
    {3, Target::kRa, 0.000938, 175.895369, 1191.9605, false},
    {3, Target::kRa, 0.001432, 300.323162, 262.5475, false},
    {3, Target::kRa, 0.000030, 114.012305, 6070.2476, false},
    {3, Target::kRa, 0.002150, 49.511251, 64.3000, false},
    {3, Target::kDec, 0.000050, 99.360714, 4850.4046, false},
    {3, Target::kDec, 0.000404, 175.895369, 1191.9605, false},
    {3, Target::kDec, 0.000617, 300.323162, 262.5475, false},
    {3, Target::kDec, -0.000013, 114.012305, 6070.2476, false},
    {3, Target::kDec, 0.000926, 49.511251, 64.3000, false},
    // Neptune: N = 357.85 + 52.316 T.
    {6, Target::kRa, 0.70, 357.85, 52.316, false},
    {6, Target::kDec, -0.51, 357.85, 52.316, false},
    {6, Target::kW, -0.48, 357.85, 52.316, false},
};
const int gPeriodicTermCount = static_cast<int>(sizeof gPeriodicTerms / sizeof gPeriodicTerms[0]);

}  // namespace kvx::physical
