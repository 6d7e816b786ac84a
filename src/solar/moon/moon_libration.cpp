// Physical ephemeris of the Moon.
//
// Optical librations, the physical librations rho, sigma, tau and the
// position angle of the axis follow J. Meeus, Astronomical Algorithms, 2nd
// ed., Willmann-Bell, 1998, ch. 53, whose series for rho (10 terms), sigma
// (13 terms) and tau (19 terms) are the complete published abridgement of
// D. H. Eckhardt, "Theory of the libration of the Moon", The Moon and the
// Planets 25, 3-49 (1981). The fundamental arguments are those of the same
// book's first edition (1991). Two deliberate departures from the book's
// recipe for the axis angle: the right ascension and the obliquity are the
// mean ones of date, and the divisor is the cosine of the Moon's ecliptic
// latitude, not of the libration in latitude.
#include "solar/moon/moon_libration.h"

#include <algorithm>
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/fast_trig.h"

namespace kvx::moon {

namespace {

// The series use the degree sine and cosine of math/fast_trig.h.
inline double SinDeg(double a) { return FastSinDeg(a); }
inline double CosDeg(double a) { return FastCosDeg(a); }

// Inclination of the mean lunar equator on the ecliptic (IAU), degrees, and
// the fixed values of its cosine and sine used in the optical librations.
constexpr double kInclination = 1.542416667;
constexpr double kCosInclination = 0.999637672;
constexpr double kSinInclination = 0.026916998;
// The same inclination in radians, whose sine divides sigma in the node of
// the lunar equator.
constexpr double kInclinationRadians = 0.026920249276786965;

struct Arguments {
    double f, node, d, m, mp;
};

// Delaunay arguments in degrees (reduced to 0..360).
Arguments FundamentalArguments(double t) {
    const double t2 = t * t, t3 = t2 * t, t4 = t3 * t;
    Arguments a;
    a.f = degmal(93.2720993 + 483202.0175273 * t - 0.0034029 * t2 - t3 / 3526000.0 + t4 / 863310000.0);
    a.node = degmal(125.044555 - 1934.1361849 * t + 0.0020762 * t2 + t3 / 467410.0 - t4 / 60616000.0);
    a.d = degmal(297.8502042 + 445267.1115168 * t - 0.00163 * t2 + t3 / 545868.0 - t4 / 113065000.0);
    a.m = degmal(357.5291092 + 35999.0502909 * t - 0.0001536 * t2 + t3 / 24490000.0);
    a.mp = degmal(134.9634114 + 477198.8676313 * t + 0.008997 * t2 + t3 / 69699.0 - t4 / 14712000.0);
    return a;
}

PhysicalLibration Series(double t, const Arguments &a) {
    const double f = a.f, d = a.d, m = a.m, mp = a.mp;
    PhysicalLibration p;
    p.rho = 0.00684 * CosDeg(mp - 2.0 * f) - 0.02245 * SinDeg(f) - 0.02752 * CosDeg(mp) -
            0.00293 * CosDeg(2.0 * f) - 0.00085 * CosDeg(2.0 * f - 2.0 * d) - 0.00054 * CosDeg(mp - 2.0 * d) -
            0.00020 * SinDeg(mp + f) - 0.00020 * CosDeg(mp + 2.0 * f) - 0.00020 * CosDeg(mp - f) +
            0.00014 * CosDeg(mp + 2.0 * f - 2.0 * d);
    p.sigma = 0.02244 * CosDeg(f) - 0.02816 * SinDeg(mp) - 0.00682 * SinDeg(mp - 2.0 * f) -
              0.00279 * SinDeg(2.0 * f) - 0.00083 * SinDeg(2.0 * f - 2.0 * d) + 0.00069 * SinDeg(mp - 2.0 * d) +
              0.00040 * CosDeg(mp + f) - 0.00025 * SinDeg(2.0 * mp) - 0.00023 * SinDeg(mp + 2.0 * f) +
              0.00020 * CosDeg(mp - f) + 0.00019 * SinDeg(mp - f) + 0.00013 * SinDeg(mp + 2.0 * f - 2.0 * d) -
              0.00010 * CosDeg(mp - 3.0 * f);
    // Eccentricity factor of the Earth's orbit on the term in the Sun's anomaly.
    const double e = 1.0 - 0.002516 * t - 7.4e-6 * t * t;
    const double k1 = 119.75 + 131.849 * t;  // Venus
    const double k2 = 72.56 + 20.186 * t;
    p.tau = 0.0252 * e * SinDeg(m) + 0.00473 * SinDeg(2.0 * mp - 2.0 * f) - 0.00467 * SinDeg(mp) +
            0.00396 * SinDeg(k1) + 0.00276 * SinDeg(2.0 * mp - 2.0 * d) + 0.00196 * SinDeg(a.node) -
            0.00183 * CosDeg(mp - f) + 0.00115 * SinDeg(mp - 2.0 * d) - 0.00096 * SinDeg(mp - d) +
            0.00046 * SinDeg(2.0 * f - 2.0 * d) - 0.00039 * SinDeg(mp - f) - 0.00032 * SinDeg(mp - m - d) +
            0.00027 * SinDeg(2.0 * mp - m - 2.0 * d) + 0.00023 * SinDeg(k2) - 0.00014 * SinDeg(2.0 * d) +
            0.00014 * CosDeg(2.0 * mp - 2.0 * f) - 0.00012 * SinDeg(mp - 2.0 * f) - 0.00012 * SinDeg(2.0 * mp) +
            0.00011 * SinDeg(2.0 * mp - 2.0 * m - 2.0 * d);
    return p;
}

// Any angle to -180..180.
double Normalize180(double a) {
    double r = degmal(a);
    if (r > 180.0) r -= 360.0;
    return r;
}

}  // namespace

PhysicalLibration PhysicalLibrationSeries(double t) { return Series(t, FundamentalArguments(t)); }

Libration MoonLibration(double t, double lambda, double beta, double alpha, double dpsi, double eps) {
    const Arguments a = FundamentalArguments(t);

    // Optical librations.
    const SinCos w = FastSinCosDeg(lambda - a.node);
    const SinCos b = FastSinCosDeg(beta);
    const double sinW = w.s, cosW = w.c;
    const double sinB = b.s, cosB = b.c;
    const double bigA = RadToDeg(std::atan2(sinW * cosB * kCosInclination - sinB * kSinInclination, cosW * cosB));
    const double lOpt = bigA - a.f;
    const double bOpt = RadToDeg(std::asin(-sinW * cosB * kSinInclination - sinB * kCosInclination));

    // Physical librations.
    const PhysicalLibration p = Series(t, a);
    const SinCos scA = FastSinCosDeg(bigA);
    const double sinA = scA.s, cosA = scA.c;
    const double lPhys = -p.tau + (p.rho * cosA + p.sigma * sinA) * std::tan(DegToRad(bOpt));
    const double bPhys = p.sigma * cosA - p.rho * sinA;

    Libration out;
    out.longitude = Normalize180(lOpt + lPhys);
    out.latitude = Normalize180(bOpt + bPhys);

    // Position angle of the axis: the pole of the lunar equator in the
    // equatorial frame of date, seen from the Moon's right ascension.
    const double v = a.node + dpsi + p.sigma / std::sin(kInclinationRadians);
    const SinCos ir = FastSinCosDeg(kInclination + p.rho), sv = FastSinCosDeg(v), se = FastSinCosDeg(eps);
    const double sinIr = ir.s, cosIr = ir.c;
    const double x = sinIr * sv.s;
    const double y = sinIr * sv.c * se.c - cosIr * se.s;
    const double omega = RadToDeg(std::atan2(x, y));
    out.axisAngle = Normalize180(RadToDeg(std::asin(std::sqrt(x * x + y * y) * CosDeg(alpha - omega) / cosB)));
    return out;
}

void ClampLibration(double jde, Libration *lib) {
    if (jde > 1538798.0 && jde < 3364651.0) return;
    lib->axisAngle = std::clamp(lib->axisAngle, -26.0, 26.0);
    lib->longitude = 0.0;
    lib->latitude = std::clamp(lib->latitude, -7.0, 7.0);
}

}  // namespace kvx::moon
