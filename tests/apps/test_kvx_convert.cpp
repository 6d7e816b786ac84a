// kvx convert: the coordinate conversion on the command line.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cmath>
#include <cstdio>
#include <string>

#include "test_support.h"

namespace {

struct Result {
    int status;
    std::string out;
    std::string err;
};

Result KvxRun(const std::string &args) {
    const std::string errFile = ::testing::TempDir() + "kvx_convert_err.txt";
    const std::string cmd = std::string("'") + KVX_CLI + "' " + args + " 2>'" + errFile + "'";
    Result r{-1, "", ""};
    FILE *p = popen(cmd.c_str(), "r");
    if (!p) return r;
    char buf[4096];
    size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, p)) > 0) r.out.append(buf, n);
    const int st = pclose(p);
    r.status = WIFEXITED(st) ? WEXITSTATUS(st) : -1;
    if (FILE *e = std::fopen(errFile.c_str(), "r")) {
        while ((n = std::fread(buf, 1, sizeof buf, e)) > 0) r.err.append(buf, n);
        std::fclose(e);
    }
    r.err = kvx::test::WithoutLoadDiagnostics(r.err);
    return r;
}

// The "out" pair of the JSON answer.
bool OutPair(const std::string &json, double &a, double &b) {
    const size_t at = json.find("\"out\": [");
    return at != std::string::npos && std::sscanf(json.c_str() + at + 8, "%lf, %lf", &a, &b) == 2;
}

int Lines(const std::string &s) {
    int n = 0;
    for (char c : s) n += c == '\n';
    return n;
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
    EXPECT_EQ(Lines(r.out), 3) << r.out;
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
        EXPECT_GE(Lines(r.err), 1) << bad;
        EXPECT_LE(Lines(r.err), 2) << bad;
        EXPECT_TRUE(r.out.empty()) << bad;
    }
}
