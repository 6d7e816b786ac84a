// The solar terms: the instants at which the Sun's apparent longitude
// reaches given values, and the per-year table of term days.
#pragma once

#include <cstdint>

namespace kvx::sekki {

// One row of the term template: the usual civil date of the entry (the
// centre of the search), its code (a solar longitude in degrees, or a
// negative code for a day counted from another row) and its identifier.
struct TermTemplate {
    int32_t month;
    int32_t day;
    int32_t code;
    int32_t id;
};

inline constexpr int kRows = 35;
extern const TermTemplate kTemplate[kRows];

// Universal-time Julian date at which the Sun's apparent longitude reaches
// `longitude` near the usual date (month, day) of year `year`.
double LongitudeInstant(int32_t year, int32_t month, int32_t day, double longitude);

}  // namespace kvx::sekki
