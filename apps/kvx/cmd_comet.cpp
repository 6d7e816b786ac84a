// kvx comet: a comet or minor planet from elements given on the command
// line, an MPC one-line record, or a file of such records.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "commands.h"
#include "mpc_line.h"
#include "report.h"
#include "svg.h"

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

namespace {

// A comma-separated list of numbers, each within lo..hi.
std::vector<double> NumberList(const Args &args, const char *key, const char *fallback, double lo, double hi) {
    const std::string text = args.Option(key).value_or(fallback);
    std::vector<double> out;
    size_t from = 0;
    while (from <= text.size()) {
        const size_t comma = std::min(text.find(',', from), text.size());
        const double v = ParseNumber(text.substr(from, comma - from), std::string("--") + key);
        if (!(v >= lo && v <= hi)) throw UsageError{std::string("--") + key + " values lie in " + JsonNumber(lo) + ".." + JsonNumber(hi)};
        out.push_back(v);
        from = comma + 1;
    }
    if (out.size() > 20) throw UsageError{std::string("--") + key + " takes at most 20 values"};
    return out;
}

std::string PointJson(const CometTailPoint &p) {
    return Json()
        .Num("ra_deg", p.ra)
        .Num("dec_deg", p.dec)
        .Num("separation_deg", p.separation)
        .Num("pa_deg", p.pa)
        .Num("distance_au", p.distance)
        .Num("r_au", p.r)
        .Text();
}

std::string TailJson(const CometTail &t) {
    return Json()
        .Num("tip_ra_deg", t.tipRa)
        .Num("tip_dec_deg", t.tipDec)
        .Num("pa_deg", t.pa)
        .Num("length_deg", t.lengthDeg)
        .Num("length_au", t.lengthAu)
        .Num("antisolar_pa_deg", t.antisolarPa)
        .Text();
}

// A number as printed on the picture: %g.
std::string Short(double v) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%g", v);
    return buf;
}

// Points per drawn curve of the picture.
constexpr int kCurvePoints = 41;

