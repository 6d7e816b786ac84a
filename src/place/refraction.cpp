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

}  // namespace

/// AtmosphericRefraction: lifts a true altitude (in->d, degrees) to the
/// apparent one; in->a (azimuth) is copied. Within 0.1 degree of -5.11
/// (strictly) the tangent of h itself is used to avoid the pole of the
/// formula, so the result jumps there; no range check otherwise. Returns
/// out (which may be in); null when either pointer is null.
extern "C" Ad *AtmosphericRefraction(const Ad *in, Ad *out) {
    if (!in || !out) return nullptr;
    const double a = in->a, h = in->d;
    const double arg = std::fabs(h + 5.11) < 0.1 ? h : h + 10.3 / (h + 5.11);
    const double r = 1.02 / TanDeg(arg) + 0.0019279;
    out->a = a;
    out->d = h + r / 60.0;
    return out;
}

/// DeAtmosphericRefraction: lowers an apparent altitude (in->d, degrees)
/// to the true one; in->a is copied. Within 0.1 degree of -4.4 (strictly)
/// the tangent of h0 itself is used. Returns out (which may be in); null
/// when either pointer is null.
extern "C" Ad *DeAtmosphericRefraction(const Ad *in, Ad *out) {
    if (!in || !out) return nullptr;
    const double a = in->a, h0 = in->d;
    const double arg = std::fabs(h0 + 4.4) < 0.1 ? h0 : h0 + 7.31 / (h0 + 4.4);
    const double r = 1.0 / TanDeg(arg) + 0.0013516;
    out->a = a;
    out->d = h0 - r / 60.0;
    return out;
}
