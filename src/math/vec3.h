// Small inline helpers on plain double[3] vectors and 3x3 matrices shared
// by the body computations and the frame of date: length, matrix-vector and
// matrix-matrix products, the elementary rotations, rotation about the x axis
// by an obliquity, and the longitude/latitude of a vector.
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

// out = a b (3x3, row by row); out may be a or b. Each element is summed
// in the order a[i0] b[0j] + a[i1] b[1j] + a[i2] b[2j], so the result has
// the bits of the exported MulMatrix, which calls this; inlined, the chains
// of products of the precession and nutation matrices keep their operands
// in registers.
inline void Product(const double a[9], const double b[9], double out[9]) {
    double r[9];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            r[3 * i + j] = a[3 * i] * b[j] + a[3 * i + 1] * b[3 + j] + a[3 * i + 2] * b[6 + j];
    for (int k = 0; k < 9; ++k) out[k] = r[k];
}

// The elementary rotation matrices of the exported RotateX and RotateZ
// (which call these), angle in degrees.
inline void RotationX(double a, double out[9]) {
    const double r = DegToRad(a), c = std::cos(r), s = std::sin(r);
    out[0] = 1.0; out[1] = 0.0; out[2] = 0.0;
    out[3] = 0.0; out[4] = c;   out[5] = s;
    out[6] = 0.0; out[7] = -s;  out[8] = c;
}

inline void RotationZ(double a, double out[9]) {
    const double r = DegToRad(a), c = std::cos(r), s = std::sin(r);
    out[0] = c;   out[1] = s;   out[2] = 0.0;
    out[3] = -s;  out[4] = c;   out[5] = 0.0;
    out[6] = 0.0; out[7] = 0.0; out[8] = 1.0;
}

// m = m Rx(a) and m = m Rz(a): Product(m, RotationX(a), m) and
// Product(m, RotationZ(a), m) with the products by the rotation's zero and
// unit entries left out. The terms left out are exact zeros added to a
// sum, or factors of one, so every element keeps the bits of the full
// product (the sign of an element that is exactly zero aside).
inline void TurnX(double m[9], double a) {
    const double r = DegToRad(a), c = std::cos(r), s = std::sin(r);
    for (int i = 0; i < 9; i += 3) {
        const double m1 = m[i + 1], m2 = m[i + 2];
        m[i + 1] = m1 * c + m2 * -s;
        m[i + 2] = m1 * s + m2 * c;
    }
}

inline void TurnZ(double m[9], double a) {
    const double r = DegToRad(a), c = std::cos(r), s = std::sin(r);
    for (int i = 0; i < 9; i += 3) {
        const double m0 = m[i], m1 = m[i + 1];
        m[i] = m0 * c + m1 * -s;
        m[i + 1] = m0 * s + m1 * c;
    }
}

// Degrees into 0..360: the remainder of fmod by 360, then one turn added to
// a negative remainder.
inline double Reduce360(double a) {
    const double r = Fmod360(a);
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

// The unit vector of right ascension a and declination d (degrees): the body
// of the exported AdToDc, inlined into the coordinate conversion.
inline void FromAd(double aDeg, double dDeg, double v[3]) {
    const double a = DegToRad(aDeg);
    const double d = DegToRad(dDeg);
    const double cd = std::cos(d);
    const double x = cd * std::cos(a), y = cd * std::sin(a), z = std::sin(d);
    v[0] = x;
    v[1] = y;
    v[2] = z;
}

// Right ascension (0..360, 0 for a vector on the z axis) and declination of
// a unit vector by the arcsine of z, clamped at the poles: the body of the
// exported DcToAd.
inline void ToAd(const double v[3], double *aDeg, double *dDeg) {
    double a = (v[1] == 0.0 && v[0] == 0.0) ? 0.0 : RadToDeg(std::atan2(v[1], v[0]));
    if (a < 0.0) a += 360.0;
    double d;
    if (v[2] < -1.0) d = -90.0;
    else if (v[2] > 1.0) d = 90.0;
    else d = RadToDeg(std::asin(v[2]));
    *aDeg = a;
    *dDeg = d;
}

}  // namespace kvx::vec3
