// The analytic series of Mercury, Venus and Jupiter: ns per heliocentric
// place of date, per J2000.0 vector (the dispatcher's answer), and the mean
// elements they replace; Swiss Ephemeris (Moshier's analytic ephemeris,
// heliocentric) and libnova (VSOP87) as peers when installed. Every loop
// advances the date so that no cache can answer.
#include <benchmark/benchmark.h>

#include "kvxlib.h"
#include "solar/planet/planet.h"
#include "solar/planet/planet_series.h"

#ifdef KVX_HAVE_SWE
#include <swephexp.h>
#endif
#ifdef KVX_HAVE_NOVA
#include <libnova/jupiter.h>
#include <libnova/mercury.h>
#include <libnova/venus.h>
#endif

namespace {

void BM_SeriesLbr(benchmark::State &state) {
    const int code = static_cast<int>(state.range(0));
    double jde = 2460000.3, lbr[3];
    for (auto _ : state) {
        kvx::planet::SeriesLbr(code, jde, lbr);
        benchmark::DoNotOptimize(lbr);
        jde += 0.37;
    }
}
BENCHMARK(BM_SeriesLbr)->Arg(0)->Arg(1)->Arg(3);

void BM_SeriesVector(benchmark::State &state) {
    const int code = static_cast<int>(state.range(0));
    double jde = 2460000.3, v[3];
    for (auto _ : state) {
        kvx::planet::SeriesVector(code, jde, v);
        benchmark::DoNotOptimize(v);
        jde += 0.37;
    }
}
BENCHMARK(BM_SeriesVector)->Arg(0)->Arg(1)->Arg(3);

// The mean elements of date, as the dispatcher takes them outside the
// series' span (a date in AD 3100).
void BM_MeanElementsVector(benchmark::State &state) {
    const int code = static_cast<int>(state.range(0));
    double jde = 2853000.3, v[3];
    for (auto _ : state) {
        kvx::planet::HelioVector(code, jde, v);
        benchmark::DoNotOptimize(v);
        jde += 0.37;
    }
}
BENCHMARK(BM_MeanElementsVector)->Arg(0)->Arg(1)->Arg(3);

#ifdef KVX_HAVE_SWE
// Heliocentric ecliptic place of date from Moshier's analytic ephemeris.
void BM_Swe_HelioMoshier(benchmark::State &state) {
    const int body = static_cast<int>(state.range(0));
    double jd = 2460000.3, x[6];
    char err[256];
    for (auto _ : state) {
        swe_calc(jd, body, SEFLG_MOSEPH | SEFLG_HELCTR | SEFLG_NONUT, x, err);
        benchmark::DoNotOptimize(x);
        jd += 0.37;
    }
}
BENCHMARK(BM_Swe_HelioMoshier)->Arg(SE_MERCURY)->Arg(SE_VENUS)->Arg(SE_JUPITER);
#endif

#ifdef KVX_HAVE_NOVA
// Heliocentric place of date from the full VSOP87 series.
void BM_Nova_MercuryHelio(benchmark::State &state) {
    double jd = 2460000.3;
    ln_helio_posn p;
    for (auto _ : state) {
        ln_get_mercury_helio_coords(jd, &p);
        benchmark::DoNotOptimize(p);
        jd += 0.37;
    }
}
BENCHMARK(BM_Nova_MercuryHelio);

void BM_Nova_VenusHelio(benchmark::State &state) {
    double jd = 2460000.3;
    ln_helio_posn p;
    for (auto _ : state) {
        ln_get_venus_helio_coords(jd, &p);
        benchmark::DoNotOptimize(p);
        jd += 0.37;
    }
}
BENCHMARK(BM_Nova_VenusHelio);

void BM_Nova_JupiterHelio(benchmark::State &state) {
    double jd = 2460000.3;
    ln_helio_posn p;
    for (auto _ : state) {
        ln_get_jupiter_helio_coords(jd, &p);
        benchmark::DoNotOptimize(p);
        jd += 0.37;
    }
}
BENCHMARK(BM_Nova_JupiterHelio);
#endif

}  // namespace
