// Civil and Julian dates: the calendar reform, interval shifts, zone changes
// and validation, checked against ERFA-generated reference dates and the
// quirks callers rely on.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

#include "kvxlib.h"
#include "test_support.h"

namespace {

ADate Date(int y, int m, int d, int hh = 0, int mi = 0, double s = 0.0, double tz = 0.0) {
    return ADate{y, m, d, hh, mi, s, tz};
}

TEST(CalcJd, ReformSwitchesOnTheJulianValue) {
    EXPECT_EQ(CalcJd(2000, 1, 1.5), 2451545.0);
    EXPECT_EQ(CalcJd(1582, 10, 15), 2299160.5);
    EXPECT_EQ(CalcJd(1582, 10, 5), 2299160.5);  // Julian Oct 5 0h is left uncorrected
    EXPECT_EQ(CalcJd(1582, 10, 4), 2299159.5);
    // Any instant after Julian Oct 5 0h is Gregorian-corrected: Oct 5 at 1h is
    // read as Gregorian Oct 5, ten days before the reform day.
    EXPECT_NEAR(CalcJd(1582, 10, 5 + 1.0 / 24), 2299150.5 + 1.0 / 24, 1e-9);
    int32_t y, m;
    double d;
    EXPECT_EQ(JdToDate(2299160.5, &y, &m, &d), 1582);
    EXPECT_EQ(m, 10);
    EXPECT_EQ(d, 15.0);
    JdToDate(2299159.5, &y, &m, &d);
    EXPECT_EQ(m, 10);
    EXPECT_EQ(d, 4.0);
}

TEST(CalcJd, AgreesWithErfaAndTheJulianDayCount) {
    const auto rows = kvx::test::ReadRows(kvx::test::ReferencePath("julian_dates.csv"));
    ASSERT_GT(rows.size(), 500u);
    double worst = 0.0;
    for (const auto &r : rows) {
        const ADate date = Date(static_cast<int>(r[0]), static_cast<int>(r[1]), static_cast<int>(r[2]),
                                static_cast<int>(r[3]), static_cast<int>(r[4]), r[5]);
        const double jd = GetJd(&date);
        worst = std::fmax(worst, std::fabs(jd - r[6]));
        EXPECT_NEAR(jd, r[6], 1e-8) << r[0] << "-" << r[1] << "-" << r[2];
        // and back to the same civil date
        ADate back{};
        JdToDate2(jd, &back);
        EXPECT_EQ(back.year, date.year);
        EXPECT_EQ(back.month, date.month);
        EXPECT_EQ(back.day, date.day);
        EXPECT_NEAR(back.hour * 3600.0 + back.minute * 60.0 + back.second, r[3] * 3600 + r[4] * 60 + r[5], 1e-3);
    }
    RecordProperty("max_abs_jd_error_days", std::to_string(worst));
}

TEST(CalcJd, RoundTripsOverAHundredThousandYearsEachWay) {
    for (int y = -100000; y <= 100000; y += 97) {
        for (int m = 1; m <= 12; m += 5) {
            const double jd = CalcJd(y, m, 17.25);
            int32_t yy, mm;
            double dd;
            ASSERT_EQ(JdToDate(jd, &yy, &mm, &dd), y);
            ASSERT_EQ(mm, m);
            ASSERT_NEAR(dd, 17.25, 1e-6) << y;
        }
    }
    // Consecutive days stay one day apart across month, year and reform edges.
    double prev = CalcJd(1500, 1, 1);
    for (int k = 1; k < 200000; ++k) {
        ADate d{};
        JdToDate2(prev + 1.0, &d);
        const double jd = CalcJd(d.year, d.month, d.day);
        ASSERT_EQ(jd, prev + 1.0) << d.year << "-" << d.month << "-" << d.day;
        prev = jd;
    }
}

TEST(GetJd, ZoneAndTimeOfDay) {
    ADate d = Date(2000, 1, 1, 21, 0, 0.0, 9.0);
    EXPECT_EQ(GetJd(&d), 2451545.0);
    d = Date(2000, 1, 1, 36, 0, 0.0, 0.0);  // hours past 24 carry into the day
    EXPECT_EQ(GetJd(&d), 2451545.0 + 1.0);
    EXPECT_EQ(GetMjd(2451545.0), 51544.5);
    EXPECT_EQ(GetJd(nullptr), 0.0);
}

TEST(JdToDate2, TruncatesAndLeavesZoneAlone) {
    ADate d{};
    d.tz = 5.5;
    JdToDate2(2451545.0 + 9.0 / 24.0, &d);
    EXPECT_EQ(d.year, 2000);
    EXPECT_EQ(d.day, 1);
    EXPECT_EQ(d.hour, 21);
    EXPECT_EQ(d.minute, 0);
    EXPECT_NEAR(d.second, 0.0, 1e-4);
    EXPECT_EQ(d.tz, 5.5);
}

TEST(ChangeDate, MonthShiftsRollOverAndSnapAtTheReform) {
    const ADate oneMonth = Date(0, 1, 0);
    ADate d = Date(2001, 1, 31, 12);
    EXPECT_EQ(ChangeDate(&d, &oneMonth, 0), 3);
    EXPECT_EQ(d.month, 3);
    d = Date(2004, 1, 31, 12);
    ChangeDate(&d, &oneMonth, 0);
    EXPECT_EQ(d.month, 3);
    EXPECT_EQ(d.day, 2);
    d = Date(1582, 9, 7);
    ChangeDate(&d, &oneMonth, 0);
    EXPECT_EQ(d.month, 10);
    EXPECT_EQ(d.day, 4);
    d = Date(1582, 9, 12);
    ChangeDate(&d, &oneMonth, 0);
    EXPECT_EQ(d.month, 10);
    EXPECT_EQ(d.day, 15);
    // Months below 1 borrow years: 2001-03 minus 15 months is 1999-12.
    d = Date(2001, 3, 10);
    const ADate fifteenMonths = Date(0, 15, 0);
    ChangeDate(&d, &fifteenMonths, 1);
    EXPECT_EQ(d.year, 1999);
    EXPECT_EQ(d.month, 12);
    // and 2001-03 plus 22 months is 2003-01
    d = Date(2001, 3, 10);
    const ADate twentyTwo = Date(0, 22, 0);
    ChangeDate(&d, &twentyTwo, 0);
    EXPECT_EQ(d.year, 2003);
    EXPECT_EQ(d.month, 1);
}

TEST(ChangeDate, TimeCarriesAndTheTwentyFourOClockQuirk) {
    ADate d = Date(2020, 3, 1, 0, 30);
    const ADate oneHour = Date(0, 0, 0, 1);
    ChangeDate(&d, &oneHour, 1);
    EXPECT_EQ(d.month, 2);
    EXPECT_EQ(d.day, 29);
    EXPECT_EQ(d.hour, 23);
    EXPECT_EQ(d.minute, 30);
    // An exact backward multiple of a day leaves 24:00 of the day before.
    d = Date(2020, 5, 10, 0, 0);
    const ADate oneDayOfHours = Date(0, 0, 0, 24);
    ChangeDate(&d, &oneDayOfHours, 1);
    EXPECT_EQ(d.day, 8);
    EXPECT_EQ(d.hour, 24);
    EXPECT_EQ(CheckDate(&d), 1);
    Date36To24(&d);
    EXPECT_EQ(d.day, 9);
    EXPECT_EQ(d.hour, 0);
    // Seconds accumulate across days forward.
    d = Date(2020, 12, 31, 23, 59, 30.0);
    const ADate ninetySeconds = Date(0, 0, 0, 0, 0, 90.0);
    ChangeDate(&d, &ninetySeconds, 0);
    EXPECT_EQ(d.year, 2021);
    EXPECT_EQ(d.day, 1);
    EXPECT_EQ(d.hour, 0);
    EXPECT_EQ(d.minute, 1);
    EXPECT_NEAR(d.second, 0.0, 1e-9);
}

TEST(ChangeLimitDate, RejectsYearsBeyondTheLimitUntouched) {
    ADate d = Date(100000, 6, 1, 5, 6, 7.0, 3.0);
    const ADate before = d;
    const ADate oneYear = Date(1, 0, 0);
    EXPECT_EQ(ChangeLimitDate(&d, &oneYear, 0), 100001);
    EXPECT_EQ(std::memcmp(&d, &before, sizeof d), 0);
    EXPECT_EQ(ChangeLimitDate(&d, &oneYear, 1), 99999);
    EXPECT_EQ(d.year, 99999);
}

TEST(ChangeTimezone, ShiftsTheFieldsAndSetsTheZone) {
    ADate d = Date(2000, 1, 1, 3, 0, 0.0, 9.0);
    EXPECT_EQ(ChangeTimezone(&d, 0.0), 1999);
    EXPECT_EQ(d.day, 31);
    EXPECT_EQ(d.hour, 18);
    EXPECT_EQ(d.tz, 0.0);
    ChangeTimezone(&d, 5.5);
    EXPECT_EQ(d.year, 1999);
    EXPECT_EQ(d.day, 31);
    EXPECT_EQ(d.hour, 23);
    EXPECT_EQ(d.minute, 30);
    d = Date(2000, 1, 31, 30, 60, 0.0, 9.0);  // 31st 31:00 is Feb 1 07:00
    Date36To24(&d);
    EXPECT_EQ(d.month, 2);
    EXPECT_EQ(d.day, 1);
    EXPECT_EQ(d.hour, 7);
    EXPECT_EQ(d.minute, 0);
}

TEST(CheckDate, LeapRulesAndLimits) {
    struct Case {
        ADate d;
        int valid;
    } cases[] = {
        {Date(1900, 2, 29), 0}, {Date(2000, 2, 29), 1}, {Date(1500, 2, 29), 1}, {Date(-4, 2, 29), 1},
        {Date(-3, 2, 29), 0},   {Date(-100, 2, 29), 1}, {Date(1582, 10, 10), 0}, {Date(1582, 10, 4), 1},
        {Date(1582, 10, 15), 1}, {Date(2001, 4, 31), 0}, {Date(2001, 13, 1), 0}, {Date(2001, 0, 1), 0},
        {Date(2001, 1, 0), 0},  {Date(2001, 1, 1, 36), 1}, {Date(2001, 1, 1, 37), 0}, {Date(2001, 1, 1, -1), 0},
        {Date(2001, 1, 1, 0, 60), 1}, {Date(2001, 1, 1, 0, 61), 0}, {Date(2001, 1, 1, 0, -1), 0},
    };
    for (const auto &c : cases)
        EXPECT_EQ(CheckDate(&c.d), c.valid) << c.d.year << "-" << c.d.month << "-" << c.d.day << " " << c.d.hour
                                            << ":" << c.d.minute;
    EXPECT_EQ(CheckDate(nullptr), 0);
}

TEST(GetTimezone, TruncatesToWholeHours) {
    const char *old = std::getenv("TZ");
    const std::string saved = old ? old : "";
    const struct {
        const char *tz;
        double hours;
    } cases[] = {
        {"Asia/Tokyo", 9.0},
        {"IST-5:30", 5.0},                      // +5:30 loses its half hour
        {"NST+3:30", -3.0},                     // -3:30 truncates toward zero
        {"EST5EDT,J1/0,J365/25", -4.0},         // daylight time all year: -5 + 1
        {"NST3:30NDT,J1/0,J365/25", -2.0},      // -210/60 = -3, plus 60/60
        {"UTC0", 0.0},
    };
    for (const auto &c : cases) {
        setenv("TZ", c.tz, 1);
        EXPECT_EQ(GetTimezone(), c.hours) << c.tz;
    }
    if (old) setenv("TZ", saved.c_str(), 1);
    else unsetenv("TZ");
    tzset();
}

TEST(GetNowDate, GivesTheCurrentTimeInTheZone) {
    ADate a{}, b{};
    GetNowDate(&a, 123.0, 9.0);
    GetNowDate(&b, 0.0, 0.0);
    EXPECT_EQ(a.tz, 9.0);
    EXPECT_EQ(CheckDate(&a), 1);
    EXPECT_EQ(a.second, std::floor(a.second));  // whole seconds
    EXPECT_NEAR(GetJd(&a), GetJd(&b), 2.0 / 86400.0);
    EXPECT_GT(a.year, 2020);
}

TEST(TimeArguments, MatchTheirDefinitions) {
    EXPECT_EQ(GetT2(2451545.0 + 36525.0), 1.0);
    EXPECT_NEAR(GetT(2442412.5), 1.43e-6, 1e-15);
    EXPECT_NEAR(GetEp(2451545.0), 84381.406 / 3600.0, 1e-10);
    // IAU 2006 obliquity at +-10 centuries (Capitaine et al. 2003, eq. 39)
    for (double t : {-10.0, 10.0}) {
        const double arcsec = 84381.406 - 46.836769 * t - 0.0001831 * t * t + 0.00200340 * t * t * t -
                              0.000000576 * t * t * t * t - 0.0000000434 * t * t * t * t * t;
        EXPECT_NEAR(GetEp(2451545.0 + t * 36525.0), arcsec / 3600.0, 2e-9);
    }
    EXPECT_EQ(GetEp(2451545.0 + 40 * 36525.0), GetEp(2451545.0 + 30 * 36525.0));  // clamped
}

}  // namespace
