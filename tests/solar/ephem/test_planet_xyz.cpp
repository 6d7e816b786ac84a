// The planet position file: interpolation, block ends, malformed chains ("OnMemory" reads through the byte
// sources of tests/platform and is checked by the start-up scenarios and the threads test).

#include <filesystem>

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

// A one-block Earth file (399): rows k = {s, 2s, -s, 0.5, 0.25, k} from `first` every `step` days, s = 1 at row
// `spike` and 0 elsewhere (native doubles: the test machine is little-endian like the files).
std::string SpikeFile(const std::string &name, double first, double step, int dataRows, int spike) {
    const auto path = std::filesystem::temp_directory_path() / ("kvx_planet_" + name);
    std::ofstream out(path, std::ios::binary);
    const double head[6] = {399, first, first + (dataRows - 1) * step, step, dataRows + 1.0, 48};
    out.write(reinterpret_cast<const char *>(head), 48);
    for (int k = 0; k < dataRows; ++k) {
        const double s = k == spike ? 1.0 : 0.0, row[6] = {s, 2 * s, -s, 0.5, 0.25, k * 1.0};
        out.write(reinterpret_cast<const char *>(row), 48);
    }
    return path.string();
}

// Against the DE file the fixture was made from: odd fractions, both block ends.
TEST(PlanetXyz, InterpolationStaysWithinOneNanoAuOfTheDeFile) {
    Opened f(kPlanet, false);
    ASSERT_EQ(f.ok, 1);
    kvx::jpl::Reader *de = kvx::jpl::Open(TestDataPath("de405_2000.bin").c_str());
    ASSERT_NE(de, nullptr);
    kvx::test::Comparison cmp({{"position_au", 1e-9, "the generator chose each step for 1e-9 AU"},
                               {"velocity_au_d", 1e-9, "the generator chose each step for 1e-9 AU"}});
    // Library code, JPL number and step (days) of the fixture's bodies.
    const struct { int code, jpl; double step; } bodies[] = {{0, 1, 1}, {1, 2, 5}, {-3, 3, 1}, {2, 4, 8}, {3, 5, 8}, {4, 6, 8}, {5, 7, 8}, {6, 8, 8}, {7, 9, 8}};
    for (const auto &b : bodies)
        for (double jd = 2451536.5 + 0.37 * b.step; jd < 2452272.5 - b.step; jd += 2.13 * b.step) {
            double p[3], v[3], pv[6];
            ASSERT_EQ(px::Lookup(b.code, jd, p, v), 1);
            ASSERT_EQ(kvx::jpl::Evaluate(de, jd, b.jpl, 11, pv, true), 0);
            const std::string label = std::to_string(b.code) + " " + std::to_string(jd);
            for (int i = 0; i < 3; ++i) {
                cmp.Add("position_au", p[i] - pv[i], label);
                cmp.Add("velocity_au_d", v[i] - pv[3 + i], label);
            }
        }
    cmp.Check();
    kvx::jpl::Close(de);
}

// Which ten rows interpolate: spike at row 10 (step 2): steps i = 0..4 use rows 0..9 (exactly 0), i = 5 rows 1..10.
// Spike at row 19 of 30: i = 23 uses rows 19..28, from i = 24 rows 20..29. A tabulated date gives its row.
TEST(PlanetXyz, TenRowWindowAtTheEndsOfABlock) {
    const struct { int spike; double jd; bool seesSpike; } cases[] = {{10, 100.5, false}, {10, 103.0, false}, {10, 107.9, false}, {10, 109.9, false},
                 {10, 110.5, true},  {19, 23.5, true},   {19, 24.5, false},  {19, 25.5, false}, {19, 28.9, false}};
    for (const auto &c : cases) {
        Opened f(c.spike == 10 ? SpikeFile("spike.xyz", 100.0, 2.0, 30, 10) : SpikeFile("spike_end.xyz", 0.0, 1.0, 30, 19),
                 false);
        ASSERT_EQ(f.ok, 1);
        double p[3];
        ASSERT_EQ(px::Lookup(-3, c.jd, p, nullptr), 1);
        EXPECT_EQ(p[0] != 0.0, c.seesSpike) << c.jd;
    }
    Opened f(SpikeFile("spike.xyz", 100.0, 2.0, 30, 10), false);
    double p[3], v[3];
    ASSERT_EQ(px::Lookup(-3, 120.0, p, v), 1);
    EXPECT_TRUE(p[0] == 1.0 && p[1] == 2.0 && v[0] == 0.5 && v[2] == 10.0);
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
    // Thirteen good blocks and a fourteenth, unknown, that would refuse the file if read.
    Opened f(TestDataPath("hostile/planet_14_blocks.xyz"), false);
    ASSERT_EQ(f.ok, 1);
    double first, last;
    for (int code : {-3, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}) EXPECT_EQ(px::Range(code, &first, &last), 1) << code;
}

// Lookups answer only where the block and its rows exist; otherwise the output is untouched. Cut blocks fail only the
// lookups that need missing rows.
TEST(PlanetXyz, LookupsAnswerOnlyWhereRowsExist) {
    const struct { const char *name; int body; double jd; int found; } cases[] = {
        {"planet.xyz", -3, 2451536.4, 0},  // before the block
        {"planet.xyz", -3, 2452272.6, 0},  // after it
        {"planet.xyz", -3, NAN, 0},
        {"planet.xyz", 9, 2451545.0, 0},   // no such body in the file
        {"planet.xyz", -3, 2452272.5, 1},  // the last date itself
        {"hostile/planet_short_block.xyz", -3, 2451546.0, 1},  // header says 999 rows, 7 present: a row that is there
        {"hostile/planet_short_block.xyz", -3, 2451548.5, 0},  // the window runs past the end of the file
        {"hostile/planet_short_block.xyz", -3, 2451545.0 + 500, 0},
        {"hostile/planet_few_rows.xyz", -3, 2451546.0, 1},  // four rows: no ten-row window
        {"hostile/planet_few_rows.xyz", -3, 2451546.5, 0},
        {"hostile/planet_partial_row.xyz", -3, 0.0, 0},  // trailing bytes end the chain
        {"hostile/planet_empty.xyz", -3, 0.0, 0},        // no block at all: an empty directory
    };
    for (const auto &c : cases) {
        Opened f(TestDataPath(c.name), false);
        ASSERT_EQ(f.ok, 1) << c.name;
        double p[3] = {7, 7, 7}, v[3];
        EXPECT_EQ(px::Lookup(c.body, c.jd, p, v), c.found) << c.name << " " << c.jd;
        EXPECT_TRUE(c.found || p[0] == 7.0) << c.name << " " << c.jd;
    }
    Opened f(TestDataPath("hostile/planet_empty.xyz"), false);
    double p[2];
    EXPECT_EQ(px::Range(-3, p, p + 1), 0);
}

}  // namespace
