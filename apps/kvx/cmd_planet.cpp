// kvx planet, and the almanac lines of the Sun and the planets: apparent
// place of date, altitude and azimuth, distance, magnitude and phase.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "commands.h"
#include "report.h"

namespace kvx::cli {

int RunPlanet(const Args &args) {
    args.ExpectPositional(1, 1);
    const std::string want = Lower(args.Positional()[0]);
    std::vector<int> codes;
    if (want == "all") {
        for (int c = 0; c <= 11; ++c) codes.push_back(c);
    } else {
        for (int c = 0; c <= 11; ++c)
            if (want == Lower(kPlanetNames[c])) codes.push_back(c);
        if (codes.empty()) throw UsageError{"unknown planet \"" + args.Positional()[0] + "\" (mercury..haumea or all)"};
    }
    Place place;
    ATime t = TimeFromArgs(args, &place);
    const Refraction refraction = RefractionFrom(args);
    BodyPos sun;
    CalcSun(&t, &sun);
    std::vector<BodyLine> lines;
    for (int c : codes) {
        BodyLine l{kPlanetNames[c], {}, true, c};
        CalcPlanet(c, &t, &sun, &l.p);
        lines.push_back(l);
    }
    if (args.Flag("json")) {
        std::vector<std::string> list;
        for (const auto &l : lines) list.push_back(BodyLineJson(t, l, refraction));
        std::printf("%s\n",
                    Json().Num("jd", t.jd).Num("jde", t.jde).When(place, t.jd).Raw("bodies", JsonArray(list)).Text().c_str());
    } else {
        PrintHeader(place, t.jd);
        std::printf("Planets  JDE %.6f  (apparent topocentric place of date; altitude %s)\n", t.jde,
                    refraction.on ? "refracted" : "geometric");
        for (const auto &l : lines) PrintBodyLine(t, l, refraction);
    }
    return 0;
}

void PlanetsAlmanacText(const AlmanacContext &c) {
    ATime t = AlmanacTime(c);
    BodyPos sun;
    std::printf("Sun and planets (apparent topocentric place of date, geometric altitude)\n");
    for (const auto &l : SunAndPlanets(t, &sun)) PrintBodyLine(t, l);
}

void PlanetsAlmanacJson(const AlmanacContext &c, Json &out) {
    ATime t = AlmanacTime(c);
    BodyPos sun;
    std::vector<std::string> list;
    for (const auto &l : SunAndPlanets(t, &sun)) list.push_back(BodyLineJson(t, l));
    out.Raw("bodies", JsonArray(list));
}

}  // namespace kvx::cli
