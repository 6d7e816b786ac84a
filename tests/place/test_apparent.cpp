// Annual aberration, light deflection, parallax, proper motion and the
// apparent place of a star, compared with ERFA (tests/reference/
// make_place_reference.py) and with their geometric properties.
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

constexpr double kJ2000 = 2451545.0;
// General precession in longitude, arcseconds per Julian century (IAU 2006).
constexpr double kPrecessionRate = 5028.796195;
constexpr double kArcsecToRad = 4.84813681109536e-6;

double Norm(const double v[3]) { return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }

void AdVec(double ra, double dec, double out[3]) {
    const Ad a{ra, dec};
    Dc v;
    AdToDc(&a, &v);
    out[0] = v.x;
    out[1] = v.y;
    out[2] = v.z;
}

}  // namespace

// The circular orbit with first-order eccentricity terms against ERFA's
// rigorous aberration with the VSOP-based Earth velocity of epv00. On the
// axes of date, where the model's Sun longitude is referred, the residual is
// the error of the model itself.
TEST(AnnualAberration, MatchesErfaOnTheAxesOfDate) {
    const auto rows = ReadRows(ReferencePath("place_aberration.csv"));
    ASSERT_EQ(rows.size(), 400u);
    MaxError err("aberration vs erfa.ab, axes of date, arcsec");
    for (const auto &r : rows) {
        if (r[0] != 0.0) continue;
        const ATime t = HandTime(r[1], 0.0, r[2], nullptr, nullptr, 0.0, 0.0);
        double out[3];
        AnnualAberration(&t, &r[3], 1, out);
        err.Add(SepArcsec(out, &r[6]));
    }
    err.Report();
    EXPECT_LT(err.max, 0.03);
}

// Stars and conversions apply the same velocity to J2000 directions. The
// velocity is then misoriented by the precession since J2000.0, which adds
// at most kappa times the precession angle.
TEST(AnnualAberration, OnJ2000AxesErrorGrowsOnlyWithPrecession) {
    const auto rows = ReadRows(ReferencePath("place_aberration.csv"));
    MaxError err("aberration vs erfa.ab on J2000 axes, excess over the precession bound, arcsec");
    MaxError raw("aberration vs erfa.ab on J2000 axes (1900-2100), arcsec");
    for (const auto &r : rows) {
        if (r[0] != 1.0) continue;
        const ATime t = HandTime(r[1], 0.0, r[2], nullptr, nullptr, 0.0, 0.0);
        double out[3];
        AnnualAberration(&t, &r[3], 1, out);
        const double e = SepArcsec(out, &r[6]);
        const double precessionAngle = std::fabs(r[1] - kJ2000) / 36525.0 * kPrecessionRate * kArcsecToRad;
        const double bound = 0.03 + 20.5 * 1.02 * precessionAngle;
        raw.Add(e);
        err.Add(e - bound);
        EXPECT_LT(e, bound) << "jde " << r[1];
    }
    raw.Report();
}

TEST(AnnualAberration, RemovalUndoesAddition) {
    const ATime t = HandTime(2460000.5, 23.43, 23.44, nullptr, nullptr, 0.0, 0.0);
    MaxError back("aberration add then remove, |difference| of unit vectors");
    for (int i = 0; i < 2000; ++i) {
        double p[3];
        AdVec(i * 17.3, std::asin(-1.0 + (i + 0.5) / 1000.0) * 180.0 / M_PI, p);
        double app[3], geo[3];
        AnnualAberration(&t, p, 1, app);
        AnnualAberration(&t, app, 0, geo);
        const double d[3] = {geo[0] - p[0], geo[1] - p[1], geo[2] - p[2]};
        back.Add(Norm(d));
        EXPECT_NEAR(Norm(app), 1.0, 1e-15);
        EXPECT_NEAR(Norm(geo), 1.0, 1e-15);
        // Aberration itself is about 1e-4 rad; what is left is far smaller.
        EXPECT_GT(SepArcsec(app, p), 0.3);
    }
    back.Report();
    EXPECT_LT(back.max, 1e-9);
}

TEST(AnnualAberration, InPlaceAndNullSafe) {
    const ATime t = HandTime(2451545.0, 23.44, 23.44, nullptr, nullptr, 0.0, 0.0);
    double p[3];
    AdVec(123.0, 45.0, p);
    double expected[3];
    AnnualAberration(&t, p, 1, expected);
    AnnualAberration(&t, p, 1, p);
    EXPECT_EQ(p[0], expected[0]);
    EXPECT_EQ(p[1], expected[1]);
    EXPECT_EQ(p[2], expected[2]);
    AnnualAberration(&t, p, 0, p);
    AnnualAberration(nullptr, p, 1, p);
    AnnualAberration(&t, nullptr, 1, p);
    AnnualAberration(&t, p, 1, nullptr);
}

