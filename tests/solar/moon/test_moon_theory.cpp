// The built-in lunar theory: its tables against a second publication of the
// same formulas, and its positions against the Swiss Ephemeris.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "math/constants.h"
#include "solar/moon/moon_theory.h"
#include "test_support.h"

namespace {

using kvx::moon::TheoryTerm;

// The J2000.0-epoch form of the same formulas (K. Nagasawa, "Hi no de, hi no
// iri no keisan", Chijin Shokan, 1999): amplitude, phase, rate with T in
// Julian years from J2000.0; all rates positive there.
const TheoryTerm kLongitudeJ2000[] = {
    {1.2740, 100.738, 4133.3536}, {0.6583, 235.700, 8905.3422}, {0.2136, 269.926, 9543.9773},
    {0.1856, 177.525, 359.9905},  {0.1143, 6.546, 9664.0404},   {0.0588, 214.22, 638.635},
    {0.0572, 103.21, 3773.363},   {0.0533, 10.66, 13677.331},   {0.0459, 238.18, 8545.352},
    {0.0410, 137.43, 4411.998},   {0.0348, 117.84, 4452.671},   {0.0305, 312.49, 5131.979},
    {0.0153, 130.84, 758.698},    {0.0125, 141.51, 14436.029},  {0.0110, 231.59, 4892.052},
    {0.0107, 336.44, 13038.696},  {0.0100, 44.89, 14315.966},   {0.0085, 201.5, 8266.71},
    {0.0079, 278.2, 4493.34},     {0.0068, 53.2, 9265.33},      {0.0052, 197.2, 319.32},
    {0.0050, 295.4, 4812.66},     {0.0048, 235.0, 19.34},       {0.0040, 13.2, 13317.34},
    {0.0040, 145.6, 18449.32},    {0.0040, 119.5, 1.33},        {0.0039, 111.3, 17810.68},
    {0.0037, 349.1, 5410.62},     {0.0027, 272.5, 9183.99},     {0.0026, 107.2, 13797.39},
    {0.0024, 211.9, 998.63},      {0.0024, 252.8, 9224.66},     {0.0022, 240.6, 8185.36},
    {0.0021, 87.5, 9903.97},      {0.0021, 175.1, 719.98},      {0.0021, 105.6, 3413.37},
    {0.0020, 55.0, 19.34},        {0.0018, 4.1, 4013.29},       {0.0016, 242.2, 18569.38},
    {0.0012, 339.0, 12678.71},    {0.0011, 276.5, 19208.02},    {0.0009, 218.0, 8586.0},
    {0.0008, 188.0, 14037.3},     {0.0008, 204.0, 7906.7},      {0.0007, 140.0, 4052.0},
    {0.0007, 275.0, 4853.3},      {0.0007, 216.0, 278.6},       {0.0006, 128.0, 1118.7},
    {0.0005, 247.0, 22582.7},     {0.0005, 181.0, 19088.0},     {0.0005, 114.0, 17450.7},
    {0.0005, 332.0, 5091.3},      {0.0004, 313.0, 398.7},       {0.0004, 278.0, 120.1},
    {0.0004, 71.0, 9584.7},       {0.0004, 20.0, 720.0},        {0.0003, 83.0, 3814.0},
    {0.0003, 66.0, 3494.7},       {0.0003, 147.0, 18089.3},     {0.0003, 311.0, 5492.0},
    {0.0003, 161.0, 40.7},        {0.0003, 280.0, 23221.3},
};
const TheoryTerm kLatitudeJ2000[] = {
    {0.2806, 228.235, 9604.0088}, {0.2777, 138.311, 60.0316}, {0.1732, 142.427, 4073.3220},
    {0.0554, 194.01, 8965.374},   {0.0463, 172.55, 698.667},  {0.0326, 328.96, 13737.362},
    {0.0172, 3.18, 14375.997},    {0.0093, 277.4, 8845.31},   {0.0088, 176.7, 4711.96},
    {0.0082, 144.9, 3713.33},     {0.0043, 307.6, 5470.66},   {0.0042, 103.9, 18509.35},
    {0.0034, 319.9, 4433.31},     {0.0025, 196.5, 8605.38},   {0.0022, 331.4, 13377.37},
    {0.0021, 170.1, 1058.66},     {0.0019, 230.7, 9244.02},   {0.0018, 243.3, 8206.68},
    {0.0018, 270.8, 5192.01},     {0.0017, 99.8, 14496.06},   {0.0016, 135.7, 420.02},
    {0.0015, 211.1, 9284.69},     {0.0015, 45.8, 9964.00},    {0.0014, 219.2, 299.96},
    {0.0013, 95.8, 4472.03},      {0.0013, 155.4, 379.35},    {0.0012, 38.4, 4812.68},
    {0.0012, 148.2, 4851.36},     {0.0011, 138.3, 19147.99},  {0.0010, 18.0, 12978.66},
    {0.0008, 70.0, 17870.7},      {0.0008, 326.0, 9724.1},    {0.0007, 294.0, 13098.7},
    {0.0006, 224.0, 5590.7},      {0.0006, 52.0, 13617.3},    {0.0005, 280.0, 8485.3},
    {0.0005, 239.0, 4193.4},      {0.0004, 311.0, 9483.9},    {0.0004, 238.0, 23281.3},
    {0.0004, 81.0, 10242.6},      {0.0004, 13.0, 9325.4},     {0.0004, 147.0, 14097.4},
    {0.0003, 205.0, 22642.7},     {0.0003, 107.0, 18149.4},   {0.0003, 146.0, 3353.3},
    {0.0003, 234.0, 19268.0},
};

// Julian years from 1975 January 0.0 to J2000.0.
constexpr double kEpochShift = (2451545.0 - 2442412.5) / 365.25;

double Wrap180(double a) {
    a = std::fmod(a, 360.0);
    if (a > 180.0) a -= 360.0;
    if (a < -180.0) a += 360.0;
    return a;
}

// The two tabulations round phases and rates to fewer digits the smaller the
// amplitude; this bounds the disagreement that rounding alone can produce.
double RoundingTolerance(double amplitude) {
    if (amplitude >= 0.1) return 0.0025;
    if (amplitude >= 0.01) return 0.025;
    if (amplitude >= 0.001) return 0.25;
    return 2.5;
}

void ExpectSameRows(const TheoryTerm *rows, int n, const TheoryTerm *j2000, size_t nj2000, const char *what) {
    for (int i = 0; i < n; ++i) {
        const TheoryTerm &r = rows[i];
        int matches = 0;
        for (size_t j = 0; j < nj2000; ++j) {
            const TheoryTerm &q = j2000[j];
            if (q.amplitude != r.amplitude || std::fabs(q.rate - std::fabs(r.rate)) > 1e-9) continue;
            ++matches;
            // sin(p + r T) with T = T2000 + shift; a negative rate is turned
            // round with sin(x) = sin(180 - x).
            double phase = r.phase + r.rate * kEpochShift;
            if (r.rate < 0.0) phase = 180.0 - phase;
            EXPECT_NEAR(Wrap180(phase - q.phase), 0.0, RoundingTolerance(r.amplitude))
                << what << " row " << i << " (" << r.amplitude << ", " << r.phase << ", " << r.rate << ")";
        }
        EXPECT_EQ(matches, 1) << what << " row " << i << " has no single counterpart of the same amplitude and rate";
    }
}

TEST(MoonTheoryTable, RowsAgreeWithTheJ2000EpochPublication) {
    ASSERT_EQ(sizeof kLongitudeJ2000 / sizeof kLongitudeJ2000[0], size_t(kvx::moon::kLongitudeTermCount));
    ASSERT_EQ(sizeof kLatitudeJ2000 / sizeof kLatitudeJ2000[0], size_t(kvx::moon::kLatitudeTermCount));
    ExpectSameRows(kvx::moon::kLongitudeTerms, kvx::moon::kLongitudeTermCount, kLongitudeJ2000,
                   std::size(kLongitudeJ2000), "longitude");
    ExpectSameRows(kvx::moon::kLatitudeTerms, kvx::moon::kLatitudeTermCount, kLatitudeJ2000,
                   std::size(kLatitudeJ2000), "latitude");
}

// Each parallax term belongs to one of the longitude inequalities (or to the
// equation of the centre): same rate, same argument up to the sign of the
// coefficient (a phase difference of 0 or 180 degrees).
TEST(MoonTheoryTable, ParallaxArgumentsAreThoseOfLongitudeTerms) {
    std::vector<TheoryTerm> longitude(kvx::moon::kLongitudeTerms,
                                      kvx::moon::kLongitudeTerms + kvx::moon::kLongitudeTermCount);
    longitude.push_back({6.2887, 338.915, 4771.9886});
    for (const TheoryTerm &p : kvx::moon::kParallaxTerms) {
        bool found = false;
        for (const TheoryTerm &l : longitude) {
            if (std::fabs(l.rate - p.rate) > 0.06) continue;
            const double d = Wrap180(p.phase - l.phase);
            if (std::fabs(d) < 0.5 || std::fabs(std::fabs(d) - 180.0) < 0.5) found = true;
        }
        EXPECT_TRUE(found) << "parallax row (" << p.amplitude << ", " << p.phase << ", " << p.rate << ")";
    }
}

struct Extremes {
    double lon = 0, lat = 0, dist = 0, lonSq = 0;
    size_t n = 0;
    void Add(double dLon, double dLat, double dDist) {
        lon = std::max(lon, std::fabs(dLon));
        lat = std::max(lat, std::fabs(dLat));
        dist = std::max(dist, std::fabs(dDist));
        lonSq += dLon * dLon;
        ++n;
    }
    void Print(const char *what) const {
        std::printf("%s: max |dlon cos b| %.1f\", rms %.1f\", max |dlat| %.1f\", max |ddist| %.0f km\n", what, lon,
                    std::sqrt(lonSq / n), lat, dist);
    }
};

// Reference: geometric geocentric Moon from the Swiss Ephemeris (JPL-based
// files), every 29.12 days over 1900-2100; columns jd_tt, longitude and
// latitude on the mean ecliptic and equinox of date, distance (km), and the
// longitude on the true equinox of date.
std::vector<std::vector<double>> ReferenceRows() {
    return kvx::test::ReadRows(kvx::test::ReferencePath("moon_swe_lbr.txt"));
}

// The series in its own time argument. The published formulas give the
// apparent longitude (nutation included) for T counted in dynamical time;
// GetT already adds an approximate Delta T to its argument (1.43e-6 years +
// 0.0317e-6 years per year), so to evaluate the series at the dynamical
// instant jde it is called with jde minus that amount. This isolates the
// quality of the series and of its transcription.
TEST(MoonTheory, SeriesAgreesWithReferenceInItsOwnTimeArgument) {
    const auto rows = ReferenceRows();
    ASSERT_GT(rows.size(), 2000u);
    Extremes e;
    for (const auto &r : rows) {
        const double t = (r[0] - 2442412.5) / 365.25;
        const double shiftDays = (0.0317 * t + 1.43) * 1e-6 * 365.25;
        double lb[2], dist;
        kvx::moon::TheoryLbr(r[0] - shiftDays, lb, &dist);
        e.Add(Wrap180(lb[0] - r[4]) * std::cos(kvx::DegToRad(r[2])) * 3600.0, (lb[1] - r[2]) * 3600.0,
              dist - r[3]);
    }
    e.Print("series, own time argument, vs true equinox");
    // Measured: 15.9" in longitude (rms 4.2"), 10.1" in latitude, 520 km in
    // distance (the eight parallax rows stop at 0.0003 degrees).
    EXPECT_LT(e.lon, 17.0);
    EXPECT_LT(e.lat, 11.0);
    EXPECT_LT(e.dist, 550.0);
}

// As the library evaluates it (T = GetT of the dynamical date), against the
// geometric place on the mean ecliptic and equinox of date.
TEST(MoonTheory, LibraryEvaluationAgainstMeanEclipticOfDate) {
    const auto rows = ReferenceRows();
    ASSERT_GT(rows.size(), 2000u);
    Extremes e;
    for (const auto &r : rows) {
        double lb[2], dist;
        kvx::moon::TheoryLbr(r[0], lb, &dist);
        ASSERT_GE(lb[0], 0.0);
        ASSERT_LT(lb[0], 360.0);
        e.Add(Wrap180(lb[0] - r[1]) * std::cos(kvx::DegToRad(r[2])) * 3600.0, (lb[1] - r[2]) * 3600.0, dist - r[3]);
    }
    e.Print("library evaluation vs mean equinox of date");
    // Measured: 118" in longitude (the nutation in longitude and the Delta T
    // that GetT adds to a dynamical date, 25" in 1975 growing by 0.55" a
    // year), 19" in latitude, 520 km in distance.
    EXPECT_LT(e.lon, 125.0);
    EXPECT_LT(e.lat, 20.0);
    EXPECT_LT(e.dist, 550.0);
}

}  // namespace
