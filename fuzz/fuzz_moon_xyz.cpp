// The Moon source file ("moon.xyz" or a DE file as the Moon handle): the
// Moon's place, age and phases through it at dates around and inside its
// coverage, where the light-time loops cross the file's ends.
#include <initializer_list>

#include "fuzz_input.h"
#include "kvxlib.h"
#include "solar/ephem/jpl_de.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (!kvx::jpl::LoadMoonFile(kvx::fuzz::File().Write(data, size))) return 0;
    const kvx::jpl::Reader *r = kvx::jpl::MoonHandle();
    const double a = r->startJd, b = r->endJd;
    const double light = 0.0025 * 0.005775518308;  // the Moon's light time (days)
    // a + 100 light: the Moon's light time of a file that puts it 100 times
    // too far reaches back before the file's start, and the theory's does
    // not (the light-time loops then alternate between the two sources).
    const double dates[] = {a, a + light / 2, a + 2 * light, a + 100 * light, b, b - light / 3, (a + b) / 2,
                            kvx::fuzz::DoubleAt(data, size, 0)};
    for (double jde : dates) {
        ATime t;
        SetATimeJd2(jde, 0.0, 0.0, nullptr, &t);
        BodyPos sun{}, moon{};
        CalcSun(&t, &sun);
        CalcMoon(&t, &moon, &sun);
        double lb[2], dist;
        CalcMoonLbr(jde, lb, &dist);
        GetMoonAge(jde, &sun, &moon);
    }
    kvx::jpl::CloseMoon();
    return 0;
}
