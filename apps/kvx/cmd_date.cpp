// kvx date: the civil date of a Julian date.
#include <cmath>
#include <cstdio>

#include "commands.h"

namespace kvx::cli {

int RunDate(const Args &args) {
    args.ExpectPositional(1, 1);
    const double jd = ParseNumber(args.Positional()[0], "JD");
    const double tz = args.Number("tz", 0.0);
    ADate date{};
    JdToDate2(jd + tz / 24.0, &date);
    date.tz = tz;
    const char *weekday = WeekdayName(jd, tz);
    if (args.Flag("json")) {
        std::printf("%s\n", Json()
                                .Num("jd", jd)
                                .Num("tz", tz)
                                .Int("year", date.year)
                                .Int("month", date.month)
                                .Int("day", date.day)
                                .Int("hour", date.hour)
                                .Int("minute", date.minute)
                                .Num("second", date.second)
                                .Str("weekday", weekday)
                                .Str("date", FormatDate(date))
                                .Text()
                                .c_str());
    } else {
        std::printf("JD %.6f = %s %s %s\n", jd, FormatDate(date).c_str(), FormatZone(tz).c_str(), weekday);
    }
    return 0;
}


}  // namespace kvx::cli
