// Nutation: the truncated IAU 1980 series against ERFA's nut80; the matrix.

#include <tuple>

#include "test_support.h"

using namespace kvx::test;

namespace {

constexpr double kMas = 1.0 / 3600.0 / 1000.0;  // degrees

TEST(Nutation, SeriesMatchesTheFullIau1980SeriesOfErfaFrom1600To2400) {
    const Reference ref("nutation_nut80.csv", {"jd", "dpsi", "deps"});
    Comparison cmp({{"dpsi_mas", 9.0, "71 dropped terms under 1 mas, rounded arguments"},
                    {"deps_mas", 6.0, "86 dropped terms under 1 mas, rounded arguments"}});
    for (const auto &row : ref) {
        double n[2];
        GetNutationParam(row["jd"], n);
        cmp.Add("dpsi_mas", (n[0] - row["dpsi"]) / kMas, row);
        cmp.Add("deps_mas", (n[1] - row["deps"]) / kMas, row);
    }
    cmp.Check();
    // The date is clamped to thirty centuries around J2000.0.
    for (const auto &[edge, beyond, inside] : {std::tuple{1355795.0, -1e7, 1355796.0}, std::tuple{3547295.0, 5e7, 3547294.0}}) {
        double a[2], b[2], c[2];
        GetNutationParam(edge, a);
        GetNutationParam(beyond, b);
        GetNutationParam(inside, c);
        EXPECT_EQ(std::vector<double>({a[0], a[1]}), std::vector<double>({b[0], b[1]}));
        EXPECT_NE(a[0], c[0]);
    }
}

// The mean equinox is (cos dpsi, cos e sin dpsi, sin e sin dpsi) in the true frame (e: true obliquity); the ecliptic
// pole (0, -sin eps, cos eps) of the mean equator is (0, -sin e, cos e) of the true one.
TEST(Nutation, MatrixTakesTheMeanEquinoxToTheTrueOne) {
    const double nut[2] = {-13.9236 / 3600.0, -5.7745 / 3600.0}, eps = 23.4392794444;
    double n[9];
    GetNutationMtx(nut, eps, n);
    const double e = (eps + nut[1]) * kDegToRad, dpsi = nut[0] * kDegToRad;
    const Dc pole{0.0, -std::sin(eps * kDegToRad), std::cos(eps * kDegToRad)};
    Dc truePole;
    RotateDc(&pole, n, &truePole);
    const double got[6] = {n[0], n[3], n[6], truePole.x, truePole.y, truePole.z};
    const double want[6] = {std::cos(dpsi), std::cos(e) * std::sin(dpsi), std::sin(e) * std::sin(dpsi),
                            0.0, -std::sin(e), std::cos(e)};
    // Rounding of unit vectors; the pole's x is a difference of products near 0.
    for (int k = 0; k < 6; ++k) EXPECT_NEAR(got[k], want[k], k == 3 ? 1e-16 : 1e-15) << k;
}

}  // namespace
