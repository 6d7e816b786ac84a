// Solar terms: the instant of a solar longitude by inverse interpolation over
// four daily samples of the Sun's apparent ecliptic longitude, and the
// per-year table of term days kept in a one-year cache.
#include "calendar/solar_term.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include "kvxlib.h"

namespace kvx::sekki {

namespace {

constexpr int32_t kNoYear = -2147483647;

struct Row {
    int32_t month;
    int32_t day;
    double hours;
    int32_t code;
    int32_t id;
};

// The year table and the year and zone (days) it was built for.
struct YearTable {
    Row rows[kRows];
    int32_t year = kNoYear;
    double zoneDays = 0.0;
};
YearTable gTable{};

// Calendar date of a Julian date with the day split into its integer part
// and the clock hours. False for a value the date routines cannot express
// (NaN, infinity, beyond about five million years).
bool Split(double jd, int32_t *year, int32_t *month, int32_t *day, double *hours) {
    if (!(std::fabs(jd) < 2.0e9)) return false;
    double dayValue;
    JdToDate(jd, year, month, &dayValue);
    const double whole = std::floor(dayValue);
    *day = static_cast<int32_t>(whole);
    *hours = (dayValue - whole) * 24.0;
    return true;
}

// Row index of the first template row with the given code, or -1.
int FindCode(int32_t code) {
    for (int i = 0; i < kRows; ++i)
        if (kTemplate[i].code == code) return i;
    return -1;
}

// The row a counted day refers to and its offset in days.
struct Counted {
    int from;
    double offset;
};
Counted CountedFrom(int32_t code) {
    switch (code) {
    case -1: return {3, -1.0};
    case -2: return {7, -3.0};
    case -3: return {3, 87.0};
    case -4: return {3, 209.0};
    default: return {26, -3.0};  // -5
    }
}

void Build(int32_t year, double zoneHours) {
    gTable.year = year;
    gTable.zoneDays = zoneHours / 24.0;
    const double zd = gTable.zoneDays;
    for (int i = 0; i < kRows; ++i) {
        const TermTemplate &tpl = kTemplate[i];
        Row &row = gTable.rows[i];
        row.code = tpl.code;
        row.id = tpl.id;
        row.hours = 0.0;
        if (tpl.code >= 0) {
            int32_t y = 0, m = 13, d = 0;
            double h = 0.0;
            bool placed = Split(LongitudeInstant(year, tpl.month, tpl.day, tpl.code) + zd, &y, &m, &d, &h);
            if (placed && y != year) {
                // The local date left the year (the 285-degree term in a zone
                // far from Greenwich): try the same term of the neighbouring
                // year, which may fall in this one.
                const int64_t other = static_cast<int64_t>(year) + (y > year ? -1 : 1);
                placed = other >= INT32_MIN && other <= INT32_MAX &&
                         Split(LongitudeInstant(static_cast<int32_t>(other), tpl.month, tpl.day, tpl.code) + zd, &y,
                               &m, &d, &h) &&
                         y == year;
            }
            row.month = placed ? m : 13;
            row.day = d;
            row.hours = h;
        } else {
            const Counted c = CountedFrom(tpl.code);
            const Row &ref = gTable.rows[c.from];
            int32_t y, m = 13, d = 0;
            double h;
            if (Split(CalcJd(year, ref.month, ref.day) + c.offset, &y, &m, &d, &h)) {
                row.month = m;
                row.day = d;
            } else {
                row.month = 13;
                row.day = 0;
            }
        }
    }
    // Exchange sort on month * 100 + day; equal keys keep their order.
    for (int i = 0; i < kRows; ++i)
        for (int j = i + 1; j < kRows; ++j) {
            const int32_t ki = gTable.rows[i].month * 100 + gTable.rows[i].day;
            const int32_t kj = gTable.rows[j].month * 100 + gTable.rows[j].day;
            if (kj < ki) {
                const Row tmp = gTable.rows[i];
                gTable.rows[i] = gTable.rows[j];
                gTable.rows[j] = tmp;
            }
        }
}

}  // namespace

// Four samples at 0h UT on the days d-2 .. d+1 of the Sun's apparent
// longitude (CalcSun's astrometric J2000.0 place taken to the true ecliptic
// of date with aberration); the instant is the Lagrange polynomial of time
// against the longitude offset, evaluated at offset 0. The Sun moves about a
// degree a day, so the offsets stay far from the +-180 wrap.
double LongitudeInstant(int32_t year, int32_t month, int32_t day, double longitude) {
    double xs[4], ys[4];
    for (int k = 0; k < 4; ++k) {
        const ADate date{year, month, day - 2 + k, 0, 0, 0.0, 0.0};
        ATime t;
        SetATimeDate(&date, nullptr, &t);
        BodyPos sun;
        CalcSun(&t, &sun);
        const Ad j2000{sun.f[0], sun.f[1]};
        Ad ecliptic{0.0, 0.0};
        Coordinates(&t, KVX_COORD_J2000, &j2000, KVX_COORD_ECL_APPARENT, &ecliptic);
        xs[k] = degmal180(ecliptic.a - longitude);
        ys[k] = t.jd;
    }
    return Lagrange(0.0, 4, xs, ys);
}

}  // namespace kvx::sekki

extern "C" double GetSunLongJD(int32_t year, int32_t longitude) {
    const int i = kvx::sekki::FindCode(longitude);
    if (i < 0) return 0.0;
    const auto &tpl = kvx::sekki::kTemplate[i];
    return kvx::sekki::LongitudeInstant(year, tpl.month, tpl.day, longitude);
}

extern "C" int32_t Sekki_CheckDay(int32_t year, int32_t month, int32_t day, double zoneHours, double *hours,
                                  int32_t *code) {
    using kvx::sekki::gTable;
    // The cache is keyed by the year alone: another zone for a year already
    // built is answered from the first zone's table.
    if (gTable.year != year) kvx::sekki::Build(year, zoneHours);
    for (const auto &row : gTable.rows)
        if (row.month == month && row.day == day) {
            if (hours) *hours = row.hours;
            if (code) *code = row.code;
            return row.id;
        }
    return 0;
}

extern "C" int32_t Sekki_GetTableData(int32_t index, int32_t *month, int32_t *day, double *hours, int32_t *code) {
    using kvx::sekki::gTable;
    if (index < 0 || index >= kvx::sekki::kRows) return 0;
    const auto &row = gTable.rows[index];
    if (month) *month = row.month;
    if (day) *day = row.day;
    if (hours) *hours = row.hours;
    if (code) *code = row.code;
    return row.id;
}
