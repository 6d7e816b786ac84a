// Angles and times for the tests: separations, wrapping, dates.
#pragma once

#include <cmath>

#include "kvxlib.h"

namespace kvx::test {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kDegToRad = kPi / 180.0;
inline constexpr double kRadToArcsec = 206264.80624709636;
inline constexpr double kJ2000 = 2451545.0;

// Difference of two angles in degrees, wrapped into [-180, 180].
inline double WrapDeg(double a) { return std::remainder(a, 360.0); }
// The same in arcseconds.
inline double DiffArcsec(double a, double b) { return WrapDeg(a - b) * 3600.0; }

// Unit vector of a direction in degrees.
inline void UnitVector(double lon, double lat, double out[3]) {
    out[0] = std::cos(lat * kDegToRad) * std::cos(lon * kDegToRad);
    out[1] = std::cos(lat * kDegToRad) * std::sin(lon * kDegToRad);
    out[2] = std::sin(lat * kDegToRad);
}

// Angle between two (not necessarily unit) vectors, arcseconds.
inline double SepArcsec(const double a[3], const double b[3]) {
    const double cx = a[1] * b[2] - a[2] * b[1], cy = a[2] * b[0] - a[0] * b[2], cz = a[0] * b[1] - a[1] * b[0];
    return std::atan2(std::sqrt(cx * cx + cy * cy + cz * cz), a[0] * b[0] + a[1] * b[1] + a[2] * b[2]) * kRadToArcsec;
}

// Angular separation of two directions (longitude, latitude in degrees), arcseconds.
inline double SepArcsec(double lon1, double lat1, double lon2, double lat2) {
    double a[3], b[3];
    UnitVector(lon1, lat1, a);
    UnitVector(lon2, lat2, b);
    return SepArcsec(a, b);
}
inline double SepArcsec(const Ad &a, const Ad &b) { return SepArcsec(a.a, a.d, b.a, b.d); }

// An ATime at dynamical date jde, zone 0, Delta T fixed at 64 s to keep the library's own Delta T out of comparisons
// in dynamical time.
inline ATime AtJde(double jde, const Observer *obs = nullptr) {
    ATime t;
    SetATimeJd2(jde - 64.0 / 86400.0, 64.0, 0.0, obs, &t);
    return t;
}

// A record filled by hand: precession from J2000 and nutation matrices (identity when null; transposes as inverses),
// obliquities, sidereal time and latitude: exact frames without the library's own precession/nutation.
inline ATime HandTime(double jde, double eps, double epsTrue, const double *prec = nullptr,
                      const double *nut = nullptr, double lst = 0.0, double lat = 0.0) {
    ATime t{};
    t.jd = t.jde = jde;
    t.eps = eps, t.epsTrue = epsTrue, t.lst = lst, t.obsLatitude = lat;
    t.obsHeight = lat == 0.0 ? -6378137.0 : 0.0;
    for (int k = 0; k < 9; ++k) {
        t.precFromJ2000[k] = prec ? prec[k] : k % 4 == 0, t.nutMtx[k] = nut ? nut[k] : k % 4 == 0;
        t.precToJ2000[k] = prec ? prec[k % 3 * 3 + k / 3] : k % 4 == 0, t.nutInvMtx[k] = nut ? nut[k % 3 * 3 + k / 3] : k % 4 == 0;
    }
    RotateX(eps, t.eqToEcl);
    RotateX(-eps, t.eclToEq);
    return t;
}

inline double Norm(const double v[3]) { return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }

// Largest element-wise difference of two 3x3 matrices, and from the identity.
inline double MaxDiff(const double a[9], const double b[9]) {
    double d = 0.0;
    for (int k = 0; k < 9; ++k) d = std::fmax(d, std::fabs(a[k] - b[k]));
    return d;
}
inline double FromIdentity(const double m[9]) {
    const double one[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    return MaxDiff(m, one);
}

}  // namespace kvx::test
