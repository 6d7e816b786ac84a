// The body routines from eight threads at once give the same bits as one
// thread, with no data file, with the JPL DE excerpt (main ephemeris and
// Moon source, nutation), with the Moon position file alone and with the
// planet position file alone. The threads walk one batch from different
// starting points, so that they keep asking the readers for different
// records at the same moment. Run under ThreadSanitizer by make check-tsan.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "kvxlib.h"
#include "solar/ephem/jpl_de.h"
#include "solar/ephem/jpl_query.h"
#include "solar/ephem/planet_xyz.h"
#include "test_support.h"

namespace {

using kvx::test::TestDataPath;

constexpr int kThreads = 8;
// Dates inside the excerpts (JD 2451536.5 to 2452272.5), 40 days apart in
// turn with a few hours: every query of a neighbour lands in another record.
constexpr int kDates = 48;
constexpr int kPasses = 4;
constexpr int kBodies = 4 + 12;  // Sun, Moon (CalcMoon, CalcMoon2), a spare slot; 12 planets

struct Result {
    ATime t;
    BodyPos pos[kBodies];
};

double DateOf(int k) { return 2451540.25 + (k % 2 ? 40.0 : 9.3) * k + 0.17 * (k % 5); }

Result Compute(int k) {
    Result r;
    std::memset(&r, 0, sizeof r);
    const Observer tokyo{35.68, 139.77, 40.0};
    ADate d{};
    JdToDate2(DateOf(k), &d);
    SetATimeDate(&d, &tokyo, &r.t);  // nutation from the DE file when loaded
    CalcSun(&r.t, &r.pos[0]);
    CalcMoon(&r.t, &r.pos[1], &r.pos[0]);
    CalcMoon2(&r.t, &r.pos[2]);
    for (int p = 0; p < 12; ++p) CalcPlanet(p, &r.t, &r.pos[0], &r.pos[4 + p]);
    return r;
}

// Bit for bit, leaving out the padding after ATime's minute.
bool Same(const Result &a, const Result &b) {
    constexpr size_t from = offsetof(ATime, second);
    return a.t.year == b.t.year && a.t.month == b.t.month && a.t.day == b.t.day && a.t.hour == b.t.hour &&
           a.t.minute == b.t.minute &&
           std::memcmp(reinterpret_cast<const char *>(&a.t) + from, reinterpret_cast<const char *>(&b.t) + from,
                       sizeof(ATime) - from) == 0 &&
           std::memcmp(a.pos, b.pos, sizeof a.pos) == 0;
}

// Every thread computes the whole batch, thread i starting at date 6i.
void CheckThreadsAgree(const char *what) {
    std::vector<Result> single(kDates);
    for (int k = 0; k < kDates; ++k) single[k] = Compute(k);
    std::vector<std::vector<Result>> per(kThreads, std::vector<Result>(kDates));
    // All threads start together and walk the batch kPasses times, so that
    // their queries overlap; a result that ever differs is counted.
    std::vector<int> differs(kThreads, 0);
    std::atomic<int> ready{0};
    std::vector<std::thread> pool;
    for (int i = 0; i < kThreads; ++i)
        pool.emplace_back([&, i] {
            ready.fetch_add(1);
            while (ready.load() < kThreads) std::this_thread::yield();
            for (int pass = 0; pass < kPasses; ++pass)
                for (int n = 0; n < kDates; ++n) {
                    const int k = (n + 6 * i) % kDates;
                    per[i][k] = Compute(k);
                    if (!Same(per[i][k], single[k])) ++differs[i];
                }
        });
    for (auto &th : pool) th.join();
    int differing = 0;
    for (int d : differs) differing += d;
    EXPECT_EQ(differing, 0) << what << ": results of " << kThreads * kDates * kPasses << " differ from one thread's";
}

// A reader alone, queried in a tight loop at dates that jump across its
// records, so that the threads' reads overlap far more often than through
// the body routines.
// Dates from `first` over `span` days (the file's coverage).
template <class Query>
void CheckQueriesAgree(double first, double span, Query query, const char *what) {
    constexpr int kQueries = 512;
    auto date = [=](int k) { return first + std::fmod(37.3901 * k, span); };
    std::vector<std::array<double, 3>> single(kQueries);
    for (int k = 0; k < kQueries; ++k) ASSERT_TRUE(query(date(k), single[k].data())) << what;
    std::vector<int> differs(kThreads, 0);
    std::vector<std::thread> pool;
    for (int i = 0; i < kThreads; ++i)
        pool.emplace_back([&, i] {
            for (int pass = 0; pass < kPasses; ++pass)
                for (int n = 0; n < kQueries; ++n) {
                    const int k = (n + 64 * i) % kQueries;
                    std::array<double, 3> p{};
                    if (!query(date(k), p.data()) || p != single[k]) ++differs[i];
                }
        });
    for (auto &th : pool) th.join();
    int differing = 0;
    for (int d : differs) differing += d;
    EXPECT_EQ(differing, 0) << what << ": queries of " << kThreads * kQueries * kPasses << " differ";
}

TEST(Reentrancy, WithoutDataFiles) { CheckThreadsAgree("no file"); }

TEST(Reentrancy, WithTheDeExcerpt) {
    ASSERT_TRUE(kvx::jpl::OpenMain(TestDataPath("de405_2000.bin").c_str(), false));
    ASSERT_TRUE(kvx::jpl::LoadMoonFile(TestDataPath("de405_2000.bin").c_str()));
    CheckThreadsAgree("DE405 excerpt");
    CheckQueriesAgree(
        2451537.0, 730.0, [](double jde, double *p) { return kvx::jpl::Query(-1, jde, -3, p, nullptr) != 0; },
                      "DE405 Moon");
    kvx::jpl::CloseMoon();
    kvx::jpl::CloseMain();
}

TEST(Reentrancy, WithTheMoonFile) {
    ASSERT_TRUE(kvx::jpl::LoadMoonFile(TestDataPath("moon.xyz").c_str()));
    CheckThreadsAgree("moon.xyz");
    CheckQueriesAgree(
        2451569.0, 159.0, [](double jde, double *p) { return kvx::jpl::MoonQuery(10, jde, 3, p, nullptr) != 0; },
                      "moon.xyz Moon");
    kvx::jpl::CloseMoon();
}

TEST(Reentrancy, WithThePlanetFile) {
    for (bool onMemory : {false, true}) {
        ASSERT_EQ(kvx::planetxyz::Open(TestDataPath("planet.xyz").c_str(), onMemory), 1);
        CheckThreadsAgree(onMemory ? "planet.xyz in memory" : "planet.xyz");
        CheckQueriesAgree(
            2451537.0, 730.0, [](double jde, double *p) { return kvx::planetxyz::Lookup(3, jde, p, nullptr) != 0; },
                          "planet.xyz Jupiter");
        kvx::planetxyz::Release();
    }
}

}  // namespace
