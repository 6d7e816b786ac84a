// Coefficient tables of Newcomb's theory of the Sun (see sun_newcomb_table.cpp
// for the source).
#pragma once

namespace kvx::sun {

// One periodic term of the planetary perturbations of the Sun's longitude and
// of the logarithm of its radius vector. With g the Earth's mean anomaly and
// gP the perturbing planet's, A = i gP + j g and the term adds
//   lonCoef cos(lonPhase - A)   to the longitude (arcseconds),
//   radCoef cos(radPhase - A)   to log10 R (units of 1e-9).
struct NewcombTerm {
    int planet;       // 1 Mercury, 2 Venus, 4 Mars, 5 Jupiter, 6 Saturn
    int i;            // multiple of the planet's mean anomaly
    int j;            // multiple of the Earth's mean anomaly
    double lonCoef;   // arcseconds
    double lonPhase;  // degrees
    double radCoef;   // 1e-9 in log10 R
    double radPhase;  // degrees
};

// One periodic term of the perturbations of the Sun's latitude:
// coef cos(phase - (i gP + j g)) arcseconds.
struct NewcombLatTerm {
    int planet;
    int i;
    int j;
    double coef;   // arcseconds
    double phase;  // degrees
};

inline constexpr int kNewcombTermCount = 120;     // Mercury 4, Venus 39, Mars 45, Jupiter 21, Saturn 11
inline constexpr int kNewcombLatTermCount = 34;   // Venus 22, Mars 3, Jupiter 7, Saturn 2

extern const NewcombTerm kNewcombTerms[kNewcombTermCount];
extern const NewcombLatTerm kNewcombLatTerms[kNewcombLatTermCount];

}  // namespace kvx::sun
