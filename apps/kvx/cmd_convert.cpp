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
    {1, "horizontal", "horizontal, geometric (azimuth from south through west)", false},
    {2, "horizontal-app", "horizontal, apparent (azimuth from south through west)", false},
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
    char buf[64];
    if (hours) {
        Hour60 h;
        HourTo60(degmal(value) / 15.0, &h);
        std::snprintf(buf, sizeof buf, "%02dh%02dm%05.2fs", h.hour, h.min, h.sec);
    } else {
        Deg60 d;
        DegTo60(value, &d);
        std::snprintf(buf, sizeof buf, "%c%02dd%02dm%04.1fs", d.sign < 0 ? '-' : '+', d.deg, d.min, d.sec);
    }
    return buf;
}

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
    const Place place = PlaceFrom(args);
    const ADate date = DateOption(args, place.tz);
    ATime t{};
    SetATimeDate(&date, &place.observer, &t);
    Ad out{};
    Coordinates(&t, from.code, &in, to.code, &out);
    if (args.Flag("json")) {
        const double inPair[2] = {in.a, in.d}, outPair[2] = {out.a, out.d};
        std::printf("%s\n", Json()
                                .Str("date", FormatDate(date))
                                .Num("tz", place.tz)
                                .Num("jd", t.jd)
                                .Num("jde", t.jde)
                                .Num("latitude", place.observer.latitude)
                                .Num("longitude", place.observer.longitude)
                                .Num("height", place.observer.height)
                                .Int("from", from.code)
                                .Int("to", to.code)
                                .Array("in", inPair, 2)
                                .Array("out", outPair, 2)
                                .Text()
                                .c_str());
        return 0;
    }
    std::printf("%s %s  JD %.6f  lat %.4f lon %.4f height %.0f m\n", FormatDate(date).c_str(),
                FormatZone(place.tz).c_str(), t.jd, place.observer.latitude, place.observer.longitude,
                place.observer.height);
    PrintPair("from", from, in);
    PrintPair("to  ", to, out);
    return 0;
}

}  // namespace kvx::cli
