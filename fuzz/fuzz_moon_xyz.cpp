// The Moon source file ("moon.xyz" or a DE file as the Moon handle): the
// Moon's place through it at a date chosen by the input around and inside
// its coverage, where the light-time loops cross the file's ends.
#include "fuzz_input.h"
#include "kvxlib.h"
#include "solar/ephem/jpl_de.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    kvx::fuzz::Controls in(data, size);
    // The Moon handle is never read into memory: kOnMemory reads as memory.
    const int loaded = kvx::fuzz::PickMode(in) == kvx::fuzz::Mode::kFile
                           ? kvx::jpl::LoadMoonFile(kvx::fuzz::File().Write(data, size))
                           : kvx::jpl::LoadMoonFrom(kvx::platform::MemorySource(data, size), "fuzz");
    if (!loaded) return 0;
    const kvx::jpl::Reader *r = kvx::jpl::MoonHandle();
    const double a = r->startJd, b = r->endJd;
    const double light = 0.0025 * 0.005775518308;  // the Moon's light time (days)
    // a + 100 light: the Moon's light time of a file that puts it 100 times
    // too far reaches back before the file's start, and the theory's does
    // not (the light-time loops then alternate between the two sources).
    const double near[] = {a + light / 2, a + 2 * light, a + 100 * light, b - light / 3};
    const double jde = in.Pick(3) == 0 ? near[in.Pick(4)] : in.DateIn(a, b);
    // The Moon through the file: with the light-time loop (CalcMoon2), with
    // the Sun-dependent fields as well (CalcMoon, one in four: the Sun costs
    // more than the Moon), or geometric (CalcMoonLbr).
    const unsigned how = in.Pick(4);
    if (how == 3) {
        double lb[2], dist;
        CalcMoonLbr(jde, lb, &dist);
    } else {
        ATime t;
        SetATimeJd2(jde, 0.0, 0.0, nullptr, &t);
        BodyPos sun{}, moon{};
        if (how == 0) {
            CalcSun(&t, &sun);
            CalcMoon(&t, &moon, &sun);
        } else {
            CalcMoon2(&t, &moon);
        }
    }
    kvx::jpl::CloseMoon();
    return 0;
}
