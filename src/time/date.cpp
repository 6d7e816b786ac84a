// Civil dates and Julian dates: conversions both ways across the 1582
// calendar reform, calendar-interval shifts, zone changes, validation, the
// system clock and zone, and the small time arguments.
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "platform/clock.h"

extern "C" double CalcJd(double year, double month, double day) {
    double y = year, m = month;
    if (m < 3.0) {
        y = year - 1.0;
        m = month + 12.0;
    }
    double jd = kvx::Floor((m - 2.0) * 30.59) + kvx::Floor(y * 365.25) + day + 1721086.5;
    if (jd > 2299160.5) jd = jd + kvx::Floor(y / 400.0) - kvx::Floor(y / 100.0) + 2.0;
    return jd;
}

extern "C" double GetJd(const ADate *date) {
    if (!date) return 0.0;
    const double fraction = date->minute / 1440.0 + date->hour / 24.0 + date->second / 86400.0 - date->tz / 24.0;
    return CalcJd(date->year, date->month, date->day + fraction);
}

extern "C" int32_t JdToDate(double jd, int32_t *yearOut, int32_t *monthOut, double *dayOut) {
    const double z = kvx::Floor(jd + 0.5);
    const double f = jd + 0.5 - z;
    double a = z;
    // +inf skips the Gregorian correction, where it would meet inf - inf:
    // like -inf it then gives the saturated year, month 0 and a NaN day.
    if (z >= 2299160.5 && z < HUGE_VAL) {
        const double alpha = kvx::Floor((z - 1867216.25) / 36524.25);
        a = z + alpha - kvx::Floor(alpha * 0.25) + 1.0;
    }
    const double b = a + 1524.0;
    const double c = kvx::Floor((b - 122.1) / 365.25);
    const double d = kvx::Floor(c * 365.25);
    const double e = kvx::Floor((b - d) / 30.6001);
    const double day = b - d - kvx::Floor(e * 30.6001) + f;
    // NaN and dates beyond the int32 years (|jd| above about 7.8e11) give
    // year and month 0 or saturated years rather than undefined conversions.
    const int32_t month = kvx::ToInt32(kvx::Floor(e - (e >= 13.5 ? 13.0 : 1.0) + 0.5));
    const int32_t year = kvx::ToInt32(kvx::Floor(c - (month > 2 ? 4716.0 : 4715.0) + 0.5));
    if (yearOut) *yearOut = year;
    if (monthOut) *monthOut = month;
    if (dayOut) *dayOut = day;
    return year;
}

extern "C" void JdToDate2(double jd, ADate *out) {
    if (!out) return;
    int32_t year, month;
    double dayValue;
    JdToDate(jd, &year, &month, &dayValue);
    const double day = kvx::Trunc(dayValue);
    double f = dayValue - day;
    const double hour = kvx::Trunc(f * 24.0);
    f = f - hour / 24.0;
    const double minute = kvx::Trunc(f * 24.0 * 60.0);
    out->year = year;
    out->month = month;
    out->day = kvx::ToInt32(day);
    out->hour = kvx::ToInt32(hour);
    out->minute = kvx::ToInt32(minute);
    out->second = (f - minute / 24.0 / 60.0) * 24.0 * 60.0 * 60.0;
}

extern "C" double GetMjd(double jd) { return jd - 2400000.5; }

extern "C" int32_t ChangeDate(ADate *date, const ADate *interval, int32_t subtract) {
    if (!date || !interval) return 0;
    ADate copy = *date;
    copy.tz = 0.0;

    double s = date->hour * 3600.0 + date->minute * 60.0 + date->second;
    double d = interval->hour * 3600.0 + interval->minute * 60.0 + interval->second;
    if (subtract) d = -d;
    s = s + d;

    double carry = 0.0;
    if (s >= 86400.0) {
        carry = kvx::Trunc(s / 86400.0);
        s = std::fmod(s, 86400.0);
    } else if (s < 0.0) {
        carry = -kvx::Trunc(-s / 86400.0) - 1.0;
        s = std::fmod(s, 86400.0) + 86400.0;
    }
    const double hour = kvx::Trunc(s / 3600.0);
    const double minute = kvx::Trunc(s / 60.0) - 60.0 * hour;
    date->hour = kvx::ToInt32(hour);
    date->minute = kvx::ToInt32(minute);
    date->second = s - hour * 3600.0 - minute * 60.0;

    const double days = subtract ? carry - interval->day : interval->day + carry;
    copy.hour = 12;
    copy.minute = 0;
    copy.second = 0.0;
    JdToDate2(GetJd(&copy) + days, &copy);

    // Month and year sums in 64 bits, saturated to int32 years: intervals
    // near the int32 limits give the limit year instead of overflowing.
    int64_t month = subtract ? int64_t{copy.month} - interval->month : int64_t{copy.month} + interval->month;
    if (month < 1) {
        const int64_t q = month / 12;
        copy.year = kvx::SatAdd(copy.year, q - 1);
        month = month - 12 * q + 12;
    } else if (month >= 13) {
        copy.year = kvx::SatAdd(copy.year, (month - 1) / 12);
        month = (month - 1) % 12 + 1;
    }
    copy.month = static_cast<int32_t>(month);
    copy.year = kvx::SatAdd(copy.year, subtract ? -int64_t{interval->year} : int64_t{interval->year});

    if (copy.year == 1582 && copy.month == 10) {
        if (copy.day >= 5 && copy.day <= 9) copy.day = 4;
        else if (copy.day >= 10 && copy.day <= 14) copy.day = 15;
    }

    copy.hour = 12;
    copy.minute = 0;
    copy.second = 0.0;
    copy.tz = 0.0;
    JdToDate2(GetJd(&copy), &copy);

    date->year = copy.year;
    date->month = copy.month;
    date->day = copy.day;
    return copy.day;
}

