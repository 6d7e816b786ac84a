// kvx phases: the principal phases of the Moon in a year or a month, in
// local time.
#include <cmath>
#include <cstdio>
#include <string>

#include "commands.h"

namespace kvx::cli {

namespace {

const char *const kPhaseNames[4] = {"new Moon", "first quarter", "full Moon", "last quarter"};

}  // namespace

int RunPhases(const Args &args) {
    args.ExpectPositional(1, 2);
    const Place place = PlaceFrom(args);
    const double yearNumber = ParseNumber(args.Positional()[0], "year");
    if (yearNumber != std::floor(yearNumber) || std::fabs(yearNumber) > 1e6)
        throw UsageError{"year must be a whole number"};
    const int year = static_cast<int>(yearNumber);
    int first = 1, last = 12;
    if (args.Positional().size() == 2) {
        const double m = ParseNumber(args.Positional()[1], "month");
        if (m != std::floor(m) || m < 1 || m > 12) throw UsageError{"month must be 1 to 12"};
        first = last = static_cast<int>(m);
    }
    const bool json = args.Flag("json");
    std::string items;
    for (int month = first; month <= last; ++month) {
        const ADate request{year, month, 1, 0, 0, 0.0, place.tz};
        MoonPhase phases[6];
        const int n = GetMoonPhases(&request, phases, 6);
        for (int i = 0; i < n; ++i) {
            ADate local{};
            JdToDate2(phases[i].jd + place.tz / 24.0, &local);
            local.tz = place.tz;
            if (json) {
                Json j;
                j.Int("phase", phases[i].phase)
                    .Str("name", kPhaseNames[phases[i].phase & 3])
                    .Num("jd", phases[i].jd)
                    .Str("local", FormatDate(local));
                items += (items.empty() ? "" : ",") + j.Text();
            } else {
                // To the nearest minute.
                ADate shown{};
                JdToDate2(phases[i].jd + place.tz / 24.0 + 30.0 / 86400.0, &shown);
                std::printf("%04d-%02d-%02d %02d:%02d %s  %s\n", shown.year, shown.month, shown.day, shown.hour,
                            shown.minute, FormatZone(place.tz).c_str(), kPhaseNames[phases[i].phase & 3]);
            }
        }
    }
    if (json) std::printf("%s\n", Json().Num("tz", place.tz).Raw("phases", "[" + items + "]").Text().c_str());
    return 0;
}


}  // namespace kvx::cli
