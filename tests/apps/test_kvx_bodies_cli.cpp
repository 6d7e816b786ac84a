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
    EXPECT_NEAR(j["ra_deg"].num(), moon.f[2], 1e-9);
    EXPECT_NEAR(j["dec_deg"].num(), moon.f[3], 1e-9);
    EXPECT_NEAR(j["distance_km"].num(), moon.f[6], 1e-6);
    EXPECT_NEAR(j["distance_au"].num() * 149597870.0, moon.f[6], 1e-6);
    EXPECT_NEAR(j["illuminated_fraction"].num(), moon.f[17], 1e-9);
    EXPECT_NEAR(j["libration_longitude_deg"].num(), moon.f[19], 1e-9);
    EXPECT_NEAR(j["age_days"].num(), GetMoonAge(t.jde, &sun, &moon), 1e-9);
    EXPECT_GE(j["bright_limb_deg"].num(), 0.0);
    EXPECT_LT(j["bright_limb_deg"].num(), 360.0);
    EXPECT_EQ(j["refracted"].kind(), Json::Kind::kBool);
    EXPECT_FALSE(j["refracted"].boolean());
}

// The horizon is that of the printed apparent topocentric place: the
// library's own rotation of that place (true equator of date to the
// apparent horizon, azimuth from the south) agrees to 0.05", the round
// trip of its aberration iteration; the mean place of date was 5-72" off.
// Refraction at 10 degrees: 5.3' in the standard atmosphere (Bennett's
// and Saemundsson's formulas agree there within 0.15'), proportional to
// pressure.
TEST(KvxBodiesCli, HorizonOfThePrintedPlace) {
    const std::string at = " --date 2024-01-15T20:00 --tz 9 --lat 35 --lon 135 --height 10 --json";
    for (const char *body : {"moon", "sun", "planet mars"}) {
        const Json doc = JsonOf(std::string(body) + at);
        const Json &j = doc.Has("bodies") ? doc["bodies"][0] : doc;
        const ADate date{2024, 1, 15, 20, 0, 0.0, 9.0};
        const Observer obs{35.0, 135.0, 10.0};
        ATime t;
        SetATimeDate(&date, &obs, &t);
        const Ad apparent{j["ra_deg"].num(), j["dec_deg"].num()};
        Ad h{};
        Coordinates(&t, KVX_COORD_APPARENT, &apparent, KVX_COORD_HORIZONTAL_APP, &h);
        EXPECT_NEAR(j["altitude_deg"].num(), h.d, 0.05 / 3600) << body;
        EXPECT_NEAR(std::remainder(j["azimuth_deg"].num() - h.a - 180.0, 360.0), 0.0, 0.05 / 3600) << body;
    }
    // The Sun at about 10 degrees true altitude: Tokyo, 2024-06-01 05:25 +09:00.
    const std::string sunAt = "sun --date 2024-06-01T05:25 --tz 9 --lat 35.6895 --lon 139.6917 --json";
    const double geometric = JsonOf(sunAt)["altitude_deg"].num();
    ASSERT_NEAR(geometric, 10.0, 1.5);
    const Json standard = JsonOf(sunAt + " --refraction");
    EXPECT_TRUE(standard["refracted"].boolean());
    EXPECT_NEAR((standard["altitude_deg"].num() - geometric) * 60.0, 1.02 / std::tan((geometric + 10.3 / (geometric + 5.11)) * M_PI / 180), 0.15);
    const double half = JsonOf(sunAt + " --refraction --pressure 505 --temperature 10")["altitude_deg"].num() - geometric;
    EXPECT_NEAR(half, (standard["altitude_deg"].num() - geometric) / 2, 1e-9);
}

