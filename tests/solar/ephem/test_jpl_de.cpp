// The JPL DE reader against Swiss Ephemeris reading the same DE405 excerpt
// (tests/reference/make_jpl_reference.py), against the Swiss Ephemeris lunar
// file, and its edge cases: the exact end date, the record cache, the
// Earth/Moon pair, refused versions, "OnMemory", the KQ variant and the
// diagnostics.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "kvxlib.h"
#include "solar/ephem/jpl_de.h"
#include "solar/ephem/jpl_query.h"
#include "test_support.h"

namespace {

using kvx::jpl::Reader;
using kvx::test::Comparison;
using kvx::test::Reference;
using kvx::test::TestDataPath;

const std::string kDe = TestDataPath("de405_2000.bin");
constexpr double kStart = 2451536.5, kEnd = 2452272.5;

struct ReaderPtr {
    Reader *r;
    explicit ReaderPtr(const std::string &path) : r(kvx::jpl::Open(path.c_str())) {}
    ~ReaderPtr() { kvx::jpl::Close(r); }
};

int Eval(Reader *r, double jd, int target, int centre, double pv[6]) {
    return kvx::jpl::Evaluate(r, jd, target, centre, pv, true);
}

// The largest coordinate of a body relative to the barycentre is about 40
// AU (Pluto), of a velocity 0.03 AU/day; both readers sum the same
// coefficients in double precision, so they agree to a few units of the
// last place of those magnitudes.
constexpr double kPosTol = 2e-14;   // AU
constexpr double kVelTol = 2e-17;   // AU/day
// The reference libration rates are central differences of Swiss
// Ephemeris's angles (it gives no rates): truncation about 1e-10 and the
// rounding of psi (~2600 rad, ulp 4.5e-13) over 0.002 day about 2e-10.
constexpr double kLibrationRateTol = 1e-9;  // rad/day

TEST(JplDeReader, AgreesWithSwissEphemerisOnEveryBodyNutationsAndLibrations) {
    ReaderPtr de(kDe);
    ASSERT_NE(de.r, nullptr);
    const Reference ref("jpl_barycentric.txt", {"jd", "target", "centre", "x", "y", "z", "vx", "vy", "vz"});
    Comparison cmp({{"position_au", kPosTol, "the same coefficients summed in double precision"},
                    {"velocity_au_d", kVelTol, "the same coefficients summed in double precision"},
                    {"libration_rate", kLibrationRateTol, "the reference's central differences"}});
    for (const auto &row : ref) {
        const int target = static_cast<int>(row["target"]);
        const int centre = row["centre"] == 0 ? 1 : static_cast<int>(row["centre"]);  // unused for 14, 15
        double pv[6];
        ASSERT_EQ(Eval(de.r, row["jd"], target, centre, pv), 0) << row.Label();
        for (int i = 0; i < 3; ++i) {
            cmp.Add("position_au", pv[i] - row.From("x")[i], row);
            cmp.Add(target == 15 ? "libration_rate" : "velocity_au_d", pv[3 + i] - row.From("vx")[i], row);
        }
    }
    cmp.Check();
}

TEST(JplDeReader, QueryAnswersEveryBodyPairOfTheLibraryCodes) {
    ASSERT_TRUE(kvx::jpl::OpenMain(kDe.c_str(), false));
    const Reference ref("jpl_pairs.txt", {"jd", "target", "centre", "x", "y", "z", "vx", "vy", "vz"});
    Comparison cmp({{"position_au", kPosTol, "the same coefficients summed in double precision"},
                    {"velocity_au_d", kVelTol, "the same coefficients summed in double precision"}});
    for (const auto &row : ref) {
        double p[3], v[3];
        ASSERT_EQ(kvx::jpl::Query(static_cast<int>(row["target"]), row["jd"], static_cast<int>(row["centre"]), p, v), 1);
        for (int i = 0; i < 3; ++i) {
            cmp.Add("position_au", p[i] - row.From("x")[i], row);
            cmp.Add("velocity_au_d", v[i] - row.From("vx")[i], row);
        }
    }
    cmp.Check();
    // Codes without a JPL body, and the nutations as a centre, answer 0.
    double p[3];
    EXPECT_EQ(kvx::jpl::Query(8, 2451545.0, -2, p, nullptr), 0);  // Eris
    EXPECT_EQ(kvx::jpl::Query(-2, 2451545.0, -30, p, nullptr), 0);
    EXPECT_EQ(kvx::jpl::Query(-2, kEnd + 1.0, -3, p, nullptr), 0);
    ASSERT_EQ(kvx::jpl::Query(-30, 2451545.0, 0, p, nullptr), 1);  // nutations, centre code 0
    EXPECT_NEAR(p[0], -6.750248558835453e-05, 1e-18);
    EXPECT_EQ(GetJplDeVersion(), 405);
    kvx::jpl::CloseMain();
    EXPECT_EQ(GetJplDeVersion(), -1);
    EXPECT_EQ(kvx::jpl::Query(-2, 2451545.0, -3, p, nullptr), 0);
}

// Swiss Ephemeris's lunar file is a compression of DE431: it differs from
// DE405 by the two ephemerides' difference plus the compression error.
TEST(JplDeReader, GeocentricMoonAgreesWithTheSwissEphemerisLunarFile) {
    ReaderPtr de(kDe);
    const Reference ref("jpl_moon_se1.txt", {"jd", "x", "y", "z"});
    Comparison cmp({{"km", 0.1, "DE405 vs DE431 and the lunar file's compression: tens of metres"}});
    for (const auto &row : ref) {
        double pv[6];
        ASSERT_EQ(Eval(de.r, row["jd"], 10, 3, pv), 0);
        cmp.Add("km", std::hypot(pv[0] - row["x"], pv[1] - row["y"], pv[2] - row["z"]) * 149597870.691, row);
    }
    cmp.Check();
}

TEST(JplDeReader, ExactEndUsesTheLastRecordAndAMomentLaterFails) {
    ReaderPtr de(kDe);
    double pv[6];
    ASSERT_EQ(Eval(de.r, kEnd, 10, 3, pv), 0);
    EXPECT_EQ(kvx::jpl::CachedRecord(de.r), 2 + 22);  // the 23rd data record, not one past it
    EXPECT_EQ(Eval(de.r, std::nextafter(kEnd, 1e10), 10, 3, pv), kvx::jpl::kOutOfRange);
    EXPECT_EQ(Eval(de.r, std::nextafter(kStart, 0.0), 10, 3, pv), kvx::jpl::kOutOfRange);
    EXPECT_EQ(Eval(de.r, std::nan(""), 10, 3, pv), kvx::jpl::kOutOfRange);
    ASSERT_EQ(Eval(de.r, kStart, 10, 3, pv), 0);
    EXPECT_EQ(kvx::jpl::CachedRecord(de.r), 2);
}

TEST(JplDeReader, ErrorCodesOfTheEvaluation) {
    ReaderPtr de(kDe);
    double pv[6];
    EXPECT_EQ(Eval(de.r, 2451545.0, 0, 3, pv), kvx::jpl::kBadTarget);
    EXPECT_EQ(Eval(de.r, 2451545.0, 16, 3, pv), kvx::jpl::kBadTarget);
    EXPECT_EQ(Eval(de.r, 2451545.0, 3, 0, pv), kvx::jpl::kBadTarget);
    EXPECT_EQ(Eval(de.r, 2451545.0, 3, 13, pv), kvx::jpl::kBadCentre);
    EXPECT_EQ(Eval(de.r, 2451545.0, 5, 5, pv), kvx::jpl::kBadTargetCentre);
    EXPECT_EQ(Eval(de.r, 1e9, 0, 0, pv), kvx::jpl::kOutOfRange);  // the date is checked first
    // Barycentre and Earth-Moon barycentre as targets.
    ASSERT_EQ(Eval(de.r, 2451545.0, 12, 11, pv), 0);
    double sun[6];
    ASSERT_EQ(Eval(de.r, 2451545.0, 11, 12, sun), 0);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(pv[i], -sun[i]);
    double emb[6], earth[6], moon[6];
    ASSERT_EQ(Eval(de.r, 2451545.0, 13, 12, emb), 0);
    ASSERT_EQ(Eval(de.r, 2451545.0, 3, 12, earth), 0);
    ASSERT_EQ(Eval(de.r, 2451545.0, 10, 12, moon), 0);
    for (int i = 0; i < 3; ++i)  // the barycentre of the pair, weighted by EMRAT
        EXPECT_NEAR(emb[i], (81.30056 * earth[i] + moon[i]) / 82.30056, 4.4e-16);
    EXPECT_EQ(kvx::jpl::Evaluate(nullptr, 2451545.0, 3, 11, pv, true), kvx::jpl::kNotReady);
}

TEST(JplDeReader, OnMemoryHandleAnswersNothing) {
    ReaderPtr de(kDe);
    ASSERT_TRUE(kvx::jpl::ReadIntoMemory(de.r));
    EXPECT_EQ(de.r->source.kind, kvx::platform::SourceKind::kMemory);  // the file is closed
    EXPECT_EQ(de.r->source.size, 203600);
    double pv[6];
    EXPECT_EQ(Eval(de.r, 2451545.0, 10, 3, pv), kvx::jpl::kNotReady);

    testing::internal::CaptureStderr();
    ASSERT_TRUE(kvx::jpl::OpenMain(kDe.c_str(), true));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    double p[3];
    EXPECT_EQ(kvx::jpl::Query(-1, 2451545.0, -3, p, nullptr), 0);
    EXPECT_EQ(kvx::jpl::Query(-30, 2451545.0, 0, p, nullptr), 0);
    EXPECT_EQ(GetJplDeVersion(), 405);
    kvx::jpl::CloseMain();
}

TEST(JplDeReader, KqFileGivesTheSameValuesAsTheDeFile) {
    ReaderPtr kq(TestDataPath("hostile/kq_valid.bin"));  // first two records of the excerpt
    ReaderPtr de(kDe);
    ASSERT_NE(kq.r, nullptr);
    EXPECT_EQ(kq.r->deNumber, 405);
    EXPECT_EQ(kq.r->endJd, kStart + 64.0);
    EXPECT_EQ(kq.r->pointers[11].components, 2);
    for (double jd : {kStart, kStart + 17.25, kStart + 32.0, kStart + 63.9}) {
        for (int t : {1, 3, 10, 11, 14, 15}) {
            double a[6], b[6];
            ASSERT_EQ(Eval(kq.r, jd, t, t == 3 ? 11 : 3, a), 0);
            ASSERT_EQ(Eval(de.r, jd, t, t == 3 ? 11 : 3, b), 0);
            for (int i = 0; i < 6; ++i) EXPECT_EQ(a[i], b[i]) << jd << " " << t;
        }
    }
    // At its end the KQ file evaluates its last record at fraction 1, the DE
    // file the next record at 0: equal within the ephemeris's continuity at
    // record boundaries (measured 6e-17 AU).
    double a[6], b[6];
    ASSERT_EQ(Eval(kq.r, kStart + 64.0, 3, 11, a), 0);
    ASSERT_EQ(Eval(de.r, kStart + 64.0, 3, 11, b), 0);
    for (int i = 0; i < 6; ++i) EXPECT_NEAR(a[i], b[i], 2.2e-16);
}

TEST(JplDeReader, MoonFileHoldsTheMoonEarthAndSunOfTheDeFile) {
    ASSERT_EQ(kvx::jpl::LoadMoonFile(TestDataPath("moon.xyz").c_str()), 1);
    EXPECT_EQ(IsValidMoonXyzFile(), 1);
    EXPECT_EQ(kvx::jpl::MoonHandle()->coefficientsPerRecord, 458);
    ReaderPtr de(kDe);
    for (double jd : {2451568.5, 2451600.123, 2451700.0, 2451728.4}) {
        for (auto [t, c] : {std::pair{10, 3}, {3, 11}, {10, 11}}) {
            double p[3], v[3], pv[6];
            ASSERT_EQ(kvx::jpl::MoonQuery(t, jd, c, p, v), 1) << jd;
            ASSERT_EQ(Eval(de.r, jd, t, c, pv), 0);
            for (int i = 0; i < 3; ++i) {
                EXPECT_EQ(p[i], pv[i]);
                EXPECT_EQ(v[i], pv[3 + i]);
            }
        }
    }
    double p[3];
    EXPECT_EQ(kvx::jpl::MoonQuery(5, 2451600.0, 11, p, nullptr), 0);   // Jupiter is not in it
    EXPECT_EQ(kvx::jpl::MoonQuery(14, 2451600.0, 3, p, nullptr), 0);   // nor the nutations
    EXPECT_EQ(kvx::jpl::MoonQuery(10, 2451500.0, 3, p, nullptr), 0);   // before its range
    kvx::jpl::CloseMoon();
    EXPECT_EQ(IsValidMoonXyzFile(), 0);
    EXPECT_EQ(kvx::jpl::MoonQuery(10, 2451600.0, 3, p, nullptr), 0);
}

}  // namespace
