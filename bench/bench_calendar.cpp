// Calendars: a year's solar-term table, a year's holiday list, a lunisolar
// month table, and one conversion answered from a cached month table. Every
// build is forced by alternating the year, since each table is cached by
// its year; all from the built-in theories (no data file is opened).
#include <benchmark/benchmark.h>

#include "kvxlib.h"

namespace {

// Years cycle so that consecutive calls never hit the cache.
inline int Year(unsigned k) { return 1990 + static_cast<int>(k % 40u); }

void BM_SolarTermYearTable(benchmark::State &state) {
    unsigned k = 0;
    for (auto _ : state) {
        double hours;
        int code;
        benchmark::DoNotOptimize(Sekki_CheckDay(Year(k++), 2, 4, 9.0, &hours, &code));
    }
}
BENCHMARK(BM_SolarTermYearTable)->Unit(benchmark::kMillisecond);

void BM_GetSunLongJD(benchmark::State &state) {
    unsigned k = 0;
    for (auto _ : state) benchmark::DoNotOptimize(GetSunLongJD(Year(k++), 270));
}
BENCHMARK(BM_GetSunLongJD)->Unit(benchmark::kMicrosecond);

void BM_HolidayYearList(benchmark::State &state) {
    unsigned k = 0;
    for (auto _ : state) benchmark::DoNotOptimize(Holiday_CheckDay(Year(k++), 5, 4));
}
BENCHMARK(BM_HolidayYearList)->Unit(benchmark::kMicrosecond);

void BM_LunisolarYearTable(benchmark::State &state) {
    unsigned k = 0;
    for (auto _ : state) {
        const ADate civil{Year(k++), 6, 15, 0, 0, 0.0, 9.0};
        ADate old;
        benchmark::DoNotOptimize(Calender_NewToOld(&civil, &old));
    }
}
BENCHMARK(BM_LunisolarYearTable)->Unit(benchmark::kMillisecond);

void BM_NewToOldCached(benchmark::State &state) {
    ADate old;
    const ADate first{2024, 1, 1, 0, 0, 0.0, 9.0};
    Calender_NewToOld(&first, &old);
    unsigned k = 0;
    for (auto _ : state) {
        const ADate civil{2024, 1 + static_cast<int>(k % 11u), 1 + static_cast<int>(k % 28u), 0, 0, 0.0, 9.0};
        ++k;
        benchmark::DoNotOptimize(Calender_NewToOld(&civil, &old));
    }
}
BENCHMARK(BM_NewToOldCached);

}  // namespace
