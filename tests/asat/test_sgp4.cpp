// Orbit propagation: the near-Earth model against python3-sgp4 configured like it, the full model against
// python3-sgp4 on the 2006 verification set, and the rules of the exported functions.
#include <gtest/gtest.h>

#include <cmath>

#include "asat/asat_test_util.h"
#include "asat/sgp4.h"
#include "support/reference.h"

namespace {

using namespace kvx::test;

// Every row of a file of states; rows flagged as errors are skipped, their
// outcome checked against flaggedOk. Errors scaled from km and km/s by `scale`.
template <typename Propagate>
void CompareStates(const char *tle, const char *file, Propagate propagate, bool flaggedOk, double scale,
                  Comparison &cmp, const char *position, const char *velocity) {
    const auto sets = ReadTleFile(tle);
    for (const auto &row : Reference(file, {"set", "t", "err", "x", "y", "z", "vx", "vy", "vz"})) {
        double r[3], v[3];
        const bool ok = propagate(sets.at(static_cast<size_t>(row["set"])), row["t"], r, v);
        if (row["err"] != 0.0) {
            EXPECT_EQ(ok, flaggedOk) << row.Label() << " error " << row["err"];
            cmp.Skip();
            continue;
        }
        ASSERT_TRUE(ok) << row.Label();
        cmp.Add(position, Dist3(r, row.From("x")) * scale, row);
        cmp.Add(velocity, Dist3(v, row.From("vx")) * scale * 1000.0, row);
    }
}

TEST(ASatPropagation, ModelsMatchPythonSgp4) {
    // The near-Earth equations in another order (a0'' = a0 / (1 - d0) against
    // (ke / n0'')^(2/3): equal to third order in d0, centimetres).
    Comparison near({{"position_m", 1.0, "same near-Earth equations and constants"},
                     {"velocity_mm_s", 1.0, "same near-Earth equations and constants"}});
    // The 127 km perigee set is below the surface after 2500 minutes: the
    // reference flags those rows; the near-Earth model carries on.
    auto nearEarth = [](const Elm &elm, double t, double *r, double *v) {
        kvx::asat::NearEarth m;
        kvx::asat::InitNearEarth(elm, &m);
        return kvx::asat::PropagateNearEarth(m, t, r, v);
    };
    CompareStates("asat_near_sets.tle", "asat_near_3days.txt", nearEarth, true, 1000.0, near, "position_m",
                  "velocity_mm_s");
    EXPECT_EQ(near.Skipped(), 5);
    near.Check();
    Comparison full({{"position_mm", 1.0, "same model and constants; differences are rounding"},
                     {"velocity_um_s", 1.0, "same model and constants; differences are rounding"}});
    CompareStates("asat_sgp4_ver.tle", "asat_full_sgp4_ver.txt", kvx::asat::PropagateFull, false, 1e6, full,
                  "position_mm", "velocity_um_s");
    EXPECT_GT(full.Skipped(), 10);  // decays and the error-code cases of the verification file
    full.Check();
}

TEST(ASatPropagation, ExportedRulesAndHostileInput) {
    const Elm geo = ReadTleFile("asat_near_sets.tle")[7];  // EUTELSAT 1-F1, geostationary, launched 1983
    double r[3], v[3], rf[3];
    // Without resonance and lunar-solar terms a GEO set drifts from the full model.
    ASSERT_EQ(CalcASat(geo.epoch + 3.0, &geo, r, v), 1);
    ASSERT_EQ(CalcASatFull(geo.epoch + 3.0, &geo, rf, nullptr), 1);
    EXPECT_TRUE(Dist3(r, rf) > 10.0 && Dist3(r, rf) < 1000.0) << Dist3(r, rf);
    // Null outputs are skipped; no set, or before the launch year: 0.
    EXPECT_EQ(CalcASat(geo.epoch, &geo, nullptr, nullptr), 1);
    EXPECT_EQ(CalcASat(geo.epoch, nullptr, r, v) + CalcASat(CalcJd(1982, 12, 31.0), &geo, r, v), 0);
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
    Elm still = geo, open = geo;
    still.meanMotion = 0.0;
    open.eccentricity = 1.5;
    EXPECT_EQ(CalcASat(geo.epoch, &still, r, v) + CalcASatFull(geo.epoch, &still, r, v) +
                  CalcASatFull(geo.epoch, &open, r, v), 0);
    EXPECT_EQ(CalcASat(NAN, &geo, r, v) + CalcASatFull(NAN, &geo, r, v) + CalcASatFull(1e300, &geo, r, v), 0);
    Lla place;
    const double nan3[3] = {NAN, NAN, NAN};
    ASatXyzToLla(2451545.0, nan3, &place);
    ASatPassEvent ev[4];
    const Lla obs{35.0, 139.0, 0.0};
    EXPECT_EQ(ASatRiseSet(geo.epoch, INFINITY, &obs, &open, -90.0, ev, 4), 0);
}

}  // namespace
