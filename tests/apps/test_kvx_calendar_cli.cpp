// kvx calendar, kvx holidays and kvx terms: the month grid with lunisolar
// dates, the named lists, their JSON forms and usage errors.
#include <gtest/gtest.h>

#include <string>

#include "apps/kvx_runner.h"
#include "kvxlib.h"

namespace {

using kvx::test::RunKvx;

int Count(const std::string &text, const std::string &what) {
    int n = 0;
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++n;
    return n;
}

TEST(KvxCalendarCli, MonthGridMarksLeapMonthHolidaysTermsAndPhases) {
    const auto r = RunKvx("calendar 2025-07");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.err, "");
    // Leap month 6 of 2025 begins on 25 July (new moon 2025-07-25 04:11 JST).
    EXPECT_TRUE(r.Has("25 L6/1")) << r.out;
    EXPECT_TRUE(r.Has("24 6/30")) << r.out;
    EXPECT_TRUE(r.Has("2025-07-25 Fri  leap month 6 of 2025 begins")) << r.out;
    EXPECT_TRUE(r.Has("21*6/27")) << r.out;  // Marine Day
    EXPECT_TRUE(r.Has("2025-07-21 Mon  Marine Day (Umi no hi)")) << r.out;
    EXPECT_TRUE(r.Has("Major Heat (Taisho)")) << r.out;
    EXPECT_TRUE(r.Has("Summer doyo begins (Natsu no doyo iri)")) << r.out;
    EXPECT_EQ(Count(r.out, "new Moon") + Count(r.out, "full Moon") + Count(r.out, "quarter"), 4) << r.out;
    // 1 July 2025 is a Tuesday: two empty cells before it.
    EXPECT_TRUE(r.Has("\n                      1+6/7")) << r.out;
}

TEST(KvxCalendarCli, MonthAsJson) {
    const auto r = RunKvx("calendar 2024-02 --tz 9 --json");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(Count(r.out, "\"date\": \"2024-02-"), 29);
    // 10 February 2024 is the first day of old year 2024; 9 February is the
    // last of month 12 of 2023.
    EXPECT_TRUE(r.Has("\"date\": \"2024-02-10\", \"weekday\": \"Sat\", \"lunisolar\": {\"year\": 2024, \"month\": 1, "
                      "\"leap\": false, \"day\": 1}"))
        << r.out;
    EXPECT_TRUE(r.Has("{\"year\": 2023, \"month\": 12, \"leap\": false, \"day\": 30}")) << r.out;
    EXPECT_TRUE(r.Has("\"holiday\": {\"kind\": 14, \"name\": \"The Emperor's Birthday (Tenno tanjobi)\"}")) << r.out;
    EXPECT_TRUE(r.Has("{\"id\": 3, \"name\": \"Start of Spring (Risshun)\", \"longitude_deg\": 315, \"local_time\": "
                      "\"17:27\"}"))
        << r.out;
    EXPECT_TRUE(r.Has("\"holiday\": null")) << r.out;
    EXPECT_TRUE(r.Has("\"moon_phases\": [{\"phase\": ")) << r.out;
    EXPECT_EQ(r.out.back(), '\n');
    EXPECT_EQ(Count(r.out, "\n"), 1);
}

TEST(KvxCalendarCli, HolidaysInDateOrderWithNames) {
    const auto r = RunKvx("holidays 2020");
    ASSERT_EQ(r.status, 0) << r.err;
    // The library lists 23 February last; the command sorts by date.
    const size_t birthday = r.out.find("2020-02-23 Sun  The Emperor's Birthday (Tenno tanjobi)");
    const size_t substitute = r.out.find("2020-02-24 Mon  Substitute holiday (Furikae kyujitsu)");
    const size_t equinox = r.out.find("2020-03-20 Fri  Vernal Equinox Day (Shunbun no hi)");
    ASSERT_NE(birthday, std::string::npos) << r.out;
    EXPECT_LT(birthday, substitute);
    EXPECT_LT(substitute, equinox);
    EXPECT_TRUE(r.Has("2020-07-24 Fri  Sports Day (Supotsu no hi)")) << r.out;
    EXPECT_EQ(Count(r.out, "\n"), 18);

    const auto j = RunKvx("holidays 1959 --json");
    ASSERT_EQ(j.status, 0) << j.err;
    EXPECT_TRUE(j.Has("{\"date\": \"1959-04-10\", \"weekday\": \"Fri\", \"kind\": 19, \"name\": \"Wedding of Crown "
                      "Prince Akihito (Kotaishi Akihito shinno no kekkon no gi)\"}"))
        << j.out;
    const auto none = RunKvx("holidays 1900 --json");
    EXPECT_EQ(none.out, "{\"year\": 1900, \"holidays\": []}\n");
}

TEST(KvxCalendarCli, TermsWithLocalTimesAndCountedDays) {
    const auto r = RunKvx("terms 2024 --tz 9");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(Count(r.out, "\n"), 36);  // heading and 35 entries
    EXPECT_TRUE(r.Has("2024-02-04 Sun 17:27  315 deg  Start of Spring (Risshun)")) << r.out;
    EXPECT_TRUE(r.Has("2024-02-03 Sat                 Eve of spring (Setsubun)")) << r.out;
    EXPECT_TRUE(r.Has("2024-12-21 Sat 18:21  270 deg  Winter Solstice (Toji)")) << r.out;
    // In UTC-10 the solstice falls on the day before.
    const auto w = RunKvx("terms 2024 --tz -10 --json");
    ASSERT_EQ(w.status, 0) << w.err;
    EXPECT_TRUE(w.Has("{\"date\": \"2024-12-20\", \"id\": 24, \"name\": \"Winter Solstice (Toji)\", "
                      "\"longitude_deg\": 270, \"local_time\": \"23:21\"}"))
        << w.out;
    EXPECT_TRUE(w.Has("\"longitude_deg\": null, \"local_time\": null")) << w.out;
}

TEST(KvxCalendarCli, BadArgumentsExitWithStatusTwo) {
    for (const char *args : {"calendar", "calendar 2024-13", "calendar 2024", "calendar x-05", "holidays",
                             "holidays 2024.5", "terms 1e9", "terms 2024 2025"}) {
        const auto r = RunKvx(args);
        EXPECT_EQ(r.status, 2) << args;
        EXPECT_EQ(r.out, "") << args;
        EXPECT_EQ(r.err.rfind("kvx: ", 0), 0u) << args << ": " << r.err;
    }
}

}  // namespace