// Phases in local time to the minute (rounded), and a year as JSON.
TEST(KvxBodiesCli, PhasesOfAMonthAndAYear) {
    const KvxResult r = kvx::test::RunKvx("phases 2024 1 --tz 9");
    ASSERT_EQ(r.status, 0) << r.err;
    const ADate jan{2024, 1, 1, 0, 0, 0.0, 9.0};
    MoonPhase p[6];
    const int n = GetMoonPhases(&jan, p, 6);
    std::istringstream in(r.out);
    std::string header;
    std::getline(in, header);
    EXPECT_EQ(header.rfind("Moon phases 2024-1, local time (--tz); accuracy: Delta T uncertain by about 3 s", 0), 0u);
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

// Far years, where the library's daily sampling misses phases: every
// quarter listed, in order, 6.0 to 8.6 days apart (the range of the true
// quarter intervals, Meeus, Astronomical Algorithms, ch. 49: 5.9-8.7 d
// with margin), 49 or 50 in a year (365.25 / 7.38 d), and an accuracy
// statement that names the uncertainty of Delta T.
TEST(KvxBodiesCli, PhasesOfFarYearsAreComplete) {
    for (const char *year : {"-4000", "5000", "8000"}) {
        const KvxResult text = kvx::test::RunKvx(std::string("phases ") + year + " --tz 0");
        EXPECT_TRUE(text.Has("accuracy: Delta T uncertain by about ")) << text.out;
        const Json j = JsonOf(std::string("phases ") + year + " --tz 0 --json");
        const Json &p = j["phases"];
        EXPECT_TRUE(p.size() == 49u || p.size() == 50u) << year << ": " << p.size();
        for (std::size_t i = 1; i < p.size(); ++i) {
            EXPECT_EQ(static_cast<int>(p[i]["phase"].num()), (static_cast<int>(p[i - 1]["phase"].num()) + 1) % 4) << year;
            const double gap = p[i]["jd"].num() - p[i - 1]["jd"].num();
            EXPECT_TRUE(gap > 5.9 && gap < 8.7) << year << " #" << i << ": " << gap;
        }
    }
}

TEST(KvxBodiesCli, SunPlanetsAndOrbit) {
    // March equinox 2024: 03:06 UT on March 20.
    const Json sun = JsonOf("sun --date 2024-03-20T03:06 --tz 0 --json --lat 0 --lon 0 --height 0");
    EXPECT_LT(std::fabs(sun["dec_deg"].num()), 0.002);
    EXPECT_LT(std::fabs(std::remainder(sun["ra_deg"].num(), 360.0)), 0.005);
    EXPECT_NEAR(sun["distance_au"].num(), 0.9959, 0.0002);
    EXPECT_EQ(sun["source"].str(), "built-in theory (Newcomb)");
    const Json all = JsonOf("planet all --date 2024-01-01 --json");
    ASSERT_EQ(all["bodies"].size(), 12u);
    for (std::size_t i = 0; i < 12; ++i)  // the same keys, the same units, for every body
        for (const char *key : {"ra_deg", "dec_deg", "altitude_deg", "azimuth_deg", "distance_au", "distance_km"})
            EXPECT_TRUE(all["bodies"][i].Has(key)) << i << " " << key;
    EXPECT_EQ(all["bodies"][0]["name"].str(), "Mercury");
    EXPECT_EQ(all["bodies"][11]["name"].str(), "Haumea");
    // The listing says which magnitude it shows: Mallama & Hilton's up to
    // Neptune, the classic one beyond.
    EXPECT_EQ(all["bodies"][3]["magnitude_model"].str(), "Mallama-Hilton 2018");
    EXPECT_EQ(all["bodies"][7]["magnitude_model"].str(), "classic");
    const Json jup = JsonOf("physical jupiter --date 2024-01-01T00:00 --tz 0 --lat 0 --lon 0 --height 0 --json");
    const Observer o{0, 0, 0};
    ATime t;
    SetATimeJd(jup["jd"].num(), 0.0, &o, &t);
    BodyPos sunPos, p;
    CalcSun(&t, &sunPos);
    CalcPlanet(3, &t, &sunPos, &p);
    EXPECT_NEAR(jup["cm_system2_deg"].num(), p.f[KVX_BP_SPECIAL2 - 1], 1e-9);
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
    EXPECT_NEAR(j["ra_deg"].num(), c.f[2], 1e-9);
    EXPECT_NEAR(j["dec_deg"].num(), c.f[3], 1e-9);
    EXPECT_NEAR(j["magnitude"].num(), c.f[35], 1e-9);
}

}  // namespace
