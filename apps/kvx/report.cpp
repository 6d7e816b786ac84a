#include "report.h"

#include "math/constants.h"
#include "solar/planet/planet_series.h"

#include <cmath>
#include <cstdio>

namespace kvx::cli {

const char *const kPlanetNames[12] = {"Mercury", "Venus", "Mars", "Jupiter", "Saturn", "Uranus",
                                      "Neptune", "Pluto", "Eris", "Ceres", "Makemake", "Haumea"};

namespace {
// The span of the built-in series and of Newcomb's Sun (AD 1000-3000).
bool InRange(double jde) { return planet::InSeriesRange(jde); }
}  // namespace

std::string Lower(const std::string &s) {
    std::string r;
    for (char c : s) r += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return r;
}

namespace {

double YearStart(int year) {
    const ADate d{year, 1, 1, 0, 0, 0.0, 0.0};
    return GetJd(&d);
}

std::string Days(double days) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.0f", std::ceil(days));
    return buf;
}

// Spans of the built-in theories' stated accuracy (dynamical Julian dates):
// Newcomb's Sun and the series of Mercury, Venus and Jupiter are fitted to
// AD 1000-3000; Standish's mean elements (tables 2a/2b) hold 3000 BC to
// AD 3000; the lunar theory is a simplified almanac series for the 20th and
// 21st centuries; the dwarf planets move on 2009 osculating orbits, good to
// about a degree for a few decades.
struct TheorySpan {
    const char *what;
    int first, last;  // years (astronomical), first inclusive, last exclusive
    const char *span;
};
constexpr TheorySpan kNewcomb{"built-in theory (Newcomb)", 1000, 3000, "AD 1000-3000"};
constexpr TheorySpan kKeplerSun{"built-in Keplerian Sun", -2999, 3000, "3000 BC-AD 3000"};
constexpr TheorySpan kSeries{"built-in series", 1000, 3000, "AD 1000-3000"};
constexpr TheorySpan kStandish{"built-in mean elements (Standish)", -2999, 3000, "3000 BC-AD 3000"};
constexpr TheorySpan kLunar{"built-in lunar theory", 1900, 2100, "AD 1900-2100"};
constexpr TheorySpan kDwarf{"built-in 2009 osculating elements", 1980, 2040, "AD 1980-2040"};

Source FromTheory(const TheorySpan &s, double jde) {
    return Source{s.what, s.span, jde >= YearStart(s.first) && jde < YearStart(s.last)};
}

std::string FileSpan(double start, double end) {
    ADate a{}, b{};
    JdToDate2(start, &a);
    JdToDate2(end, &b);
    char buf[64];
    std::snprintf(buf, sizeof buf, "%d-%02d-%02d to %d-%02d-%02d", a.year, a.month, a.day, b.year, b.month, b.day);
    return buf;
}

}  // namespace

Source SourceOf(int code, double jde) {
    if (code == kElementsBody) return Source{"the given orbital elements (two-body)", "the elements' epoch", true};
    DataFileInfo jpl{};
    const bool jplAnswers = GetDataFileInfo(KVX_DATA_JPL_DE, 0, &jpl) && !DataOnMemory();
    if (code == -1) {
        DataFileInfo moon{};
        if (GetDataFileInfo(KVX_DATA_MOON, 0, &moon) && jde >= moon.start && jde <= moon.end)
            return Source{moon.version > 0 ? "JPL DE" + std::to_string(moon.version) : "moon.xyz",
                          FileSpan(moon.start, moon.end), true};
        return FromTheory(kLunar, jde);
    }
    if (jplAnswers && jde >= jpl.start && jde <= jpl.end)
        return Source{"JPL DE" + std::to_string(jpl.version), FileSpan(jpl.start, jpl.end), true};
    // The planet file: the body's own block (the Sun through the Earth's).
    const int fileBody = code == -2 ? -3 : code;
    DataFileInfo b{};
    for (int32_t i = 0; i < 64 && GetDataFileInfo(KVX_DATA_PLANET, i, &b); ++i) {
        if (b.body != fileBody) continue;
        const std::string span = FileSpan(b.start, b.end);
        if (jde >= b.start && jde <= b.end) return Source{"planet file", span, true};
        if (fileBody == -3) break;  // the Earth is not extrapolated
        const double past = jde < b.start ? b.start - jde : jde - b.end;
        return Source{"planet file, extrapolated " + Days(past) + " days past its " +
                          (jde < b.start ? "start" : "end"),
                      span, false};
    }
    if (code == -2) return FromTheory(InRange(jde) ? kNewcomb : kKeplerSun, jde);
    if (code >= 8) return FromTheory(kDwarf, jde);
    if ((code == 0 || code == 1 || code == 3) && InRange(jde)) return FromTheory(kSeries, jde);
    return FromTheory(kStandish, jde);
}

