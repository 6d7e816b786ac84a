// The place of the Moon: CalcMoonLbr (and, below, CalcMoon2 and CalcMoon).
#include <gtest/gtest.h>

#include <cmath>

#include "kvxlib.h"
#include "solar/moon_theory.h"
#include "test_support.h"

namespace {

// Without any ephemeris file the longitude, latitude and distance are the
// theory's, unchanged.
TEST(CalcMoonLbr, WithoutFilesIsTheTheory) {
    for (double jd : {2415020.5, 2451545.0, 2460000.25, 2488069.5, 1000000.0}) {
        double lb[2], dist, tlb[2], tdist;
        ASSERT_EQ(CalcMoonLbr(jd, lb, &dist), 1);
        kvx::moon::TheoryLbr(jd, tlb, &tdist);
        EXPECT_EQ(lb[0], tlb[0]);
        EXPECT_EQ(lb[1], tlb[1]);
        EXPECT_EQ(dist, tdist);
    }
}

TEST(CalcMoonLbr, NullOutputs) {
    double dist = -1.0;
    EXPECT_EQ(CalcMoonLbr(2451545.0, nullptr, &dist), 0);
    EXPECT_EQ(dist, -1.0);
    double lb[2] = {-1.0, -1.0};
    EXPECT_EQ(CalcMoonLbr(2451545.0, lb, nullptr), 1);
    EXPECT_GE(lb[0], 0.0);
    EXPECT_LT(lb[0], 360.0);
}

}  // namespace
