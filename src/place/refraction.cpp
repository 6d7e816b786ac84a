// Atmospheric refraction for a standard atmosphere (10 deg C, 1010 hPa),
// after G. G. Bennett, "The calculation of astronomical refraction in
// marine navigation", Journal of Navigation 35 (1982) 255, as given in
// J. Meeus, Astronomical Algorithms, 2nd ed. (1998), ch. 16:
//   true -> apparent:  R = 1.02 / tan(h + 10.3 / (h + 5.11))  (Saemundsson)
//   apparent -> true:  R = 1 / tan(h0 + 7.31 / (h0 + 4.4))    (Bennett)
// in minutes of arc, each with an additive constant that makes R vanish at
// the zenith. The two formulas are independent fits and not exact inverses:
// a round trip leaves a residue of a fraction of an arcsecond near the
// horizon.
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"

namespace {

double TanDeg(double a) {
    const double r = kvx::DegToRad(a);
    return std::sin(r) / std::cos(r);
}

// Refraction in minutes of arc by a formula of the form
// k / tan(h + c / (h + pole)) + zenith; near the pole the tangent of h itself.
double Minutes(double h, double k, double c, double pole, double zenith) {
    const double arg = std::fabs(h + pole) < 0.1 ? h : h + c / (h + pole);
    return k / TanDeg(arg) + zenith;
}

}  // namespace

extern "C" Ad *AtmosphericRefraction(const Ad *in, Ad *out) {
    if (!in || !out) return nullptr;
    const double a = in->a, h = in->d;
    out->a = a;
    out->d = h + Minutes(h, 1.02, 10.3, 5.11, 0.0019279) / 60.0;
    return out;
}

extern "C" Ad *DeAtmosphericRefraction(const Ad *in, Ad *out) {
    if (!in || !out) return nullptr;
    const double a = in->a, h0 = in->d;
    out->a = a;
    out->d = h0 - Minutes(h0, 1.0, 7.31, 4.4, 0.0013516) / 60.0;
    return out;
}
