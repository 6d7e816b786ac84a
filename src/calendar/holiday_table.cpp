// The national-holiday rules of Japan (Act on National Holidays of 1948 and
// its amendments, the substitute-holiday rules of 1973 and 2007, and the
// special acts for the one-time holidays). The order is the listing order:
// the substitute and between-two-holidays rules compare each holiday with
// the one listed just before it.
#include "calendar/holiday.h"

namespace kvx::holiday {

namespace {
constexpr int32_t kNoEnd = 2147483647;
}

const Rule kRules[] = {
    {1973, 2006, -1, 4, 1, 1},    // substitute holiday from 1973-04-12: Sunday only
    {2007, kNoEnd, -1, 1, 2, 1},  // from 2007: the first following non-holiday
    {1986, kNoEnd, -2, 12, 1, 2}, // a day between two holidays is a holiday
    {1949, kNoEnd, 1, 1, 1, 3},   // New Year's Day
    {1949, 1999, 1, 1, 15, 4},    // Coming of Age Day
    {2000, kNoEnd, 2, 1, 12, 4},  //   second Monday of January
    {1967, kNoEnd, 1, 2, 11, 5},  // National Foundation Day
    {1989, 1989, 1, 2, 24, 18},   // funeral of the Showa Emperor
    {1949, kNoEnd, 3, 3, 0, 6},   // Vernal Equinox Day
    {1959, 1959, 1, 4, 10, 19},   // wedding of the Crown Prince Akihito
    {1949, 1988, 1, 4, 29, 14},   // the Emperor's Birthday (Showa)
    {1989, 2006, 1, 4, 29, 15},   // Greenery Day
    {2007, kNoEnd, 1, 4, 29, 17}, // Showa Day
    {2019, 2019, 1, 5, 1, 23},    // enthronement of the Emperor
    {1949, kNoEnd, 1, 5, 3, 8},   // Constitution Memorial Day
    {2007, kNoEnd, 1, 5, 4, 15},  // Greenery Day
    {1949, kNoEnd, 1, 5, 5, 9},   // Children's Day
    {1993, 1993, 1, 6, 9, 20},    // wedding of the Crown Prince Naruhito
    {1996, 2002, 1, 7, 20, 16},   // Marine Day
    {2003, 2019, 2, 7, 13, 16},   //   third Monday of July
    {2020, 2020, 1, 7, 23, 16},   //   moved for the Tokyo Olympics
    {2021, kNoEnd, 2, 7, 13, 16}, //   third Monday of July
    {2016, 2019, 1, 8, 11, 22},   // Mountain Day
    {2020, 2020, 1, 8, 10, 22},   //   moved for the Tokyo Olympics
    {2021, kNoEnd, 1, 8, 11, 22}, //
    {1966, 2002, 1, 9, 15, 10},   // Respect for the Aged Day
    {2003, kNoEnd, 2, 9, 13, 10}, //   third Monday of September
    {1948, kNoEnd, 4, 9, 0, 7},   // Autumnal Equinox Day
    {1966, 1999, 1, 10, 10, 11},  // Health and Sports Day
    {2000, 2019, 2, 10, 12, 11},  //   second Monday of October
    {2020, 2020, 1, 7, 24, 24},   // Sports Day, moved for the Tokyo Olympics
    {2021, kNoEnd, 2, 10, 12, 24},//   second Monday of October
    {2019, 2019, 1, 10, 22, 25},  // enthronement ceremony
    {1948, kNoEnd, 1, 11, 3, 12}, // Culture Day
    {1990, 1990, 1, 11, 12, 21},  // enthronement ceremony of the Heisei Emperor
    {1948, kNoEnd, 1, 11, 23, 13},// Labour Thanksgiving Day
    {1989, 2018, 1, 12, 23, 14},  // the Emperor's Birthday (Heisei)
    {2020, kNoEnd, 1, 2, 23, 14}, // the Emperor's Birthday (Reiwa), listed last
    {-1, -1, 0, 0, 0, 0},
};

}  // namespace kvx::holiday
