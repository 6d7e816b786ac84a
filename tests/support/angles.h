// Angles and times for the tests: separations, wrapping, dates.
#pragma once

#include <cmath>

#include "kvxlib.h"

namespace kvx::test {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kDegToRad = kPi / 180.0;
inline constexpr double kRadToArcsec = 206264.80624709636;

// Difference of two angles in degrees, wrapped into [-180, 180].
inline double WrapDeg(double a) { return std::remainder(a, 360.0); }
// The same in arcseconds.
inline double DiffArcsec(double a, double b) { return WrapDeg(a - b) * 3600.0; }

// Angle between two (not necessarily unit) vectors, arcseconds.
inline double SepArcsec(const double a[3], const double b[3]) {
    const double cx = a[1] * b[2] - a[2] * b[1], cy = a[2] * b[0] - a[0] * b[2], cz = a[0] * b[1] - a[1] * b[0];
    const double s = std::sqrt(cx * cx + cy * cy + cz * cz);
    const double c = a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
    return std::atan2(s, c) * kRadToArcsec;
}

// Angular separation of two directions (longitude-like, latitude-like, in
// degrees), arcseconds.
inline double SepArcsec(double lon1, double lat1, double lon2, double lat2) {
    const double a[3] = {std::cos(lat1 * kDegToRad) * std::cos(lon1 * kDegToRad),
                         std::cos(lat1 * kDegToRad) * std::sin(lon1 * kDegToRad), std::sin(lat1 * kDegToRad)};
    const double b[3] = {std::cos(lat2 * kDegToRad) * std::cos(lon2 * kDegToRad),
                         std::cos(lat2 * kDegToRad) * std::sin(lon2 * kDegToRad), std::sin(lat2 * kDegToRad)};
    return SepArcsec(a, b);
}
inline double SepArcsec(const Ad &a, const Ad &b) { return SepArcsec(a.a, a.d, b.a, b.d); }

// An ATime at dynamical Julian date jde with Delta T fixed at 64 s, zone 0:
// reference positions are tabulated in dynamical time, and a fixed Delta T
// keeps the library's own Delta T out of the comparison.
inline ATime AtJde(double jde, const Observer *obs = nullptr) {
    ATime t;
    SetATimeJd2(jde - 64.0 / 86400.0, 64.0, 0.0, obs, &t);
    return t;
}

}  // namespace kvx::test
