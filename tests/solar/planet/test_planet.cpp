// CalcPlanet and its helpers: places and magnitudes against Swiss Ephemeris,
// the phase, the reduced magnitude, and the record's integer field.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>

#include "kvxlib.h"
#include "test_support.h"

namespace {

using kvx::test::ReadRows;
using kvx::test::ReferencePath;
using kvx::test::AtJde;
using kvx::test::SepArcsec;

TEST(CalcPlanet, BuiltInSourcesAgainstSwissEphemeris1900To2100) {
    const auto rows = ReadRows(ReferencePath("planets_swe_geo.txt"));
    ASSERT_GT(rows.size(), 3000u);
    std::map<int, double> astro, app, dist, mag, diam;
    double ceresNearEpoch = 0;  // within a year of the elements' epoch (2009 Oct 9)
    int saturnJumps = 0;        // rows where the ring term's plain arctangents jump by 180 degrees
    for (const auto &r : rows) {
        const int code = static_cast<int>(r[1]);
        ATime t = AtJde(r[0]);
        BodyPos sun, p;
        CalcSun(&t, &sun);
        ASSERT_EQ(CalcPlanet(code, &t, &sun, &p), 1);
        astro[code] = std::fmax(astro[code], SepArcsec(p.f[0], p.f[1], r[2], r[3]));
        app[code] = std::fmax(app[code], SepArcsec(p.f[2], p.f[3], r[4], r[5]));
        dist[code] = std::fmax(dist[code], std::fabs(p.f[6] - r[6]) / r[6]);
        if (code == 9 && std::fabs(r[0] - 2455100.5) < 366.0)
            ceresNearEpoch = std::fmax(ceresNearEpoch, SepArcsec(p.f[0], p.f[1], r[2], r[3]));
        if (code == 4 && std::fabs(p.f[35] - r[7]) > 2.0) {
            ++saturnJumps;
            continue;
        }
        mag[code] = std::fmax(mag[code], std::fabs(p.f[35] - r[7]));
        diam[code] = std::fmax(diam[code], std::fabs(p.f[34] - r[9]) / r[9]);
    }
    for (const auto &[code, a] : astro)
        std::printf("code %d: astrometric max %8.1f\", apparent %8.1f\", distance %.1e rel; "
                    "vs swe_pheno: magnitude %.2f, diameter %.1f%%\n",
                    code, a, app[code], dist[code], mag[code], diam[code] * 100.0);
    std::printf("Ceres within a year of its elements' epoch: %.1f\"; Saturn rows with a ring-term jump: %d\n",
                ceresNearEpoch, saturnJumps);
    // Mercury, Venus and Jupiter from the built-in analytic series, Mars and
    // Saturn to Pluto from the mean elements (Standish, 3000 BC to AD 3000),
    // Ceres from the two-body orbit of 2009, whose error grows to 11 degrees
    // a century away. Measured maxima: 2.0", 6.0", 328.2", 7.4", 1285.2",
    // 675.6", 343.8", 228.2", 39763" (Mercury, Venus and Jupiter from the mean
    // elements: 10.8", 47.6", 668.5"); limits 10% above. Mercury's share of
    // the Sun's B1950-J2000 rotation (the tabulated matrix sits 0.13" from a
    // fresh evaluation of the IAU 1976 angles) is about 0.3" of its 2.0".
    const std::map<int, double> limit = {{0, 2.2}, {1, 7.3}, {2, 362}, {3, 8.2}, {4, 1414},
                                         {5, 744}, {6, 379}, {7, 252}, {9, 43800}};
    for (const auto &[code, a] : astro) EXPECT_LT(a, limit.at(code)) << code;
    // Osculating elements drift from the mean motion by about 1e-3 of it
    // (Jupiter): 1" a quarter of a year from the epoch, 15" at a year, a
    // degree and more at ten.
    EXPECT_LT(ceresNearEpoch, 20.0);
    // Magnitudes against swe_pheno (Mallama's phase laws there): the laws
    // differ, most at large phase angles (Mercury 0.78, Venus 0.25 measured);
    // Saturn's ring term, with its plain arctangents, jumps by about 7.7
    // magnitudes in the few rows where the heliocentric and geocentric
    // longitudes straddle 90 degrees from the ring node; the rest agree to
    // 0.3.
    EXPECT_LT(mag[4], 0.3);
    EXPECT_LT(mag[0], 1.0);
    EXPECT_LT(mag[3], 0.1);
}

TEST(CalcPlanet, UnknownCodesAndTheEarth) {
    ATime t = AtJde(2451545.0);
    BodyPos sun, p;
    CalcSun(&t, &sun);
    std::memset(&p, 0, sizeof p);
    EXPECT_EQ(CalcPlanet(12, &t, &sun, &p), 0);
    EXPECT_EQ(CalcPlanet(-1, &t, &sun, &p), 0);
    EXPECT_EQ(CalcPlanet(-4, &t, &sun, &p), 0);
    EXPECT_EQ(p.f[0], 0.0);  // nothing written
    // The Earth: heliocentric vector equals the Sun record's, geocentric
    // distance zero.
    ASSERT_EQ(CalcPlanet(-3, &t, &sun, &p), 1);
    for (int k = 0; k < 3; ++k) EXPECT_EQ(p.f[10 + k], sun.f[7 + k]);
    EXPECT_EQ(p.f[17], 0.0);
    double lb[2], r;
    EXPECT_EQ(CalcPlanetLbr(12, 2451545.0, lb, &r), 0);
}

TEST(CalcPlanet, MagnitudeTenthsAndPhysicalBlock) {
    ATime t = AtJde(2460000.5);
    BodyPos sun, p;
    CalcSun(&t, &sun);
    for (int code = 0; code <= 11; ++code) {
        ASSERT_EQ(CalcPlanet(code, &t, &sun, &p), 1);
        EXPECT_EQ(p.i[72], static_cast<int32_t>(std::floor(p.f[35] * 10.0 + 0.5))) << code;
        for (int k = 20; k < 34; ++k) EXPECT_EQ(p.f[k], -1.0) << code << " field " << k + 1;
        EXPECT_GE(p.f[18], 0.0);
        EXPECT_LE(p.f[18], 1.0);
        // Light time: fields 8-10 are the body at jde - tau, with tau the
        // light time of the final distance to about a second.
        double hr[3] = {p.f[7], p.f[8], p.f[9]};
        EXPECT_GT(std::fabs(hr[0] - p.f[10]) + std::fabs(hr[1] - p.f[11]), 0.0) << code;
    }
}

TEST(CalcPlanetLbr, HeliocentricPlaceOfDate) {
    // The Earth's heliocentric place from CalcPlanetLbr is the Sun's
    // geocentric longitude plus 180 (GetEarthLbr's frame).
    ATime t = AtJde(2455000.5);
    BodyPos sun;
    CalcSun(&t, &sun);
    double lb[2], r;
    ASSERT_EQ(CalcPlanetLbr(-3, t.jde, lb, &r), 1);
    EXPECT_NEAR(std::remainder(lb[0] - 180.0 - sun.f[4], 360.0), 0.0, 1e-7);
    EXPECT_NEAR(r, sun.f[13], 1e-12);
}

// The Earth is the negated Sun only inside the built-in theories' range
// (2086307.5 < jd < 2816787.5); outside it, like Mars and Saturn, it comes
// from the mean elements of date (here the Earth-Moon barycentre's).
TEST(CalcPlanetLbr, EarthOutsideTheTheoryRangeUsesTheMeanElements) {
    for (double jd : {1900000.5, 2086307.5, 2816787.5, 2900000.5}) {
        OrbitElm el;
        ASSERT_EQ(GetPlanetOrbitElm(-3, jd, &el), 1);
        double ecl[3];
        ASSERT_EQ(GetPlanetByElement(&el, jd, ecl, nullptr), 1);
        // J2000 ecliptic -> J2000 equator -> mean equator of date -> ecliptic of date.
        double rx[9], pm[9], back[9];
        RotateX(-GetEp(2451545.0), rx);
        GetPrecMtx(2451545.0, jd, pm);
        RotateX(GetEp(jd), back);
        Dc v{ecl[0], ecl[1], ecl[2]};
        RotateDc(&v, rx, &v);
        RotateDc(&v, pm, &v);
        RotateDc(&v, back, &v);
        Ad ad;
        DcToAdR(&v, &ad);
        double lb[2], r;
        ASSERT_EQ(CalcPlanetLbr(-3, jd, lb, &r), 1);
        EXPECT_NEAR(std::remainder(lb[0] - ad.a, 360.0), 0.0, 1e-9) << jd;
        EXPECT_NEAR(lb[1], ad.d, 1e-9) << jd;
        EXPECT_NEAR(r, std::sqrt(ecl[0] * ecl[0] + ecl[1] * ecl[1] + ecl[2] * ecl[2]), 1e-12) << jd;
    }
    // One step inside the range the Earth is the negated Sun again.
    const double jd = std::nextafter(2816787.5, 0.0);
    ATime t = AtJde(jd);
    BodyPos sun, p;
    CalcSun(&t, &sun);
    ASSERT_EQ(CalcPlanet(-3, &t, &sun, &p), 1);
    for (int k = 0; k < 3; ++k) EXPECT_EQ(p.f[10 + k], sun.f[7 + k]);
}

TEST(GetPhase, FullNewAndQuarter) {
    BodyPos sun, body;
    sun.f[0] = 10.0;
    sun.f[1] = 5.0;
    double frac, limb;
    // Opposite the Sun, far away: fully lit.
    body.f[0] = 190.0;
    body.f[1] = -5.0;
    GetPhase(&sun, 1.0, &body, 4.0, &frac, &limb);
    EXPECT_NEAR(frac, 1.0, 1e-12);
    // Between the Earth and the Sun: dark.
    body.f[0] = 10.0;
    body.f[1] = 5.0;
    GetPhase(&sun, 1.0, &body, 0.3, &frac, &limb);
    EXPECT_NEAR(frac, 0.0, 1e-12);
    // 90 degrees east of the Sun on the equator, at 1 AU: the phase angle is
    // 45 degrees; the bright limb points west (270, i.e. -90).
    sun.f[0] = 0.0;
    sun.f[1] = 0.0;
    body.f[0] = 90.0;
    body.f[1] = 0.0;
    GetPhase(&sun, 1.0, &body, 1.0, &frac, &limb);
    EXPECT_NEAR(frac, (1.0 + std::cos(3.141592653589793 / 4)) / 2.0, 1e-12);
    EXPECT_NEAR(limb, -90.0, 1e-9);
}

TEST(GetPlanetMag, ReducedLawUsesRNotRSquared) {
    // Jupiter at 5 AU on the far side of the Sun from an Earth at 0.9 AU.
    const double h[3] = {5.0, 0.0, 0.0}, e[3] = {-0.9, 0.0, 0.0};
    const double r = 5.0, delta = 5.9, R = 0.9;
    const double c = (r * r + delta * delta - R) / (2 * r * delta);
    const double i = std::acos(std::fmin(1.0, c)) * 180.0 / 3.141592653589793;
    EXPECT_NEAR(GetPlanetMag(3, h, e), -9.4 + 5 * std::log10(r * delta) + 0.005 * i, 1e-12);
    EXPECT_EQ(GetPlanetMag(12, h, e), -999.0);
    EXPECT_EQ(GetPlanetMag(4, h, e), -8.88 + 5 * std::log10(r * delta));  // no ring term
    EXPECT_NEAR(GetPlanetMag(-3, h, e), -2.96 + 5 * std::log10(r * delta), 1e-12);
}

}  // namespace
