// The Sun's analytic theories against Swiss Ephemeris (DE431 files
// sepl_18.se1 for 1900-2100, Moshier's ephemeris back to -2000) and PyEphem
// (VSOP87, 3000-4000); reference data from tests/reference/sun_swe.c and
// sun_short_pyephem.py.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

#include "kvxlib.h"
#include "solar/sun/sun.h"
#include "solar/sun/sun_newcomb_table.h"
#include "solar/sun/sun_theory.h"
#include "test_support.h"

namespace {

using kvx::test::ReadRows;
using kvx::test::ReferencePath;

double ArcsecDiff(double a, double b) { return std::remainder(a - b, 360.0) * 3600.0; }

TEST(SunNewcomb, EclipticOfDateMatchesSwissEphemeris1900To2100) {
    const auto rows = ReadRows(ReferencePath("sun_swe_1900_2100.txt"));
    ASSERT_GT(rows.size(), 1900u);
    double maxLon = 0, maxLat = 0, maxR = 0;
    for (const auto &r : rows) {
        double l, b, R;
        kvx::sun::NewcombEclipticOfDate(r[0], &l, &b, &R);
        maxLon = std::fmax(maxLon, std::fabs(ArcsecDiff(l, r[1])));
        maxLat = std::fmax(maxLat, std::fabs((b - r[2]) * 3600.0));
        maxR = std::fmax(maxR, std::fabs(R - r[3]));
    }
    std::printf("Newcomb vs Swiss Ephemeris 1900-2100: max |dlon| %.3f\", |dlat| %.3f\", |dR| %.2e AU\n", maxLon,
                maxLat, maxR);
    // The longitude error is the theory's own (about 0.4") plus the drift of
    // the FK4 equinox the theory is referred to (about 1.3" per century).
    EXPECT_LT(maxLon, 1.5);
    EXPECT_LT(maxLat, 0.25);
    EXPECT_LT(maxR, 1e-6);
}

// The full chain: Newcomb's place of date, precession to B1950.0, the
// B1950-J2000 rotation; and the Earth's heliocentric place back on the
// ecliptic of date.
TEST(SunAnalytic, J2000VectorAndEarthLbrMatchSwissEphemeris1900To2100) {
    const auto rows = ReadRows(ReferencePath("sun_swe_1900_2100.txt"));
    double maxAngle = 0, maxR = 0, maxLon = 0, maxLat = 0;
    for (const auto &r : rows) {
        double v[3];
        kvx::sun::AnalyticSunVector(r[0], v);
        const double ref[3] = {r[4], r[5], r[6]};
        const double c[3] = {v[1] * ref[2] - v[2] * ref[1], v[2] * ref[0] - v[0] * ref[2], v[0] * ref[1] - v[1] * ref[0]};
        const double dot = v[0] * ref[0] + v[1] * ref[1] + v[2] * ref[2];
        maxAngle = std::fmax(maxAngle, std::atan2(std::sqrt(c[0] * c[0] + c[1] * c[1] + c[2] * c[2]), dot) * 206264.806);
        maxR = std::fmax(maxR, std::fabs(std::sqrt(dot * dot / (ref[0] * ref[0] + ref[1] * ref[1] + ref[2] * ref[2])) -
                                         std::sqrt(ref[0] * ref[0] + ref[1] * ref[1] + ref[2] * ref[2])));
        double lb[2], R;
        kvx::sun::GetEarthLbr(r[0], lb, &R);
        maxLon = std::fmax(maxLon, std::fabs(ArcsecDiff(lb[0] + 180.0, r[1])));
        maxLat = std::fmax(maxLat, std::fabs((-lb[1] - r[2]) * 3600.0));
    }
    std::printf("analytic Sun J2000 vs Swiss Ephemeris 1900-2100: max angle %.3f\", |dR| %.2e AU; "
                "GetEarthLbr max |dlon| %.3f\", |dlat| %.3f\"\n", maxAngle, maxR, maxLon, maxLat);
    EXPECT_LT(maxAngle, 1.5);
    EXPECT_LT(maxR, 1e-6);
    EXPECT_LT(maxLon, 1.5);
    EXPECT_LT(maxLat, 0.3);
}

TEST(SunAnalytic, TheoryChangesAtTheStrictRangeBounds) {
    // The two theories differ by tens of arcseconds, so the switch shows.
    for (double edge : {2086307.5, 2816787.5}) {
        double atEdge[3], inside[3];
        kvx::sun::AnalyticSunVector(edge, atEdge);
        const double in = edge < 2.5e6 ? std::nextafter(edge, 3e6) : std::nextafter(edge, 0.0);
        kvx::sun::AnalyticSunVector(in, inside);
        double l, R;
        kvx::sun::ShortEclipticOfDate(edge, &l, &R);
        EXPECT_NEAR(std::sqrt(atEdge[0] * atEdge[0] + atEdge[1] * atEdge[1] + atEdge[2] * atEdge[2]), R, 1e-12);
        EXPECT_GT(std::fabs(atEdge[0] - inside[0]) + std::fabs(atEdge[1] - inside[1]), 1e-6) << edge;
    }
}

TEST(SunNewcomb, PerturbationTablesHaveTheTheorysRowCounts) {
    int lon[7] = {0}, lat[7] = {0};
    for (const auto &k : kvx::sun::kNewcombTerms) lon[k.planet]++;
    for (const auto &k : kvx::sun::kNewcombLatTerms) lat[k.planet]++;
    EXPECT_EQ(lon[1], 4);
    EXPECT_EQ(lon[2], 39);
    EXPECT_EQ(lon[4], 45);
    EXPECT_EQ(lon[5], 21);
    EXPECT_EQ(lon[6], 11);
    EXPECT_EQ(lat[2], 22);
    EXPECT_EQ(lat[4], 3);
    EXPECT_EQ(lat[5], 7);
    EXPECT_EQ(lat[6], 2);
}

TEST(SunNewcomb, RangeBoundsAreStrict) {
    using kvx::sun::InFullTheoryRange;
    EXPECT_FALSE(InFullTheoryRange(2086307.5));
    EXPECT_FALSE(InFullTheoryRange(2816787.5));
    EXPECT_TRUE(InFullTheoryRange(std::nextafter(2086307.5, 3e6)));
    EXPECT_TRUE(InFullTheoryRange(std::nextafter(2816787.5, 0.0)));
}

// Largest longitude and distance errors of the short theory over the
// reference rows whose date lies in [from, to).
void ShortErrors(const char *file, double from, double to, double *maxLon, double *maxR) {
    const auto rows = ReadRows(ReferencePath(file));
    ASSERT_FALSE(rows.empty()) << file;
    for (const auto &r : rows) {
        if (r[0] < from || r[0] >= to) continue;
        double l, R;
        kvx::sun::ShortEclipticOfDate(r[0], &l, &R);
        *maxLon = std::fmax(*maxLon, std::fabs(ArcsecDiff(l, r[1])));
        *maxR = std::fmax(*maxR, std::fabs(R - r[2]));
    }
}

TEST(SunShort, LongitudeAndDistanceOverSixMillennia) {
    struct Span {
        const char *file;
        double from, to;  // dynamical Julian dates
        double lonLimit;  // arcseconds
    } spans[] = {
        {"sun_swe_short.txt", 2268923.5, 2633972.5, 80.0},    // 1500..2500
        {"sun_swe_short.txt", 990557.5, 2268923.5, 2500.0},   // -2000..1500
        {"sun_swe_short.txt", 2633972.5, 2818000.5, 250.0},   // 2500..3000
        {"sun_pyephem_short.txt", 2817000.0, 3182000.5, 1000.0},  // 3000..4000
    };
    for (const auto &s : spans) {
        double maxLon = 0, maxR = 0;
        ShortErrors(s.file, s.from, s.to, &maxLon, &maxR);
        std::printf("short theory %.0f..%.0f (%s): max |dlon| %.1f\", |dR| %.2e AU\n", s.from, s.to, s.file, maxLon,
                    maxR);
        EXPECT_LT(maxLon, s.lonLimit) << s.from;
        EXPECT_LT(maxR, 4e-4) << s.from;
    }
}

}  // namespace

