#include "report.h"

#include <cstdio>

namespace kvx::cli {

const char *const kPlanetNames[12] = {"Mercury", "Venus", "Mars", "Jupiter", "Saturn", "Uranus",
                                      "Neptune", "Pluto", "Eris", "Ceres", "Makemake", "Haumea"};

std::string Lower(const std::string &s) {
    std::string r;
    for (char c : s) r += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return r;
}

double ShownMagnitude(const ATime &t, const BodyLine &l, const char **model) {
    *model = nullptr;
    if (l.code < 0 || l.code > 11) return l.p.f[35];
    double m;
    if (GetPlanetMagMH(l.code, &t, &l.p, &m)) {
        *model = "Mallama-Hilton 2018";
        return m;
    }
    *model = "classic";
    return l.p.f[35];
}

void PrintBodyLine(const ATime &t, const BodyLine &l) {
    const Horizon hz = HorizonOf(t, l.p.f[0], l.p.f[1]);
    const double alt = hz.altitude, az = hz.azimuth;
    std::printf("  %-9s RA %s  Dec %s  alt %+6.2f  az %6.2f  dist %10.6f AU", l.name.c_str(), FormatHms(l.p.f[2], 2).c_str(),
                FormatDms(l.p.f[3], 1, true).c_str(), alt, az, l.p.f[6]);
    if (l.hasMag) {
        const char *model;
        const double m = ShownMagnitude(t, l, &model);
        std::printf("  mag %+5.1f%s  phase %.3f", m, model ? (model[0] == 'M' ? " (M&H)" : " (classic)") : "",
                    l.p.f[18]);
    }
    std::printf("\n");
}

std::string BodyLineJson(const ATime &t, const BodyLine &l) {
    const Horizon hz = HorizonOf(t, l.p.f[0], l.p.f[1]);
    const double alt = hz.altitude, az = hz.azimuth;
    Json j;
    j.Str("name", l.name)
        .Num("ra", l.p.f[2])
        .Num("dec", l.p.f[3])
        .Num("raJ2000", l.p.f[0])
        .Num("decJ2000", l.p.f[1])
        .Num("altitude", alt)
        .Num("azimuth", az)
        .Num("distance", l.p.f[6]);
    if (l.hasMag) {
        const char *model;
        j.Num("magnitude", ShownMagnitude(t, l, &model));
        if (model) j.Str("magnitudeModel", model);
        j.Num("phase", l.p.f[18]).Num("diameter", l.p.f[34]);
    }
    return j.Text();
}

ATime TimeFromArgs(const Args &args, Place *place) {
    *place = PlaceFrom(args);
    const ADate date = DateOption(args, place->tz);
    ATime t;
    SetATimeDate(&date, &place->observer, &t);
    return t;
}

std::vector<BodyLine> SunAndPlanets(ATime &t, BodyPos *sun) {
    CalcSun(&t, sun);
    std::vector<BodyLine> lines;
    lines.push_back({"Sun", *sun, false});
    for (int code = 0; code <= 7; ++code) {
        BodyLine l{kPlanetNames[code], {}, true, code};
        CalcPlanet(code, &t, sun, &l.p);
        lines.push_back(l);
    }
    return lines;
}

}  // namespace kvx::cli
