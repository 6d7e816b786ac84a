// Delta T: the built-in rules against an independent evaluation (Espenak- Meeus, TAI - UTC from ERFA); the delta-T
// file loader and its steps.

#include "test_support.h"
#include "time/delta_t.h"

namespace {

using kvx::deltat::DeltaTDays;

// A TAI - UTC step of a version 2 or 3 file, in days of Delta T.
double Step(double taiUtc) { return (taiUtc + 32.184) / 86400.0; }

TEST(DeltaTBuiltIn, MatchesIndependentEvaluationAndDtToUtInverts) {
    kvx::deltat::Release();
    const kvx::test::Reference ref("delta_t.csv", {"jd", "seconds"});
    kvx::test::Comparison cmp({{"scaled_seconds", 1e-9, "same formulas, other order: |error| / (1 + 1e-4 |value|)"}});
    for (const auto &row : ref)
        cmp.Add("scaled_seconds", (DeltaTDays(row["jd"]) * 86400.0 - row["seconds"]) / (1.0 + 1e-4 * std::fabs(row["seconds"])), row);
    cmp.Check();
    for (double jd : {1000000.25, 2299160.5, 2440000.5, 2451545.0, 2460000.5, 2600000.75}) {
        const double jde = UtToDt(jd);
        EXPECT_EQ(DtToUt(jde), jde - DeltaTDays(jde));  // Delta T at the dynamical argument
        // The round trip misses by the change of Delta T over Delta T itself.
        EXPECT_NEAR(DtToUt(jde), jd, std::fabs(DeltaTDays(jde) - DeltaTDays(jd)) + 1e-9);
    }
}

// Writes a delta-T file into the test's temporary directory and loads it.
class DeltaTFile : public ::testing::Test {
protected:
    bool Load(const std::string &text) {
        const std::string path = kvx::test::TempPath("delta_t.dat");
        std::ofstream(path, std::ios::binary) << text;
        return kvx::deltat::LoadFile(path.c_str());
    }
    void SetUp() override { kvx::deltat::Release(); }
    void TearDown() override { kvx::deltat::Release(); }
};

// Version 1 stores days; 2 and 3 TAI - UTC seconds, only 2 valid. Each entry holds from its date to the newer one's
// (that date in the step below). Lines may end in CR LF and reach 126 characters.
TEST_F(DeltaTFile, VersionsStepsAndLines) {
    const double builtIn = DeltaTDays(2458000.0);
    ASSERT_TRUE(Load("2460000.5 0.00080\n2450000.5\t0.00070\n2440000.5 0.00050\n"));
    EXPECT_EQ(kvx::deltat::LoadedVersion() * 10 + IsValidJdtFile(), 10);
    for (const auto &[jd, days] : {std::pair{2449999.5, 0.0005}, {2450000.5, 0.0007}, {2460000.5, 0.0007}, {2460000.6, 0.0008}})
        EXPECT_EQ(DeltaTDays(jd), days) << jd;
    EXPECT_EQ(UtToDt(2455000.0), 2455000.0 + 0.00070);
    const std::string longLine = "2457754.5 37" + std::string(114, ' ');
    ASSERT_TRUE(Load("# KVXJDT VER.2\r\n" + longLine + "\n2457204.5\t36\r\n"));
    EXPECT_EQ(IsValidJdtFile(), 1);
    EXPECT_EQ(kvx::deltat::LoadedCount(), 2);
    EXPECT_EQ(DeltaTDays(2457500.0), Step(36.0));
    ASSERT_TRUE(Load("# KVXJDT VER.3\n2457754.5 37\n"));
    EXPECT_EQ(kvx::deltat::LoadedVersion() * 10 + IsValidJdtFile(), 30);
    EXPECT_EQ(DeltaTDays(2457754.5), Step(37.0));
    kvx::deltat::Release();
    EXPECT_EQ(IsValidJdtFile(), 0);
    EXPECT_EQ(DeltaTDays(2458000.0), builtIn);
    ASSERT_TRUE(Load("# KVXJDT VER.2\n"));  // a header alone is no table
    EXPECT_TRUE(kvx::deltat::LoadedCount() == 0 && DeltaTDays(2458000.0) == builtIn);
}

TEST_F(DeltaTFile, RejectedFilesKeepNoTable) {
    const double builtIn = DeltaTDays(2455000.0);
    for (const char *text : {
             "# KVXJDT VER.2\n2457754.5 37\n\n2456109.5 35\n",  // a blank line in the middle
             "# KVXJDT VER.0\n2457754.5 37\n",                  // version below 1
             "# KVXJDT VERSION 2\n2457754.5 37\n",              // unknown header
             "",                                                // empty file
             "2457754.5\n",                                     // no second number
         }) {
        EXPECT_FALSE(Load(text)) << text;
        EXPECT_EQ(kvx::deltat::LoadedCount() + IsValidJdtFile(), 0);
        EXPECT_EQ(DeltaTDays(2455000.0), builtIn);
    }
    EXPECT_FALSE(kvx::deltat::LoadFile(kvx::test::TempPath("no_such_file.dat").c_str()));
    EXPECT_FALSE(kvx::deltat::LoadFile(nullptr));
}

// Outside the table: the newest value for five years past it, then and before the oldest entry the built-in rules.
TEST_F(DeltaTFile, FiveYearHoldPastTheNewestEntry) {
    const double polynomial = DeltaTDays(2461826.72), before = DeltaTDays(2449999.5);
    ASSERT_TRUE(Load("# KVXJDT VER.2\n2460000.5 40\n2450000.5 30\n"));
    EXPECT_EQ(std::vector<double>({DeltaTDays(2460000.5 + 1826.2), DeltaTDays(2460000.5 + 1826.2110000000002),
                                   DeltaTDays(2461826.72), DeltaTDays(2449999.5)}),
              std::vector<double>({Step(40.0), Step(40.0), polynomial, before}));
    EXPECT_NE(polynomial, Step(40.0));
}

TEST_F(DeltaTFile, BinarySearchOverALongTableFindsEveryStep) {
    // 137 monthly entries (the array grows several times), newest first, value = index.
    std::string text = "# KVXJDT VER.2\n";
    const int n = 137;
    for (int i = 0; i < n; ++i) text += std::to_string(2460000.5 - 30.0 * i) + " " + std::to_string(n - 1 - i) + "\n";
    ASSERT_TRUE(Load(text));
    ASSERT_EQ(kvx::deltat::LoadedCount(), n);
    for (int i = 1; i + 1 < n; ++i) {
        const double jd = 2460000.5 - 30.0 * i;
        EXPECT_EQ(DeltaTDays(jd), Step(n - 1 - i)) << i;
        EXPECT_EQ(DeltaTDays(jd + 29.5), Step(n - 1 - i)) << i;
        EXPECT_EQ(DeltaTDays(jd - 0.5), Step(n - 2 - i)) << i;
    }
    EXPECT_EQ(DeltaTDays(2460000.5 - 30.0 * (n - 1)), Step(0));  // the oldest entry's own date
}

}  // namespace
