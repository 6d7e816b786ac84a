// The Moon: CalcMoon from the built-in theory and from the DE405 test
// excerpt, the month's phases, the age, and the pieces (theory series,
// librations, phase series), with the Swiss Ephemeris' Moshier Moon and
// libnova's lunar position as peers when they are installed.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "kvxlib.h"
#include "solar/ephem/jpl_de.h"
#include "solar/moon/moon_libration.h"
#include "solar/moon/moon_theory.h"

#ifdef KVX_HAVE_SWE
#include <swephexp.h>
#endif
#ifdef KVX_HAVE_NOVA
#include <libnova/lunar.h>
#endif

namespace {

// Dates step by an odd fraction of a day so that no call repeats the last
// one (the Swiss Ephemeris keeps the last result), and cycle over about a
// year so that every benchmark sees the same arguments however long it runs.
constexpr double kStartJd = 2460000.3;
constexpr double kStep = 0.3713;
inline double Date(unsigned k) { return kStartJd + (k & 1023u) * kStep; }

// 1024 instants, filled once: the benchmarks time the Moon, not the ATime
// fill. (With only a few dozen instants repeating, the branch predictor
// learns the paths of the sine's argument reduction and the series run
// nearly twice as fast as on fresh dates.)
struct Instants {
    static constexpr unsigned kCount = 1024;
    std::vector<ATime> t;
    std::vector<BodyPos> sun;
    explicit Instants(double start) : t(kCount), sun(kCount) {
        for (unsigned k = 0; k < kCount; ++k) {
            SetATimeJd(start + kStep * k, 0.0, nullptr, &t[k]);
            CalcSun(&t[k], &sun[k]);
        }
    }
};

void BM_CalcMoon_Theory(benchmark::State &state) {
    Instants in(kStartJd);
    BodyPos m;
    unsigned k = 0;
    for (auto _ : state) {
        CalcMoon(&in.t[k & 1023u], &m, &in.sun[k & 1023u]);
        ++k;
        benchmark::DoNotOptimize(m);
    }
}
BENCHMARK(BM_CalcMoon_Theory);

void BM_CalcMoon2_Theory(benchmark::State &state) {
    Instants in(kStartJd);
    BodyPos m;
    unsigned k = 0;
    for (auto _ : state) {
        CalcMoon2(&in.t[k++ & 1023u], &m);
        benchmark::DoNotOptimize(m);
    }
}
BENCHMARK(BM_CalcMoon2_Theory);

// With the ATime fill and the Sun: what an application pays for one Moon.
void BM_CalcMoon_TheoryWithFill(benchmark::State &state) {
    unsigned k = 0;
    ATime t;
    BodyPos s, m;
    for (auto _ : state) {
        SetATimeJd(Date(k++), 0.0, nullptr, &t);
        CalcSun(&t, &s);
        CalcMoon(&t, &m, &s);
        benchmark::DoNotOptimize(m);
    }
}
BENCHMARK(BM_CalcMoon_TheoryWithFill);

// The DE405 excerpt read from the file (dates inside it).
struct DeFile {
    DeFile() { kvx::jpl::OpenMain((std::string(KVX_BENCH_DATA_DIR) + "/de405_2000.bin").c_str(), false); }
    ~DeFile() { kvx::jpl::CloseMain(); }
};

void BM_CalcMoon_De405(benchmark::State &state) {
    DeFile de;
    Instants in(2451600.3);
    BodyPos m;
    unsigned k = 0;
    for (auto _ : state) {
        CalcMoon(&in.t[k & 1023u], &m, &in.sun[k & 1023u]);
        ++k;
        benchmark::DoNotOptimize(m);
    }
}
BENCHMARK(BM_CalcMoon_De405);

// One month's principal phases (4 or 5, each refined with 5 Sun and Moon
// places) in zone +9 h, month after month.
void BM_GetMoonPhases_Month(benchmark::State &state) {
    unsigned k = 0;
    MoonPhase out[6];
    for (auto _ : state) {
        const int ym = 2024 * 12 + static_cast<int>(k++ & 255u);
        const ADate req{ym / 12, ym % 12 + 1, 1, 0, 0, 0.0, 9.0};
        benchmark::DoNotOptimize(GetMoonPhases(&req, out, 6));
    }
}
BENCHMARK(BM_GetMoonPhases_Month);

void BM_MoonTheoryLbr(benchmark::State &state) {
    unsigned k = 0;
    double lb[2], dist;
    for (auto _ : state) {
        kvx::moon::TheoryLbr(Date(k++), lb, &dist);
        benchmark::DoNotOptimize(lb);
        benchmark::DoNotOptimize(dist);
    }
}
BENCHMARK(BM_MoonTheoryLbr);

void BM_MoonLibration(benchmark::State &state) {
    unsigned k = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(kvx::moon::MoonLibration(0.2 + (k++ & 1023u) * 1e-5, 133.16, -3.23, 134.68, 0.0046, 23.44));
}
BENCHMARK(BM_MoonLibration);

void BM_GetNewMoonJd2000(benchmark::State &state) {
    unsigned k = 0;
    for (auto _ : state) benchmark::DoNotOptimize(GetNewMoonJd2000(300.0 + (k++ & 1023u) * 0.25));
}
BENCHMARK(BM_GetNewMoonJd2000);

void BM_GetMoonAge(benchmark::State &state) {
    unsigned k = 0;
    for (auto _ : state) benchmark::DoNotOptimize(GetMoonAge(Date(k++), nullptr, nullptr));
}
BENCHMARK(BM_GetMoonAge);

#ifdef KVX_HAVE_SWE
// Apparent geocentric right ascension and declination of date (with Delta
// T, precession, nutation and aberration) from Moshier's lunar ephemeris.
void BM_Peer_SweMoshierMoon(benchmark::State &state) {
    unsigned k = 0;
    double x[6];
    char err[AS_MAXCH];
    for (auto _ : state) {
        swe_calc_ut(Date(k++), SE_MOON, SEFLG_MOSEPH | SEFLG_EQUATORIAL, x, err);
        benchmark::DoNotOptimize(x);
    }
}
BENCHMARK(BM_Peer_SweMoshierMoon);
#endif

#ifdef KVX_HAVE_NOVA
void BM_Peer_NovaLunarEquCoords(benchmark::State &state) {
    unsigned k = 0;
    ln_equ_posn pos;
    for (auto _ : state) {
        ln_get_lunar_equ_coords(Date(k++), &pos);
        benchmark::DoNotOptimize(pos);
    }
}
BENCHMARK(BM_Peer_NovaLunarEquCoords);
#endif

}  // namespace
