// Angle reduction, sexagesimal conversion, position angle and distance,
// interpolation and the integer square root.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "kvxlib.h"

namespace {

TEST(Reduction, RangesAndTheSingleStepForms) {
    EXPECT_EQ(degmal(-1e-20), 0.0);
    EXPECT_EQ(degmal(720), 0.0);
    EXPECT_EQ(degmal(-90), 270.0);
    EXPECT_EQ(degmal180(190), -170.0);
    EXPECT_EQ(degmal180(-190), 170.0);
    EXPECT_EQ(degmal180(700), 340.0);  // one step only
    EXPECT_EQ(degmal2(100), 90.0);     // clamped, not reflected
    EXPECT_EQ(degmal2(-100), -90.0);
    EXPECT_EQ(degmal2(350), -10.0);
    EXPECT_EQ(degmal2(260), -90.0);
    EXPECT_EQ(degmalInt(-1), 359);
    EXPECT_EQ(degmalInt(360), 0);
    EXPECT_EQ(degmalInt(-720), 0);
    EXPECT_NEAR(hourmal(-1.5), 22.5, 1e-12);
    EXPECT_NEAR(hourmal(49), 1.0, 1e-12);
    std::mt19937 rng(3);
    std::uniform_real_distribution<double> u(-1e6, 1e6);
    for (int i = 0; i < 10000; ++i) {
        const double a = u(rng), r = degmal(a), h = hourmal(a);
        ASSERT_GE(r, 0.0);
        ASSERT_LT(r, 360.0);
        ASSERT_GE(h, 0.0);
        ASSERT_LT(h, 24.0);
        ASSERT_NEAR(std::remainder(a - r, 360.0), 0.0, 1e-9);
    }
}

TEST(Sexagesimal, ConversionsBothWays) {
    Deg60 d{};
    DegTo60(-12.5, &d);
    EXPECT_EQ(d.sign, -1);
    EXPECT_EQ(d.deg, 12);
    EXPECT_EQ(d.min, 30);
    EXPECT_NEAR(d.sec, 0.0, 1e-9);
    EXPECT_EQ(DegTo10(d), -12.5);
    DegTo60_2(12.9999, &d);
    EXPECT_EQ(d.deg, 13);
    EXPECT_EQ(d.min, 0);
    DegTo60_2(-0.9999, &d);
    EXPECT_EQ(d.sign, -1);
    EXPECT_EQ(d.deg, 1);
    EXPECT_EQ(d.min, 0);
    DegTo60_2(45.2583, &d);  // 45 15' 29.9" rounds to 45 15'
    EXPECT_EQ(d.deg, 45);
    EXPECT_EQ(d.min, 15);
    Hour60 h{};
    HourTo60(23.5125, &h);
    EXPECT_EQ(h.hour, 23);
    EXPECT_EQ(h.min, 30);
    EXPECT_NEAR(h.sec, 45.0, 1e-9);
    EXPECT_NEAR(HourTo10(h), 23.5125, 1e-12);
    HourTo60(-1.5, &h);  // no sign field: floor hours, negative remainder
    EXPECT_EQ(h.hour, -2);
    EXPECT_EQ(h.min, -30);
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
    EXPECT_NEAR(dist, 10.0, 1e-12);
    // Against the spherical law of cosines at random points.
    std::mt19937 rng(9);
    std::uniform_real_distribution<double> ra(0, 360), dec(-80, 80);
    for (int i = 0; i < 2000; ++i) {
        const Ad a{ra(rng), dec(rng)}, b{ra(rng), dec(rng)};
        Deg2Point(&a, &b, &pa, &dist);
        Dc va, vb;
        AdToDc(&a, &va);
        AdToDc(&b, &vb);
        const double cosd = DcScalarProduct(&va, &vb);
        EXPECT_NEAR(dist, std::acos(cosd) * 180 / M_PI, 1e-6);
        EXPECT_GT(pa, 0.0);
        EXPECT_LE(pa, 360.0);
    }
    Deg2Point(&origin, &east, nullptr, &dist);  // null outputs allowed
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
        const int32_t r = lsqrt(static_cast<int32_t>(n));
        ASSERT_LE(static_cast<int64_t>(r) * r, n) << n;
        ASSERT_GT(static_cast<int64_t>(r + 1) * (r + 1), n) << n;
    }
}

}  // namespace
