// kvx comet: a comet or minor planet from elements given on the command
// line, an MPC one-line record, or a file of such records.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "commands.h"
#include "report.h"

namespace kvx::cli {

namespace {

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

}  // namespace

CometElements CometFromArgs(const Args &args) {
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
    return el;
}

int RunComet(const Args &args) {
    args.ExpectPositional(0, 0);
    const CometElements el = CometFromArgs(args);
    Place place;
    ATime t = TimeFromArgs(args, &place);
    BodyPos sun, c;
    CalcSun(&t, &sun);
    if (!CalcComet(&el, &t, &sun, &c)) {
        std::fprintf(stderr, "kvx: the orbit could not be solved for this date\n");
        return 1;
    }
    BodyLine l{el.designation, c, true};
    const Refraction refraction = RefractionFrom(args);
    if (args.Flag("json")) {
        std::printf("%s\n", Json()
                                .Num("jd", t.jd)
                                .Num("jde", t.jde)
                                .When(place, t.jd)
                                .Num("r_au", c.f[16])
                                .Raw("comet", BodyLineJson(t, l, refraction))
                                .Text()
                                .c_str());
    } else {
        PrintHeader(place, t.jd);
        std::printf("Comet  JDE %.6f  r %.6f AU\n", t.jde, c.f[16]);
        PrintBodyLine(t, l, refraction);
    }
    return 0;
}

}  // namespace kvx::cli
