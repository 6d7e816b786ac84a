// The frame of date: ns per call of the ATime fill and its parts, with
// ERFA's IAU 1976/1980 precession-nutation matrix (eraPnm80) and IAU 2006
// bias-precession matrix (eraPmat06) as peers when ERFA is installed.
#include <benchmark/benchmark.h>

#include "kvxlib.h"

#ifdef KVX_HAVE_ERFA
#include <erfa.h>
#endif

namespace {

// Dates stepped by an irrational fraction of a day so that no call repeats.
constexpr double kStep = 0.7390851332;

void BM_SetATimeDate_Observer(benchmark::State &state) {
    ADate date{2024, 6, 1, 21, 30, 0.0, 9.0};
    const Observer obs{35.6895, 139.6917, 40.0};
    ATime a;
    for (auto _ : state) {
        SetATimeDate(&date, &obs, &a);
        benchmark::DoNotOptimize(a);
        date.second = date.second < 50.0 ? date.second + 7.3 : 0.1;
    }
}
BENCHMARK(BM_SetATimeDate_Observer);

void BM_SetATimeDate_Geocentre(benchmark::State &state) {
    ADate date{2024, 6, 1, 21, 30, 0.0, 9.0};
    ATime a;
    for (auto _ : state) {
        SetATimeDate(&date, nullptr, &a);
        benchmark::DoNotOptimize(a);
        date.second = date.second < 50.0 ? date.second + 7.3 : 0.1;
    }
}
BENCHMARK(BM_SetATimeDate_Geocentre);

void BM_GetPrecMtx_FromJ2000(benchmark::State &state) {
    double jd = 2460000.5;
    double m[9];
    for (auto _ : state) {
        GetPrecMtx(2451545.0, jd, m);
        benchmark::DoNotOptimize(m);
        jd += kStep;
    }
}
BENCHMARK(BM_GetPrecMtx_FromJ2000);

void BM_GetPrecMtx_ToJ2000(benchmark::State &state) {
    double jd = 2460000.5;
    double m[9];
    for (auto _ : state) {
        GetPrecMtx(jd, 2451545.0, m);
        benchmark::DoNotOptimize(m);
        jd += kStep;
    }
}
BENCHMARK(BM_GetPrecMtx_ToJ2000);

void BM_GetNutationParam(benchmark::State &state) {
    double jd = 2460000.5;
    double n[2];
    for (auto _ : state) {
        GetNutationParam(jd, n);
        benchmark::DoNotOptimize(n);
        jd += kStep;
    }
}
BENCHMARK(BM_GetNutationParam);

void BM_GetLst(benchmark::State &state) {
    double jd = 2460000.5;
    for (auto _ : state) {
        benchmark::DoNotOptimize(GetLst(jd, 139.6917));
        jd += kStep;
    }
}
BENCHMARK(BM_GetLst);

void BM_UtToDt(benchmark::State &state) {
    double jd = 2460000.5;
    for (auto _ : state) {
        benchmark::DoNotOptimize(UtToDt(jd));
        jd += kStep;
    }
}
BENCHMARK(BM_UtToDt);

#ifdef KVX_HAVE_ERFA
void BM_Erfa_Pnm80(benchmark::State &state) {
    double jd = 2460000.5;
    double m[3][3];
    for (auto _ : state) {
        eraPnm80(jd, 0.0, m);
        benchmark::DoNotOptimize(m);
        jd += kStep;
    }
}
BENCHMARK(BM_Erfa_Pnm80);

void BM_Erfa_Pmat06(benchmark::State &state) {
    double jd = 2460000.5;
    double m[3][3];
    for (auto _ : state) {
        eraPmat06(jd, 0.0, m);
        benchmark::DoNotOptimize(m);
        jd += kStep;
    }
}
BENCHMARK(BM_Erfa_Pmat06);

void BM_Erfa_Nut80(benchmark::State &state) {
    double jd = 2460000.5;
    double dpsi, deps;
    for (auto _ : state) {
        eraNut80(jd, 0.0, &dpsi, &deps);
        benchmark::DoNotOptimize(dpsi);
        benchmark::DoNotOptimize(deps);
        jd += kStep;
    }
}
BENCHMARK(BM_Erfa_Nut80);
#endif

}  // namespace
