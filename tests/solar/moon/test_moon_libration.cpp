// Librations and the axis angle of the Moon against Meeus' worked example
// and against an independent implementation of the same theory.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "math/constants.h"
#include "solar/moon/moon_libration.h"
#include "test_support.h"

namespace {

using kvx::moon::Libration;

// J. Meeus, Astronomical Algorithms, 2nd ed., example 53.a: 1992 April 12,
// 0h TD, with the Moon of example 47.a. The book prints rho, sigma, tau to
// 1e-5 degree and l, b, P to 0.01 degree.
TEST(MoonLibration, MeeusExample53a) {
    const double t = -0.077221081451;
    const double lambda = 133.162655;  // without nutation
    const double beta = -3.229126;
    const double dpsi = 0.004610;
    const double epsTrue = 23.440636;
    const double alphaApparent = 134.688470;

    const kvx::moon::PhysicalLibration p = kvx::moon::PhysicalLibrationSeries(t);
    EXPECT_NEAR(p.rho, -0.01042, 0.000005);
    EXPECT_NEAR(p.sigma, -0.01574, 0.000005);
    EXPECT_NEAR(p.tau, 0.02673, 0.000005);

    // The book's axis angle uses the apparent right ascension and the true
    // obliquity; given those, only the divisor differs (cos b there, cos beta
    // here), which is undone before comparing.
    const Libration lib = kvx::moon::MoonLibration(t, lambda, beta, alphaApparent, dpsi, epsTrue);
    EXPECT_NEAR(lib.longitude, -1.23, 0.005);
    EXPECT_NEAR(lib.latitude, 4.20, 0.005);
    const double bookP = kvx::RadToDeg(std::asin(std::sin(kvx::DegToRad(lib.axisAngle)) *
                                                 std::cos(kvx::DegToRad(beta)) /
                                                 std::cos(kvx::DegToRad(lib.latitude))));
    EXPECT_NEAR(bookP, 15.08, 0.005);
    // With the divisor of the library the angle is measurably smaller.
    EXPECT_LT(lib.axisAngle, bookP - 0.01);
}

// Reference: the npm package "astronomia" (Meeus ch. 53), 1900-2100 every
// 173 days, evaluated with the library's conventions for the axis angle (see
// tests/reference/moon_libration_astronomia.cjs). The fundamental arguments
// differ slightly (second-edition constants there, first-edition here).
// Reference: the npm package "astronomia" (Meeus ch. 53), 1900-2100 every
// 173 days, with the library's conventions for the axis angle
// (tests/reference/moon_libration_astronomia.cjs). Its fundamental
// arguments are the second edition's: l = A - F, and the two editions' F and
// node part by 2.6e-4 and 1.1e-4 degrees a century from 2000 (T^2 term of
// F), so l differs by up to 3.7e-4 degrees (2.4e-5 within 1990-2010).
TEST(MoonLibration, AgreesWithIndependentImplementation1900To2100) {
    const kvx::test::Reference ref("moon_libration_astronomia.txt", {"jde", "t", "lambda", "beta", "dpsi", "eps",
                                                                     "alpha", "rho", "sigma", "tau", "l", "b", "p"});
    kvx::test::Comparison cmp({{"series_deg", 5e-7, "the same series, rounding"},
                               {"l_deg", 4e-4, "the editions' F and node, see above"},
                               {"l_near_deg", 3e-5, "the editions' F and node within 1990-2010"},
                               {"b_deg", 5e-6, "the same formulas, fundamental arguments"},
                               {"p_deg", 5e-6, "the same formulas, fundamental arguments"}});
    double maxAbsL = 0.0;
    for (const auto &row : ref) {
        const double t = row["t"];
        const kvx::moon::PhysicalLibration p = kvx::moon::PhysicalLibrationSeries(t);
        cmp.Add("series_deg", std::max({std::fabs(p.rho - row["rho"]), std::fabs(p.sigma - row["sigma"]),
                                        std::fabs(p.tau - row["tau"])}), row);
        const Libration lib =
            kvx::moon::MoonLibration(t, row["lambda"], row["beta"], row["alpha"], row["dpsi"], row["eps"]);
        cmp.Add("l_deg", kvx::test::WrapDeg(lib.longitude - row["l"]), row);
        if (std::fabs(t) < 0.1) cmp.Add("l_near_deg", kvx::test::WrapDeg(lib.longitude - row["l"]), row);
        cmp.Add("b_deg", lib.latitude - row["b"], row);
        cmp.Add("p_deg", kvx::test::WrapDeg(lib.axisAngle - row["p"]), row);
        maxAbsL = std::max(maxAbsL, std::fabs(lib.longitude));
    }
    cmp.Check();
    EXPECT_GT(maxAbsL, 6.0);  // the sample reaches the usual +-8 degrees
}

}  // namespace
