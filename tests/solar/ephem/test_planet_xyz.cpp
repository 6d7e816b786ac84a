// The planet position file: exact rows at tabulated dates, the ten-point interpolation against the DE file
// it was made from, the choice of rows at the block ends, OnMemory, and the
// refusal of malformed chains.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "kvxlib.h"
#include "solar/ephem/jpl_de.h"
#include "solar/ephem/planet_xyz.h"
#include "test_support.h"

namespace {

using kvx::test::TestDataPath;
namespace px = kvx::planetxyz;

const std::string kPlanet = TestDataPath("planet.xyz");

struct Opened {
    int ok;
    Opened(const std::string &path, bool onMemory) : ok(px::Open(path.c_str(), onMemory)) {}
    ~Opened() { px::Release(); }
};

// Rows of six doubles written as they are (the test machine is little-endian
// like the files).
std::string WriteRows(const std::string &name, const std::vector<std::vector<double>> &rows) {
    const auto path = std::filesystem::temp_directory_path() / ("kvx_planet_" + name);
    std::ofstream out(path, std::ios::binary);
    for (const auto &r : rows) out.write(reinterpret_cast<const char *>(r.data()), 48);
    return path.string();
}

std::vector<std::vector<double>> Block(double number, double first, double step, int dataRows,
                                       double (*value)(int k), double rowSize = 48) {
    std::vector<std::vector<double>> rows{{number, first, first + (dataRows - 1) * step, step, dataRows + 1.0, rowSize}};
    for (int k = 0; k < dataRows; ++k) rows.push_back({value(k), 2.0 * value(k), -value(k), 0.5, 0.25, k * 1.0});
    return rows;
}

// Bodies of the fixture: library code, JPL number, step in days.
struct Body {
    int code, jpl;
    double step;
};
const Body kBodies[] = {{0, 1, 1}, {1, 2, 5}, {-3, 3, 1}, {2, 4, 8}, {3, 5, 8},
                        {4, 6, 8}, {5, 7, 8}, {6, 8, 8},  {7, 9, 8}};

TEST(PlanetXyz, TabulatedDatesReturnTheStoredRow) {
    Opened f(kPlanet, false);
    ASSERT_EQ(f.ok, 1);
    // Mercury is the first block: its row k is file row 1 + k.
    std::ifstream in(kPlanet, std::ios::binary);
    for (int k : {0, 3, 100, 736}) {
        double row[6];
        in.seekg((1 + k) * 48);
        in.read(reinterpret_cast<char *>(row), 48);
        double p[3], v[3];
        ASSERT_EQ(px::Lookup(0, 2451536.5 + k, p, v), 1);
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(p[i], row[i]) << k;
            EXPECT_EQ(v[i], row[3 + i]) << k;
        }
    }
}

// The generator chose each body's step for a ten-point interpolation error
// below 1e-9 AU against the DE file it was made from; mid-points and odd
// fractions, the window at both ends of the block included.
TEST(PlanetXyz, InterpolationStaysWithinOneNanoAuOfTheDeFile) {
    Opened f(kPlanet, false);
    ASSERT_EQ(f.ok, 1);
    kvx::jpl::Reader *de = kvx::jpl::Open(TestDataPath("de405_2000.bin").c_str());
    ASSERT_NE(de, nullptr);
    kvx::test::Comparison cmp({{"position_au", 1e-9, "the generator's tolerance"},
                               {"velocity_au_d", 1e-9, "the generator's tolerance"}});
    for (const auto &b : kBodies)
        for (double jd = 2451536.5 + 0.37 * b.step; jd < 2452272.5 - b.step; jd += 2.13 * b.step) {
            double p[3], v[3], pv[6];
            ASSERT_EQ(px::Lookup(b.code, jd, p, v), 1);
            ASSERT_EQ(kvx::jpl::Evaluate(de, jd, b.jpl, 11, pv, true), 0);
            for (int i = 0; i < 3; ++i) {
                cmp.Add("position_au", p[i] - pv[i], std::to_string(b.code) + " " + std::to_string(jd));
                cmp.Add("velocity_au_d", v[i] - pv[3 + i], std::to_string(b.code) + " " + std::to_string(jd));
            }
        }
    cmp.Check();
    kvx::jpl::Close(de);
}

TEST(PlanetXyz, DatesOutsideTheBlockOrAbsentBodiesAnswerNothing) {
    Opened f(kPlanet, false);
    double p[3] = {7, 7, 7};
    EXPECT_EQ(px::Lookup(-3, 2451536.4, p, nullptr), 0);
    EXPECT_EQ(px::Lookup(-3, 2452272.6, p, nullptr), 0);
    EXPECT_EQ(px::Lookup(-3, std::nan(""), p, nullptr), 0);
    EXPECT_EQ(px::Lookup(9, 2451545.0, p, nullptr), 0);
    EXPECT_EQ(p[0], 7.0);
    EXPECT_EQ(px::Lookup(-3, 2452272.5, p, nullptr), 1);  // the last date itself
}

// A block whose row k holds a spike at k = 10 only: interpolation over rows
// 0..9 gives exactly 0, any window that includes row 10 does not.
double Spike10(int k) { return k == 10 ? 1.0 : 0.0; }
double Spike19(int k) { return k == 19 ? 1.0 : 0.0; }

