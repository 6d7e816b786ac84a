// Two-line elements: the column cuts of ASatTleToElm and the launch and lifetime rules of ASatIsElmValid.
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstring>

#include "asat/asat_test_util.h"

static_assert(sizeof(TleLines) == 213 && sizeof(Elm) == 328 && sizeof(Lla) == 24 && sizeof(ASatPassEvent) == 24);
static_assert(offsetof(Elm, catalogNumber) == 72 && offsetof(Elm, launchYear) == 76 && offsetof(Elm, launchNumber) == 80 &&
              offsetof(Elm, launchPiece) == 84 && offsetof(Elm, inclination) == 88 && offsetof(Elm, meanMotion) == 128 &&
              offsetof(Elm, revNumber) == 136 && offsetof(Elm, epoch) == 144 && offsetof(Elm, reserved) == 152 &&
              offsetof(Elm, ndot) == 160 && offsetof(Elm, bstar) == 168 && offsetof(Elm, ephemerisType) == 176 &&
              offsetof(Elm, elementSetNumber) == 180 && offsetof(Elm, line1) == 184 && offsetof(Elm, line2) == 255 &&
              offsetof(ASatPassEvent, jd) == 8 && offsetof(ASatPassEvent, altitude) == 16);

namespace {

using kvx::test::ElmFromLines;

const char *kIss1 = "1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927";
const char *kIss2 = "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537";
constexpr double kRad = 3.141592653589793 / 180.0;

TEST(ASatTle, CutsEveryFieldFromItsColumns) {
    const Elm e = ElmFromLines("ISS (ZARYA)      ", kIss1, kIss2);
    EXPECT_STREQ(e.name, "ISS (ZARYA)");  // trailing blanks cut
    EXPECT_EQ(std::memcmp(e.launchPiece, "A  ", 3), 0);
    EXPECT_STREQ(e.ephemerisType, "0");
    EXPECT_STREQ(e.line1, kIss1);
    EXPECT_STREQ(e.line2, kIss2);
    const int ints[][2] = {{e.catalogNumber, 25544}, {e.launchYear, 98}, {e.launchNumber, 67},
                           {e.revNumber, 56353},     {e.elementSetNumber, 292}};
    for (const auto &c : ints) EXPECT_EQ(c[0], c[1]);
    // The drag field's mantissa carries an implied leading point.
    const double reals[][2] = {{e.inclination, 51.6416 * kRad}, {e.raan, 247.4627 * kRad}, {e.eccentricity, 0.0006703},
                               {e.argPerigee, 130.5360 * kRad}, {e.meanAnomaly, 325.0288 * kRad},
                               {e.meanMotion, 15.72125391 * 2.0 * 3.141592653589793 / 1440.0},
                               {e.ndot, -0.00002182},           {e.bstar, -0.11606e-4}};
    for (const auto &c : reals) EXPECT_DOUBLE_EQ(c[0], c[1]) << &c - reals;
    EXPECT_NEAR(e.epoch, 2454465.5 + 264.51782528, 1e-8);  // 2008 January 0.0 + day
    // The two-digit year pivots at 50.
    auto epoch = [](const char *field) {
        return ElmFromLines("", std::string("1 00001U 00001A   ") + field + "  .00000000  00000-0  12345-4 0    10", "2");
    };
    // 2024 January 1 12 h, 1999 December 31, 1950 January 1, 2049 January 1.
    for (const auto &[field, jd] : {std::pair{"24001.50000000", 2460311.0}, {"99365.00000000", 2451543.5},
                                    {"50001.00000000", 2433282.5}, {"49001.00000000", 2469442.5}})
        EXPECT_DOUBLE_EQ(epoch(field).epoch, jd) << field;
    EXPECT_DOUBLE_EQ(epoch("49001.00000000").bstar, 0.12345e-4);
    // Garbage and short lines give zeros; null pointers are ignored.
    const Elm g = ElmFromLines("      ", "1 xxxxxU garbage", "2 short");
    EXPECT_STREQ(g.name, "");
    EXPECT_EQ(g.catalogNumber + g.inclination + g.meanMotion + g.bstar, 0.0);
    EXPECT_STREQ(g.line2, "2 short");
    EXPECT_EQ(ASatTleToElm(nullptr, nullptr), 1);
}

// The launch-year and drag-lifetime cases, each with its worked limit, in tests/data/expected/tle_validity.txt.
TEST(ASatValidity, LaunchYearAndDragLifetime) {
    for (const auto &c : kvx::test::ExpectedRows("tle_validity.txt")) {
        Elm e{};
        e.launchYear = static_cast<int>(c[0]), e.meanMotion = c[1] * 2.0 * 3.141592653589793 / 1440.0, e.bstar = c[2];
        e.epoch = 2460311.0;
        EXPECT_EQ(ASatIsElmValid(c[3], &e), c[4]) << c[0] << " " << c[1] << " " << c[2] << " at " << c[3];
        EXPECT_EQ(ASatIsElmValid(NAN, &e), 0);  // no date
    }
    const Elm iss = ElmFromLines("ISS", kIss1, kIss2);  // negative drag never expires
    EXPECT_EQ(ASatIsElmValid(iss.epoch + 3650.0, &iss), 1);
    EXPECT_EQ(ASatIsElmValid(2451545.0, nullptr), 0);
}

}  // namespace
