// Artificial satellites: one propagation (the exported CalcASat with its
// validity test and set-up, the near-Earth step alone, the full model near
// the Earth and in deep space) and a week of passes for a low-Earth
// satellite. No peer is linked: python-sgp4's C++ core is not available as
// a library here; bench/sgp4_python_context.py measures its array API per
// point for context.
#include <benchmark/benchmark.h>

#include <cstring>

#include "asat/sgp4.h"
#include "kvxlib.h"

namespace {

Elm Parse(const char *l1, const char *l2) {
    TleLines t{};
    std::strncpy(t.name, "SAT", sizeof t.name - 1);
    std::strncpy(t.line1, l1, sizeof t.line1 - 1);
    std::strncpy(t.line2, l2, sizeof t.line2 - 1);
    Elm e;
    ASatTleToElm(&t, &e);
    return e;
}

const Elm kIss = Parse("1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927",
                       "2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537");
const Elm kMolniya = Parse("1 08195U 75081A   06176.33215444  .00000099  00000-0  11873-3 0   813",
                           "2 08195  64.1586 279.0717 6877146 264.7651  20.2257  2.00491383225656");
const Elm kGeo = Parse("1 24208U 96044A   06177.04061740 -.00000094  00000-0  10000-3 0  1600",
                       "2 24208   3.8536  80.0121 0026640 311.0977  48.3000  1.00778054 36119");

void BM_CalcASat(benchmark::State &state) {
    double jd = kIss.epoch, r[3], v[3];
    for (auto _ : state) {
        benchmark::DoNotOptimize(CalcASat(jd, &kIss, r, v));
        benchmark::DoNotOptimize(r);
        jd += 0.0007;
    }
}
BENCHMARK(BM_CalcASat);

void BM_NearEarthStep(benchmark::State &state) {
    kvx::asat::NearEarth m;
    kvx::asat::InitNearEarth(kIss, &m);
    double t = 0.0, r[3], v[3];
    for (auto _ : state) {
        benchmark::DoNotOptimize(kvx::asat::PropagateNearEarth(m, t, r, v));
        benchmark::DoNotOptimize(r);
        t += 1.0;
    }
}
BENCHMARK(BM_NearEarthStep);

void FullModel(benchmark::State &state, const Elm &elm) {
    double jd = elm.epoch, r[3], v[3];
    for (auto _ : state) {
        benchmark::DoNotOptimize(CalcASatFull(jd, &elm, r, v));
        benchmark::DoNotOptimize(r);
        jd += 0.0007;
        if (jd > elm.epoch + 3.0) jd = elm.epoch;
    }
}
void BM_CalcASatFull_LowEarth(benchmark::State &state) { FullModel(state, kIss); }
void BM_CalcASatFull_Molniya12h(benchmark::State &state) { FullModel(state, kMolniya); }
void BM_CalcASatFull_Geostationary24h(benchmark::State &state) { FullModel(state, kGeo); }
BENCHMARK(BM_CalcASatFull_LowEarth);
BENCHMARK(BM_CalcASatFull_Molniya12h);
BENCHMARK(BM_CalcASatFull_Geostationary24h);

void BM_ASatRiseSet_Week(benchmark::State &state) {
    const Lla tokyo{35.6895, 139.6917, 40.0};
    ASatPassEvent ev[200];
    int n = 0;
    for (auto _ : state) {
        n = ASatRiseSet(kIss.epoch, kIss.epoch + 7.0, &tokyo, &kIss, -90.0, ev, 200);
        benchmark::DoNotOptimize(ev);
    }
    state.counters["events"] = n;
}
BENCHMARK(BM_ASatRiseSet_Week)->Unit(benchmark::kMillisecond);

}  // namespace
