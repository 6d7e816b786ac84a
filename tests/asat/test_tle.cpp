// Two-line elements: the column cuts of ASatTleToElm and the launch and
// lifetime rules of ASatIsElmValid.
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstring>

#include "asat/asat_test_util.h"

static_assert(sizeof(TleLines) == 213);
static_assert(offsetof(Elm, catalogNumber) == 72 && offsetof(Elm, launchYear) == 76 &&
              offsetof(Elm, launchNumber) == 80 && offsetof(Elm, launchPiece) == 84 &&
              offsetof(Elm, inclination) == 88 && offsetof(Elm, meanMotion) == 128 &&
              offsetof(Elm, revNumber) == 136 && offsetof(Elm, epoch) == 144 && offsetof(Elm, reserved) == 152 &&
              offsetof(Elm, ndot) == 160 && offsetof(Elm, bstar) == 168 && offsetof(Elm, ephemerisType) == 176 &&
              offsetof(Elm, elementSetNumber) == 180 && offsetof(Elm, line1) == 184 && offsetof(Elm, line2) == 255 &&
              sizeof(Elm) == 328);
static_assert(sizeof(Lla) == 24 && sizeof(ASatPassEvent) == 24 && offsetof(ASatPassEvent, jd) == 8 &&
              offsetof(ASatPassEvent, altitude) == 16);

