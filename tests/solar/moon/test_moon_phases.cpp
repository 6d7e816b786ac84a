// The true phases of the Moon: the phase series (GetNewMoonJd2000), the
// age (GetMoonAge) and the phases of a month (GetMoonPhases), against the
// instants at which Swiss Ephemeris' apparent elongation is 0, 90, 180 and
// 270 degrees (JPL-based files, every phase 1900-2100; Moshier's ephemeris
// before 1150 BC), made by tests/reference/moon_swe.c.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "kvxlib.h"
#include "solar/ephem/jpl_de.h"
#include "test_support.h"

using namespace kvx::test;

namespace {

int PhaseOf(double k) { return static_cast<int>(std::lround((k - std::floor(k)) * 4.0)) % 4; }

// Phase numbers and instants of a reference file, in time order.
struct PhaseList {
    std::vector<int> phase;
    std::vector<double> jde;
    explicit PhaseList(const Reference &ref) {
        for (const auto &row : ref) {
            phase.push_back(PhaseOf(row["k"]));
            jde.push_back(row["jde"]);
        }
    }
    // The instant of the same phase nearest to a dynamical date.
    double Nearest(int p, double t) const {
        const auto i = std::lower_bound(jde.begin(), jde.end(), t) - jde.begin();
        double best = 1e300;
        for (auto k = std::max<std::ptrdiff_t>(0, i - 4); k < std::min<std::ptrdiff_t>(jde.size(), i + 4); ++k)
            if (phase[k] == p && std::fabs(jde[k] - t) < std::fabs(best - t)) best = jde[k];
        return best;
    }
};

int MonthOf(double jd, double tz) {
    ADate d{};
    JdToDate2(jd + tz / 24.0, &d);
    return d.month;
}

const Reference &Phases() {
    static const Reference ref("moon_swe_phases.txt", {"k", "jde"});
    return ref;
}
const PhaseList &PhaseInstants() {
    static const PhaseList list(Phases());
    return list;
}

}  // namespace

// The series, and the age an hour after each new Moon, an hour before the
// next (the lunation's length) and in mid-lunation.
TEST(MoonPhaseSeries, AgainstSwissEphemeris1900To2100) {
    Comparison cmp({{"series_s", 20.0, "Meeus' series (rms 4.8 s)"}, {"age_s", 20.0, "the series it uses"}});
    double previous = 0.0;
    for (const auto &row : Phases()) {
        cmp.Add("series_s", (GetNewMoonJd2000(row["k"]) - row["jde"]) * 86400.0, row);
        if (PhaseOf(row["k"]) != 0) continue;
        const double nm = row["jde"];
        cmp.Add("age_s", (GetMoonAge(nm + 1.0 / 24.0, nullptr, nullptr) - 1.0 / 24.0) * 86400.0, row);
        if (previous != 0.0) {
            cmp.Add("age_s", (GetMoonAge(nm - 1.0 / 24.0, nullptr, nullptr) - (nm - previous - 1.0 / 24.0)) * 86400.0, row);
            cmp.Add("age_s", (GetMoonAge(previous + 14.0, nullptr, nullptr) - 14.0) * 86400.0, row);
        }
        previous = nm;
    }
    cmp.Check();
    // Meeus, Astronomical Algorithms, 2nd ed., examples 49.a and 49.b
    // (second-edition mean-phase constants, about a second from the first
    // edition's used here).
    EXPECT_NEAR(GetNewMoonJd2000(-283.0), 2443192.65118, 2.0 / 86400.0);
    EXPECT_NEAR(GetNewMoonJd2000(544.75), 2467636.49186, 2.0 / 86400.0);
}

