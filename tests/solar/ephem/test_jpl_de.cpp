// The JPL DE reader against Swiss Ephemeris reading the same DE405 excerpt (tests/reference/make_jpl_reference.py,
// which also checks the excerpt's Moon against Swiss Ephemeris' lunar file); the reader's edges, "OnMemory", the KQ variant and the Moon position file.

#include "solar/ephem/jpl_de.h"
#include "solar/ephem/jpl_query.h"
#include "test_support.h"

namespace {

using kvx::jpl::Reader;
using namespace kvx::test;

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

// Every JPL body against the barycentre through the reader, every pair of library codes through the query: the same
// coefficients summed in double precision agree to a few units of the last place of 40 AU and 0.03 AU/day.
TEST(JplDeReader, AgreesWithSwissEphemerisOnEveryBodyAndPair) {
    ReaderPtr de(kDe);
    ASSERT_NE(de.r, nullptr);
    ASSERT_TRUE(kvx::jpl::OpenMain(kDe.c_str(), false));
    Comparison cmp({{"position_au", 2e-14, "the same coefficients summed in double precision"},
                    {"velocity_au_d", 2e-17, "the same coefficients summed in double precision"},
                    {"libration_rate", 1e-9, "the reference's central differences: truncation 1e-10, "
                                             "rounding of psi (ulp 4.5e-13) over 0.002 day"}});
    for (const char *file : {"jpl_barycentric.txt", "jpl_pairs.txt"}) {
        const bool pairs = file[4] == 'p';
        for (const auto &row : Reference(file, {"jd", "target", "centre", "x", "y", "z", "vx", "vy", "vz"})) {
            const int target = static_cast<int>(row["target"]), centre = static_cast<int>(row["centre"]);
            double pv[6];
            if (pairs) {
                ASSERT_EQ(kvx::jpl::Query(target, row["jd"], centre, pv, pv + 3), 1) << row.Label();
            } else {
                ASSERT_EQ(Eval(de.r, row["jd"], target, centre == 0 ? 1 : centre, pv), 0) << row.Label();  // 0: none
            }
            for (int i = 0; i < 3; ++i) {
                cmp.Add("position_au", pv[i] - row.From("x")[i], row);
                cmp.Add(target == 15 && !pairs ? "libration_rate" : "velocity_au_d", pv[3 + i] - row.From("vx")[i], row);
            }
        }
    }
    cmp.Check();
    // No JPL body, the nutations as a centre, past the end: 0. The nutations take centre 0.
    double p[3];
    EXPECT_EQ(kvx::jpl::Query(8, 2451545.0, -2, p, nullptr) + kvx::jpl::Query(-2, 2451545.0, -30, p, nullptr) +
                  kvx::jpl::Query(-2, kEnd + 1.0, -3, p, nullptr), 0);  // 8: Eris
    ASSERT_EQ(kvx::jpl::Query(-30, 2451545.0, 0, p, nullptr), 1);
    EXPECT_NEAR(p[0], -6.750248558835453e-05, 1e-18);
    EXPECT_EQ(GetJplDeVersion(), 405);
    kvx::jpl::CloseMain();
    EXPECT_EQ(GetJplDeVersion(), -1);
    EXPECT_EQ(kvx::jpl::Query(-2, 2451545.0, -3, p, nullptr), 0);
}

TEST(JplDeReader, RangeEdgesAndErrorCodes) {
    ReaderPtr de(kDe);
    using namespace kvx::jpl;
    // The exact end is inside; the date is checked before the bodies (1e9 with 0, 0).
    const struct { double jd; int target, centre, code; } cases[] = {
        {kEnd, 10, 3, 0}, {std::nextafter(kEnd, 1e10), 10, 3, kOutOfRange}, {std::nextafter(kStart, 0.0), 10, 3, kOutOfRange},
        {std::nan(""), 10, 3, kOutOfRange}, {1e9, 0, 0, kOutOfRange}, {2451545.0, 0, 3, kBadTarget},
        {2451545.0, 16, 3, kBadTarget}, {2451545.0, 3, 0, kBadTarget}, {2451545.0, 3, 13, kBadCentre},
        {2451545.0, 5, 5, kBadTargetCentre}};
    double pv[6], sun[6];
    for (const auto &c : cases) EXPECT_EQ(Eval(de.r, c.jd, c.target, c.centre, pv), c.code) << c.jd << " " << c.target;
    ASSERT_EQ(Eval(de.r, kEnd, 10, 3, pv), 0);
    EXPECT_EQ(kvx::jpl::CachedRecord(de.r), 2 + 22);  // the 23rd data record, not one past it
    ASSERT_EQ(Eval(de.r, kStart, 10, 3, pv), 0);
    EXPECT_EQ(kvx::jpl::CachedRecord(de.r), 2);
    // The barycentre as a target.
    ASSERT_EQ(Eval(de.r, 2451545.0, 12, 11, pv), 0);
    ASSERT_EQ(Eval(de.r, 2451545.0, 11, 12, sun), 0);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(pv[i], -sun[i]);
    EXPECT_EQ(kvx::jpl::Evaluate(nullptr, 2451545.0, 3, 11, pv, true), kvx::jpl::kNotReady);
}

// A handle read into memory answers nothing (the callers fall back).
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
    EXPECT_EQ(kvx::jpl::Query(-1, 2451545.0, -3, pv, nullptr), 0);
    EXPECT_EQ(kvx::jpl::Query(-30, 2451545.0, 0, pv, nullptr), 0);
    EXPECT_EQ(GetJplDeVersion(), 405);
    kvx::jpl::CloseMain();
}

