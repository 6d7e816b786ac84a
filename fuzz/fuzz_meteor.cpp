// The meteor-shower list: load (text-mode line ends as on Windows or as on
// POSIX, chosen by the input), read every record back, unload.
#include "calendar/meteor.h"
#include "fuzz_input.h"
#include "kvxlib.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    kvx::fuzz::Controls in(data, size);
    const bool loaded = kvx::fuzz::PickMode(in) == kvx::fuzz::Mode::kFile
                            ? kvx::meteor::LoadFile(kvx::fuzz::File().Write(data, size))
                            : kvx::meteor::LoadFrom(kvx::platform::MemorySource(data, size, in.Flag()));
    if (loaded) {
        const int32_t n = GetMeteorInfoCount();
        double sum = 0.0;
        for (int32_t i = 0; i < n; ++i) {
            const MeteorInfo *m = GetMeteorInfo(i);
            if (!m) __builtin_trap();  // every counted record is there
            sum += m->value[0] + m->name[30] + m->code[3];
        }
        if (GetMeteorInfo(n) != nullptr) __builtin_trap();
        (void)sum;
    }
    kvx::meteor::Release();
    return 0;
}
