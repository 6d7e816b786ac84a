// The Moon's age (GetMoonAge).
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "kvxlib.h"
#include "test_support.h"

namespace {

// Against the reference new Moons (Swiss Ephemeris, 1900-2100): an hour after
// each the age is an hour, an hour before it close to a whole lunation (the
// previous one's length), up to the series' own error (under 20 s).
TEST(MoonAge, AroundReferenceNewMoons) {
    const auto rows = kvx::test::ReadRows(kvx::test::ReferencePath("moon_swe_phases.txt"));
    ASSERT_FALSE(rows.empty());
    const double tol = 20.0 / 86400.0;
    double previous = 0;
    int checked = 0;
    for (const auto &r : rows) {
        if (r[0] != std::floor(r[0])) continue;  // new Moons only
        const double nm = r[1];
        EXPECT_NEAR(GetMoonAge(nm + 1.0 / 24.0, nullptr, nullptr), 1.0 / 24.0, tol) << r[0];
        if (previous != 0) {
            EXPECT_NEAR(GetMoonAge(nm - 1.0 / 24.0, nullptr, nullptr), nm - previous - 1.0 / 24.0, tol) << r[0];
            // Mid-lunation: 14 days after the previous new Moon.
            EXPECT_NEAR(GetMoonAge(previous + 14.0, nullptr, nullptr), 14.0, tol) << r[0];
        }
        previous = nm;
        ++checked;
    }
    EXPECT_GT(checked, 2400);
}

// Over the whole validity range (about 1000 BC to 5000 AD) the lunation
// estimate picks the right new Moon: the age stays within one lunation.
TEST(MoonAge, WithinOneLunationOverTheSeriesRange) {
    double lo = 1e9, hi = -1e9;
    for (double jd = 1356173.0; jd <= 3547272.0; jd += 9.123) {
        const double age = GetMoonAge(jd, nullptr, nullptr);
        lo = std::min(lo, age);
        hi = std::max(hi, age);
    }
    EXPECT_GE(lo, 0.0);
    EXPECT_LT(hi, 29.9);
    EXPECT_GT(hi, 29.2);
}

// At the ends of the validity range the series still answers; beyond it the
// age comes from the two records' longitudes.
TEST(MoonAge, OutsideTheSeriesRangeFromTheRecords) {
    BodyPos sun{}, moon{};
    KVX_BODYPOS_FIELD(sun, 5) = 350.0;
    KVX_BODYPOS_FIELD(moon, 11) = 10.0;  // 20 degrees east of the Sun
    const double expected = 20.0 / 12.190749056850848;
    EXPECT_DOUBLE_EQ(GetMoonAge(1356172.5, &sun, &moon), expected);
    EXPECT_DOUBLE_EQ(GetMoonAge(3547272.5, &sun, &moon), expected);
    KVX_BODYPOS_FIELD(moon, 11) = 340.0;  // 10 degrees west: nearly a lunation
    EXPECT_DOUBLE_EQ(GetMoonAge(1000000.0, &sun, &moon), 350.0 / 12.190749056850848);
    EXPECT_EQ(GetMoonAge(1000000.0, nullptr, &moon), 0.0);
    EXPECT_EQ(GetMoonAge(1000000.0, &sun, nullptr), 0.0);

    // Inside the range (both ends included) the records are not read.
    for (double jd : {1356173.0, 3547272.0}) {
        const double age = GetMoonAge(jd, nullptr, nullptr);
        EXPECT_GE(age, 0.0) << jd;
        EXPECT_LT(age, 29.9) << jd;
    }
}

}  // namespace