// kvx comet --tail: the dust tail's syndynes (one beta, all ages) and
// synchrones (one age, all betas) and the ion tail.
int RunCometTail(const Args &args, const CometElements &el, ATime &t, const BodyPos &sun) {
    const std::vector<double> betas = NumberList(args, "betas", "0.05,0.1,0.2,0.5,1", 0.0, 1.0);
    const std::vector<double> ages = NumberList(args, "ages", "1,2,5,10,20", 0.0, 3650.0);
    const double wind = args.Number("wind", 400.0), ionLength = args.Number("ion-length", 0.1);
    if (!(wind > 0.0) || !(ionLength > 0.0)) throw UsageError{"--wind and --ion-length must be positive"};
    const int nb = static_cast<int>(betas.size()), na = static_cast<int>(ages.size());
    std::vector<CometTailPoint> grid(betas.size() * ages.size());
    CometTail dust, ion;
    CometTailPoint ionPts[kCurvePoints];
    if (!CalcCometDustTail(&el, &t, &sun, betas.data(), nb, ages.data(), na, grid.data(), &dust) ||
        !CalcCometIonTail(&el, &t, &sun, wind, ionLength, kCurvePoints, ionPts, &ion)) {
        std::fprintf(stderr, "kvx: the orbit could not be solved for this date\n");
        return 1;
    }
    if (auto file = args.Option("svg")) {
        double far = std::fmax(dust.lengthDeg, ion.lengthDeg);
        SkyView view(std::string("Tail of ") + el.designation + "  " + FormatDate(ADate{t.year, t.month, t.day, t.hour, t.minute, t.second, t.tz}) + " " + FormatZone(t.tz),
                     "deg", far > 0.0 ? 1.1 * far : 1.0);
        view.Note("Nucleus at RA " + FormatHms(dust.headRa, 1) + "  Dec " + FormatDms(dust.headDec, 1, true) +
                  " (J2000.0, astrometric)");
        view.Note("Solid: syndynes (beta); dashed: synchrones (days before); blue: ion tail, " + Short(wind) +
                  " km/s wind, " + Short(ionLength) + " AU");
        const double maxAge = *std::max_element(ages.begin(), ages.end());
        const double maxBeta = *std::max_element(betas.begin(), betas.end());
        for (double b : betas) {
            CometTailPoint syn[kCurvePoints];
            if (!GetCometSyndyname(&el, &t, &sun, b, maxAge, kCurvePoints, syn)) continue;
            SkyView::Points pts;
            for (const auto &p : syn) pts.push_back(EastNorth(p.separation, p.pa));
            view.Line(pts, "#b35900", false, "beta " + Short(b));
        }
        std::vector<double> fine(kCurvePoints);
        for (int k = 0; k < kCurvePoints; ++k) fine[k] = maxBeta * k / (kCurvePoints - 1);
        for (double a : ages) {
            CometTailPoint syn[kCurvePoints];
            if (!CalcCometDustTail(&el, &t, &sun, fine.data(), kCurvePoints, &a, 1, syn, nullptr)) continue;
            SkyView::Points pts;
            for (const auto &p : syn) pts.push_back(EastNorth(p.separation, p.pa));
            view.Line(pts, "#6a3d9a", true, Short(a) + " d");
        }
        SkyView::Points ionLine;
        for (const auto &p : ionPts) ionLine.push_back(EastNorth(p.separation, p.pa));
        view.Line(ionLine, "#1f5fbf", false, "ion");
        const auto sunward = EastNorth(0.25 * far, dust.antisolarPa + 180.0);
        view.Line({{0.0, 0.0}, sunward}, "#999999", true, "to the Sun");
        view.Disc(0.0, 0.0, 0.0, "black", "nucleus");
        view.Save(*file);
    }
    if (args.Flag("json")) {
        std::string syndynes = "[", synchrones = "[";
        for (int i = 0; i < nb; ++i) {
            std::string pts = "[";
            for (int j = 0; j < na; ++j) pts += (j ? ", " : "") + PointJson(grid[i * na + j]);
            syndynes += (i ? ", " : "") + Json().Num("beta", betas[i]).Array("ages_days", ages.data(), na).Raw("points", pts + "]").Text();
        }
        for (int j = 0; j < na; ++j) {
            std::string pts = "[";
            for (int i = 0; i < nb; ++i) pts += (i ? ", " : "") + PointJson(grid[i * na + j]);
            synchrones += (j ? ", " : "") + Json().Num("age_days", ages[j]).Array("betas", betas.data(), nb).Raw("points", pts + "]").Text();
        }
        Json ionJson;
        ionJson.Num("wind_km_s", wind).Num("aberration_deg", ion.aberration);
        std::printf("%s\n", Json()
                                .Str("comet", el.designation)
                                .Num("jd", t.jd)
                                .Num("jde", t.jde)
                                .Num("ra_deg", dust.headRa)
                                .Num("dec_deg", dust.headDec)
                                .Num("distance_au", dust.headDistance)
                                .Raw("dust_tail", TailJson(dust))
                                .Raw("syndynes", syndynes + "]")
                                .Raw("synchrones", synchrones + "]")
                                .Raw("ion_tail", TailJson(ion).insert(1, ionJson.Text().substr(1, ionJson.Text().size() - 2) + ", "))
                                .Text()
                                .c_str());
        return 0;
    }
    std::printf("Tail of %s  JD %.6f (UT)  nucleus RA %s  Dec %s (J2000.0, astrometric)  %.4f AU\n", el.designation, t.jd,
                FormatHms(dust.headRa, 2).c_str(), FormatDms(dust.headDec, 1, true).c_str(), dust.headDistance);
    std::printf("  Antisolar direction  PA %6.2f\n", dust.antisolarPa);
    std::printf("  Dust tail (Finson-Probstein)  PA %6.2f  length %.3f deg  %.4f AU\n", dust.pa, dust.lengthDeg, dust.lengthAu);
    std::printf("  Ion tail (%.0f km/s)  PA %6.2f  aberration %.2f deg  length %.3f deg for %.3f AU\n", wind, ion.pa,
                ion.aberration, ion.lengthDeg, ion.lengthAu);
    auto row = [](const CometTailPoint &p) {
        std::printf("    %6.3f %8.2f  %s %s %9.4f %7.2f\n", p.beta, p.age, FormatHms(p.ra, 1).c_str(),
                    FormatDms(p.dec, 1, true).c_str(), p.separation, p.pa);
    };
    const char *head = "    %6s %8s  %-11s %-11s %9s %7s\n";
    std::printf("  Syndynes (constant beta)\n");
    std::printf(head, "beta", "days", "RA", "Dec", "sep deg", "PA");
    for (int i = 0; i < nb; ++i)
        for (int j = 0; j < na; ++j) row(grid[i * na + j]);
    std::printf("  Synchrones (constant emission time)\n");
    std::printf(head, "beta", "days", "RA", "Dec", "sep deg", "PA");
    for (int j = 0; j < na; ++j)
        for (int i = 0; i < nb; ++i) row(grid[i * na + j]);
    return 0;
}

}  // namespace

int RunComet(const Args &args) {
    args.ExpectPositional(0, 0);
    const CometElements el = CometFromArgs(args);
    Place place;
    ATime t = TimeFromArgs(args, &place);
    BodyPos sun, c;
    CalcSun(&t, &sun);
    if (args.Flag("tail")) return RunCometTail(args, el, t, sun);
    if (args.Option("svg")) throw UsageError{"--svg draws the tail: add --tail"};
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
