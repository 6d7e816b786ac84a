// Nutation: the truncated IAU 1980 series against ERFA's full nut80, the
// clamping of the date, and the nutation matrix.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

#include "kvxlib.h"
#include "test_support.h"

namespace {

constexpr double kMas = 1.0 / 3600.0 / 1000.0;  // degrees

TEST(Nutation, SeriesMatchesTheFullIau1980SeriesOfErfaFrom1600To2400) {
    const auto rows = kvx::test::ReadRows(kvx::test::ReferencePath("nutation_nut80.csv"));
    ASSERT_GT(rows.size(), 1000u);
    double worstPsi = 0.0, worstEps = 0.0, sumPsi = 0.0;
    for (const auto &r : rows) {
        double n[2];
        GetNutationParam(r[0], n);
        const double dPsi = std::fabs(n[0] - r[1]) / kMas, dEps = std::fabs(n[1] - r[2]) / kMas;
        // The 71 dropped terms of the longitude series (|A| < 10, each under
        // 1 mas) and the 86 of the obliquity series, plus the rounded
        // fundamental arguments.
        EXPECT_LT(dPsi, 9.0) << "jd " << r[0];
        EXPECT_LT(dEps, 6.0) << "jd " << r[0];
        worstPsi = std::fmax(worstPsi, dPsi);
        worstEps = std::fmax(worstEps, dEps);
        sumPsi += dPsi * dPsi;
    }
    std::printf("[ measured ] nutation vs nut80, 1600-2400: dpsi max %.3f mas (rms %.3f), deps max %.3f mas\n",
                worstPsi, std::sqrt(sumPsi / rows.size()), worstEps);
}

TEST(Nutation, ValuesAtJ2000) {
    double n[2];
    GetNutationParam(2451545.0, n);
    EXPECT_NEAR(n[0] * 3600.0, -13.9236, 0.001);
    EXPECT_NEAR(n[1] * 3600.0, -5.7745, 0.001);
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
    // Bounded amplitudes whatever the date.
    for (double jd : {1355795.0, 2000000.0, 3000000.0, 3547295.0}) {
        GetNutationParam(jd, a);
        EXPECT_LT(std::fabs(a[0]) * 3600.0, 25.0);
        EXPECT_LT(std::fabs(a[1]) * 3600.0, 12.0);
    }
    GetNutationParam(2451545.0, nullptr);
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
    // Orthogonal: the inverse is the transpose.
    double inv[9];
    GetInvMatrix(n, inv);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) EXPECT_NEAR(inv[3 * i + j], n[3 * j + i], 1e-15);
    GetNutationMtx(nullptr, eps, n);
    GetNutationMtx(nut, eps, nullptr);
}

}  // namespace
