// The degree sine and cosine of the series against the long-double library
// (64-bit mantissa; its own reduction of a mod 360 is exact), over the whole
// range the theories use and beyond.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "math/fast_trig.h"

namespace {

// Bound: the published 2^-58 of the polynomials plus the rounding of
// u = r x pi/180 (half an ulp of u, |u| <= pi/4) and of the evaluation,
// about one ulp of 1 in all (2.2e-16); measured maximum 1.55e-16.
constexpr double kBound = 2.3e-16;

long double SinRef(double a, bool cosine) {
    const long double pi = 3.141592653589793238462643383279502884L;
    const long double r = std::fmod(static_cast<long double>(a), 360.0L) * (pi / 180.0L);
    return cosine ? std::cos(r) : std::sin(r);
}

TEST(FastTrig, WithinOneUlpOfOneOverTheWholeRange) {
    std::mt19937_64 rng(19);
    // Spans: one turn, the octant edges, the series' arguments (rates up to
    // ~5e5 deg per century over +-30 centuries), and far beyond.
    const double spans[] = {360.0, 45.5, 1.5e7, 9e14};
    for (double span : spans) {
        std::uniform_real_distribution<double> u(-span, span);
        double worst = 0.0;
        for (int i = 0; i < 200000; ++i) {
            const double a = u(rng);
            const kvx::SinCos f = kvx::FastSinCosDeg(a);
            worst = std::fmax(worst, static_cast<double>(std::fabs(f.s - SinRef(a, false))));
            worst = std::fmax(worst, static_cast<double>(std::fabs(f.c - SinRef(a, true))));
        }
        EXPECT_LE(worst, kBound) << "span " << span;
    }
    // Quadrant and octant boundaries, where the reduction picks n and the
    // sign and swap of the result.
    for (int k = -16; k <= 16; ++k)
        for (double e : {-1e-9, 0.0, 1e-9}) {
            const double a = 45.0 * k + e;
            EXPECT_NEAR(kvx::FastSinDeg(a), static_cast<double>(SinRef(a, false)), kBound) << a;
            EXPECT_NEAR(kvx::FastCosDeg(a), static_cast<double>(SinRef(a, true)), kBound) << a;
        }
}

// The radian variant and the reduction by whole turns, against the
// long-double library (whose sinl reduces double arguments exactly).
TEST(FastTrig, RadiansWithinTheSameBound) {
    std::mt19937_64 rng(23);
    // Spans: one quadrant, one turn, the satellite series' arguments (3.6
    // rad/day over +-1.5e5 days from 1950) and the exact-reduction limit.
    const double spans[] = {0.8, 6.3, 5.4e5, 9.99e5};
    for (double span : spans) {
        std::uniform_real_distribution<double> u(-span, span);
        double worst = 0.0, worstWrap = 0.0;
        for (int i = 0; i < 200000; ++i) {
            const double x = u(rng);
            const kvx::SinCos f = kvx::FastSinCosRad(x);
            const long double s = std::sin(static_cast<long double>(x)), c = std::cos(static_cast<long double>(x));
            worst = std::fmax(worst, static_cast<double>(std::fmax(std::fabs(f.s - s), std::fabs(f.c - c))));
            const double w = kvx::WrapRad(x);
            ASSERT_LE(std::fabs(w), 3.1415926535897936) << x;
            worstWrap = std::fmax(worstWrap, static_cast<double>(std::fabs(std::sin(w) - s)));
        }
        EXPECT_LE(worst, kBound) << "span " << span;
        // The reduced angle is within half an ulp of pi (2.2e-16) of the
        // true one; the double sine of it adds up to 1.2e-16.
        EXPECT_LE(worstWrap, 3.5e-16) << "span " << span;
    }
    // Beyond the limit, and for non-finite input, the library's functions.
    EXPECT_EQ(kvx::FastSinCosRad(3e6).s, std::sin(3e6));
    EXPECT_TRUE(std::isnan(kvx::FastSinCosRad(NAN).c) && std::isnan(kvx::WrapRad(INFINITY)));
}

TEST(FastTrig, ExactValuesAndNonFiniteInput) {
    // The reduction in degrees makes the zeros exact, where sin(pi) is not.
    EXPECT_EQ(kvx::FastSinDeg(180.0), 0.0);
    EXPECT_EQ(kvx::FastCosDeg(-90.0), 0.0);
    EXPECT_EQ(kvx::FastSinDeg(3.6e8), 0.0);
    EXPECT_EQ(kvx::FastCosDeg(270.0), 0.0);
    EXPECT_EQ(kvx::FastSinDeg(90.0), 1.0);
    EXPECT_TRUE(std::isnan(kvx::FastSinDeg(NAN)));
    EXPECT_TRUE(std::isnan(kvx::FastCosDeg(INFINITY)));
    // Beyond the exact-reduction limit the library's sine is used.
    EXPECT_EQ(kvx::FastSinDeg(3e15), std::sin(kvx::DegToRad(3e15)));
}

}  // namespace
