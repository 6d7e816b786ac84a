// kvx comet: a comet or minor planet from elements given on the command
// line, an MPC one-line record, or a file of such records.
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "commands.h"
#include "mpc_line.h"
#include "report.h"

namespace kvx::cli {

namespace {

// The MPC line, or the usage error that names the field at fault.
CometElements ParseMpcLine(const std::string &line) {
    CometElements el;
    std::string error;
    if (!kvx::cli::ParseMpcLine(line, &el, &error)) throw UsageError{error};
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
    if (args.Flag("json")) {
        std::printf("%s\n", Json().Num("jd", t.jd).Num("jde", t.jde).Num("r", c.f[16]).Raw("comet", BodyLineJson(t, l)).Text().c_str());
    } else {
        std::printf("Comet  JD %.6f (UT)  JDE %.6f  r %.6f AU\n", t.jd, t.jde, c.f[16]);
        PrintBodyLine(t, l);
    }
    return 0;
}

}  // namespace kvx::cli