TEST(JplDeReader, KqFileGivesTheSameValuesAsTheDeFile) {
    ReaderPtr kq(TestDataPath("hostile/kq_valid.bin"));  // first two records of the excerpt
    ReaderPtr de(kDe);
    ASSERT_NE(kq.r, nullptr);
    EXPECT_TRUE(kq.r->deNumber == 405 && kq.r->endJd == kStart + 64.0) << kq.r->endJd;
    for (double jd : {kStart, kStart + 17.25, kStart + 32.0, kStart + 63.9, kStart + 64.0})
        for (int t : {1, 3, 10, 11, 14, 15}) {
            if (jd == kq.r->endJd && t != 3) continue;
            double a[6], b[6];
            ASSERT_EQ(Eval(kq.r, jd, t, t == 3 ? 11 : 3, a), 0);
            ASSERT_EQ(Eval(de.r, jd, t, t == 3 ? 11 : 3, b), 0);
            // The same coefficients, bit for bit; at its end the KQ file takes its last record at fraction 1, the DE
            // file the next at 0 (the Earth's continuity: 6e-17 AU measured).
            for (int i = 0; i < 6; ++i) EXPECT_NEAR(a[i], b[i], jd == kq.r->endJd ? 2.2e-16 : 0.0) << jd << " " << t;
        }
}

TEST(JplDeReader, MoonFileHoldsTheMoonEarthAndSunOfTheDeFile) {
    ASSERT_EQ(kvx::jpl::LoadMoonFile(TestDataPath("moon.xyz").c_str()), 1);
    EXPECT_EQ(IsValidMoonXyzFile(), 1);
    ReaderPtr de(kDe);
    for (double jd : {2451568.5, 2451600.123, 2451700.0, 2451728.4})
        for (auto [t, c] : {std::pair{10, 3}, {3, 11}, {10, 11}}) {
            double p[3], v[3], pv[6];
            ASSERT_EQ(kvx::jpl::MoonQuery(t, jd, c, p, v), 1) << jd;
            ASSERT_EQ(Eval(de.r, jd, t, c, pv), 0);
            for (int i = 0; i < 3; ++i) EXPECT_TRUE(p[i] == pv[i] && v[i] == pv[3 + i]) << jd << " " << t;
        }
    double p[3];
    // Not in it: Jupiter, the nutations, a date before its range.
    EXPECT_EQ(kvx::jpl::MoonQuery(5, 2451600.0, 11, p, nullptr) + kvx::jpl::MoonQuery(14, 2451600.0, 3, p, nullptr) +
                  kvx::jpl::MoonQuery(10, 2451500.0, 3, p, nullptr), 0);
    kvx::jpl::CloseMoon();
    EXPECT_EQ(IsValidMoonXyzFile(), 0);
    EXPECT_EQ(kvx::jpl::MoonQuery(10, 2451600.0, 3, p, nullptr), 0);
}

}  // namespace
