// kvx data and kvx meteors, with the library configured through a private
// XDG configuration directory pointing at the test fixtures.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

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
    kvx::test::KvxResult Result(const std::string &args) {
        return kvx::test::RunKvx(args, "XDG_CONFIG_HOME='" + dir_.string() + "' XDG_CONFIG_DIRS=/nonexistent");
    }
    std::string Run(const std::string &args) { return Result(args).out; }
    fs::path dir_;
};

TEST_F(KvxData, ReportsEveryLoadedFileAndItsSpan) {
    Conf("JplEphUnixFile=" + TestDataPath("de405_2000.bin") + "\nPlanetXyzFile=" + TestDataPath("planet.xyz") +
         "\nDtUtFile=" + TestDataPath("kvxjdt.dat") + "\nMeteorFile=" + TestDataPath("meteor.txt") + "\n");
    const std::string out = Run("data");
    EXPECT_NE(out.find("DE405, JD 2451536.5 to 2452272.5 (1999-12-24 to 2001-12-29)"), std::string::npos) << out;
    EXPECT_NE(out.find("Moon        from the JPL DE file"), std::string::npos) << out;
    EXPECT_NE(out.find("Mercury  JD 2451536.5 to 2452272.5"), std::string::npos) << out;
    EXPECT_NE(out.find("version 2, 29 entries, JD "), std::string::npos) << out;
    EXPECT_NE(out.find(" to 2461219.5 ("), std::string::npos) << out;
    EXPECT_NE(out.find("13 showers"), std::string::npos) << out;
    const kvx::test::Json json = kvx::test::Json::Parse(Run("data --json"));
    EXPECT_EQ(json["jpl"]["path"].str(), TestDataPath("de405_2000.bin"));
    EXPECT_EQ(json["jpl"]["version"].num(), 405.0);
    EXPECT_EQ(json["moon"]["source"].str(), "jpl");
}

TEST_F(KvxData, MoonFileAndNothingElse) {
    Conf("MoonXyzFile=" + TestDataPath("moon.xyz") + "\n");
    const std::string out = Run("data");
    EXPECT_NE(out.find("JPL DE      none (JplEphUnixFile not set)"), std::string::npos) << out;
    EXPECT_NE(out.find("moon.xyz (user settings"), std::string::npos) << out;
    EXPECT_NE(out.find("JD 2451568.5 to 2451728.5"), std::string::npos) << out;
    EXPECT_NE(out.find("Meteors     "), std::string::npos) << out;
    EXPECT_NE(out.find(": none loaded"), std::string::npos) << out;
}

TEST_F(KvxData, MeteorsListsTheCatalogue) {
    Conf("MeteorFile=" + TestDataPath("meteor.txt") + "\n");
    const std::string out = Run("meteors");
    EXPECT_NE(out.find(" 12 GEM  Geminids"), std::string::npos) << out;
    const kvx::test::Json json = kvx::test::Json::Parse(Run("meteors --json"));
    EXPECT_EQ(json["count"].num(), 13.0);
    EXPECT_EQ(json["showers"][0]["code"].str(), "QUA");
    EXPECT_EQ(json["showers"][0]["radiant_ra_deg"].num(), 230.0);
    EXPECT_EQ(json["showers"][2]["radiant_dec_deg"].num(), -1.0);  // a negative number read from the file
    EXPECT_EQ(json["showers"][0]["zhr"].num(), 80.0);
    EXPECT_NE(out.find("ZHR"), std::string::npos) << out;
    Conf("");
    EXPECT_EQ(Run("meteors"), "no meteor-shower file loaded\n");
}

// A configured file that is not there is shown as missing, with its path.
TEST_F(KvxData, ConfiguredButMissing) {
    Conf("JplEphUnixFile=/nonexistent/de405.bin\nMeteorFile=/nonexistent/meteor.txt\n");
    const std::string out = Run("data");
    EXPECT_NE(out.find("JPL DE      /nonexistent/de405.bin (user settings"), std::string::npos) << out;
    EXPECT_NE(out.find("6.0.conf) (missing): not loaded\n"), std::string::npos) << out;
    EXPECT_NE(out.find("/nonexistent/meteor.txt (user settings"), std::string::npos) << out;
    EXPECT_EQ(kvx::test::Json::Parse(Run("data --json"))["meteors"]["exists"].boolean(), false);
}

// Each position names its source; one warning when the source's stated
// accuracy does not hold: the planet file (2000-2001) carries Saturn back
// to AD 1000 by two-body motion, the DE file serves inside its span only.
TEST_F(KvxData, PositionsNameTheirSource) {
    Conf("PlanetXyzFile=" + TestDataPath("planet.xyz") + "\nJplEphUnixFile=" + TestDataPath("de405_2000.bin") + "\n");
    const auto in = kvx::test::Json::Parse(Run("planet saturn --date 2000-06-01 --tz 0 --json"))["bodies"][0];
    EXPECT_EQ(in["source"].str(), "JPL DE405");
    EXPECT_TRUE(in["source_accuracy_holds"].boolean());
    const kvx::test::KvxResult far = Result("planet all --date 1000-01-01 --tz 0");
    EXPECT_EQ(far.status, 0);
    EXPECT_NE(far.out.find("[planet file, extrapolated 365"), std::string::npos) << far.out;
    EXPECT_EQ(far.ErrLines(), 1) << far.err;  // once, although eight bodies are extrapolated
    EXPECT_EQ(far.err.rfind("kvx: warning: Mercury from planet file, extrapolated", 0), 0u) << far.err;
    EXPECT_NE(Run("moon --date 2000-06-01 --tz 0").find("source JPL DE405"), std::string::npos);
}

}  // namespace
