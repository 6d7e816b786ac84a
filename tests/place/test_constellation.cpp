// Constellation lookup: the boundary table's integrity, the lookup's edge
// cases, and agreement with PyEphem and Skyfield (Roman 1987, CDS VI/42) at
// thousands of directions away from boundaries.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <vector>

#include "kvxlib.h"
#include "place/constellation_reference.h"
#include "place/constellation_table.h"

namespace {

using kvx::kConstellationBoundCount;
using kvx::kConstellationBounds;

constexpr double kB1875 = 2405888.5;
constexpr double kJ2000 = 2451545.0;

// Codes of the constellations named below, as the derived code table has them.
constexpr int kSgr = 2, kUMi = 36, kSco = 42, kOct = 58, kOph = 64, kSe2 = 88;

int32_t AtB1875(double ra, double dec) {
    const double ad[2] = {ra, dec};
    return GetConstellation(ad, kB1875);
}

// First row, scanning the whole table from the top, that holds the cell.
int FirstMatch(int32_t raSec, int32_t pd) {
    for (int i = 0; i < kConstellationBoundCount; ++i) {
        const auto &r = kConstellationBounds[i];
        if (r.southBound >= pd && r.raLow <= raSec && raSec < r.raHigh) return i;
    }
    return -1;
}

// ---- the table --------------------------------------------------------------

TEST(ConstellationTable, RowsAreWellFormedAndSortedNorthToSouth) {
    std::set<int> codes;
    for (int i = 0; i < kConstellationBoundCount; ++i) {
        const auto &r = kConstellationBounds[i];
        SCOPED_TRACE(i);
        EXPECT_GE(r.southBound, 120);
        EXPECT_LE(r.southBound, 10800);
        EXPECT_GE(r.raLow, 0);
        EXPECT_LT(r.raLow, r.raHigh);
        EXPECT_LE(r.raHigh, 86400);
        EXPECT_GE(r.code, 0);
        EXPECT_LT(r.code, kvx::kConstellationCount);
        codes.insert(r.code);
        if (i > 0) {
            EXPECT_LE(kConstellationBounds[i - 1].southBound, r.southBound);
        }
    }
    EXPECT_EQ(codes.size(), 89u);
    // Rows of one south bound never overlap, so their order cannot change an answer.
    for (int i = 0; i < kConstellationBoundCount; ++i)
        for (int j = i + 1; j < kConstellationBoundCount && kConstellationBounds[j].southBound == kConstellationBounds[i].southBound; ++j)
            EXPECT_FALSE(kConstellationBounds[i].raLow < kConstellationBounds[j].raHigh &&
                         kConstellationBounds[j].raLow < kConstellationBounds[i].raHigh)
                << "rows " << i << " and " << j;
}

// Exhaustive over the integer cells the lookup works in: between two
// consecutive right-ascension edges of the table and two consecutive south
// bounds the set of candidate rows is the same, so one probe per cell covers
// every direction. Every cell must have a first match (no gaps), the south
// cap must be one strip all round, and every row must win some cell (a row
// that never wins would betray a mistyped bound).
TEST(ConstellationTable, StripsTileTheSkyAndEveryRowIsReachable) {
    std::set<int32_t> raEdges;
    std::set<int32_t> pds = {0};
    for (int i = 0; i < kConstellationBoundCount; ++i) {
        raEdges.insert(kConstellationBounds[i].raLow);
        raEdges.insert(kConstellationBounds[i].raHigh);
        pds.insert(kConstellationBounds[i].southBound);
    }
    ASSERT_EQ(*raEdges.begin(), 0);
    ASSERT_EQ(*raEdges.rbegin(), 86400);
    std::vector<bool> won(kConstellationBoundCount, false);
    int cells = 0;
    for (auto it = raEdges.begin(); std::next(it) != raEdges.end(); ++it) {
        for (int32_t pd : pds) {
            const int row = FirstMatch(*it, pd);
            ASSERT_GE(row, 0) << "no strip holds ra " << *it << " s, pd " << pd << "'";
            won[row] = true;
            ++cells;
        }
        EXPECT_EQ(kConstellationBounds[FirstMatch(*it, 10800)].code, kOct);
    }
    EXPECT_GT(cells, 40000);
    for (int i = 0; i < kConstellationBoundCount; ++i) EXPECT_TRUE(won[i]) << "row " << i << " never answers";
}

TEST(ConstellationTable, StartRowShortcutNeverPassesAMatch) {
    for (int32_t pd = 0; pd <= 10800; ++pd) {
        const int start = pd / 541;
        ASSERT_LT(start, kConstellationBoundCount);
        for (int i = 0; i < start; ++i)
            ASSERT_LT(kConstellationBounds[i].southBound, pd) << "pd " << pd << " row " << i;
    }
}

// ---- the lookup at B1875.0 ----------------------------------------------------

TEST(ConstellationLookup, CelestialPoles) {
    for (double ra : {0.0, 90.0, 123.4, 180.0, 270.0, 359.999}) {
        EXPECT_EQ(AtB1875(ra, 90.0), kUMi) << ra;
        EXPECT_EQ(AtB1875(ra, -90.0), kOct) << ra;
    }
}

TEST(ConstellationLookup, DeclinationBeyondThePolesAndNonNumbersGiveMinusOne) {
    EXPECT_EQ(AtB1875(10.0, 90.0000001), -1);
    EXPECT_EQ(AtB1875(10.0, -90.0000001), -1);
    EXPECT_EQ(AtB1875(10.0, 180.0), -1);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(AtB1875(nan, 10.0), -1);
    EXPECT_EQ(AtB1875(10.0, nan), -1);
    EXPECT_EQ(AtB1875(inf, 10.0), -1);
    EXPECT_EQ(AtB1875(-inf, 10.0), -1);
    EXPECT_EQ(GetConstellation(nullptr, kB1875), -1);
}

TEST(ConstellationLookup, RightAscensionReduction) {
    // An exact negative multiple of 360 reduces to 360, i.e. 86400 s, which no
    // strip contains; so does a negative value too small to survive + 360.
    EXPECT_EQ(AtB1875(-360.0, 10.0), -1);
    EXPECT_EQ(AtB1875(-720.0, -45.0), -1);
    EXPECT_EQ(AtB1875(-1e-15, 10.0), -1);
    EXPECT_NE(AtB1875(0.0, 10.0), -1);
    EXPECT_NE(AtB1875(-0.0, 10.0), -1);
    // Otherwise whole turns, either way, change nothing.
    for (double ra : {0.5, 17.25, 100.0, 181.0, 263.9, 359.5})
        for (double dec : {-75.0, -30.5, 0.25, 41.0, 66.6}) {
            const int32_t c = AtB1875(ra, dec);
            EXPECT_EQ(AtB1875(ra + 360.0, dec), c) << ra << " " << dec;
            EXPECT_EQ(AtB1875(ra + 3600.0, dec), c) << ra << " " << dec;
            EXPECT_EQ(AtB1875(ra - 360.0, dec), c) << ra << " " << dec;
            EXPECT_EQ(AtB1875(ra - 7200.0, dec), c) << ra << " " << dec;
        }
    EXPECT_EQ(AtB1875(360.0, 10.0), AtB1875(0.0, 10.0));
}

// Ophiuchus and Sagittarius meet at 17h36m (264 deg) between declinations
// -30 and -29 deg 15'; south of -30 deg lies Scorpius.
TEST(ConstellationLookup, StripEdgesBelongToTheStripTheyOpenAndNorthOfTheSouthBound) {
    EXPECT_EQ(AtB1875(264.0, -29.75), kSgr);  // on the low edge of Sagittarius
    EXPECT_EQ(AtB1875(263.9999, -29.75), kOph);
    // A declination exactly on a south bound belongs to the strip above it;
    // a polar distance less than 1e-7 arcminute past it still does.
    EXPECT_EQ(AtB1875(262.5, -30.0), kOph);
    EXPECT_EQ(AtB1875(262.5, -30.0 - 1e-10), kOph);
    EXPECT_EQ(AtB1875(262.5, -30.0 - 1e-8), kSco);
    EXPECT_EQ(AtB1875(262.5, -29.9999), kOph);
}

// The one strip where the table parts from Roman's: the Ophiuchus row at
// +3 to +4.5 deg ends at 18h25m18s, so the sliver to 18h25m30s is Serpens
// Cauda here while PyEphem and Skyfield both answer Ophiuchus.
TEST(ConstellationLookup, KeepsTheSliverAt18h25mInSerpensCauda) {
    EXPECT_EQ(AtB1875(66324.0 / 240.0, 3.75), kSe2);
    EXPECT_EQ(AtB1875(66317.0 / 240.0, 3.75), kOph);
    EXPECT_EQ(AtB1875(66331.0 / 240.0, 3.75), kSe2);
}

// ---- the epoch and the J2000.0 path ------------------------------------------

int32_t At(double ra, double dec, double epochJd) {
    const double ad[2] = {ra, dec};
    return GetConstellation(ad, epochJd);
}

TEST(ConstellationEpoch, OnlyTheExactB1875ValueSkipsThePrecession) {
    const auto samples = kvx::test::ConstellationSamples("constellation_j2000.csv");
    ASSERT_FALSE(samples.empty());
    const double nan = std::numeric_limits<double>::quiet_NaN();
    int moved = 0;
    for (const auto &s : samples) {
        const int32_t j2000 = At(s.ra, s.dec, kJ2000);
        for (double epoch : {2405888.5000001, 2405888.4999999, 0.0, 2433282.423, 2460000.5, -1e9, nan})
            ASSERT_EQ(At(s.ra, s.dec, epoch), j2000) << s.ra << " " << s.dec << " epoch " << epoch;
        if (At(s.ra, s.dec, kB1875) != j2000) ++moved;
    }
    // 125 years of precession (about 1.7 deg) carry a good share of the
    // directions across a boundary.
    EXPECT_GT(moved, static_cast<int>(samples.size()) / 50);
}

TEST(ConstellationEpoch, PolesAndBeyondThemAtJ2000) {
    // The J2000.0 poles lie 0.7 deg from the B1875.0 ones, well inside Ursa
    // Minor and Octans.
    EXPECT_EQ(At(0.0, 90.0, kJ2000), kUMi);
    EXPECT_EQ(At(250.0, -90.0, kJ2000), kOct);
    // The declination test comes after the precession: a declination just
    // beyond the pole is the point just over it.
    EXPECT_EQ(At(10.0, 90.0000001, kJ2000), kUMi);
    EXPECT_EQ(At(10.0, -90.0000001, kJ2000), kOct);
    EXPECT_EQ(At(10.0, 90.0000001, kB1875), -1);
    EXPECT_EQ(GetConstellation(nullptr, kJ2000), -1);
    EXPECT_EQ(GetConstellation(nullptr, kB1875), -1);
}

// ---- against PyEphem and Skyfield --------------------------------------------

std::map<int, std::string> CodeToPyEphem() {
    std::map<int, std::string> m;
    for (const auto &row : kvx::test::ConstellationCodes()) m[row.code] = row.pyephem;
    return m;
}

TEST(ConstellationReference, DerivedCodeTableIsOneToOne) {
    const auto rows = kvx::test::ConstellationCodes();
    ASSERT_EQ(rows.size(), 89u);
    std::set<std::string> pyephem, names;
    for (size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].code, static_cast<int>(i));
        pyephem.insert(rows[i].pyephem);
        names.insert(rows[i].name);
    }
    EXPECT_EQ(pyephem.size(), 89u);
    EXPECT_EQ(names.size(), 89u);
    EXPECT_EQ(rows[kUMi].iau, "UMi");
    EXPECT_EQ(rows[kOct].iau, "Oct");
}

// Each direction of a reference file whose code names PyEphem's constellation
// counts once; the others are reported.
int Agreeing(const char *file, double epochJd, size_t expected) {
    const auto codes = CodeToPyEphem();
    const auto samples = kvx::test::ConstellationSamples(file);
    EXPECT_EQ(samples.size(), expected);
    int agree = 0;
    for (const auto &s : samples) {
        const int32_t code = At(s.ra, s.dec, epochJd);
        const std::string got = codes.count(code) ? codes.at(code) : "none";
        if (got == s.pyephem) {
            ++agree;
        } else {
            ADD_FAILURE() << file << ": " << s.ra << " " << s.dec << ": " << got << " (" << code << "), reference "
                          << s.pyephem;
        }
    }
    return agree;
}

TEST(ConstellationReference, AgreesWithPyEphemAndSkyfieldAtB1875) {
    EXPECT_EQ(Agreeing("constellation_b1875.csv", kB1875, 2000), 2000);
}

TEST(ConstellationReference, AgreesWithPyEphemAndSkyfieldAtJ2000) {
    EXPECT_EQ(Agreeing("constellation_j2000.csv", kJ2000, 4000), 4000);
}

}  // namespace
