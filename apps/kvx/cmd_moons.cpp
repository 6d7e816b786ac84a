// kvx moons: the satellites of a planet as seen from the observer: offsets
// east and north of the planet's centre, separation, position angle,
// magnitude and a one-line picture of the configuration; and the almanac's
// line of Jupiter's Galilean satellites.
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "commands.h"
#include "report.h"
#include "svg.h"

namespace kvx::cli {

namespace {

struct MoonRow {
    std::string name;
    int index;
    double east, north;  // arcseconds, apparent places of date
    double separation, pa, magnitude;
    bool hidden;  // behind Jupiter's disc or in its shadow (Galileans only)
};

const char *const kMoonPlanets[] = {"mars", "jupiter", "saturn", "uranus", "neptune", "pluto"};

// The satellites of planet `code` for t.
std::vector<MoonRow> Moons(ATime &t, int code, BodyPos *planet) {
    BodyPos sun;
    CalcSun(&t, &sun);
    CalcPlanet(code, &t, &sun, planet);
    std::vector<MoonRow> rows;
    const double *p = planet->f;
    const double cosDec = std::cos(p[3] * 3.141592653589793 / 180.0);
    for (int i = 1; i <= GetNumSatellites(code); ++i) {
        BodyPos s;
        if (!SatelliteExist(code, i) || !CalcSatellite(&t, code, i, planet, &s)) continue;
        MoonRow r{GetSatelliteName(code, i), i, 0, 0, 0, 0, 0, false};
        r.east = std::remainder(s.f[2] - p[2], 360.0) * 3600.0 * cosDec;
        r.north = (s.f[3] - p[3]) * 3600.0;
        const Ad centre = {p[2], p[3]}, moon = {s.f[2], s.f[3]};
        AdToPaDist(&centre, &moon, &r.pa, &r.separation);
        r.separation *= 3600.0;
        // The mean opposition magnitude scaled to the present distances.
        const double r0 = p[16];
        r.magnitude = s.f[25] + 5.0 * std::log10(s.f[6] / (r0 > 1.0 ? r0 - 1.0 : 1.0));
        if (code == 3) {
            JoviSatResult j;
            JoviSatPhenomena(&t, planet, &s, &j);
            r.hidden = j.occultation || j.eclipse;
        }
        rows.push_back(r);
    }
    return rows;
}

}  // namespace

// One line of 61 characters, east on the left as in the sky with north up:
// the planet 'O' in the middle, each visible satellite by its index, the
// scale set by the farthest one; where two share a column the lower index
// (the brighter of the catalogue's satellites, as a rule) is shown.
std::string ConfigurationStrip(const std::vector<double> &east, const std::vector<int> &index,
                               const std::vector<bool> &hidden) {
    constexpr int kHalf = 30;
    double far = 0.0;
    for (double e : east) far = std::fmax(far, std::fabs(e));
    std::string line(2 * kHalf + 1, '.');
    line[kHalf] = 'O';
    for (size_t j = east.size(); j-- > 0;) {
        const size_t k = j;
        if (hidden[k] || far <= 0.0) continue;
        const long pos = kHalf - std::lround(east[k] / far * (kHalf - 1));
        if (pos >= 0 && pos <= 2 * kHalf && pos != kHalf) line[static_cast<size_t>(pos)] = static_cast<char>('0' + index[k]);
    }
    return "E " + line + " W";
}

// The configuration strip of the satellites numbered up to maxIndex.
std::string StripOf(const std::vector<MoonRow> &rows, int maxIndex) {
    std::vector<double> east;
    std::vector<int> index;
    std::vector<bool> hidden;
    for (const auto &r : rows)
        if (r.index <= maxIndex) {
            east.push_back(r.east);
            index.push_back(r.index);
            hidden.push_back(r.hidden);
        }
    return ConfigurationStrip(east, index, hidden);
}

int RunMoons(const Args &args) {
    args.ExpectPositional(1, 1);
    const std::string want = Lower(args.Positional()[0]);
    int code = -1;
    for (int c = 2; c <= 7; ++c)
        if (want == kMoonPlanets[c - 2]) code = c;
    if (code < 0) throw UsageError{"no satellites for \"" + args.Positional()[0] + "\" (mars, jupiter, saturn, uranus, neptune, pluto)"};
    Place place;
    ATime t = TimeFromArgs(args, &place);
    BodyPos planet;
    const std::vector<MoonRow> rows = Moons(t, code, &planet);
    const std::string strip = StripOf(rows, 1 << 30);
    if (auto file = args.Option("svg")) {
        // The planet's disc and its satellites at their offsets, arcseconds.
        const double radius = planet.f[34] / 2.0;
        double far = 3.0 * radius;
        for (const auto &r : rows) far = std::fmax(far, std::fmax(std::fabs(r.east), std::fabs(r.north)));
        const double half = 1.15 * far;
        SkyView view(std::string("Satellites of ") + kPlanetNames[code] + "  " +
                         FormatDate(ADate{t.year, t.month, t.day, t.hour, t.minute, t.second, t.tz}) + " " + FormatZone(t.tz),
                     "arcsec", half);
        char note[96];
        std::snprintf(note, sizeof note, "Apparent places of date; disc %.2f\" across; grey: hidden by the planet or its shadow",
                      planet.f[34]);
        view.Note(note);
        view.Disc(0.0, 0.0, radius, "#d9a441", "");
        for (const auto &r : rows)
            view.Disc(r.east, r.north, 0.006 * half, r.hidden ? "#aaaaaa" : "#1f3f7f", r.name);
        view.Save(*file);
    }
    if (args.Flag("json")) {
        std::string list = "[";
        for (size_t k = 0; k < rows.size(); ++k) {
            const MoonRow &r = rows[k];
            Json j;
            j.Str("name", r.name)
                .Int("index", r.index)
                .Num("east_arcsec", r.east)
                .Num("north_arcsec", r.north)
                .Num("separation_arcsec", r.separation)
                .Num("pa_deg", r.pa)
                .Num("magnitude", r.magnitude);
            if (code == 3) j.Bool("hidden", r.hidden);
            list += (k ? ", " : "") + j.Text();
        }
        std::printf("%s\n", Json()
                                .Str("planet", kPlanetNames[code])
                                .Num("jd", t.jd)
                                .Num("jde", t.jde)
                                .When(place, t.jd)
                                .Num("planet_diameter_arcsec", planet.f[34])
                                .Str("strip", strip)
                                .Raw("moons", list + "]")
                                .Text()
                                .c_str());
        return 0;
    }
    PrintHeader(place, t.jd);
    std::printf("Satellites of %s  diameter %.2f″  (offsets on the apparent equator of date)\n", kPlanetNames[code],
                planet.f[34]);
    std::printf("  %-10s %9s %9s %9s %7s %6s\n", "", "east \"", "north \"", "sep \"", "PA", "mag");
    for (const auto &r : rows)
        std::printf("  %d %-8s %+9.2f %+9.2f %9.2f %7.2f %6.1f%s\n", r.index, r.name.c_str(), r.east, r.north,
                    r.separation, r.pa, r.magnitude, r.hidden ? "  (hidden by Jupiter)" : "");
    std::printf("  %s\n", strip.c_str());
    return 0;
}

void GalileansAlmanacText(const AlmanacContext &c) {
    ATime t = AlmanacTime(c);
    BodyPos planet;
    std::printf("Jupiter's satellites (1 Io, 2 Europa, 3 Ganymede, 4 Callisto)\n  %s\n",
                StripOf(Moons(t, 3, &planet), 4).c_str());
}

void GalileansAlmanacJson(const AlmanacContext &c, Json &out) {
    ATime t = AlmanacTime(c);
    BodyPos planet;
    std::vector<std::string> list;
    for (const auto &r : Moons(t, 3, &planet))
        if (r.index <= 4)
            list.push_back(Json()
                               .Str("name", r.name)
                               .Num("east_arcsec", r.east)
                               .Num("north_arcsec", r.north)
                               .Bool("hidden", r.hidden)
                               .Text());
    out.Raw("galilean_satellites", JsonArray(list));
}

}  // namespace kvx::cli