// The fraction of k picks the series: a fraction that is no quarter gives
// the new-Moon series, which runs on smoothly; within 1e-6 of a quarter the
// quarter series is used, beyond it the new-Moon corrections (-0.407 sin M'
// against the quarter's -0.628 sin M' and W) show as a jump.
TEST(MoonPhaseSeries, FractionSelectsTheSeries) {
    const double synodic = 29.530588853;
    for (double n : {-500.0, -1.0, 0.0, 800.0}) {
        EXPECT_NEAR(GetNewMoonJd2000(n + 0.999), GetNewMoonJd2000(n + 1.0) - 0.001 * synodic, 0.003) << n;
        for (double q : {0.25, 0.5, 0.75}) EXPECT_NEAR(GetNewMoonJd2000(n + q + 5e-7), GetNewMoonJd2000(n + q), 1e-4);
    }
    EXPECT_NEAR(GetNewMoonJd2000(0.0) - GetNewMoonJd2000(-0.25), synodic / 4.0, 1.0);  // -0.25: a last quarter
    double maxJump = 0;
    for (double n = 0; n < 12; ++n)
        maxJump = std::max(maxJump, std::fabs(GetNewMoonJd2000(n + 0.25 + 2e-6) - GetNewMoonJd2000(n + 0.25)));
    EXPECT_GT(maxJump, 0.1);
}

// Outside the series' range (1000 BC to 5000 AD, ends included) the age
// comes from the two records' longitudes.
TEST(MoonAge, OutsideTheSeriesRangeFromTheRecords) {
    BodyPos sun{}, moon{};
    KVX_BODYPOS_FIELD(sun, 5) = 350.0;
    KVX_BODYPOS_FIELD(moon, 11) = 10.0;  // 20 degrees east of the Sun
    EXPECT_DOUBLE_EQ(GetMoonAge(1356172.5, &sun, &moon), 20.0 / 12.190749056850848);
    EXPECT_DOUBLE_EQ(GetMoonAge(3547272.5, &sun, &moon), 20.0 / 12.190749056850848);
    EXPECT_EQ(GetMoonAge(1000000.0, nullptr, &moon), 0.0);
    for (double jd = 1356173.0; jd <= 3547272.0; jd += 9.123) {
        const double age = GetMoonAge(jd, nullptr, nullptr);
        ASSERT_TRUE(age >= 0.0 && age < 29.9) << jd;
    }
}

// Every month of 1900-2100 in zone +9 h. The library's instants are
// universal time; they are compared in dynamical time through the
// library's own Delta T, so that the comparison measures the positions.
// Without files the Moon's theory runs ahead by the Delta T its time
// argument already contains and receives the nutation twice (up to 118" in
// longitude, see test_moon.cpp): at 0.5" per second that is the 269 s.
TEST(MoonPhases, EveryMonthAgainstSwissEphemeris1900To2100) {
    const double tz = 9.0;
    Comparison cmp({{"instant_s", 280.0, "the Moon theory's Delta T counted twice and nutation"}});
    int found = 0;
    for (int year = 1900; year <= 2099; ++year)
        for (int month = 1; month <= 12; ++month) {
            const ADate req{year, month, 15, 12, 30, 10.0, tz};  // day and time are not read
            MoonPhase out[6];
            const int count = GetMoonPhases(&req, out, 6);
            ASSERT_TRUE(count >= 3 && count <= 5) << year << "-" << month;
            for (int i = 0; i < count; ++i) {
                EXPECT_EQ(MonthOf(out[i].jd, tz), month) << year << "-" << month;
                if (i > 0) {
                    EXPECT_EQ(out[i].phase, (out[i - 1].phase + 1) % 4);
                }
                const double jde = UtToDt(out[i].jd);
                if (jde < PhaseInstants().jde.front() - 1.0) continue;  // the reference starts 1900 January 30
                cmp.Add("instant_s", (jde - PhaseInstants().Nearest(out[i].phase, jde)) * 86400.0,
                        std::to_string(year) + "-" + std::to_string(month));
                ++found;
            }
        }
    cmp.Check();
    EXPECT_EQ(found, static_cast<int>(Phases().size()));  // every reference phase, once
}

// With the DE405 excerpt loaded, the same over its span (measured 0.82 s).
TEST(MoonPhases, WithTheDe405ExcerptAgreeWithinASecond) {
    ASSERT_TRUE(kvx::jpl::OpenMain(TestDataPath("de405_2000.bin").c_str(), false));
    Comparison cmp({{"instant_s", 1.0, "DE405 against DE431, truncated nutation"}});
    for (int ym = 2000 * 12 + 1; ym <= 2001 * 12 + 10; ++ym) {
        const ADate req{ym / 12, ym % 12 + 1, 1, 0, 0, 0.0, 0.0};
        MoonPhase out[6];
        const int count = GetMoonPhases(&req, out, 6);
        for (int i = 0; i < count; ++i) {
            const double jde = UtToDt(out[i].jd);
            cmp.Add("instant_s", (jde - PhaseInstants().Nearest(out[i].phase, jde)) * 86400.0, std::to_string(ym));
        }
    }
    kvx::jpl::CloseMain();
    cmp.Check();
}

