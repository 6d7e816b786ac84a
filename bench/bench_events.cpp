// Lunar eclipses and the almanac of planetary events: a year's eclipse
// search and a year's events of every body on the built-in theories, with
// the Swiss Ephemeris' eclipse search (Moshier's analytic ephemeris, no
// files) as the peer when it is installed.
#include <benchmark/benchmark.h>

#include <vector>

#include "kvxlib.h"

#ifdef KVX_HAVE_SWE
#include <swephexp.h>
#endif

namespace {

void BM_GetLunarEclipses_Year(benchmark::State &state) {
    int year = 2000;
    LunarEclipse list[8];
    for (auto _ : state) {
        benchmark::DoNotOptimize(GetLunarEclipses(year, list, 8));
        year = year == 2030 ? 2000 : year + 1;
    }
}
BENCHMARK(BM_GetLunarEclipses_Year)->Unit(benchmark::kMillisecond);

// One eclipse from its full Moon (a total one: every contact searched).
void BM_CalcLunarEclipse_Total(benchmark::State &state) {
    LunarEclipse e;
    for (auto _ : state) benchmark::DoNotOptimize(CalcLunarEclipse(2451564.7, &e));
}
BENCHMARK(BM_CalcLunarEclipse_Total)->Unit(benchmark::kMicrosecond);

void BM_GetPlanetEvents2_Year(benchmark::State &state) {
    std::vector<PlanetEvent> events(4000);
    for (auto _ : state)
        benchmark::DoNotOptimize(GetPlanetEvents2(2460676.5, 2460676.5 + 365.0, 0, events.data(), 4000));
}
BENCHMARK(BM_GetPlanetEvents2_Year)->Unit(benchmark::kMillisecond);

void BM_GetPlanetEvents_MarsYear(benchmark::State &state) {
    PlanetEvent events[400];
    for (auto _ : state) benchmark::DoNotOptimize(GetPlanetEvents(2025, 2, events, 400));
}
BENCHMARK(BM_GetPlanetEvents_MarsYear)->Unit(benchmark::kMillisecond);

#ifdef KVX_HAVE_SWE
// The peer: the next lunar eclipse from a date, with all its contacts.
void BM_Peer_SweLunEclipseWhen(benchmark::State &state) {
    double tret[10];
    char err[AS_MAXCH];
    for (auto _ : state)
        benchmark::DoNotOptimize(swe_lun_eclipse_when(2451540.0, SEFLG_MOSEPH, 0, tret, 0, err));
}
BENCHMARK(BM_Peer_SweLunEclipseWhen)->Unit(benchmark::kMicrosecond);
#endif

}  // namespace
