// Internal pieces of the apparent-place corrections shared by the
// coordinate conversion and the star chain.
#pragma once

#include "kvxlib.h"

namespace kvx::place {

// What the aberration displacement needs of the instant: kappa and e kappa
// (radians), the sine and cosine of the Sun's true longitude S, of the
// longitude of perihelion w and of the true obliquity eps.
struct AberrationTerms {
    double kappa, ek;
    double sinS, cosS, sinW, cosW, sinE, cosE;
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
