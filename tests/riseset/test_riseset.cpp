// Rise, transit and set: day window, circumpolar test, other bodies, GetRiseSetEx, IsTransit, bad input.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>

#include "kvxlib.h"
#include "math/constants.h"
#include "riseset/riseset.h"

namespace {

using namespace kvx::riseset;

constexpr double kSecond = 1.0 / 86400.0;

ADate LocalDay(int y, int m, int d, double tz) { return ADate{y, m, d, 0, 0, 0.0, tz}; }

// Threshold 90 - p - h0 (h0 = 35'08" at sea level): at 35 N +55 stays up, -55 still rises (limit -55.59),
// -56 never rises; for southern observers the formula on p itself decides nothing for the mirrored stars.
TEST(RiseSetCircumpolar, FollowsTheFormulaNorthAndSouth) {
    const ADate date = LocalDay(2024, 3, 20, 0.0);
    for (const auto &[dec, lat, want] : {std::tuple{55.0, 35.0, 1}, {-55.0, 35.0, 0}, {-56.0, 35.0, -1}, {54.0, 35.0, 0},
                                         {-55.0, -35.0, 0}, {55.0, -35.0, 0}, {-89.0, -35.0, 0}}) {
        const Observer obs{lat, 0.0, 0.0};
        InitRiseSet(&date, &obs);
        const Ad star{120.0, dec};
        int32_t state = 99;
        EXPECT_EQ(CheckCircumPolar(kStar, &star, &date, &obs, &state) * 10 + state, 10 + want) << dec << " at " << lat;
    }
}

// The day window is [midnight, midnight + 1): a transit 10 s before local midnight belongs to the day
// before. Codes outside every range are a point at 0 h, 0 degrees of date: transit at sidereal time 0.
TEST(RiseSetWindow, EventBeforeMidnightGoesToThePreviousDay) {
    const Observer obs{40.0, 0.0, 0.0};
    ADate date = LocalDay(2010, 9, 1, 0.0);
    InitRiseSet(&date, &obs);
    double t0 = 0.0, t1 = 0.0;
    ASSERT_EQ(GetRiseSet(0.0, 50, nullptr, kTransit, &obs, 0.0, &t0), 1);
    ASSERT_EQ(GetRiseSet(0.0, -5, nullptr, kTransit, &obs, 0.0, &t1), 1);
    EXPECT_EQ(t0, t1);
    EXPECT_NEAR(std::remainder(GetLst(t0, 0.0), 360.0), 0.0, 15.05 / 3600.0);  // the 1 s search tolerance
    for (double offset : {-10.0, 10.0}) {
        // Local midnight at t0 + offset: tz = (jd0 - midnight) * 24.
        date.tz = (CalcJd(2010, 9, 1) - (t0 + offset * kSecond)) * 24.0;
        InitRiseSet(&date, &obs);
        double t = 0.0;
        ASSERT_EQ(GetRiseSet(date.tz, 50, nullptr, kTransit, &obs, 0.0, &t), 1);
        EXPECT_TRUE(t >= Midnight(Day()) && t < Midnight(Day()) + 1.0) << offset;
        EXPECT_NEAR(t - t0, offset > 0 ? kSiderealDay : 0.0, 2.0 * kSecond) << "offset " << offset;
    }
}

// A comet with Ceres's built-in elements rises with Ceres (code 9) to the loops' light-time tolerance; Io,
// never more than 2.5' from Jupiter (422000 km at >= 4 AU), moves its planet's events by under a minute.
TEST(RiseSetBodies, CometAndSatelliteFollowTheirBodies) {
    CometElements el{};
    el.kind = 'M', el.perihelionJd = 2454872.06723, el.e = 0.079275, el.q = 2.546744, el.peri = 72.75528;
    el.node = 80.39565, el.incl = 10.58586, el.equinox = 2000.0, el.h = 3.3, el.slope = 0.12;
    const struct {
        ADate date;
        Observer obs;
        int body, other;
        const void *object;
        double bound;
    } cases[] = {{LocalDay(2020, 5, 5, 0.0), {-30.0, 20.0, 100.0}, 9, 2000, &el, 0.1 * kSecond},
                 {LocalDay(2024, 12, 7, 1.0), {48.0, 11.0, 500.0}, 3, 501, nullptr, 60.0 * kSecond}};
    for (const auto &c : cases) {
        InitRiseSet(&c.date, &c.obs);
        for (int event : {kRise, kTransit, kSet}) {
            double body = 0.0, other = 0.0;
            ASSERT_EQ(GetRiseSet(c.date.tz, c.body, nullptr, event, &c.obs, 0.0, &body), 1);
            ASSERT_EQ(GetRiseSet(c.date.tz, c.other, c.object, event, &c.obs, 0.0, &other), 1);
            EXPECT_NEAR(other, body, c.bound) << c.other << " event " << event;
            EXPECT_NE(other, body) << c.other;
        }
    }
    const Observer munich{48.0, 11.0, 500.0};
    const ADate day = LocalDay(2024, 12, 7, 1.0);
    int32_t state = 9;
    EXPECT_EQ(CheckCircumPolar(501, nullptr, &day, &munich, &state) * 10 + state, 10);
    EXPECT_EQ(CheckCircumPolar(599, nullptr, &day, &munich, &state), 0);
    CometElements bad = el;
    bad.q = 0.0;  // the solver fails
    double t = -1.0;
    for (int event : {kRise, kTransit}) EXPECT_EQ(GetRiseSet(0.0, 2000, &bad, event, &munich, 0.0, &t), 0);
    EXPECT_EQ(GetRiseSet(0.0, 2000, nullptr, kRise, &munich, 0.0, &t), 0);
    state = 7;
    EXPECT_EQ(CheckCircumPolar(2000, &bad, &day, &munich, &state), 0);
    EXPECT_EQ(state, 7);
}

// A star rising at 00:02 rises again a sidereal day later in the same civil day: GetRiseSetEx reports both,
// ascending (its seeds reach the second one only when the day starts near 0 h UT, as here).
TEST(RiseSetEx, SecondRisingOfTheDay) {
    const Observer obs{35.0, 0.0, 0.0};
    const ADate date = LocalDay(2022, 1, 10, 0.0);
    InitRiseSet(&date, &obs);
    const double midnight = Midnight(Day());
    Ad star{10.0, 20.0};
    double r0 = 0.0;
    for (int pass = 0; pass < 3; ++pass) {  // move the star until it rises at 00:02 UT
        ASSERT_EQ(GetRiseSet(0.0, kStar, &star, kRise, &obs, 0.0, &r0), 1);
        star.a = degmal(star.a + (midnight + 120.0 * kSecond - r0) * 360.9856);
    }
    ASSERT_EQ(GetRiseSet(0.0, kStar, &star, kRise, &obs, 0.0, &r0), 1);
    ASSERT_NEAR(r0, midnight + 120.0 * kSecond, 1.0 * kSecond);
    double res[3] = {0.0, 0.0, 0.0};
    EXPECT_EQ(GetRiseSetEx(0.0, kStar, &star, kRise, &obs, 0.0, res, 0), 0);
    EXPECT_EQ(GetRiseSetEx(0.0, kStar, &star, kRise, &obs, 0.0, res, 1), 1);
    ASSERT_EQ(GetRiseSetEx(0.0, kStar, &star, kRise, &obs, 0.0, res, 2), 2);
    EXPECT_LT(res[0], res[1]);
    EXPECT_NEAR(res[0], r0, 1.0 * kSecond);
    EXPECT_NEAR(res[1] - res[0], kSiderealDay, 2.0 * kSecond);
}

// A box of 1.1 radii on the raw differences, then the great-circle distance; outside it nothing is written.
TEST(RiseSetIsTransit, BoxThenDistance) {
    const Ad a{359.9, 10.0}, near{0.1, 10.05}, far{1.0, 10.0}, corner{359.9, 10.32};
    double pa = -1.0, dist = -1.0;
    EXPECT_EQ(IsTransit(&a, &far, 0.3, &pa, &dist), 0);
    EXPECT_EQ(std::tuple(pa, dist), std::tuple(-1.0, -1.0));
    EXPECT_EQ(IsTransit(&a, &near, 0.3, &pa, &dist), 1);
    EXPECT_NEAR(dist, std::hypot(0.2 * std::cos(10.0 * kvx::kPi / 180.0), 0.05), 1e-4);  // flat-sky estimate
    EXPECT_EQ(IsTransit(&a, &corner, 0.3, &pa, &dist), 0);
    EXPECT_NEAR(dist, 0.32, 1e-9);
    EXPECT_EQ(IsTransit(&a, &corner, 0.33, nullptr, nullptr), 1);
    EXPECT_EQ(IsTransit(nullptr, &corner, 1.0, &pa, &dist), 0);
}

// Bad input gives a defined "no event" and leaves the result alone.
TEST(RiseSetInput, NoCrashNoEvent) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    double t = -1.0;
    InitRiseSet(nullptr, nullptr);
    EXPECT_EQ(GetRiseSet(0.0, kSun, nullptr, kRise, nullptr, 0.0, &t), 0);
    ADate date = LocalDay(2000, 1, 1, std::numeric_limits<double>::infinity());
    InitRiseSet(&date, nullptr);
    EXPECT_EQ(GetRiseSet(0.0, kSun, nullptr, kTransit, nullptr, 0.0, &t), 0);
    EXPECT_EQ(GetSunRise(&date, nullptr, &t), 0);
    date.tz = 0.0;
    for (const Observer &obs : {Observer{nan, 0.0, 0.0}, Observer{10.0, 0.0, nan}, Observer{10.0, nan, 0.0}}) {
        for (int body : {kSun, kMoon, 3}) {
            InitRiseSet(&date, &obs);
            EXPECT_EQ(GetRiseSet(0.0, body, nullptr, kRise, &obs, 0.0, &t), 0);
        }
    }
    EXPECT_EQ(t, -1.0);
    EXPECT_EQ(GetSunRise(&date, nullptr, nullptr) + GetSunRise(nullptr, nullptr, &t), 0);
    // Without an observer the centre of the Earth (0 N, 0 E) rises the Sun.
    EXPECT_EQ(GetSunRise(&date, nullptr, &t), 1);
    EXPECT_NEAR(t, CalcJd(2000, 1, 1) + 0.25, 0.02);
    // Satellites without a theory (301, Jupiter's 99th, 1000) have no place: no event, no fallback transit.
    InitRiseSet(&date, nullptr);
    t = -1.0;
    for (int code : {301, 599, 1000}) EXPECT_EQ(GetRiseSet(0.0, code, nullptr, kRise, nullptr, 0.0, &t), 0) << code;
    EXPECT_EQ(GetRiseSet(0.0, 301, nullptr, kTransit, nullptr, 0.0, &t), 0);
    EXPECT_EQ(t, -1.0);
}

}  // namespace
