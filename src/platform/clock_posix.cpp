// POSIX clock and zone: clock_gettime for universal time, localtime_r with
// tm_gmtoff / tm_isdst and the standard offset from tzset's `timezone`.
#ifndef _WIN32
#include <ctime>

#include "platform/clock.h"

namespace kvx::platform {

bool SystemUtcNow(UtcNow *out) {
    timespec ts{};
    if (clock_gettime(CLOCK_REALTIME, &ts) != 0) return false;
    const time_t secs = ts.tv_sec;
    tm utc{};
    if (!gmtime_r(&secs, &utc)) return false;
    out->year = utc.tm_year + 1900;
    out->month = utc.tm_mon + 1;
    out->day = utc.tm_mday;
    out->hour = utc.tm_hour;
    out->minute = utc.tm_min;
    out->second = utc.tm_sec;
    return true;
}

ZoneInfo SystemZone() {
    tzset();
    const time_t now = time(nullptr);
    tm local{};
    ZoneInfo z{0, 0, false};
    if (!localtime_r(&now, &local)) return z;
    const long offsetMinutes = local.tm_gmtoff / 60;  // local - UTC, daylight included
    if (local.tm_isdst > 0) {
        z.biasMinutes = static_cast<int>(timezone / 60);  // standard time, seconds west
        z.daylightBiasMinutes = static_cast<int>(-(offsetMinutes + z.biasMinutes));
        z.daylight = true;
    } else {
        z.biasMinutes = static_cast<int>(-offsetMinutes);
    }
    return z;
}

}  // namespace kvx::platform
#endif
