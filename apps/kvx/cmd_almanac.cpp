// kvx (almanac): the day's almanac for a place, by default Tokyo and now.
#include <cstdio>
#include <string>

#include "commands.h"

namespace kvx::cli {

int RunAlmanac(const Args &args) {
    if (!args.Positional().empty()) throw UsageError{"unexpected argument '" + args.Positional()[0] + "'"};
    const Place place = PlaceFrom(args);
    const ADate date = DateOption(args, place.tz);
    const double jd = GetJd(&date);
    const char *weekday = WeekdayName(jd, place.tz);

    if (args.Flag("json")) {
        Json place_json;
        place_json.Num("latitude", place.observer.latitude)
            .Num("longitude", place.observer.longitude)
            .Num("height", place.observer.height);
        std::printf("%s\n", Json()
                                .Raw("place", place_json.Text())
                                .Str("local", FormatDate(date))
                                .Num("tz", place.tz)
                                .Str("weekday", weekday)
                                .Num("jd", jd)
                                .Num("mjd", GetMjd(jd))
                                .Text()
                                .c_str());
        return 0;
    }
    std::printf("kvx almanac\n");
    std::printf("  place     %.4f %s  %.4f %s  %.0f m\n", std::abs(place.observer.latitude),
                place.observer.latitude >= 0 ? "N" : "S", std::abs(place.observer.longitude),
                place.observer.longitude >= 0 ? "E" : "W", place.observer.height);
    std::printf("  local     %04d-%02d-%02d %02d:%02d:%02d  UTC%s  %s\n", date.year, date.month, date.day, date.hour,
                date.minute, static_cast<int>(date.second), FormatZone(place.tz).c_str(), weekday);
    std::printf("  JD        %.6f\n", jd);
    std::printf("  MJD       %.6f\n", GetMjd(jd));
    return 0;
}

}  // namespace kvx::cli
