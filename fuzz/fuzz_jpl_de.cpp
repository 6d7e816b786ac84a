// JPL DE reader: the opener (DE header, or the "KQ" variant when built with
// KVX_FUZZ_KQ, which forces the first two bytes), then a few queries chosen
// by the input: a date at, just beyond or inside the file's coverage (or any
// double), any target and centre including the invalid ones, with or
// without velocities; from memory, from the file or read into memory.
#include <vector>

#include "fuzz_input.h"
#include "solar/ephem/jpl_de.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    kvx::fuzz::Controls in(data, size);
#ifdef KVX_FUZZ_KQ
    std::vector<uint8_t> bytes(data, data + size);
    if (bytes.size() < 2) bytes.resize(2);
    bytes[0] = 'K';
    bytes[1] = 'Q';
    data = bytes.data();
    size = bytes.size();
#endif
    const kvx::fuzz::Mode mode = kvx::fuzz::PickMode(in);
    kvx::jpl::Reader *r = mode == kvx::fuzz::Mode::kFile
                              ? kvx::jpl::Open(kvx::fuzz::File().Write(data, size))
                              : kvx::jpl::OpenFrom(kvx::platform::MemorySource(data, size), "fuzz");
    if (!r) return 0;
    if (mode == kvx::fuzz::Mode::kOnMemory) kvx::jpl::ReadIntoMemory(r);
    for (unsigned q = 1 + in.Pick(4); q > 0; --q) {
        const double jd = in.DateIn(r->startJd, r->endJd);
        // Targets 0..16 and centres 0..14: every body, the barycentres,
        // nutations and librations, and the invalid numbers on both sides.
        const int target = static_cast<int>(in.Pick(17)), centre = static_cast<int>(in.Pick(15));
        double pv[6];
        kvx::jpl::Evaluate(r, jd, target, centre, pv, in.Flag());
    }
    kvx::jpl::Close(r);
    return 0;
}
