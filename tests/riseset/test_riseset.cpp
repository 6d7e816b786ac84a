// Rise, transit and set: the day window, the circumpolar test, the pole,
// twilight altitudes, the extra events of GetRiseSetEx, IsTransit, and
// inputs that must give a defined "no event".
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "kvxlib.h"
#include "math/constants.h"
#include "riseset/riseset.h"

namespace {

using namespace kvx::riseset;

constexpr double kSecond = 1.0 / 86400.0;

ADate LocalDay(int y, int m, int d, double tz) { return ADate{y, m, d, 0, 0, 0.0, tz}; }

int Circumpolar(double decJ2000, double lat) {
    const ADate date = LocalDay(2024, 3, 20, 0.0);
    const Observer obs{lat, 0.0, 0.0};
    InitRiseSet(&date, &obs);
    const Ad star{120.0, decJ2000};
    int32_t state = 99;
    EXPECT_EQ(CheckCircumPolar(kStar, &star, &date, &obs, &state), 1);
    return state;
}

// The threshold is 90 - p - h0 with h0 = 35'08" at sea level: +55 at 35 N
// stays up, -55 is still inside the rising band (the formula's limit for
// "never rises" is -55.59), -56 never rises. For southern observers the
// formula is built on p itself and decides nothing for the mirrored stars.
TEST(RiseSetCircumpolar, FollowsTheFormulaNorthAndSouth) {
    EXPECT_EQ(Circumpolar(55.0, 35.0), 1);
    EXPECT_EQ(Circumpolar(-55.0, 35.0), 0);
    EXPECT_EQ(Circumpolar(-56.0, 35.0), -1);
    EXPECT_EQ(Circumpolar(54.0, 35.0), 0);
    EXPECT_EQ(Circumpolar(-55.0, -35.0), 0);
    EXPECT_EQ(Circumpolar(55.0, -35.0), 0);
    EXPECT_EQ(Circumpolar(-89.0, -35.0), 0);
}

// At a pole cos(latitude) is zero: the search gives nothing (the result
// untouched); the transit comes from the fallback (checked against PyEphem
// in the polar table).
TEST(RiseSetPole, NoRiseOnlyTransit) {
    const ADate date = LocalDay(2023, 6, 21, 0.0);
    const Observer obs{-90.0, 30.0, 0.0};
    InitRiseSet(&date, &obs);
    double t = -1.0;
    EXPECT_EQ(GetRiseSet(0.0, kSun, nullptr, kRise, &obs, 0.0, &t), 0);
    EXPECT_EQ(t, -1.0);
    EXPECT_EQ(GetRiseSet(0.0, kSun, nullptr, kTransit, &obs, 0.0, &t), 1);
}

// The lower end of the window is inclusive, the upper exclusive: a transit
// 10 s before local midnight belongs to the previous day, and this day's is
// one sidereal day later.
TEST(RiseSetWindow, EventBeforeMidnightGoesToThePreviousDay) {
    const Observer obs{40.0, 0.0, 0.0};
    const int code = 50;  // a point at 0 h, 0 deg of date
    ADate date = LocalDay(2010, 9, 1, 0.0);
    InitRiseSet(&date, &obs);
    double t0 = 0.0;
    ASSERT_EQ(GetRiseSet(0.0, code, nullptr, kTransit, &obs, 0.0, &t0), 1);
    const double jd0 = CalcJd(2010, 9, 1);
    for (double offset : {-10.0, 10.0}) {
        // Local midnight at t0 + offset: tz = (jd0 - midnight) * 24.
        const double tz = (jd0 - (t0 + offset * kSecond)) * 24.0;
        date.tz = tz;
        InitRiseSet(&date, &obs);
        double t = 0.0;
        ASSERT_EQ(GetRiseSet(tz, code, nullptr, kTransit, &obs, 0.0, &t), 1);
        EXPECT_GE(t, Midnight(Day()));
        EXPECT_LT(t, Midnight(Day()) + 1.0);
        EXPECT_NEAR(t - t0, offset > 0 ? kSiderealDay : 0.0, 2.0 * kSecond) << "offset " << offset;
    }
}

// Codes outside every range are a point at right ascension 0, declination 0
// of date: its transit is where the sidereal time is 0.
TEST(RiseSetBodies, UnknownCodesAreThePointAtZeroZero) {
    const ADate date = LocalDay(2001, 2, 3, 1.0);
    const Observer obs{10.0, 15.0, 0.0};
    InitRiseSet(&date, &obs);
    double a = 0.0, b = 0.0;
    ASSERT_EQ(GetRiseSet(1.0, -5, nullptr, kTransit, &obs, 0.0, &a), 1);
    ASSERT_EQ(GetRiseSet(1.0, 50, nullptr, kTransit, &obs, 0.0, &b), 1);
    EXPECT_EQ(a, b);
    EXPECT_NEAR(std::remainder(GetLst(a, 15.0), 360.0), 0.0, 15.05 / 3600.0);
}

// A comet whose elements are Ceres's built-in ones rises with Ceres (code 9)
// to the light-time tolerance of the two loops.
TEST(RiseSetBodies, CometBranchMatchesTheSameOrbitAsDwarfPlanet) {
    CometElements el{};
    el.kind = 'M';
    el.perihelionJd = 2454872.06723;
    el.e = 0.079275;
    el.q = 2.546744;
    el.peri = 72.75528;
    el.node = 80.39565;
    el.incl = 10.58586;
    el.equinox = 2000.0;
    el.h = 3.3;
    el.slope = 0.12;
    const ADate date = LocalDay(2020, 5, 5, 0.0);
    const Observer obs{-30.0, 20.0, 100.0};
    InitRiseSet(&date, &obs);
    for (int event : {kRise, kTransit, kSet}) {
        double ceres = 0.0, comet = 0.0;
        ASSERT_EQ(GetRiseSet(0.0, 9, nullptr, event, &obs, 0.0, &ceres), 1);
        ASSERT_EQ(GetRiseSet(0.0, 2000, &el, event, &obs, 0.0, &comet), 1);
        EXPECT_NEAR(comet, ceres, 0.1 * kSecond) << "event " << event;
    }
    CometElements bad = el;
    bad.q = 0.0;  // the solver fails
    double t = -1.0;
    int32_t state = 7;
    EXPECT_EQ(GetRiseSet(0.0, 2000, &bad, kRise, &obs, 0.0, &t), 0);
    EXPECT_EQ(GetRiseSet(0.0, 2000, &bad, kTransit, &obs, 0.0, &t), 0);
    EXPECT_EQ(GetRiseSet(0.0, 2000, nullptr, kRise, &obs, 0.0, &t), 0);
    EXPECT_EQ(CheckCircumPolar(2000, &bad, &date, &obs, &state), 0);
    EXPECT_EQ(state, 7);
}

// A satellite rises with its planet: Io is never more than 2.5' from
// Jupiter (planetocentric 422000 km at >= 4 AU), which moves the event by
// less than a minute at middle latitudes.
TEST(RiseSetBodies, SatelliteRisesWithItsPlanet) {
    const ADate date = LocalDay(2024, 12, 7, 1.0);
    const Observer obs{48.0, 11.0, 500.0};
    InitRiseSet(&date, &obs);
    for (int event : {kRise, kTransit, kSet}) {
        double jupiter = 0.0, io = 0.0;
        ASSERT_EQ(GetRiseSet(1.0, 3, nullptr, event, &obs, 0.0, &jupiter), 1);
        ASSERT_EQ(GetRiseSet(1.0, 501, nullptr, event, &obs, 0.0, &io), 1);
        EXPECT_NEAR(io, jupiter, 60.0 * kSecond) << "event " << event;
        EXPECT_NE(io, jupiter);
    }
    int32_t state = 9;
    EXPECT_EQ(CheckCircumPolar(501, nullptr, &date, &obs, &state), 1);
    EXPECT_EQ(state, 0);
    EXPECT_EQ(CheckCircumPolar(599, nullptr, &date, &obs, &state), 0);
}

// 0 degrees is exactly the standard sunrise and sunset; other altitudes
// are compared with PyEphem in RiseSetPyEphem.TwilightCentreAtMinus6_12_18.
TEST(RiseSetSun, DegreesVariantAtZeroIsTheStandardEvent) {
    const ADate date = LocalDay(2015, 11, 2, -5.0);
    const Observer obs{40.7, -74.0, 10.0};
    double rise = 0.0, rise0 = 0.0, set = 0.0, set0 = 0.0;
    ASSERT_EQ(GetSunRise(&date, &obs, &rise), 1);
    ASSERT_EQ(GetSunRiseDeg(&date, &obs, &rise0, 0), 1);
    ASSERT_EQ(GetSunSet(&date, &obs, &set), 1);
    ASSERT_EQ(GetSunSetDeg(&date, &obs, &set0, 0), 1);
    EXPECT_EQ(rise, rise0);
    EXPECT_EQ(set, set0);
}

// The horizon correction is added to the altitude once in the final check:
// a sunrise on a 5000 m summit is found, earlier than at sea level by the
// 2.3 degree dip of the horizon.
TEST(RiseSetSun, HighObserverStillSeesSunrise) {
    const ADate date = LocalDay(2019, 7, 1, 0.0);
    const Observer sea{-20.0, 0.0, 0.0}, summit{-20.0, 0.0, 5000.0};
    double low = 0.0, high = 0.0;
    ASSERT_EQ(GetSunRise(&date, &sea, &low), 1);
    ASSERT_EQ(GetSunRise(&date, &summit, &high), 1);
    // 2.27 deg of dip at 15 deg/h times cos(lat) cos(dec) ~ 0.86: about 10 min.
    EXPECT_NEAR((low - high) * 1440.0, 10.5, 1.0);
}

// A star rising two minutes after local midnight rises again a sidereal day
// later, inside the same civil day; GetRiseSetEx reports both, ascending.
// (Its seeds, 2 sidereal days - 1 day from the first event, reach the
// second one only when the day starts near 0 h UT, as here.)
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

TEST(RiseSetIsTransit, BoxThenDistance) {
    const Ad a{359.9, 10.0};
    const Ad near{0.1, 10.05};
    double pa = -1.0, dist = -1.0;
    EXPECT_EQ(IsTransit(&a, &near, 0.3, &pa, &dist), 1);
    EXPECT_NEAR(dist, std::hypot(0.2 * std::cos(10.0 * kvx::kPi / 180.0), 0.05), 1e-4);
    pa = dist = -1.0;
    const Ad far{1.0, 10.0};
    EXPECT_EQ(IsTransit(&a, &far, 0.3, &pa, &dist), 0);
    EXPECT_EQ(pa, -1.0);
    EXPECT_EQ(dist, -1.0);
    // Inside the box (0.32 < 1.1 x 0.3) but 0.32 deg away: written, 0.
    const Ad corner{a.a, 10.32};
    EXPECT_EQ(IsTransit(&a, &corner, 0.3, &pa, &dist), 0);
    EXPECT_NEAR(dist, 0.32, 1e-9);
    EXPECT_EQ(IsTransit(&a, &corner, 0.33, nullptr, nullptr), 1);
    EXPECT_EQ(IsTransit(nullptr, &corner, 1.0, &pa, &dist), 0);
}

// Bad input gives a defined "no event" and leaves the result alone.
TEST(RiseSetInput, NoCrashNoEvent) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    double t = -1.0;
    InitRiseSet(nullptr, nullptr);
    EXPECT_EQ(GetRiseSet(0.0, kSun, nullptr, kRise, nullptr, 0.0, &t), 0);
    ADate date = LocalDay(2000, 1, 1, inf);
    InitRiseSet(&date, nullptr);
    EXPECT_EQ(GetRiseSet(0.0, kSun, nullptr, kTransit, nullptr, 0.0, &t), 0);
    EXPECT_EQ(GetSunRise(&date, nullptr, &t), 0);
    EXPECT_EQ(t, -1.0);
    date.tz = 0.0;
    for (const Observer &obs : {Observer{nan, 0.0, 0.0}, Observer{10.0, 0.0, nan}, Observer{10.0, nan, 0.0}}) {
        for (int body : {kSun, kMoon, 3}) {
            InitRiseSet(&date, &obs);
            EXPECT_EQ(GetRiseSet(0.0, body, nullptr, kRise, &obs, 0.0, &t), 0);
        }
    }
    EXPECT_EQ(t, -1.0);
    EXPECT_EQ(GetSunRise(&date, nullptr, nullptr), 0);
    EXPECT_EQ(GetSunRise(nullptr, nullptr, &t), 0);
    // Without an observer the centre of the Earth (0 N, 0 E) rises the Sun.
    EXPECT_EQ(GetSunRise(&date, nullptr, &t), 1);
    EXPECT_NEAR(t, CalcJd(2000, 1, 1) + 0.25, 0.02);
    // Satellites without a theory (the Moon as 301, Jupiter's 99th, a code
    // outside the planets' hundreds) have no
    // place: no event, and no transit from the fallback either.
    InitRiseSet(&date, nullptr);
    for (int code : {301, 599, 1000}) {
        EXPECT_EQ(GetRiseSet(0.0, code, nullptr, kRise, nullptr, 0.0, &t), 0) << code;
        t = -1.0;
    }
    EXPECT_EQ(GetRiseSet(0.0, 301, nullptr, kTransit, nullptr, 0.0, &t), 0);
    EXPECT_EQ(t, -1.0);
}

}  // namespace
