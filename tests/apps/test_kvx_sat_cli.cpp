// kvx sat: passes in local time, the state now, the model chosen by the
// period, and one-line errors for broken element files.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>

#include "apps/kvx_runner.h"
#include "kvxlib.h"

namespace {

using kvx::test::RunKvx;

const char *kIss1 = "1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927";
const char *kIss2 = "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537";
const char *kGeo1 = "1 24208U 96044A   06177.04061740 -.00000094  00000-0  10000-3 0  1600";
const char *kGeo2 = "2 24208   3.8536  80.0121 0026640 311.0977  48.3000  1.00778054 36119";

std::string WriteFile(const std::string &name, const std::string &text) {
    const std::string path = ::testing::TempDir() + name;
    std::ofstream(path) << text;
    return path;
}

std::string Sets() {
    return std::string("ISS (ZARYA)\n") + kIss1 + "\n" + kIss2 + "\nITALSAT 2\n" + kGeo1 + "\n" + kGeo2 + "\n";
}

TEST(KvxSatCli, PassesInLocalTimeAsTheLibraryFindsThem) {
    const std::string file = WriteFile("kvx_sat_sets.tle", Sets());
    const auto r = RunKvx("sat '" + file + "' --name iss --date 2008-09-21T00:00 --tz 9 --days 1 "
                          "--lat 35.6895 --lon 139.6917 --height 40");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_TRUE(r.Has("ISS (ZARYA)  #25544  period 91.6 min: near-Earth SGP4")) << r.out;
    EXPECT_FALSE(r.Has("ITALSAT"));
    // The first rise, as ASatRiseSet gives it, in local time to the second.
    TleLines t{};
    std::snprintf(t.line1, sizeof t.line1, "%s", kIss1);
    std::snprintf(t.line2, sizeof t.line2, "%s", kIss2);
    Elm elm;
    ASatTleToElm(&t, &elm);
    const ADate start{2008, 9, 21, 0, 0, 0.0, 9.0};
    const double jd = GetJd(&start);
    const Lla tokyo{35.6895, 139.6917, 40.0};
    ASatPassEvent ev[64];
    const int n = ASatRiseSet(jd, jd + 1.0, &tokyo, &elm, -90.0, ev, 64);
    ASSERT_GT(n, 3);
    ADate d{};
    JdToDate2(std::round((ev[0].jd + 9.0 / 24.0) * 86400.0) / 86400.0 + 1e-12, &d);
    char when[64];
    std::snprintf(when, sizeof when, "%04d-%02d-%02d %02d:%02d:%02d +09:00  %s", d.year, d.month, d.day, d.hour,
                  d.minute, static_cast<int>(d.second), ev[0].kind == 1 ? "rise" : ev[0].kind == 2 ? "culmination" : "set");
    EXPECT_TRUE(r.Has(when)) << when << "\n" << r.out;
    int lines = 0;
    for (size_t at = r.out.find(" +09:00  "); at != std::string::npos; at = r.out.find(" +09:00  ", at + 1)) ++lines;
    EXPECT_EQ(lines, n);
}

TEST(KvxSatCli, JsonNowAndTheFullModelForLongPeriods) {
    const std::string file = WriteFile("kvx_sat_sets2.tle", Sets());
    const auto j = RunKvx("sat '" + file + "' --date 2006-06-26T12:00 --tz 0 --json");
    ASSERT_EQ(j.status, 0) << j.err;
    EXPECT_TRUE(j.Has("\"model\": \"full\"")) << j.out;
    EXPECT_TRUE(j.Has("\"events\": ["));
    EXPECT_TRUE(j.Has("\"period_min\": "));
    const auto now = RunKvx("sat '" + file + "' --name 24208 --now --date 2006-06-26T12:00 --tz 0 --lat 0 --lon 80");
    ASSERT_EQ(now.status, 0) << now.err;
    EXPECT_TRUE(now.Has("propagated with the full SGP4/SDP4 model")) << now.out;
    EXPECT_TRUE(now.Has("sub-satellite point")) << now.out;
    EXPECT_TRUE(now.Has("height   357")) << now.out;  // geostationary: about 35 786 km
    const auto nowJson = RunKvx("sat '" + file + "' --name iss --now --date 2006-06-26T12:00 --json");
    ASSERT_EQ(nowJson.status, 0);
    EXPECT_TRUE(nowJson.Has("\"range_km\": ")) << nowJson.out;
    EXPECT_TRUE(nowJson.Has("\"sunlit\": ")) << nowJson.out;
}

TEST(KvxSatCli, BrokenElementLinesAreNamedInOneLine) {
    std::string bad = Sets();
    bad[bad.find("2927")] = '3';  // line 2 of the file: wrong checksum
    const auto r = RunKvx("sat '" + WriteFile("kvx_sat_bad.tle", bad) + "'");
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.ErrLines(), 1) << r.err;
    EXPECT_NE(r.err.find("line 2: checksum"), std::string::npos) << r.err;

    std::string cols = Sets();
    cols.replace(cols.find("51.6416"), 7, "51x6416");
    const auto c = RunKvx("sat '" + WriteFile("kvx_sat_cols.tle", cols) + "'");
    EXPECT_EQ(c.status, 2);
    EXPECT_EQ(c.ErrLines(), 1) << c.err;

    const auto missing = RunKvx("sat '" + WriteFile("kvx_sat_one.tle", std::string(kIss1) + "\n") + "'");
    EXPECT_EQ(missing.status, 2);
    EXPECT_NE(missing.err.find("line 1: line 1 without a line 2"), std::string::npos) << missing.err;

    const auto name = RunKvx("sat '" + WriteFile("kvx_sat_sets3.tle", Sets()) + "' --name hubble");
    EXPECT_EQ(name.status, 2);
    EXPECT_EQ(name.ErrLines(), 1);
    const auto days = RunKvx("sat '" + WriteFile("kvx_sat_sets4.tle", Sets()) + "' --days 0");
    EXPECT_EQ(days.status, 2);
}

}  // namespace
