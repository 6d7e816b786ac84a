// Nutation: the truncated IAU 1980 series against ERFA's nut80 (the matrix: through the apparent places of the
// coordinate and almanac tests).

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

}  // namespace
