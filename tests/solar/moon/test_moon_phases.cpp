// The phase series, the Moon's age and the phases of a month against the instants of Swiss Ephemeris' apparent
// elongations 0, 90, 180, 270 degrees (tests/reference/moon_swe.c: JPL files 1900-2100, Moshier before 1150 BC).

#include <algorithm>

#include "solar/ephem/jpl_de.h"
#include "test_support.h"

using namespace kvx::test;

namespace {

int PhaseOf(double k) { return static_cast<int>(std::lround((k - std::floor(k)) * 4.0)) % 4; }

// Phase numbers and instants of a reference file, in time order.
struct PhaseList {
    std::vector<int> phase;
    std::vector<double> jde;
    explicit PhaseList(const char *file) {
        for (const auto &row : Reference(file, {"k", "jde"})) {
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

// The phases of every month ym0..ym1 (year x 12 + month - 1) in zone tz lie in their month, in order; each instant
// (as dynamical time or as it is) is compared, in `unit` seconds, with the reference's nearest of that phase. A month
// without phases is a skip. Returns the number compared.
int CompareMonths(int ym0, int ym1, double tz, const PhaseList &ref, bool dynamical, double unit, Comparison &cmp) {
    int compared = 0;
    for (int ym = ym0; ym <= ym1; ++ym) {
        const int year = static_cast<int>(std::floor(ym / 12.0)), month = ym - year * 12 + 1;
        const ADate req{year, month, 15, 12, 30, 10.0, tz};  // day and time are not read
        MoonPhase out[6];
        const int count = GetMoonPhases(&req, out, 6);
        if (count == 0) cmp.Skip();
        const std::string label = std::to_string(year) + "-" + std::to_string(month);
        for (int i = 0; i < count; ++i) {
            ADate local{};
            JdToDate2(out[i].jd + tz / 24.0, &local);
            EXPECT_EQ(local.month, month) << label;
            EXPECT_TRUE(i == 0 || out[i].phase == (out[i - 1].phase + 1) % 4) << label;
            const double t = dynamical ? UtToDt(out[i].jd) : out[i].jd;
            if (t < ref.jde.front() - 1.0) continue;  // before the reference's first phase
            cmp.Add("instant", (t - ref.Nearest(out[i].phase, t)) * 86400.0 / unit, label);
            ++compared;
        }
    }
    return compared;
}

}  // namespace

// The series, and the age an hour after each new Moon, an hour before the next and in mid-lunation.
TEST(MoonPhaseSeries, AgainstSwissEphemeris1900To2100) {
    Comparison cmp({{"series_s", 20.0, "Meeus' series (rms 4.8 s)"}, {"age_s", 20.0, "the series it uses"}});
    double previous = 0.0;
    for (const auto &row : Reference("moon_swe_phases.txt", {"k", "jde"})) {
        cmp.Add("series_s", (GetNewMoonJd2000(row["k"]) - row["jde"]) * 86400.0, row);
        if (PhaseOf(row["k"]) != 0) continue;
        const double nm = row["jde"], hour = 1.0 / 24.0;
        cmp.Add("age_s", (GetMoonAge(nm + hour, nullptr, nullptr) - hour) * 86400.0, row);
        if (previous != 0.0) {
            cmp.Add("age_s", (GetMoonAge(nm - hour, nullptr, nullptr) - (nm - previous - hour)) * 86400.0, row);
            cmp.Add("age_s", (GetMoonAge(previous + 14.0, nullptr, nullptr) - 14.0) * 86400.0, row);
        }
        previous = nm;
    }
    cmp.Check();
    // Meeus, Astronomical Algorithms, 2nd ed., examples 49.a and 49.b (its mean-phase constants differ by about a
    // second from the first edition's).
    EXPECT_NEAR(GetNewMoonJd2000(-283.0), 2443192.65118, 2.0 / 86400.0);
    EXPECT_NEAR(GetNewMoonJd2000(544.75), 2467636.49186, 2.0 / 86400.0);
}

// A fraction of k that is no quarter gives the new-Moon series, running on smoothly; within 1e-6 of a quarter the
// quarter series is used, beyond it the new-Moon corrections (-0.407 sin M' against -0.628 sin M' and W) jump.
TEST(MoonPhaseSeries, FractionSelectsTheSeries) {
    const double synodic = 29.530588853;
    double maxJump = 0;
    for (double n : {-500.0, -1.0, 0.0, 800.0, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0}) {
        EXPECT_NEAR(GetNewMoonJd2000(n + 0.999), GetNewMoonJd2000(n + 1.0) - 0.001 * synodic, 0.003) << n;
        for (double q : {0.25, 0.5, 0.75}) EXPECT_NEAR(GetNewMoonJd2000(n + q + 5e-7), GetNewMoonJd2000(n + q), 1e-4);
        maxJump = std::max(maxJump, std::fabs(GetNewMoonJd2000(n + 0.25 + 2e-6) - GetNewMoonJd2000(n + 0.25)));
    }
    EXPECT_GT(maxJump, 0.1);
    EXPECT_NEAR(GetNewMoonJd2000(0.0) - GetNewMoonJd2000(-0.25), synodic / 4.0, 1.0);  // -0.25: a last quarter
}

// Outside the series' range (1000 BC to 5000 AD, ends included) the age comes from the two records' longitudes.
TEST(MoonAge, OutsideTheSeriesRangeFromTheRecords) {
    BodyPos sun{}, moon{};
    KVX_BODYPOS_FIELD(sun, 5) = 350.0;
    KVX_BODYPOS_FIELD(moon, 11) = 10.0;  // 20 degrees east of the Sun
    for (double jd : {1356172.5, 3547272.5}) EXPECT_DOUBLE_EQ(GetMoonAge(jd, &sun, &moon), 20.0 / 12.190749056850848);
    EXPECT_EQ(GetMoonAge(1000000.0, nullptr, &moon), 0.0);
    for (double jd = 1356173.0; jd <= 3547272.0; jd += 9.123) {
        const double age = GetMoonAge(jd, nullptr, nullptr);
        ASSERT_TRUE(age >= 0.0 && age < 29.9) << jd;
    }
}

// Every month of 1900-2100 in zone +9 h, in dynamical time through the library's own Delta T. The theory's Delta T
// counted twice and its nutation (up to 118" in longitude) at 0.5" per second make up to 269 s.
TEST(MoonPhases, EveryMonthAgainstSwissEphemeris1900To2100) {
    Comparison cmp({{"instant", 280.0, "seconds: the Moon theory's Delta T counted twice and nutation"}});
    const PhaseList modern("moon_swe_phases.txt");
    const int found = CompareMonths(1900 * 12, 2099 * 12 + 11, 9.0, modern, true, 1.0, cmp);
    cmp.Check();
    EXPECT_EQ(cmp.Skipped(), 0);
    EXPECT_EQ(found, static_cast<int>(modern.jde.size()));  // every reference phase, once
}

// With the DE405 excerpt loaded, the same over its span (measured 0.82 s).
TEST(MoonPhases, WithTheDe405ExcerptAgreeWithinASecond) {
    ASSERT_TRUE(kvx::jpl::OpenMain(TestDataPath("de405_2000.bin").c_str(), false));
    Comparison cmp({{"instant", 1.0, "seconds: DE405 against DE431, truncated nutation"}});
    CompareMonths(2000 * 12 + 1, 2001 * 12 + 10, 0.0, PhaseList("moon_swe_phases.txt"), true, 1.0, cmp);  // February 2000 to November 2001
    kvx::jpl::CloseMain();
    cmp.Check();
}

// January 2018 has two full Moons (five phases); max 1 gives the first only. The zone is covered by the monthly
// comparison above (+9 h: every reference phase in its local month, once).
TEST(MoonPhases, Limit) {
    const ADate jan{2018, 1, 1, 0, 0, 0.0, 0.0};
    MoonPhase out[6], one[1];
    ASSERT_EQ(GetMoonPhases(&jan, out, 6), 5);
    ASSERT_EQ(GetMoonPhases(&jan, one, 1), 1);
    EXPECT_EQ(one[0].jd, out[0].jd);
    EXPECT_EQ(GetMoonPhases(&jan, out, 0), 0);
}

// Before the series' range: daily samples of the theory, universal time as it is (4.84 h measured). A month whose
// search starts at a crossing in the four days before it returns nothing: counted.
TEST(MoonPhases, OutsideTheSeriesRange) {
    const PhaseList ancient("moon_swe_phases_ancient.txt");
    ASSERT_EQ(ancient.jde.size(), 100u);
    ADate first{}, last{};
    JdToDate2(ancient.jde.front() + 40.0, &first);
    JdToDate2(ancient.jde.back() - 40.0, &last);
    Comparison cmp({{"instant", 5.3, "hours: the theory far from its epoch, no secular acceleration"}});
    CompareMonths(first.year * 12 + first.month - 1, last.year * 12 + last.month - 1, 0.0, ancient, false, 3600.0, cmp);
    cmp.Check();
    EXPECT_EQ(cmp.Skipped(), 12);  // of 22 months
}
