// The kvx command line: conversions in text and JSON, and the contract for
// bad arguments (one line on stderr, a usage hint, exit status 2).
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <string>

#include "test_support.h"

namespace {

struct CliRun {
    int status;
    std::string out;
};

CliRun Kvx(const std::string &args) {
    const std::string cmd = std::string("'") + KVX_CLI + "' " + args + " 2>/dev/null";
    FILE *p = popen(cmd.c_str(), "r");
    CliRun r{-1, ""};
    if (!p) return r;
    char buf[4096];
    size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, p)) > 0) r.out.append(buf, n);
    const int st = pclose(p);
    r.status = WIFEXITED(st) ? WEXITSTATUS(st) : -1;
    return r;
}

// Lines the command itself writes to stderr (the library's load-time
// data-file lines are left out).
int StderrLines(const std::string &args) {
    const std::string cmd = std::string("'") + KVX_CLI + "' " + args + " 2>&1 >/dev/null";
    FILE *p = popen(cmd.c_str(), "r");
    if (!p) return -1;
    std::string err;
    char buf[4096];
    size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, p)) > 0) err.append(buf, n);
    pclose(p);
    err = kvx::test::WithoutLoadDiagnostics(err);
    int lines = 0;
    for (char c : err) lines += c == '\n';
    return lines;
}

TEST(KvxCli, ConvertsDatesBothWays) {
    CliRun r = Kvx("jd 2000-01-01T21:00 --tz 9 --json");
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
    const CliRun r = Kvx("--date 2024-06-01T12:00 --lat 51.5 --lon -0.1 --tz 1 --json");
    EXPECT_EQ(r.status, 0);
    EXPECT_NE(r.out.find("\"latitude\": 51.5"), std::string::npos) << r.out;
    EXPECT_NE(r.out.find("\"weekday\": \"Saturday\""), std::string::npos) << r.out;
    EXPECT_EQ(Kvx("").status, 0);
}

TEST(KvxCli, BadArgumentsExitTwoWithOneErrorLineAndUsage) {
    for (const char *bad : {"jd", "jd 2001-02-29", "jd 2000-13-01", "date nonsense", "date 1 2", "frobnicate",
                            "--lat 100", "--tz", "jd 2000-01-01 --tz x"}) {
        EXPECT_EQ(Kvx(bad).status, 2) << bad;
        const int lines = StderrLines(bad);
        EXPECT_GE(lines, 1) << bad;
        EXPECT_LE(lines, 2) << bad;  // the error and the usage hint
    }
}

}  // namespace
