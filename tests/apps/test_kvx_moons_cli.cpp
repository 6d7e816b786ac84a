// kvx moons, kvx jupiter and the almanac's Galilean line: the offsets the
// library gives, the month's phenomena in local time, and usage errors.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>

#include "apps/kvx_runner.h"
#include "kvxlib.h"
#include "psat/jovian.h"

namespace {

using kvx::test::RunKvx;

double JsonNumber(const std::string &json, const std::string &key, size_t from = 0) {
    const size_t at = json.find("\"" + key + "\": ", from);
    EXPECT_NE(at, std::string::npos) << key;
    return at == std::string::npos ? NAN : std::strtod(json.c_str() + at + key.size() + 4, nullptr);
}

TEST(KvxMoonsCli, JupiterOffsetsAreTheLibrarys) {
    const auto r = RunKvx("moons jupiter --date 2024-01-25T12:00 --tz 0 --lat 0 --lon 0 --height 0 --json");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(r.err.empty()) << r.err;
    // Ganymede's offset east from the library's apparent places.
    ADate d{2024, 1, 25, 12, 0, 0.0, 0.0};
    const Observer obs{0, 0, 0};
    ATime t;
    SetATimeDate(&d, &obs, &t);
    BodyPos sun, jup, gan;
    CalcSun(&t, &sun);
    CalcPlanet(3, &t, &sun, &jup);
    ASSERT_EQ(CalcSatellite(&t, 3, 3, &jup, &gan), 1);
    const double east = std::remainder(gan.f[2] - jup.f[2], 360.0) * 3600.0 * std::cos(jup.f[3] * M_PI / 180.0);
    const size_t at = r.out.find("\"Ganymede\"");
    ASSERT_NE(at, std::string::npos) << r.out;
    EXPECT_NEAR(JsonNumber(r.out, "east_arcsec", at), east, 0.01);
    EXPECT_NE(r.out.find("\"Amalthea\""), std::string::npos);
    EXPECT_NE(r.out.find("\"strip\": \"E "), std::string::npos);
}

TEST(KvxMoonsCli, TextHasEveryMoonAndTheStrip) {
    const auto r = RunKvx("moons saturn --date 2024-06-01T00:00 --tz 0");
    ASSERT_EQ(r.status, 0) << r.err;
    for (const char *name : {"Mimas", "Enceladus", "Tethys", "Dione", "Rhea", "Titan", "Hyperion", "Iapetus"})
        EXPECT_TRUE(r.Has(name)) << name;
    const size_t e = r.out.find("E ");
    ASSERT_NE(e, std::string::npos);
    EXPECT_NE(r.out.find('O', e), std::string::npos);
    EXPECT_TRUE(RunKvx("moons pluto --date 2024-06-01T00:00").Has("Charon"));
}

TEST(KvxMoonsCli, JupiterMonthListsTheSearchInLocalTime) {
    const auto r = RunKvx("jupiter --month 2024-01 --tz 9 --json");
    ASSERT_EQ(r.status, 0) << r.err;
    const ADate first{2024, 1, 1, 0, 0, 0.0, 9.0}, next{2024, 2, 1, 0, 0, 0.0, 9.0};
    static kvx::psat::JovianEvent ev[2000];
    const int n = kvx::psat::FindJovianEvents(GetJd(&first), GetJd(&next), ev, 2000);
    ASSERT_GT(n, 100);  // Io alone: 17 revolutions, each with 4 to 8 contacts
    int listed = 0;
    for (size_t at = r.out.find("\"jd\""); at != std::string::npos; at = r.out.find("\"jd\"", at + 1)) ++listed;
    EXPECT_EQ(listed, n);
    EXPECT_NEAR(JsonNumber(r.out, "jd"), ev[0].jd, 1e-9);
    const auto text = RunKvx("jupiter --month 2024-01 --tz 9");
    ASSERT_EQ(text.status, 0);
    EXPECT_TRUE(text.Has("Io       transit begins")) << text.out.substr(0, 400);
    EXPECT_TRUE(text.Has("shadow transit ends"));
}

TEST(KvxMoonsCli, AlmanacShowsTheGalileans) {
    const auto r = RunKvx("--date 2024-01-25T21:00");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(r.Has("Jupiter's satellites")) << r.out;
    EXPECT_TRUE(RunKvx("--date 2024-01-25T21:00 --json").Has("\"galilean_satellites\""));
}

TEST(KvxMoonsCli, BadArgumentsExitTwo) {
    for (const char *args : {"moons", "moons venus", "moons jupiter --date 2024-13-01", "jupiter",
                             "jupiter --month 2024-13", "jupiter --month 2024", "jupiter --month x"}) {
        const auto r = RunKvx(args);
        EXPECT_EQ(r.status, 2) << args;
        EXPECT_GE(r.ErrLines(), 1) << args;
        EXPECT_TRUE(r.out.empty()) << args;
    }
}

}  // namespace
