// The body routines and readers from eight threads give one thread's bits: without data files and with each (JPL DE,
// moon.xyz, planet.xyz from file and memory). Run under ThreadSanitizer by make check-tsan.

#include <array>
#include <atomic>
#include <cstddef>
#include <cstring>
#include <thread>

#include "solar/ephem/jpl_de.h"
#include "solar/ephem/jpl_query.h"
#include "solar/ephem/planet_xyz.h"
#include "test_support.h"

namespace {

using kvx::test::TestDataPath;

constexpr int kThreads = 8;
constexpr int kPasses = 4;

// f(k), k < n, on one thread, then on kThreads threads started together, each from its own k (different records at
// once): how many differ.
template <class T, class F>
int Differing(int n, F f) {
    std::vector<T> single(n);
    for (int k = 0; k < n; ++k) single[k] = f(k);
    std::atomic<int> ready{0}, differing{0};
    std::vector<std::thread> pool;
    for (int i = 0; i < kThreads; ++i)
        pool.emplace_back([&, i] {
            ready.fetch_add(1);
            while (ready.load() < kThreads) std::this_thread::yield();
            for (int pass = 0; pass < kPasses; ++pass)
                for (int m = 0; m < n; ++m) {
                    const int k = (m + i * n / kThreads) % n;
                    if (!(f(k) == single[k])) differing.fetch_add(1);
                }
        });
    for (auto &t : pool) t.join();
    return differing.load();
}

// The Sun, Moon and twelve planets for a civil date, bit for bit (ATime's padding after minute left out).
struct Result {
    ATime t;
    BodyPos pos[15];
    bool operator==(const Result &o) const {
        constexpr size_t from = offsetof(ATime, second), head = offsetof(ATime, minute) + sizeof t.minute;
        const auto *a = reinterpret_cast<const char *>(&t), *b = reinterpret_cast<const char *>(&o.t);
        return !std::memcmp(a, b, head) && !std::memcmp(a + from, b + from, sizeof(ATime) - from) && !std::memcmp(pos, o.pos, sizeof pos);
    }
};

Result Bodies(int k) {
    Result r;
    std::memset(&r, 0, sizeof r);
    const Observer tokyo{35.68, 139.77, 40.0};
    ADate d{};
    JdToDate2(2451540.25 + (k % 2 ? 40.0 : 9.3) * k + 0.17 * (k % 5), &d);  // inside the excerpts
    SetATimeDate(&d, &tokyo, &r.t);
    CalcSun(&r.t, &r.pos[0]);
    CalcMoon(&r.t, &r.pos[1], &r.pos[0]);
    CalcMoon2(&r.t, &r.pos[2]);
    for (int p = 0; p < 12; ++p) CalcPlanet(p, &r.t, &r.pos[0], &r.pos[3 + p]);
    return r;
}

// One reader alone, at dates jumping across its records over `span` days.
template <class Query>
int QueriesDiffering(double first, double span, Query query) {
    return Differing<std::array<double, 3>>(512, [=](int k) {
        std::array<double, 3> p{-1, -1, -1};
        if (!query(first + std::fmod(37.3901 * k, span), p.data())) p[0] = -2;
        return p;
    });
}

TEST(Reentrancy, WithoutDataFiles) { EXPECT_EQ(Differing<Result>(48, Bodies), 0); }

TEST(Reentrancy, WithEachDataFile) {
    ASSERT_TRUE(kvx::jpl::OpenMain(TestDataPath("de405_2000.bin").c_str(), false));
    ASSERT_TRUE(kvx::jpl::LoadMoonFile(TestDataPath("de405_2000.bin").c_str()));
    EXPECT_EQ(Differing<Result>(48, Bodies), 0);
    EXPECT_EQ(QueriesDiffering(2451537.0, 730.0, [](double t, double *p) { return kvx::jpl::Query(-1, t, -3, p, nullptr); }), 0);
    kvx::jpl::CloseMoon();
    kvx::jpl::CloseMain();
    ASSERT_TRUE(kvx::jpl::LoadMoonFile(TestDataPath("moon.xyz").c_str()));
    EXPECT_EQ(Differing<Result>(48, Bodies), 0);
    EXPECT_EQ(QueriesDiffering(2451569.0, 159.0, [](double t, double *p) { return kvx::jpl::MoonQuery(10, t, 3, p, nullptr); }), 0);
    kvx::jpl::CloseMoon();
    for (bool onMemory : {false, true}) {
        ASSERT_EQ(kvx::planetxyz::Open(TestDataPath("planet.xyz").c_str(), onMemory), 1);
        EXPECT_EQ(Differing<Result>(48, Bodies), 0) << onMemory;
        auto jupiter = [](double t, double *p) { return kvx::planetxyz::Lookup(3, t, p, nullptr); };
        EXPECT_EQ(QueriesDiffering(2451537.0, 730.0, jupiter), 0) << onMemory;
        kvx::planetxyz::Release();
    }
}

}  // namespace
