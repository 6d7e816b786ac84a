// CalcPlanet and its helpers: places and magnitudes against Swiss Ephemeris,
// the phase, the reduced magnitude, and the record's integer field.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "kvxlib.h"
#include "test_support.h"

#include <string>

#include "solar/planet/planet.h"
#include "solar/planet/planet_series.h"

namespace {

using namespace kvx::test;

constexpr double kJd1800 = 2378496.5, kJd2200 = 2524593.5;

// Worst errors per body: quantity names carry the code.
std::string Q(const char *what, int code) { return std::string(what) + "_" + std::to_string(code); }

// The analytic series of Mercury, Venus and Jupiter against Swiss
// Ephemeris (DE431 1800-2400, Moshier outside; planet_series_swe.c), AD
// 1000-3000: heliocentric places of date against its own mean ecliptic of
// date (its precession differs from IAU 2006 by well under an arcsecond
// here) and J2000.0 vectors. The bounds are the series' truncation errors
// as measured (2.41", 9.44", 13.23"; 1.99", 5.74", 7.48" in 1800-2200),
// against 34", 95" and 803" for the mean elements they replace.
TEST(PlanetSeries, AgainstSwissEphemeris1000To3000) {
    const Reference ref("planet_series_swe.txt", {"jde", "code", "lon", "lat", "r", "x"});
    const struct {
        int code;
        double all, modern, radius;
    } limits[] = {{0, 2.7, 2.2, 2.8e-6}, {1, 10.4, 6.3, 1.15e-5}, {3, 14.6, 8.3, 1.65e-4}};
    std::vector<Bound> bounds;
    for (const auto &l : limits) {
        bounds.push_back({Q("of_date", l.code), l.all, "series truncation, 1000-3000"});
        bounds.push_back({Q("modern", l.code), l.modern, "series truncation, 1800-2200"});
        bounds.push_back({Q("radius", l.code), l.radius, "series truncation in the radius"});
        bounds.push_back({Q("j2000", l.code), l.all, "the same series turned to J2000.0"});
    }
    Comparison cmp(bounds);
    for (const auto &row : ref) {
        const int code = static_cast<int>(row["code"]);
        double lbr[3], v[3];
        ASSERT_EQ(kvx::planet::SeriesLbr(code, row["jde"], lbr), 1);
        ASSERT_EQ(kvx::planet::SeriesVector(code, row["jde"], v), 1);
        const double d = SepArcsec(lbr[0], lbr[1], row["lon"], row["lat"]);
        cmp.Add(Q("of_date", code), d, row);
        if (row["jde"] >= kJd1800 && row["jde"] <= kJd2200) cmp.Add(Q("modern", code), d, row);
        cmp.Add(Q("radius", code), lbr[2] - row["r"], row);
        cmp.Add(Q("j2000", code), SepArcsec(v, row.From("x")), row);
    }
    cmp.Check();
}

// The series are used strictly inside 2086307.5 < jde < 2816787.5; at and
// beyond the ends the dispatcher takes the mean elements. CalcPlanetLbr
// carries the dispatcher's vector back to the ecliptic of date: the
// series' own place up to the frame bias (0.023").
TEST(PlanetSeries, UsedStrictlyInsideTheRange) {
    for (int code : {0, 1, 3}) {
        for (double jde : {kvx::planet::kSeriesFirstJd + 1e-6, 2451545.0, kvx::planet::kSeriesFirstJd,
                           kvx::planet::kSeriesLastJd}) {
            double h[3], s[3];
            ASSERT_EQ(kvx::planet::HelioVector(code, jde, h), 1);
            ASSERT_EQ(kvx::planet::SeriesVector(code, jde, s), 1);
            const bool inside = jde != kvx::planet::kSeriesFirstJd && jde != kvx::planet::kSeriesLastJd;
            EXPECT_EQ(h[0] == s[0] && h[1] == s[1], inside) << code << " " << jde;
        }
        for (double jde = 2100000.5; jde < 2816000.0; jde += 73048.6) {
            double lbr[3], lb[2], r;
            kvx::planet::SeriesLbr(code, jde, lbr);
            ASSERT_EQ(CalcPlanetLbr(code, jde, lb, &r), 1);
            EXPECT_LT(SepArcsec(lb[0], lb[1], lbr[0], lbr[1]), 0.025) << code << " " << jde;
            EXPECT_NEAR(r, lbr[2], 1e-12);
        }
    }
}

// Geocentric places and magnitudes, 1900-2100. Mercury, Venus and Jupiter
// come from the series, Mars and Saturn to Pluto from the mean elements
// (Standish, 3000 BC to AD 3000), Ceres from the two-body orbit of 2009,
// whose error grows to 11 degrees a century away. The bounds are the
// sources' errors as measured: 2.0", 6.0", 328", 7.4", 1285", 676", 344",
// 228", 39763". Mercury's includes 0.3" from the tabulated B1950-J2000
// rotation of the Sun.
TEST(CalcPlanet, BuiltInSourcesAgainstSwissEphemeris1900To2100) {
    const Reference ref("planets_swe_geo.txt",
                        {"jde", "code", "ra", "dec", "app_ra", "app_dec", "dist", "mag", "phase", "diam"});
    const std::pair<int, double> limits[] = {{0, 2.2}, {1, 7.3}, {2, 362}, {3, 8.2},  {4, 1414},
                                             {5, 744}, {6, 379}, {7, 252}, {9, 43800}};
    std::vector<Bound> bounds;
    for (const auto &[code, limit] : limits) bounds.push_back({Q("astrometric", code), limit, "the source's error"});
    // Osculating elements drift from the mean motion by about 1e-3 of it:
    // 1" a quarter of a year from the epoch, 15" at a year.
    bounds.push_back({"ceres_near_epoch", 20.0, "osculating elements within a year of their epoch"});
    // Magnitudes against swe_pheno (Mallama's phase laws there): the laws
    // differ most at large phase angles (Mercury 0.78 measured).
    bounds.push_back({"mag_0", 1.0, "phase laws differ at large phase angles"});
    bounds.push_back({"mag_3", 0.1, "the same law for Jupiter"});
    bounds.push_back({"mag_4", 0.3, "ring term from plain arctangents, away from its jumps"});
    Comparison cmp(bounds);
    for (const auto &row : ref) {
        const int code = static_cast<int>(row["code"]);
        ATime t = AtJde(row["jde"]);
        BodyPos sun, p;
        CalcSun(&t, &sun);
        ASSERT_EQ(CalcPlanet(code, &t, &sun, &p), 1);
        const double astrometric = SepArcsec(p.f[0], p.f[1], row["ra"], row["dec"]);
        cmp.Add(Q("astrometric", code), astrometric, row);
        if (code == 9 && std::fabs(row["jde"] - 2455100.5) < 366.0) cmp.Add("ceres_near_epoch", astrometric, row);
        EXPECT_EQ(p.i[72], static_cast<int32_t>(std::floor(p.f[35] * 10.0 + 0.5)));
        if (code != 0 && code != 3 && code != 4) continue;
        // Saturn's ring term jumps by about 7.7 magnitudes in the rows where
        // the heliocentric and geocentric longitudes straddle 90 degrees
        // from the ring node: those rows are counted, not compared.
        if (code == 4 && std::fabs(p.f[35] - row["mag"]) > 2.0) {
            cmp.Skip();
            continue;
        }
        cmp.Add(Q("mag", code), p.f[35] - row["mag"], row);
    }
    cmp.Check();
    EXPECT_EQ(cmp.Skipped(), 7);
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
    // No ring term. 1e-12: the library's distances and log10 may round in
    // the last bit differently from this expression (contraction, -O level).
    EXPECT_NEAR(GetPlanetMag(4, h, e), -8.88 + 5 * std::log10(r * delta), 1e-12);
    EXPECT_NEAR(GetPlanetMag(-3, h, e), -2.96 + 5 * std::log10(r * delta), 1e-12);
}

}  // namespace