TEST(Deflection, MatchesErfa) {
    const auto rows = ReadRows(ReferencePath("place_deflection.csv"));
    ASSERT_EQ(rows.size(), 200u);
    MaxError star("deflection of stars vs erfa.ldsun, arcsec");
    MaxError body("deflection of solar-system bodies vs erfa.ld, arcsec");
    for (const auto &r : rows) {
        double out[3];
        if (r[0] == 0.0) {
            DeflectionStar(&r[1], &r[7], out);
            EXPECT_NEAR(Norm(out), 1.0, 1e-15);
            star.Add(SepArcsec(out, &r[10]));
        } else {
            DeflectionSolar(&r[1], &r[4], &r[7], out);
            const double d[3] = {out[0] - r[10], out[1] - r[11], out[2] - r[12]};
            body.Add(Norm(d) * kvx::test::kRadToArcsec);
        }
    }
    star.Report();
    body.Report();
    // The only difference is the rounded constant 1.974e-8 AU against
    // ERFA's 1.97412574336e-8: 6e-5 of the deflection (at most ~2").
    EXPECT_LT(star.max, 2e-4);
    EXPECT_LT(body.max, 2e-4);
}

TEST(Deflection, SourceBehindTheSunIsLeftAlone) {
    const double e[3] = {0.3, -0.9, -0.35};
    const double r = Norm(e);
    const double p[3] = {-e[0] / r, -e[1] / r, -e[2] / r};
    double out[3];
    DeflectionStar(p, e, out);
    EXPECT_EQ(out[0], p[0]);
    EXPECT_EQ(out[1], p[1]);
    EXPECT_EQ(out[2], p[2]);
    // A body beyond the Sun on the Sun-Earth line: q along -e.
    const double q[3] = {-2.0 * e[0], -2.0 * e[1], -2.0 * e[2]};
    DeflectionSolar(p, q, e, out);
    EXPECT_EQ(out[0], p[0]);
    EXPECT_EQ(out[1], p[1]);
    EXPECT_EQ(out[2], p[2]);
}

TEST(Deflection, DirectionAndLength) {
    // A star 1 degree from the Sun is pushed away from it by
    // (2GM/c^2) sin(E) / (1 - cos E) ~ 0.407 arcsec at elongation E.
    const double e[3] = {1.0, 0.0, 0.0};  // Sun seen towards -x
    const double sunDir[3] = {-1.0, 0.0, 0.0};
    double p[3];
    AdVec(179.0, 0.0, p);
    double out[3];
    DeflectionStar(p, e, out);
    const double expected = 1.974e-8 * std::sin(1.0 * M_PI / 180.0) / (1.0 - std::cos(M_PI / 180.0));
    EXPECT_NEAR(SepArcsec(out, p), expected * kvx::test::kRadToArcsec, 1e-9);
    EXPECT_GT(SepArcsec(out, sunDir), SepArcsec(p, sunDir));  // away from the Sun
    // The body version with q = p (a far body) agrees but is not normalised.
    double body[3];
    const double q[3] = {p[0] * 1e6 - 1.0, p[1] * 1e6, p[2] * 1e6};
    DeflectionSolar(p, q, e, body);
    EXPECT_NE(Norm(body), 1.0);
    EXPECT_NEAR(Norm(body), 1.0, 1e-9);
    EXPECT_NEAR(SepArcsec(body, out), 0.0, 1e-6);
}

TEST(AnnualParallax, DisplacesTowardsTheSunByParallaxTimesSine) {
    const double sun[2] = {30.0, 10.0};
    double s[3];
    AdVec(sun[0], sun[1], s);
    for (int i = 0; i < 50; ++i) {
        double p[3];
        AdVec(i * 37.0, -70.0 + i * 2.9, p);
        const double px = 0.77 / 3600.0;
        double out[3];
        AnnualParallax(p, px, sun, out);
        // Rigorous: the star at distance 1/px (AU) seen from 1 AU away from
        // the Sun: direction of p + px s.
        const double pxr = px * M_PI / 180.0;
        const double rig[3] = {p[0] + pxr * s[0], p[1] + pxr * s[1], p[2] + pxr * s[2]};
        EXPECT_LT(SepArcsec(out, rig), 1e-5);
        EXPECT_NEAR(Norm(out), 1.0, 1e-15);
        const double cosang = p[0] * s[0] + p[1] * s[1] + p[2] * s[2];
        EXPECT_NEAR(SepArcsec(out, p), 0.77 * std::sqrt(1.0 - cosang * cosang), 1e-5);
    }
    // Zero parallax: the normalised input.
    const double p2[3] = {0.0, 2.0, 0.0};
    double out[3];
    AnnualParallax(p2, 0.0, sun, out);
    EXPECT_EQ(out[0], 0.0);
    EXPECT_EQ(out[1], 1.0);
    EXPECT_EQ(out[2], 0.0);
}

