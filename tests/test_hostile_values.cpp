// Arguments no caller should pass give the header's defined results, not
// undefined behaviour (an abort under make check-asan) or a hang.
#include "test_support.h"

#include <climits>

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

}  // namespace
