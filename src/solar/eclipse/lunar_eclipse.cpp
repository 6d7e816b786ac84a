// Lunar eclipses: the Moon's passage through the Earth's penumbra and umbra
// at a full Moon, from the library's own apparent geocentric places of the
// Sun and the Moon.
//
// Geometry (Explanatory Supplement to the Astronomical Almanac, 1992,
// ch. 8.4; Meeus, Astronomical Algorithms, 2nd ed., ch. 54): at an instant
// the shadow's centre is the anti-solar point; its angular radii at the
// Moon's distance are
//   penumbra = e + pi_S + s_S,   umbra = e + pi_S - s_S,
// with pi_S and s_S the Sun's horizontal parallax and semi-diameter and e
// the Moon's equatorial horizontal parallax pi_M reduced to the mean
// radius of the Earth (x 0.998340) and enlarged by 1/85 for the
// atmosphere (A. Danjon, 1951, as used by the Connaissance des Temps and
// F. Espenak's canons) instead of the older 1/50 of the shadow (Chauvenet).
// Contacts are the instants at which the separation m of the Moon's
// centre from the shadow's centre equals penumbra + s_M (P1, P4),
// umbra + s_M (U1, U4) and umbra - s_M (U2, U3); greatest eclipse is the
// least m. Magnitudes at greatest eclipse (Meeus eq. 54.3, 54.4):
// (radius + s_M - m) / (2 s_M).
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/root_find.h"
#include "solar/body/body_slots.h"
#include "solar/moon/moon_theory.h"

