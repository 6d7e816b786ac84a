// Orbit propagation: the near-Earth model against python3-sgp4 configured
// like it, the full model against python3-sgp4 on the 2006 verification
// set, and the rules of the exported functions.
#include <gtest/gtest.h>

#include <cmath>

#include "asat/asat_test_util.h"
#include "asat/sgp4.h"
#include "support/reference.h"

namespace {

using kvx::asat::InitNearEarth;
using kvx::asat::NearEarth;
using kvx::asat::PropagateFull;
using kvx::asat::PropagateNearEarth;
using namespace kvx::test;

const std::vector<std::string> kStateColumns = {"set", "t", "err", "x", "y", "z", "vx", "vy", "vz"};

TEST(ASatPropagation, NearEarthModelMatchesConfiguredReferenceOverSixDays) {
    const auto sets = ReadTleFile("asat_near_sets.tle");
    const Reference ref("asat_near_3days.txt", kStateColumns);
    // Both sides run the same equations in a different order of operations
    // (and the report's a0'' = a0 / (1 - d0) against (ke / n0'')^(2/3),
    // equal to third order in d0: centimetres); GEO and Molniya sets
    // integrate the same J2 secular rates.
    Comparison cmp({{"position_m", 1.0, "same near-Earth equations and constants"},
                    {"velocity_mm_s", 1.0, "same near-Earth equations and constants"}});
    int failed = 0;
    for (const auto &row : ref) {
        const auto &elm = sets.at(static_cast<size_t>(row["set"]));
        NearEarth m;
        InitNearEarth(elm, &m);
        double r[3], v[3];
        const bool ok = PropagateNearEarth(m, row["t"], r, v);
        if (row["err"] != 0.0) {
            // The 127 km perigee set has sunk below the Earth's surface
            // after 2500 minutes: the reference flags those rows; the
            // required model has no such test and carries on.
            EXPECT_TRUE(ok) << row.Label();
            ++failed;
            cmp.Skip();
            continue;
        }
        ASSERT_TRUE(ok) << row.Label();
        const double rr[3] = {row["x"], row["y"], row["z"]}, vv[3] = {row["vx"], row["vy"], row["vz"]};
        cmp.Add("position_m", Dist3(r, rr) * 1000.0, row);
        cmp.Add("velocity_mm_s", Dist3(v, vv) * 1e6, row);
    }
    EXPECT_EQ(cmp.Skipped(), failed);
    EXPECT_EQ(failed, 5);
    cmp.Check();
}

TEST(ASatPropagation, FullModelMatchesVerificationSetToTheMillimetre) {
    const auto sets = ReadTleFile("asat_sgp4_ver.tle");
    ASSERT_EQ(sets.size(), 33u);
    const Reference ref("asat_full_sgp4_ver.txt", kStateColumns);
    Comparison cmp({{"position_mm", 1.0, "same model and constants; differences are rounding"},
                    {"velocity_um_s", 1.0, "same model and constants; differences are rounding"}});
    int errors = 0;
    for (const auto &row : ref) {
        const auto &elm = sets.at(static_cast<size_t>(row["set"]));
        double r[3], v[3];
        const bool ok = PropagateFull(elm, row["t"], r, v);
        if (row["err"] != 0.0) {
            EXPECT_FALSE(ok) << row.Label() << " error " << row["err"];
            ++errors;
            continue;
        }
        ASSERT_TRUE(ok) << row.Label();
        const double rr[3] = {row["x"], row["y"], row["z"]}, vv[3] = {row["vx"], row["vy"], row["vz"]};
        cmp.Add("position_mm", Dist3(r, rr) * 1e6, row);
        cmp.Add("velocity_um_s", Dist3(v, vv) * 1e9, row);
    }
    EXPECT_GT(errors, 10);  // decays and the error-code cases of the file
    cmp.Check();
}

}  // namespace
