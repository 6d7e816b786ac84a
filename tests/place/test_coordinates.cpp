// Conversions between the ten coordinate systems, the position angle and
// distance and their inverse. Records filled by hand (exactly orthogonal
// frame matrices) isolate the conversion chain; the ERFA comparisons with
// fully filled records are in test_coordinates_erfa.cpp.
#include <gtest/gtest.h>

#include <cmath>

#include "kvxlib.h"
#include "place/place_test_util.h"
#include "test_support.h"

using kvx::test::HandTime;
using kvx::test::MaxError;
using kvx::test::ReadRows;
using kvx::test::ReferencePath;
using kvx::test::SepArcsec;

namespace {

// Frame bias between the mean equator of J2000.0 and the celestial
// reference frame (IAU 2006): a rotation of sqrt(16.617^2 + 6.819^2 +
// 14.6^2) = 23.15 mas.
constexpr double kFrameBiasArcsec = 0.02315;

// A record at a date 30 years after J2000.0 with the ERFA precession and
// nutation matrices of a reference row (exact rotations, their transposes
// as inverses).
ATime StarRowTime(const std::vector<double> &r, double lst, double lat) {
    return HandTime(r[0], 23.4392794444 - 0.013 * (r[0] - 2451545.0) / 36525.0, r[1], &r[12], &r[21], lst, lat);
}

Ad Convert(const ATime &t, int from, Ad in, int to) {
    Ad out{};
    Coordinates(&t, from, &in, to, &out);
    return out;
}

}  // namespace

TEST(Coordinates, SameSystemCopiesWithoutNormalising) {
    const ATime t = HandTime(2451545.0, 23.44, 23.44, nullptr, nullptr, 10.0, 35.0);
    for (int code = 0; code <= 11; ++code) {
        const Ad in{370.0, 95.0};
        Ad out{};
        const Ad *r = Coordinates(&t, code, &in, code, &out);
        EXPECT_EQ(r, &in);
        EXPECT_EQ(out.a, 370.0);
        EXPECT_EQ(out.d, 95.0);
    }
    // A different system normalises and returns the output.
    const Ad in{370.0, 10.0};
    Ad out{};
    EXPECT_EQ(Coordinates(&t, 3, &in, 5, &out), &out);
    EXPECT_NEAR(out.a, 10.0, 1e-12);
}

TEST(Coordinates, UnknownCodesMeanJ2000Equatorial) {
    const auto rows = ReadRows(ReferencePath("place_star.csv"));
    const ATime t = StarRowTime(rows[0], 77.0, 40.0);
    const Ad in{123.4, -21.5};
    for (int target = 1; target <= 10; ++target) {
        const Ad ref = Convert(t, 3, in, target);
        for (int unknown : {0, 11, -3, 1000}) {
            const Ad a = Convert(t, unknown, in, target);
            EXPECT_EQ(a.a, ref.a);
            EXPECT_EQ(a.d, ref.d);
            const Ad back = Convert(t, target, ref, unknown);
            const Ad hub = Convert(t, target, ref, 3);
            EXPECT_EQ(back.a, hub.a);
            EXPECT_EQ(back.d, hub.d);
        }
    }
    Ad out{};
    EXPECT_EQ(Coordinates(nullptr, 3, &in, 5, &out), nullptr);
    EXPECT_EQ(Coordinates(&t, 3, nullptr, 5, &out), nullptr);
    EXPECT_EQ(Coordinates(&t, 3, &in, 5, nullptr), nullptr);
}

// Geometry of the horizon against erfa.hd2ae: hour angle = sidereal time
// minus right ascension of date, azimuth from the south through the west.
TEST(Coordinates, HorizonMatchesErfaBothWays) {
    const auto rows = ReadRows(ReferencePath("place_horizontal.csv"));
    ASSERT_EQ(rows.size(), 300u);
    MaxError fwd("mean of date -> horizontal vs erfa.hd2ae, arcsec");
    MaxError inv("horizontal -> mean of date vs erfa, arcsec");
    for (const auto &r : rows) {
        const ATime t = HandTime(2451545.0, 23.44, 23.44, nullptr, nullptr, r[0], r[1]);
        const Ad hz = Convert(t, 5, Ad{r[2], r[3]}, 1);
        fwd.Add(SepArcsec(hz, Ad{r[4], r[5]}));
        EXPECT_NEAR(hz.d, r[5], 1e-9);
        const Ad eq = Convert(t, 1, Ad{r[4], r[5]}, 5);
        inv.Add(SepArcsec(eq, Ad{r[2], r[3]}));
    }
    fwd.Report();
    inv.Report();
    EXPECT_LT(fwd.max, 1e-6);
    EXPECT_LT(inv.max, 1e-6);
}

