// kvx meteors: the meteor-shower catalogue the library loaded, its columns
// named as the distributed list documents them (IMO working list fields).
#include <cstdio>
#include <string>

#include "commands.h"

namespace kvx::cli {

int RunMeteors(const Args &args) {
    args.ExpectPositional(0, 0);
    const int count = IsValidMeteorFile() ? GetMeteorInfoCount() : 0;
    if (args.Flag("json")) {
        std::string list = "[";
        for (int i = 0; i < count; ++i) {
            const MeteorInfo *m = GetMeteorInfo(i);
            if (!m) break;
            list += (i ? ", " : "") + Json()
                                          .Int("number", m->number)
                                          .Str("code", m->code)
                                          .Str("name", m->name)
                                          .Str("name_japanese", m->name2)
                                          .Num("solar_longitude_deg", m->value[0])
                                          .Num("radiant_ra_deg", m->value[1])
                                          .Num("radiant_dec_deg", m->value[2])
                                          .Num("velocity_km_s", m->value[3])
                                          .Num("population_index", m->value[4])
                                          .Int("zhr", m->intValue)
                                          .Num("activity_days", m->value6)
                                          .Int("iau_number", m->optional)
                                          .Text();
        }
        std::printf("%s\n", Json().Int("count", count).Raw("showers", list + "]").Text().c_str());
        return 0;
    }
    if (count <= 0) {
        std::printf("no meteor-shower file loaded\n");
        return 0;
    }
    // Solar longitude of the maximum (J2000.0), radiant at the maximum,
    // geocentric velocity, population index, zenithal hourly rate, length
    // of the activity period and the IAU Meteor Data Center number.
    std::printf("%3s %-4s %-26s %-26s %8s %8s %8s %8s %6s %5s %8s %4s\n", "no", "code", "name", "Japanese name",
                "λ☉ max°", "RA°", "Dec°", "V km/s", "r", "ZHR", "days", "IAU");
    for (int i = 0; i < count; ++i) {
        const MeteorInfo *m = GetMeteorInfo(i);
        if (!m) break;
        std::printf("%3d %-4s %-26s %-26s %8g %8g %8g %8g %6g %5d %8g %4d\n", m->number, m->code, m->name, m->name2,
                    m->value[0], m->value[1], m->value[2], m->value[3], m->value[4], m->intValue, m->value6,
                    m->optional);
    }
    return 0;
}


}  // namespace kvx::cli
