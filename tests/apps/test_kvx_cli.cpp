// The kvx command line on observable output: dates, the almanac, the time record, conversions,
// constellations, and one table of bad arguments.
#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "apps/kvx_runner.h"

namespace {

using kvx::test::KvxResult;
using kvx::test::Ok;
using kvx::test::RunKvx;

// The almanac and kvx time carry the library's record: sidereal time, obliquity, matrices, nutation.
TEST(KvxCli, AlmanacAndTimeRecord) {
    const auto a = Ok("--date 2024-06-01T21:30 --lat 35.6895 --lon 139.6917 --tz 9 --json").json();
    EXPECT_EQ(a["local"].str() + " " + a["weekday"].str(), "2024-06-01T21:30:00+09:00 Saturday");
    EXPECT_TRUE(a["bodies"].size() > 2u && a["moon"]["age_days"].num() > 22.0);
    const auto t = Ok("time 2000-01-01T21:00 --tz 9 --geocentre --json").json();
    // Printed values to their last digit (0 for exact ones).
    for (const auto &[value, want, bound] :
         {std::tuple{a["place"]["latitude_deg"].num(), 35.6895, 0.0}, {a["lst"].num(), 217.67, 0.01},
          {a["eps"].num(), 23.436, 0.001}, {t["jd"].num(), 2451545.0, 0.0}, {t["obsHeight"].num(), -6378137.0, 0.0},
          {t["obsPos"][2].num(), 0.0, 0.0}, {t["lst"].num(), 280.457, 0.001}, {t["eqToEcl"][4].num(), 0.91748, 1e-5},
          {t["nutation"][0].num(), -0.00386, 1e-5}})
        EXPECT_NEAR(value, want, bound) << want;
}

TEST(KvxCli, ConvertByNumberOrName) {
    for (const char *args : {"convert --from 3 --to 10 266.40499 -28.93617 --date 2024-01-01 --json",
                             "convert --from j2000 --to galactic 266.40499 -28.93617 --date 2024-01-01 --json"}) {
        const auto j = Ok(args).json();
        EXPECT_EQ(j["to"].num(), 10.0);
        EXPECT_NEAR(std::remainder(j["out_deg"][0].num(), 360.0), 0.0, 2e-4);  // the galactic centre
        EXPECT_NEAR(j["out_deg"][1].num(), 0.0, 2e-4);
    }
    // The pole of date at the observer's latitude, due north; the J2000.0 hub adds the frame bias (6.4e-6 deg).
    const auto pole = Ok("convert --from 5 --to 1 0 90 --date 2024-06-01T22:00 --lat 51.5 --lon -0.1 --tz 1 --json").json();
    EXPECT_NEAR(std::remainder(pole["out_deg"][0].num(), 360.0), 0.0, 1e-5);
    EXPECT_NEAR(pole["out_deg"][1].num(), 51.5, 6.5e-6);
    EXPECT_TRUE(pole["azimuth_from_north"].boolean());
    // Due east on the horizon goes back to azimuth 90 from the north.
    const auto east = Ok("convert --from 1 --to 3 90 0 --date 2024-06-01T22:00 --tz 1 --json").json();
    const auto back = Ok("convert --from 3 --to 1 " + std::to_string(east["out_deg"][0].num()) + " " +
                         std::to_string(east["out_deg"][1].num()) + " --date 2024-06-01T22:00 --tz 1 --json").json();
    EXPECT_NEAR(back["out_deg"][0].num(), 90.0, 1e-4);  // the printed 6 decimals of the J2000.0 place
}

// The CLI's table of the 89 codes names each constellation once, as PyEphem's does (Serpens: two regions).
TEST(KvxCli, ConstellationsAndTheirTable) {
    std::map<int, std::string> reference;
    std::ifstream in(kvx::test::ReferencePath("constellation_codes.csv"));
    int code;
    std::string pyephem, iau, name, line;
    char comma;
    for (; std::getline(in, line);)
        if (std::istringstream ls(line); !line.empty() && line[0] != '#' && ls >> code >> comma >> pyephem >> iau &&
                                         std::getline(ls >> std::ws, name))
            reference[code] = iau.substr(0, iau.size() - 1) + " " + name;
    ASSERT_EQ(reference.size(), 89u);
    std::istringstream listed(Ok("const --list").out);
    int n = 0;
    for (; std::getline(listed, line); ++n) {
        std::istringstream ls(line);
        ls >> code >> iau;
        std::getline(ls >> std::ws, name);
        EXPECT_EQ(iau + " " + name, reference[code]) << line;
    }
    EXPECT_EQ(n, 89);
    EXPECT_EQ(Ok("const 83.8 -5.4 --epoch B1875").out, "16 Ori Orion\n");
    EXPECT_EQ(Ok("const 5:35:17 -5:23:28 --epoch B1875 --json").json()["abbreviation"].str(), "Ori");
    EXPECT_EQ(Ok("const 37.95454 89.26411").out, "36 UMi Ursa Minor\n");  // Polaris, J2000.0 by default
    const KvxResult none = RunKvx("const -360 10 --epoch B1875");  // 24h: outside every strip
    EXPECT_EQ(std::to_string(none.status) + " " + none.out, "1 -1 (no constellation)\n");
}

// Each invocation of tests/data/expected/kvx_outputs.txt is a healthy run whose output holds the texts listed
// under it.
TEST(KvxCli, OutputsHoldTheExpectedTexts) {
    std::vector<std::tuple<std::string, std::string, std::vector<std::string>>> cases;  // environment, arguments, texts
    std::ifstream in(kvx::test::TestDataPath("expected/kvx_outputs.txt"));
    for (std::string line; std::getline(in, line);) {
        for (std::size_t at; (at = line.find("\\n")) != std::string::npos;) line.replace(at, 2, "\n");
        if (line.rfind("$ ", 0) == 0) {
            const std::size_t env = std::isupper(line[2]) ? line.find(' ', 2) : 1;  // NAME=value before the arguments
            std::string args = line.substr(env + 1);
            if (const std::size_t at = args.find("{reference}"); at != std::string::npos) args.replace(at, 11, KVX_REFERENCE_DIR);
            cases.emplace_back(line.substr(2, env - 1), args, std::vector<std::string>{});
        } else if (!line.empty() && line[0] != '#' && !cases.empty()) {
            std::get<2>(cases.back()).push_back(line);
        }
    }
    ASSERT_EQ(cases.size(), 43u);
    for (const auto &[env, args, texts] : cases) {
        const KvxResult r = Ok(args, {}, env);
        for (const auto &text : texts) EXPECT_TRUE(r.Has(text)) << args << ": " << text << "\n" << r.out;
    }
}

// Every command's bad arguments: exit status 2, nothing on stdout, one error line (and at most a usage hint).
TEST(KvxCli, BadArgumentsExitTwoWithOneErrorLine) {
    for (const char *bad : {
             "frobnicate", "--lat 100", "--tz", "jd", "jd 2001-02-29", "jd 2000-13-01", "jd 2000-01-01 --tz x",
             "date nonsense", "date 1 2", "time", "time 2023-02-29", "time 2024-01-01 2024-01-02",
             "time 2024-01-01 --lat 91", "convert 10 20", "convert --from 3 --to 11 10 20",
             "convert --from 3 --to eq 10 20", "convert --from 3 --to 5 ten 20", "convert --from 3 --to 5 10 95",
             "convert --from 3 --to 5 10", "convert --from 3 --to 5 10 20 --date 2024-02-30", "const", "const 10",
             "const 10 95", "const x 10", "const 1:99 10", "const 10 20 --epoch B1950", "const --list 10", "phases",
             "phases 2024 13", "phases year", "phases 2024.5", "phases 2024 1 2", "moon extra",
             "moon --date nonsense", "orbit", "orbit vulcan", "orbit mars --points 1", "planet", "planet vulcan",
             "physical", "physical ceres", "physical mars venus", "physical mars --date 2024-02-30",
             "comet --line 'too short'", "comet --q 1",
             "comet --T 2459034.18 --q 0.29 --e 0.999 --peri 37 --node 61 --incl 129 --tail --betas 0.1,1.5",
             "comet --T 2459034.18 --q 0.29 --e 0.999 --peri 37 --node 61 --incl 129 --tail --ages 5,x",
             "comet --T 2459034.18 --q 0.29 --e 0.999 --peri 37 --node 61 --incl 129 --tail --wind -5",
             "comet --T 2459034.18 --q 0.29 --e 0.999 --peri 37 --node 61 --incl 129 --svg t.svg",
             "moons saturn --svg /nonexistent-dir/view.svg",
             "--lon 400", "--height -100000", "sun --tz 15",
             "jd 99999-01-01", "jd -99999-01-01", "jd 99999999999-01-01", "jd -2147483648-01-01", "phases 99999",
             "terms -99999", "date -5", "date 1e9", "jd 2024-01-01T12:00+25:00", "jd 2024-01-01T24:00",
             "sun --pressure 900", "sun --refraction --pressure -5", "moon --tz +9:0",
             "eclipses", "eclipses 2024.5", "eclipses 9999", "events", "events 2024 --body sun", "events year",
             "calendar", "calendar 2024-13", "calendar 2024", "calendar x-05", "holidays", "holidays 2024.5",
             "terms 1e9", "terms 2024 2025", "moons", "moons venus", "moons jupiter --date 2024-13-01", "jupiter",
             "jupiter --month 2024-13", "jupiter --month 2024", "jupiter --month x", "rise vulcan", "rise --days 0",
             "rise --days 2.5", "rise --star 10", "rise --star 10 95", "rise --year 2024.5", "twilight extra",
             "rise --comet --q 1"}) {
        const KvxResult r = RunKvx(bad);
        EXPECT_EQ(r.status, 2) << bad;
        EXPECT_TRUE(r.out.empty()) << bad;
        EXPECT_EQ(r.err.rfind("kvx: ", 0), 0u) << bad << ": " << r.err;
        EXPECT_TRUE(r.ErrLines() == 1 || r.ErrLines() == 2) << bad << ": " << r.err;
    }
}

// A bad value names where it came from; the environment too.
TEST(KvxCli, BadValuesNameTheirSource) {
    for (const auto &[env, args, source] : std::vector<std::tuple<std::string, std::string, std::string>>{
             {"KVX_LAT=200", "sun", "kvx: KVX_LAT must lie within -90..90"},
             {"KVX_LAT=200", "sun --lat 10 --lon 500", "kvx: --lon must lie within -180..180"},
             {"KVX_TZ=x", "jd 2024-01-01", "kvx: KVX_TZ: not a number"},
             {"", "jd 99999-01-01", "kvx: year of '99999-01-01' outside the supported years -4712..9999"}}) {
        const KvxResult r = RunKvx(args, env);
        EXPECT_TRUE(r.status == 2 && r.err.rfind(source, 0) == 0u) << env << " " << args << ": " << r.err;
    }
}

// Every command has --help (usage, units, environment, exit status); --version answers anywhere.
TEST(KvxCli, HelpAndVersionEverywhere) {
    for (const char *name : {"almanac", "jd", "date", "time", "convert", "const", "sun", "planet", "comet", "moon",
                             "phases", "rise", "twilight", "moons", "jupiter", "orbit", "data", "meteors", "calendar",
                             "holidays", "terms", "sat"}) {
        const KvxResult r = Ok(std::string(name) + " --help");
        EXPECT_EQ(r.out.rfind(std::string("usage: kvx "), 0), 0u) << name;
        for (const char *part : {"KVX_TZ", "exit status:", "degrees", "metres"}) EXPECT_TRUE(r.Has(part)) << name;
    }
    for (const char *args : {"--version", "planet --version"}) EXPECT_EQ(Ok(args).out.rfind("kvx 6.", 0), 0u) << args;
}

// sun, moon and the almanac follow the one zone rule (the jd cases of kvx_outputs.txt) and print it first.
TEST(KvxCli, OneTimeZoneRule) {
    for (const char *cmd : {"sun", "moon", "planet mars", "", "moons jupiter", "convert --from 3 --to 1 0 0",
                            "comet --T 2460580.2405 --q 0.39 --e 0.99 --peri 308 --node 21 --incl 139"}) {
        const KvxResult r = Ok(std::string(cmd) + " --date 2024-07-01T01:00", {}, "TZ=Europe/London");
        EXPECT_EQ(r.out.rfind("2024-07-01T01:00:00+01:00 (system (Europe/London))  JD 2460492.500000 UT\n", 0), 0u)
            << cmd << "\n" << r.out;
    }
}

// The library's start-up lines are captured: shown with --verbose and by kvx data, else nowhere.
TEST(KvxCli, StartupLinesOnlyWhenAskedFor) {
    const KvxResult verbose = RunKvx("jd 2024-01-01 --tz 0 --verbose");
    EXPECT_TRUE(verbose.status == 0 && verbose.err.find("kvxlib: open ") != std::string::npos) << verbose.err;
    Ok("data", {"Start-up messages of the library:\n  open "});
    EXPECT_EQ(RunKvx("jd 2024-13-01").ErrLines(), 2);  // the error and the usage line only
}

}  // namespace
