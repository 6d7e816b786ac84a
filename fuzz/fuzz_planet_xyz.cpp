// The planet position file: the directory, then a few lookups chosen by the
// input: a block, a date at a tabulated, interpolated or edge point of it
// (or any double), with and without velocities, and now and then the
// planet's whole place through the file; from memory, from the file or
// read into memory.
#include "fuzz_input.h"
#include "kvxlib.h"
#include "solar/ephem/planet_xyz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    kvx::fuzz::Controls in(data, size);
    const kvx::fuzz::Mode mode = kvx::fuzz::PickMode(in);
    const bool onMemory = mode == kvx::fuzz::Mode::kOnMemory;
    const int opened = mode == kvx::fuzz::Mode::kFile
                           ? kvx::planetxyz::Open(kvx::fuzz::File().Write(data, size), onMemory)
                           : kvx::planetxyz::OpenFrom(kvx::platform::MemorySource(data, size), onMemory);
    kvx::planetxyz::BlockInfo b;
    if (opened && kvx::planetxyz::Block(0, &b)) {
        double jde = b.first;
        for (unsigned q = 1 + in.Pick(3); q > 0; --q) {
            kvx::planetxyz::Block(static_cast<int>(in.Pick(13)), &b);  // past the last block: keeps b
            const double points[] = {b.first + b.step, b.first + 0.5 * b.step, b.last - 2.5 * b.step,
                                     0.5 * (b.first + b.last)};
            jde = in.Flag() ? points[in.Pick(4)] : in.DateIn(b.first, b.last);
            double p[3], v[3];
            kvx::planetxyz::Lookup(b.body, jde, p, in.Flag() ? v : nullptr);
        }
        // The last planet's place, with the file as its source: one input in
        // eight, as the Sun and the light-time loop cost several lookups.
        if (in.Pick(8) == 0) {
            ATime t;
            SetATimeJd2(jde, 0.0, 0.0, nullptr, &t);
            BodyPos sun{}, planet{};
            CalcSun(&t, &sun);
            CalcPlanet(b.body, &t, &sun, &planet);
        }
    }
    kvx::planetxyz::Release();
    return 0;
}
