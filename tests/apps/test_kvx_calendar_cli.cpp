// kvx calendar, holidays, terms, eclipses and events: the month grid, the named lists, their JSON forms.
#include <gtest/gtest.h>

#include <string>

#include "apps/kvx_runner.h"

namespace {

using kvx::test::Count;
using kvx::test::Ok;

// July 2025: leap month 6 begins on 25 July (new moon 04:11 JST), Marine
// Day on the 21st; 1 July is a Tuesday, two empty cells before it.
TEST(KvxCalendarCli, MonthGridMarksLeapMonthHolidaysTermsAndPhases) {
    const auto r = Ok("calendar 2025-07", {"25 L6/1", "24 6/30", "2025-07-25 Fri  leap month 6 of 2025 begins",
                                               "21*6/27", "2025-07-21 Mon  Marine Day (Umi no hi)",
                                               "Major Heat (Taisho)", "Summer doyo begins (Natsu no doyo iri)",
                                               "\n                      1+6/7"});
    EXPECT_EQ(Count(r.out, "new Moon") + Count(r.out, "full Moon") + Count(r.out, "quarter"), 4) << r.out;
}

// 10 February 2024 opens old year 2024, 9 February closes month 12 of 2023. One line of JSON.
TEST(KvxCalendarCli, MonthAsJson) {
    const auto r = Ok("calendar 2024-02 --tz 9 --json",
                          {"\"date\": \"2024-02-10\", \"weekday\": \"Sat\", \"lunisolar\": {\"year\": 2024, "
                           "\"month\": 1, \"leap\": false, \"day\": 1}",
                           "{\"year\": 2023, \"month\": 12, \"leap\": false, \"day\": 30}",
                           "\"holiday\": {\"kind\": 14, \"name\": \"The Emperor's Birthday (Tenno tanjobi)\"}",
                           "{\"id\": 3, \"name\": \"Start of Spring (Risshun)\", \"longitude_deg\": 315, "
                           "\"local_time\": \"17:27\"}",
                           "\"holiday\": null", "\"moon_phases\": [{\"phase\": "});
    EXPECT_EQ(Count(r.out, "\"date\": \"2024-02-"), 29);
    EXPECT_TRUE(r.out.back() == '\n' && Count(r.out, "\n") == 1);
}

TEST(KvxCalendarCli, HolidaysInDateOrderWithNames) {
    const auto r = Ok("holidays 2020", {"2020-07-24 Fri  Sports Day (Supotsu no hi)"});
    // The library lists 23 February last; the command sorts by date.
    const size_t birthday = r.out.find("2020-02-23 Sun  The Emperor's Birthday (Tenno tanjobi)");
    const size_t substitute = r.out.find("2020-02-24 Mon  Substitute holiday (Furikae kyujitsu)");
    const size_t equinox = r.out.find("2020-03-20 Fri  Vernal Equinox Day (Shunbun no hi)");
    EXPECT_TRUE(birthday < substitute && substitute < equinox && equinox != std::string::npos) << r.out;
    EXPECT_EQ(Count(r.out, "\n"), 18);
    Ok("holidays 1959 --json", {"{\"date\": \"1959-04-10\", \"weekday\": \"Fri\", \"kind\": 19, \"name\": "
                                    "\"Wedding of Crown Prince Akihito (Kotaishi Akihito shinno no kekkon no gi)\"}"});
    EXPECT_EQ(Ok("holidays 1900 --json", {}).out, "{\"year\": 1900, \"holidays\": []}\n");
}

// In UTC-10 the winter solstice falls on the day before.
TEST(KvxCalendarCli, TermsWithLocalTimesAndCountedDays) {
    const auto r = Ok("terms 2024 --tz 9", {"2024-02-04 Sun 17:27  315 deg  Start of Spring (Risshun)",
                                                "2024-02-03 Sat                 Eve of spring (Setsubun)",
                                                "2024-12-21 Sat 18:21  270 deg  Winter Solstice (Toji)"});
    EXPECT_EQ(Count(r.out, "\n"), 36);  // heading and 35 entries
    Ok("terms 2024 --tz -10 --json", {"{\"date\": \"2024-12-20\", \"id\": 24, \"name\": \"Winter Solstice (Toji)\", "
                                          "\"longitude_deg\": 270, \"local_time\": \"23:21\"}",
                                          "\"longitude_deg\": null, \"local_time\": null"});
}

// 2025: total lunar eclipses on March 14 and September 7 (UT); 2020: four
// penumbral ones, no umbral contacts. Venus in 2025: inferior conjunction
// on March 23, greatest elongations east (January 10) and west (June 1).
TEST(KvxCalendarCli, EclipsesAndEventsOfAYear) {
    Ok("eclipses 2025 --tz 0", {"2025-03-14  total eclipse", "2025-09-07  total eclipse", "U2 totality begins"});
    Ok("eclipses 2020 --json", {"\"type\": \"penumbral\"", "\"u1_jd\": null", "\"gamma_earth_radii\": "});
    Ok("events 2025 --body venus --tz 0", {"2025-03-23", "Venus inferior conjunction", "2025-01-10",
                                               "Venus greatest elongation east", "Venus greatest elongation west"});
    Ok("events 2025 --body venus --json",
           {"\"kind\": \"inferior_conjunction\", \"body\": \"Venus\", \"other\": \"Sun\""});
}

}  // namespace
