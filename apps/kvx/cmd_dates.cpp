// kvx jd / kvx date: civil date to Julian date and back.
#include <cmath>
#include <cstdio>

#include "commands.h"

namespace kvx::cli {

namespace {

int RunJd(const Args &args) {
    args.ExpectPositional(1, 1);
    const double tz = args.Number("tz", 0.0);
    const ADate date = ParseDate(args.Positional()[0], tz);
    const double jd = GetJd(&date);
    if (args.Flag("json")) {
        std::printf("%s\n", Json().Str("date", FormatDate(date)).Num("tz", tz).Num("jd", jd).Num("mjd", GetMjd(jd)).Text().c_str());
    } else {
        std::printf("%s %s  JD %.6f  MJD %.6f\n", FormatDate(date).c_str(), FormatZone(tz).c_str(), jd, GetMjd(jd));
    }
    return 0;
}

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

}  // namespace

KVX_COMMAND(10, "jd", "jd YYYY-MM-DD[Thh:mm[:ss]] [--tz H] [--json]", {"json"}, RunJd);
KVX_COMMAND(11, "date", "date JD [--tz H] [--json]", {"json"}, RunDate);

}  // namespace kvx::cli
