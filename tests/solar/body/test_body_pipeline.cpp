// The shared body steps: light time, the head, the magnitude slot.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "kvxlib.h"
#include "solar/body/body_pipeline.h"
#include "support/angles.h"

namespace {

using namespace kvx::body;
using kvx::test::SepArcsec;

constexpr double kLightDaysPerAu = 0.005775518308;
constexpr double kJde = 2459000.5;

// A body in fast uniform motion (the loop needs several passes) against
// the exact light time tau of |p(kJde - tau) - origin - offset| = tau / c,
// found by bisection.
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

// Per rule, a NaN source: passes made and result; a failing source always
// ends the loop at once with false.
TEST(BodyLightTime, SourcesThatFailOrGoNonFinite) {
    const double origin[3] = {0, 0, 0};
    int calls = 0;
    auto nan = [&calls](double, double out[3]) {
        ++calls;
        out[0] = out[1] = out[2] = std::numeric_limits<double>::quiet_NaN();
        return true;
    };
    auto fails = [&calls](double, double[3]) { ++calls; return false; };
    const struct {
        NonFinite rule;
        bool result;
        int calls;
    } cases[] = {{NonFinite::kIterate, true, 7}, {NonFinite::kStop, true, 1}, {NonFinite::kFail, false, 1}};
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
        // The converter aberrates on the J2000.0 axes, the head on those of
        // date: at most 20.5" x the precession angle since J2000.0 (0.005
        // rad in 2020), 0.10".
        EXPECT_LT(SepArcsec(b.f[kRaApparent], b.f[kDecApparent], app.a, app.d), 0.11);
    }
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
