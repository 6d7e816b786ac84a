// The principal phases of a month (GetMoonPhases).
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <vector>

#include "kvxlib.h"
#include "solar/ephem/jpl_de.h"
#include "test_support.h"

namespace {

struct RefPhase {
    int phase;
    double jdTt;
};

std::vector<RefPhase> Reference(const char *file) {
    std::vector<RefPhase> out;
    for (const auto &r : kvx::test::ReadRows(kvx::test::ReferencePath(file))) {
        const int phase = static_cast<int>(std::lround((r[0] - std::floor(r[0])) * 4.0)) % 4;
        out.push_back({phase, r[1]});
    }
    return out;
}

// The reference phase of the same number nearest to a dynamical date.
const RefPhase *Nearest(const std::vector<RefPhase> &ref, int phase, double jde) {
    const RefPhase *best = nullptr;
    for (const auto &p : ref)
        if (p.phase == phase && (!best || std::fabs(p.jdTt - jde) < std::fabs(best->jdTt - jde))) best = &p;
    return best;
}

int MonthOf(double jd, double tz) {
    ADate d{};
    JdToDate2(jd + tz / 24.0, &d);
    return d.month;
}

// Every month of 1900-2100 in zone +9 h against the instants found from the
// reference ephemeris (Swiss Ephemeris, apparent elongation 0, 90, 180, 270
// degrees). The library's instants are universal time; they are compared in
// dynamical time through the library's own Delta T, so that the comparison
// measures the positions, not the Delta T model.
TEST(MoonPhases, AgreeWithReference1900To2100) {
    const auto ref = Reference("moon_swe_phases.txt");
    ASSERT_GT(ref.size(), 9800u);
    const double tz = 9.0;
    double maxErr = 0, sumSq = 0, worstJd = 0;
    int n = 0, perPhase[4] = {0, 0, 0, 0};
    for (int year = 1900; year <= 2099; ++year) {
        for (int month = 1; month <= 12; ++month) {
            const ADate req{year, month, 15, 12, 30, 10.0, tz};  // day and time are not read
            MoonPhase out[6];
            const int count = GetMoonPhases(&req, out, 6);
            ASSERT_GE(count, 3) << year << "-" << month;
            ASSERT_LE(count, 5) << year << "-" << month;
            for (int i = 0; i < count; ++i) {
                EXPECT_EQ(MonthOf(out[i].jd, tz), month) << year << "-" << month;
                if (i > 0) {
                    EXPECT_GT(out[i].jd, out[i - 1].jd);
                    EXPECT_EQ(out[i].phase, (out[i - 1].phase + 1) % 4);
                }
                const double jde = UtToDt(out[i].jd);
                // The reference runs from the new Moon of 1900 January 30.
                if (jde < ref.front().jdTt - 1.0 || jde > ref.back().jdTt + 1.0) continue;
                const RefPhase *r = Nearest(ref, out[i].phase, jde);
                ASSERT_NE(r, nullptr);
                const double err = (jde - r->jdTt) * 86400.0;
                if (std::fabs(err) > maxErr) {
                    maxErr = std::fabs(err);
                    worstJd = r->jdTt;
                }
                sumSq += err * err;
                ++n;
                ++perPhase[out[i].phase];
            }
        }
    }
    std::printf("GetMoonPhases vs reference 1900-2100 (%d phases): max %.1f s (at JDE %.3f), rms %.1f s\n", n, maxErr,
                worstJd, std::sqrt(sumSq / n));
    // Every reference phase is found, once.
    EXPECT_EQ(n, static_cast<int>(ref.size()));
    // Measured without files (the built-in Sun and Moon theories): 269.1 s,
    // rms 104.5 s, growing with the distance from 1975. The Moon's theory
    // runs ahead by the Delta T that its time argument already contains and
    // its apparent longitude receives the nutation a second time (up to 118"
    // in longitude, test_moon_theory.cpp); at 0.5" per second of elongation
    // that is the whole of it. With an ephemeris file see below.
    EXPECT_LT(maxErr, 280.0);
}

// With the DE405 excerpt loaded, the same comparison over its span.
TEST(MoonPhases, WithTheDe405ExcerptAgreeWithinSeconds) {
    const auto ref = Reference("moon_swe_phases.txt");
    ASSERT_TRUE(kvx::jpl::OpenMain(kvx::test::TestDataPath("de405_2000.bin").c_str(), false));
    double maxErr = 0;
    int n = 0;
    for (int ym = 2000 * 12 + 1; ym <= 2001 * 12 + 10; ++ym) {
        const ADate req{ym / 12, ym % 12 + 1, 1, 0, 0, 0.0, 0.0};
        MoonPhase out[6];
        const int count = GetMoonPhases(&req, out, 6);
        for (int i = 0; i < count; ++i) {
            const double jde = UtToDt(out[i].jd);
            const RefPhase *r = Nearest(ref, out[i].phase, jde);
            ASSERT_NE(r, nullptr);
            maxErr = std::max(maxErr, std::fabs(jde - r->jdTt) * 86400.0);
            ++n;
        }
    }
    kvx::jpl::CloseMain();
    std::printf("GetMoonPhases with DE405 vs reference (%d phases): max %.2f s\n", n, maxErr);
    // Measured: 0.82 s.
    EXPECT_GT(n, 80);
    EXPECT_LT(maxErr, 1.0);
}

// January 2018 has two full Moons (a "blue moon" in the 31st); with max 1
// only the first phase is returned.
TEST(MoonPhases, FivePhasesAndTheLimit) {
    const ADate jan2018{2018, 1, 1, 0, 0, 0.0, 0.0};
    MoonPhase out[6];
    ASSERT_EQ(GetMoonPhases(&jan2018, out, 6), 5);
    const int expected[5] = {2, 3, 0, 1, 2};
    for (int i = 0; i < 5; ++i) EXPECT_EQ(out[i].phase, expected[i]);
    MoonPhase one[1] = {{-1, 0.0}};
    ASSERT_EQ(GetMoonPhases(&jan2018, one, 1), 1);
    EXPECT_EQ(one[0].phase, 2);
    EXPECT_EQ(one[0].jd, out[0].jd);
    EXPECT_EQ(GetMoonPhases(&jan2018, out, 0), 0);
    EXPECT_EQ(GetMoonPhases(nullptr, out, 6), 0);
    EXPECT_EQ(GetMoonPhases(&jan2018, nullptr, 6), 0);
}

// The zone decides the month: the new Moon of 2024 December 1, 06:21 UT,
// opens December at 0 h but closes November at -8 h.
TEST(MoonPhases, LocalMonthDependsOnTheZone) {
    MoonPhase dec0[6], decW[6], novW[6];
    const ADate decGreenwich{2024, 12, 1, 0, 0, 0.0, 0.0}, decWest{2024, 12, 1, 0, 0, 0.0, -8.0},
        novWest{2024, 11, 1, 0, 0, 0.0, -8.0};
    const int n0 = GetMoonPhases(&decGreenwich, dec0, 6);
    const int nW = GetMoonPhases(&decWest, decW, 6);
    const int nNov = GetMoonPhases(&novWest, novW, 6);
    ASSERT_GT(n0, 0);
    ASSERT_GT(nW, 0);
    ASSERT_GT(nNov, 0);
    EXPECT_EQ(dec0[0].phase, 0);
    EXPECT_NEAR(dec0[0].jd, 2460645.7646, 0.01);  // 2024-12-01 06:21 UT
    EXPECT_EQ(decW[0].phase, 1);
    EXPECT_EQ(nW, n0 - 1);
    EXPECT_EQ(novW[nNov - 1].phase, 0);
    EXPECT_EQ(novW[nNov - 1].jd, dec0[0].jd);
}

}  // namespace