namespace {

using kvx::test::ElmFromLines;

const char *kIss1 = "1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927";
const char *kIss2 = "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537";
constexpr double kRad = 3.141592653589793 / 180.0;

TEST(ASatTle, CutsEveryFieldFromItsColumns) {
    const Elm e = ElmFromLines("ISS (ZARYA)      ", kIss1, kIss2);
    EXPECT_STREQ(e.name, "ISS (ZARYA)");
    EXPECT_EQ(e.catalogNumber, 25544);
    EXPECT_EQ(e.launchYear, 98);
    EXPECT_EQ(e.launchNumber, 67);
    EXPECT_EQ(std::memcmp(e.launchPiece, "A  ", 3), 0);
    EXPECT_DOUBLE_EQ(e.inclination, 51.6416 * kRad);
    EXPECT_DOUBLE_EQ(e.raan, 247.4627 * kRad);
    EXPECT_DOUBLE_EQ(e.eccentricity, 0.0006703);
    EXPECT_DOUBLE_EQ(e.argPerigee, 130.5360 * kRad);
    EXPECT_DOUBLE_EQ(e.meanAnomaly, 325.0288 * kRad);
    EXPECT_DOUBLE_EQ(e.meanMotion, 15.72125391 * 2.0 * 3.141592653589793 / 1440.0);
    EXPECT_EQ(e.revNumber, 56353);
    EXPECT_NEAR(e.epoch, 2454465.5 + 264.51782528, 1e-8);  // 2008 January 0.0 + day
    EXPECT_DOUBLE_EQ(e.ndot, -0.00002182);
    EXPECT_DOUBLE_EQ(e.bstar, -0.11606e-4);
    EXPECT_STREQ(e.ephemerisType, "0");
    EXPECT_EQ(e.elementSetNumber, 292);
    EXPECT_STREQ(e.line1, kIss1);
    EXPECT_STREQ(e.line2, kIss2);
}

TEST(ASatTle, EpochPivotsAtFifty) {
    auto epoch = [](const char *field) {
        std::string l1 = "1 00001U 00001A   ";
        l1 += field;
        l1 += "  .00000000  00000-0  00000-0 0    10";
        return ElmFromLines("", l1, "2").epoch;
    };
    EXPECT_DOUBLE_EQ(epoch("24001.50000000"), 2460311.0);  // 2024 January 1, 12 h
    EXPECT_DOUBLE_EQ(epoch("99365.00000000"), 2451543.5);  // 1999 December 31, 0 h
    EXPECT_DOUBLE_EQ(epoch("50001.00000000"), 2433282.5);  // 1950 January 1
    EXPECT_DOUBLE_EQ(epoch("49001.00000000"), 2469442.5);  // 2049 January 1
}

TEST(ASatTle, GarbageAndShortLinesGiveZerosAndNamesLoseTrailingBlanks) {
    const Elm g = ElmFromLines("      ", "1 xxxxxU garbage", "2 short");
    EXPECT_STREQ(g.name, "");
    EXPECT_EQ(g.catalogNumber, 0);
    EXPECT_EQ(g.inclination, 0.0);
    EXPECT_EQ(g.meanMotion, 0.0);
    EXPECT_EQ(g.bstar, 0.0);
    EXPECT_STREQ(g.line2, "2 short");
    // The drag field's mantissa carries an implied leading point.
    const Elm d = ElmFromLines("X", "1 00001U 00001A   24001.50000000  .00000000  00000-0  12345-4 0    10", "2");
    EXPECT_DOUBLE_EQ(d.bstar, 0.12345e-4);
    // Null pointers are ignored.
    EXPECT_EQ(ASatTleToElm(nullptr, nullptr), 1);
}

Elm DragSet(double revPerDay, double bstar) {
    Elm e{};
    e.launchYear = 98;
    e.meanMotion = revPerDay * 2.0 * 3.141592653589793 / 1440.0;
    e.bstar = bstar;
    e.epoch = 2460311.0;
    return e;
}

TEST(ASatValidity, LaunchYearPivotsAtFiftyFive) {
    Elm e = DragSet(15.0, 0.0);
    e.launchYear = 57;
    EXPECT_EQ(ASatIsElmValid(CalcJd(1957, 1, 1.0), &e), 1);
    EXPECT_EQ(ASatIsElmValid(CalcJd(1956, 12, 31.9), &e), 0);
    e.launchYear = 55;  // 2055
    EXPECT_EQ(ASatIsElmValid(CalcJd(2054, 12, 31.0), &e), 0);
    EXPECT_EQ(ASatIsElmValid(CalcJd(2055, 1, 1.0), &e), 1);
    EXPECT_EQ(ASatIsElmValid(2451545.0, nullptr), 0);
}

TEST(ASatValidity, DragLifetimeFromThePerigeeQuantity) {
    // Negative or small drag never expires (the ISS set's -0.11606e-4).
    const Elm iss = ElmFromLines("ISS", kIss1, kIss2);
    EXPECT_EQ(ASatIsElmValid(iss.epoch + 3650.0, &iss), 1);
    // n = 16 rev/day, e = 0: q = 42241.09773 / 64 = 660.017 (upper piece):
    // (3 q - 1920) / 0.001 / 1440 = 41.70 days either side of the epoch.
    const Elm upper = DragSet(16.0, 0.001);
    EXPECT_EQ(ASatIsElmValid(upper.epoch + 41.6, &upper), 1);
    EXPECT_EQ(ASatIsElmValid(upper.epoch - 41.6, &upper), 1);
    EXPECT_EQ(ASatIsElmValid(upper.epoch + 41.8, &upper), 0);
    // n = 16.2: q = 647.87 (lower piece): (0.75 q - 474.5) / 0.001 / 1440 = 7.90 days.
    const Elm lower = DragSet(16.2, 0.001);
    EXPECT_EQ(ASatIsElmValid(lower.epoch + 7.8, &lower), 1);
    EXPECT_EQ(ASatIsElmValid(lower.epoch + 8.0, &lower), 0);
    // A lifetime under a day counts as one day.
    const Elm shortLife = DragSet(16.2, 0.05);
    EXPECT_EQ(ASatIsElmValid(shortLife.epoch + 0.99, &shortLife), 1);
    EXPECT_EQ(ASatIsElmValid(shortLife.epoch + 1.01, &shortLife), 0);
    // q >= 680: n = 15.5 gives 692.2, no expiry.
    const Elm high = DragSet(15.5, 0.001);
    EXPECT_EQ(ASatIsElmValid(high.epoch + 1000.0, &high), 1);
    EXPECT_EQ(ASatIsElmValid(NAN, &upper), 0);
}

}  // namespace
