// Internal pieces of the apparent-place corrections shared by the
// coordinate conversion and the star chain.
#pragma once

#include "kvxlib.h"

namespace kvx::place {

// Everything the aberration displacement needs that depends only on the
// instant: the constant of aberration and its eccentric part (radians), and
// the sines and cosines of the Sun's true longitude S, the longitude of
// perihelion w and the true obliquity eps.
struct AberrationTerms {
    double kappa, ek;
    double sinS, cosS, sinW, cosW, sinE, cosE;
};

// The terms of t's instant. The reference is to the calling thread's copy of
// the last instant's terms: valid until the thread's next call.
const AberrationTerms &MakeAberrationTerms(const ATime &t);

// d = the aberration displacement of the unit direction p (not normalised).
void AberrationDisplacement(const AberrationTerms &a, const double p[3], double d[3]);

// Adds (add) or removes annual aberration; out may be v.
void ApplyAberration(const AberrationTerms &a, const double v[3], bool add, double out[3]);

}  // namespace kvx::place
