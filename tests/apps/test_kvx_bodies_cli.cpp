// kvx moon, phases, sun, planet, orbit and comet: the values the library
// gives, read from the JSON tree, and the shape of the text output.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>

#include "apps/kvx_runner.h"
#include "kvxlib.h"

namespace {

using kvx::test::Json;
using kvx::test::KvxResult;

Json JsonOf(const std::string &args) {
    const KvxResult r = kvx::test::RunKvx(args);
    EXPECT_EQ(r.status, 0) << args << ": " << r.err;
    return r.json();
}

TEST(KvxBodiesCli, MoonIsTheLibrarysMoon) {
    const Json j = JsonOf("moon --date 2024-01-15T20:00 --tz 9 --lat 35 --lon 135 --height 10 --json");
    const ADate date{2024, 1, 15, 20, 0, 0.0, 9.0};
    const Observer obs{35.0, 135.0, 10.0};
    ATime t;
    SetATimeDate(&date, &obs, &t);
    BodyPos sun{}, moon{};
    CalcSun(&t, &sun);
    CalcMoon(&t, &moon, &sun);
    EXPECT_NEAR(j["ra"].num(), moon.f[2], 1e-9);
    EXPECT_NEAR(j["dec"].num(), moon.f[3], 1e-9);
    EXPECT_NEAR(j["distance"].num(), moon.f[6], 1e-6);
    EXPECT_NEAR(j["altitude"].num(), moon.f[15], 1e-9);
    EXPECT_NEAR(j["illuminated"].num(), moon.f[17], 1e-9);
    EXPECT_NEAR(j["librationLongitude"].num(), moon.f[19], 1e-9);
    EXPECT_NEAR(j["age"].num(), GetMoonAge(t.jde, &sun, &moon), 1e-9);
}

// Phases in local time to the minute (rounded), and a year as JSON.
TEST(KvxBodiesCli, PhasesOfAMonthAndAYear) {
    const KvxResult r = kvx::test::RunKvx("phases 2024 1 --tz 9");
    ASSERT_EQ(r.status, 0) << r.err;
    const ADate jan{2024, 1, 1, 0, 0, 0.0, 9.0};
    MoonPhase p[6];
    const int n = GetMoonPhases(&jan, p, 6);
    std::istringstream in(r.out);
    const char *names[4] = {"new Moon", "first quarter", "full Moon", "last quarter"};
    for (int i = 0; i < n; ++i) {
        std::string line;
        ASSERT_TRUE(std::getline(in, line));
        ADate d{};
        JdToDate2(p[i].jd + 9.0 / 24.0 + 30.0 / 86400.0, &d);
        char expect[64];
        std::snprintf(expect, sizeof expect, "%04d-%02d-%02d %02d:%02d +09:00  %s", d.year, d.month, d.day, d.hour,
                      d.minute, names[p[i].phase]);
        EXPECT_EQ(line, expect);
    }
    EXPECT_TRUE(r.Has("2024-01-11 20:5")) << r.out;  // new Moon of January 11, 11:57 UT
    int expected = 0;
    for (int m = 1; m <= 12; ++m) {
        const ADate req{2024, m, 1, 0, 0, 0.0, 0.0};
        expected += GetMoonPhases(&req, p, 6);
    }
    EXPECT_EQ(JsonOf("phases 2024 --tz 0 --json")["phases"].size(), static_cast<std::size_t>(expected));
}

TEST(KvxBodiesCli, SunPlanetsAndOrbit) {
    // March equinox 2024: 03:06 UT on March 20.
    const Json sun = JsonOf("sun --date 2024-03-20T03:06 --tz 0 --json --lat 0 --lon 0 --height 0");
    EXPECT_LT(std::fabs(sun["dec"].num()), 0.002);
    EXPECT_LT(std::fabs(std::remainder(sun["ra"].num(), 360.0)), 0.005);
    EXPECT_NEAR(sun["distance"].num(), 0.9959, 0.0002);
    const Json all = JsonOf("planet all --date 2024-01-01 --json");
    ASSERT_EQ(all["bodies"].size(), 12u);
    EXPECT_EQ(all["bodies"][0]["name"].str(), "Mercury");
    EXPECT_EQ(all["bodies"][11]["name"].str(), "Haumea");
    // The listing says which magnitude it shows: Mallama & Hilton's up to
    // Neptune, the classic one beyond.
    EXPECT_EQ(all["bodies"][3]["magnitudeModel"].str(), "Mallama-Hilton 2018");
    EXPECT_EQ(all["bodies"][7]["magnitudeModel"].str(), "classic");
    const Json jup = JsonOf("physical jupiter --date 2024-01-01T00:00 --tz 0 --lat 0 --lon 0 --height 0 --json");
    const Observer o{0, 0, 0};
    ATime t;
    SetATimeJd(jup["jd"].num(), 0.0, &o, &t);
    BodyPos sunPos, p;
    CalcSun(&t, &sunPos);
    CalcPlanet(3, &t, &sunPos, &p);
    EXPECT_NEAR(jup["cmSystemII"].num(), p.f[KVX_BP_SPECIAL2 - 1], 1e-9);
    EXPECT_NEAR(jup["magnitude"].num(), p.f[KVX_BP_MAG_MH - 1], 1e-9);
    // The orbit's points run from perihelion; the third of five is aphelion.
    const Json orbit = JsonOf("orbit Mars --date 2000-01-01T12:00 --points 5 --json");
    ASSERT_EQ(orbit["points"].size(), 5u);
    OrbitElm el;
    GetPlanetOrbitElm(2, orbit["jde"].num(), &el);
    auto radius = [&](std::size_t i) {
        const Json &p = orbit["points"][i];
        return std::sqrt(p[0].num() * p[0].num() + p[1].num() * p[1].num() + p[2].num() * p[2].num());
    };
    EXPECT_NEAR(radius(0), el.a * (1 - el.e), 1e-6);
    EXPECT_NEAR(radius(2), el.a * (1 + el.e), 1e-6);
}

TEST(KvxBodiesCli, MpcLineMatchesTheLibrary) {
    const std::string line =
        "    CK23A030  2024 09 27.7405  0.391423  1.000093  308.4930   21.5601  139.1115  20240831   6.0  4.0  "
        "C/2023 A3 (Tsuchinshan-ATLAS)                            MPEC 2024-R22";
    const Json doc = JsonOf("comet --json --date 2024-10-13T09:00 --tz 0 --lat 0 --lon 0 --height 0 --line '" + line + "'");
    CometElements el{};
    el.kind = 'C';
    el.perihelionJd = CalcJd(2024, 9, 27.7405);
    el.q = 0.391423;
    el.e = 1.000093;
    el.peri = 308.4930;
    el.node = 21.5601;
    el.incl = 139.1115;
    el.equinox = 2000.0;
    el.h = 6.0;
    el.slope = 10.0;  // the MPC's 4.0 is 2.5 k
    const ADate d{2024, 10, 13, 9, 0, 0.0, 0.0};
    const Observer o{0, 0, 0};
    ATime t;
    SetATimeDate(&d, &o, &t);
    BodyPos sun, c;
    CalcSun(&t, &sun);
    ASSERT_EQ(CalcComet(&el, &t, &sun, &c), 1);
    const Json &j = doc["comet"];
    EXPECT_EQ(j["name"].str(), "C/2023 A3 (Tsuchinshan-ATLAS)");
    EXPECT_NEAR(j["ra"].num(), c.f[2], 1e-9);
    EXPECT_NEAR(j["dec"].num(), c.f[3], 1e-9);
    EXPECT_NEAR(j["magnitude"].num(), c.f[35], 1e-9);
}

}  // namespace
