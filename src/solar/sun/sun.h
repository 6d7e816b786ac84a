// The geocentric Sun from the best source of the date, shared by the Sun,
// the planets, the Moon and the comets.
#pragma once

namespace kvx::sun {

// Width (days) of the blend into the analytic theory at the ends of the
// planet position file.
inline constexpr double kBlendDays = 50.0;

// Geocentric position vector of the Sun (AU, J2000.0 mean equator and
// equinox) at dynamical Julian date jde from the built-in theories: Newcomb's
// inside 2086307.5 < jde < 2816787.5, the short theory outside.
void AnalyticSunVector(double jde, double v[3]);

// The same from the best source: the JPL DE file, else the planet position
// file (the Earth's entry, negated), else the analytic theories; within 50
// days of the ends of the position file's Earth entry the file or DE value is
// blended linearly into the theory.
void GetSunVector(double jde, double v[3]);

// Heliocentric longitude and latitude of the Earth (degrees) on the mean
// ecliptic and equinox of date, and the Earth-Sun distance (AU).
void GetEarthLbr(double jde, double lb[2], double *r);

}  // namespace kvx::sun
