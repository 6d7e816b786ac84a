// Japanese national holidays: the constant rule table and the date helpers
// the year list is built with.
#pragma once

#include <cstdint>

namespace kvx::holiday {

// One rule: in force from year `first` to `last`; its type (-1 substitute
// holiday rule, -2 day-between-two-holidays rule, 1 fixed day, 2 n-th
// weekday, 3 and 4 the equinox days), month, value (day, or weekday x 10 +
// n) and the holiday kind it gives.
struct Rule {
    int32_t first;
    int32_t last;
    int32_t type;
    int32_t month;
    int32_t value;
    int32_t kind;
};

// The rules in listing order, ended by a row whose first year is not positive.
extern const Rule kRules[];

// Weekday of a civil date, 0 = Sunday.
int32_t Weekday(int32_t year, int32_t month, int32_t day);
// Days in a month (-1 for a month outside 1..12).
int32_t DaysInMonth(int32_t year, int32_t month);
// Day of March of the vernal equinox holiday, of September of the autumnal.
int32_t VernalEquinoxDay(int32_t year);
int32_t AutumnalEquinoxDay(int32_t year);

}  // namespace kvx::holiday
