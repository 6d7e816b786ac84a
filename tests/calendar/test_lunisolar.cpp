// The lunisolar calendar 1900-2100 against a derivation from Swiss Ephemeris (UTC+9); the key-year table, leap
// months, conversions and the zone cache.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <tuple>
#include <vector>

#include "kvxlib.h"
#include "test_support.h"

namespace {

using kvx::test::Reference;

// A month by its first civil day; from the Swiss Ephemeris derivation also the new moon's distance from
// midnight (minutes).
struct Month { double start; int number; double margin = 0.0; };

// The table of key year K in zone tz, built through a conversion in June.
std::vector<Month> KeyTable(int key, double tz) {
    const ADate civil{key, 6, 15, 0, 0, 0.0, tz};
    ADate old{};
    Calender_NewToOld(&civil, &old);
    std::vector<Month> out;
    Month l{};
    for (int i = 0; Calender_GetTable(i, &l.start, &l.number) == i; ++i) out.push_back(l);
    return out;
}

std::string DateText(double jd) {
    ADate d;
    JdToDate2(jd, &d);
    char buf[32];
    std::snprintf(buf, sizeof buf, "%04d-%02d-%02d", d.year, d.month, d.day);
    return buf;
}

// The month holding a civil day in a list sorted by start; -1 outside it.
int Locate(const std::vector<Month> &months, double jd) {
    for (std::size_t i = 0; i + 1 < months.size(); ++i)
        if (months[i].start <= jd && jd < months[i + 1].start) return static_cast<int>(i);
    return -1;
}

// Consecutive civil days on which the library and a reference disagree.
struct Run { double first, last; int libMonth, refMonth; };

// Every civil day 1900-01-01 to 2100-11-30 (the key-year 2100 table's last) converted in UTC+9 and compared
// with the reference months.
std::vector<Run> CompareDays(const std::vector<Month> &ref) {
    std::vector<Run> runs;
    const double first = CalcJd(1900, 1, 1), last = CalcJd(2100, 11, 30);
    for (double jd = first; jd <= last; jd += 1.0) {
        ADate civil, old{};
        JdToDate2(jd, &civil);  // midnight
        civil.tz = 9.0;
        Calender_NewToOld(&civil, &old);
        const int k = Locate(ref, jd);
        if (k < 0) continue;
        const int refMonth = ref[k].number, refDay = static_cast<int>(jd - ref[k].start) + 1;
        if (old.month == refMonth && old.day == refDay) continue;
        if (!runs.empty() && runs.back().last == jd - 1.0)
            runs.back().last = jd;
        else
            runs.push_back({jd, jd, old.month, refMonth});
    }
    return runs;
}

std::vector<Month> SweMonths() {
    const Reference swe("lunisolar_swe.txt", {"start", "month", "nm_margin", "term_margin", "agrees_utc8"});
    std::vector<Month> out;
    for (const auto &row : swe)
        out.push_back({row["start"], static_cast<int>(row["month"]), row["nm_margin"]});
    return out;
}

// Runs of differing days against the listed ones (first and last civil day, tests/data/expected).
void ExpectRuns(const std::vector<Run> &runs, const char *file) {
    const auto expected = kvx::test::ExpectedRows(file);
    std::vector<bool> seen(expected.size(), false);
    for (const auto &r : runs) {
        bool listed = false;
        for (std::size_t k = 0; k < expected.size(); ++k) {
            const auto &e = expected[k];
            if (r.first == CalcJd(e[0], e[1], e[2]) && r.last == CalcJd(e[3], e[4], e[5])) listed = seen[k] = true;
        }
        EXPECT_TRUE(listed) << file << ": unexpected difference " << DateText(r.first) << ".." << DateText(r.last)
                            << " library month " << r.libMonth << ", reference " << r.refMonth;
    }
    for (std::size_t k = 0; k < expected.size(); ++k) EXPECT_TRUE(seen[k]) << file << ": listed difference " << k << " no longer occurs";
}

TEST(LunisolarReference, SwissEphemerisDerivation1900To2100) {
    const auto swe = SweMonths();
    ASSERT_GT(swe.size(), 2480u);
    // Each new-moon difference lies within two minutes of midnight in the derivation too.
    for (const auto &e : kvx::test::ExpectedRows("lunisolar_differences_swe.txt"))
        EXPECT_TRUE(e[6] == 0.0 || std::any_of(swe.begin(), swe.end(), [&](const Month &m) {
                        return std::fabs(m.margin - e[6]) < 0.05 && m.margin < 2.0;
                    })) << e[0] << " " << e[6];
    ExpectRuns(CompareDays(swe), "lunisolar_differences_swe.txt");
}

ADate Old(int year, int month, int day, double tz = 9.0) { return ADate{year, month, day, 0, 0, 0.0, tz}; }
int NewToOld(ADate civil, ADate *old) { return Calender_NewToOld(&civil, old); }
int OldToNew(ADate old, ADate *civil) { return Calender_OldToNew(&old, civil); }
using Ymd = std::array<int, 3>;
Ymd YmdOf(const ADate &d) { return {d.year, d.month, d.day}; }

// Conversions and return values (the cases of tests/data/expected/lunisolar_conversions.txt), back again.
TEST(LunisolarCalendar, ConversionsAcrossKeyYearsAndLeapMonths) {
    for (const auto &c : kvx::test::ExpectedRows("lunisolar_conversions.txt")) {
        ADate old{};
        EXPECT_EQ(NewToOld(Old(c[0], c[1], c[2]), &old), c[3]) << c[0] << "-" << c[1] << "-" << c[2];
        EXPECT_EQ(YmdOf(old), (Ymd{static_cast<int>(c[4]), static_cast<int>(c[5]), static_cast<int>(c[6])})) << c[0] << "-" << c[1];
    }
    ADate civil{1, 1, 1, 0, 0, 0.0, 0.0};
    EXPECT_EQ(OldToNew(Old(2023, -2, 15), &civil), 5);
    EXPECT_EQ(std::tuple(YmdOf(civil), civil.tz), std::tuple(Ymd{2023, 4, 5}, 9.0));
    EXPECT_EQ(OldToNew(Old(2024, 11, 1), &civil), 1);  // from the key-year 2025 table
    EXPECT_EQ(YmdOf(civil), (Ymd{2024, 12, 1}));
    // 2024 has no leap month 5: civil month 0 signals it, year and day stay.
    civil = Old(1, 1, 1);
    OldToNew(Old(2024, -5, 1), &civil);
    EXPECT_EQ(YmdOf(civil), (Ymd{1, 0, 1}));
    for (double jd = CalcJd(2025, 1, 1); jd < CalcJd(2026, 1, 1); jd += 1.0) {  // round trip in one record
        ADate d, r;
        JdToDate2(jd, &d);
        d.tz = 9.0, r = d;
        Calender_NewToOld(&r, &r);
        Calender_OldToNew(&r, &r);
        EXPECT_EQ(YmdOf(r), YmdOf(d));
    }
}

// Key year K's table runs from November K-1 to February K+1, kept whatever zone asks next for year K.
TEST(LunisolarCalendar, KeyYearTableSpanAndCache) {
    const auto t = KeyTable(2024, 9.0);
    ASSERT_TRUE(t.size() == 16u || t.size() == 17u) << t.size();
    EXPECT_EQ(DateText(t.front().start).substr(0, 7) + DateText(t.back().start).substr(0, 7), "2023-112025-02");
    double s;
    int m;
    EXPECT_EQ(Calender_GetTable(-1, &s, &m), -1);
    const auto tokyo = KeyTable(2026, 9.0);
    // The same key year from another zone is answered from the Tokyo table.
    ADate old{};
    NewToOld(Old(2026, 7, 1, -10.0), &old);
    EXPECT_EQ(old.tz, -10.0);
    for (std::size_t i = 0; i < tokyo.size(); ++i) {
        ASSERT_EQ(Calender_GetTable(static_cast<int>(i), &s, &m), static_cast<int>(i));
        EXPECT_EQ(s, tokyo[i].start);
    }
    // A new key year is built in its request's zone: the new moon of 2027-01-08 05:24 JST is 7 January at UTC-10.
    NewToOld(Old(2027, 3, 1, -10.0), &old);
    bool found = false;
    for (int i = 0; Calender_GetTable(i, &s, &m) == i; ++i) found |= s == CalcJd(2027, 1, 7);
    EXPECT_TRUE(found);
}

TEST(LunisolarCalendar, DayAboveThirtyLosesThirty) {
    // Before JD 1356173 the daily-sample search may skip a lunation: days past 30 of the gap wrap to 1.
    bool tested = false;
    for (int key = -1200; key > -1300 && !tested; --key) {
        const auto t = KeyTable(key, 0.0);
        for (std::size_t i = 0; i + 2 < t.size() && !tested; ++i) {
            if (t[i + 1].start - t[i].start < 45.0) continue;
            const double jd = t[i].start + 35.0;  // day 36 of the lunation
            int y, mo;
            double d;
            JdToDate(jd, &y, &mo, &d);
            if (mo == 12 || y != key) continue;  // must select this key year
            ADate old{};
            NewToOld(Old(y, mo, static_cast<int>(d), 0.0), &old);
            EXPECT_EQ(std::pair(old.month, old.day), std::pair(t[i].number, 6));
            tested = true;
        }
    }
    EXPECT_TRUE(tested) << "no table with a skipped lunation found";
}

TEST(LunisolarCalendar, NullAndAbsurdInputs) {
    ADate old{};
    EXPECT_EQ(Calender_NewToOld(nullptr, &old) + NewToOld(Old(2024, 1, 1), nullptr) + Calender_OldToNew(nullptr, &old), 0);
    for (const int year : {INT32_MIN, -200000, 200000, INT32_MAX}) {
        old = Old(0, 7, 7);
        NewToOld(Old(year, 12, 31), &old);
        EXPECT_EQ(old.month, 7);  // empty table: left as it was
        EXPECT_EQ(Calender_GetTable(0, nullptr, nullptr), -1);
        ADate civil{};
        OldToNew(Old(year, 11, 1), &civil);
        EXPECT_EQ(civil.month, 0);
    }
    old = Old(0, 7, 7);
    NewToOld(Old(2024, 5, 5, NAN), &old);
    NewToOld(Old(2024, 5, 5, 9.0), &old);
    EXPECT_EQ(old.tz, 9.0);
}

}  // namespace
