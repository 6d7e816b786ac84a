// The traditional lunisolar calendar: a month begins on the local civil day
// of a new moon; months are numbered by the principal solar terms they hold
// (the winter solstice in month 11); thirteen lunations between two
// like-numbered months give a leap month, the first lunation without a
// principal term. One table of new moons per key year is kept: from
// November of the year before to February of the year after.
#include <cmath>
#include <cstdint>

#include "kvxlib.h"

namespace kvx::lunisolar {

namespace {

constexpr int32_t kNoYear = -2147483647;
constexpr int kCapacity = 24;
// Key years for which a table is built; the new-moon and solar-term
// searches have no meaning far beyond this, and outside it the table stays
// empty so that the year arithmetic cannot overflow.
constexpr int32_t kYearLimit = 100000;

struct Entry {
    double start;   // Julian date of the civil midnight of the new moon's day
    int32_t month;  // 1..12, -m for the leap month after m, 0 unnumbered
};

struct Table {
    Entry entries[kCapacity];
    int32_t count = 0;
    int32_t key = kNoYear;
};
Table gTable{};

double DayStart(double x) { return std::floor(x - 0.5) + 0.5; }

// Marks the lunation that holds the Sun's longitude L of year y with month
// m (the solstice month keeps 11). Returns the index of the lunation after
// it, 0 when the term precedes the table, -1 when it follows the table.
int Mark(int32_t y, int32_t longitude, int32_t m, double zd) {
    const double t = DayStart(GetSunLongJD(y, longitude) + zd);
    if (gTable.count < 1) return -1;
    int i = 0;
    while (i < gTable.count && !(gTable.entries[i].start > t)) ++i;
    if (i == gTable.count) return -1;
    if (i == 0) return 0;
    if (gTable.entries[i - 1].month != 11) gTable.entries[i - 1].month = m;
    return i;
}

int32_t NextMonth(int32_t m) { return m == 12 ? 1 : m + 1; }

void Build(int32_t key, double zoneHours) {
    gTable.key = key;
    gTable.count = 0;
    if (key < -kYearLimit || key > kYearLimit) return;
    const double zd = zoneHours / 24.0;

    // The new moons of the sixteen civil months from November of key-1.
    for (int k = 0; k < 16; ++k) {
        const int32_t year = key - 1 + (k + 10) / 12;
        const int32_t month = (k + 10) % 12 + 1;
        const ADate request{year, month, 1, 0, 0, 0.0, zoneHours};
        MoonPhase phases[6];
        const int32_t n = GetMoonPhases(&request, phases, 6);
        for (int32_t p = 0; p < n; ++p)
            if (phases[p].phase == 0 && gTable.count < kCapacity)
                gTable.entries[gTable.count++] = {DayStart(phases[p].jd + zd), 0};
    }

    // Backward from the winter solstice of key-1, while the term falls in a
    // lunation after the first.
    int32_t longitude = 270, m = 11;
    int r = Mark(key - 1, longitude, m, zd);
    for (int guard = 0; r > 1 && guard < 12; ++guard) {
        m = m == 1 ? 12 : m - 1;
        longitude = longitude - 30 < 0 ? longitude + 330 : longitude - 30;
        r = Mark(key - 1, longitude, m, zd);
    }
    // Forward: the principal terms of the key year from 300 degrees (month
    // 12) to the solstice (month 11), then 300 degrees of the next year.
    longitude = 300;
    m = 12;
    for (int k = 0; k < 12; ++k) {
        Mark(key, longitude, m, zd);
        longitude = longitude + 30 >= 360 ? longitude - 330 : longitude + 30;
        m = NextMonth(m);
    }
    Mark(key + 1, 300, 12, zd);

    // Numbering from the first marked lunation a.
    Entry *e = gTable.entries;
    const int count = gTable.count;
    int a = 0;
    while (a < count && e[a].month == 0) ++a;
    if (a == count) return;
    const int32_t ma = e[a].month;
    int b = a + 1;
    while (b < count && e[b].month != ma) ++b;
    if (b == count) b = count - 1;
    if (b - a == 13) {
        int j = a + 1;
        while (j < b && e[j].month != 0) ++j;
        if (j < b) e[j].month = -e[j - 1].month;
        int32_t v = NextMonth(e[j - 1].month);
        for (int i = j + 1; i < count; ++i, v = NextMonth(v)) e[i].month = v;
    } else {
        int32_t v = ma;
        for (int i = a; i < count; ++i, v = NextMonth(v)) e[i].month = v;
    }

    // Back-fill the lunations before a. The running value wraps only below
    // zero, so the lunation before a month 1 gets 0.
    int32_t v = e[a].month - 1;
    for (int i = a - 1; i >= 0; --i) {
        if (e[i].month == 0) e[i].month = v;
        v = v - 1;
        if (v < 0) v += 12;
    }
}

}  // namespace

}  // namespace kvx::lunisolar

extern "C" int32_t Calender_NewToOld(const ADate *civil, ADate *old) {
    using kvx::lunisolar::gTable;
    if (!civil || !old) return 0;
    const ADate in = *civil;  // old may be the same record
    int32_t key = in.year;
    if (in.month == 12 && key < INT32_MAX) ++key;
    if (key != gTable.key) kvx::lunisolar::Build(key, in.tz);
    old->tz = in.tz;

    const double jd = CalcJd(in.year, in.month, in.day);
    int i = 0;
    while (i < gTable.count && !(gTable.entries[i].start > jd)) ++i;
    if (i > 0 && i < gTable.count) {
        const auto &e = gTable.entries[i - 1];
        int32_t day = static_cast<int32_t>(jd - e.start) + 1;  // less than a lunation apart
        if (day > 30) day -= 30;
        old->month = e.month;
        old->day = day;
    }
    old->year = in.year;
    const int32_t month = old->month < 0 ? -old->month : old->month;
    if (month >= 11 && in.month < 3 && in.year > INT32_MIN) {
        old->year = in.year - 1;
        return old->year;
    }
    return month;
}

extern "C" int32_t Calender_OldToNew(const ADate *old, ADate *civil) {
    using kvx::lunisolar::gTable;
    if (!old || !civil) return 0;
    const ADate in = *old;  // civil may be the same record
    const int32_t month = in.month < 0 ? -in.month : in.month;
    int32_t key = in.year;
    if (month >= 11 && key < INT32_MAX) ++key;
    if (key != gTable.key) kvx::lunisolar::Build(key, in.tz);
    civil->tz = in.tz;

    const double ref = CalcJd(in.year, in.month, 1.0);
    for (int i = 0; i < gTable.count; ++i) {
        const auto &e = gTable.entries[i];
        if (!(e.start > ref) || e.month != in.month) continue;
        const double jd = e.start + in.day - 1.0;
        int32_t y, m;
        double d;
        JdToDate(jd, &y, &m, &d);
        civil->year = y;
        civil->month = m;
        civil->day = static_cast<int32_t>(d);
        return civil->day;
    }
    civil->month = 0;
    return 0;
}

extern "C" int32_t Calender_GetTable(int32_t index, double *start, int32_t *month) {
    using kvx::lunisolar::gTable;
    if (index < 0 || index >= gTable.count) return -1;
    if (start) *start = gTable.entries[index].start;
    if (month) *month = gTable.entries[index].month;
    return index;
}