namespace {

using kvx::DegToRad;
using kvx::RadToDeg;

// Danjon's enlargement of the Earth's radius, applied to the lunar parallax
// reduced to the Earth's mean radius (the radius at latitude 45 degrees).
constexpr double kDanjonFactor = (1.0 + 1.0 / 85.0) * 0.998340;

// Searches: the half-width (days) of the window round the full Moon in which
// greatest eclipse and the contacts are sought (the longest penumbral
// semi-duration is under 3 h 20 min), the tolerance of the instants (days,
// 0.05 s) and the cap on the iterations of each search.
constexpr double kHalfWindow = 0.3;
constexpr double kInstantTolerance = 0.05 / kvx::kSecondsPerDay;
constexpr int kMaxIterations = 100;

// Mean synodic month (days) and the first full Moon of the phase series'
// count (k = 0.5, 2000 January 21), for numbering the lunations.
constexpr double kSynodicMonth = 29.530588861;
constexpr double kFirstFullMoonJd = 2451550.09766 + 0.5 * kSynodicMonth;

// Epoch of GetT, the argument of the lunar theory (1975 January 0.0).
constexpr double kTheoryEpoch = 2442412.5;

struct Shadow {
    double separation;  // Moon's centre from the shadow's centre, degrees
    double north;       // sign of the Moon's offset northward from the axis
    double penumbra;    // radii at the Moon's distance, degrees
    double umbra;
    double moon;        // the Moon's geocentric semi-diameter, degrees
    double moonKm;      // geocentric distance
};

Shadow ShadowAt(double jd) {
    ATime t;
    SetATimeJd(jd, 0.0, nullptr, &t);
    BodyPos sun{}, moon{};
    CalcSun(&t, &sun);
    // The built-in lunar theory's argument (GetT) adds an approximate Delta T
    // of its own to the date it is given: given the dynamical date it runs
    // that much ahead (30 s to 4 min over 1900-2100). It is given the date
    // that its argument turns into the dynamical date of the instant.
    if (kvx::moon::FromFile(t.jde)) {
        CalcMoon2(&t, &moon);
    } else {
        const double shiftDays = (GetT(t.jde) - (t.jde - kTheoryEpoch) / 365.25) * 365.25;
        ATime tm;
        SetATimeJd2(t.jde - shiftDays, 0.0, 0.0, nullptr, &tm);
        CalcMoon2(&tm, &moon);
    }
    namespace ss = kvx::body::sun_slot;
    namespace ms = kvx::body::moon_slot;
    // Apparent places of date of the anti-solar point and the Moon: in the
    // Earth's frame sunlight arrives from the aberrated Sun, so the shadow
    // extends from the apparent Sun; the Moon's apparent place is, within
    // its 1.3 s of light time, its geocentric place.
    using kvx::body::kDecApparent;
    using kvx::body::kRaApparent;
    const double a0 = DegToRad(sun.f[kRaApparent] + 180.0), d0 = DegToRad(-sun.f[kDecApparent]);
    const double a = DegToRad(moon.f[kRaApparent]), d = DegToRad(moon.f[kDecApparent]);
    const double x = std::cos(d) * std::sin(a - a0);
    const double y = std::sin(d) * std::cos(d0) - std::cos(d) * std::sin(d0) * std::cos(a - a0);
    const double z = std::sin(d) * std::sin(d0) + std::cos(d) * std::cos(d0) * std::cos(a - a0);
    Shadow s;
    s.separation = RadToDeg(std::atan2(std::hypot(x, y), z));
    s.north = y < 0.0 ? -1.0 : 1.0;
    s.moonKm = moon.f[ms::kGeoDistance];
    const double sunKm = sun.f[ss::kGeoDistance] * kvx::kKmPerAu;
    const double moonParallax = RadToDeg(std::asin(kvx::kEarthRadiusKm / s.moonKm));
    const double sunParallax = RadToDeg(std::asin(kvx::kEarthRadiusKm / sunKm));
    const double sunRadius = sun.f[ss::kSemiDiameter];
    s.penumbra = kDanjonFactor * moonParallax + sunParallax + sunRadius;
    s.umbra = kDanjonFactor * moonParallax + sunParallax - sunRadius;
    s.moon = RadToDeg(std::atan(kvx::kMoonRadiusKm / s.moonKm));
    return s;
}

// The least separation in [lo, hi] by golden-section search (the separation
// has one minimum round a full Moon).
double GreatestEclipse(double lo, double hi) {
    return kvx::GoldenMinimum(lo, hi, [](double jd) { return ShadowAt(jd).separation; }, kInstantTolerance, kMaxIterations);
}

// Which circle a contact is on: the Moon's limb on the penumbra or umbra
// from outside (m = radius + s_M) or its far limb inside the umbra
// (m = umbra - s_M).
enum class Contact { kPenumbra, kUmbraOuter, kUmbraInner };

double Excess(double jd, Contact c) {
    const Shadow s = ShadowAt(jd);
    switch (c) {
    case Contact::kPenumbra:
        return s.separation - (s.penumbra + s.moon);
    case Contact::kUmbraOuter:
        return s.separation - (s.umbra + s.moon);
    case Contact::kUmbraInner:
        break;
    }
    return s.separation - (s.umbra - s.moon);
}

// The instant between `inside` (excess below 0) and `outside` (above 0) at
// which the excess crosses 0: regula falsi with the Illinois modification,
// falling back to bisection, ended at the tolerance or the cap.
double ContactBetween(double inside, double outside, Contact c) {
    return kvx::IllinoisRoot(inside, outside, [c](double jd) { return Excess(jd, c); }, kInstantTolerance, kMaxIterations);
}

// Universal-time Julian date of the full Moon of lunation k (k + 0.5 in the
// phase series' count).
double FullMoonUt(double k) { return DtToUt(GetNewMoonJd2000(k + 0.5)); }

// The eclipse at the full Moon of lunation k; returns its type.
int32_t EclipseOfLunation(double k, LunarEclipse *out) {
    LunarEclipse e{};
    const double full = FullMoonUt(k);
    e.jdFullMoon = full;
    const Shadow atFull = ShadowAt(full);
    // Far from a node the separation stays above the penumbra: the Moon's
    // path relative to the shadow is inclined about 5.7 degrees to the
    // ecliptic, so its least separation is at least cos(6 degrees) of the
    // value at opposition.
    if (!(atFull.separation * 0.99 < atFull.penumbra + atFull.moon + 0.01)) {
        e.jdMax = full;
        *out = e;
        return 0;
    }
    const double tMax = GreatestEclipse(full - kHalfWindow, full + kHalfWindow);
    const Shadow s = ShadowAt(tMax);
    e.jdMax = tMax;
    e.penumbralMag = (s.penumbra + s.moon - s.separation) / (2.0 * s.moon);
    e.umbralMag = (s.umbra + s.moon - s.separation) / (2.0 * s.moon);
    e.gamma = s.north * std::sin(DegToRad(s.separation)) * s.moonKm / kvx::kEarthRadiusKm;
    e.penumbraRadius = s.penumbra;
    e.umbraRadius = s.umbra;
    e.moonRadius = s.moon;
    e.separation = s.separation;
    if (e.penumbralMag > 0.0) {
        e.type = KVX_ECLIPSE_PENUMBRAL;
        e.p1 = ContactBetween(tMax, tMax - kHalfWindow, Contact::kPenumbra);
        e.p4 = ContactBetween(tMax, tMax + kHalfWindow, Contact::kPenumbra);
    }
    if (e.umbralMag > 0.0) {
        e.type = KVX_ECLIPSE_PARTIAL;
        e.u1 = ContactBetween(tMax, e.p1, Contact::kUmbraOuter);
        e.u4 = ContactBetween(tMax, e.p4, Contact::kUmbraOuter);
    }
    if (e.umbralMag >= 1.0) {
        e.type = KVX_ECLIPSE_TOTAL;
        e.u2 = ContactBetween(tMax, e.u1, Contact::kUmbraInner);
        e.u3 = ContactBetween(tMax, e.u4, Contact::kUmbraInner);
    }
    *out = e;
    return e.type;
}

// Lunation count of the full Moon nearest the universal-time date jd.
double NearestLunation(double jd) {
    double k = std::floor((jd - kFirstFullMoonJd) / kSynodicMonth + 0.5);
    // The mean month can be off by up to 14 hours from the true one: step
    // to the neighbour when it is nearer.
    for (int i = 0; i < 2; ++i) {
        const double here = std::fabs(FullMoonUt(k) - jd);
        if (std::fabs(FullMoonUt(k + 1.0) - jd) < here)
            k += 1.0;
        else if (std::fabs(FullMoonUt(k - 1.0) - jd) < here)
            k -= 1.0;
    }
    return k;
}

// The range of the full-Moon series (Julian dates), with a month of margin.
bool InSeriesRange(double jd) { return jd > 1356173.0 + 30.0 && jd < 3547272.0 - 30.0; }

}  // namespace

extern "C" {

KVX_API int32_t CalcLunarEclipse(double jd, LunarEclipse *out) {
    if (!out || !InSeriesRange(jd)) return 0;
    return EclipseOfLunation(NearestLunation(jd), out);
}

KVX_API int32_t GetLunarEclipses(int32_t year, LunarEclipse *out, int32_t max) {
    if (!out || max < 1) return 0;
    const double start = CalcJd(year, 1, 1), end = CalcJd(year + 1.0, 1, 1);
    if (!InSeriesRange(start) || !InSeriesRange(end)) return 0;
    int32_t n = 0;
    for (double k = NearestLunation(start) - 1.0; n < max; k += 1.0) {
        if (FullMoonUt(k) > end + 1.0) break;
        LunarEclipse e;
        if (EclipseOfLunation(k, &e) == 0 || e.jdMax < start || e.jdMax >= end) continue;
        out[n++] = e;
    }
    return n;
}

}  // extern "C"
