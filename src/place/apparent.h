// Internal pieces of the apparent-place corrections shared by the
// coordinate conversion and the star chain.
#pragma once

#include "kvxlib.h"

namespace kvx::place {

// What the aberration displacement needs of the instant: the Earth's
// velocity in units of the speed of light (radians of displacement) on the
// equatorial axes, kappa (sin S, -cos S cos eps, -cos S sin eps) for the
// circular orbit plus e kappa (-sin w, cos w cos eps, cos w sin eps) for its
// eccentricity, with S the Sun's true longitude, w the longitude of
// perihelion and eps the true obliquity.
struct AberrationTerms {
    double velocity[3];
};

// The terms of t's instant. The reference is to the calling thread's copy of
// the last instant's terms: valid until the thread's next call.
const AberrationTerms &MakeAberrationTerms(const ATime &t);

// d = the aberration displacement v - p (p . v) of the unit direction p (not
// normalised).
void AberrationDisplacement(const AberrationTerms &a, const double p[3], double d[3]);

// Adds (add) or removes annual aberration; out may be v.
void ApplyAberration(const AberrationTerms &a, const double v[3], bool add, double out[3]);

}  // namespace kvx::place
