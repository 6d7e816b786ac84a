// Constellation lookup: ns per call over a fixed spread of directions, at
// B1875.0 (the strip search alone) and at J2000.0 (precession matrix, two
// conversions and the search). None of the C peers offers a constellation
// lookup, so there is no peer figure here.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "kvxlib.h"

namespace {

std::vector<double> Directions() {
    std::mt19937 rng(1875);
    std::uniform_real_distribution<double> u(0.0, 1.0);
    std::vector<double> ad;
    for (int i = 0; i < 1024; ++i) {
        ad.push_back(360.0 * u(rng));
        ad.push_back(std::asin(2.0 * u(rng) - 1.0) * 180.0 / 3.141592653589793);
    }
    return ad;
}

void Lookup(benchmark::State &state, double epochJd) {
    const std::vector<double> ad = Directions();
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(GetConstellation(&ad[i], epochJd));
        i = (i + 2) & 2047;
    }
}

void BM_GetConstellation_B1875(benchmark::State &state) { Lookup(state, 2405888.5); }
BENCHMARK(BM_GetConstellation_B1875);

void BM_GetConstellation_J2000(benchmark::State &state) { Lookup(state, 2451545.0); }
BENCHMARK(BM_GetConstellation_J2000);

// The two ends of the search: near the north pole a match comes within the
// first rows; near the south pole nearly the whole table is scanned (the
// start-row shortcut skips at most 19 rows).
void BM_GetConstellation_B1875_North(benchmark::State &state) {
    const double ad[2] = {100.0, 80.0};
    for (auto _ : state) benchmark::DoNotOptimize(GetConstellation(ad, 2405888.5));
}
BENCHMARK(BM_GetConstellation_B1875_North);

void BM_GetConstellation_B1875_South(benchmark::State &state) {
    const double ad[2] = {100.0, -80.0};
    for (auto _ : state) benchmark::DoNotOptimize(GetConstellation(ad, 2405888.5));
}
BENCHMARK(BM_GetConstellation_B1875_South);

}  // namespace
