// kvx rise, kvx twilight and the almanac's rise/set lines: the times are the
// library's, the states are spelled out, and bad arguments exit with 2.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "apps/kvx_runner.h"
#include "kvxlib.h"

namespace {

using kvx::test::KvxResult;
using kvx::test::RunKvx;

// The number after the n-th (0-based) occurrence of "key": in a JSON text.
double JsonNumberAfter(const std::string &text, const std::string &key, int n = 0) {
    size_t at = 0;
    for (int k = 0; k <= n; ++k) {
        at = text.find("\"" + key + "\": ", k == 0 ? 0 : at + 1);
        if (at == std::string::npos) return NAN;
    }
    return std::stod(text.substr(at + key.size() + 4));
}

TEST(KvxRiseCli, SunTimesAreTheLibrarys) {
    const KvxResult r = RunKvx("rise sun --date 2025-06-21 --lat 35.6895 --lon 139.6917 --height 40 --tz 9 --json");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(r.err.empty()) << r.err;
    const ADate day{2025, 6, 21, 0, 0, 0.0, 9.0};
    const Observer obs{35.6895, 139.6917, 40.0};
    double rise = 0.0, set = 0.0;
    ASSERT_EQ(GetSunRise(&day, &obs, &rise), 1);
    ASSERT_EQ(GetSunSet(&day, &obs, &set), 1);
    EXPECT_NEAR(JsonNumberAfter(r.out, "jd_ut", 0), rise, 1e-9);
    EXPECT_NEAR(JsonNumberAfter(r.out, "jd_ut", 2), set, 1e-9);
    EXPECT_TRUE(r.Has("\"time\": \"2025-06-21T04:24:")) << r.out;  // sunrise in Tokyo, 04:25 to the minute
    const double az = JsonNumberAfter(r.out, "az_deg");
    EXPECT_GT(az, 55.0);  // north of east at midsummer, counted from the north
    EXPECT_LT(az, 65.0);
}

TEST(KvxRiseCli, StatesAreSpelledOut) {
    const KvxResult polaris = RunKvx("rise --star 37.95 89.26 --date 2025-01-01");
    ASSERT_EQ(polaris.status, 0);
    EXPECT_TRUE(polaris.Has("rise circumpolar")) << polaris.out;
    EXPECT_TRUE(polaris.Has("transit 20:")) << polaris.out;
    const KvxResult sirius = RunKvx("rise --star 101.29 -16.72 --lat 80 --date 2025-01-01");
    EXPECT_TRUE(sirius.Has("never rises")) << sirius.out;
    // The Moon at Svalbard: it rises on the 2nd and stays up from then on.
    const KvxResult moon = RunKvx("rise moon --lat 78 --lon 15 --tz 1 --date 2025-03-02 --days 2");
    EXPECT_TRUE(moon.Has("no event this day")) << moon.out;
    EXPECT_TRUE(moon.Has("2025-03-03  circumpolar")) << moon.out;
    const KvxResult json = RunKvx("rise --star 37.95 89.26 --date 2025-01-01 --json");
    EXPECT_TRUE(json.Has("\"state\": \"circumpolar\", \"rise\": null")) << json.out;
}

TEST(KvxRiseCli, SatelliteByName) {
    const KvxResult r = RunKvx("rise titan --date 2025-09-21 --json");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(r.Has("\"body\": \"Titan\"")) << r.out;
    const ADate day{2025, 9, 21, 0, 0, 0.0, 9.0};
    const Observer obs{35.6895, 139.6917, 40.0};
    InitRiseSet(&day, &obs);
    double rise = 0.0;
    ASSERT_EQ(GetRiseSet(9.0, 606, nullptr, KVX_RS_RISE, &obs, 0.0, &rise), 1);
    EXPECT_NEAR(JsonNumberAfter(r.out, "jd_ut"), rise, 1e-9);
}

TEST(KvxRiseCli, YearTableHasOneRowPerDay) {
    const KvxResult r = RunKvx("rise sun --year 2024");
    ASSERT_EQ(r.status, 0);
    int rows = 0;
    for (size_t at = r.out.find("\n2024-"); at != std::string::npos; at = r.out.find("\n2024-", at + 1)) ++rows;
    EXPECT_EQ(rows, 366);
}

TEST(KvxTwilightCli, TimesInOrderAndPolarDay) {
    const KvxResult r = RunKvx("twilight --date 2025-03-20 --lat 40 --lon 0 --tz 0 --json");
    ASSERT_EQ(r.status, 0);
    const ADate day{2025, 3, 20, 0, 0, 0.0, 0.0};
    const Observer obs{40.0, 0.0, 40.0};
    double astro = 0.0;
    ASSERT_EQ(GetSunRiseDeg(&day, &obs, &astro, -18), 1);
    ADate local{};
    JdToDate2(astro + 0.5 / 86400.0, &local);
    char want[128];
    std::snprintf(want, sizeof want, "\"astronomical_morning\": \"2025-03-20T%02d:%02d:%02d+00:00\"", local.hour,
                  local.minute, static_cast<int>(local.second));
    EXPECT_TRUE(r.Has(want)) << want << "\n" << r.out;
    EXPECT_NEAR(JsonNumberAfter(r.out, "day_length_h"), 12.1, 0.1);  // equinox day, upper limb and refraction
    const KvxResult polar = RunKvx("twilight --date 2025-01-01 --lat -75 --json");
    EXPECT_TRUE(polar.Has("\"sunrise\": null")) << polar.out;
    EXPECT_EQ(JsonNumberAfter(polar.out, "day_length_h"), 24.0);
}

TEST(KvxRiseCli, AlmanacHasRiseSetAndTwilight) {
    const KvxResult r = RunKvx("--date 2025-06-21T12:00");
    ASSERT_EQ(r.status, 0);
    EXPECT_TRUE(r.Has("Sun today rise 04:24:")) << r.out;
    EXPECT_TRUE(r.Has("astronomical  twilight")) << r.out;
    const KvxResult j = RunKvx("--date 2025-06-21T12:00 --json");
    EXPECT_TRUE(j.Has("\"moon_rise\": {")) << j.out;
    EXPECT_TRUE(j.Has("\"civil_twilight_morning\": \"2025-06-21T03:")) << j.out;
}

TEST(KvxRiseCli, UsageErrors) {
    for (const char *args : {"rise vulcan", "rise --days 0", "rise --days 2.5", "rise --star 10", "rise --star 10 95",
                             "rise --year 2024.5", "twilight extra", "rise --comet --q 1"}) {
        const KvxResult r = RunKvx(args);
        EXPECT_EQ(r.status, 2) << args;
        EXPECT_EQ(r.err.rfind("kvx: ", 0), 0u) << args << ": " << r.err;
    }
}

}  // namespace