// Newcomb's place is carried from B1950.0 to J2000.0 by the fixed rotation
// whose first row is (0.9999257180268403, -0.0111782838886141,
// -0.0048584357372842); the x component of the J2000 vector must be exactly
// that row applied to the place precessed to B1950.0.
TEST(SunAnalytic, B1950ToJ2000RotationHasTheTabulatedFirstRow) {
    for (double jde : {2415020.0, 2451545.0, 2460000.5, 2700000.25}) {
        double w[3], m[9];
        kvx::sun::NewcombEquatorOfDate(jde, w);
        GetPrecMtx(jde, 2433282.42346, m);
        const double b[3] = {m[0] * w[0] + m[1] * w[1] + m[2] * w[2], m[3] * w[0] + m[4] * w[1] + m[5] * w[2],
                             m[6] * w[0] + m[7] * w[1] + m[8] * w[2]};
        const double x = 0.9999257180268403 * b[0] + -0.0111782838886141 * b[1] + -0.0048584357372842 * b[2];
        double v[3];
        kvx::sun::AnalyticSunVector(jde, v);
        EXPECT_EQ(v[0], x) << jde;
    }
    // The matrix is a rotation.
    const double *k = kvx::sun::kB1950ToJ2000;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            const double dot = k[3 * i] * k[3 * j] + k[3 * i + 1] * k[3 * j + 1] + k[3 * i + 2] * k[3 * j + 2];
            EXPECT_NEAR(dot, i == j ? 1.0 : 0.0, 1e-15) << i << j;
        }
}

// The leading rows of the longitude and radius table: Mercury's and Venus's
// first rows are their (i, j) = (-1, 1) terms, Venus's with Newcomb's
// amplitudes 4.8328" and 2356e-9.
TEST(SunNewcomb, FirstRowsOfMercuryAndVenus) {
    const kvx::sun::NewcombTerm *venus = nullptr;
    for (const auto &k : kvx::sun::kNewcombTerms)
        if (k.planet == 2) {
            venus = &k;
            break;
        }
    const auto &mercury = kvx::sun::kNewcombTerms[0];
    EXPECT_EQ(mercury.planet, 1);
    EXPECT_EQ(mercury.i, -1);
    EXPECT_EQ(mercury.j, 1);
    EXPECT_EQ(mercury.lonCoef, 0.013);
    EXPECT_EQ(mercury.lonPhase, 243.0);
    EXPECT_EQ(mercury.radCoef, 28.0);
    EXPECT_EQ(mercury.radPhase, 335.0);
    ASSERT_NE(venus, nullptr);
    EXPECT_EQ(venus->i, -1);
    EXPECT_EQ(venus->j, 1);
    EXPECT_EQ(venus->lonCoef, 4.8328);
    EXPECT_EQ(venus->lonPhase, 299.1017);
    EXPECT_EQ(venus->radCoef, 2356.0);
    EXPECT_EQ(venus->radPhase, 209.08);
}
