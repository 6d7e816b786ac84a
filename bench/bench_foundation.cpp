// Dates and fixed point: ns per call, with ERFA's and libnova's calendar
// conversions as peers when they are installed.
#include <benchmark/benchmark.h>

#include <cmath>

#include "kvxlib.h"
#include "math/fast_trig.h"

#ifdef KVX_HAVE_ERFA
#include <erfa.h>
#endif
#ifdef KVX_HAVE_NOVA
#include <libnova/julian_day.h>
#endif

namespace {

void BM_CalcJd(benchmark::State &state) {
    double day = 1.25;
    for (auto _ : state) {
        benchmark::DoNotOptimize(CalcJd(2024.0, 7.0, day));
        day = day < 28 ? day + 0.5 : 1.25;
    }
}
BENCHMARK(BM_CalcJd);

void BM_JdToDate2(benchmark::State &state) {
    double jd = 2460000.3;
    ADate d{};
    for (auto _ : state) {
        JdToDate2(jd, &d);
        benchmark::DoNotOptimize(d);
        jd += 0.37;
    }
}
BENCHMARK(BM_JdToDate2);

void BM_ChangeDate(benchmark::State &state) {
    ADate d{2024, 1, 31, 10, 20, 30.0, 9.0};
    const ADate interval{0, 1, 3, 5, 7, 11.0, 0.0};
    for (auto _ : state) {
        ADate x = d;
        benchmark::DoNotOptimize(ChangeDate(&x, &interval, 0));
    }
}
BENCHMARK(BM_ChangeDate);

void BM_fxpcos(benchmark::State &state) {
    int32_t x = 12345;
    for (auto _ : state) {
        benchmark::DoNotOptimize(fxpcos(x));
        x = (x + 7654321) & 0x3FFFFFFF;
    }
}
BENCHMARK(BM_fxpcos);

void BM_fxpacos(benchmark::State &state) {
    int32_t x = -1073741000;
    for (auto _ : state) {
        benchmark::DoNotOptimize(fxpacos(x));
        x += 7654321;
        if (x > 1073741000) x = -1073741000;
    }
}
BENCHMARK(BM_fxpacos);

void BM_RotateFx(benchmark::State &state) {
    double m[9];
    RotatePrm1(30, 40, m);
    Fx fm[9];
    MatrixFlToFx(m, fm);
    const Ad ad{123, 45};
    FxVec v{}, out{};
    AdToFx(&ad, &v);
    for (auto _ : state) {
        RotateFx(&v, fm, &out);
        benchmark::DoNotOptimize(out);
        v.x ^= 1;
    }
}
BENCHMARK(BM_RotateFx);

void BM_libm_cos(benchmark::State &state) {
    double x = 0.1;
    for (auto _ : state) {
        benchmark::DoNotOptimize(std::cos(x));
        x = x < 1.5 ? x + 0.007 : 0.1;
    }
}
BENCHMARK(BM_libm_cos);

// The unit costs of the series: one term amplitude x sin(phase + rate T) of
// a 128-row table through the degree sine (arguments in every quadrant, as
// in the theories), and the same through the library's sine of the radian
// argument. Per term, as the items processed.
struct SeriesRow {
    double amplitude, phase, rate;
};
const SeriesRow *SeriesRows() {
    static SeriesRow rows[128];
    for (int k = 0; k < 128; ++k) rows[k] = {0.01 * (k + 1), 3.7 * k, 1234.5 * (k - 60)};
    return rows;
}

template <class Sine>
void SeriesTerms(benchmark::State &state, Sine sine) {
    const SeriesRow *rows = SeriesRows();
    double t = 0.2437;
    for (auto _ : state) {
        double sum = 0.0;
        for (int k = 0; k < 128; ++k) sum += rows[k].amplitude * sine(rows[k].phase + rows[k].rate * t);
        benchmark::DoNotOptimize(sum);
        t += 1e-4;
    }
    state.SetItemsProcessed(state.iterations() * 128);
}
void BM_SeriesTerm_FastSinDeg(benchmark::State &state) {
    SeriesTerms(state, [](double a) { return kvx::FastSinDeg(a); });
}
void BM_SeriesTerm_libm_sin(benchmark::State &state) {
    SeriesTerms(state, [](double a) { return std::sin(kvx::DegToRad(a)); });
}
BENCHMARK(BM_SeriesTerm_FastSinDeg);
BENCHMARK(BM_SeriesTerm_libm_sin);

#ifdef KVX_HAVE_ERFA
void BM_erfa_Cal2jd(benchmark::State &state) {
    int day = 1;
    double d1, d2;
    for (auto _ : state) {
        benchmark::DoNotOptimize(eraCal2jd(2024, 7, day, &d1, &d2));
        benchmark::DoNotOptimize(d2);
        day = day < 28 ? day + 1 : 1;
    }
}
BENCHMARK(BM_erfa_Cal2jd);

void BM_erfa_Jd2cal(benchmark::State &state) {
    double jd = 2460000.3, fd;
    int y, m, d;
    for (auto _ : state) {
        benchmark::DoNotOptimize(eraJd2cal(jd, 0.0, &y, &m, &d, &fd));
        benchmark::DoNotOptimize(fd);
        jd += 0.37;
    }
}
BENCHMARK(BM_erfa_Jd2cal);
#endif

#ifdef KVX_HAVE_NOVA
void BM_nova_get_julian_day(benchmark::State &state) {
    ln_date date{2024, 7, 1, 10, 20, 30.0};
    for (auto _ : state) {
        benchmark::DoNotOptimize(ln_get_julian_day(&date));
        date.days = date.days < 28 ? date.days + 1 : 1;
    }
}
BENCHMARK(BM_nova_get_julian_day);

void BM_nova_get_date(benchmark::State &state) {
    double jd = 2460000.3;
    ln_date date{};
    for (auto _ : state) {
        ln_get_date(jd, &date);
        benchmark::DoNotOptimize(date);
        jd += 0.37;
    }
}
BENCHMARK(BM_nova_get_date);
#endif

}  // namespace
