// kvx convert: the coordinate conversion on the command line.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "apps/kvx_runner.h"

namespace {

using Result = kvx::test::KvxResult;

Result KvxRun(const std::string &args) { return kvx::test::RunKvx(args); }

// The "out" pair of the JSON answer.
bool OutPair(const std::string &json, double &a, double &b) {
    const size_t at = json.find("\"out\": [");
    return at != std::string::npos && std::sscanf(json.c_str() + at + 8, "%lf, %lf", &a, &b) == 2;
}

}  // namespace

TEST(KvxConvert, GalacticCentreByNumberOrName) {
    for (const char *args : {"convert --from 3 --to 10 266.40499 -28.93617 --date 2024-01-01 --json",
                             "convert --from j2000 --to galactic 266.40499 -28.93617 --date 2024-01-01 --json"}) {
        const Result r = KvxRun(args);
        ASSERT_EQ(r.status, 0) << r.err;
        double l = 0.0, b = 0.0;
        ASSERT_TRUE(OutPair(r.out, l, b)) << r.out;
        EXPECT_NEAR(std::remainder(l, 360.0), 0.0, 2e-4);
        EXPECT_NEAR(b, 0.0, 2e-4);
        EXPECT_NE(r.out.find("\"from\": 3"), std::string::npos);
        EXPECT_NE(r.out.find("\"to\": 10"), std::string::npos);
    }
}

TEST(KvxConvert, PoleOfDateStandsAtTheObserversLatitude) {
    const Result r = KvxRun("convert --from 5 --to 1 0 90 --date 2024-06-01T22:00 --lat 51.5 --lon -0.1 --tz 1 --json");
    ASSERT_EQ(r.status, 0) << r.err;
    double az = 0.0, alt = 0.0;
    ASSERT_TRUE(OutPair(r.out, az, alt)) << r.out;
    // Through the J2000.0 hub the mean equator of date picks up the frame
    // bias once (23 mas = 6.4e-6 degree).
    EXPECT_NEAR(az, 180.0, 1e-5);
    EXPECT_NEAR(alt, 51.5, 6.5e-6);
}

TEST(KvxConvert, TextOutputShowsBothSystems) {
    const Result r = KvxRun("convert --from 3 --to 7 90 23.4392794444 --date 2000-01-01T12:00 --tz 0");
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 3) << r.out;
    EXPECT_NE(r.out.find("equatorial, mean J2000.0"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("ecliptic, mean J2000.0"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("06h00m00.00s"), std::string::npos) << r.out;  // RA as hours
    EXPECT_NE(r.out.find(" 90.000000  +0.000000"), std::string::npos) << r.out;
}

TEST(KvxConvert, BadArgumentsExitTwoWithOneErrorLine) {
    for (const char *bad : {"convert 10 20", "convert --from 3 10 20", "convert --from 3 --to 11 10 20",
                            "convert --from 0 --to 3 10 20", "convert --from 3 --to eq 10 20",
                            "convert --from 3 --to 5 ten 20", "convert --from 3 --to 5 10 95",
                            "convert --from 3 --to 5 10", "convert --from 3 --to 5 10 20 30",
                            "convert --from 3 --to 5 10 20 --date 2024-02-30"}) {
        const Result r = KvxRun(bad);
        EXPECT_EQ(r.status, 2) << bad;
        EXPECT_GE(r.ErrLines(), 1) << bad;
        EXPECT_LE(r.ErrLines(), 2) << bad;
        EXPECT_TRUE(r.out.empty()) << bad;
    }
}
