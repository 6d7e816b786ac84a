// A settings file: each of the six values read with room to spare and with
// buffers too small for it.
#include <initializer_list>
#include <cstring>

#include "fuzz_input.h"
#include "platform/settings.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const char *path = kvx::fuzz::File().Write(data, size);
    for (const char *name : {"OnMemory", "DtUtFile", "PlanetXyzFile", "JplEphUnixFile", "MoonXyzFile", "MeteorFile"})
        for (size_t room : {size_t{1}, size_t{8}, size_t{260}}) {
            char buf[260];
            std::memset(buf, 'x', sizeof buf);
            if (kvx::platform::ReadSettingFromFile(path, name, buf, room) && std::strlen(buf) >= room)
                __builtin_trap();  // a value is returned only when it fits
        }
    return 0;
}
