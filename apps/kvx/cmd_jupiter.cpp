// kvx jupiter: the month's phenomena of Jupiter's Galilean satellites
// (transits, shadow transits, occultations, eclipses; starts and ends) in
// local time, as a printed almanac tabulates them.
#include <cmath>
#include <cstdio>
#include <string>

#include "commands.h"
#include "psat/jovian.h"

namespace kvx::cli {

namespace {

const char *const kMoon[5] = {"", "Io", "Europa", "Ganymede", "Callisto"};
const char *const kKind[4] = {"transit", "occultation", "shadow transit", "eclipse"};
const char *const kKindJson[4] = {"transit", "occultation", "shadow_transit", "eclipse"};

}  // namespace

int RunJupiter(const Args &args) {
    args.ExpectPositional(0, 0);
    const Place place = PlaceFrom(args);
    const auto month = args.Option("month");
    if (!month) throw UsageError{"--month YYYY-MM is required"};
    int year = 0, mon = 0, used = 0;
    if (std::sscanf(month->c_str(), "%d-%d%n", &year, &mon, &used) != 2 || used != static_cast<int>(month->size()) ||
        mon < 1 || mon > 12 || year < -4000 || year > 8000)
        throw UsageError{"bad month '" + *month + "' (want YYYY-MM)"};
    const ADate first{year, mon, 1, 0, 0, 0.0, place.tz};
    const ADate next{mon == 12 ? year + 1 : year, mon == 12 ? 1 : mon + 1, 1, 0, 0, 0.0, place.tz};
    const double jd0 = GetJd(&first), jd1 = GetJd(&next);
    static psat::JovianEvent events[2000];
    const int n = psat::FindJovianEvents(jd0, jd1, events, 2000);
    if (args.Flag("json")) {
        std::string list = "[";
        for (int i = 0; i < n; ++i) {
            ADate local{};
            JdToDate2(events[i].jd + place.tz / 24.0, &local);
            local.tz = place.tz;
            list += (i ? ", " : "") + Json()
                                          .Num("jd", events[i].jd)
                                          .Str("local", FormatDate(local))
                                          .Str("satellite", kMoon[events[i].satellite])
                                          .Str("phenomenon", kKindJson[events[i].kind])
                                          .Str("contact", events[i].start ? "start" : "end")
                                          .Text();
        }
        std::printf("%s\n", Json().Str("month", *month).Num("tz", place.tz).Raw("events", list + "]").Text().c_str());
        return 0;
    }
    std::printf("Phenomena of Jupiter's satellites, %04d-%02d, zone %s (geocentric, to the minute)\n", year, mon,
                FormatZone(place.tz).c_str());
    for (int i = 0; i < n; ++i) {
        ADate shown{};
        JdToDate2(events[i].jd + place.tz / 24.0 + 30.0 / 86400.0, &shown);
        std::printf("%04d-%02d-%02d %02d:%02d  %-8s %s %s\n", shown.year, shown.month, shown.day, shown.hour,
                    shown.minute, kMoon[events[i].satellite], kKind[events[i].kind],
                    events[i].start ? "begins" : "ends");
    }
    if (n == 0) std::printf("  (none)\n");
    return 0;
}

}  // namespace kvx::cli
