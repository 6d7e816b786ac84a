// kvx terms: the 24 solar terms and the seasonal days of a year, in local
// time of the zone.
#include <cstdio>
#include <string>

#include "calendar_names.h"
#include "commands.h"

namespace kvx::cli {

int RunTerms(const Args &args) {
    args.ExpectPositional(1, 1);
    const int year = ParseYear(args.Positional()[0]);
    const Place place = PlaceFrom(args);
    const bool json = args.Flag("json");
    double hours;
    int code;
    Sekki_CheckDay(year, 1, 1, place.tz, &hours, &code);
    std::string items;
    if (!json) std::printf("solar terms and seasonal days of %d, local time UTC%s\n", year, FormatZone(place.tz).c_str());
    for (int i = 0; i < 35; ++i) {
        int month, day;
        const int id = Sekki_GetTableData(i, &month, &day, &hours, &code);
        if (month < 1 || month > 12) continue;  // not in this year in this zone
        const bool instant = code >= 0;
        if (json) {
            Json j;
            j.Str("date", DateText(year, month, day))
                .Int("id", id)
                .Str("name", TermName(id))
                .Raw("longitude_deg", instant ? std::to_string(code) : "null")
                .Raw("local_time", instant ? JsonString(ClockHoursText(hours)) : "null");
            items += (items.empty() ? "" : ",") + j.Text();
        } else {
            char longitude[16] = "";
            if (instant) std::snprintf(longitude, sizeof longitude, "%3d deg", code);
            std::printf("%s %s %s  %-7s  %s\n", DateText(year, month, day).c_str(), WeekdayShort(year, month, day),
                        instant ? ClockHoursText(hours).c_str() : "     ", longitude, TermName(id));
        }
    }
    if (json)
        std::printf("%s\n",
                    Json().Int("year", year).Num("tz_hours", place.tz).Raw("terms", "[" + items + "]").Text().c_str());
    return 0;
}

}  // namespace kvx::cli
