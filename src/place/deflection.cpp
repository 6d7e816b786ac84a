// Relativistic deflection of light by the Sun, to first order in the
// Sun's gravitational parameter (Explanatory Supplement to the Astronomical
// Almanac, 1992, sect. 3.322; the same vector form as ERFA's eraLd with
// unit mass and no light-time refinement).
//
// With e the heliocentric Earth, q the heliocentric direction of the body
// and p its geocentric direction, the deflected direction is
//   p + (2 GM / c^2) / |e| / (1 + q.e) [ (p.q) e - (e.p) q ].
// For a star q = p. The guard on 1 + q.e skips the singular geometry of a
// source exactly behind the Sun.
#include <cmath>

#include "kvxlib.h"

namespace {

// 2 GM_sun / c^2 in AU.
constexpr double kDeflection = 1.974e-8;
constexpr double kGuard = 1e-8;

}  // namespace

/// DeflectionSolar: light deflection by the Sun for a body of the solar
/// system. p: unit geocentric direction of the body; q: its heliocentric
/// position (only the direction is used); e: the heliocentric position of
/// the Earth in AU (its length is used). out = deflected direction, NOT
/// renormalised (its length differs from 1 by up to ~1e-8). When the body
/// lies on the far side of the Sun-Earth line (1 + q.e within 1e-8 of 0)
/// out = p. out may alias an input. Null pointers do nothing.
extern "C" void DeflectionSolar(const double p[3], const double q[3], const double e[3], double out[3]) {
    if (!p || !q || !e || !out) return;
    const double qr = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2]);
    const double er = std::sqrt(e[0] * e[0] + e[1] * e[1] + e[2] * e[2]);
    const double qh[3] = {q[0] / qr, q[1] / qr, q[2] / qr};
    const double eh[3] = {e[0] / er, e[1] / er, e[2] / er};
    const double pv[3] = {p[0], p[1], p[2]};
    const double s = 1.0 + (qh[0] * eh[0] + qh[1] * eh[1] + qh[2] * eh[2]);
    if (std::fabs(s) < kGuard) {
        out[0] = pv[0];
        out[1] = pv[1];
        out[2] = pv[2];
        return;
    }
    const double g = kDeflection / er / s;
    const double pq = pv[0] * qh[0] + pv[1] * qh[1] + pv[2] * qh[2];
    const double ep = eh[0] * pv[0] + eh[1] * pv[1] + eh[2] * pv[2];
    for (int i = 0; i < 3; ++i) out[i] = pv[i] + g * (pq * eh[i] - ep * qh[i]);
}

/// DeflectionStar: light deflection by the Sun for a source at infinity.
/// p: unit direction of the star; e: heliocentric position of the Earth in
/// AU. out = deflected unit direction (renormalised); out = p unchanged when
/// the star lies exactly behind the Sun (1 + p.e/|e| within 1e-8 of 0).
/// out may alias an input. Null pointers do nothing.
extern "C" void DeflectionStar(const double p[3], const double e[3], double out[3]) {
    if (!p || !e || !out) return;
    const double er = std::sqrt(e[0] * e[0] + e[1] * e[1] + e[2] * e[2]);
    const double eh[3] = {e[0] / er, e[1] / er, e[2] / er};
    const double pv[3] = {p[0], p[1], p[2]};
    const double k = pv[0] * eh[0] + pv[1] * eh[1] + pv[2] * eh[2];
    const double s = 1.0 + k;
    if (std::fabs(s) < kGuard) {
        out[0] = pv[0];
        out[1] = pv[1];
        out[2] = pv[2];
        return;
    }
    const double g = kDeflection / er / s;
    double r[3];
    for (int i = 0; i < 3; ++i) r[i] = pv[i] + g * (eh[i] - k * pv[i]);
    const double len = std::sqrt(r[0] * r[0] + r[1] * r[1] + r[2] * r[2]);
    for (int i = 0; i < 3; ++i) out[i] = r[i] / len;
}
