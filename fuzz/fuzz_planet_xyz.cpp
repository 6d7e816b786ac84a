// The planet position file: the directory, then the Sun and every planet and
// dwarf planet at tabulated, interpolated and edge dates of each block, read
// from the file and from memory.
#include <initializer_list>

#include "fuzz_input.h"
#include "kvxlib.h"
#include "solar/ephem/planet_xyz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const char *path = kvx::fuzz::File().Write(data, size);
    for (bool memory : {false, true}) {
        if (!kvx::planetxyz::Open(path, memory)) continue;
        kvx::planetxyz::BlockInfo b;
        for (int i = 0; kvx::planetxyz::Block(i, &b); ++i) {
            const double dates[] = {b.first, b.last, b.first + b.step, b.first + 0.5 * b.step,
                                    b.last - 2.5 * b.step, 0.5 * (b.first + b.last)};
            for (double jde : dates) {
                double p[3], v[3];
                kvx::planetxyz::Lookup(b.body, jde, p, v);
                kvx::planetxyz::Lookup(b.body, jde, p, nullptr);
                ATime t;
                SetATimeJd2(jde, 0.0, 0.0, nullptr, &t);
                BodyPos sun{}, planet{};
                CalcSun(&t, &sun);
                CalcPlanet(b.body, &t, &sun, &planet);
            }
        }
        kvx::planetxyz::Release();
    }
    return 0;
}
