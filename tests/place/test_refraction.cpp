// Atmospheric refraction: Saemundsson's true-to-apparent and Bennett's apparent-to-true formulas (Meeus, Astronomical
// Algorithms, ch. 16).

#include "test_support.h"

namespace {

double Lift(double h) {
    Ad p{12.5, h};
    AtmosphericRefraction(&p, &p);
    EXPECT_EQ(p.a, 12.5);
    return p.d;
}
double Lower(double h) {
    Ad p{12.5, h};
    DeAtmosphericRefraction(&p, &p);
    EXPECT_EQ(p.a, 12.5);
    return p.d;
}

}  // namespace

// Zero at the zenith, Meeus's horizon values (to their printed 0.005'), growing toward the horizon. Saemundsson's
// factor 1.02 (10 C, 1010 hPa), absent from Bennett's: a round trip leaves 1.6-1.96 % above 20 degrees, and the two
// fits differ by up to 3.7" (at 10 degrees).
TEST(Refraction, ZenithHorizonMonotonyAndRoundTrip) {
    EXPECT_LT(std::fabs(Lift(90.0) - 90.0) * 60.0, 1e-7);
    EXPECT_LT(std::fabs(Lower(90.0) - 90.0) * 60.0, 1e-7);
    EXPECT_NEAR(Lift(0.0) * 60.0, 28.98, 0.005);
    EXPECT_NEAR(Lower(0.0) * 60.0, -34.48, 0.005);
    for (double h = 0.0; h <= 90.0; h += 0.25) {
        if (h >= 0.5) { EXPECT_LT(Lift(h) - h, Lift(h - 0.5) - (h - 0.5)) << h; }
        const double back = Lower(Lift(h)), residue = (back - h) / (Lift(h) - h);
        EXPECT_LT(std::fabs(back - h) * 3600.0, 4.0) << h;
        if (h >= 20.0 && h <= 89.0) { EXPECT_TRUE(residue > 0.016 && residue < 0.0196) << h << " " << residue; }
    }
}

// Within 0.1 degree of the formulas' poles (-5.11, -4.4) the correction is taken at the plain altitude (finite); just
// outside it jumps.
TEST(Refraction, GuardBandsUseThePlainAltitude) {
    const double tan = std::tan(-5.11 * kvx::test::kDegToRad);
    EXPECT_DOUBLE_EQ(Lift(-5.11), -5.11 + (1.02 / tan + 0.0019279) / 60.0);
    EXPECT_GT(std::fabs(Lift(-5.11 + 0.1001) - Lift(-5.11 + 0.0999)), 0.15);
    EXPECT_GT(std::fabs(Lower(-4.4 - 0.1001) - Lower(-4.4 - 0.0999)), 0.15);
    EXPECT_TRUE(std::isfinite(Lower(-4.4)));
}
