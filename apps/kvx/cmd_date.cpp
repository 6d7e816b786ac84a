// kvx date: the civil date of a Julian date.
#include <cmath>
#include <cstdio>

#include "commands.h"

namespace kvx::cli {

int RunDate(const Args &args) {
    args.ExpectPositional(1, 1);
    const double jd = ParseNumber(args.Positional()[0], "JD");
    // JD 0 opens the first supported year; the last ends the last one.
    const ADate last{kMaxYear, 12, 31, 24, 0, 0.0, 0.0};
    if (jd < 0.0 || jd > GetJd(&last)) throw UsageError{"JD must lie within 0.." + std::to_string(GetJd(&last))};
    const Place place = PlaceFrom(args);
    const ADate date = LocalDate(place, jd);
    const double tz = date.tz;
    const char *weekday = WeekdayName(jd, tz);
    if (args.Flag("json")) {
        std::printf("%s\n", Json()
                                .Num("jd", jd)
                                .When(place, jd)
                                .DateFields(date)
                                .Str("weekday", weekday)
                                .Str("date", FormatDate(date))
                                .Text()
                                .c_str());
    } else {
        std::printf("JD %.6f = %s %s (%s) %s\n", jd, FormatDate(date).c_str(), FormatZone(tz).c_str(),
                    place.zone.c_str(), weekday);
    }
    return 0;
}


}  // namespace kvx::cli
