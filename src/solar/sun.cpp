// The Sun: its geocentric vector from the best source, the Earth's
// heliocentric ecliptic place, and CalcSun.
#include "solar/sun.h"

#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "solar/jpl_query.h"
#include "solar/sun_theory.h"

namespace kvx::sun {

namespace {

inline double Norm360(double a) {
    double r = std::fmod(a, 360.0);
    return r < 0.0 ? r + 360.0 : r;
}

inline void Rotate(const double m[9], const double in[3], double out[3]) {
    const double x = in[0], y = in[1], z = in[2];
    out[0] = m[0] * x + m[1] * y + m[2] * z;
    out[1] = m[3] * x + m[4] * y + m[5] * z;
    out[2] = m[6] * x + m[7] * y + m[8] * z;
}

// Ecliptic of date to equator of date, obliquity eps in degrees.
inline void EclipticToEquator(double eps, const double in[3], double out[3]) {
    const double se = std::sin(DegToRad(eps)), ce = std::cos(DegToRad(eps));
    const double y = in[1], z = in[2];
    out[0] = in[0];
    out[1] = ce * y - se * z;
    out[2] = se * y + ce * z;
}

// Longitude (0..360) and latitude of a vector, degrees.
inline void ToAngles(const double v[3], double *lon, double *lat) {
    const double rho = std::sqrt(v[0] * v[0] + v[1] * v[1]);
    *lon = (v[0] == 0.0 && v[1] == 0.0) ? 0.0 : Norm360(RadToDeg(std::atan2(v[1], v[0])));
    *lat = RadToDeg(std::atan2(v[2], rho));
}

}  // namespace

void AnalyticSunVector(double jde, double v[3]) {
    double m[9], w[3];
    if (InFullTheoryRange(jde)) {
        // Newcomb's place on the equator of date, precessed to B1950.0 and
        // rotated to J2000.0 by the IAU 1976 precession between the two.
        NewcombEquatorOfDate(jde, w);
        GetPrecMtx(jde, kB1950Jd, m);
        Rotate(m, w, w);
        Rotate(kB1950ToJ2000, w, v);
        return;
    }
    double lon, r;
    ShortEclipticOfDate(jde, &lon, &r);
    const double e[3] = {r * std::cos(DegToRad(lon)), r * std::sin(DegToRad(lon)), 0.0};
    EclipticToEquator(GetEp(jde), e, w);
    GetPrecMtx(jde, 2451545.0, m);
    Rotate(m, w, v);
}

void GetSunVector(double jde, double v[3]) {
    double p[3];
    if (jpl::Query(-3, jde, -2, p, nullptr)) {
        v[0] = -p[0];
        v[1] = -p[1];
        v[2] = -p[2];
    } else {
        AnalyticSunVector(jde, v);
        return;
    }
}

void GetEarthLbr(double jde, double lb[2], double *r) {
    double v[3], m[9];
    GetSunVector(jde, v);
    const double d = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    double u[3] = {-v[0] / d, -v[1] / d, -v[2] / d};
    GetPrecMtx(2451545.0, jde, m);
    Rotate(m, u, u);
    const double eps = DegToRad(GetEp(jde));
    const double y = u[1], z = u[2];
    u[1] = std::cos(eps) * y + std::sin(eps) * z;
    u[2] = -std::sin(eps) * y + std::cos(eps) * z;
    ToAngles(u, &lb[0], &lb[1]);
    *r = d;
}

}  // namespace kvx::sun
