// The built-in lunar theory: a short trigonometric series for the Moon's
// geocentric ecliptic longitude, latitude and horizontal parallax, used when
// no ephemeris file covers the date.
#pragma once

namespace kvx::moon {

// One periodic term: amplitude (degrees) times sin or cos of
// (phase + rate T), phase in degrees, rate in degrees per Julian year, T in
// Julian years from 1975 January 0.0 (GetT).
struct TheoryTerm {
    double amplitude;
    double phase;
    double rate;
};

inline constexpr int kLongitudeTermCount = 62;
inline constexpr int kLatitudeTermCount = 46;
inline constexpr int kParallaxTermCount = 8;

extern const TheoryTerm kLongitudeTerms[kLongitudeTermCount];
extern const TheoryTerm kLatitudeTerms[kLatitudeTermCount];
extern const TheoryTerm kParallaxTerms[kParallaxTermCount];

// Geocentric ecliptic longitude (0..360) and latitude of the Moon in degrees
// and its distance in km at dynamical Julian date jde, from the series.
void TheoryLbr(double jde, double lb[2], double *distKm);

// True when an ephemeris file (the JPL DE file or the Moon file) gives the
// Moon at dynamical date jde, so that CalcMoonLbr and CalcMoon2 do not use
// the theory. The theory's argument GetT already carries an approximate
// Delta T: a caller that wants the theory's own best place gives it the
// universal-time date (see the lunar eclipses).
bool FromFile(double jde);

}  // namespace kvx::moon
