// Pins the layout of the Moon's public record: a 32-bit phase number, then
// the instant as a 64-bit Julian date at offset 8 (16 bytes, so arrays of
// it have the stride applications expect).
#include <cstddef>

#include "kvxlib.h"

static_assert(sizeof(MoonPhase) == 16);
static_assert(offsetof(MoonPhase, phase) == 0 && offsetof(MoonPhase, jd) == 8);
