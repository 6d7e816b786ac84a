// The Sun's built-in analytic theories: Newcomb's theory (Tables of the Sun)
// for 2086307.5 < jde < 2816787.5 and a short Keplerian theory outside.
#pragma once

namespace kvx::sun {

// Range of the full theory (strict bounds, dynamical Julian dates).
inline constexpr double kFullTheoryStart = 2086307.5;
inline constexpr double kFullTheoryEnd = 2816787.5;
inline bool InFullTheoryRange(double jde) { return jde > kFullTheoryStart && jde < kFullTheoryEnd; }

// Newcomb's theory: geometric geocentric ecliptic longitude and latitude of
// the Sun (degrees, longitude 0..360) and its distance (AU), referred to the
// mean ecliptic and equinox of date of the theory (the FK4 system).
void NewcombEclipticOfDate(double jde, double *lon, double *lat, double *r);

// The same place as a rectangular vector (AU) on the mean equator and equinox
// of date, with Newcomb's obliquity of the ecliptic.
void NewcombEquatorOfDate(double jde, double v[3]);

// The short theory: geometric longitude (degrees, 0..360, mean equinox of
// date, latitude 0) and distance (AU).
void ShortEclipticOfDate(double jde, double *lon, double *r);

// The fixed rotation from the mean equator and equinox of B1950.0 to J2000.0
// (the tabulated IAU 1976 precession between the two epochs), row by row.
extern const double kB1950ToJ2000[9];

}  // namespace kvx::sun
