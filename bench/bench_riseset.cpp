// Rise and set: sunrise (GetSunRise, day context included), a moonrise and
// a planet's rise (InitRiseSet + GetRiseSet), with the Swiss Ephemeris'
// swe_rise_trans on its Moshier ephemeris and libnova's ln_get_solar_rst /
// ln_get_lunar_rst as peers when they are installed. Every call asks for a
// different day, from Tokyo.
#include <benchmark/benchmark.h>

#include "kvxlib.h"

#ifdef KVX_HAVE_SWE
#include <swephexp.h>
#endif
#ifdef KVX_HAVE_NOVA
#include <libnova/lunar.h>
#include <libnova/solar.h>
#include <libnova/transform.h>
#endif

namespace {

constexpr double kLat = 35.6895, kLon = 139.6917, kHeight = 40.0, kTz = 9.0;
constexpr double kFirstDay = 2460000.5;  // 2023 Feb 24, 0 h UT

// Civil date of day k of a 1024-day cycle, and its local midnight in UT.
ADate LocalDate(unsigned k) {
    ADate d{};
    JdToDate2(kFirstDay + (k & 1023u) + kTz / 24.0, &d);
    d.hour = d.minute = 0;
    d.second = 0.0;
    d.tz = kTz;
    return d;
}
double LocalMidnightUt(unsigned k) { return kFirstDay + (k & 1023u) - kTz / 24.0; }

void BM_GetSunRise(benchmark::State &state) {
    const Observer obs{kLat, kLon, kHeight};
    unsigned k = 0;
    double t = 0.0;
    for (auto _ : state) {
        const ADate d = LocalDate(k++);
        GetSunRise(&d, &obs, &t);
        benchmark::DoNotOptimize(t);
    }
}
BENCHMARK(BM_GetSunRise);

void RiseOf(benchmark::State &state, int body) {
    const Observer obs{kLat, kLon, kHeight};
    unsigned k = 0;
    double t = 0.0;
    for (auto _ : state) {
        const ADate d = LocalDate(k++);
        InitRiseSet(&d, &obs);
        benchmark::DoNotOptimize(GetRiseSet(kTz, body, nullptr, 1, &obs, 0.0, &t));
    }
}
void BM_MoonRise(benchmark::State &state) { RiseOf(state, -1); }
BENCHMARK(BM_MoonRise);
void BM_MarsRise(benchmark::State &state) { RiseOf(state, 2); }
BENCHMARK(BM_MarsRise);
void BM_JupiterRise(benchmark::State &state) { RiseOf(state, 3); }
BENCHMARK(BM_JupiterRise);

#ifdef KVX_HAVE_SWE
void SweRise(benchmark::State &state, int planet) {
    double geo[3] = {kLon, kLat, kHeight};
    char err[AS_MAXCH];
    unsigned k = 0;
    double t = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            swe_rise_trans(LocalMidnightUt(k++), planet, nullptr, SEFLG_MOSEPH, SE_CALC_RISE, geo, 0.0, 0.0, &t, err));
        benchmark::DoNotOptimize(t);
    }
}
void BM_SunRise_SweMoshier(benchmark::State &state) { SweRise(state, SE_SUN); }
BENCHMARK(BM_SunRise_SweMoshier);
void BM_MoonRise_SweMoshier(benchmark::State &state) { SweRise(state, SE_MOON); }
BENCHMARK(BM_MoonRise_SweMoshier);
void BM_MarsRise_SweMoshier(benchmark::State &state) { SweRise(state, SE_MARS); }
BENCHMARK(BM_MarsRise_SweMoshier);
void BM_JupiterRise_SweMoshier(benchmark::State &state) { SweRise(state, SE_JUPITER); }
BENCHMARK(BM_JupiterRise_SweMoshier);
#endif

#ifdef KVX_HAVE_NOVA
void BM_SunRise_Libnova(benchmark::State &state) {
    ln_lnlat_posn obs{kLon, kLat};
    ln_rst_time rst{};
    unsigned k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ln_get_solar_rst(LocalMidnightUt(k++), &obs, &rst));
        benchmark::DoNotOptimize(rst);
    }
}
BENCHMARK(BM_SunRise_Libnova);
void BM_MoonRise_Libnova(benchmark::State &state) {
    ln_lnlat_posn obs{kLon, kLat};
    ln_rst_time rst{};
    unsigned k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ln_get_lunar_rst(LocalMidnightUt(k++), &obs, &rst));
        benchmark::DoNotOptimize(rst);
    }
}
BENCHMARK(BM_MoonRise_Libnova);
#endif

}  // namespace
