// Coordinate conversions and the apparent-place corrections: ns per call,
// with ERFA's comparable routines as peers when it is installed (eraAb for
// aberration, eraHd2ae for the horizon, eraAb + bias-precession-nutation
// matrix for the apparent place, eraIcrs2g for galactic coordinates).
#include <benchmark/benchmark.h>

#include <cmath>

#include "kvxlib.h"

#ifdef KVX_HAVE_ERFA
#include <erfa.h>
#include <erfam.h>
#endif

namespace {

const ATime &Instant() {
    static const ATime t = [] {
        ATime r{};
        const ADate date{2024, 6, 1, 21, 30, 0.0, 9.0};
        const Observer tokyo{35.6895, 139.6917, 40.0};
        SetATimeDate(&date, &tokyo, &r);
        return r;
    }();
    return t;
}

void ConvertFromJ2000(benchmark::State &state, int to) {
    const ATime &t = Instant();
    Ad in{10.0, -20.0}, out{};
    for (auto _ : state) {
        benchmark::DoNotOptimize(Coordinates(&t, 3, &in, to, &out));
        benchmark::DoNotOptimize(out);
        in.a = in.a < 350.0 ? in.a + 7.3 : 0.7;
    }
}

void BM_Coordinates_3_to_1(benchmark::State &state) { ConvertFromJ2000(state, 1); }
void BM_Coordinates_3_to_6(benchmark::State &state) { ConvertFromJ2000(state, 6); }
void BM_Coordinates_3_to_10(benchmark::State &state) { ConvertFromJ2000(state, 10); }
void BM_Coordinates_6_to_3(benchmark::State &state) {
    const ATime &t = Instant();
    Ad in{10.0, -20.0}, out{};
    for (auto _ : state) {
        benchmark::DoNotOptimize(Coordinates(&t, 6, &in, 3, &out));
        in.a = in.a < 350.0 ? in.a + 7.3 : 0.7;
    }
}
BENCHMARK(BM_Coordinates_3_to_1);
BENCHMARK(BM_Coordinates_3_to_6);
BENCHMARK(BM_Coordinates_3_to_10);
BENCHMARK(BM_Coordinates_6_to_3);

void BM_AnnualAberration(benchmark::State &state) {
    const ATime &t = Instant();
    double v[3] = {0.6, 0.64, 0.48}, out[3];
    for (auto _ : state) {
        AnnualAberration(&t, v, 1, out);
        benchmark::DoNotOptimize(out);
        v[0] = -v[0];
    }
}
BENCHMARK(BM_AnnualAberration);

// Every call on a new instant: the terms of the instant are evaluated each
// time (two records alternate, so the per-thread copy never matches).
void BM_AnnualAberration_NewInstant(benchmark::State &state) {
    ATime t[2] = {Instant(), Instant()};
    t[1].jde += 0.25;
    double v[3] = {0.6, 0.64, 0.48}, out[3];
    unsigned k = 0;
    for (auto _ : state) {
        AnnualAberration(&t[k++ & 1u], v, 1, out);
        benchmark::DoNotOptimize(out);
        v[0] = -v[0];
    }
}
BENCHMARK(BM_AnnualAberration_NewInstant);

void BM_AtmosphericRefraction(benchmark::State &state) {
    Ad in{0.0, 0.5}, out{};
    for (auto _ : state) {
        benchmark::DoNotOptimize(AtmosphericRefraction(&in, &out));
        in.d = in.d < 89.0 ? in.d + 0.7 : 0.5;
    }
}
BENCHMARK(BM_AtmosphericRefraction);

#ifdef KVX_HAVE_ERFA
void BM_erfa_Ab(benchmark::State &state) {
    double pvh[2][3], pvb[2][3];
    eraEpv00(2460463.0, 0.0, pvh, pvb);
    double v[3];
    for (int i = 0; i < 3; ++i) v[i] = pvb[1][i] * ERFA_AULT / ERFA_DAYSEC;
    const double s = eraPm(pvh[0]);
    const double bm1 = std::sqrt(1.0 - eraPdp(v, v));
    double p[3] = {0.6, 0.64, 0.48}, out[3];
    for (auto _ : state) {
        eraAb(p, v, s, bm1, out);
        benchmark::DoNotOptimize(out);
        p[0] = -p[0];
    }
}
BENCHMARK(BM_erfa_Ab);

// The ERFA equivalent of 3 -> 1: rotate to the mean equator of date, then
// hour angle and eraHd2ae (matrix and sidereal time precomputed, as in the
// library's record).
void BM_erfa_J2000_to_horizon(benchmark::State &state) {
    double rbp[3][3];
    eraPmat06(2460463.0, 0.0, rbp);
    const double last = 1.234, phi = 0.6229;
    double ra = 10.0 * ERFA_DD2R;
    const double dec = -20.0 * ERFA_DD2R;
    for (auto _ : state) {
        double p[3], q[3], a, d, az, el;
        eraS2c(ra, dec, p);
        eraRxp(rbp, p, q);
        eraC2s(q, &a, &d);
        eraHd2ae(last - a, d, phi, &az, &el);
        benchmark::DoNotOptimize(az);
        benchmark::DoNotOptimize(el);
        ra = ra < 6.1 ? ra + 0.127 : 0.0122;
    }
}
BENCHMARK(BM_erfa_J2000_to_horizon);

// The ERFA equivalent of 3 -> 6: aberration, then the bias-precession-
// nutation matrix (precomputed).
void BM_erfa_J2000_to_apparent(benchmark::State &state) {
    double pvh[2][3], pvb[2][3], rbpn[3][3];
    eraEpv00(2460463.0, 0.0, pvh, pvb);
    eraPnm06a(2460463.0, 0.0, rbpn);
    double v[3];
    for (int i = 0; i < 3; ++i) v[i] = pvb[1][i] * ERFA_AULT / ERFA_DAYSEC;
    const double s = eraPm(pvh[0]);
    const double bm1 = std::sqrt(1.0 - eraPdp(v, v));
    double ra = 10.0 * ERFA_DD2R;
    const double dec = -20.0 * ERFA_DD2R;
    for (auto _ : state) {
        double p[3], q[3], r[3], a, d;
        eraS2c(ra, dec, p);
        eraAb(p, v, s, bm1, q);
        eraRxp(rbpn, q, r);
        eraC2s(r, &a, &d);
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(d);
        ra = ra < 6.1 ? ra + 0.127 : 0.0122;
    }
}
BENCHMARK(BM_erfa_J2000_to_apparent);

void BM_erfa_Icrs2g(benchmark::State &state) {
    double ra = 10.0 * ERFA_DD2R;
    const double dec = -20.0 * ERFA_DD2R;
    for (auto _ : state) {
        double l, b;
        eraIcrs2g(ra, dec, &l, &b);
        benchmark::DoNotOptimize(l);
        benchmark::DoNotOptimize(b);
        ra = ra < 6.1 ? ra + 0.127 : 0.0122;
    }
}
BENCHMARK(BM_erfa_Icrs2g);
#endif

}  // namespace
