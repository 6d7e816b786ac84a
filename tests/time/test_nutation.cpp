// Nutation: the truncated IAU 1980 series against ERFA's full nut80, the
// clamping of the date, and the nutation matrix.
#include <gtest/gtest.h>

#include <cmath>

#include "kvxlib.h"
#include "test_support.h"

namespace {

constexpr double kMas = 1.0 / 3600.0 / 1000.0;  // degrees

TEST(Nutation, SeriesMatchesTheFullIau1980SeriesOfErfaFrom1600To2400) {
    const kvx::test::Reference ref("nutation_nut80.csv", {"jd", "dpsi", "deps"});
    // The 71 dropped terms of the longitude series (|A| < 10, each under
    // 1 mas) and the 86 of the obliquity series, plus the rounded
    // fundamental arguments.
    kvx::test::Comparison cmp({{"dpsi_mas", 9.0, "IAU 1980 series truncated below 1 mas"},
                               {"deps_mas", 6.0, "IAU 1980 series truncated below 1 mas"}});
    for (const auto &row : ref) {
        double n[2];
        GetNutationParam(row["jd"], n);
        cmp.Add("dpsi_mas", (n[0] - row["dpsi"]) / kMas, row);
        cmp.Add("deps_mas", (n[1] - row["deps"]) / kMas, row);
    }
    cmp.Check();
}

TEST(Nutation, DateIsClampedToThirtyCenturiesAroundJ2000) {
    double a[2], b[2];
    GetNutationParam(1355795.0, a);
    GetNutationParam(-1e7, b);
    EXPECT_EQ(a[0], b[0]);
    EXPECT_EQ(a[1], b[1]);
    GetNutationParam(3547295.0, a);
    GetNutationParam(5e7, b);
    EXPECT_EQ(a[0], b[0]);
    EXPECT_EQ(a[1], b[1]);
    GetNutationParam(3547294.0, b);
    EXPECT_NE(a[0], b[0]);
}

TEST(Nutation, MatrixTakesTheMeanEquinoxToTheTrueOne) {
    const double nut[2] = {-13.9236 / 3600.0, -5.7745 / 3600.0};
    const double eps = 23.4392794444;
    double n[9];
    GetNutationMtx(nut, eps, n);
    // The mean equinox (1, 0, 0) lies dpsi along the ecliptic from the true
    // one: in the true frame it is (cos dpsi, cos e sin dpsi, sin e sin dpsi)
    // with e the true obliquity.
    const double kRad = 3.141592653589793 / 180.0;
    const double trueEps = (eps + nut[1]) * kRad, dpsi = nut[0] * kRad;
    EXPECT_NEAR(n[0], std::cos(dpsi), 1e-15);
    EXPECT_NEAR(n[3], std::cos(trueEps) * std::sin(dpsi), 1e-15);
    EXPECT_NEAR(n[6], std::sin(trueEps) * std::sin(dpsi), 1e-15);
    // The ecliptic pole (0, -sin eps, cos eps) of the mean equator is the
    // pole (0, -sin e, cos e) of the true equator.
    const Dc pole{0.0, -std::sin(eps * kRad), std::cos(eps * kRad)};
    Dc truePole;
    RotateDc(&pole, n, &truePole);
    EXPECT_NEAR(truePole.x, 0.0, 1e-16);
    EXPECT_NEAR(truePole.y, -std::sin(trueEps), 1e-15);
    EXPECT_NEAR(truePole.z, std::cos(trueEps), 1e-15);
}

}  // namespace