namespace {

// Before the series' range (about 1150 BC) the phases come from daily
// samples of the theory, compared with instants from the Moshier ephemeris.
TEST(MoonPhases, OutsideTheSeriesRange) {
    const auto ref = Reference("moon_swe_phases_ancient.txt");
    ASSERT_EQ(ref.size(), 100u);
    ADate first{}, last{};
    JdToDate2(ref.front().jdTt + 40.0, &first);
    JdToDate2(ref.back().jdTt - 40.0, &last);
    double maxErr = 0;
    int n = 0, months = 0, empty = 0;
    for (int y = first.year, m = first.month; y < last.year || (y == last.year && m <= last.month); ++months) {
        const ADate req{y, m, 1, 0, 0, 0.0, 0.0};
        MoonPhase out[6];
        const int count = GetMoonPhases(&req, out, 6);
        if (count == 0) ++empty;
        for (int i = 0; i < count; ++i) {
            EXPECT_EQ(MonthOf(out[i].jd, 0.0), m);
            const RefPhase *r = Nearest(ref, out[i].phase, out[i].jd);
            ASSERT_NE(r, nullptr);
            maxErr = std::max(maxErr, std::fabs(out[i].jd - r->jdTt) * 24.0);
            ++n;
        }
        if (++m > 12) {
            m = 1;
            ++y;
        }
    }
    std::printf("GetMoonPhases outside the series range vs Moshier (%d months, %d empty, %d phases): max %.2f h\n",
                months, empty, n, maxErr);
    // Measured: 4.84 h (the theory 3100 years from its epoch, without the
    // Moon's secular acceleration; the Earth's longitude from the mean
    // elements of the Earth-Moon barycentre, as the planet dispatcher gives
    // it outside the built-in theories' span); 12 of the 22 months return
    // nothing, as the sampling method does whenever a phase falls in the four
    // days before the month (see below).
    EXPECT_LT(maxErr, 5.3);
    EXPECT_GT(n, 30);
    EXPECT_GT(empty, 0);
}

// The new Moon of -1154 May 30 (Julian calendar) is the first crossing
// after the fourth-last day of May; May keeps it, and June, whose search
// starts from that crossing and never moves past it, returns nothing.
TEST(MoonPhases, SamplingStopsAtACrossingBeforeTheMonth) {
    MoonPhase out[6];
    const ADate may{-1154, 5, 1, 0, 0, 0.0, 0.0}, june{-1154, 6, 1, 0, 0, 0.0, 0.0};
    const int nMay = GetMoonPhases(&may, out, 6);
    ASSERT_EQ(nMay, 5);
    EXPECT_EQ(out[4].phase, 0);
    EXPECT_LT(out[4].jd, GetJd(&june));
    EXPECT_GT(out[4].jd, GetJd(&june) - 4.0);
    EXPECT_EQ(GetMoonPhases(&june, out, 6), 0);
}

}  // namespace
