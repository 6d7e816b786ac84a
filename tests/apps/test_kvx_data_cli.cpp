// kvx data and kvx meteors, configured through a private XDG directory pointing at the test fixtures.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <vector>

#include "apps/kvx_runner.h"

namespace {

namespace fs = std::filesystem;
using kvx::test::TestDataPath;

class KvxData : public testing::Test {
  protected:
    void SetUp() override {
        dir_ = fs::temp_directory_path() / ("kvx_data_cli_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()));
        fs::create_directories(dir_ / "Pelorin/kvxlib");
    }
    void TearDown() override { fs::remove_all(dir_); }
    void Conf(const std::string &text) { std::ofstream(dir_ / "Pelorin/kvxlib/6.0.conf") << text; }
    // kvx with these settings; its output must hold each of `texts`.
    kvx::test::KvxResult Result(const std::string &args, std::initializer_list<const char *> texts = {}) {
        const auto r = kvx::test::RunKvx(args, "XDG_CONFIG_HOME='" + dir_.string() + "' XDG_CONFIG_DIRS=/nonexistent");
        for (const char *text : texts) EXPECT_TRUE(r.Has(text)) << args << ": " << text << "\n" << r.out;
        return r;
    }
    std::string Run(const std::string &args, std::initializer_list<const char *> texts = {}) { return Result(args, texts).out; }
    fs::path dir_;
};

TEST_F(KvxData, ReportsEveryLoadedFileAndItsSpan) {
    Conf("JplEphUnixFile=" + TestDataPath("de405_2000.bin") + "\nPlanetXyzFile=" + TestDataPath("planet.xyz") +
         "\nDtUtFile=" + TestDataPath("kvxjdt.dat") + "\nMeteorFile=" + TestDataPath("meteor.txt") + "\n");
    Run("data", {"DE405, JD 2451536.5 to 2452272.5 (1999-12-24 to 2001-12-29)", "Moon        from the JPL DE file",
                 "Mercury  JD 2451536.5 to 2452272.5", "version 2, 29 entries, JD ", " to 2461219.5 (", "13 showers"});
    const kvx::test::Json json = kvx::test::Json::Parse(Run("data --json"));
    EXPECT_EQ(json["jpl"]["path"].str() + " " + json["moon"]["source"].str(), TestDataPath("de405_2000.bin") + " jpl");
    EXPECT_EQ(json["jpl"]["version"].num(), 405.0);
}

TEST_F(KvxData, MoonFileAndNothingElse) {
    Conf("MoonXyzFile=" + TestDataPath("moon.xyz") + "\n");
    Run("data", {"JPL DE      none (JplEphUnixFile not set)", "moon.xyz (user settings", "JD 2451568.5 to 2451728.5",
                 "Meteors     ", ": none loaded"});
}

TEST_F(KvxData, MeteorsListsTheCatalogue) {
    Conf("MeteorFile=" + TestDataPath("meteor.txt") + "\n");
    Run("meteors", {" 12 GEM  Geminids", "ZHR"});
    const kvx::test::Json json = kvx::test::Json::Parse(Run("meteors --json")), &s = json["showers"];
    EXPECT_EQ(s[0]["code"].str(), "QUA");  // then the count, its radiant and rate, a negative number from the file
    EXPECT_EQ((std::vector<double>{json["count"].num(), s[0]["radiant_ra_deg"].num(), s[0]["zhr"].num(),
                                   s[2]["radiant_dec_deg"].num()}), (std::vector<double>{13, 230, 80, -1}));
    Conf("");
    EXPECT_EQ(Run("meteors"), "no meteor-shower file loaded\n");
}

// A configured file that is not there is shown as missing, with its path.
TEST_F(KvxData, ConfiguredButMissing) {
    Conf("JplEphUnixFile=/nonexistent/de405.bin\nMeteorFile=/nonexistent/meteor.txt\n");
    Run("data", {"JPL DE      /nonexistent/de405.bin (user settings", "6.0.conf) (missing): not loaded\n",
                 "/nonexistent/meteor.txt (user settings"});
    EXPECT_EQ(kvx::test::Json::Parse(Run("data --json"))["meteors"]["exists"].boolean(), false);
}

// Each position names its source; one warning when its stated accuracy does not hold (the planet file of
// 2000-2001 carried to AD 1000 by two-body motion; the DE file serves inside its span only).
TEST_F(KvxData, PositionsNameTheirSource) {
    Conf("PlanetXyzFile=" + TestDataPath("planet.xyz") + "\nJplEphUnixFile=" + TestDataPath("de405_2000.bin") + "\n");
    const auto in = kvx::test::Json::Parse(Run("planet saturn --date 2000-06-01 --tz 0 --json"))["bodies"][0];
    EXPECT_TRUE(in["source"].str() == "JPL DE405" && in["source_accuracy_holds"].boolean());
    const kvx::test::KvxResult far = Result("planet all --date 1000-01-01 --tz 0", {"[planet file, extrapolated 365"});
    EXPECT_TRUE(far.status == 0 && far.ErrLines() == 1) << far.err;  // once, although eight bodies are extrapolated
    EXPECT_EQ(far.err.rfind("kvx: warning: Mercury from planet file, extrapolated", 0), 0u) << far.err;
    Run("moon --date 2000-06-01 --tz 0", {"source JPL DE405"});
}

}  // namespace
