// kvx moon, phases, sun, planet, orbit, comet, moons and jupiter: the library's values in the JSON tree and
// text, and the SVG views of comet tails and satellites (well-formed, with their content; no pixels).
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "apps/kvx_runner.h"
#include "kvxlib.h"
#include "psat/jovian.h"

namespace {

using kvx::test::Json;
using kvx::test::KvxResult;

using kvx::test::Ok;

Json JsonOf(const std::string &args) { return Ok(args).json(); }

// The library's place for the given instant and observer.
ATime TimeAt(const ADate &date, const Observer &obs) { ATime t; return SetATimeDate(&date, &obs, &t), t; }

TEST(KvxBodiesCli, MoonIsTheLibrarysMoon) {
    const Json j = JsonOf("moon --date 2024-01-15T20:00 --tz 9 --lat 35 --lon 135 --height 10 --json");
    ATime t = TimeAt({2024, 1, 15, 20, 0, 0.0, 9.0}, {35.0, 135.0, 10.0});
    BodyPos sun{}, moon{};
    CalcSun(&t, &sun);
    CalcMoon(&t, &moon, &sun);
    // Printed with more digits than these bounds: only a wrong slot fails.
    for (const auto &[key, value, bound] : {std::tuple{"ra_deg", moon.f[2], 1e-9}, {"dec_deg", moon.f[3], 1e-9},
                                            {"distance_km", moon.f[6], 1e-6},
                                            {"illuminated_fraction", moon.f[17], 1e-9},
                                            {"libration_longitude_deg", moon.f[19], 1e-9},
                                            {"age_days", GetMoonAge(t.jde, &sun, &moon), 1e-9}})
        EXPECT_NEAR(j[key].num(), value, bound) << key;
    EXPECT_NEAR(j["distance_au"].num() * 149597870.0, moon.f[6], 1e-6);
    EXPECT_TRUE(j["bright_limb_deg"].num() >= 0.0 && j["bright_limb_deg"].num() < 360.0);
    EXPECT_TRUE(j["refracted"].kind() == Json::Kind::kBool && !j["refracted"].boolean());
}

// The horizon is that of the printed apparent place (the library's rotation agrees to 0.05", the round trip
// of its aberration iteration). Refraction at 10 degrees: Saemundsson's formula within 0.15' (Bennett's and
// Saemundsson's agreement there), proportional to pressure.
TEST(KvxBodiesCli, HorizonOfThePrintedPlace) {
    const std::string at = " --date 2024-01-15T20:00 --tz 9 --lat 35 --lon 135 --height 10 --json";
    for (const char *body : {"moon", "sun", "planet mars"}) {
        const Json doc = JsonOf(std::string(body) + at);
        const Json &j = doc.Has("bodies") ? doc["bodies"][0] : doc;
        ATime t = TimeAt({2024, 1, 15, 20, 0, 0.0, 9.0}, {35.0, 135.0, 10.0});
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
    const double r = standard["altitude_deg"].num() - geometric;
    EXPECT_TRUE(standard["refracted"].boolean());
    EXPECT_NEAR(r * 60.0, 1.02 / std::tan((geometric + 10.3 / (geometric + 5.11)) * M_PI / 180), 0.15);
    EXPECT_NEAR(JsonOf(sunAt + " --refraction --pressure 505 --temperature 10")["altitude_deg"].num() - geometric, r / 2,
                1e-9);
}

// Phases in local time to the minute (rounded), and a year as JSON.
TEST(KvxBodiesCli, PhasesOfAMonthAndAYear) {
    const KvxResult r = Ok("phases 2024 1 --tz 9", {"2024-01-11 20:5"});  // new Moon of January 11, 11:57 UT
    const ADate jan{2024, 1, 1, 0, 0, 0.0, 9.0};
    MoonPhase p[6];
    const int n = GetMoonPhases(&jan, p, 6);
    EXPECT_EQ(r.out.rfind("Moon phases 2024-1, local time (--tz); accuracy: Delta T uncertain by about 3 s", 0), 0u);
    const char *names[4] = {"new Moon", "first quarter", "full Moon", "last quarter"};
    std::string expect;
    for (int i = 0; i < n; ++i)
        expect += kvx::test::LocalText(p[i].jd, 9.0, "%04d-%02d-%02d %02d:%02d +09:00  ", 60.0) + names[p[i].phase] + "\n";
    EXPECT_EQ(r.out.substr(r.out.find('\n') + 1, expect.size()), expect);
    int expected = 0;
    for (int m = 1; m <= 12; ++m) {
        const ADate req{2024, m, 1, 0, 0, 0.0, 0.0};
        expected += GetMoonPhases(&req, p, 6);
    }
    EXPECT_EQ(JsonOf("phases 2024 --tz 0 --json")["phases"].size(), static_cast<std::size_t>(expected));
}

// Far years, where daily sampling misses phases: every quarter, in order, 5.9-8.7 d apart (the true intervals,
// Meeus, Astronomical Algorithms, ch. 49, with margin), 49 or 50 a year.
TEST(KvxBodiesCli, PhasesOfFarYearsAreComplete) {
    for (const char *year : {"-4000", "5000", "8000"}) {
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
    EXPECT_LT(std::fabs(sun["dec_deg"].num()), 0.002);  // the Sun moves 0.0007 deg a minute in RA
    EXPECT_LT(std::fabs(std::remainder(sun["ra_deg"].num(), 360.0)), 0.005);
    EXPECT_NEAR(sun["distance_au"].num(), 0.9959, 0.0002);
    EXPECT_EQ(sun["source"].str(), "built-in theory (Newcomb)");
    const Json all = JsonOf("planet all --date 2024-01-01 --json");
    ASSERT_EQ(all["bodies"].size(), 12u);
    const Json &b = all["bodies"];  // magnitudes: Mallama & Hilton's up to Neptune, the classic one beyond
    EXPECT_EQ(b[0]["name"].str() + " " + b[11]["name"].str() + " " + b[3]["magnitude_model"].str() + " " +
                  b[7]["magnitude_model"].str(), "Mercury Haumea Mallama-Hilton 2018 classic");
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
    auto radius = [&](std::size_t i) { const Json &p = orbit["points"][i]; return std::hypot(p[0].num(), p[1].num(), p[2].num()); };
    EXPECT_NEAR(radius(0), el.a * (1 - el.e), 1e-6);
    EXPECT_NEAR(radius(2), el.a * (1 + el.e), 1e-6);
}

TEST(KvxBodiesCli, MpcLineMatchesTheLibrary) {
    const std::string line =
        "    CK23A030  2024 09 27.7405  0.391423  1.000093  308.4930   21.5601  139.1115  20240831   6.0  4.0  "
        "C/2023 A3 (Tsuchinshan-ATLAS)                            MPEC 2024-R22";
    const Json doc = JsonOf("comet --json --date 2024-10-13T09:00 --tz 0 --lat 0 --lon 0 --height 0 --line '" + line + "'");
    // The MPC's 4.0 is 2.5 k.
    CometElements el{};
    el.kind = 'C', el.perihelionJd = CalcJd(2024, 9, 27.7405), el.q = 0.391423, el.e = 1.000093;
    el.peri = 308.4930, el.node = 21.5601, el.incl = 139.1115, el.equinox = 2000.0, el.h = 6.0, el.slope = 10.0;
    ATime t = TimeAt({2024, 10, 13, 9, 0, 0.0, 0.0}, {0, 0, 0});
    BodyPos sun, c;
    CalcSun(&t, &sun);
    ASSERT_EQ(CalcComet(&el, &t, &sun, &c), 1);
    const Json &j = doc["comet"];
    EXPECT_EQ(j["name"].str(), "C/2023 A3 (Tsuchinshan-ATLAS)");
    for (const auto &[key, value] : {std::pair{"ra_deg", c.f[2]}, {"dec_deg", c.f[3]}, {"magnitude", c.f[35]}})
        EXPECT_NEAR(j[key].num(), value, 1e-9) << key;  // printed to more digits: only a wrong slot fails
}

// Ganymede's offset east of Jupiter from the library's apparent places.
TEST(KvxMoonsCli, JupiterOffsetsAreTheLibrarys) {
    const auto r = Ok("moons jupiter --date 2024-01-25T12:00 --tz 0 --lat 0 --lon 0 --height 0 --json",
                      {"\"Amalthea\"", "\"strip\": \"E "});
    ATime t = TimeAt({2024, 1, 25, 12, 0, 0.0, 0.0}, {0, 0, 0});
    BodyPos sun, jup, gan;
    CalcSun(&t, &sun);
    CalcPlanet(3, &t, &sun, &jup);
    ASSERT_EQ(CalcSatellite(&t, 3, 3, &jup, &gan), 1);
    const double east = std::remainder(gan.f[2] - jup.f[2], 360.0) * 3600.0 * std::cos(jup.f[3] * M_PI / 180.0);
    const Json moons = r.json()["moons"];
    std::size_t k = 0;
    while (k + 1 < moons.size() && moons[k]["name"].str() != "Ganymede") ++k;
    ASSERT_EQ(moons[k]["name"].str(), "Ganymede") << r.out;
    EXPECT_NEAR(moons[k]["east_arcsec"].num(), east, 0.01);  // flat-sky offset; projections differ < 1e-6" at 3'
}

TEST(KvxMoonsCli, JupiterMonthListsTheSearchInLocalTime) {
    const auto r = Ok("jupiter --month 2024-01 --tz 9 --json");
    const ADate first{2024, 1, 1, 0, 0, 0.0, 9.0}, next{2024, 2, 1, 0, 0, 0.0, 9.0};
    static kvx::psat::JovianEvent ev[2000];
    const int n = kvx::psat::FindJovianEvents(GetJd(&first), GetJd(&next), ev, 2000);
    ASSERT_GT(n, 100);  // Io alone: 17 revolutions, each with 4 to 8 contacts
    const Json events = r.json()["events"];
    ASSERT_EQ(events.size(), static_cast<std::size_t>(n));
    EXPECT_NEAR(events[0]["jd"].num(), ev[0].jd, 1e-9);
}

// A small XML check (one <svg> root, elements closed in order, attributes name="value", no '<' or bare '&' in
// text): the count of each element, "error" on the first fault.
std::map<std::string, int> XmlElements(const std::string &x) {
    static const std::regex tag(R"(<(/?)([a-z]+)((?:\s+[a-zA-Z0-9:-]+="[^"<&]*(?:&[a-z]+;[^"<&]*)*")*)\s*(/?)>([^<&]*(?:&[a-z]+;[^<&]*)*))");
    std::map<std::string, int> count;
    std::vector<std::string> open;
    size_t at = x.find("<svg");
    for (std::smatch m; at < x.size() && std::regex_search(x.begin() + at, x.end(), m, tag, std::regex_constants::match_continuous); at += m.length(0)) {
        if (m[1].length() && (open.empty() || open.back() != m[2])) return {{"error", 1}};
        if (m[1].length()) open.pop_back();
        else if (open.empty() && count.count("svg")) return {{"error", 1}};
        else if (++count[m[2]], !m[4].length()) open.push_back(m[2]);
    }
    if (at < x.size() || !open.empty()) count["error"] = 1;
    return count;
}

const char *const kNeowise =
    "comet --T 2459034.1784 --q 0.2946494 --e 0.9991780 --peri 37.27865 --node 61.01042 --incl 128.93750 "
    "--name 'C/2020 F3 & co' --date 2020-07-20T00:00 --tz 0";

// Three syndynes by four synchrones over one grid; the picture draws one curve for each, the ion tail and
// the sunward arrow.
TEST(KvxSvgCli, CometTailListingAndPicture) {
    const std::string svg = kvx::test::TempPath("tail.svg");
    const auto j = Ok(std::string(kNeowise) + " --tail --betas 0.1,0.5,1 --ages 2,5,10,15 --svg '" + svg + "' --json").json();
    ASSERT_TRUE(j["syndynes"].size() == 3u && j["synchrones"].size() == 4u && j["syndynes"][1]["points"].size() == 4u);
    EXPECT_EQ(j["syndynes"][2]["points"][3]["ra_deg"].num(), j["synchrones"][3]["points"][2]["ra_deg"].num());
    // The farthest grain (beta 1, 15 days) makes the tip.
    EXPECT_EQ(j["dust_tail"]["length_deg"].num(), j["syndynes"][2]["points"][3]["separation_deg"].num());
    const std::string x = kvx::test::ReadFile(svg);
    const auto n = XmlElements(x);
    ASSERT_EQ(n.count("error"), 0u) << x.substr(0, 400);
    EXPECT_EQ(n.at("polyline"), 3 + 4 + 2);
    EXPECT_NE(x.find("C/2020 F3 &amp; co"), std::string::npos);
    for (const char *label : {">N<", ">E<", ">beta 0.5<", ">10 d<", ">ion<", "east to the left"})
        EXPECT_NE(x.find(label), std::string::npos) << label;
    std::remove(svg.c_str());
}

// Saturn's disc and its eight satellites, each named.
TEST(KvxSvgCli, MoonsPicture) {
    const std::string svg = kvx::test::TempPath("moons.svg");
    Ok("moons saturn --date 2024-09-08T00:00 --tz 0 --svg '" + svg + "'");
    const std::string x = kvx::test::ReadFile(svg);
    ASSERT_EQ(XmlElements(x).count("error"), 0u) << x.substr(0, 400);
    EXPECT_EQ(XmlElements(x).at("circle"), 1 + 8);
    for (const char *name : {">Titan<", ">Iapetus<", ">Mimas<", "arcsec"}) EXPECT_NE(x.find(name), std::string::npos) << name;
    std::remove(svg.c_str());
}

}  // namespace
