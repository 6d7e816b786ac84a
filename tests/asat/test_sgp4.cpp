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

namespace {

TEST(ASatPropagation, ExportedRulesAndHostileInput) {
    const auto sets = kvx::test::ReadTleFile("asat_near_sets.tle");
    const Elm &geo = sets[7];  // EUTELSAT 1-F1, geostationary, launched 1983
    double r[3], v[3], rf[3];
    // A geostationary set runs through the near-Earth equations: without
    // the resonance and lunar-solar terms it drifts from the full model.
    ASSERT_EQ(CalcASat(geo.epoch + 3.0, &geo, r, v), 1);
    ASSERT_EQ(CalcASatFull(geo.epoch + 3.0, &geo, rf, nullptr), 1);
    EXPECT_GT(kvx::test::Dist3(r, rf), 10.0);
    EXPECT_LT(kvx::test::Dist3(r, rf), 1000.0);
    // Null outputs are skipped; a null set or an instant before the launch
    // year gives 0.
    EXPECT_EQ(CalcASat(geo.epoch, &geo, nullptr, nullptr), 1);
    EXPECT_EQ(CalcASat(geo.epoch, nullptr, r, v), 0);
    EXPECT_EQ(CalcASat(CalcJd(1982, 12, 31.0), &geo, r, v), 0);  // launched 1983
    // Two sets blend linearly by epoch: halfway, the mean of both.
    Elm later = geo;
    later.epoch += 2.0;
    later.meanAnomaly += 0.01;
    double a[3], b[3], mix[3];
    CalcASat(geo.epoch + 1.0, &geo, a, nullptr);
    CalcASat(geo.epoch + 1.0, &later, b, nullptr);
    ASSERT_EQ(CalcASat2(geo.epoch + 1.0, &geo, &later, mix, nullptr), 1);
    for (int k = 0; k < 3; ++k) EXPECT_NEAR(mix[k], 0.5 * (a[k] + b[k]), 1e-9);
    EXPECT_EQ(CalcASat2(geo.epoch, nullptr, &later, mix, nullptr), 0);
    EXPECT_EQ(CalcASat2(geo.epoch, &geo, &geo, mix, nullptr), 1);  // equal epochs: the first set
    // Garbage and non-finite input answer 0 and never hang.
    Elm bad = geo;
    bad.meanMotion = 0.0;
    EXPECT_EQ(CalcASat(geo.epoch, &bad, r, v), 0);
    EXPECT_EQ(CalcASatFull(geo.epoch, &bad, r, v), 0);
    bad = geo;
    bad.eccentricity = 1.5;
    EXPECT_EQ(CalcASatFull(geo.epoch, &bad, r, v), 0);
    EXPECT_EQ(CalcASat(NAN, &geo, r, v), 0);
    EXPECT_EQ(CalcASatFull(NAN, &geo, r, v), 0);
    EXPECT_EQ(CalcASatFull(1e300, &geo, r, v), 0);
    Lla place;
    const double nan3[3] = {NAN, NAN, NAN};
    ASatXyzToLla(2451545.0, nan3, &place);
    ASatPassEvent ev[4];
    const Lla obs{35.0, 139.0, 0.0};
    EXPECT_EQ(ASatRiseSet(geo.epoch, INFINITY, &obs, &bad, -90.0, ev, 4), 0);
}

}  // namespace
