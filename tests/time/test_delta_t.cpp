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
    const auto rows = kvx::test::ReadRows(kvx::test::ReferencePath("delta_t.csv"));
    ASSERT_GT(rows.size(), 300u);
    double worst = 0.0;
    for (const auto &r : rows) {
        const double got = DeltaTSeconds(r[0]);
        // Rounding only: the same formulas in another evaluation order.
        EXPECT_NEAR(got, r[1], 1e-9 + 1e-13 * std::fabs(r[1])) << "jd " << r[0];
        worst = std::fmax(worst, std::fabs(got - r[1]));
    }
    std::printf("[ measured ] Delta T vs independent evaluation: max %.3g s\n", worst);
}

TEST(DeltaTBuiltIn, DocumentedValues) {
    kvx::deltat::Release();
    // J2000.0: 1987-2005 polynomial (63.874 s) and the -0.026 s correction.
    EXPECT_NEAR(DeltaTSeconds(2451545.0), 63.8476, 1e-3);
    EXPECT_NEAR((UtToDt(2451545.0) - 2451545.0) * 86400.0, 63.8476, 1e-3);
    // Last step of the table: 4.21317 + (41316.9 - 39126) 0.002592 + 32.184,
    // then the correction at y = 1971 + 11.5/12.
    const double y = 1971.0 + 11.5 / 12.0;
    const double expected = 4.21317 + (41316.9 - 39126.0) * 0.002592 + 32.184 - 1.2932e-5 * (y - 1955.0) * (y - 1955.0);
    EXPECT_NEAR(DeltaTSeconds(2441317.4), expected, 1e-9);
    // From 1972 January 1 the 1961-1986 polynomial applies (no 10 s + 32.184).
    const double y2 = 1972.0 + 0.5 / 12.0, t = y2 - 1975.0;
    const double poly = 45.45 + 1.067 * t - t * t / 260.0 - t * t * t / 718.0 - 1.2932e-5 * (y2 - 1955.0) * (y2 - 1955.0);
    EXPECT_NEAR(DeltaTSeconds(2441317.5), poly, 1e-9);
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

TEST_F(DeltaTFile, Version1StoresDaysAsTheyAre) {
    const std::string path = Write("v1.dat", "2460000.5 0.00080\n2450000.5\t0.00070\n2440000.5 0.00050\n");
    ASSERT_TRUE(kvx::deltat::LoadFile(path.c_str()));
    EXPECT_EQ(kvx::deltat::LoadedVersion(), 1);
    EXPECT_EQ(kvx::deltat::LoadedCount(), 3);
    EXPECT_EQ(IsValidJdtFile(), 0);
    // A step function: each entry holds from its date up to the newer one.
    EXPECT_EQ(DeltaTDays(2440000.5), 0.00050);
    EXPECT_EQ(DeltaTDays(2449999.5), 0.00050);
    EXPECT_EQ(DeltaTDays(2450000.5), 0.00070);
    EXPECT_EQ(DeltaTDays(2455000.0), 0.00070);
    // The bisection keeps the newest entry's own date in the step below it;
    // the newest value holds from just after that date.
    EXPECT_EQ(DeltaTDays(2460000.5), 0.00070);
    EXPECT_EQ(DeltaTDays(2460000.6), 0.00080);
    EXPECT_EQ(UtToDt(2455000.0), 2455000.0 + 0.00070);
}

TEST_F(DeltaTFile, Version2StoresTaiMinusUtcAndIsTheValidFormat) {
    const std::string path = Write("v2.dat", "# KVXJDT VER.2\n2457754.5 37\n2457204.5 36\n2456109.5 35\n");
    ASSERT_TRUE(kvx::deltat::LoadFile(path.c_str()));
    EXPECT_EQ(kvx::deltat::LoadedVersion(), 2);
    EXPECT_EQ(IsValidJdtFile(), 1);
    EXPECT_EQ(DeltaTDays(2457000.0), (35.0 + 32.184) / 86400.0);
    EXPECT_EQ(DeltaTDays(2457500.0), (36.0 + 32.184) / 86400.0);
    EXPECT_EQ(DeltaTDays(2458000.0), (37.0 + 32.184) / 86400.0);
    kvx::deltat::Release();
    EXPECT_EQ(IsValidJdtFile(), 0);
    EXPECT_NEAR(DeltaTSeconds(2458000.0), 70.33, 0.01);  // back to the polynomial
}

TEST_F(DeltaTFile, Version3LoadsButIsNotTheValidFormat) {
    const std::string path = Write("v3.dat", "# KVXJDT VER.3\n2457754.5 37\n");
    ASSERT_TRUE(kvx::deltat::LoadFile(path.c_str()));
    EXPECT_EQ(kvx::deltat::LoadedVersion(), 3);
    EXPECT_EQ(IsValidJdtFile(), 0);
    EXPECT_EQ(DeltaTDays(2457754.5), (37.0 + 32.184) / 86400.0);
}

TEST_F(DeltaTFile, HeaderOnlyFileBehavesAsNoTable) {
    const std::string path = Write("empty.dat", "# KVXJDT VER.2\n");
    EXPECT_TRUE(kvx::deltat::LoadFile(path.c_str()));
    EXPECT_EQ(kvx::deltat::LoadedCount(), 0);
    kvx::deltat::Release();
    const double builtIn = DeltaTDays(2451545.0);
    ASSERT_TRUE(kvx::deltat::LoadFile(path.c_str()));
    EXPECT_EQ(DeltaTDays(2451545.0), builtIn);
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
    for (int i = 1; i < n; ++i) {
        const double jd = 2460000.5 - 30.0 * i;
        const double value = ((n - 1 - i) + 32.184) / 86400.0;
        EXPECT_EQ(DeltaTDays(jd), value) << i;              // on the entry itself
        EXPECT_EQ(DeltaTDays(jd + 29.5), value) << i;       // up to the next newer one
        if (i + 1 < n) {  // just before it: the older entry
            EXPECT_EQ(DeltaTDays(jd - 0.5), ((n - 2 - i) + 32.184) / 86400.0) << i;
        }
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
