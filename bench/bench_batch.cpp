// The batch almanac: ten years of daily places of the Sun, the Moon and the
// eight planets Mercury to Pluto for one observer, split over 1, 2 and 4
// threads, from the built-in theories and with the DE405 test excerpt
// loaded (it covers 1999-12-24 to 2001-12-29: the first two years come from
// the file, the rest falls back to the theories).
//
// The threads take blocks of kBlock days from one shared counter, each the
// next free block when it has finished its last: a thread on a slower core
// (a loaded machine, a busy neighbour of a virtual machine) or with more
// theory days than file days simply takes fewer blocks, so the threads end
// together. Blocks rather than single days keep two threads from writing
// the records of neighbouring days, which share a cache line, at the same
// moment.
//
// Every run, the one-thread run too, works on threads started for it, so
// the per-thread caches of the library start cold in each: a run on the
// benchmark's own thread would find them warm from the run before.
//
// Each run checks that the threads' records are bit for bit those of one
// thread; when they are not, the run is marked as an error with the number
// of differing days instead of a time (the readers of the data files must
// be safe for concurrent queries). Besides the wall time each run reports
// the CPU time of its slowest thread, the batch's time on free cores.
//
//   kvx_bench --benchmark_filter=Batch --benchmark_repetitions=5 \
//             --benchmark_report_aggregates_only=true
#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <ctime>
#include <string>
#include <thread>
#include <vector>

#include "kvxlib.h"
#include "solar/ephem/jpl_de.h"

namespace {

constexpr double kFirstJd = 2451544.5;  // 2000-01-01 0h UT
constexpr int kDays = 3653;              // ten years
constexpr int kBodies = 10;              // Sun, Moon, codes 0 to 7
constexpr int kBlock = 8;                // days
constexpr Observer kObserver{35.6581, 139.7414, 40.0};

struct Day {
    BodyPos body[kBodies];
};

// CPU time of the calling thread, seconds.
double ThreadCpu() {
    timespec ts{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return static_cast<double>(ts.tv_sec) + 1e-9 * static_cast<double>(ts.tv_nsec);
}

// Blocks of kBlock days from the shared counter until none is left.
void Places(std::atomic<int> *next, Day *out, double *cpu) {
    const double start = ThreadCpu();
    ATime t;
    for (int block = next->fetch_add(kBlock); block < kDays; block = next->fetch_add(kBlock)) {
        for (int k = block; k < block + kBlock && k < kDays; ++k) {
            SetATimeJd(kFirstJd + k, 9.0, &kObserver, &t);
            Day &d = out[k];
            CalcSun(&t, &d.body[0]);
            CalcMoon(&t, &d.body[1], &d.body[0]);
            for (int32_t code = 0; code < 8; ++code) CalcPlanet(code, &t, &d.body[0], &d.body[2 + code]);
        }
    }
    *cpu = ThreadCpu() - start;
}

struct CpuTimes {
    double slowest;  // on a machine with free cores, the wall time of the batch
    double total;    // above one thread's time when the threads slow each other
};

CpuTimes Almanac(int threads, std::vector<Day> &out) {
    std::vector<double> cpu(threads, 0.0);
    std::atomic<int> next{0};
    std::vector<std::thread> pool;
    for (int i = 0; i < threads; ++i)
        pool.emplace_back(Places, &next, out.data(), &cpu[i]);
    for (std::thread &th : pool) th.join();
    double total = 0.0;
    for (double c : cpu) total += c;
    return {*std::max_element(cpu.begin(), cpu.end()), total};
}

int DifferingDays(const std::vector<Day> &a, const std::vector<Day> &b) {
    int n = 0;
    for (int k = 0; k < kDays; ++k) n += std::memcmp(&a[k], &b[k], sizeof(Day)) != 0;
    return n;
}

struct DeFile {
    explicit DeFile(bool load) : loaded(load) {
        if (load) kvx::jpl::OpenMain((std::string(KVX_BENCH_DATA_DIR) + "/de405_2000.bin").c_str(), false);
    }
    ~DeFile() {
        if (loaded) kvx::jpl::CloseMain();
    }
    bool loaded;
};

// Arguments: threads, DE file loaded (0/1).
void BM_BatchAlmanac(benchmark::State &state) {
    const int threads = static_cast<int>(state.range(0));
    DeFile de(state.range(1) != 0);
    std::vector<Day> one(kDays), many(kDays);
    Almanac(1, one);
    int differing = 0;
    double slowestThread = 0.0, allThreads = 0.0;
    for (auto _ : state) {
        const CpuTimes cpu = Almanac(threads, many);
        slowestThread += cpu.slowest;
        allThreads += cpu.total;
        differing += DifferingDays(one, many);
    }
    // The wall time of a loaded machine says little about scaling; the CPU
    // time of the slowest thread is what the batch takes on free cores.
    state.counters["slowest_thread_ms"] =
        benchmark::Counter(slowestThread * 1e3, benchmark::Counter::kAvgIterations);
    state.counters["all_threads_ms"] = benchmark::Counter(allThreads * 1e3, benchmark::Counter::kAvgIterations);
    state.counters["places_per_s"] =
        benchmark::Counter(static_cast<double>(kDays) * kBodies, benchmark::Counter::kIsIterationInvariantRate);
    if (differing != 0)
        state.SkipWithError(("threaded results differ from one thread on " + std::to_string(differing) +
                             " day(s)").c_str());
}
BENCHMARK(BM_BatchAlmanac)
    ->ArgNames({"threads", "de"})
    ->ArgsProduct({{1, 2, 4}, {0, 1}})
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
