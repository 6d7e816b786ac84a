// The built-in analytic series of Mercury, Venus and Jupiter: heliocentric
// longitude, latitude and radius on the mean ecliptic and equinox of date,
// and the same place as a J2000.0 equatorial vector for the dispatcher.
//
// Mercury (T in Julian centuries from J2000.0), sums of cosine terms whose
// amplitudes and arguments are linear in T:
//   l = 252.2502 + 149474.0714 T + (23.4405 + 0.0023 T) cos(84.7947 +
//       149472.5153 T) + (2.9818 + 0.0006 T) cos(259.589 + 298945.031 T) + ...
//   b = (6.7057 + 0.0017 T) cos(113.919 + 149472.886 T) + ...
//   r = 0.395283 + (0.078341 + 8e-6 T) cos(354.795 + 149472.515 T) + ...
// Venus (T from J1900.0): mean longitude L, mean anomaly g, and the equation
// of the centre as one sine whose phase is modulated by a sum S of twelve
// sine terms (the slow perturbations of the perihelion and of the mean
// anomaly by the other planets, S counted twice in the argument):
//   l = L + E sin(g + 2 S) + sum A sin(phase + rate T)
//   b, r: sums of sine terms with amplitudes linear in T.
// Jupiter (T from J1900.0): the mean longitude with its long-period
// perturbations (the great inequality with Saturn first) feeds Kepler's
// equation of an ellipse whose eccentricity, perihelion, inclination and
// node move linearly in T; the place in the orbit is reduced to the ecliptic
// of date and the short-period perturbations are added as sine terms:
//   L = L0 + L1 T + L2 T^2 + sum P sin(phase + rate T), M = L - w,
//   E - e sin E = M, v the true anomaly, u = w + v - N,
//   l = N + atan2(cos i sin u, cos u) + sum, b = asin(sin i sin u) + sum,
//   r = a (1 - e cos E) + sum.
// The coefficients are in planet_series_table.cpp with their source.
#include "solar/planet/planet_series.h"

#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/fast_trig.h"
#include "math/vec3.h"
#include "solar/planet/planet_series_table.h"

namespace kvx::planet {

namespace {

double CosSum(const SeriesTerm *t, int n, double T) {
    double s = 0.0;
    for (int k = 0; k < n; ++k) s += (t[k].a + t[k].b * T) * FastCosDeg(t[k].phase + t[k].rate * T);
    return s;
}

double SinSum(const SeriesTerm *t, int n, double T) {
    double s = 0.0;
    for (int k = 0; k < n; ++k) s += (t[k].a + t[k].b * T) * FastSinDeg(t[k].phase + t[k].rate * T);
    return s;
}

void Mercury(double jde, double lbr[3]) {
    const double T = (jde - kJ2000) / kDaysPerCentury;
    double l = 252.2502 + 149474.0714 * T;
    l += (23.4405 + 0.0023 * T) * FastCosDeg(84.7947 + 149472.5153 * T);
    l += (2.9818 + 0.0006 * T) * FastCosDeg(259.589 + 298945.031 * T);
    l += CosSum(kMercuryLon, kMercuryLonCount, T);
    double b = (6.7057 + 0.0017 * T) * FastCosDeg(113.919 + 149472.886 * T);
    b += CosSum(kMercuryLat, kMercuryLatCount, T);
    double r = 0.395283 + (0.078341 + 8e-6 * T) * FastCosDeg(354.795 + 149472.515 * T);
    r += CosSum(kMercuryRad, kMercuryRadCount, T);
    lbr[0] = vec3::Reduce360(l);
    lbr[1] = b;
    lbr[2] = r;
}

void Venus(double jde, double lbr[3]) {
    const double T = (jde - kJ1900) / kDaysPerCentury;
    const VenusCore &c = kVenusCore;
    const double S = SinSum(kVenusPhase, kVenusPhaseCount, T);
    double l = c.L0 + c.L1 * T + c.L2 * T * T;
    l += (c.E0 + c.E1 * T) * FastSinDeg(c.g0 + c.g1 * T + 2.0 * S);
    l += SinSum(kVenusLon, kVenusLonCount, T);
    lbr[0] = vec3::Reduce360(l);
    lbr[1] = SinSum(kVenusLat, kVenusLatCount, T);
    lbr[2] = kVenusRadius0 + SinSum(kVenusRad, kVenusRadCount, T);
}

void Jupiter(double jde, double lbr[3]) {
    const double T = (jde - kJ1900) / kDaysPerCentury;
    const JupiterCore &c = kJupiterCore;
    const double L = c.L0 + c.L1 * T + c.L2 * T * T + SinSum(kJupiterMeanLon, kJupiterMeanLonCount, T);
    const double w = c.w0 + c.w1 * T;
    const double e = c.e0 + c.e1 * T;
    const double node = c.N0 + c.N1 * T;
    const double inc = DegToRad(c.i0 + c.i1 * T);
    const double M = DegToRad(vec3::Reduce360(L - w));
    // Kepler's equation by Newton's method from M + e sin M.
    double E = M + e * std::sin(M);
    for (int k = 0; k < 10; ++k) {
        const double d = (E - e * std::sin(E) - M) / (1.0 - e * std::cos(E));
        E -= d;
        if (std::fabs(d) < 1e-14) break;
    }
    const double v = 2.0 * std::atan2(std::sqrt(1.0 + e) * std::sin(E / 2.0), std::sqrt(1.0 - e) * std::cos(E / 2.0));
    const double u = DegToRad(w - node) + v;
    double l = node + RadToDeg(std::atan2(std::cos(inc) * std::sin(u), std::cos(u)));
    l += SinSum(kJupiterLon, kJupiterLonCount, T);
    lbr[0] = vec3::Reduce360(l);
    lbr[1] = RadToDeg(std::asin(std::sin(inc) * std::sin(u))) + SinSum(kJupiterLat, kJupiterLatCount, T);
    lbr[2] = c.a * (1.0 - e * std::cos(E)) + SinSum(kJupiterRad, kJupiterRadCount, T);
}

}  // namespace

int SeriesLbr(int code, double jde, double lbr[3]) {
    switch (code) {
        case 0: Mercury(jde, lbr); return 1;
        case 1: Venus(jde, lbr); return 1;
        case 3: Jupiter(jde, lbr); return 1;
        default: return 0;
    }
}

int SeriesVector(int code, double jde, double out[3]) {
    double lbr[3];
    if (!SeriesLbr(code, jde, lbr)) return 0;
    const double l = DegToRad(lbr[0]), b = DegToRad(lbr[1]);
    const double x = lbr[2] * std::cos(b) * std::cos(l);
    const double y = lbr[2] * std::cos(b) * std::sin(l);
    const double z = lbr[2] * std::sin(b);
    // Ecliptic of date -> equator of date (mean obliquity) -> J2000.0.
    const double eps = DegToRad(GetEp(jde));
    const double se = std::sin(eps), ce = std::cos(eps);
    const double q[3] = {x, ce * y - se * z, se * y + ce * z};
    double m[9];
    GetPrecMtx(jde, kJ2000, m);
    for (int i = 0; i < 3; ++i) out[i] = m[3 * i] * q[0] + m[3 * i + 1] * q[1] + m[3 * i + 2] * q[2];
    return 1;
}

}  // namespace kvx::planet
