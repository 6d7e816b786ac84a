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

// u = v / |v|; returns |v|.
double Unit(const double v[3], double u[3]) {
    const double r = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    u[0] = v[0] / r;
    u[1] = v[1] / r;
    u[2] = v[2] / r;
    return r;
}

// The geometry just behind the Sun (s = 1 + q.e near 0): out = p unchanged.
bool BehindTheSun(double s, const double p[3], double out[3]) {
    if (!(std::fabs(s) < kGuard)) return false;
    out[0] = p[0];
    out[1] = p[1];
    out[2] = p[2];
    return true;
}

}  // namespace

extern "C" void DeflectionSolar(const double p[3], const double q[3], const double e[3], double out[3]) {
    if (!p || !q || !e || !out) return;
    double qh[3], eh[3];
    Unit(q, qh);
    const double er = Unit(e, eh);
    const double pv[3] = {p[0], p[1], p[2]};
    const double s = 1.0 + (qh[0] * eh[0] + qh[1] * eh[1] + qh[2] * eh[2]);
    if (BehindTheSun(s, pv, out)) return;
    const double g = kDeflection / er / s;
    const double pq = pv[0] * qh[0] + pv[1] * qh[1] + pv[2] * qh[2];
    const double ep = eh[0] * pv[0] + eh[1] * pv[1] + eh[2] * pv[2];
    for (int i = 0; i < 3; ++i) out[i] = pv[i] + g * (pq * eh[i] - ep * qh[i]);
}

extern "C" void DeflectionStar(const double p[3], const double e[3], double out[3]) {
    if (!p || !e || !out) return;
    double eh[3];
    const double er = Unit(e, eh);
    const double pv[3] = {p[0], p[1], p[2]};
    const double k = pv[0] * eh[0] + pv[1] * eh[1] + pv[2] * eh[2];
    const double s = 1.0 + k;
    if (BehindTheSun(s, pv, out)) return;
    const double g = kDeflection / er / s;
    double r[3];
    for (int i = 0; i < 3; ++i) r[i] = pv[i] + g * (eh[i] - k * pv[i]);
    const double len = std::sqrt(r[0] * r[0] + r[1] * r[1] + r[2] * r[2]);
    for (int i = 0; i < 3; ++i) out[i] = r[i] / len;
}
