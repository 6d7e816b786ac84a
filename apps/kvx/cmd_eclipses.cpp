// kvx eclipses: the lunar eclipses of a year with their contacts in local
// time, magnitudes and gamma.
#include <cmath>
#include <cstdio>
#include <string>

#include "commands.h"

namespace kvx::cli {

namespace {

const char *const kType[4] = {"none", "penumbral", "partial", "total"};

std::string LocalIso(double jd, double tz) {
    ADate d{};
    JdToDate2(jd + tz / 24.0, &d);
    d.tz = tz;
    return FormatDate(d);
}

}  // namespace

int RunEclipses(const Args &args) {
    args.ExpectPositional(1, 1);
    const Place place = PlaceFrom(args);
    // The years of the phase series the searches start from.
    const int year = ParseYear(args.Positional()[0], -1000, 5000);
    LunarEclipse list[8];
    const int n = GetLunarEclipses(year, list, 8);
    const char *const names[6] = {"p1", "u1", "u2", "u3", "u4", "p4"};
    if (args.Flag("json")) {
        std::string items;
        for (int i = 0; i < n; ++i) {
            const LunarEclipse &e = list[i];
            const double contacts[6] = {e.p1, e.u1, e.u2, e.u3, e.u4, e.p4};
            Json j;
            j.Str("type", kType[e.type]).Num("max_jd", e.jdMax).Str("max_local", LocalIso(e.jdMax, place.tz));
            for (int k = 0; k < 6; ++k) {
                const std::string key = names[k];
                if (contacts[k] == 0.0) {
                    j.Raw(key + "_jd", "null").Raw(key + "_local", "null");
                } else {
                    j.Num(key + "_jd", contacts[k]).Str(key + "_local", LocalIso(contacts[k], place.tz));
                }
            }
            j.Num("umbral_magnitude", e.umbralMag)
                .Num("penumbral_magnitude", e.penumbralMag)
                .Num("gamma_earth_radii", e.gamma)
                .Num("umbra_radius_deg", e.umbraRadius)
                .Num("penumbra_radius_deg", e.penumbraRadius)
                .Num("moon_radius_deg", e.moonRadius);
            items += (i ? "," : "") + j.Text();
        }
        std::printf("%s\n", Json().Int("year", year).Num("tz", place.tz).Raw("eclipses", "[" + items + "]").Text().c_str());
        return 0;
    }
    std::printf("Lunar eclipses of %d, zone %s (geocentric; shadow enlarged by Danjon's rule)\n", year,
                FormatZone(place.tz).c_str());
    if (n == 0) std::printf("none\n");
    for (int i = 0; i < n; ++i) {
        const LunarEclipse &e = list[i];
        std::printf("\n%s  %s eclipse  umbral magnitude %.4f  penumbral magnitude %.4f  gamma %+.4f\n",
                    LocalClock(e.jdMax, place.tz).substr(0, 10).c_str(), kType[e.type], e.umbralMag, e.penumbralMag,
                    e.gamma);
        const double contacts[7] = {e.p1, e.u1, e.u2, e.jdMax, e.u3, e.u4, e.p4};
        const char *const labels[7] = {"P1 penumbra entered", "U1 umbra entered", "U2 totality begins",
                                       "greatest eclipse", "U3 totality ends", "U4 umbra left",
                                       "P4 penumbra left"};
        for (int k = 0; k < 7; ++k)
            if (contacts[k] != 0.0) std::printf("  %-20s %s\n", labels[k], LocalClock(contacts[k], place.tz).c_str());
    }
    return 0;
}

}  // namespace kvx::cli
