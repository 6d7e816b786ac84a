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
inline void AberrationDisplacement(const AberrationTerms &a, const double p[3], double d[3]) {
    const double x = p[0], y = p[1], z = p[2];
    const double k = a.kappa, ek = a.ek;
    const double sS = a.sinS, cS = a.cosS, sW = a.sinW, cW = a.cosW, sE = a.sinE, cE = a.cosE;
    double dx = k * ((1.0 - x * x) * sS + x * y * cS * cE + x * z * cS * sE);
    double dy = k * (y * z * cS * sE - (1.0 - y * y) * cS * cE - x * y * sS);
    double dz = k * (y * z * cS * cE - x * z * sS - (1.0 - z * z) * cS * sE);
    dx += ek * (-(1.0 - x * x) * sW - x * y * cW * cE - x * z * cW * sE);
    dy += ek * ((1.0 - y * y) * cW * cE + x * y * sW - y * z * cW * sE);
    dz += ek * ((1.0 - z * z) * cW * sE + x * z * sW - y * z * cW * cE);
    d[0] = dx;
    d[1] = dy;
    d[2] = dz;
}

// Adds (add) or removes annual aberration; out may be v.
void ApplyAberration(const AberrationTerms &a, const double v[3], bool add, double out[3]);

}  // namespace kvx::place
