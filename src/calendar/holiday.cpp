// Japanese public holidays: the year's list is built from the rule table in
// listing order, inserting substitute holidays and days between two
// holidays as it goes, and kept in a one-year cache.
#include "calendar/holiday.h"

#include <cmath>
#include <cstdint>

#include "kvxlib.h"

namespace kvx::holiday {

namespace {

constexpr int32_t kNoYear = -2147483647;
constexpr int kCapacity = 25;

struct Entry {
    int32_t month;
    int32_t day;
    int32_t weekday;
    int32_t kind;
};

struct YearList {
    Entry entries[kCapacity];
    int32_t count = 0;
    int32_t year = kNoYear;
};
YearList gList{};

void Append(int32_t month, int32_t day, int32_t weekday, int32_t kind) {
    // The rules never give more than about twenty days a year; the guard
    // only keeps a modified table from writing past the list.
    if (gList.count >= kCapacity) return;
    gList.entries[gList.count++] = {month, day, weekday, kind};
}

// Day of the n-th weekday w (0 = Sunday) of a month.
int32_t NthWeekday(int32_t year, int32_t month, int32_t w, int32_t n) {
    int32_t shift = (w - Weekday(year, month, 1)) % 7;
    if (shift < 0) shift += 7;
    return 7 * n - 6 + shift;
}

// floor(rate (Y - 1980) + offset - q): the equinox day by the linear
// approximation of the equinox's drift with the leap-year count q.
int32_t EquinoxFormula(int32_t year, double offset, int64_t q) {
    return static_cast<int32_t>(std::floor(0.242194 * (year - 1980.0) + offset - static_cast<double>(q)));
}

int32_t EquinoxDay(int32_t year, bool vernal) {
    const int64_t q1 = (static_cast<int64_t>(year) - 1983) / 4;
    const int64_t q2 = (static_cast<int64_t>(year) - 1980) / 4;
    if (year < 1900) return EquinoxFormula(year, vernal ? 19.8277 : 22.2588, q1);
    if (year < 1980) return EquinoxFormula(year, vernal ? 20.8357 : 23.2588, q1);
    if (year < 2100) return EquinoxFormula(year, vernal ? 20.8431 : 23.2488, q2);
    if (year <= 2150) return EquinoxFormula(year, vernal ? 21.851 : 24.2488, q2);
    return vernal ? 20 : 23;
}

void Build(int32_t year) {
    gList.year = year;
    gList.count = 0;
    int32_t substitute = 0, substituteFrom = 0;
    bool between = false;
    int32_t pm = 0, pd = 0;  // the last listed date
    for (const Rule *r = kRules; r->first > 0; ++r) {
        if (r->first > year || r->last < year) continue;
        if (r->type == -2) {
            between = true;
            continue;
        }
        if (r->type == -1) {
            substitute = r->value;
            substituteFrom = year == r->first ? r->month : 1;
            continue;
        }
        int32_t day;
        switch (r->type) {
        case 2: day = NthWeekday(year, r->month, r->value / 10, r->value % 10); break;
        case 3: day = VernalEquinoxDay(year); break;
        case 4: day = AutumnalEquinoxDay(year); break;
        default: day = r->value; break;
        }
        if (day == 0) continue;
        const int32_t w = Weekday(year, r->month, day);

        // From 2007 a holiday that lands on the substitute day just listed
        // takes its place; the substitute moves on below.
        const bool dup = substitute == 2 && r->month == pm && day == pd;
        if (dup) --gList.count;

        if (between && w >= 3 && gList.count > 0 && gList.entries[gList.count - 1].kind >= 3 &&
            std::floor(CalcJd(year, r->month, day) - CalcJd(year, pm, pd) + 0.5) == 2.0) {
            if (day > 1)
                Append(r->month, day - 1, w - 1, 2);
            else
                Append(r->month - 1, DaysInMonth(year, r->month - 1), w - 1, 2);
        }

        Append(r->month, day, w, r->kind);
        pm = r->month;
        pd = day;

        if (substitute >= 1 && r->month >= substituteFrom && (w == 0 || dup)) {
            Append(r->month, day + 1, w + 1 == 7 ? 0 : w + 1, 1);
            pd = day + 1;
        }
    }
}

}  // namespace

int32_t Weekday(int32_t year, int32_t month, int32_t day) {
    double w = std::fmod(std::floor(CalcJd(year, month, day) + 1.5), 7.0);
    if (w < 0.0) w += 7.0;
    return static_cast<int32_t>(w);
}

int32_t DaysInMonth(int32_t year, int32_t month) {
    static const int32_t kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12) return -1;
    if (month != 2) return kDays[month - 1];
    const bool leap = year >= 1583 ? (year % 4 == 0 && year % 100 != 0) || year % 400 == 0 : year % 4 == 0;
    return leap ? 29 : 28;
}

// Day-of-month formulas of the equinox holidays (the linear drift of the
// equinox in the Gregorian calendar, offsets fitted per century); after 2150
// the usual days.
int32_t VernalEquinoxDay(int32_t year) { return EquinoxDay(year, true); }
int32_t AutumnalEquinoxDay(int32_t year) { return EquinoxDay(year, false); }

}  // namespace kvx::holiday

extern "C" int32_t Holiday_CheckDay(int32_t year, int32_t month, int32_t day) {
    using kvx::holiday::gList;
    if (gList.year != year) kvx::holiday::Build(year);
    for (int32_t i = 0; i < gList.count; ++i)
        if (gList.entries[i].month == month && gList.entries[i].day == day) return gList.entries[i].kind;
    return 0;
}

extern "C" int32_t Holiday_GetHolidayData(int32_t index, int32_t *month, int32_t *day, int32_t *weekday) {
    using kvx::holiday::gList;
    if (index < 0 || index >= gList.count) return 0;
    const auto &e = gList.entries[index];
    if (month) *month = e.month;
    if (day) *day = e.day;
    if (weekday) *weekday = e.weekday;
    return e.kind;
}
