// kvx time and the almanac's time-scale lines: the record of an instant in
// text and JSON, and usage errors.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "apps/kvx_runner.h"

namespace {

using CliResult = kvx::test::KvxResult;

CliResult Kvx(const std::string &args) { return kvx::test::RunKvx(args); }

bool Has(const CliResult &r, const char *text) { return r.out.find(text) != std::string::npos; }

TEST(KvxTimeCli, JsonDumpsTheWholeRecord) {
    const CliResult r = Kvx("time 2000-01-01T21:00 --tz 9 --geocentre --json");
    ASSERT_EQ(r.status, 0);
    EXPECT_TRUE(Has(r, "\"jd\": 2451545,")) << r.out;
    EXPECT_TRUE(Has(r, "\"obsHeight\": -6378137,")) << r.out;
    EXPECT_TRUE(Has(r, "\"obsPos\": [0, 0, 0]")) << r.out;
    EXPECT_TRUE(Has(r, "\"lst\": 280.457")) << r.out;  // Greenwich apparent sidereal time
    for (const char *key : {"\"eqToEcl\": [1, 0, 0, 0, 0.917", "\"eclToEq\": [", "\"precToJ2000\": [",
                            "\"precFromJ2000\": [", "\"nutation\": [-0.00386", "\"nutMtx\": [", "\"nutInvMtx\": [",
                            "\"epsTrue\": 23.4376", "\"t2\": ", "\"deltaT\": 6"})
        EXPECT_TRUE(Has(r, key)) << key << "\n" << r.out;
}

TEST(KvxTimeCli, TextListsTheScalarFieldsForAnObserver) {
    const CliResult r = Kvx("time 2024-06-01T21:30 --lat 35.6895 --lon 139.6917 --height 40 --tz 9");
    ASSERT_EQ(r.status, 0);
    for (const char *line : {"local      2024-06-01T21:30:00.000 +09:00", "observer   35.689500° 139.691700° 40.0 m",
                             "jde        2460463.0216", "ΔT         ", "lst        217.6749",
                             "eps        23.4361028", "dpsi ", "obsPos     "})
        EXPECT_TRUE(Has(r, line)) << line << "\n" << r.out;
}

TEST(KvxTimeCli, AlmanacCarriesDeltaTSiderealTimeAndObliquity) {
    CliResult r = Kvx("--date 2024-06-01T21:30 --lat 35.6895 --lon 139.6917 --tz 9 --json");
    ASSERT_EQ(r.status, 0);
    EXPECT_TRUE(Has(r, "\"deltaT\": ")) << r.out;  // its source depends on the data files
    EXPECT_TRUE(Has(r, "\"lst\": 217.67")) << r.out;
    EXPECT_TRUE(Has(r, "\"eps\": 23.436")) << r.out;
    EXPECT_TRUE(Has(r, "\"epsTrue\": 23.438")) << r.out;
    r = Kvx("--date 2024-06-01T21:30 --lat 35.6895 --lon 139.6917 --tz 9");
    EXPECT_TRUE(Has(r, "  LAST      14h30m")) << r.out;
    EXPECT_TRUE(Has(r, "  obliquity 23°26'")) << r.out;
}

TEST(KvxTimeCli, BadArgumentsExitTwo) {
    for (const char *bad : {"time", "time 2023-02-29", "time 2024-01-01 2024-01-02", "time 2024-01-01 --lat 91"})
        EXPECT_EQ(Kvx(bad).status, 2) << bad;
}

}  // namespace
