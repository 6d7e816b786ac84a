// Arguments no caller should pass, and data files that were damaged, give
// the defined results the header documents instead of undefined behaviour
// (which make check-asan turns into an abort) or a hang (a ctest timeout).
#include <gtest/gtest.h>

#include <climits>
#include <cmath>

#include "kvxlib.h"
#include "solar/ephem/jpl_de.h"
#include "solar/ephem/planet_xyz.h"
#include "test_support.h"

namespace {

const double kNaN = std::nan("");

TEST(HostileValues, DatesBeyondTheInt32YearsSaturate) {
    int32_t y = 1, m = 1;
    double d = 0;
    EXPECT_EQ(JdToDate(kNaN, &y, &m, &d), 0);
    EXPECT_EQ(m, 0);
    EXPECT_TRUE(std::isnan(d));
    EXPECT_EQ(JdToDate(HUGE_VAL, &y, &m, &d), INT32_MAX);
    EXPECT_EQ(m, 0);
    EXPECT_EQ(JdToDate(-1e300, nullptr, nullptr, nullptr), INT32_MIN);
    EXPECT_EQ(JdToDate(8e11, nullptr, nullptr, nullptr), INT32_MAX);  // year 2.19e9
    // Every fill of an ATime goes through JdToDate2.
    for (double jd : {kNaN, HUGE_VAL, -4e9, 4e9}) {
        ATime t;
        SetATimeJd(jd, 9.0, nullptr, &t);
        UtToDt(jd);
    }
    ADate big{INT32_MAX, 12, 31, 0, 0, 0.0, 0.0};
    const ADate plus{INT32_MAX, 13, 0, 0, 0, 0.0, 0.0};
    ChangeDate(&big, &plus, 0);
    EXPECT_EQ(big.year, INT32_MAX);  // the sum saturates instead of wrapping
}

TEST(HostileValues, SexagesimalPartsSaturate) {
    Deg60 d{};
    DegTo60(1e12, &d);
    EXPECT_EQ(d.deg, INT32_MAX);
    DegTo60(kNaN, &d);
    EXPECT_EQ(d.deg, 0);
    Hour60 h{};
    HourTo60(-1e12, &h);
    EXPECT_EQ(h.hour, INT32_MIN);
}

TEST(HostileValues, MoonPhasesOfTheExtremeYearsEnd) {
    MoonPhase out[8];
    for (int32_t year : {INT32_MAX, INT32_MIN}) {
        const ADate month{year, 6, 1, 0, 0, 0.0, 0.0};
        const int32_t n = GetMoonPhases(&month, out, 8);
        EXPECT_TRUE(n >= 0 && n <= 8) << year;
    }
}

// The planet file of a fuzzer finding gives Mars a magnitude of -inf; the
// two others put Mars on the Sun or on the Earth (zero distances).
TEST(HostileValues, PlanetFilesWithZeroDistancesGiveDefinedMagnitudes) {
    for (const char *name : {"planet_ub.xyz", "planet_mars_at_sun.xyz", "planet_earth_eq_mars.xyz"}) {
        const std::string path = std::string(KVX_SOURCE_DIR) + "/fuzz/reproducers/planet_xyz/" + name;
        ASSERT_EQ(kvx::planetxyz::Open(path.c_str(), false), 1) << name;
        kvx::planetxyz::BlockInfo b{};
        ASSERT_TRUE(kvx::planetxyz::Block(0, &b));
        for (double jde = b.first; jde <= b.last; jde += 0.5) {
            ATime t;
            SetATimeJd2(jde, 0.0, 0.0, nullptr, &t);
            BodyPos sun{}, mars{};
            CalcSun(&t, &sun);
            CalcPlanet(2, &t, &sun, &mars);
            const double m = KVX_BODYPOS_FIELD(mars, 36);
            const int32_t tenths = KVX_BODYPOS_INT(mars, 37);
            if (std::isnan(m)) {
                EXPECT_EQ(tenths, 0) << name;
            } else if (std::isinf(m)) {
                EXPECT_EQ(tenths, m > 0 ? INT32_MAX : INT32_MIN) << name;
            }
        }
        kvx::planetxyz::Release();
    }
}

// A Moon file whose first record puts the Moon 7e7 km away: the light-time
// loop alternated between it and the theory forever at the file's start.
TEST(HostileValues, MoonFileFlippingWithTheTheoryEnds) {
    const std::string path = std::string(KVX_SOURCE_DIR) + "/fuzz/reproducers/moon_xyz/moon_scaled.xyz";
    ASSERT_TRUE(kvx::jpl::LoadMoonFile(path.c_str()));
    ADate d{2000, 1, 25, 0, 1, 0.0, 0.0};
    ATime t;
    SetATimeDate(&d, nullptr, &t);
    BodyPos sun{}, moon{};
    CalcSun(&t, &sun);
    CalcMoon(&t, &moon, &sun);
    EXPECT_TRUE(std::isfinite(moon.f[KVX_BP_DISTANCE - 1]));
    kvx::jpl::CloseMoon();
}

}  // namespace