TEST(Coordinates, CelestialPoleStandsAtTheLatitudeDueNorth) {
    for (double lat : {-60.0, 0.5, 35.6, 89.0}) {
        const ATime t = HandTime(2451545.0, 23.44, 23.44, nullptr, nullptr, 123.0, lat);
        const Ad hz = Convert(t, 5, Ad{0.0, 90.0}, 1);
        EXPECT_NEAR(hz.d, lat, 1e-12);
        EXPECT_NEAR(hz.a, 180.0, 1e-9);
        // A star on the meridian south of the zenith: azimuth 0.
        const Ad south = Convert(t, 5, Ad{123.0, lat - 30.0}, 1);
        EXPECT_NEAR(std::remainder(south.a, 360.0), 0.0, 1e-9);
        EXPECT_NEAR(south.d, 60.0, 1e-9);
        // Six hours later (hour angle +90 deg) a star on the equator sets
        // due west (azimuth 90) at altitude 0.
        const Ad west = Convert(t, 5, Ad{33.0, 0.0}, 1);
        EXPECT_NEAR(west.a, 90.0, 1e-9);
        EXPECT_NEAR(west.d, 0.0, 1e-9);
    }
}

// Every system to every other and back, with exactly orthogonal frame
// matrices in the record. B1950.0 (codes 4 and 10) goes through the
// library's precession pair, which carries the frame bias one way only, so
// each of those two codes in a pair leaves up to the bias (23 mas); the
// other pairs return to rounding and to the aberration iteration, except
// that asin near +-90 degrees (in DcToAd) resolves a latitude to only
// sqrt(2 ulp) = 1.5e-8 rad = 3 mas.
TEST(Coordinates, EveryPairRoundTrips) {
    const auto rows = ReadRows(ReferencePath("place_star.csv"));
    MaxError exact("round trip, pairs without B1950.0/galactic, arcsec");
    MaxError bias("round trip through B1950.0 or galactic, arcsec");
    for (int i = 0; i < 300; ++i) {
        const auto &r = rows[i % rows.size()];
        const ATime t = StarRowTime(r, std::fmod(i * 47.1, 360.0), -70.0 + std::fmod(i * 13.7, 140.0));
        const Ad in{std::fmod(i * 91.7, 360.0), std::asin(std::fmod(i * 0.377, 2.0) - 1.0) * 180.0 / M_PI};
        for (int from = 1; from <= 10; ++from)
            for (int to = 1; to <= 10; ++to) {
                if (from == to) continue;
                const Ad there = Convert(t, from, in, to);
                const Ad back = Convert(t, to, there, from);
                const double e = SepArcsec(back, in);
                const int viaB1950 = (from == 4 || from == 10) + (to == 4 || to == 10);
                const double cosLat = std::cos(std::max(std::fabs(in.d), std::fabs(there.d)) * M_PI / 180.0);
                const double asinLimit = std::min(0.0032, 2.5e-11 / cosLat);
                (viaB1950 ? bias : exact).Add(e);
                EXPECT_LT(e, viaB1950 * kFrameBiasArcsec + 1e-6 + asinLimit) << from << "->" << to;
            }
    }
    exact.Report();
    bias.Report();
}

TEST(Coordinates, GalacticPoleAndCentre) {
    const ATime t = HandTime(2451545.0, 23.44, 23.44, nullptr, nullptr, 0.0, 0.0);
    // IAU 1958: pole at B1950.0 (192.25, 27.4), centre at (265.6108440,
    // -28.9167903), both to the frame bias left by the precession pair.
    const Ad pole = Convert(t, 10, Ad{0.0, 90.0}, 4);
    EXPECT_LT(SepArcsec(pole, Ad{192.25, 27.4}), kFrameBiasArcsec);
    const Ad centre = Convert(t, 10, Ad{0.0, 0.0}, 4);
    EXPECT_LT(SepArcsec(centre, Ad{265.61084403105934, -28.91679034837349}), kFrameBiasArcsec);
    // The other way the chain is one precession and three rotations.
    const Ad l0 = Convert(t, 4, Ad{265.61084403105934, -28.91679034837349}, 10);
    EXPECT_LT(SepArcsec(l0, Ad{0.0, 0.0}), kFrameBiasArcsec);
    // The galactic pole in J2000.0 is near (192.859, 27.128).
    const Ad poleJ2000 = Convert(t, 10, Ad{0.0, 90.0}, 3);
    EXPECT_NEAR(poleJ2000.a, 192.8595, 0.001);
    EXPECT_NEAR(poleJ2000.d, 27.1283, 0.001);
}

TEST(Coordinates, EclipticOfJ2000) {
    const ATime t = HandTime(2460000.5, 23.44, 23.44, nullptr, nullptr, 0.0, 0.0);
    const double eps0 = GetEp(2451545.0);
    // The summer solstice point and the ecliptic pole.
    const Ad solstice = Convert(t, 3, Ad{90.0, eps0}, 7);
    EXPECT_NEAR(solstice.a, 90.0, 1e-9);
    EXPECT_NEAR(solstice.d, 0.0, 1e-12);
    const Ad pole = Convert(t, 7, Ad{0.0, 90.0}, 3);
    EXPECT_NEAR(pole.a, 270.0, 1e-9);
    EXPECT_NEAR(pole.d, 90.0 - eps0, 1e-12);
}

