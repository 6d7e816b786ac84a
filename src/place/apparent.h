// Internal pieces of the apparent-place corrections shared by the
// coordinate conversion and the star chain.
#pragma once

#include "kvxlib.h"

namespace kvx::place {

// What the aberration displacement needs of the instant, as pairs of the
// circular term (first) and the eccentric term (second): kappa and e kappa
// (radians), the sines and the cosines of the Sun's true longitude S and of
// the longitude of perihelion w; and the sine and cosine of the true
// obliquity eps.
struct AberrationTerms {
    alignas(16) double k[2];
    alignas(16) double sin[2];
    alignas(16) double cos[2];
    double sinE, cosE;
};

// The terms of t's instant. The reference is to the calling thread's copy of
// the last instant's terms: valid until the thread's next call.
const AberrationTerms &MakeAberrationTerms(const ATime &t);

// d = the aberration displacement of the unit direction p (not normalised),
// the component formulas term by term in their published order.
void AberrationDisplacement(const AberrationTerms &a, const double p[3], double d[3]);

// Adds (add) or removes annual aberration; out may be v.
void ApplyAberration(const AberrationTerms &a, const double v[3], bool add, double out[3]);

}  // namespace kvx::place
