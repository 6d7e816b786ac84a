// JPL DE reader: the opener (DE header, or the "KQ" variant when built with
// KVX_FUZZ_KQ, which forces the first two bytes), then queries of every
// target and centre at dates across, at and beyond the file's coverage,
// with and without velocities, read from the file and from memory.
#include <initializer_list>
#include <cmath>
#include <utility>
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
        const double dates[] = {a, b, std::nextafter(b, 1e300), a + (b - a) * 0.37, kvx::fuzz::DoubleAt(data, size, 0)};
        // Every target against the barycentre and one other centre, and the
        // invalid pairs, with and without velocities.
        for (double jd : dates) {
            for (int target = 1; target <= 15; ++target) {
                double pv[6];
                kvx::jpl::Evaluate(r, jd, target, 12, pv, target % 2 == 0);
                kvx::jpl::Evaluate(r, jd, target, target * 7 % 13 + 1, pv, target % 2 != 0);
            }
            for (const auto &[target, centre] : {std::pair{0, 3}, {16, 3}, {3, 0}, {3, 13}, {3, 3}, {10, 3}, {3, 10}}) {
                double pv[6];
                kvx::jpl::Evaluate(r, jd, target, centre, pv, true);
            }
        }
        kvx::jpl::Close(r);
    }
    return 0;
}
