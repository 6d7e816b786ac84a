// kvx moon, kvx phases and the almanac's Moon: the values the library
// gives, the local-time listing of the phases, and usage errors.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <sstream>
#include <string>

#include "apps/kvx_runner.h"
#include "kvxlib.h"

namespace {

using kvx::test::RunKvx;

// The number after "key": in a JSON text.
double JsonNumber(const std::string &json, const std::string &key, size_t from = 0) {
    const size_t at = json.find("\"" + key + "\": ", from);
    EXPECT_NE(at, std::string::npos) << key;
    return at == std::string::npos ? NAN : std::strtod(json.c_str() + at + key.size() + 4, nullptr);
}

TEST(KvxMoonCli, PhasesOfAMonthInLocalTime) {
    const auto r = RunKvx("phases 2024 1 --tz 9");
    ASSERT_EQ(r.status, 0) << r.err;
    const ADate jan{2024, 1, 1, 0, 0, 0.0, 9.0};
    MoonPhase p[6];
    const int n = GetMoonPhases(&jan, p, 6);
    ASSERT_EQ(n, 4);
    std::istringstream in(r.out);
    std::string line;
    const char *names[4] = {"new Moon", "first quarter", "full Moon", "last quarter"};
    for (int i = 0; i < n; ++i) {
        ASSERT_TRUE(std::getline(in, line));
        ADate d{};
        JdToDate2(p[i].jd + 9.0 / 24.0 + 30.0 / 86400.0, &d);
        char expect[64];
        std::snprintf(expect, sizeof expect, "%04d-%02d-%02d %02d:%02d +09:00  %s", d.year, d.month, d.day, d.hour,
                      d.minute, names[p[i].phase]);
        EXPECT_EQ(line, expect);
    }
    EXPECT_FALSE(std::getline(in, line));
    // The new Moon of 2024 January 11, 11:57 UT.
    EXPECT_TRUE(r.Has("2024-01-11 20:5")) << r.out;
}

TEST(KvxMoonCli, PhasesOfAYearAsJson) {
    const auto r = RunKvx("phases 2024 --tz 0 --json");
    ASSERT_EQ(r.status, 0) << r.err;
    int expected = 0;
    for (int m = 1; m <= 12; ++m) {
        const ADate req{2024, m, 1, 0, 0, 0.0, 0.0};
        MoonPhase p[6];
        expected += GetMoonPhases(&req, p, 6);
    }
    int count = 0;
    for (size_t at = r.out.find("\"phase\": "); at != std::string::npos; at = r.out.find("\"phase\": ", at + 1)) ++count;
    EXPECT_EQ(count, expected);
    EXPECT_GT(count, 48);
}

TEST(KvxMoonCli, MoonJsonIsTheLibrarysMoon) {
    const auto r = RunKvx("moon --date 2024-01-15T20:00 --tz 9 --lat 35 --lon 135 --height 10 --json");
    ASSERT_EQ(r.status, 0) << r.err;
    const ADate date{2024, 1, 15, 20, 0, 0.0, 9.0};
    const Observer obs{35.0, 135.0, 10.0};
    ATime t;
    SetATimeDate(&date, &obs, &t);
    BodyPos sun{}, moon{};
    CalcSun(&t, &sun);
    CalcMoon(&t, &moon, &sun);
    EXPECT_NEAR(JsonNumber(r.out, "ra"), moon.f[2], 1e-9);
    EXPECT_NEAR(JsonNumber(r.out, "dec"), moon.f[3], 1e-9);
    EXPECT_NEAR(JsonNumber(r.out, "distance"), moon.f[6], 1e-6);
    EXPECT_NEAR(JsonNumber(r.out, "altitude"), moon.f[15], 1e-9);
    EXPECT_NEAR(JsonNumber(r.out, "illuminated"), moon.f[17], 1e-9);
    EXPECT_NEAR(JsonNumber(r.out, "librationLongitude"), moon.f[19], 1e-9);
    EXPECT_NEAR(JsonNumber(r.out, "age"), GetMoonAge(t.jde, &sun, &moon), 1e-9);
}

TEST(KvxMoonCli, AlmanacHasTheMoon) {
    auto r = RunKvx("--date 2024-01-15T20:00 --tz 9");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(r.Has("  Moon      RA ")) << r.out;
    EXPECT_TRUE(r.Has("illuminated")) << r.out;
    EXPECT_TRUE(r.Has("libration")) << r.out;
    r = RunKvx("--date 2024-01-15T20:00 --tz 9 --json");
    ASSERT_EQ(r.status, 0) << r.err;
    const size_t moon = r.out.find("\"moon\": {");
    ASSERT_NE(moon, std::string::npos) << r.out;
    EXPECT_GT(JsonNumber(r.out, "age", moon), 3.0);
    EXPECT_LT(JsonNumber(r.out, "age", moon), 5.0);
}

TEST(KvxMoonCli, BadArgumentsExitTwo) {
    for (const char *args : {"phases", "phases 2024 13", "phases 2024 0", "phases year", "phases 2024.5",
                             "phases 2024 1 2", "moon extra", "moon --date nonsense"}) {
        const auto r = RunKvx(args);
        EXPECT_EQ(r.status, 2) << args;
        EXPECT_EQ(r.ErrLines(), 2) << args << ": " << r.err;
        EXPECT_TRUE(r.out.empty()) << args;
    }
}

}  // namespace
