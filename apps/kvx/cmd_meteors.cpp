// kvx meteors: the meteor-shower catalogue the library loaded.
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
                                          .Str("name2", m->name2)
                                          .Array("values", m->value, 5)
                                          .Int("intValue", m->intValue)
                                          .Num("value6", m->value6)
                                          .Int("optional", m->optional)
                                          .Text();
        }
        std::printf("%s\n", Json().Int("count", count).Raw("showers", list + "]").Text().c_str());
        return 0;
    }
    if (count <= 0) {
        std::printf("no meteor-shower file loaded\n");
        return 0;
    }
    std::printf("%3s %-4s %-26s %-26s %8s %8s %8s %8s %6s %5s %8s %4s\n", "no", "code", "name", "name2", "value1",
                "value2", "value3", "value4", "value5", "int", "value6", "opt");
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
