// The Sun: its geocentric vector from the best source, the Earth's
// heliocentric ecliptic place, and CalcSun.
#include "solar/sun/sun.h"

#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/vec3.h"
#include "solar/body/body_pipeline.h"
#include "solar/ephem/jpl_query.h"
#include "solar/ephem/planet_xyz.h"
#include "solar/sun/sun_theory.h"

namespace kvx::sun {

namespace {

using vec3::EclipticToEquator;
using vec3::Rotate;
using vec3::ToAngles;

}  // namespace

void AnalyticSunVector(double jde, double v[3]) {
    double m[9], w[3];
    if (InFullTheoryRange(jde)) {
        // Newcomb's place on the equator of date, precessed to B1950.0 and
        // rotated to J2000.0 by the IAU 1976 precession between the two.
        NewcombEquatorOfDate(jde, w);
        GetPrecMtx(jde, kB1950, m);
        Rotate(m, w, w);
        Rotate(kB1950ToJ2000, w, v);
        return;
    }
    double lon, r;
    ShortEclipticOfDate(jde, &lon, &r);
    const double e[3] = {r * std::cos(DegToRad(lon)), r * std::sin(DegToRad(lon)), 0.0};
    EclipticToEquator(GetEp(jde), e, w);
    GetPrecMtx(jde, kJ2000, m);
    Rotate(m, w, v);
}

void GetSunVector(double jde, double v[3]) {
    double p[3];
    if (jpl::Query(-3, jde, -2, p, nullptr) || planetxyz::Lookup(-3, jde, p, nullptr)) {
        v[0] = -p[0];
        v[1] = -p[1];
        v[2] = -p[2];
    } else {
        AnalyticSunVector(jde, v);
        return;
    }
    // Blend into the theory near the ends of the position file's Earth entry
    // (applied whichever file answered). The end itself is pure theory, the
    // start itself pure file value.
    double start, end, w;
    if (!planetxyz::Range(-3, &start, &end)) return;
    if (end - kBlendDays < jde && jde <= end)
        w = (end - jde) / kBlendDays;
    else if (start < jde && jde < start + kBlendDays)
        w = (jde - start) / kBlendDays;
    else
        return;
    double a[3];
    AnalyticSunVector(jde, a);
    for (int i = 0; i < 3; ++i) v[i] = w * v[i] + (1.0 - w) * a[i];
}

void GetEarthLbr(double jde, double lb[2], double *r) {
    double v[3], m[9];
    GetSunVector(jde, v);
    const double d = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    double u[3] = {-v[0] / d, -v[1] / d, -v[2] / d};
    GetPrecMtx(kJ2000, jde, m);
    Rotate(m, u, u);
    const double eps = DegToRad(GetEp(jde));
    const double y = u[1], z = u[2];
    u[1] = std::cos(eps) * y + std::sin(eps) * z;
    u[2] = -std::sin(eps) * y + std::cos(eps) * z;
    ToAngles(u, &lb[0], &lb[1]);
    *r = d;
}

}  // namespace kvx::sun

using namespace kvx;

// P, B0 and L0 from Carrington's elements of the solar equator (Meeus,
// Astronomical Algorithms, ch. 29).
extern "C" void CalcSun(ATime *t, BodyPos *out) {
    if (!t || !out) return;
    using namespace body::sun_slot;
    double *f = out->f;
    double v[3];
    sun::GetSunVector(t->jde, v);
    f[kGeoDistance] = vec3::Norm(v);
    const double e[3] = {-v[0], -v[1], -v[2]};
    body::SetVec(*out, kEarthHelio, e);
    body::EclipticOfDate(*t, e, body::Vec(*out, kEarthEcliptic));

    // No light time: the geometric vector of the instant, aberration only.
    const double s[3] = {v[0] - t->obsPos[0], v[1] - t->obsPos[1], v[2] - t->obsPos[2]};
    body::FillHead(*t, s, body::AngleRule::kAtan2, out);
    const double d = f[body::kDistance];

    // Physical ephemeris (Carrington's elements of the solar equator).
    const double lambda = f[body::kEclLon];
    const double T = (t->jd - kJ1900) / kDaysPerCentury;
    const double I = 7.25, K = 74.3646 + 1.395833 * T;
    const double lambda1 = lambda - 0.00479 * std::sin(DegToRad(259.18 - 1934.142 * T));
    const double x = RadToDeg(std::atan(-std::cos(DegToRad(lambda1)) * std::tan(DegToRad(t->eps))));
    const double sLK = std::sin(DegToRad(lambda - K)), cLK = std::cos(DegToRad(lambda - K));
    const double y = RadToDeg(std::atan(-cLK * std::tan(DegToRad(I))));
    f[kP] = x + y;
    f[kB0] = RadToDeg(std::asin(sLK * std::sin(DegToRad(I))));
    const double eta = RadToDeg(std::atan2(-sLK * std::cos(DegToRad(I)), -cLK));
    f[kNodeLongitude] = eta;
    f[kL0] = vec3::Reduce360(eta - (t->jd - 2398220.0) * 360.0 / 25.38);
    f[kSemiDiameter] = RadToDeg(std::atan(696000.0 / d / kKmPerAu));
    f[kPhase] = -1.0;
}
