// A settings file: values chosen by the input, each read with room to spare
// or with a buffer too small for it, from the file's text or (one input in
// eight) from the file itself.
#include <cstring>

#include "fuzz_input.h"
#include "platform/settings.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    kvx::fuzz::Controls in(data, size);
    static const char *const kNames[] = {"OnMemory",    "DtUtFile",    "PlanetXyzFile",
                                         "JplEphUnixFile", "MoonXyzFile", "MeteorFile"};
    static const size_t kRooms[] = {1, 8, 260};
    const char *path = kvx::fuzz::PickMode(in) == kvx::fuzz::Mode::kFile ? kvx::fuzz::File().Write(data, size) : nullptr;
    for (unsigned q = 1 + in.Pick(3); q > 0; --q) {
        const char *name = kNames[in.Pick(6)];
        const size_t room = kRooms[in.Pick(3)];
        char buf[260];
        std::memset(buf, 'x', sizeof buf);
        const bool found = path ? kvx::platform::ReadSettingFromFile(path, name, buf, room)
                                : kvx::platform::ReadSettingFromText(reinterpret_cast<const char *>(data), size,
                                                                     name, buf, room);
        if (found && std::strlen(buf) >= room) __builtin_trap();  // a value is returned only when it fits
    }
    return 0;
}
