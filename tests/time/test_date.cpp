// Civil and Julian dates: the reform, shifts, zones and validation, against
// ERFA's dates and the quirks callers rely on.

#include <cstdlib>
#include <ctime>

#include "test_support.h"

namespace {

ADate Date(int y, int m, int d, int hh = 0, int mi = 0, double s = 0.0, double tz = 0.0) {
    return ADate{y, m, d, hh, mi, s, tz};
}
std::vector<double> Fields(const ADate &a) { return {double(a.year), double(a.month), double(a.day), double(a.hour), double(a.minute), a.second, a.tz}; }
std::string Str(const ADate &a) { return ::testing::PrintToString(Fields(a)); }
// Seven fields of a data row from column k on.
ADate FromRow(const std::vector<double> &r, std::size_t k) { return Date(r[k], r[k + 1], r[k + 2], r[k + 3], r[k + 4], r[k + 5], r[k + 6]); }

TEST(CalcJd, ReformZoneAndHoursPast24) {
    EXPECT_EQ(CalcJd(1582, 10, 15), 2299160.5);
    EXPECT_EQ(CalcJd(1582, 10, 5), 2299160.5);  // Julian Oct 5 0h is left uncorrected
    EXPECT_EQ(CalcJd(1582, 10, 4), 2299159.5);
    // Any instant after Julian Oct 5 0h is Gregorian-corrected: Oct 5 at 1h is
    // read as Gregorian Oct 5, ten days before the reform day.
    EXPECT_NEAR(CalcJd(1582, 10, 5 + 1.0 / 24), 2299150.5 + 1.0 / 24, 1e-9);
    int32_t y, m;
    double d;
    EXPECT_EQ(JdToDate(2299160.5, &y, &m, &d), 1582);
    EXPECT_EQ(m * 100 + d, 1015.0);
    JdToDate(2299159.5, &y, &m, &d);
    EXPECT_EQ(m * 100 + d, 1004.0);
    ADate z = Date(2000, 1, 1, 21, 0, 0.0, 9.0), h36 = Date(2000, 1, 1, 36);
    EXPECT_EQ(GetJd(&z), 2451545.0);
    EXPECT_EQ(GetJd(&h36), 2451546.0);
    EXPECT_EQ(GetMjd(2451545.0), 51544.5);
}

TEST(CalcJd, AgreesWithErfaAndRoundTrips) {
    const kvx::test::Reference ref("julian_dates.csv", {"year", "month", "day", "hour", "minute", "second", "jd"});
    kvx::test::Comparison cmp({{"jd_days", 1e-8, "double rounding of a day fraction"},
                               {"back_seconds", 1e-3, "truncated time of day after the round trip"}});
    for (const auto &row : ref) {
        const ADate date = Date(row["year"], row["month"], row["day"], row["hour"], row["minute"], row["second"]);
        const double jd = GetJd(&date);
        cmp.Add("jd_days", jd - row["jd"], row);
        ADate back{};
        JdToDate2(jd, &back);
        EXPECT_EQ(back.year * 10000 + back.month * 100 + back.day, date.year * 10000 + date.month * 100 + date.day);
        cmp.Add("back_seconds", back.hour * 3600.0 + back.minute * 60.0 + back.second -
                                    (row["hour"] * 3600 + row["minute"] * 60 + row["second"]), row);
    }
    cmp.Check();
    // +-100000 years; consecutive days across month, year and reform edges.
    for (int yr = -100000; yr <= 100000; yr += 97)
        for (int mo = 1; mo <= 12; mo += 5) {
            int32_t yy, mm;
            double dd;
            ASSERT_EQ(JdToDate(CalcJd(yr, mo, 17.25), &yy, &mm, &dd), yr);
            ASSERT_EQ(mm, mo);
            ASSERT_NEAR(dd, 17.25, 1e-6) << yr;
        }
    double prev = CalcJd(1500, 1, 1);
    for (int k = 1; k < 200000; ++k, prev += 1.0) {
        ADate d{};
        JdToDate2(prev + 1.0, &d);
        ASSERT_EQ(CalcJd(d.year, d.month, d.day), prev + 1.0) << d.year << "-" << d.month << "-" << d.day;
    }
}

// Shifts (cases in tests/data/expected/date_shifts.txt); zone changes shift the same way.
TEST(ChangeDate, ShiftsRollOverSnapAndCarry) {
    const auto rows = kvx::test::ExpectedRows("date_shifts.txt");
    EXPECT_EQ(rows.size(), 10u);
    for (const auto &r : rows) {
        ADate d = FromRow(r, 0), to = FromRow(r, 14);
        const ADate interval = Date(r[7], r[8], r[9], r[10], r[11], r[12]);
        EXPECT_EQ(ChangeDate(&d, &interval, static_cast<int>(r[13])), to.day);
        EXPECT_EQ(Fields(d), Fields(to)) << Str(FromRow(r, 0));
    }
    // Beyond year 100000 the limited form leaves the date untouched.
    ADate d = Date(100000, 6, 1, 5, 6, 7.0, 3.0);
    const ADate before = d, oneYear = Date(1, 0, 0);
    EXPECT_EQ(ChangeLimitDate(&d, &oneYear, 0), 100001);
    EXPECT_EQ(Fields(d), Fields(before));
    EXPECT_EQ(ChangeLimitDate(&d, &oneYear, 1), 99999);
    EXPECT_EQ(d.year, 99999);
    d = Date(2000, 1, 1, 3, 0, 0.0, 9.0);
    EXPECT_EQ(ChangeTimezone(&d, 5.5), 1999);
    EXPECT_EQ(Fields(d), Fields(Date(1999, 12, 31, 23, 30, 0.0, 5.5)));
    d = Date(2000, 1, 31, 30, 60, 0.0, 9.0);  // 31st 31:00 is Feb 1 07:00
    Date36To24(&d);
    EXPECT_EQ(Fields(d), Fields(Date(2000, 2, 1, 7, 0, 0.0, 9.0)));
}

TEST(CheckDate, LeapRulesAndLimits) {
    const auto rows = kvx::test::ExpectedRows("date_validity.txt");
    EXPECT_EQ(rows.size(), 19u);
    for (const auto &r : rows) {
        const ADate d = Date(r[0], r[1], r[2], r[3], r[4]);
        EXPECT_EQ(CheckDate(&d), r[5]) << Str(d);
    }
}

// The system zone in whole hours, truncated toward zero; the clock's date in it.
TEST(GetTimezone, TruncatesToWholeHoursAndNowIsInTheZone) {
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
    ADate a{}, b{};
    GetNowDate(&a, 123.0, 9.0);
    GetNowDate(&b, 0.0, 0.0);
    EXPECT_EQ(a.tz, 9.0);
    EXPECT_EQ(CheckDate(&a), 1);
    EXPECT_EQ(a.second, std::floor(a.second));  // whole seconds
    EXPECT_NEAR(GetJd(&a), GetJd(&b), 2.0 / 86400.0);
    EXPECT_GT(a.year, 2020);
}

}  // namespace
