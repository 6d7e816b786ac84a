// The shared body steps: light time, the head, the magnitude slot.
#include "test_support.h"

#include <limits>

#include "solar/body/body_pipeline.h"

namespace {

using namespace kvx::body;
using kvx::test::SepArcsec;

constexpr double kLightDaysPerAu = 0.005775518308;
constexpr double kJde = 2459000.5;

// A body in fast uniform motion (the loop needs several passes) against the exact light time tau of |p(kJde -
// tau) - origin - offset| = tau / c, found by bisection.
TEST(BodyLightTime, SettlesOnTheRetardedInstantOfAMovingBody) {
    const double p0[3] = {3.0, -4.0, 1.2}, v[3] = {0.03, 0.04, -0.02};
    const double origin[3] = {0.6, 0.8, 0.0}, offset[3] = {2e-5, -3e-5, 1e-5};
    int calls = 0;
    auto body = [&](double jde, double out[3]) {
        ++calls;
        for (int i = 0; i < 3; ++i) out[i] = p0[i] + v[i] * (jde - kJde);
        return true;
    };
    Retarded r;
    ASSERT_TRUE(LightTime(kJde, origin, offset, {1.0, kOneSecond, NonFinite::kIterate, kMaxLightPasses}, body, &r));
    EXPECT_GE(calls, 2);  // the first guess (1 AU) is far off
    double lo = 0.0, hi = 1.0, x[3];
    for (int k = 0; k < 200; ++k) {
        const double tau = 0.5 * (lo + hi);
        for (int i = 0; i < 3; ++i) x[i] = p0[i] - v[i] * tau - origin[i] - offset[i];
        (std::hypot(x[0], x[1], x[2]) * kLightDaysPerAu > tau ? lo : hi) = tau;
    }
    // The loop stops once a pass moves the light time by at most one second;
    // the remaining error is that times v/c (3e-4 here).
    EXPECT_LT(std::fabs(r.distance * kLightDaysPerAu - lo), 1e-3 * kOneSecond);
    body(kJde - r.lightTime, x);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(r.position[i], x[i]);
        EXPECT_EQ(r.relative[i], (x[i] - origin[i]) - offset[i]);  // origin first, then the offset
    }
}

// Per rule, a NaN source: passes made and result; a failing source always ends the loop at once with false.
TEST(BodyLightTime, SourcesThatFailOrGoNonFinite) {
    const double origin[3] = {0, 0, 0};
    int calls = 0;
    auto nan = [&calls](double, double out[3]) {
        ++calls;
        out[0] = out[1] = out[2] = std::numeric_limits<double>::quiet_NaN();
        return true;
    };
    auto fails = [&calls](double, double[3]) { ++calls; return false; };
    const struct { NonFinite rule; bool result; int calls; } cases[] = {{NonFinite::kIterate, true, 7}, {NonFinite::kStop, true, 1}, {NonFinite::kFail, false, 1}};
    for (const auto &c : cases) {
        const LightTimeRule rule{1.0, kOneSecond, c.rule, 7};
        Retarded r;
        calls = 0;
        EXPECT_EQ(LightTime(kJde, origin, nullptr, rule, nan, &r), c.result);
        EXPECT_EQ(calls, c.calls) << static_cast<int>(c.rule);
        EXPECT_FALSE(LightTime(kJde, origin, nullptr, rule, fails, &r));
        EXPECT_EQ(calls, c.calls + 1);
    }
}

TEST(BodyHead, AgreesWithTheCoordinateConverter) {
    const Observer obs{35.0, 139.0, 40.0};
    const ATime t = kvx::test::AtJde(kJde, &obs);
    const double s[3] = {-0.3, 1.7, 0.55};
    const Dc dc{s[0], s[1], s[2]};
    Ad j2000, ecl, app;
    ASSERT_TRUE(DcToAdR(&dc, &j2000));
    Coordinates(&t, KVX_COORD_J2000, &j2000, KVX_COORD_ECL_MEAN, &ecl);
    Coordinates(&t, KVX_COORD_J2000, &j2000, KVX_COORD_APPARENT, &app);
    for (const AngleRule rule : {AngleRule::kAtan2, AngleRule::kAsin}) {
        BodyPos b;
        FillHead(t, s, rule, &b);
        EXPECT_DOUBLE_EQ(b.f[kDistance], std::sqrt(0.09 + 2.89 + 0.3025));
        // Same rotations, only rounding between the two angle rules.
        EXPECT_LT(SepArcsec(b.f[kRaJ2000], b.f[kDecJ2000], j2000.a, j2000.d), 1e-6);
        EXPECT_LT(SepArcsec(b.f[kEclLon], b.f[kEclLat], ecl.a, ecl.d), 1e-6);
        // The converter aberrates on the J2000.0 axes, the head on those of date: at most 20.5" x the
        // precession angle since J2000.0 (0.005 rad in 2020), 0.10".
        EXPECT_LT(SepArcsec(b.f[kRaApparent], b.f[kDecApparent], app.a, app.d), 0.11);
    }
}

