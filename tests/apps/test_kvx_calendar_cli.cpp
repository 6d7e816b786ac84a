// kvx calendar, holidays and terms: the month grid's phases, the counts of days and lines of the listings
// (their texts are in tests/data/expected/kvx_outputs.txt).
#include <gtest/gtest.h>

#include <string>

#include "apps/kvx_runner.h"

namespace {

using kvx::test::Count;
using kvx::test::Ok;

TEST(KvxCalendarCli, MonthGridAndJsonCounts) {
    const auto r = Ok("calendar 2025-07");
    EXPECT_EQ(Count(r.out, "new Moon") + Count(r.out, "full Moon") + Count(r.out, "quarter"), 4) << r.out;
    const auto j = Ok("calendar 2024-02 --tz 9 --json").out;  // one line of JSON
    EXPECT_EQ(Count(j, "\"date\": \"2024-02-"), 29);
    EXPECT_TRUE(j.back() == '\n' && Count(j, "\n") == 1);
}

TEST(KvxCalendarCli, HolidaysInDateOrderAndTermsCounted) {
    const auto r = Ok("holidays 2020");
    // The library lists 23 February last; the command sorts by date.
    const size_t birthday = r.out.find("2020-02-23 Sun  The Emperor's Birthday (Tenno tanjobi)");
    const size_t substitute = r.out.find("2020-02-24 Mon  Substitute holiday (Furikae kyujitsu)");
    const size_t equinox = r.out.find("2020-03-20 Fri  Vernal Equinox Day (Shunbun no hi)");
    EXPECT_TRUE(birthday < substitute && substitute < equinox && equinox != std::string::npos) << r.out;
    EXPECT_EQ(Count(r.out, "\n"), 18);
    EXPECT_EQ(Ok("holidays 1900 --json").out, "{\"year\": 1900, \"holidays\": []}\n");
    EXPECT_EQ(Count(Ok("terms 2024 --tz 9").out, "\n"), 36);  // heading and 35 entries
}

}  // namespace
