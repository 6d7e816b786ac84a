// The meteor-shower list: load, read every record back, unload.
#include <initializer_list>

#include "fuzz_input.h"
#include "calendar/meteor.h"
#include "kvxlib.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (kvx::meteor::LoadFile(kvx::fuzz::File().Write(data, size))) {
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