// The apparent systems differ from the mean ones by nutation and
// aberration only: with the nutation matrix set to the identity the
// difference is the aberration alone (at most about 21 arcseconds).
TEST(Coordinates, ApparentSystemsAddAberration) {
    const ATime t = HandTime(2455000.5, 23.4393, 23.4393, nullptr, nullptr, 40.0, 35.0);
    for (int i = 0; i < 100; ++i) {
        const Ad in{i * 3.6, -60.0 + i * 1.2};
        const Ad mean = Convert(t, 3, in, 5), app = Convert(t, 3, in, 6);
        double p[3];
        Dc v;
        AdToDc(&in, &v);
        p[0] = v.x, p[1] = v.y, p[2] = v.z;
        double q[3];
        AnnualAberration(&t, p, 1, q);
        const Dc w{q[0], q[1], q[2]};
        Ad expected;
        DcToAd(&w, &expected);
        EXPECT_LT(SepArcsec(app, expected), 1e-9);
        EXPECT_LT(SepArcsec(app, mean), 21.3);
        // The same for the ecliptic and the horizon.
        EXPECT_NEAR(SepArcsec(Convert(t, 3, in, 9), Convert(t, 3, in, 8)), SepArcsec(app, mean), 1e-9);
        EXPECT_NEAR(SepArcsec(Convert(t, 3, in, 2), Convert(t, 3, in, 1)), SepArcsec(app, mean), 1e-9);
    }
}

TEST(PositionAngle, AdToPaDistIsDeg2Point) {
    const Ad c{10.0, 20.0}, north{10.0, 30.0}, east{12.0, 20.0};
    double pa = 0.0, dist = 0.0;
    EXPECT_EQ(AdToPaDist(&c, &north, &pa, &dist), &dist);
    EXPECT_EQ(pa, 360.0);
    EXPECT_NEAR(dist, 10.0, 1e-12);
    AdToPaDist(&c, &east, &pa, &dist);
    EXPECT_NEAR(pa, 90.0, 0.4);
    double pa2, dist2;
    Deg2Point(&c, &east, &pa2, &dist2);
    EXPECT_EQ(pa, pa2);
    EXPECT_EQ(dist, dist2);
    EXPECT_EQ(AdToPaDist(&c, &east, nullptr, &dist), &dist);
    EXPECT_EQ(AdToPaDist(nullptr, &east, &pa, &dist), nullptr);
}

TEST(PositionAngle, PaDistToAdInvertsAdToPaDist) {
    MaxError err("PaDistToAd then AdToPaDist, degrees");
    for (int i = 0; i < 500; ++i) {
        const Ad c{std::fmod(i * 73.1, 360.0), -85.0 + std::fmod(i * 7.7, 170.0)};
        const double pa = 0.5 + std::fmod(i * 29.3, 359.0), dist = 0.01 + std::fmod(i * 3.1, 89.0);
        Ad p;
        PaDistToAd(&c, pa, dist, &p);
        EXPECT_GE(p.a, 0.0);
        EXPECT_LT(p.a, 360.0);
        double pa2, dist2;
        AdToPaDist(&c, &p, &pa2, &dist2);
        err.Add(std::max(std::fabs(std::remainder(pa2 - pa, 360.0)), std::fabs(dist2 - dist)));
    }
    err.Report();
    EXPECT_LT(err.max, 1e-9);
}

TEST(PositionAngle, PaDistToAdSpecialCases) {
    const Ad c{400.0, 95.0};
    Ad p{1.0, 1.0};
    PaDistToAd(&c, 123.0, 0.0, &p);  // distance 0: the centre as it is
    EXPECT_EQ(p.a, 400.0);
    EXPECT_EQ(p.d, 95.0);
    // Reaching the pole along position angle 0 or 180 keeps the centre's RA.
    const Ad c2{123.0, 80.0};
    PaDistToAd(&c2, 0.0, 10.0, &p);
    EXPECT_EQ(p.a, 123.0);
    EXPECT_NEAR(p.d, 90.0, 1e-9);
    PaDistToAd(&c2, 360.0, 10.0, &p);
    EXPECT_EQ(p.a, 123.0);
    const Ad c3{250.0, -85.0};
    PaDistToAd(&c3, 180.0, 5.0, &p);
    EXPECT_EQ(p.a, 250.0);
    EXPECT_NEAR(p.d, -90.0, 1e-9);
    // Past the pole the point continues on the other side.
    PaDistToAd(&c2, 0.0, 20.0, &p);
    EXPECT_NEAR(p.a, 303.0, 1e-9);
    EXPECT_NEAR(p.d, 80.0, 1e-9);
    PaDistToAd(nullptr, 0.0, 1.0, &p);
    PaDistToAd(&c2, 0.0, 1.0, nullptr);
}
