// The series' sine and cosine against long double (exact reduction mod
// 360), over the theories' whole range and beyond.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "math/fast_trig.h"

namespace {

// The polynomials' published 2^-58 plus rounding of u = r pi/180 and of the
// evaluation: about one ulp of 1 (2.2e-16); measured 1.55e-16.
constexpr double kBound = 2.3e-16;

long double SinRef(double a, bool cosine) {
    const long double pi = 3.141592653589793238462643383279502884L;
    const long double r = std::fmod(static_cast<long double>(a), 360.0L) * (pi / 180.0L);
    return cosine ? std::cos(r) : std::sin(r);
}

// The worst error of a sine-cosine pair over 200000 uniform arguments in +-span against long double.
template <typename F, typename Ref>
double Worst(std::mt19937_64 &rng, double span, F pair, Ref exact) {
    std::uniform_real_distribution<double> u(-span, span);
    double worst = 0.0;
    for (int i = 0; i < 200000; ++i) {
        const double a = u(rng);
        const kvx::SinCos f = pair(a);
        worst = std::fmax(worst, static_cast<double>(std::fmax(std::fabs(f.s - exact(a, false)), std::fabs(f.c - exact(a, true)))));
    }
    return worst;
}

TEST(FastTrig, WithinOneUlpOfOneOverTheWholeRange) {
    std::mt19937_64 rng(19);
    // Degrees: one turn, the octant edges, the series' arguments (rates up to ~5e5 deg per century over +-30
    // centuries), and far beyond. Radians: one quadrant, one turn, the satellite series' arguments (3.6 rad/day
    // over +-1.5e5 days from 1950) and the exact-reduction limit (sinl reduces exactly).
    auto deg = [](double a) { return kvx::FastSinCosDeg(a); };
    auto rad = [](double x) { return kvx::FastSinCosRad(x); };
    auto radRef = [](double x, bool cosine) { return cosine ? std::cos(static_cast<long double>(x)) : std::sin(static_cast<long double>(x)); };
    for (double span : {360.0, 45.5, 1.5e7, 9e14}) EXPECT_LE(Worst(rng, span, deg, SinRef), kBound) << span;
    for (double span : {0.8, 6.3, 5.4e5, 9.99e5}) EXPECT_LE(Worst(rng, span, rad, radRef), kBound) << span;
    // Octant boundaries, where the reduction picks the sign and swap.
    for (int k = -16; k <= 16; ++k)
        for (double e : {-1e-9, 0.0, 1e-9}) {
            const double a = 45.0 * k + e;
            EXPECT_NEAR(kvx::FastSinDeg(a), static_cast<double>(SinRef(a, false)), kBound) << a;
            EXPECT_NEAR(kvx::FastCosDeg(a), static_cast<double>(SinRef(a, true)), kBound) << a;
        }
    // The reduction by whole turns: half an ulp of pi, plus 1.2e-16 of sin.
    std::uniform_real_distribution<double> u(-9.99e5, 9.99e5);
    for (int i = 0; i < 100000; ++i) {
        const double x = u(rng), w = kvx::WrapRad(x);
        ASSERT_LE(std::fabs(w), 3.1415926535897936) << x;
        ASSERT_LE(std::fabs(std::sin(w) - std::sin(static_cast<long double>(x))), 3.5e-16) << x;
    }
    // Beyond the limit, and for non-finite input, the library's functions.
    EXPECT_EQ(kvx::FastSinCosRad(3e6).s, std::sin(3e6));
    EXPECT_TRUE(std::isnan(kvx::FastSinCosRad(NAN).c) && std::isnan(kvx::WrapRad(INFINITY)));
}

// The reduction in degrees makes the zeros exact, where sin(pi) is not;
// beyond the exact-reduction limit the library's sine is used.
TEST(FastTrig, ExactValuesAndNonFiniteInput) {
    const double cases[][2] = {{kvx::FastSinDeg(180.0), 0.0}, {kvx::FastCosDeg(-90.0), 0.0}, {kvx::FastSinDeg(3.6e8), 0.0},
                               {kvx::FastCosDeg(270.0), 0.0}, {kvx::FastSinDeg(90.0), 1.0},
                               {kvx::FastSinDeg(3e15), std::sin(kvx::DegToRad(3e15))}};
    for (const auto &c : cases) EXPECT_EQ(c[0], c[1]);
    EXPECT_TRUE(std::isnan(kvx::FastSinDeg(NAN)) && std::isnan(kvx::FastCosDeg(INFINITY)));
}

}  // namespace