// January 2018 has two full Moons; with max 1 only the first phase comes.
// The zone decides the month: the new Moon of 2024 December 1, 06:21 UT,
// opens December at 0 h but closes November at -8 h.
TEST(MoonPhases, LimitAndZone) {
    const ADate jan2018{2018, 1, 1, 0, 0, 0.0, 0.0};
    MoonPhase out[6], one[1];
    ASSERT_EQ(GetMoonPhases(&jan2018, out, 6), 5);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(out[i].phase, (2 + i) % 4);
    ASSERT_EQ(GetMoonPhases(&jan2018, one, 1), 1);
    EXPECT_EQ(one[0].jd, out[0].jd);
    EXPECT_EQ(GetMoonPhases(&jan2018, out, 0), 0);
    MoonPhase dec0[6], decW[6], novW[6];
    const ADate decGreenwich{2024, 12, 1, 0, 0, 0.0, 0.0}, decWest{2024, 12, 1, 0, 0, 0.0, -8.0},
        novWest{2024, 11, 1, 0, 0, 0.0, -8.0};
    const int n0 = GetMoonPhases(&decGreenwich, dec0, 6), nW = GetMoonPhases(&decWest, decW, 6);
    const int nNov = GetMoonPhases(&novWest, novW, 6);
    ASSERT_TRUE(n0 > 0 && nW > 0 && nNov > 0);
    EXPECT_EQ(dec0[0].phase, 0);
    EXPECT_NEAR(dec0[0].jd, 2460645.7646, 0.01);
    EXPECT_EQ(decW[0].phase, 1);
    EXPECT_EQ(nW, n0 - 1);
    EXPECT_EQ(novW[nNov - 1].jd, dec0[0].jd);
}

// Before the series' range the phases come from daily samples of the
// theory (3100 years from its epoch, without the Moon's secular
// acceleration: 4.84 h measured). A month whose search starts at a crossing
// in the four days before it returns nothing: counted and asserted.
TEST(MoonPhases, OutsideTheSeriesRange) {
    const Reference ref("moon_swe_phases_ancient.txt", {"k", "jde"});
    ASSERT_EQ(ref.size(), 100u);
    const PhaseList ancient(ref);
    ADate first{}, last{};
    JdToDate2(ref[0]["jde"] + 40.0, &first);
    JdToDate2(ref[ref.size() - 1]["jde"] - 40.0, &last);
    Comparison cmp({{"instant_h", 5.3, "the theory far from its epoch, no secular acceleration"}});
    for (int y = first.year, m = first.month; y < last.year || (y == last.year && m <= last.month);) {
        const ADate req{y, m, 1, 0, 0, 0.0, 0.0};
        MoonPhase out[6];
        const int count = GetMoonPhases(&req, out, 6);
        if (count == 0) cmp.Skip();
        for (int i = 0; i < count; ++i) {
            EXPECT_EQ(MonthOf(out[i].jd, 0.0), m);
            cmp.Add("instant_h", (out[i].jd - ancient.Nearest(out[i].phase, out[i].jd)) * 24.0, std::to_string(y));
        }
        if (++m > 12) m = 1, ++y;
    }
    cmp.Check();
    EXPECT_EQ(cmp.Skipped(), 12);  // of 22 months
    // The new Moon of -1154 May 30 stays in May; June returns nothing.
    MoonPhase out[6];
    const ADate may{-1154, 5, 1, 0, 0, 0.0, 0.0}, june{-1154, 6, 1, 0, 0, 0.0, 0.0};
    ASSERT_EQ(GetMoonPhases(&may, out, 6), 5);
    EXPECT_EQ(out[4].phase, 0);
    EXPECT_GT(out[4].jd, GetJd(&june) - 4.0);
    EXPECT_EQ(GetMoonPhases(&june, out, 6), 0);
}
