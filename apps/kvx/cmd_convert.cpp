// kvx convert: a direction from one coordinate system to another for a
// date and place.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "commands.h"

namespace kvx::cli {

namespace {

struct System {
    int code;
    const char *name;   // accepted on the command line besides the number
    const char *title;  // shown in the output
    bool hours;         // longitude shown as hours (right ascension)
};

const System kSystems[] = {
    {1, "horizontal", "horizontal, geometric (azimuth from north through east)", false},
    {2, "horizontal-app", "horizontal, apparent (azimuth from north through east)", false},
    {3, "j2000", "equatorial, mean J2000.0", true},
    {4, "b1950", "equatorial, mean B1950.0", true},
    {5, "mean", "equatorial, mean of date", true},
    {6, "apparent", "equatorial, apparent of date", true},
    {7, "ecliptic-j2000", "ecliptic, mean J2000.0", false},
    {8, "ecliptic-mean", "ecliptic, mean of date", false},
    {9, "ecliptic-apparent", "ecliptic, apparent of date", false},
    {10, "galactic", "galactic (IAU 1958)", false},
};

const System &ParseSystem(const std::string &text, const char *option) {
    for (const auto &s : kSystems)
        if (text == s.name || text == std::to_string(s.code)) return s;
    throw UsageError{std::string(option) + ": unknown coordinate system '" + text +
                     "' (1-10 or horizontal, horizontal-app, j2000, b1950, mean, apparent, ecliptic-j2000, "
                     "ecliptic-mean, ecliptic-apparent, galactic)"};
}

std::string Sexagesimal(double value, bool hours) {
    return hours ? FormatHms(value, 2) : FormatDms(value, 1, true);
}

// The library's horizontal systems count azimuth from the south through
// the west; the command line from the north through the east.
bool Horizontal(const System &s) { return s.code == KVX_COORD_HORIZONTAL || s.code == KVX_COORD_HORIZONTAL_APP; }

void PrintPair(const char *label, const System &s, const Ad &p) {
    std::printf("%s %2d %-56s %11.6f %+10.6f  %s %s\n", label, s.code, s.title, p.a, p.d,
                Sexagesimal(p.a, s.hours).c_str(), Sexagesimal(p.d, false).c_str());
}

}  // namespace

int RunConvert(const Args &args) {
    args.ExpectPositional(2, 2);
    const auto fromText = args.Option("from"), toText = args.Option("to");
    if (!fromText || !toText) throw UsageError{"--from and --to are required"};
    const System &from = ParseSystem(*fromText, "--from");
    const System &to = ParseSystem(*toText, "--to");
    const Ad in{ParseNumber(args.Positional()[0], "longitude"), ParseNumber(args.Positional()[1], "latitude")};
    if (std::fabs(in.d) > 90.0) throw UsageError{"latitude must lie within -90..90"};
    Place place = PlaceFrom(args);
    const ADate date = DateOption(args, &place);
    ATime t{};
    SetATimeDate(&date, &place.observer, &t);
    const Ad libraryIn{Horizontal(from) ? NorthAzimuth(in.a) : in.a, in.d};
    Ad out{};
    Coordinates(&t, from.code, &libraryIn, to.code, &out);
    if (Horizontal(to)) out.a = NorthAzimuth(out.a);
    else if (from.code == to.code) out.a = in.a;
    if (args.Flag("json")) {
        const double inPair[2] = {in.a, in.d}, outPair[2] = {out.a, out.d};
        std::printf("%s\n", Json()
                                .Str("date", FormatDate(date))
                                .When(place, t.jd)
                                .Num("jd", t.jd)
                                .Num("jde", t.jde)
                                .Num("latitude_deg", place.observer.latitude)
                                .Num("longitude_deg", place.observer.longitude)
                                .Num("height_m", place.observer.height)
                                .Int("from", from.code)
                                .Int("to", to.code)
                                .Array("in_deg", inPair, 2)
                                .Array("out_deg", outPair, 2)
                                .Bool("azimuth_from_north", Horizontal(from) || Horizontal(to))
                                .Text()
                                .c_str());
        return 0;
    }
    PrintHeader(place, t.jd);
    std::printf("observer lat %.4f° lon %.4f° height %.0f m\n", place.observer.latitude, place.observer.longitude,
                place.observer.height);
    PrintPair("from", from, in);
    PrintPair("to  ", to, out);
    return 0;
}

}  // namespace kvx::cli
