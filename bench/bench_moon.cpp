// The Moon: the built-in lunar theory, the phase series and the age, with
// the Swiss Ephemeris' Moshier Moon and libnova's lunar position as peers
// when they are installed.
#include <benchmark/benchmark.h>

#include "kvxlib.h"
#include "solar/moon_libration.h"
#include "solar/moon_theory.h"

#ifdef KVX_HAVE_SWE
#include <swephexp.h>
#endif
#ifdef KVX_HAVE_NOVA
#include <libnova/lunar.h>
#endif

namespace {

// Dates step by an odd fraction of a day so that no call repeats the last
// one (the Swiss Ephemeris keeps the last result).
constexpr double kStartJd = 2460000.3;
constexpr double kStep = 0.3713;

void BM_MoonTheoryLbr(benchmark::State &state) {
    double jd = kStartJd;
    double lb[2], dist;
    for (auto _ : state) {
        kvx::moon::TheoryLbr(jd, lb, &dist);
        benchmark::DoNotOptimize(lb);
        benchmark::DoNotOptimize(dist);
        jd += kStep;
    }
}
BENCHMARK(BM_MoonTheoryLbr);

void BM_MoonLibration(benchmark::State &state) {
    double t = 0.2;
    for (auto _ : state) {
        benchmark::DoNotOptimize(kvx::moon::MoonLibration(t, 133.16, -3.23, 134.68, 0.0046, 23.44));
        t += 1e-5;
    }
}
BENCHMARK(BM_MoonLibration);

void BM_GetNewMoonJd2000(benchmark::State &state) {
    double k = 300.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(GetNewMoonJd2000(k));
        k += 0.25;
    }
}
BENCHMARK(BM_GetNewMoonJd2000);

void BM_GetMoonAge(benchmark::State &state) {
    double jd = kStartJd;
    for (auto _ : state) {
        benchmark::DoNotOptimize(GetMoonAge(jd, nullptr, nullptr));
        jd += kStep;
    }
}
BENCHMARK(BM_GetMoonAge);

#ifdef KVX_HAVE_SWE
void BM_Peer_SweMoshierMoon(benchmark::State &state) {
    double jd = kStartJd;
    double x[6];
    char err[AS_MAXCH];
    for (auto _ : state) {
        swe_calc_ut(jd, SE_MOON, SEFLG_MOSEPH, x, err);
        benchmark::DoNotOptimize(x);
        jd += kStep;
    }
}
BENCHMARK(BM_Peer_SweMoshierMoon);
#endif

#ifdef KVX_HAVE_NOVA
void BM_Peer_NovaLunarEquCoords(benchmark::State &state) {
    double jd = kStartJd;
    ln_equ_posn pos;
    for (auto _ : state) {
        ln_get_lunar_equ_coords(jd, &pos);
        benchmark::DoNotOptimize(pos);
        jd += kStep;
    }
}
BENCHMARK(BM_Peer_NovaLunarEquCoords);
#endif

}  // namespace