TEST(ProperMotion, MovesAlongAGreatCircleAtTheGivenRate) {
    for (int i = 0; i < 40; ++i) {
        const double ra = i * 41.0, dec = -80.0 + i * 4.0;
        double p[3];
        AdVec(ra, dec, p);
        const double pm[2] = {(3.0 - i * 0.2) / 3600.0, (i * 0.15 - 2.5) / 3600.0};
        const double cd = std::cos(dec * M_PI / 180.0);
        const double mu = std::sqrt(pm[1] * pm[1] + pm[0] * cd * pm[0] * cd);
        const double years = 1000.0 + i * 100.0;
        double out[3];
        ProperMotion(kJ2000, p, pm, kJ2000 + years * 365.25, out);
        EXPECT_NEAR(Norm(out), 1.0, 1e-15);
        // Distance travelled and the position angle of the motion.
        Ad from{ra, dec}, to;
        const Dc o{out[0], out[1], out[2]};
        DcToAd(&o, &to);
        double pa, dist;
        Deg2Point(&from, &to, &pa, &dist);
        EXPECT_NEAR(dist, mu * years, 1e-9);
        double expectedPa = std::atan2(pm[0] * cd, pm[1]) * 180.0 / M_PI;
        if (expectedPa <= 0.0) expectedPa += 360.0;
        EXPECT_NEAR(pa, expectedPa, 1e-7);
        // Over one year the change is the rates themselves plus the
        // curvature of the great circle against the parallel:
        // d2a/dt2 = 2 a' d' tan d, d2d/dt2 = -a'^2 sin d cos d.
        ProperMotion(kJ2000, p, pm, kJ2000 + 365.25, out);
        const Dc o1{out[0], out[1], out[2]};
        DcToAd(&o1, &to);
        const double ar = pm[0] * M_PI / 180.0, dr = pm[1] * M_PI / 180.0, dd = dec * M_PI / 180.0;
        const double da = (ar + ar * dr * std::tan(dd)) * 180.0 / M_PI * 3600.0;
        const double ddec = (dr - 0.5 * ar * ar * std::sin(dd) * std::cos(dd)) * 180.0 / M_PI * 3600.0;
        EXPECT_NEAR(std::remainder(to.a - ra, 360.0) * 3600.0, da, 1e-6);
        EXPECT_NEAR((to.d - dec) * 3600.0, ddec, 1e-6);
    }
}

TEST(ProperMotion, NoTimeOrNoMotionKeepsTheDirection) {
    double p[3];
    AdVec(200.0, -33.0, p);
    const double pm[2] = {1e-3, -2e-3};
    const double zero[2] = {0.0, 0.0};
    double out[3];
    ProperMotion(2450000.5, p, pm, 2450000.5, out);
    for (int k = 0; k < 3; ++k) EXPECT_NEAR(out[k], p[k], 1e-16);
    ProperMotion(2450000.5, p, zero, 2470000.5, out);
    for (int k = 0; k < 3; ++k) EXPECT_NEAR(out[k], p[k], 1e-16);
}

// The whole chain against ERFA's space motion, parallax, deflection,
// aberration and precession-nutation (same matrices in the record). What
// remains is the aberration model on J2000 axes (see above) and the
// great-circle proper motion (second order).
TEST(StarApparent, MatchesErfaChain) {
    const auto rows = ReadRows(ReferencePath("place_star.csv"));
    ASSERT_EQ(rows.size(), 150u);
    MaxError err("StarApparent vs ERFA chain (1950-2050), arcsec");
    for (const auto &r : rows) {
        const ATime t = HandTime(r[0], 0.0, r[1], &r[12], &r[21], 0.0, 0.0);
        BodyPos sun{};
        sun.f[2] = r[7];
        sun.f[3] = r[8];
        sun.f[7] = r[9];
        sun.f[8] = r[10];
        sun.f[9] = r[11];
        double p[3];
        AdVec(r[2], r[3], p);
        const double pm[2] = {r[4], r[5]};
        double out[3];
        StarApparent(&t, p, pm, r[6], &sun, out);
        EXPECT_NEAR(Norm(out), 1.0, 1e-15);
        const double e = SepArcsec(out, &r[30]);
        err.Add(e);
        const double precessionAngle = std::fabs(r[0] - kJ2000) / 36525.0 * kPrecessionRate * kArcsecToRad;
        EXPECT_LT(e, 0.03 + 20.5 * 1.02 * precessionAngle) << "jde " << r[0];
    }
    err.Report();
}

TEST(StarApparent, NullRecordsDoNothing) {
    const ATime t = HandTime(2451545.0, 23.44, 23.44, nullptr, nullptr, 0.0, 0.0);
    BodyPos sun{};
    double p[3] = {1.0, 0.0, 0.0};
    const double pm[2] = {0.0, 0.0};
    double out[3] = {7.0, 7.0, 7.0};
    StarApparent(&t, p, pm, 0.0, nullptr, out);
    StarApparent(nullptr, p, pm, 0.0, &sun, out);
    EXPECT_EQ(out[0], 7.0);
}
