// The Delta T file: load, then both conversions across and beyond the
// table, and unload.
#include <initializer_list>

#include "fuzz_input.h"
#include "kvxlib.h"
#include "time/delta_t.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (kvx::deltat::LoadFile(kvx::fuzz::File().Write(data, size))) {
        double oldest = 0, newest = 0;
        kvx::deltat::LoadedSpan(&oldest, &newest);
        for (double jd : {oldest, newest, 0.5 * (oldest + newest), oldest - 400.0, newest + 400.0, 2451545.0,
                          kvx::fuzz::DoubleAt(data, size, 0)}) {
            UtToDt(jd);
            DtToUt(jd);
        }
    }
    kvx::deltat::Release();
    return 0;
}