// The head measured from a nearby body's angles against the head's own arctangents, for bodies around
// references at the 0/360 seam, at the equator and at high declination: the two differ by rounding alone.
TEST(BodyHead, NearRuleAgreesWithItsOwnArctangents) {
    const ATime t = kvx::test::AtJde(kJde);
    const double refs[3][2] = {{359.99, -12.0}, {150.0, 0.5}, {70.0, 75.0}};
    // Offsets up to 0.0141 rad, inside the rule's limit of 0.02.
    const double offsets[4][2] = {{0.01, 0.01}, {-0.01, 0.003}, {1e-7, -0.01}, {-0.0077, -0.0093}};
    double worst = 0.0;
    for (const auto &ref : refs) {
        double r[3];
        kvx::test::UnitVector(ref[0], ref[1], r);
        BodyPos planet, direct, near;
        FillHead(t, r, AngleRule::kAtan2, &planet);
        NearPlace place;
        MakeNearPlace(planet, &place);
        // Offsets along the east (e) and north (n) of r.
        const double e[3] = {-r[1], r[0], 0.0}, n[3] = {-r[2] * r[0], -r[2] * r[1], r[0] * r[0] + r[1] * r[1]};
        const double ne = std::hypot(e[0], e[1]), nn = kvx::test::Norm(n);
        for (const auto &o : offsets) {
            double s[3];
            for (int k = 0; k < 3; ++k) s[k] = 4.5 * (r[k] + o[0] * e[k] / ne + o[1] * n[k] / nn);
            FillHead(t, s, AngleRule::kAtan2, &direct);
            FillHead(t, s, place, &near);
            EXPECT_EQ(near.f[kDistance], direct.f[kDistance]);
            for (int k = 0; k < 6; k += 2) {
                const double c = std::cos(direct.f[k + 1] * kvx::test::kDegToRad);
                worst = std::fmax(worst, std::fabs(kvx::test::DiffArcsec(near.f[k], direct.f[k])) * c);
                worst = std::fmax(worst, std::fabs(kvx::test::DiffArcsec(near.f[k + 1], direct.f[k + 1])));
                EXPECT_TRUE(near.f[k] >= 0.0 && near.f[k] < 360.0) << near.f[k];
            }
        }
        // Beyond the limit the rule is the arctangents themselves: 0.085 rad
        // away, one offset exceeds 0.02 in every frame whatever its turn.
        double far[3];
        for (int k = 0; k < 3; ++k) far[k] = r[k] + 0.06 * (e[k] / ne + n[k] / nn);
        FillHead(t, far, AngleRule::kAtan2, &direct);
        FillHead(t, far, place, &near);
        for (int k = 0; k < 7; ++k) EXPECT_EQ(near.f[k], direct.f[k]) << k;
    }
    // Bound: series truncation (u^9 / 9, 6e-17 rad), the reference's sin/cos
    // (2.3e-16) and an ulp of 360 deg (5.7e-14 deg): 3e-10"; measured 1e-10".
    EXPECT_LT(worst, 3e-10);
}

TEST(BodyMagnitude, TenthsAreRoundedHalfUpIntoTheLowerHalfOfTheSlot) {
    for (const auto &[m, tenths] : {std::pair{8.28, 83}, {-0.05, 0}, {-1.26, -13}, {-26.74, -267}, {0.25, 3}}) {
        BodyPos b;
        b.f[36] = -1.0;
        SetMagnitude(m, planet_slot::kMagnitude, planet_slot::kMagnitudeTenths, &b);
        EXPECT_EQ(b.f[35], m);
        EXPECT_EQ(KVX_BODYPOS_INT(b, 37), tenths) << m;
        EXPECT_EQ(b.i[73], 0);
    }
}

}  // namespace
