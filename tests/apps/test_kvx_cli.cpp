// The kvx command line: conversions in text and JSON, and the contract for
// bad arguments (one line on stderr, a usage hint, exit status 2).
#include <gtest/gtest.h>

#include <string>

#include "apps/kvx_runner.h"

namespace {

using kvx::test::KvxResult;

KvxResult Kvx(const std::string &args) { return kvx::test::RunKvx(args); }

TEST(KvxCli, ConvertsDatesBothWays) {
    KvxResult r = Kvx("jd 2000-01-01T21:00 --tz 9 --json");
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("\"jd\": 2451545,"), std::string::npos) << r.out;
    r = Kvx("date 2299160.5");
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("1582-10-15T00:00:00.000"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("Friday"), std::string::npos) << r.out;
    r = Kvx("date 2451545 --tz 9 --json");
    EXPECT_NE(r.out.find("\"hour\": 21"), std::string::npos) << r.out;
    r = Kvx("jd -0044-03-15T12:00");
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("-0044-03-15T12:00:00.000 +00:00  JD 1705061.0"), std::string::npos) << r.out;
}

TEST(KvxCli, AlmanacForAGivenPlaceAndDate) {
    const KvxResult r = Kvx("--date 2024-06-01T12:00 --lat 51.5 --lon -0.1 --tz 1 --json");
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("\"latitude\": 51.5"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("\"weekday\": \"Saturday\""), std::string::npos) << r.out;
    EXPECT_EQ(Kvx("").status, 0);
}

TEST(KvxCli, BadArgumentsExitTwoWithOneErrorLineAndUsage) {
    for (const char *bad : {"jd", "jd 2001-02-29", "jd 2000-13-01", "date nonsense", "date 1 2", "frobnicate",
                            "--lat 100", "--tz", "jd 2000-01-01 --tz x"}) {
        const KvxResult r = Kvx(bad);
        EXPECT_EQ(r.status, 2) << bad;
        const int lines = r.ErrLines();
        EXPECT_GE(lines, 1) << bad;
        EXPECT_LE(lines, 2) << bad;  // the error and the usage hint
    }
}

}  // namespace
