// The data-file readers: ns per query of the JPL DE reader (geocentric Moon,
// Sun relative to the Earth, nutations) within one record and across
// records, and of the planet position file's ten-point interpolation; Swiss
// Ephemeris's reader of the same DE file (swi_pleph) as the peer.
#include <benchmark/benchmark.h>

#include <string>

#include "kvxlib.h"
#include "solar/ephem/jpl_de.h"
#include "solar/ephem/jpl_query.h"
#include "solar/ephem/planet_xyz.h"

#ifdef KVX_HAVE_SWE
extern "C" int swi_open_jpl_file(double *ss, char *fname, char *fpath, char *serr);
extern "C" int swi_pleph(double et, int ntarg, int ncent, double *rrd, char *serr);
#endif

namespace {

const std::string kData = std::string(KVX_BENCH_DATA_DIR) + "/";
constexpr double kStart = 2451536.5, kSpan = 736.0;

struct MainHandle {
    MainHandle() { kvx::jpl::OpenMain((kData + "de405_2000.bin").c_str(), false); }
    ~MainHandle() { kvx::jpl::CloseMain(); }
};

// Dates within one 32-day record (cached) or jumping across the file.
double NextDate(double jd, bool acrossRecords) {
    jd += acrossRecords ? 37.3901 : 0.0131;
    const double limit = acrossRecords ? kSpan : 30.0;
    return jd - kStart >= limit ? jd - limit : jd;
}

void BM_JplQuery_MoonFromEarth(benchmark::State &state) {
    MainHandle h;
    double jd = kStart + 1.0, p[3], v[3];
    const bool across = state.range(0) != 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(kvx::jpl::Query(-1, jd, -3, p, v));
        jd = NextDate(jd, across);
    }
}
BENCHMARK(BM_JplQuery_MoonFromEarth)->Arg(0)->Arg(1);

void BM_JplQuery_SunFromEarth(benchmark::State &state) {
    MainHandle h;
    double jd = kStart + 1.0, p[3];
    for (auto _ : state) {
        benchmark::DoNotOptimize(kvx::jpl::Query(-2, jd, -3, p, nullptr));
        jd = NextDate(jd, false);
    }
}
BENCHMARK(BM_JplQuery_SunFromEarth);

void BM_JplQuery_Nutations(benchmark::State &state) {
    MainHandle h;
    double jd = kStart + 1.0, p[3];
    for (auto _ : state) {
        benchmark::DoNotOptimize(kvx::jpl::Query(-30, jd, 0, p, nullptr));
        jd = NextDate(jd, false);
    }
}
BENCHMARK(BM_JplQuery_Nutations);

void BM_PlanetXyz_JupiterInterpolated(benchmark::State &state) {
    kvx::planetxyz::Open((kData + "planet.xyz").c_str(), state.range(0) != 0);
    double jd = kStart + 100.3, p[3], v[3];
    for (auto _ : state) {
        benchmark::DoNotOptimize(kvx::planetxyz::Lookup(3, jd, p, v));
        jd = NextDate(jd, true);
    }
    kvx::planetxyz::Release();
}
BENCHMARK(BM_PlanetXyz_JupiterInterpolated)->Arg(0)->Arg(1);

#ifdef KVX_HAVE_SWE
void BM_Swe_Pleph_MoonFromEarth(benchmark::State &state) {
    double ss[3], rrd[6];
    char serr[256];
    std::string name = "de405_2000.bin", dir = kData;
    if (swi_open_jpl_file(ss, name.data(), dir.data(), serr) != 0) {
        state.SkipWithError(serr);
        return;
    }
    double jd = kStart + 1.0;
    const bool across = state.range(0) != 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(swi_pleph(jd, 9, 2, rrd, serr));
        jd = NextDate(jd, across);
    }
}
BENCHMARK(BM_Swe_Pleph_MoonFromEarth)->Arg(0)->Arg(1);
#endif

}  // namespace
