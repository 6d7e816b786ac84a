// Angle reduction, sexagesimal conversion, position angle and distance, interpolation and the integer square root.
#include "test_support.h"

#include <cstring>
#include <iterator>
#include <random>

#include "math/constants.h"

namespace {

TEST(Reduction, RangesAndTheSingleStepForms) {
    const struct {
        double got, want;
    } cases[] = {
        {degmal(-1e-20), 0.0}, {degmal(720), 0.0}, {degmal(-90), 270.0}, {degmal180(190), -170.0},
        {degmal180(-190), 170.0}, {degmal180(700), 340.0},  // one step only
        {degmal2(100), 90.0}, {degmal2(-100), -90.0},        // clamped, not reflected
        {degmal2(350), -10.0}, {degmal2(260), -90.0}, {double(degmalInt(-1)), 359.0},
        {double(degmalInt(360)), 0.0}, {double(degmalInt(-720)), 0.0},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(cases[i].got, cases[i].want) << "case " << i;
    EXPECT_NEAR(hourmal(-1.5), 22.5, 1e-12);  // through degrees: rounding
    EXPECT_NEAR(hourmal(49), 1.0, 1e-12);
    std::mt19937 rng(3);
    std::uniform_real_distribution<double> u(-1e6, 1e6);
    for (int i = 0; i < 10000; ++i) {
        const double a = u(rng), r = degmal(a), h = hourmal(a);
        ASSERT_TRUE(r >= 0.0 && r < 360.0 && h >= 0.0 && h < 24.0) << a;
        ASSERT_NEAR(std::remainder(a - r, 360.0), 0.0, 1e-9);
    }
}

// The reduction without the library call must give fmod's bits exactly
// (the exact-formula routines stay bit-identical): random magnitudes up to
// 2^45, the last representable values on both sides of multiples of 360
// (where the quotient rounds across an integer), signed zeros, and the
// non-finite values left to the library.
TEST(Reduction, Fmod360HasTheBitsOfFmod) {
    std::vector<double> in = {0.0, -0.0, 360.0, -360.0, 720.0, -1e-300, 359.99999999999994, 1099511627776.0,
                              -1099511627775.5, INFINITY, -INFINITY, NAN};
    std::mt19937_64 rng(11);
    std::uniform_real_distribution<double> e(-3.0, 45.0 * std::log10(2.0));
    for (int i = 0; i < 20000; ++i) {
        const double m = std::pow(10.0, e(rng));
        in.push_back(i % 2 ? m : -m);
        const double k = 360.0 * std::floor(m / 360.0 + 1.0);
        for (double b : {k, -k}) {
            in.push_back(std::nextafter(b, 0.0));
            in.push_back(std::nextafter(b, 2.0 * b));
        }
    }
    for (double a : in) {
        const double got = kvx::Fmod360(a), want = std::fmod(a, 360.0);
        ASSERT_TRUE(std::memcmp(&got, &want, sizeof got) == 0 || (std::isnan(got) && std::isnan(want)))
            << std::hexfloat << a << " gives " << got << ", fmod " << want;
    }
}

TEST(Sexagesimal, ConversionsBothWays) {
    Deg60 d{};
    DegTo60(-12.5, &d);
    EXPECT_EQ(d.sign * 10000 + d.deg * 100 + d.min, -10000 + 1230);
    EXPECT_NEAR(d.sec, 0.0, 1e-9);
    EXPECT_EQ(DegTo10(d), -12.5);
    // The rounded form: to the nearest minute, away from zero for negatives.
    const struct {
        double in;
        int sign, deg, min;
    } rounded[] = {{12.9999, 1, 13, 0}, {-0.9999, -1, 1, 0}, {45.2583, 1, 45, 15}, {-45.2583, -1, 45, 15}};
    for (const auto &c : rounded) {
        DegTo60_2(c.in, &d);
        EXPECT_EQ(std::vector<int>({d.sign, d.deg, d.min}), std::vector<int>({c.sign, c.deg, c.min})) << c.in;
    }
    Hour60 h{};
    HourTo60(23.5125, &h);
    EXPECT_EQ(h.hour * 100 + h.min, 2330);
    EXPECT_NEAR(h.sec, 45.0, 1e-9);
    EXPECT_NEAR(HourTo10(h), 23.5125, 1e-12);
    HourTo60(-1.5, &h);  // no sign field: floor hours, negative remainder
    EXPECT_EQ(h.hour * 100 + h.min, -230);
    std::mt19937 rng(5);
    std::uniform_real_distribution<double> u(-360, 360);
    for (int i = 0; i < 5000; ++i) {
        const double a = u(rng);
        DegTo60(a, &d);
        ASSERT_NEAR(DegTo10(d), a, 1e-9);
    }
}

TEST(Deg2Point, PositionAngleAndDistance) {
    const Ad origin{0, 0}, north{0, 10}, east{10, 0};
    double pa = 0, dist = 0;
    Deg2Point(&origin, &north, &pa, &dist);
    EXPECT_EQ(pa, 360.0);  // due north is 360, not 0
    EXPECT_NEAR(dist, 10.0, 1e-12);
    Deg2Point(&origin, &east, &pa, &dist);
    EXPECT_NEAR(pa, 90.0, 1e-12);
    EXPECT_NEAR(dist, 10.0, 1e-12);  // elsewhere: round trips with PaDistToAd
}

TEST(Lagrange, ExactForPolynomialsAndZeroForNoPoints) {
    const double xs[4] = {0, 1, 3, 4}, ys[4] = {1, 2, 28, 65};  // x^3 + 1
    EXPECT_NEAR(Lagrange(2, 4, xs, ys), 9.0, 1e-12);
    EXPECT_NEAR(Lagrange(-1, 4, xs, ys), 0.0, 1e-12);
    EXPECT_EQ(Lagrange(2, 0, xs, ys), 0.0);
    EXPECT_EQ(Lagrange(2, 1, xs, ys), 1.0);
}

TEST(Lsqrt, FloorOfTheSquareRoot) {
    EXPECT_EQ(lsqrt(2147483647), 46340);  // the loop below checks every value up to 100000
    EXPECT_EQ(lsqrt(-5), 0);  // undefined input: no division by zero
    for (int64_t n = 0; n < 2147483647; n += (n < 100000 ? 1 : 9973 + n / 1000)) {
        const int64_t r = lsqrt(static_cast<int32_t>(n));
        ASSERT_TRUE(r * r <= n && (r + 1) * (r + 1) > n) << n;
    }
}

}  // namespace
