// The Sun and the planets: ns per call, with Swiss Ephemeris (Moshier's
// analytic ephemeris, swe_calc_ut) and libnova (VSOP87) as peers when they
// are installed. Every loop advances the date so that no cache can answer.
#include <benchmark/benchmark.h>

#include <string>

#include "kvxlib.h"
#include "solar/ephem/jpl_de.h"
#include "solar/sun/sun.h"
#include "solar/sun/sun_theory.h"

#ifdef KVX_HAVE_SWE
#include <swephexp.h>
#endif
#ifdef KVX_HAVE_NOVA
#include <libnova/solar.h>
#include <libnova/mars.h>
#endif

namespace {

void BM_NewcombEclipticOfDate(benchmark::State &state) {
    double jde = 2460000.3, l, b, r;
    for (auto _ : state) {
        kvx::sun::NewcombEclipticOfDate(jde, &l, &b, &r);
        benchmark::DoNotOptimize(l);
        jde += 0.37;
    }
}
BENCHMARK(BM_NewcombEclipticOfDate);

void BM_AnalyticSunVector(benchmark::State &state) {
    double jde = 2460000.3, v[3];
    for (auto _ : state) {
        kvx::sun::AnalyticSunVector(jde, v);
        benchmark::DoNotOptimize(v);
        jde += 0.37;
    }
}
BENCHMARK(BM_AnalyticSunVector);

void BM_ShortSun(benchmark::State &state) {
    double jde = 1500000.3, l, r;
    for (auto _ : state) {
        kvx::sun::ShortEclipticOfDate(jde, &l, &r);
        benchmark::DoNotOptimize(l);
        jde += 0.37;
    }
}
BENCHMARK(BM_ShortSun);

void BM_GetPlanetOrbitElmAndPosition(benchmark::State &state) {
    double jde = 2460000.3, p[3];
    OrbitElm el;
    for (auto _ : state) {
        GetPlanetOrbitElm(2, jde, &el);
        GetPlanetByElement(&el, jde, p, nullptr);
        benchmark::DoNotOptimize(p);
        jde += 0.37;
    }
}
BENCHMARK(BM_GetPlanetOrbitElmAndPosition);

// 64 time records a little over a day apart, filled once: CalcSun and
// CalcPlanet read a filled ATime, as callers that place several bodies do.
const ATime *Times() {
    static ATime t[64];
    static bool filled = false;
    if (!filled) {
        for (int k = 0; k < 64; ++k) SetATimeJd(2460000.3 + 1.37 * k, 0.0, nullptr, &t[k]);
        filled = true;
    }
    return t;
}

void BM_CalcSun(benchmark::State &state) {
    const ATime *t = Times();
    BodyPos s;
    int k = 0;
    for (auto _ : state) {
        ATime x = t[k++ & 63];
        CalcSun(&x, &s);
        benchmark::DoNotOptimize(s);
    }
}
BENCHMARK(BM_CalcSun);

// The whole request: fill the time record, then the Sun.
void BM_SetATimeJdAndCalcSun(benchmark::State &state) {
    double jd = 2460000.3;
    ATime t;
    BodyPos s;
    for (auto _ : state) {
        SetATimeJd(jd, 0.0, nullptr, &t);
        CalcSun(&t, &s);
        benchmark::DoNotOptimize(s);
        jd += 0.37;
    }
}
BENCHMARK(BM_SetATimeJdAndCalcSun);

void BM_CalcPlanet(benchmark::State &state) {
    const int code = static_cast<int>(state.range(0));
    const ATime *t = Times();
    static BodyPos sun[64];
    for (int k = 0; k < 64; ++k) {
        ATime x = t[k];
        CalcSun(&x, &sun[k]);
    }
    BodyPos p;
    int k = 0;
    for (auto _ : state) {
        ATime x = t[k & 63];
        CalcPlanet(code, &x, &sun[k & 63], &p);
        ++k;
        benchmark::DoNotOptimize(p);
    }
}
BENCHMARK(BM_CalcPlanet)->Arg(0)->Arg(2)->Arg(3)->Arg(9);

void BM_CalcComet(benchmark::State &state) {
    const ATime *t = Times();
    static BodyPos sun[64];
    for (int k = 0; k < 64; ++k) {
        ATime x = t[k];
        CalcSun(&x, &sun[k]);
    }
    CometElements el{};
    el.kind = 'C';
    el.perihelionJd = 2460200.5;
    el.e = 0.995;
    el.q = 0.9;
    el.peri = 40;
    el.node = 200;
    el.incl = 70;
    el.equinox = 2000.0;
    el.h = 6;
    el.slope = 10;
    BodyPos c;
    int k = 0;
    for (auto _ : state) {
        ATime x = t[k & 63];
        CalcComet(&el, &x, &sun[k & 63], &c);
        ++k;
        benchmark::DoNotOptimize(c);
    }
}
BENCHMARK(BM_CalcComet);

// The same with the DE405 test excerpt open (dates inside it; every call
// reads a record of the file as the dates hop across them).
struct DeFile {
    DeFile() {
        std::string src = __FILE__;
        src = src.substr(0, src.rfind('/'));
        kvx::jpl::OpenMain((src + "/../tests/data/de405_2000.bin").c_str(), false);  // read from the file: a handle read into memory answers no query
    }
    ~DeFile() { kvx::jpl::CloseMain(); }
};

void BM_CalcSun_De405(benchmark::State &state) {
    DeFile de;
    ATime t[64];
    for (int k = 0; k < 64; ++k) SetATimeJd(2451600.3 + 9.7 * k, 0.0, nullptr, &t[k]);
    BodyPos s;
    int k = 0;
    for (auto _ : state) {
        CalcSun(&t[k++ & 63], &s);
        benchmark::DoNotOptimize(s);
    }
}
BENCHMARK(BM_CalcSun_De405);

void BM_CalcPlanet_De405(benchmark::State &state) {
    DeFile de;
    ATime t[64];
    BodyPos sun[64];
    for (int k = 0; k < 64; ++k) {
        SetATimeJd(2451600.3 + 9.7 * k, 0.0, nullptr, &t[k]);
        CalcSun(&t[k], &sun[k]);
    }
    BodyPos p;
    int k = 0;
    for (auto _ : state) {
        CalcPlanet(2, &t[k & 63], &sun[k & 63], &p);
        ++k;
        benchmark::DoNotOptimize(p);
    }
}
BENCHMARK(BM_CalcPlanet_De405);

#ifdef KVX_HAVE_SWE
// Apparent geocentric RA/Dec of the Sun from Moshier's ephemeris.
void BM_Swe_SunMoshier(benchmark::State &state) {
    double jd = 2460000.3, x[6];
    char err[256];
    for (auto _ : state) {
        swe_calc_ut(jd, SE_SUN, SEFLG_MOSEPH | SEFLG_EQUATORIAL, x, err);
        benchmark::DoNotOptimize(x);
        jd += 0.37;
    }
}
BENCHMARK(BM_Swe_SunMoshier);

void BM_Swe_MarsMoshier(benchmark::State &state) {
    double jd = 2460000.3, x[6];
    char err[256];
    for (auto _ : state) {
        swe_calc_ut(jd, SE_MARS, SEFLG_MOSEPH | SEFLG_EQUATORIAL, x, err);
        benchmark::DoNotOptimize(x);
        jd += 0.37;
    }
}
BENCHMARK(BM_Swe_MarsMoshier);
#endif

#ifdef KVX_HAVE_NOVA
// Apparent RA/Dec of the Sun (VSOP87 Earth, nutation, aberration).
void BM_Nova_SolarEquCoords(benchmark::State &state) {
    double jd = 2460000.3;
    ln_equ_posn p;
    for (auto _ : state) {
        ln_get_solar_equ_coords(jd, &p);
        benchmark::DoNotOptimize(p);
        jd += 0.37;
    }
}
BENCHMARK(BM_Nova_SolarEquCoords);

void BM_Nova_MarsEquCoords(benchmark::State &state) {
    double jd = 2460000.3;
    ln_equ_posn p;
    for (auto _ : state) {
        ln_get_mars_equ_coords(jd, &p);
        benchmark::DoNotOptimize(p);
        jd += 0.37;
    }
}
BENCHMARK(BM_Nova_MarsEquCoords);
#endif

}  // namespace