TEST(PlanetXyz, TenRowWindowAtTheEndsOfABlock) {
    const std::string path = WriteRows("spike.xyz", Block(399, 100.0, 2.0, 30, Spike10));
    Opened f(path, false);
    ASSERT_EQ(f.ok, 1);
    double p[3];
    // Steps 0 to 4 (i < 4, and i - 4 = 0) use rows 0..9.
    for (double jd : {100.5, 103.0, 107.9, 109.9}) {
        ASSERT_EQ(px::Lookup(-3, jd, p, nullptr), 1);
        EXPECT_EQ(p[0], 0.0) << jd;
    }
    ASSERT_EQ(px::Lookup(-3, 110.5, p, nullptr), 1);  // i = 5: rows 1..10
    EXPECT_NE(p[0], 0.0);
    // The tabulated date of row 10 is the row itself.
    ASSERT_EQ(px::Lookup(-3, 120.0, p, nullptr), 1);
    EXPECT_EQ(p[0], 1.0);
    EXPECT_EQ(p[1], 2.0);
}

TEST(PlanetXyz, LastFiveStepsUseTheLastTenRows) {
    // 30 data rows: the last ten are rows 20..29; a spike at row 19 is seen
    // only by windows that start at 19 or before (i - 4 <= 19, i <= 23).
    const std::string path = WriteRows("spike_end.xyz", Block(399, 0.0, 1.0, 30, Spike19));
    Opened f(path, false);
    ASSERT_EQ(f.ok, 1);
    double p[3];
    ASSERT_EQ(px::Lookup(-3, 23.5, p, nullptr), 1);  // i = 23: rows 19..28
    EXPECT_NE(p[0], 0.0);
    for (double jd : {24.5, 25.5, 28.9}) {  // i + 5 >= 30 from i = 25; i = 24 gives rows 20..29 too
        ASSERT_EQ(px::Lookup(-3, jd, p, nullptr), 1);
        EXPECT_EQ(p[0], 0.0) << jd;
    }
}

TEST(PlanetXyz, OnMemoryClosesTheFileButKeepsAnswering) {
    double direct[3], fromImage[3], v[3];
    {
        Opened f(kPlanet, false);
        ASSERT_EQ(px::Lookup(5, 2451789.3, direct, nullptr), 1);
    }
    Opened f(kPlanet, true);
    ASSERT_EQ(f.ok, 1);
    EXPECT_EQ(IsValidPlanetXyzFile(), 0);
    ASSERT_EQ(px::Lookup(5, 2451789.3, fromImage, v), 1);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(direct[i], fromImage[i]);
    px::Release();
    EXPECT_EQ(px::Lookup(5, 2451789.3, fromImage, v), 0);
    EXPECT_EQ(IsValidPlanetXyzFile(), 0);
}

TEST(PlanetXyz, MalformedChainsAreRefusedWhole) {
    for (const char *name : {"planet_rowsize40.xyz", "planet_unknown_body.xyz", "planet_absurd_rows.xyz",
                             "planet_nan_header.xyz", "planet_zero_step.xyz", "planet_negative_rows.xyz"}) {
        Opened f(TestDataPath("hostile/") + name, false);
        EXPECT_EQ(f.ok, 0) << name;
        EXPECT_EQ(IsValidPlanetXyzFile(), 0) << name;
        double p[3];
        EXPECT_EQ(px::Lookup(-3, 2451546.0, p, nullptr), 0) << name;
        EXPECT_EQ(px::Range(-3, p, p + 1), 0) << name;
    }
    EXPECT_EQ(px::Open("/nonexistent/planet.xyz", false), 0);
}

TEST(PlanetXyz, AFourteenthBlockIsNeverRead) {
    // Thirteen good blocks (every body) and a fourteenth with an unknown
    // number, which would refuse the file if it were read.
    Opened f(TestDataPath("hostile/planet_14_blocks.xyz"), false);
    ASSERT_EQ(f.ok, 1);
    double first, last;
    for (int code : {-3, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}) EXPECT_EQ(px::Range(code, &first, &last), 1) << code;
}

TEST(PlanetXyz, TruncatedOrShortBlocksFailLookupsOnly) {
    double p[3], v[3];
    {
        Opened f(TestDataPath("hostile/planet_short_block.xyz"), false);  // header says 999 rows, 7 present
        ASSERT_EQ(f.ok, 1);
        EXPECT_EQ(px::Lookup(-3, 2451546.0, p, v), 1);   // a row that is there
        EXPECT_EQ(px::Lookup(-3, 2451548.5, p, v), 0);   // the window runs past the end of the file
        EXPECT_EQ(px::Lookup(-3, 2451545.0 + 500, p, v), 0);
    }
    {
        Opened f(TestDataPath("hostile/planet_few_rows.xyz"), false);  // four rows: no ten-row window
        ASSERT_EQ(f.ok, 1);
        EXPECT_EQ(px::Lookup(-3, 2451546.0, p, v), 1);
        EXPECT_EQ(px::Lookup(-3, 2451546.5, p, v), 0);
    }
    {
        Opened f(TestDataPath("hostile/planet_partial_row.xyz"), false);  // trailing bytes end the chain
        EXPECT_EQ(f.ok, 1);
    }
    {
        Opened f(TestDataPath("hostile/planet_empty.xyz"), false);  // no block at all: an empty directory
        EXPECT_EQ(f.ok, 1);
        EXPECT_EQ(px::Range(-3, p, p + 1), 0);
    }
}

}  // namespace
