// Vectors, angle pairs and matrices (products and norms are exercised by every reference comparison).
#include "test_support.h"

#include <cstring>
#include <random>

namespace {

using kvx::test::FromIdentity;

// Poles and axes, z beyond the unit sphere clamped, the zero vector without a direction (the round trip with AdToDc
// is exercised by every reference comparison of places).
TEST(DcToAd, PolesAxesZeroVectorAndRoundTrip) {
    const struct {
        Dc v;
        double a, d;
    } cases[] = {{{0, 0, 1}, 0, 90}, {{0, -1, 0}, 270, 0}, {{0, 0, 1.0000000001}, 0, 90},
                 {{0, 0, -1.0000000001}, 0, -90}, {{-3, -3, 0}, 225, 0}};
    for (const auto &c : cases) {
        Ad ad{};
        DcToAd(&c.v, &ad);
        if (std::fabs(c.v.z) <= 1.0) {
            EXPECT_EQ(DcToAdR(&c.v, &ad), 1);
        }
        EXPECT_NEAR(ad.a, c.a, 1e-12) << c.v.x << " " << c.v.y << " " << c.v.z;
        EXPECT_EQ(ad.d, c.d);
    }
    Ad ad{12.0, 34.0};
    const Dc zero{0, 0, 0};
    EXPECT_EQ(DcToAdR(&zero, &ad), 0);
    EXPECT_EQ(ad.a, 12.0);
}

// RotatePrm1(a, b) (unused by the library) turns about z by a, then y by b; RotateDc may write its input; the cross
// product is right-handed, in place.
TEST(Rotations, CompositionAndCrossProduct) {
    double p[9], ry[9], rz[9];
    RotatePrm1(30, 40, p);
    RotateY(40, ry);
    RotateZ(30, rz);
    Dc v{0.3, -0.5, 0.8}, a, b;
    RotateDc(&v, rz, &a);
    RotateDc(&a, ry, &a);
    RotateDc(&v, p, &b);
    EXPECT_NEAR(std::fmax(std::fabs(a.x - b.x), std::fmax(std::fabs(a.y - b.y), std::fabs(a.z - b.z))), 0.0, 1e-15);
    Dc ex{1, 0, 0}, ey{0, 1, 0}, c;
    DcOuterProduct(&ex, &ey, &c);
    EXPECT_EQ(std::vector<double>({c.x, c.y, c.z}), (std::vector<double>{0, 0, 1}));
    DcOuterProduct(&ey, &ex, &ey);
    EXPECT_EQ(ey.z, -1.0);
    EXPECT_EQ(atan3(0.0, 0.0), 0.0);
    EXPECT_EQ(atan3(0.0, -1.0), std::atan2(0.0, -1.0));
}

TEST(GetInvMatrix, TimesItsInputIsTheIdentity) {
    std::mt19937 rng(11);
    std::uniform_real_distribution<double> u(-2, 2);
    for (int n = 0; n < 500; ++n) {
        double m[9], inv[9], prod[9];
        for (double &e : m) e = u(rng);
        GetInvMatrix(m, inv);
        MulMatrix(m, inv, prod);
        double scale = 0;
        for (double e : inv) scale = std::fmax(scale, std::fabs(e));
        EXPECT_LE(FromIdentity(prod), 1e-13 * (1 + scale)) << n;  // rounding grows with the inverse's size
    }
    double m[9], inv[9];  // in place
    RotatePrm1(37.5, -12.0, m);
    GetInvMatrix(m, inv);
    GetInvMatrix(m, m);
    EXPECT_EQ(std::memcmp(m, inv, sizeof m), 0);
}

}  // namespace
