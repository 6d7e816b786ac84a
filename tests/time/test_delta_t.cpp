// Delta T: the built-in rules against values evaluated independently by the
// reference script (Espenak-Meeus polynomials, TAI - UTC from ERFA), and
// the delta-T file loader with its step table.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>

#include "kvxlib.h"
#include "test_support.h"
#include "time/delta_t.h"

namespace {

using kvx::deltat::DeltaTDays;

double DeltaTSeconds(double jd) { return DeltaTDays(jd) * 86400.0; }

TEST(DeltaTBuiltIn, MatchesIndependentEvaluationAtRangeEndsAndInsideTheUtcSteps) {
    kvx::deltat::Release();
    const kvx::test::Reference ref("delta_t.csv", {"jd", "seconds"});
    // The same formulas in another evaluation order: 1e-9 s plus 1e-13 of
    // values that reach 7e4 s in the far past.
    kvx::test::Comparison cmp({{"scaled_seconds", 1e-9, "rounding: |error| / (1 + 1e-4 |value|)"}});
    for (const auto &row : ref)
        cmp.Add("scaled_seconds", (DeltaTSeconds(row["jd"]) - row["seconds"]) / (1.0 + 1e-4 * std::fabs(row["seconds"])), row);
    cmp.Check();
    // J2000.0: the 1987-2005 polynomial (63.874 s) with the -0.026 s correction.
    EXPECT_NEAR((UtToDt(2451545.0) - 2451545.0) * 86400.0, 63.8476, 1e-3);
}

TEST(DeltaTBuiltIn, DtToUtUsesDeltaTAtTheDynamicalArgument) {
    kvx::deltat::Release();
    for (double jd : {1000000.25, 2299160.5, 2440000.5, 2451545.0, 2460000.5, 2600000.75}) {
        const double jde = UtToDt(jd);
        EXPECT_EQ(DtToUt(jde), jde - DeltaTDays(jde));
        // The round trip misses by the change of Delta T over Delta T itself.
        const double change = std::fabs(DeltaTDays(jde) - DeltaTDays(jd));
        EXPECT_NEAR(DtToUt(jde), jd, change + 1e-9);
    }
}

// Writes a delta-T file into the test's temporary directory.
class DeltaTFile : public ::testing::Test {
protected:
    std::string Write(const std::string &name, const std::string &text) {
        const std::string path = ::testing::TempDir() + "kvx_" + name;
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }
    void TearDown() override { kvx::deltat::Release(); }
};

// Version 1 stores days as they are; versions 2 and 3 TAI - UTC in
// seconds, and only version 2 is the valid format. A step function: each
// entry holds from its date up to the newer one; the bisection keeps the
// newest entry's own date in the step below it.
TEST_F(DeltaTFile, VersionsAndSteps) {
    ASSERT_TRUE(kvx::deltat::LoadFile(Write("v1.dat", "2460000.5 0.00080\n2450000.5\t0.00070\n2440000.5 0.00050\n").c_str()));
    EXPECT_EQ(kvx::deltat::LoadedVersion(), 1);
    EXPECT_EQ(IsValidJdtFile(), 0);
    EXPECT_EQ(DeltaTDays(2449999.5), 0.00050);
    EXPECT_EQ(DeltaTDays(2450000.5), 0.00070);
    EXPECT_EQ(DeltaTDays(2460000.5), 0.00070);
    EXPECT_EQ(DeltaTDays(2460000.6), 0.00080);
    EXPECT_EQ(UtToDt(2455000.0), 2455000.0 + 0.00070);
    ASSERT_TRUE(kvx::deltat::LoadFile(Write("v2.dat", "# KVXJDT VER.2\n2457754.5 37\n2457204.5 36\n").c_str()));
    EXPECT_EQ(IsValidJdtFile(), 1);
    EXPECT_EQ(DeltaTDays(2457500.0), (36.0 + 32.184) / 86400.0);
    ASSERT_TRUE(kvx::deltat::LoadFile(Write("v3.dat", "# KVXJDT VER.3\n2457754.5 37\n").c_str()));
    EXPECT_EQ(kvx::deltat::LoadedVersion(), 3);
    EXPECT_EQ(IsValidJdtFile(), 0);
    EXPECT_EQ(DeltaTDays(2457754.5), (37.0 + 32.184) / 86400.0);
    kvx::deltat::Release();
    EXPECT_EQ(IsValidJdtFile(), 0);
    EXPECT_NEAR(DeltaTSeconds(2458000.0), 70.33, 0.01);  // back to the polynomial
    // A header alone is no table.
    ASSERT_TRUE(kvx::deltat::LoadFile(Write("empty.dat", "# KVXJDT VER.2\n").c_str()));
    EXPECT_EQ(kvx::deltat::LoadedCount(), 0);
    EXPECT_NEAR(DeltaTSeconds(2458000.0), 70.33, 0.01);
}

TEST_F(DeltaTFile, RejectedFilesKeepNoTable) {
    const double builtIn = DeltaTDays(2455000.0);
    const char *bad[] = {
        "# KVXJDT VER.2\n2457754.5 37\n\n2456109.5 35\n",  // a blank line in the middle
        "# KVXJDT VER.0\n2457754.5 37\n",                  // version below 1
        "# KVXJDT VERSION 2\n2457754.5 37\n",              // unknown header
        "",                                                // empty file
        "2457754.5\n",                                     // no second number
    };
    int i = 0;
    for (const char *text : bad) {
        const std::string path = Write("bad" + std::to_string(i++) + ".dat", text);
        EXPECT_FALSE(kvx::deltat::LoadFile(path.c_str())) << text;
        EXPECT_EQ(kvx::deltat::LoadedCount(), 0);
        EXPECT_EQ(IsValidJdtFile(), 0);
        EXPECT_EQ(DeltaTDays(2455000.0), builtIn);
    }
    EXPECT_FALSE(kvx::deltat::LoadFile((::testing::TempDir() + "kvx_no_such_file.dat").c_str()));
    EXPECT_FALSE(kvx::deltat::LoadFile(nullptr));
}

TEST_F(DeltaTFile, FiveYearHoldPastTheNewestEntry) {
    const std::string path = Write("hold.dat", "# KVXJDT VER.2\n2460000.5 40\n2450000.5 30\n");
    ASSERT_TRUE(kvx::deltat::LoadFile(path.c_str()));
    const double newest = (40.0 + 32.184) / 86400.0;
    EXPECT_EQ(DeltaTDays(2460000.5 + 1826.2), newest);
    EXPECT_EQ(DeltaTDays(2460000.5 + 1826.2110000000002), newest);
    kvx::deltat::Release();
    const double polynomial = DeltaTDays(2461826.72);
    ASSERT_TRUE(kvx::deltat::LoadFile(path.c_str()));
    EXPECT_EQ(DeltaTDays(2461826.72), polynomial);
    EXPECT_NE(polynomial, newest);
    // Older than the oldest entry: the built-in rules.
    kvx::deltat::Release();
    const double before = DeltaTDays(2449999.5);
    ASSERT_TRUE(kvx::deltat::LoadFile(path.c_str()));
    EXPECT_EQ(DeltaTDays(2449999.5), before);
}

TEST_F(DeltaTFile, BinarySearchOverALongTableFindsEveryStep) {
    // 137 monthly entries, newest first, values equal to their index, and
    // growth of the array past several multiples of ten.
    std::string text = "# KVXJDT VER.2\n";
    const int n = 137;
    for (int i = 0; i < n; ++i) {
        char line[64];
        std::snprintf(line, sizeof line, "%.1f %d\n", 2460000.5 - 30.0 * i, n - 1 - i);
        text += line;
    }
    const std::string path = Write("long.dat", text);
    ASSERT_TRUE(kvx::deltat::LoadFile(path.c_str()));
    ASSERT_EQ(kvx::deltat::LoadedCount(), n);
    for (int i = 1; i + 1 < n; ++i) {
        const double jd = 2460000.5 - 30.0 * i, value = ((n - 1 - i) + 32.184) / 86400.0;
        EXPECT_EQ(DeltaTDays(jd), value) << i;
        EXPECT_EQ(DeltaTDays(jd + 29.5), value) << i;
        EXPECT_EQ(DeltaTDays(jd - 0.5), ((n - 2 - i) + 32.184) / 86400.0) << i;
    }
    // The ends: the oldest entry exactly; the newest entry's own date (in
    // the step below it) and just after it (the newest value).
    EXPECT_EQ(DeltaTDays(2460000.5 - 30.0 * (n - 1)), 32.184 / 86400.0);
    EXPECT_EQ(DeltaTDays(2460000.5), (n - 2 + 32.184) / 86400.0);
    EXPECT_EQ(DeltaTDays(2460000.5 + 1e-6), (n - 1 + 32.184) / 86400.0);
}

TEST_F(DeltaTFile, LongLinesWithinTheLimitAndCarriageReturnsLoad) {
    // 126 characters and the newline fit the 127-character line reader.
    std::string longLine = "2457754.5 37";
    longLine += std::string(126 - longLine.size(), ' ');
    const std::string path = Write("long_line.dat", "# KVXJDT VER.2\r\n" + longLine + "\n2456109.5\t35\r\n");
    ASSERT_TRUE(kvx::deltat::LoadFile(path.c_str()));
    EXPECT_EQ(kvx::deltat::LoadedCount(), 2);
    EXPECT_EQ(DeltaTDays(2457754.6), (37.0 + 32.184) / 86400.0);
    EXPECT_EQ(DeltaTDays(2457000.0), (35.0 + 32.184) / 86400.0);
}

}  // namespace
