// The Delta T file: load (read as a file in text mode on Windows, where
// CR LF folds to LF and Ctrl-Z ends the text, or as on POSIX), then both
// conversions at a date chosen by the input across and beyond the table,
// and unload.
#include "fuzz_input.h"
#include "kvxlib.h"
#include "time/delta_t.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    kvx::fuzz::Controls in(data, size);
    const bool loaded = kvx::fuzz::PickMode(in) == kvx::fuzz::Mode::kFile
                            ? kvx::deltat::LoadFile(kvx::fuzz::File().Write(data, size))
                            : kvx::deltat::LoadFrom(kvx::platform::MemorySource(data, size, in.Flag()));
    if (loaded) {
        double oldest = 0, newest = 0;
        kvx::deltat::LoadedSpan(&oldest, &newest);
        for (unsigned q = 1 + in.Pick(3); q > 0; --q) {
            // The hold of the newest value ends five years past it.
            const double jd = in.Flag() ? newest + 1826.0 + in.Fraction() : in.DateIn(oldest, newest);
            UtToDt(jd);
            DtToUt(jd);
        }
    }
    kvx::deltat::Release();
    return 0;
}
