// The kvx command line: dates, the almanac, the time record, conversions
// and constellations on observable output (exit status, text, the JSON
// tree), and one table of bad arguments.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "apps/kvx_runner.h"

namespace {

using kvx::test::KvxResult;
using kvx::test::RunKvx;

KvxResult Ok(const std::string &args) {
    KvxResult r = RunKvx(args);
    EXPECT_EQ(r.status, 0) << args << ": " << r.err;
    return r;
}

TEST(KvxCli, DatesBothWays) {
    EXPECT_EQ(Ok("jd 2000-01-01T21:00 --tz 9 --json").json()["jd"].num(), 2451545.0);
    EXPECT_TRUE(Ok("jd -0044-03-15T12:00").Has("-0044-03-15T12:00:00.000 +00:00  JD 1705061.0"));
    const KvxResult r = Ok("date 2299160.5");
    EXPECT_TRUE(r.Has("1582-10-15T00:00:00.000")) << r.out;
    EXPECT_TRUE(r.Has("Friday")) << r.out;
    const auto d = Ok("date 2451545 --tz 9 --json").json();
    EXPECT_EQ(d["hour"].num(), 21.0);
    EXPECT_EQ(d["weekday"].str(), "Saturday");
}

// The almanac and kvx time carry the library's record: Delta T, sidereal
// time and obliquity, the whole record with matrices for kvx time.
TEST(KvxCli, AlmanacAndTimeRecord) {
    const auto a = Ok("--date 2024-06-01T21:30 --lat 35.6895 --lon 139.6917 --tz 9 --json").json();
    EXPECT_EQ(a["place"]["latitude"].num(), 35.6895);
    EXPECT_EQ(a["weekday"].str(), "Saturday");
    EXPECT_NEAR(a["lst"].num(), 217.67, 0.01);
    EXPECT_NEAR(a["eps"].num(), 23.436, 0.001);
    EXPECT_GT(a["bodies"].size(), 2u);
    EXPECT_GT(a["moon"]["age"].num(), 22.0);
    EXPECT_TRUE(Ok("--date 2024-06-01T21:30 --lat 35.6895 --lon 139.6917 --tz 9").Has("  LAST      14h30m"));
    const auto t = Ok("time 2000-01-01T21:00 --tz 9 --geocentre --json").json();
    EXPECT_EQ(t["jd"].num(), 2451545.0);
    EXPECT_EQ(t["obsHeight"].num(), -6378137.0);
    EXPECT_EQ(t["obsPos"][2].num(), 0.0);
    EXPECT_NEAR(t["lst"].num(), 280.457, 0.001);
    EXPECT_NEAR(t["eqToEcl"][4].num(), 0.91748, 1e-5);
    for (const char *key : {"eclToEq", "precToJ2000", "precFromJ2000", "nutMtx", "nutInvMtx"})
        EXPECT_EQ(t[key].size(), 9u) << key;
    EXPECT_NEAR(t["nutation"][0].num(), -0.00386, 1e-5);
    const KvxResult text = Ok("time 2024-06-01T21:30 --lat 35.6895 --lon 139.6917 --height 40 --tz 9");
    for (const char *line : {"local      2024-06-01T21:30:00.000 +09:00", "observer   35.689500° 139.691700° 40.0 m",
                             "jde        2460463.0216", "lst        217.6749"})
        EXPECT_TRUE(text.Has(line)) << line << "\n" << text.out;
}

TEST(KvxCli, ConvertByNumberOrName) {
    for (const char *args : {"convert --from 3 --to 10 266.40499 -28.93617 --date 2024-01-01 --json",
                             "convert --from j2000 --to galactic 266.40499 -28.93617 --date 2024-01-01 --json"}) {
        const auto j = Ok(args).json();
        EXPECT_EQ(j["to"].num(), 10.0);
        EXPECT_NEAR(std::remainder(j["out"][0].num(), 360.0), 0.0, 2e-4);  // the galactic centre
        EXPECT_NEAR(j["out"][1].num(), 0.0, 2e-4);
    }
    // The pole of date at the observer's latitude, due north; through the
    // J2000.0 hub it picks up the frame bias once (6.4e-6 degree).
    const auto pole = Ok("convert --from 5 --to 1 0 90 --date 2024-06-01T22:00 --lat 51.5 --lon -0.1 --tz 1 --json").json();
    EXPECT_NEAR(pole["out"][0].num(), 180.0, 1e-5);
    EXPECT_NEAR(pole["out"][1].num(), 51.5, 6.5e-6);
    const KvxResult text = Ok("convert --from 3 --to 7 90 23.4392794444 --date 2000-01-01T12:00 --tz 0");
    EXPECT_TRUE(text.Has("06h00m00.00s")) << text.out;
    EXPECT_TRUE(text.Has(" 90.000000  +0.000000")) << text.out;
}

// The CLI's own table of the 89 codes names each constellation once, as
// the table derived from PyEphem does (Serpens: one name, two regions).
TEST(KvxCli, ConstellationsAndTheirTable) {
    std::map<int, std::string> reference;
    std::ifstream in(kvx::test::ReferencePath("constellation_codes.csv"));
    for (std::string line; std::getline(in, line);)
        if (!line.empty() && line[0] != '#') {
            std::istringstream ls(line);
            int code;
            std::string pyephem, iau, name;
            char comma;
            ls >> code >> comma >> pyephem >> iau;
            std::getline(ls >> std::ws, name);
            reference[code] = iau.substr(0, iau.size() - 1) + " " + name;
        }
    ASSERT_EQ(reference.size(), 89u);
    std::istringstream listed(Ok("const --list").out);
    int n = 0;
    for (std::string line; std::getline(listed, line); ++n) {
        std::istringstream ls(line);
        int code;
        std::string abbreviation, name;
        ls >> code >> abbreviation;
        std::getline(ls >> std::ws, name);
        EXPECT_EQ(abbreviation + " " + name, reference[code]) << line;
    }
    EXPECT_EQ(n, 89);
    EXPECT_EQ(Ok("const 83.8 -5.4 --epoch B1875").out, "16 Ori Orion\n");
    EXPECT_EQ(Ok("const 5:35:17 -5:23:28 --epoch B1875 --json").json()["abbreviation"].str(), "Ori");
    EXPECT_EQ(Ok("const 37.95454 89.26411").out, "36 UMi Ursa Minor\n");  // Polaris, J2000.0 by default
    // -360 degrees reduces to 24h, outside every strip: no constellation.
    const KvxResult none = RunKvx("const -360 10 --epoch B1875");
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.out, "-1 (no constellation)\n");
}

// Every command's bad arguments: exit status 2, nothing on standard
// output, one error line on standard error (and at most a usage hint).
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
             "comet --line 'too short'", "comet --q 1", "eclipses", "eclipses 2024.5", "eclipses 9999",
             "events", "events 2024 --body sun", "events year"}) {
        const KvxResult r = RunKvx(bad);
        EXPECT_EQ(r.status, 2) << bad;
        EXPECT_TRUE(r.out.empty()) << bad;
        EXPECT_EQ(r.err.rfind("kvx: ", 0), 0u) << bad << ": " << r.err;
        EXPECT_TRUE(r.ErrLines() == 1 || r.ErrLines() == 2) << bad << ": " << r.err;
    }
}

}  // namespace
