// Small inline helpers on plain double[3] vectors shared by the body
// computations: length, matrix product, rotation about the x axis by an
// obliquity, and the longitude/latitude of a vector.
#pragma once

#include <cmath>

#include "math/constants.h"

namespace kvx::vec3 {

inline double Norm(const double v[3]) { return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }

// out = M in (M row by row); out may be in.
inline void Rotate(const double m[9], const double in[3], double out[3]) {
    const double x = in[0], y = in[1], z = in[2];
    out[0] = m[0] * x + m[1] * y + m[2] * z;
    out[1] = m[3] * x + m[4] * y + m[5] * z;
    out[2] = m[6] * x + m[7] * y + m[8] * z;
}

// Degrees into 0..360 with one fmod (inputs within a few turns); within a
// turn fmod returns a itself, so that case skips the library call.
inline double Reduce360(double a) {
    const double r = std::fabs(a) < 360.0 ? a : std::fmod(a, 360.0);
    return r < 0.0 ? r + 360.0 : r;
}

// Ecliptic to equator for the obliquity eps (degrees); out may be in.
inline void EclipticToEquator(double eps, const double in[3], double out[3]) {
    const double se = std::sin(DegToRad(eps)), ce = std::cos(DegToRad(eps));
    const double y = in[1], z = in[2];
    out[0] = in[0];
    out[1] = ce * y - se * z;
    out[2] = se * y + ce * z;
}

// Equator to ecliptic for the obliquity eps (degrees); out may be in.
inline void EquatorToEcliptic(double eps, const double in[3], double out[3]) {
    const double se = std::sin(DegToRad(eps)), ce = std::cos(DegToRad(eps));
    const double y = in[1], z = in[2];
    out[0] = in[0];
    out[1] = ce * y + se * z;
    out[2] = -se * y + ce * z;
}

// Longitude (0..360, 0 on the axis) and latitude of a vector, degrees.
inline void ToAngles(const double v[3], double *lon, double *lat) {
    const double rho = std::sqrt(v[0] * v[0] + v[1] * v[1]);
    *lon = (v[0] == 0.0 && v[1] == 0.0) ? 0.0 : Reduce360(RadToDeg(std::atan2(v[1], v[0])));
    *lat = RadToDeg(std::atan2(v[2], rho));
}

}  // namespace kvx::vec3
