// The series of the true phases of the Moon (GetNewMoonJd2000).
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "kvxlib.h"
#include "test_support.h"

namespace {

constexpr double kSecondsPerDay = 86400.0;

// Meeus, Astronomical Algorithms, 2nd ed., examples 49.a and 49.b (computed
// there with the second edition's mean-phase constants, which differ from
// the first edition's used here by about a second in these years; measured
// -0.5 s and -1.3 s).
TEST(MoonPhaseSeries, MeeusWorkedExamples) {
    // New Moon of 1977 February: 1977 February 18, 3h37m42s TD.
    EXPECT_NEAR(GetNewMoonJd2000(-283.0), 2443192.65118, 2.0 / kSecondsPerDay);
    // First last quarter of 2044: 2044 January 21, 23h48m17s TD.
    EXPECT_NEAR(GetNewMoonJd2000(544.75), 2467636.49186, 2.0 / kSecondsPerDay);
}

// Reference: instants at which the apparent geocentric elongation of the
// Moon in ecliptic longitude of date is 0, 90, 180 and 270 degrees, from the
// Swiss Ephemeris (JPL-based files), every principal phase 1900-2100.
TEST(MoonPhaseSeries, AgreesWithReferencePhases1900To2100) {
    const auto rows = kvx::test::ReadRows(kvx::test::ReferencePath("moon_swe_phases.txt"));
    ASSERT_GT(rows.size(), 9800u);
    double maxByPhase[4] = {0, 0, 0, 0};
    double sumSq = 0;
    for (const auto &r : rows) {
        const double k = r[0];
        const double err = (GetNewMoonJd2000(k) - r[1]) * kSecondsPerDay;
        const int phase = static_cast<int>(std::lround((k - std::floor(k)) * 4.0)) % 4;
        maxByPhase[phase] = std::max(maxByPhase[phase], std::fabs(err));
        sumSq += err * err;
    }
    std::printf("phase series vs reference: max |dt| new %.1f s, first quarter %.1f s, full %.1f s, "
                "last quarter %.1f s, rms %.1f s\n",
                maxByPhase[0], maxByPhase[1], maxByPhase[2], maxByPhase[3], std::sqrt(sumSq / rows.size()));
    // Measured: 16.1 s (new), 16.9 s (first quarter), 17.4 s (full), 16.7 s
    // (last quarter), rms 4.8 s.
    for (double m : maxByPhase) EXPECT_LT(m, 20.0);
}

// The fraction of k picks the series; a fraction that is no quarter gives
// the new-Moon series at that k, which runs on smoothly into the next new
// Moon, whereas just inside the 1e-6 window the quarter series is used.
TEST(MoonPhaseSeries, FractionSelectsTheSeries) {
    const double synodic = 29.530588853;
    for (double n : {-500.0, -1.0, 0.0, 37.0, 800.0}) {
        // Fraction 0.999: the new-Moon series, a thousandth of a lunation early.
        EXPECT_NEAR(GetNewMoonJd2000(n + 0.999), GetNewMoonJd2000(n + 1.0) - 0.001 * synodic, 0.003) << n;
        // Within the window the quarter is taken as exact.
        for (double q : {0.25, 0.5, 0.75})
            EXPECT_NEAR(GetNewMoonJd2000(n + q + 5e-7), GetNewMoonJd2000(n + q), 1e-4) << n << " " << q;
    }
    // Negative k: the fraction is k - floor(k), so -0.25 is a last quarter,
    // about 7.4 days before the new Moon of 2000 January 6.
    const double lastQuarter = GetNewMoonJd2000(-0.25);
    EXPECT_NEAR(GetNewMoonJd2000(0.0) - lastQuarter, synodic / 4.0, 1.0);
    // Outside the window a quarter is no longer recognised: the new-Moon
    // corrections replace the quarter's (-0.628 sin M' and W against
    // -0.407 sin M'); over a few lunations that shows as a jump.
    double maxJump = 0;
    for (double n = 0; n < 12; ++n)
        maxJump = std::max(maxJump, std::fabs(GetNewMoonJd2000(n + 0.25 + 2e-6) - GetNewMoonJd2000(n + 0.25)));
    EXPECT_GT(maxJump, 0.1);
}

}  // namespace
