// kvx orbit NAME: points along a planet's mean orbit of date, for plotting.
#include <cstdio>
#include <string>
#include <vector>

#include "commands.h"
#include "report.h"

namespace kvx::cli {

namespace {

int PlanetCode(const std::string &name) {
    const std::string lower = Lower(name);
    if (lower == "earth") return -3;
    for (int k = 0; k < 8; ++k)
        if (lower == Lower(kPlanetNames[k])) return k;
    throw UsageError{"unknown planet \"" + name + "\" (mercury..pluto or earth)"};
}

}  // namespace

int RunOrbit(const Args &args) {
    args.ExpectPositional(1, 1);
    const int code = PlanetCode(args.Positional()[0]);
    Place place = PlaceFrom(args);
    const ADate date = DateOption(args, &place);
    const double jde = UtToDt(GetJd(&date));
    const double points = args.Number("points", 73.0);
    if (!(points >= 2.0 && points <= 100000.0)) throw UsageError{"--points must be 2..100000"};
    const int n = static_cast<int>(points);
    std::vector<double> xyz(3 * static_cast<size_t>(n));
    CalcPlanetOrbit3(code, jde, n, xyz.data());
    if (args.Flag("json")) {
        std::string list = "[";
        for (int k = 0; k < n; ++k) {
            if (k) list += ", ";
            list += "[" + JsonNumber(xyz[3 * k]) + ", " + JsonNumber(xyz[3 * k + 1]) + ", " + JsonNumber(xyz[3 * k + 2]) + "]";
        }
        list += "]";
        std::printf("%s\n", Json()
                                .Str("body", args.Positional()[0])
                                .Int("code", code)
                                .Num("jde", jde)
                                .Str("frame", "heliocentric, J2000.0 equator, AU")
                                .Raw("points", list)
                                .Text()
                                .c_str());
    } else {
        std::printf("# %s: mean orbit of JDE %.5f, heliocentric x y z (AU), J2000.0 equator\n",
                    args.Positional()[0].c_str(), jde);
        for (int k = 0; k < n; ++k) std::printf("%.9f %.9f %.9f\n", xyz[3 * k], xyz[3 * k + 1], xyz[3 * k + 2]);
    }
    return 0;
}

}  // namespace kvx::cli
