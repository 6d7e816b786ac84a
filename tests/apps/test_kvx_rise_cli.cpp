// kvx rise, twilight, the almanac's rise/set lines and kvx sat: the library's times, the states spelled out,
// the satellite model by the period, one error line for a broken element file.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>

#include "apps/kvx_runner.h"
#include "asat/asat_test_util.h"
#include "kvxlib.h"

namespace {

using kvx::test::Count;
using kvx::test::KvxResult;
using kvx::test::LocalText;
using kvx::test::Ok;
using kvx::test::RunKvx;

// The first body of the first day of a kvx rise or twilight listing.
kvx::test::Json FirstDay(const KvxResult &r, bool body = true) {
    const kvx::test::Json day = r.json()["days"][0];
    return body ? day["bodies"][0] : day;
}

// Sunrise in Tokyo at midsummer, 04:25 to the minute, north of east (azimuth from the north); Titan by name.
TEST(KvxRiseCli, TimesAreTheLibrarys) {
    const KvxResult r = Ok("rise sun --date 2025-06-21 --lat 35.6895 --lon 139.6917 --height 40 --tz 9 --json",
                           {"\"time\": \"2025-06-21T04:24:"});
    const ADate day{2025, 6, 21, 0, 0, 0.0, 9.0}, day2{2025, 9, 21, 0, 0, 0.0, 9.0};
    const Observer obs{35.6895, 139.6917, 40.0};
    double rise = 0.0, set = 0.0;
    ASSERT_TRUE(GetSunRise(&day, &obs, &rise) && GetSunSet(&day, &obs, &set));
    const auto sun = FirstDay(r);
    EXPECT_NEAR(sun["rise"]["jd_ut"].num(), rise, 1e-9);
    EXPECT_NEAR(sun["set"]["jd_ut"].num(), set, 1e-9);
    EXPECT_TRUE(sun["rise"]["az_deg"].num() > 55.0 && sun["rise"]["az_deg"].num() < 65.0);
    const KvxResult titan = Ok("rise titan --date 2025-09-21 --json", {"\"body\": \"Titan\""});
    InitRiseSet(&day2, &obs);
    ASSERT_EQ(GetRiseSet(9.0, 606, nullptr, KVX_RS_RISE, &obs, 0.0, &rise), 1);
    EXPECT_NEAR(FirstDay(titan)["rise"]["jd_ut"].num(), rise, 1e-9);
}

TEST(KvxRiseCli, AYearHasOneRowADay) { EXPECT_EQ(Count(Ok("rise sun --year 2024").out, "\n2024-"), 366); }

TEST(KvxTwilightCli, TimesInOrderAndPolarDay) {
    const KvxResult r = Ok("twilight --date 2025-03-20 --lat 40 --lon 0 --tz 0 --json");
    const ADate day{2025, 3, 20, 0, 0, 0.0, 0.0};
    const Observer obs{40.0, 0.0, 40.0};
    double astro = 0.0;
    ASSERT_EQ(GetSunRiseDeg(&day, &obs, &astro, -18), 1);
    EXPECT_EQ(FirstDay(r, false)["astronomical_morning"].str(), LocalText(astro, 0.0, "%04d-%02d-%02dT%02d:%02d:%02d+00:00"));
    EXPECT_NEAR(FirstDay(r, false)["day_length_h"].num(), 12.1, 0.1);  // equinox day, upper limb and refraction
    const KvxResult polar = Ok("twilight --date 2025-01-01 --lat -75 --json", {"\"sunrise\": null"});
    EXPECT_EQ(FirstDay(polar, false)["day_length_h"].num(), 24.0);
}

// The element sets of the pass tests: the ISS (2008) and three others.
const std::string kSets = kvx::test::ReferencePath("asat_pass_sets.tle");

TEST(KvxSatCli, PassesInLocalTimeAsTheLibraryFindsThem) {
    const auto r = Ok("sat '" + kSets + "' --name iss --date 2008-09-21T00:00 --tz 9 --days 1 --lat 35.6895 --lon 139.6917 --height 40",
                      {"ISS (ZARYA)  #25544  period 91.6 min: near-Earth SGP4"});
    EXPECT_FALSE(r.Has("CBERS"));
    // The first rise, as ASatRiseSet gives it, in local time to the second.
    const Elm elm = kvx::test::ReadTleFile("asat_pass_sets.tle")[0];
    const double jd = CalcJd(2008, 9, 21) - 9.0 / 24.0;  // local midnight
    const Lla tokyo{35.6895, 139.6917, 40.0};
    ASatPassEvent ev[64];
    const int n = ASatRiseSet(jd, jd + 1.0, &tokyo, &elm, -90.0, ev, 64);
    ASSERT_GT(n, 3);
    std::string when = LocalText(ev[0].jd, 9.0, "%04d-%02d-%02d %02d:%02d:%02d +09:00  ");
    when += ev[0].kind == 1 ? "rise" : ev[0].kind == 2 ? "culmination" : "set";
    EXPECT_TRUE(r.Has(when)) << when << "\n" << r.out;
    EXPECT_EQ(Count(r.out, " +09:00  "), n);
}

// Exit status 2 and one line naming the fault (checksum, a letter in a number, a lone line 1, an unknown
// name); no days adds the usage line.
TEST(KvxSatCli, BrokenElementLinesAreNamedInOneLine) {
    const std::string sets = kvx::test::ReadFile(kSets);
    std::string checksum = sets, cols = sets;
    checksum[checksum.find("2927")] = '3';
    cols.replace(cols.find("51.6416"), 7, "51x6416");
    const struct {
        std::string file, args, error;
        int lines;  // the error, and a usage line for a bad option
    } cases[] = {{checksum, "", "line 2: checksum", 1},
                 {cols, "", "kvx: ", 1},
                 {sets.substr(sets.find("1 25544"), 70), "", "line 1: line 1 without a line 2", 1},
                 {sets, " --name hubble", "kvx: ", 1},
                 {sets, " --days 0", "kvx: ", 2}};
    int k = 0;
    for (const auto &c : cases) {
        const std::string file = kvx::test::TempPath("sat_bad" + std::to_string(k++) + ".tle");
        std::ofstream(file) << c.file;
        const auto r = RunKvx("sat '" + file + "'" + c.args);
        EXPECT_EQ(r.status, 2) << k;
        EXPECT_EQ(r.ErrLines(), c.lines) << k << ": " << r.err;
        EXPECT_NE(r.err.find(c.error), std::string::npos) << k << ": " << r.err;
    }
}

}  // namespace
