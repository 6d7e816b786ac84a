// kvx holidays: the public holidays of Japan in a year, in date order.
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "calendar_names.h"
#include "commands.h"

namespace kvx::cli {

int RunHolidays(const Args &args) {
    args.ExpectPositional(1, 1);
    const int year = ParseYear(args.Positional()[0]);
    struct Day {
        int month, day, weekday, kind;
    };
    std::vector<Day> days;
    Holiday_CheckDay(year, 1, 1);
    Day d{};
    for (int i = 0; (d.kind = Holiday_GetHolidayData(i, &d.month, &d.day, &d.weekday)) != 0; ++i) days.push_back(d);
    // The library lists them in rule order; show them by date.
    std::stable_sort(days.begin(), days.end(),
                     [](const Day &a, const Day &b) { return a.month * 100 + a.day < b.month * 100 + b.day; });
    if (args.Flag("json")) {
        std::string items;
        for (const auto &h : days) {
            Json j;
            j.Str("date", DateText(year, h.month, h.day))
                .Str("weekday", WeekdayShort(year, h.month, h.day))
                .Int("kind", h.kind)
                .Str("name", HolidayName(h.kind));
            items += (items.empty() ? "" : ",") + j.Text();
        }
        std::printf("%s\n", Json().Int("year", year).Raw("holidays", "[" + items + "]").Text().c_str());
        return 0;
    }
    if (days.empty()) std::printf("no public holidays in %d (the holiday act dates from 1948)\n", year);
    for (const auto &h : days)
        std::printf("%s %s  %s\n", DateText(year, h.month, h.day).c_str(), WeekdayShort(year, h.month, h.day),
                    HolidayName(h.kind));
    return 0;
}

}  // namespace kvx::cli