void WarnIfOutside(const std::string &body, const Source &s) {
    static bool warned = false;
    if (s.holds || warned) return;
    warned = true;
    std::fprintf(stderr, "kvx: warning: %s from %s: its stated accuracy holds only %s (such results are marked '!')\n",
                 body.c_str(), s.what.c_str(), s.span.c_str());
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

void PrintBodyLine(const ATime &t, const BodyLine &l, const Refraction &r) {
    const Horizon hz = HorizonOfApparent(t, l.p.f[2], l.p.f[3], r);
    const Source src = SourceOf(l.code, t.jde);
    WarnIfOutside(l.name, src);
    const bool moon = l.code == -1;
    char dist[40];
    std::snprintf(dist, sizeof dist, moon ? "%10.1f km" : "%10.6f AU", l.p.f[6]);
    std::printf("  %-9s RA %s  Dec %s  alt %s  az %s  %s", l.name.c_str(), FormatHms(l.p.f[2], 2).c_str(),
                FormatDms(l.p.f[3], 1, true).c_str(), FormatDms(hz.altitude, 0, true).c_str(),
                FormatDms(hz.azimuth, 0, false).c_str(), dist);
    if (l.hasMag) {
        const char *model;
        const double m = ShownMagnitude(t, l, &model);
        std::printf("  mag %+5.1f%s  phase %.3f", m, model ? (model[0] == 'M' ? " (M&H)" : " (classic)") : "",
                    l.p.f[18]);
    }
    std::printf("  [%s%s]\n", src.what.c_str(), src.holds ? "" : " !");
}

std::string BodyLineJson(const ATime &t, const BodyLine &l, const Refraction &r) {
    const Horizon hz = HorizonOfApparent(t, l.p.f[2], l.p.f[3], r);
    const Source src = SourceOf(l.code, t.jde);
    WarnIfOutside(l.name, src);
    const bool moon = l.code == -1;
    const double au = moon ? l.p.f[6] / kKmPerAu : l.p.f[6];
    Json j;
    j.Str("name", l.name)
        .Num("ra_deg", l.p.f[2])
        .Num("dec_deg", l.p.f[3])
        .Num("ra_j2000_deg", l.p.f[0])
        .Num("dec_j2000_deg", l.p.f[1])
        .Num("altitude_deg", hz.altitude)
        .Num("azimuth_deg", hz.azimuth)
        .Bool("refracted", hz.refracted)
        .Num("distance_au", au)
        .Num("distance_km", au * kKmPerAu);
    if (l.hasMag) {
        const char *model;
        j.Num("magnitude", ShownMagnitude(t, l, &model));
        if (model) j.Str("magnitude_model", model);
        j.Num("illuminated_fraction", l.p.f[18]).Num("diameter_arcsec", l.p.f[34]);
    }
    j.Str("source", src.what).Bool("source_accuracy_holds", src.holds);
    return j.Text();
}

ATime TimeFromArgs(const Args &args, Place *place) {
    *place = PlaceFrom(args);
    const ADate date = DateOption(args, place);
    ATime t;
    SetATimeDate(&date, &place->observer, &t);
    return t;
}

std::vector<BodyLine> SunAndPlanets(ATime &t, BodyPos *sun) {
    CalcSun(&t, sun);
    std::vector<BodyLine> lines;
    lines.push_back({"Sun", *sun, false, -2});
    for (int code = 0; code <= 7; ++code) {
        BodyLine l{kPlanetNames[code], {}, true, code};
        CalcPlanet(code, &t, sun, &l.p);
        lines.push_back(l);
    }
    return lines;
}

}  // namespace kvx::cli
