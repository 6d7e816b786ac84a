// The system clock and time zone, behind one small interface so that the
// date code is the same on every platform.
#pragma once

namespace kvx::platform {

struct UtcNow {
    int year, month, day, hour, minute, second;  // whole seconds
};

// Time-zone information in the Windows convention: bias = UTC - local
// standard time in minutes (Tokyo: -540); daylightBias is added to bias
// while daylight-saving time is in force (usually -60).
struct ZoneInfo {
    int biasMinutes;
    int daylightBiasMinutes;
    bool daylight;
};

// Current universal time; false when the system cannot tell.
bool SystemUtcNow(UtcNow *out);

// Current zone of the process.
ZoneInfo SystemZone();

}  // namespace kvx::platform
