// kvx sun / kvx planet / kvx comet, and the almanac lines of the Sun and the
// planets: apparent right ascension and declination of date, altitude and
// azimuth for the observer, distance, magnitude and phase.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "commands.h"

namespace kvx::cli {

namespace {


const char *const kBodyNames[12] = {"Mercury", "Venus", "Mars", "Jupiter", "Saturn", "Uranus",
                                    "Neptune", "Pluto", "Eris", "Ceres", "Makemake", "Haumea"};

std::string Lower(const std::string &s) {
    std::string r;
    for (char c : s) r += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return r;
}

struct Line {
    std::string name;
    BodyPos p;
    bool hasMag;
};

void PrintLine(const ATime &t, const Line &l) {
    const Horizon hz = HorizonOf(t, l.p.f[0], l.p.f[1]);
    const double alt = hz.altitude, az = hz.azimuth;
    std::printf("  %-9s RA %s  Dec %s  alt %+6.2f  az %6.2f  dist %10.6f AU", l.name.c_str(), FormatHms(l.p.f[2], 2).c_str(),
                FormatDms(l.p.f[3], 1, true).c_str(), alt, az, l.p.f[6]);
    if (l.hasMag) std::printf("  mag %+5.1f  phase %.3f", l.p.f[35], l.p.f[18]);
    std::printf("\n");
}

std::string LineJson(const ATime &t, const Line &l) {
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
    if (l.hasMag) j.Num("magnitude", l.p.f[35]).Num("phase", l.p.f[18]).Num("diameter", l.p.f[34]);
    return j.Text();
}

ATime TimeOf(const Args &args, Place *place) {
    *place = PlaceFrom(args);
    const ADate date = DateOption(args, place->tz);
    ATime t;
    SetATimeDate(&date, &place->observer, &t);
    return t;
}

std::vector<Line> SunAndPlanets(ATime &t, BodyPos *sun) {
    CalcSun(&t, sun);
    std::vector<Line> lines;
    lines.push_back({"Sun", *sun, false});
    for (int code = 0; code <= 7; ++code) {
        Line l{kBodyNames[code], {}, true};
        CalcPlanet(code, &t, sun, &l.p);
        lines.push_back(l);
    }
    return lines;
}

int RunSun(const Args &args) {
    args.ExpectPositional(0, 0);
    Place place;
    ATime t = TimeOf(args, &place);
    BodyPos s;
    CalcSun(&t, &s);
    const Horizon hz = HorizonOf(t, s.f[0], s.f[1]);
    const double alt = hz.altitude, az = hz.azimuth;
    if (args.Flag("json")) {
        std::printf("%s\n", Json()
                                .Num("jd", t.jd)
                                .Num("jde", t.jde)
                                .Num("ra", s.f[2])
                                .Num("dec", s.f[3])
                                .Num("raJ2000", s.f[0])
                                .Num("decJ2000", s.f[1])
                                .Num("longitude", s.f[4])
                                .Num("latitude", s.f[5])
                                .Num("distance", s.f[6])
                                .Num("altitude", alt)
                                .Num("azimuth", az)
                                .Num("semiDiameter", s.f[14] * 3600.0)
                                .Num("P", s.f[15])
                                .Num("B0", s.f[16])
                                .Num("L0", s.f[18])
                                .Array("earthJ2000", &s.f[7], 3)
                                .Text()
                                .c_str());
        return 0;
    }
    std::printf("Sun  JD %.6f (UT)  JDE %.6f\n", t.jd, t.jde);
    std::printf("  apparent   RA %s  Dec %s\n", FormatHms(s.f[2], 2).c_str(), FormatDms(s.f[3], 1, true).c_str());
    std::printf("  J2000      RA %s  Dec %s\n", FormatHms(s.f[0], 2).c_str(), FormatDms(s.f[1], 1, true).c_str());
    std::printf("  ecliptic   lon %.6f  lat %+.6f (mean of date)\n", s.f[4], s.f[5]);
    std::printf("  horizon    alt %+.3f  az %.3f\n", alt, az);
    std::printf("  distance   %.8f AU  semi-diameter %.2f\"\n", s.f[6], s.f[14] * 3600.0);
    std::printf("  disk       P %+.2f  B0 %+.2f  L0 %.2f\n", s.f[15], s.f[16], s.f[18]);
    return 0;
}

int RunPlanet(const Args &args) {
    args.ExpectPositional(1, 1);
    const std::string want = Lower(args.Positional()[0]);
    std::vector<int> codes;
    if (want == "all") {
        for (int c = 0; c <= 11; ++c) codes.push_back(c);
    } else {
        for (int c = 0; c <= 11; ++c)
            if (want == Lower(kBodyNames[c])) codes.push_back(c);
        if (codes.empty()) throw UsageError{"unknown planet \"" + args.Positional()[0] + "\" (mercury..haumea or all)"};
    }
    Place place;
    ATime t = TimeOf(args, &place);
    BodyPos sun;
    CalcSun(&t, &sun);
    std::vector<Line> lines;
    for (int c : codes) {
        Line l{kBodyNames[c], {}, true};
        CalcPlanet(c, &t, &sun, &l.p);
        lines.push_back(l);
    }
    if (args.Flag("json")) {
        std::string list = "[";
        for (size_t k = 0; k < lines.size(); ++k) list += (k ? ", " : "") + LineJson(t, lines[k]);
        std::printf("%s\n", Json().Num("jd", t.jd).Num("jde", t.jde).Raw("bodies", list + "]").Text().c_str());
    } else {
        std::printf("Planets  JD %.6f (UT)  JDE %.6f\n", t.jd, t.jde);
        for (const auto &l : lines) PrintLine(t, l);
    }
    return 0;
}

// One comet in the MPC one-line format (CometEls.txt): columns 5 orbit
// type, 6-12 provisional designation, 15-18/20-21/23-29 perihelion year,
// month, day (TT), 31-39 q, 42-49 e, 52-59 argument of perihelion, 62-69
// node, 72-79 inclination (J2000.0), 92-95 H, 97-100 G (K = 2.5 G), 103-158
// designation and name.
CometElements ParseMpcLine(const std::string &line) {
    auto field = [&](size_t from, size_t to) {
        if (line.size() < from) return std::string();
        return line.substr(from - 1, std::min(line.size(), to) - (from - 1));
    };
    auto num = [&](size_t from, size_t to, const char *what) { return ParseNumber(field(from, to), what); };
    if (line.size() < 79) throw UsageError{"an MPC comet line has at least 79 columns"};
    CometElements el;
    std::memset(&el, 0, sizeof el);
    const std::string type = field(5, 5);
    el.kind = type.empty() || type[0] == ' ' ? 'C' : type[0];
    std::string name = field(103, 158);
    while (!name.empty() && name.back() == ' ') name.pop_back();
    if (name.empty()) name = field(1, 12);
    std::strncpy(el.designation, name.c_str(), sizeof el.designation - 1);
    el.perihelionJd = CalcJd(num(15, 18, "perihelion year"), num(20, 21, "perihelion month"), num(23, 29, "perihelion day"));
    el.q = num(31, 39, "q");
    el.e = num(42, 49, "e");
    el.peri = num(52, 59, "argument of perihelion");
    el.node = num(62, 69, "node");
    el.incl = num(72, 79, "inclination");
    el.equinox = 2000.0;
    el.h = line.size() >= 95 ? num(92, 95, "H") : 10.0;
    el.slope = line.size() >= 100 ? 2.5 * num(97, 100, "G") : 10.0;
    el.validFrom = -1e30;
    el.validTo = 1e30;
    return el;
}

int RunComet(const Args &args) {
    args.ExpectPositional(0, 0);
    CometElements el;
    if (auto line = args.Option("line")) {
        el = ParseMpcLine(*line);
    } else if (auto file = args.Option("file")) {
        std::ifstream in(*file);
        if (!in) throw UsageError{"cannot read " + *file};
        const std::string want = Lower(args.Option("name").value_or(""));
        std::string line;
        bool found = false;
        while (std::getline(in, line)) {
            if (line.size() < 79) continue;
            if (want.empty() || Lower(line).find(want) != std::string::npos) {
                found = true;
                break;
            }
        }
        if (!found) throw UsageError{"no comet line" + (want.empty() ? std::string() : " matching \"" + want + "\"") + " in " + *file};
        el = ParseMpcLine(line);
    } else {
        std::memset(&el, 0, sizeof el);
        el.kind = 'C';
        std::strncpy(el.designation, args.Option("name").value_or("comet").c_str(), sizeof el.designation - 1);
        auto need = [&](const char *key) {
            auto v = args.Option(key);
            if (!v) throw UsageError{std::string("missing --") + key + " (or give --line / --file)"};
            return ParseNumber(*v, key);
        };
        el.perihelionJd = need("T");
        el.q = need("q");
        el.e = need("e");
        el.peri = need("peri");
        el.node = need("node");
        el.incl = need("incl");
        el.equinox = args.Number("equinox", 2000.0);
        el.h = args.Number("H", 10.0);
        el.slope = args.Number("K", 10.0);
    }
    Place place;
    ATime t = TimeOf(args, &place);
    BodyPos sun, c;
    CalcSun(&t, &sun);
    if (!CalcComet(&el, &t, &sun, &c)) {
        std::fprintf(stderr, "kvx: the orbit could not be solved for this date\n");
        return 1;
    }
    Line l{el.designation, c, true};
    if (args.Flag("json")) {
        std::printf("%s\n", Json().Num("jd", t.jd).Num("jde", t.jde).Num("r", c.f[16]).Raw("comet", LineJson(t, l)).Text().c_str());
    } else {
        std::printf("Comet  JD %.6f (UT)  JDE %.6f  r %.6f AU\n", t.jd, t.jde, c.f[16]);
        PrintLine(t, l);
    }
    return 0;
}

void AlmanacText(const AlmanacContext &c) {
    ATime t;
    SetATimeJd(c.jd, c.place.tz, &c.place.observer, &t);
    BodyPos sun;
    std::printf("Sun and planets (apparent place of date, geometric altitude)\n");
    for (const auto &l : SunAndPlanets(t, &sun)) PrintLine(t, l);
}

void AlmanacJson(const AlmanacContext &c, Json &out) {
    ATime t;
    SetATimeJd(c.jd, c.place.tz, &c.place.observer, &t);
    BodyPos sun;
    std::string list = "[";
    bool first = true;
    for (const auto &l : SunAndPlanets(t, &sun)) {
        list += (first ? "" : ", ") + LineJson(t, l);
        first = false;
    }
    out.Raw("bodies", list + "]");
}

}  // namespace

KVX_COMMAND(40, "sun", "sun [--date YYYY-MM-DDThh:mm] [--lat D --lon D --height M --tz H] [--json]", {"json"}, RunSun);
KVX_COMMAND(41, "planet", "planet NAME|all [--date YYYY-MM-DDThh:mm] [--lat D --lon D --height M --tz H] [--json]",
            {"json"}, RunPlanet);
KVX_COMMAND(42, "comet",
            "comet --line 'MPC line' | --file CometEls.txt [--name TEXT] | --T JDE --q AU --e E --peri D --node D "
            "--incl D [--H M --K K] [--date ...] [--json]",
            {"json"}, RunComet);
KVX_ALMANAC_SECTION(40, AlmanacText, AlmanacJson);

}  // namespace kvx::cli
