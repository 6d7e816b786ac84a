// Satellites of the planets: CalcSatellite per theory (the planet's record
// prepared once per instant), the four Galileans together against one
// CalcMoon, the theories alone, and the phenomena test.
#include <benchmark/benchmark.h>

#include <vector>

#include "kvxlib.h"
#include "psat/sat_theory.h"

namespace {

constexpr double kStartJd = 2460000.3;
constexpr double kStep = 0.3713;
constexpr unsigned kCount = 256;

// Instants with the Sun's and the planet's records filled once.
struct Scenes {
    std::vector<ATime> t;
    std::vector<BodyPos> sun, planet;
    explicit Scenes(int planetCode) : t(kCount), sun(kCount), planet(kCount) {
        for (unsigned k = 0; k < kCount; ++k) {
            SetATimeJd(kStartJd + kStep * k, 0.0, nullptr, &t[k]);
            CalcSun(&t[k], &sun[k]);
            CalcPlanet(planetCode, &t[k], &sun[k], &planet[k]);
        }
    }
};

// CalcSatellite for one satellite of each theory: Io (L1.2), Titan (Meeus),
// Titania (GUST86), Phobos (mean elements), Triton (rotation model).
void BM_CalcSatellite(benchmark::State &state) {
    const int planet = static_cast<int>(state.range(0)), index = static_cast<int>(state.range(1));
    Scenes s(planet);
    BodyPos out;
    unsigned k = 0;
    for (auto _ : state) {
        const unsigned i = k++ % kCount;
        benchmark::DoNotOptimize(CalcSatellite(&s.t[i], planet, index, &s.planet[i], &out));
        benchmark::DoNotOptimize(out);
    }
}
BENCHMARK(BM_CalcSatellite)->ArgNames({"planet", "index"})->Args({3, 1})->Args({4, 6})->Args({5, 3})->Args({2, 1})->Args({6, 1});

// The goal: Io..Callisto for one instant faster than one CalcMoon.
void BM_CalcSatellite_FourGalileans(benchmark::State &state) {
    Scenes s(3);
    BodyPos out[4];
    unsigned k = 0;
    for (auto _ : state) {
        const unsigned i = k++ % kCount;
        for (int m = 0; m < 4; ++m) CalcSatellite(&s.t[i], 3, m + 1, &s.planet[i], &out[m]);
        benchmark::DoNotOptimize(out);
    }
}
BENCHMARK(BM_CalcSatellite_FourGalileans);

void BM_CalcMoon_ForComparison(benchmark::State &state) {
    Scenes s(3);
    BodyPos m;
    unsigned k = 0;
    for (auto _ : state) {
        const unsigned i = k++ % kCount;
        CalcMoon(&s.t[i], &m, &s.sun[i]);
        benchmark::DoNotOptimize(m);
    }
}
BENCHMARK(BM_CalcMoon_ForComparison);

// The theories alone: one planetocentric position.
void BM_SatellitePosition(benchmark::State &state) {
    const int code = static_cast<int>(state.range(0));
    double v[3];
    unsigned k = 0;
    for (auto _ : state) {
        kvx::psat::SatellitePosition(code, kStartJd + kStep * (k++ % kCount), v);
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(BM_SatellitePosition)->ArgName("code")->Arg(501)->Arg(606)->Arg(608)->Arg(703)->Arg(401)->Arg(801);

void BM_JoviSatPhenomena(benchmark::State &state) {
    Scenes s(3);
    std::vector<BodyPos> io(kCount);
    for (unsigned k = 0; k < kCount; ++k) CalcSatellite(&s.t[k], 3, 1, &s.planet[k], &io[k]);
    JoviSatResult r;
    unsigned k = 0;
    for (auto _ : state) {
        const unsigned i = k++ % kCount;
        JoviSatPhenomena(&s.t[i], &s.planet[i], &io[i], &r);
        benchmark::DoNotOptimize(r);
    }
}
BENCHMARK(BM_JoviSatPhenomena);

}  // namespace
