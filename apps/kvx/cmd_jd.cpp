// kvx jd: the Julian and modified Julian date of a civil date.
#include <cmath>
#include <cstdio>

#include "commands.h"

namespace kvx::cli {

int RunJd(const Args &args) {
    args.ExpectPositional(1, 1);
    Place place = PlaceFrom(args);
    const ADate date = ParseDate(args.Positional()[0], &place);
    const double jd = GetJd(&date);
    if (args.Flag("json")) {
        std::printf("%s\n", Json()
                                .Str("date", FormatDate(date))
                                .When(place, jd)
                                .Num("jd", jd)
                                .Num("mjd", GetMjd(jd))
                                .Text()
                                .c_str());
    } else {
        std::printf("%s %s (%s)  JD %.6f  MJD %.6f\n", FormatDate(date).c_str(), FormatZone(date.tz).c_str(),
                    place.zone.c_str(), jd, GetMjd(jd));
    }
    return 0;
}

}  // namespace kvx::cli
