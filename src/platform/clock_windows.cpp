// Windows clock and zone: GetSystemTime and GetTimeZoneInformation.
#ifdef _WIN32
#include <windows.h>

#include "platform/clock.h"

namespace kvx::platform {

bool SystemUtcNow(UtcNow *out) {
    SYSTEMTIME st;
    GetSystemTime(&st);
    out->year = st.wYear;
    out->month = st.wMonth;
    out->day = st.wDay;
    out->hour = st.wHour;
    out->minute = st.wMinute;
    out->second = st.wSecond;  // milliseconds dropped
    return true;
}

ZoneInfo SystemZone() {
    TIME_ZONE_INFORMATION tzi;
    const DWORD r = GetTimeZoneInformation(&tzi);
    ZoneInfo z;
    z.biasMinutes = static_cast<int>(tzi.Bias);
    z.daylightBiasMinutes = static_cast<int>(tzi.DaylightBias);
    z.daylight = (r == TIME_ZONE_ID_DAYLIGHT);
    return z;
}

}  // namespace kvx::platform
#endif
