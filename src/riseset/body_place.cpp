// Places of the bodies as the rise/set search sees them. Only exported
// position routines are called here, so the search follows whatever source
// (JPL DE file, position file, built-in theory) they choose for the date.
#include <cmath>

#include "math/constants.h"
#include "riseset/riseset.h"

namespace kvx::riseset {

namespace {

constexpr double kLightTolerance = kOneSecond;
constexpr int kMaxLightPasses = 50;

// Earth's heliocentric position (AU, J2000.0 equator) at the UT date jd,
// linear between the two midnights of the prepared day.
void EarthFromDay(const DayContext &c, double jd, double e[3]) {
    const double s = jd - c.noonJd + 0.5;
    for (int i = 0; i < 3; ++i) e[i] = c.sunStart.f[7 + i] + s * (c.sunEnd.f[7 + i] - c.sunStart.f[7 + i]);
}

// Heliocentric position (AU, J2000.0 mean equator) of a planet at dynamical
// date jde: CalcPlanetLbr's ecliptic place of date turned back onto the
// J2000.0 equator (the same obliquity and precession, in reverse).
void PlanetHelio(int code, double jde, double out[3]) {
    double lb[2], r = 0.0;
    CalcPlanetLbr(code, jde, lb, &r);
    const double l = DegToRad(lb[0]), b = DegToRad(lb[1]);
    const double ecl[3] = {r * std::cos(b) * std::cos(l), r * std::cos(b) * std::sin(l), r * std::sin(b)};
    double toEq[9], prec[9];
    RotateX(-GetEp(jde), toEq);
    GetPrecMtx(jde, 2451545.0, prec);
    Dc v{ecl[0], ecl[1], ecl[2]};
    RotateDc(&v, toEq, &v);
    RotateDc(&v, prec, &v);
    out[0] = v.x;
    out[1] = v.y;
    out[2] = v.z;
}

// Apparent geocentric place of date of a planet: light time iterated from
// 1 AU to one second, the Earth from the day context, then precession,
// nutation and annual aberration.
void PlanetPlace(int code, const ATime &t, double *ra, double *dec) {
    const DayContext &c = Day();
    double e[3], g[3] = {0.0, 0.0, 1.0};
    EarthFromDay(c, t.jd, e);
    double dist = 1.0;
    for (int pass = 0; pass < kMaxLightPasses; ++pass) {
        double h[3];
        PlanetHelio(code, t.jde - dist * kLightDaysPerAu, h);
        for (int i = 0; i < 3; ++i) g[i] = h[i] - e[i];
        const double next = std::sqrt(g[0] * g[0] + g[1] * g[1] + g[2] * g[2]);
        const bool done = std::fabs(dist - next) * kLightDaysPerAu <= kLightTolerance;
        dist = next;
        if (done) break;
    }
    Dc v{g[0] / dist, g[1] / dist, g[2] / dist};
    RotateDc(&v, t.precFromJ2000, &v);
    RotateDc(&v, t.nutMtx, &v);
    double w[3] = {v.x, v.y, v.z};
    AnnualAberration(&t, w, 1, w);
    const Dc u{w[0], w[1], w[2]};
    Ad ad;
    DcToAd(&u, &ad);
    *ra = ad.a;
    *dec = ad.d;
}

// Apparent geocentric place of a comet: CalcComet for the centre of the
// Earth, with the Earth's position of the day context in the Sun record.
bool CometPlace(const CometElements *el, const ATime &t, double *ra, double *dec) {
    if (!el) return false;
    const DayContext &c = Day();
    ATime geo = t;
    geo.obsPos[0] = geo.obsPos[1] = geo.obsPos[2] = 0.0;
    BodyPos sun = c.sunStart, out;
    EarthFromDay(c, t.jd, &sun.f[7]);
    sun.f[6] = std::sqrt(sun.f[7] * sun.f[7] + sun.f[8] * sun.f[8] + sun.f[9] * sun.f[9]);
    if (!CalcComet(el, &geo, &sun, &out)) return false;
    if (!std::isfinite(out.f[2]) || !std::isfinite(out.f[3])) return false;
    *ra = out.f[2];
    *dec = out.f[3];
    return true;
}

// Apparent place of date of a satellite of a planet: the Sun, the parent
// planet and the satellite for the observer of t.
bool SatellitePlace(int code, ATime &t, double *ra, double *dec) {
    int32_t planet = 0, index = 0;
    if (!SplitSatelliteCode(code, &planet, &index)) return false;
    BodyPos sun, parent, sat;
    CalcSun(&t, &sun);
    if (!CalcPlanet(planet, &t, &sun, &parent)) return false;
    if (!CalcSatellite(&t, planet, index, &parent, &sat)) return false;
    *ra = sat.f[2];
    *dec = sat.f[3];
    return true;
}

}  // namespace

bool BodyPlace(int body, const void *object, ATime &t, bool transitFrame, double *ra, double *dec) {
    const DayContext &c = Day();
    if (body == kStar) {
        if (!object) return false;
        Ad out;
        Coordinates(&t, 3, static_cast<const Ad *>(object), transitFrame ? 6 : 5, &out);
        *ra = out.a;
        *dec = out.d;
        return true;
    }
    if (body == kSun) {
        // Linear over the local day between the two midnights, extrapolated
        // beyond them.
        const double s = t.jd - c.noonJd + 0.5;
        *ra = degmal(c.sunStart.f[2] + s * (c.sunEnd.f[2] - c.sunStart.f[2]));
        *dec = c.sunStart.f[3] + s * (c.sunEnd.f[3] - c.sunStart.f[3]);
        return true;
    }
    if (body == kMoon) {
        BodyPos moon;
        CalcMoon2(&t, &moon);
        *ra = moon.f[2];
        *dec = moon.f[3];
        return true;
    }
    if (body >= 0 && body <= 11) {
        PlanetPlace(body, t, ra, dec);
        return true;
    }
    if (body >= 100 && body <= 1999) return SatellitePlace(body, t, ra, dec);
    if (body >= 2000) return CometPlace(static_cast<const CometElements *>(object), t, ra, dec);
    *ra = 0.0;  // any other code: a point at 0 h, 0 degrees
    *dec = 0.0;
    return true;
}

}  // namespace kvx::riseset