extern "C" int32_t ChangeLimitDate(ADate *date, const ADate *interval, int32_t subtract) {
    if (!date || !interval) return 0;
    const ADate saved = *date;
    ChangeDate(date, interval, subtract);
    const int32_t year = date->year;
    if (year < -100000 || year > 100000) *date = saved;
    return year;
}

extern "C" int32_t ChangeTimezone(ADate *date, double newTz) {
    if (!date) return 0;
    ADate interval{};
    interval.second = (newTz - date->tz) * 60.0 * 60.0;
    const int32_t year = ChangeLimitDate(date, &interval, 0);
    date->tz = newTz;
    return year;
}

extern "C" int32_t Date36To24(ADate *date) {
    if (!date) return 0;
    return ChangeTimezone(date, date->tz);
}

extern "C" int32_t CheckDate(const ADate *date) {
    if (!date) return 0;
    const int32_t y = date->year, m = date->month, d = date->day;
    if (m < 1 || m > 12) return 0;
    const bool leap = (y > 1582) ? ((y % 4 == 0 && y % 100 != 0) || y % 400 == 0) : (y % 4 == 0);
    static const int32_t kDaysInMonth[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const int32_t dim = (m == 2 && leap) ? 29 : kDaysInMonth[m - 1];
    if (d < 1 || d > dim) return 0;
    if (static_cast<uint32_t>(date->hour) > 36u) return 0;
    if (static_cast<uint32_t>(date->minute) > 60u) return 0;
    if (y == 1582 && m == 10 && d >= 5 && d <= 14) return 0;
    return 1;
}

extern "C" int32_t GetNowDate(ADate *date, double reserved, double tz) {
    (void)reserved;
    if (!date) return 0;
    kvx::platform::UtcNow now{};
    if (!kvx::platform::SystemUtcNow(&now)) now = {2000, 1, 1, 0, 0, 0};
    *date = ADate{now.year, now.month, now.day, now.hour, now.minute, static_cast<double>(now.second), 0.0};
    const int32_t year = ChangeTimezone(date, tz);
    date->tz = tz;
    return year;
}

// -bias / 60 plus, under daylight-saving time, -daylightBias / 60, in integer
// arithmetic truncated toward zero.
extern "C" double GetTimezone(void) {
    const kvx::platform::ZoneInfo z = kvx::platform::SystemZone();
    int hours = (-z.biasMinutes) / 60;
    if (z.daylight) hours += (-z.daylightBiasMinutes) / 60;
    return hours;
}

extern "C" double GetT(double jd) {
    const double t = (jd - 2442412.5) / 365.25;
    return t + (0.0317 * t + 1.43) * 1e-6;
}

extern "C" double GetT2(double jd) { return (jd - kvx::kJ2000) / kvx::kDaysPerCentury; }

// Capitaine et al. (2003) coefficients of the IAU 2006 obliquity, arcseconds
// divided by 3600.
extern "C" double GetEp(double jde) {
    double t = (jde - kvx::kJ2000) / kvx::kDaysPerCentury;
    if (t < -30.0) t = -30.0;
    if (t > 30.0) t = 30.0;
    const double t2 = t * t, t3 = t2 * t, t4 = t3 * t, t5 = t4 * t;
    return 23.4392794444 - 0.01301021361 * t - 5.0861e-8 * t2 + 5.565e-7 * t3 - 1.6e-10 * t4 - 1.2056e-11 * t5;
}
