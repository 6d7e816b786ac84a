// JPL DE reader: the opener (DE header, or the "KQ" variant when built with
// KVX_FUZZ_KQ, which forces the first two bytes), then queries of every
// target and centre at dates across, at and beyond the file's coverage,
// with and without velocities, read from the file and from memory.
#include <initializer_list>
#include <cmath>
#include <vector>

#include "fuzz_input.h"
#include "solar/ephem/jpl_de.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::vector<uint8_t> bytes(data, data + size);
#ifdef KVX_FUZZ_KQ
    if (bytes.size() < 2) bytes.resize(2);
    bytes[0] = 'K';
    bytes[1] = 'Q';
#endif
    auto &file = kvx::fuzz::File();
    for (bool memory : {false, true}) {
        kvx::jpl::Reader *r = kvx::jpl::Open(file.Write(bytes.data(), bytes.size()));
        if (!r) return 0;
        if (memory) kvx::jpl::ReadIntoMemory(r);
        const double a = r->startJd, b = r->endJd;
        const double dates[] = {a, b, std::nextafter(b, 1e300), (a + b) / 2, a + (b - a) * 0.37, a - 1, b + 1,
                                kvx::fuzz::DoubleAt(data, size, 0), std::nan("")};
        for (double jd : dates)
            for (int target = 0; target <= 16; ++target)
                for (int centre = 0; centre <= 13; ++centre) {
                    double pv[6];
                    kvx::jpl::Evaluate(r, jd, target, centre, pv, (target + centre) % 2 == 0);
                }
        kvx::jpl::Close(r);
    }
    return 0;
}
