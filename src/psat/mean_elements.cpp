// Satellites without a perturbation theory here: precessing ellipses from
// JPL's mean elements (Phobos, Deimos, Amalthea, Nereid); Triton, whose
// circular synchronous orbit follows from the IAU rotation model of Triton
// (Archinal et al. 2018, "Report of the IAU Working Group on Cartographic
// Coordinates and Rotational Elements: 2015", Celest. Mech. Dyn. Astr.
// 130:22); and Charon's fitted circular orbit.
//
// Accuracy: the mean elements describe the orbit's shape and orientation;
// the satellite along it drifts from the integrated orbit by an amount that
// grows away from the epoch (Phobos' tidal acceleration alone is about
// 0.0013 deg/yr^2). Expect errors of a few hundred kilometres near the
// epochs, growing to thousands over a century. Triton: a few hundred
// kilometres (the model's pole and meridian accuracy) over 1900-2100.
// Charon: tens of kilometres near 2003, see below.
#include <cmath>

#include "math/constants.h"
#include "psat/mean_element_table.h"
#include "psat/sat_theory.h"

namespace kvx::psat {

namespace {

constexpr double kKmPerAu = 149597870.0;
constexpr double kDaysPerYear = 365.25;
constexpr int kMaxKeplerIterations = 30;

double Rad(double deg) { return deg * kPi / 180.0; }

// Unit vector of a point on a body's equator (pole ra0, dec0) at angle w
// (degrees) from the equator's ascending node on the J2000.0 equator.
void EquatorPoint(double ra0, double dec0, double w, double out[3]) {
    const double q = Rad(ra0 + 90.0);
    const double n[3] = {std::cos(q), std::sin(q), 0.0};
    const double cd = std::cos(Rad(dec0));
    const double pole[3] = {cd * std::cos(Rad(ra0)), cd * std::sin(Rad(ra0)), std::sin(Rad(dec0))};
    const double m[3] = {pole[1] * n[2] - pole[2] * n[1], pole[2] * n[0] - pole[0] * n[2],
                         pole[0] * n[1] - pole[1] * n[0]};
    const double c = std::cos(Rad(w)), s = std::sin(Rad(w));
    for (int k = 0; k < 3; ++k) out[k] = c * n[k] + s * m[k];
}

int Ellipse(const MeanElements &el, double jde, double out[3]) {
    const double dt = jde - el.epoch;
    const double dw = el.pw > 0.0 ? 360.0 * dt / (el.pw * kDaysPerYear) : 0.0;
    const double dnode = el.pnode > 0.0 ? -360.0 * dt / (el.pnode * kDaysPerYear) : 0.0;
    const double w = el.w + dw, node = el.node + dnode;
    // n is the rate of the mean longitude node + w + M (the sidereal period
    // is 360 / n), so the mean anomaly takes what the precession leaves.
    const double M = Rad(std::fmod(el.m + el.n * dt - dw - dnode, 360.0));
    double E = M;
    for (int it = 0; it < kMaxKeplerIterations; ++it) {
        const double d = (M - E + el.e * std::sin(E)) / (1.0 - el.e * std::cos(E));
        E += d;
        if (!(std::fabs(d) >= 1.0e-13)) break;
    }
    const double a = el.a / kKmPerAu;
    const double xo = a * (std::cos(E) - el.e), yo = a * std::sqrt(1.0 - el.e * el.e) * std::sin(E);
    // Orbit plane -> reference plane: Rz(node) Rx(i) Rz(w).
    const double cw = std::cos(Rad(w)), sw = std::sin(Rad(w));
    const double ci = std::cos(Rad(el.i)), si = std::sin(Rad(el.i));
    const double cn = std::cos(Rad(node)), sn = std::sin(Rad(node));
    const double x1 = xo * cw - yo * sw, y1 = xo * sw + yo * cw;
    const double y2 = y1 * ci, z2 = y1 * si;
    const double r[3] = {x1 * cn - y2 * sn, x1 * sn + y2 * cn, z2};
    if (el.ecliptic) {
        // J2000.0 ecliptic to equator, obliquity 84381.448".
        const double eps = Rad(84381.448 / 3600.0);
        out[0] = r[0];
        out[1] = r[1] * std::cos(eps) - r[2] * std::sin(eps);
        out[2] = r[1] * std::sin(eps) + r[2] * std::cos(eps);
        return 0;
    }
    // Laplace plane -> J2000.0 equator: x towards the plane's ascending node
    // on the equator (RA pole + 90 deg), z along the pole.
    double xa[3], za[3];
    EquatorPoint(el.poleRa, el.poleDec, 0.0, xa);
    EquatorPoint(el.poleRa, el.poleDec, 90.0, za);  // y axis of the plane
    const double cd = std::cos(Rad(el.poleDec));
    const double pole[3] = {cd * std::cos(Rad(el.poleRa)), cd * std::sin(Rad(el.poleRa)), std::sin(Rad(el.poleDec))};
    for (int k = 0; k < 3; ++k) out[k] = r[0] * xa[k] + r[1] * za[k] + r[2] * pole[k];
    return 0;
}

// Triton: the IAU model of Triton's pole and prime meridian; the rotation
// is synchronous with longitude 0 facing Neptune, so the satellite lies
// opposite its prime meridian at the mean distance 354759 km
// (Jacobson 2009, AJ 137, 4322).
void Triton(double jde, double out[3]) {
    const double d = jde - 2451545.0, T = d / 36525.0;
    const double N = Rad(357.85 + 52.316 * T);
    double ra = 299.36, dec = 41.17, w = 296.53 - 61.2572637 * d;
    static const double kRa[9] = {-32.35, -6.28, -2.08, -0.74, -0.28, -0.11, -0.07, -0.02, -0.01};
    static const double kDec[7] = {22.55, 2.10, 0.55, 0.16, 0.05, 0.02, 0.01};
    static const double kW[9] = {22.25, 6.73, 2.05, 0.74, 0.28, 0.11, 0.05, 0.02, 0.01};
    for (int k = 0; k < 9; ++k) {
        ra += kRa[k] * std::sin((k + 1) * N);
        w += kW[k] * std::sin((k + 1) * N);
    }
    for (int k = 0; k < 7; ++k) dec += kDec[k] * std::cos((k + 1) * N);
    double u[3];
    EquatorPoint(ra, dec, std::fmod(w, 360.0), u);
    const double a = 354759.0 / kKmPerAu;
    for (int k = 0; k < 3; ++k) out[k] = -a * u[k];
}

// Charon: the circular two-body orbit relative to Pluto of Buie, Tholen &
// Grundy (2012, "The orbit of Charon is circular", AJ 144, 15), fitted to
// Hubble images of 1992-2010: P = 6.3872273 d, a = 19573 km, i = 96.218 deg
// and node 3.89249 rad on the J2000.0 equator, mean longitude (node +
// argument of latitude) 4.50177 rad at JDT 2452600.5. The authors predict
// 8 km of uncertainty at 2015; the error grows with the period's
// uncertainty (3e-7 d) by about 3 km per decade away from 2003.
void Charon(double jde, double out[3]) {
    constexpr double kEpoch = 2452600.5, kPeriod = 6.3872273, kA = 19573.0;
    constexpr double kNode = 3.89249, kLongitude = 4.50177, kIncl = 96.218;
    const double u = kLongitude - kNode + 2.0 * kPi * std::fmod((jde - kEpoch) / kPeriod, 1.0);
    const double cn = std::cos(kNode), sn = std::sin(kNode), ci = std::cos(Rad(kIncl)), si = std::sin(Rad(kIncl));
    const double cu = std::cos(u), su = std::sin(u), a = kA / kKmPerAu;
    out[0] = a * (cn * cu - sn * su * ci);
    out[1] = a * (sn * cu + cn * su * ci);
    out[2] = a * su * si;
}

}  // namespace

int MeanElementSatellite(int code, double jde, double out[3]) {
    if (code == 801) {
        Triton(jde, out);
        return 0;
    }
    if (code == 901) {
        Charon(jde, out);
        return 0;
    }
    for (const MeanElements &el : kMeanElements)
        if (el.code == code) return Ellipse(el, jde, out);
    return 1;
}

}  // namespace kvx::psat
