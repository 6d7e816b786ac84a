// Public holidays against two npm packages 1948-2100 (the equinox formula's days among them); substitute,
// between-day and one-time rules, the formula beyond 2100, and the listing order.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "calendar/holiday.h"
#include "kvxlib.h"
#include "test_support.h"

namespace {

using kvx::test::Reference;

struct Listed { int month, day, weekday, kind; };

std::vector<Listed> YearList(int year) {
    Holiday_CheckDay(year, 1, 1);
    std::vector<Listed> out;
    Listed e{};
    for (int i = 0; (e.kind = Holiday_GetHolidayData(i, &e.month, &e.day, &e.weekday)) != 0; ++i) out.push_back(e);
    return out;
}

TEST(HolidayReference, MatchesBothNpmPackagesFrom1948To2100) {
    const Reference ref("holidays_npm.txt", {"year", "month", "day", "mask"});
    std::set<std::tuple<int, int, int>> expected, listed;
    for (const auto &row : ref)
        expected.insert({static_cast<int>(row["year"]), static_cast<int>(row["month"]), static_cast<int>(row["day"])});
    for (int y = 1948; y <= 2100; ++y)
        for (const auto &e : YearList(y)) listed.insert({y, e.month, e.day});
    std::set<std::tuple<int, int, int>> allowed;  // each with its rule in the file
    for (const auto &d : kvx::test::ExpectedRows("holiday_differences.txt")) {
        const std::tuple<int, int, int> day(d[0], d[1], d[2]);
        allowed.insert(day);
        EXPECT_EQ(listed.count(day), d[3]) << d[0] << "-" << d[1] << "-" << d[2];
    }
    std::vector<std::tuple<int, int, int>> differ;
    std::set_symmetric_difference(expected.begin(), expected.end(), listed.begin(), listed.end(),
                                  std::back_inserter(differ));
    for (const auto &[y, m, d] : differ)
        EXPECT_TRUE(allowed.count({y, m, d})) << y << "-" << m << "-" << d << (listed.count({y, m, d}) ? " extra" : " missing");
    EXPECT_TRUE(differ.size() == allowed.size() && expected.size() > 2400u) << differ.size();
}

// The kind each rule gives (the reference compares dates only): substitutes from April 1973 and from 2007
// after the chain; between days; one-time holidays; the 2020 Olympic moves; equinoxes after 2150.
TEST(HolidayRules, KindOfEveryRule) {
    for (const auto &c : kvx::test::ExpectedRows("holiday_kinds.txt"))
        EXPECT_EQ(Holiday_CheckDay(c[0], c[1], c[2]), c[3]) << c[0] << "-" << c[1] << "-" << c[2];
    EXPECT_EQ(YearList(1947).size(), 0u);
    // Equinox ranges the npm comparison does not reach: 1899 (offset 19.8277), 2101-2150 (21.851, 24.2488).
    EXPECT_EQ(kvx::holiday::VernalEquinoxDay(1899) * 100 + kvx::holiday::AutumnalEquinoxDay(1899), 2123);
    EXPECT_EQ(kvx::holiday::VernalEquinoxDay(2150) * 100 + kvx::holiday::AutumnalEquinoxDay(2150), 2123);
}

// Rule order: a substitute follows its holiday, 23 February (or its substitute) comes last, 2020's Sports
// Day sits between September and November; a between day has its own date's weekday.
TEST(HolidayRules, ListingOrder) {
    std::vector<std::pair<int, int>> may;
    for (const auto &e : YearList(2009))
        if (e.month == 5) may.push_back({e.day, e.kind});
    EXPECT_EQ(may, (std::vector<std::pair<int, int>>{{3, 8}, {4, 15}, {5, 9}, {6, 1}}));
    for (const auto &e : YearList(1988)) EXPECT_EQ(e.weekday, kvx::holiday::Weekday(1988, e.month, e.day));
    for (const int year : {2020, 2024, 2100}) {
        const auto list = YearList(year);
        ASSERT_GE(list.size(), 2u);
        const auto &birthday = list.back().kind == 1 ? list[list.size() - 2] : list.back();
        EXPECT_EQ(birthday.month * 100 + birthday.day, 223) << year;
        EXPECT_EQ(birthday.kind, 14) << year;
    }
    const auto list = YearList(2020);
    const auto at = [&](int kind) { return std::ranges::find(list, kind, &Listed::kind) - list.begin(); };
    EXPECT_TRUE(at(7) < at(24) && at(24) < at(12));  // autumnal equinox, Sports Day, Culture Day
}

TEST(HolidayRules, IndexAndAbsurdYears) {
    YearList(2024);
    int m = -1, d = -1, w = -1;
    EXPECT_EQ(Holiday_GetHolidayData(-1, &m, &d, &w) + Holiday_GetHolidayData(25, &m, &d, &w), 0);
    EXPECT_EQ(m, -1);
    EXPECT_GT(Holiday_GetHolidayData(0, nullptr, nullptr, nullptr), 0);
    for (const int year : {INT32_MIN, -1, 0, 1000000, INT32_MAX}) {
        const auto list = YearList(year);
        EXPECT_LE(list.size(), 25u);
        for (const auto &e : list) EXPECT_TRUE(e.weekday >= 0 && e.weekday <= 6) << year;
    }
}

}  // namespace
