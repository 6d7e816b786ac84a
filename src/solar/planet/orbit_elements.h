// Two-body motion on elliptic orbits, shared by the orbital-element routines
// and the planet dispatcher.
#pragma once

#include "kvxlib.h"

namespace kvx::orbit {

// Gaussian gravitational constant, radians per day (AU, solar masses).
inline constexpr double kGauss = 0.01720209895;

// Eccentric anomaly (radians) of mean anomaly m (radians) for 0 <= e < 1, by
// Newton's method from a start that converges for every e below 1.
double SolveKepler(double m, double e);

// Rotation from the orbital plane (x toward perihelion) to the axes of the
// elements' ecliptic: columns P, Q, W of R3(-node) R1(-incl) R3(-peri).
void OrbitPlaneToEcliptic(double peri, double node, double incl, double m[9]);

}  // namespace kvx::orbit
