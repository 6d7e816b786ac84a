// kvx sat: passes of artificial satellites from a two-line element file, or
// where they stand now. The element lines are checked here (line numbers,
// columns, checksums) before the library cuts them, since the library
// reads whatever it is given.
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "commands.h"

namespace kvx::cli {

namespace {

constexpr double kAuKm = 149597870.0;
constexpr double kRadToDeg = 180.0 / 3.141592653589793;

struct Satellite {
    Elm elm;
    bool full;      // period of 225 minutes or more: the full model
    double period;  // minutes
};

// A bad element file: main's usage hint would not help, so the command
// prints this single line itself.
struct FileError {
    std::string message;
};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

int Checksum(const std::string &line) {
    int sum = 0;
    for (size_t i = 0; i < 68; ++i) {
        if (IsDigit(line[i])) sum += line[i] - '0';
        else if (line[i] == '-') sum += 1;
    }
    return sum % 10;
}

// Columns first..last (1-based) hold a number of the given shape: digits
// and blanks, an optional sign where allowed, a point at `point` (0: none).
bool Field(const std::string &l, int first, int last, int point, bool sign) {
    bool digit = false;
    for (int c = first; c <= last; ++c) {
        const char ch = l[static_cast<size_t>(c - 1)];
        if (c == point) {
            if (ch != '.') return false;
        } else if (IsDigit(ch)) {
            digit = true;
        } else if (!(ch == ' ' || (sign && (ch == '-' || ch == '+')))) {
            return false;
        }
    }
    return digit;
}

void CheckElementLine(const std::string &file, int number, const std::string &l, char which) {
    auto fail = [&](const std::string &what) {
        throw FileError{file + " line " + std::to_string(number) + ": " + what};
    };
    if (l.size() < 69) fail("element line " + std::string(1, which) + " has " + std::to_string(l.size()) + " columns, 69 expected");
    if (l[0] != which || l[1] != ' ') fail("line number " + std::string(1, l[0]) + " where " + which + " was expected");
    if (!IsDigit(l[68])) fail("no checksum digit in column 69");
    if (l[68] - '0' != Checksum(l))
        fail("checksum " + std::string(1, l[68]) + " but the line sums to " + std::to_string(Checksum(l)));
    struct Col { int first, last, point; bool sign; const char *name; };
    static const Col kLine1[] = {{3, 7, 0, false, "catalogue number"}, {19, 32, 24, false, "epoch"},
                                 {34, 43, 35, true, "first derivative of the mean motion"},
                                 {54, 61, 0, true, "drag term"}};
    static const Col kLine2[] = {{3, 7, 0, false, "catalogue number"}, {9, 16, 12, false, "inclination"},
                                 {18, 25, 21, false, "right ascension of the node"}, {27, 33, 0, false, "eccentricity"},
                                 {35, 42, 38, false, "argument of perigee"}, {44, 51, 47, false, "mean anomaly"},
                                 {53, 63, 55, false, "mean motion"}};
    const Col *cols = which == '1' ? kLine1 : kLine2;
    const size_t n = which == '1' ? std::size(kLine1) : std::size(kLine2);
    for (size_t i = 0; i < n; ++i)
        if (!Field(l, cols[i].first, cols[i].last, cols[i].point, cols[i].sign))
            fail(std::string(cols[i].name) + " in columns " + std::to_string(cols[i].first) + "-" +
                 std::to_string(cols[i].last) + " is not a number: '" +
                 l.substr(static_cast<size_t>(cols[i].first - 1), static_cast<size_t>(cols[i].last - cols[i].first + 1)) + "'");
}

std::vector<Satellite> ReadSets(const std::string &file) {
    std::ifstream f;
    std::istream *in = &std::cin;
    if (file != "-") {
        f.open(file);
        if (!f) throw FileError{"cannot read " + file};
        in = &f;
    }
    std::vector<Satellite> sets;
    std::string line, name, l1;
    int number = 0, l1Number = 0;
    while (std::getline(*in, line)) {
        ++number;
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t')) line.pop_back();
        if (line.empty()) continue;
        if (line[0] == '1' && line.size() > 1 && line[1] == ' ') {
            if (!l1.empty()) throw FileError{file + " line " + std::to_string(number) + ": a second line 1 where line 2 was expected"};
            CheckElementLine(file, number, line, '1');
            l1 = line;
            l1Number = number;
        } else if (line[0] == '2' && line.size() > 1 && line[1] == ' ') {
            if (l1.empty()) throw FileError{file + " line " + std::to_string(number) + ": line 2 without a line 1"};
            CheckElementLine(file, number, line, '2');
            if (line.compare(2, 5, l1, 2, 5) != 0)
                throw FileError{file + " line " + std::to_string(number) + ": catalogue number " + line.substr(2, 5) +
                                " differs from line " + std::to_string(l1Number) + "'s " + l1.substr(2, 5)};
            TleLines t{};
            std::strncpy(t.name, name.c_str(), sizeof t.name - 1);
            std::strncpy(t.line1, l1.c_str(), 69);
            std::strncpy(t.line2, line.c_str(), 69);
            Satellite s{};
            ASatTleToElm(&t, &s.elm);
            if (!(s.elm.meanMotion > 0.0))
                throw FileError{file + " line " + std::to_string(number) + ": mean motion must be positive"};
            s.period = 2.0 * 3.141592653589793 / s.elm.meanMotion;
            s.full = s.period >= 225.0;
            if (s.elm.name[0] == '\0') std::snprintf(s.elm.name, sizeof s.elm.name, "%05d", s.elm.catalogNumber);
            sets.push_back(s);
            l1.clear();
            name.clear();
        } else {
            if (!l1.empty()) throw FileError{file + " line " + std::to_string(number) + ": line 2 expected after line 1"};
            name = line.size() > 69 ? line.substr(0, 69) : line;
        }
    }
    if (!l1.empty()) throw FileError{file + " line " + std::to_string(l1Number) + ": line 1 without a line 2"};
    if (sets.empty()) throw FileError{file + ": no element sets"};
    return sets;
}

std::string Lower(std::string s) {
    for (char &c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

// Position (km) from the model the satellite's period calls for.
bool Propagate(const Satellite &s, double jd, double r[3]) {
    return s.full ? CalcASatFull(jd, &s.elm, r, nullptr) != 0 : CalcASat(jd, &s.elm, r, nullptr) != 0;
}

// Shadow factor of the satellite at jd (0 lit, 1 eclipsed).
double Shadow(double jd, const Place &place, const double r[3]) {
    ATime t;
    SetATimeJd(jd, place.tz, &place.observer, &t);
    BodyPos sun;
    CalcSun(&t, &sun);
    double v[3] = {r[0], r[1], r[2]};
    ASatAppToJ2000(&t, v);
    const double earth[3] = {sun.f[7], sun.f[8], sun.f[9]};
    const double sat[3] = {earth[0] + v[0] / kAuKm, earth[1] + v[1] / kAuKm, earth[2] + v[2] / kAuKm};
    return ASatEarthShadow(sat, earth);
}

const char *LightName(double shadow) { return shadow >= 1.0 ? "eclipsed" : shadow > 0.0 ? "partly lit" : "sunlit"; }

const char *KindName(int kind) { return kind == 1 ? "rise" : kind == 2 ? "culmination" : "set"; }

struct EventView {
    ASatPassEvent e;
    double az;
    double shadow;
};

std::vector<EventView> Passes(const Satellite &s, const Place &place, double jd0, double days, bool visible) {
    const Lla lla{place.observer.latitude, place.observer.longitude, place.observer.height};
    std::vector<ASatPassEvent> ev(4096);
    const int flags = (visible ? KVX_ASAT_VISIBLE : 0) | (s.full ? KVX_ASAT_FULL_MODEL : 0);
    const int n = ASatRiseSet2(jd0, jd0 + days, &lla, &s.elm, -90.0, flags, ev.data(), static_cast<int>(ev.size()));
    std::vector<EventView> out;
    for (int i = 0; i < n; ++i) {
        EventView v{ev[static_cast<size_t>(i)], NAN, NAN};
        double r[3];
        if (Propagate(s, v.e.jd, r)) {
            double az;
            ASatLookAngle(v.e.jd, &lla, r, &az, nullptr, nullptr);
            v.az = az * kRadToDeg;
            v.shadow = Shadow(v.e.jd, place, r);
        }
        out.push_back(v);
    }
    return out;
}

std::string ModelNote(const Satellite &s) {
    char buf[160];
    std::snprintf(buf, sizeof buf, "period %.1f min: %s", s.period,
                  s.full ? "propagated with the full SGP4/SDP4 model (deep space)" : "near-Earth SGP4");
    return buf;
}

int Now(const std::vector<Satellite> &sats, const Place &place, double jd, bool json) {
    const Lla lla{place.observer.latitude, place.observer.longitude, place.observer.height};
    if (!json) PrintHeader(place, jd);
    std::vector<std::string> items;
    for (const auto &s : sats) {
        double r[3];
        const bool ok = Propagate(s, jd, r);
        Lla sub{};
        double az = 0, el = 0, range = 0, shadow = 0;
        if (ok) {
            ASatXyzToLla(jd, r, &sub);
            ASatLookAngle(jd, &lla, r, &az, &el, &range);
            shadow = Shadow(jd, place, r);
        }
        const double lon = sub.longitude > 180.0 ? sub.longitude - 360.0 : sub.longitude;
        if (json) {
            Json j;
            j.Str("name", s.elm.name).Int("catalog", s.elm.catalogNumber).Str("model", s.full ? "full" : "near-Earth");
            j.Num("period_min", s.period);
            if (ok) {
                j.Num("lat_deg", sub.latitude).Num("lon_deg", lon).Num("height_km", sub.height / 1000.0);
                j.Num("az_deg", az * kRadToDeg).Num("alt_deg", el * kRadToDeg).Num("range_km", range);
                j.Num("shadow", shadow).Raw("sunlit", shadow < 1.0 ? "true" : "false");
            } else {
                j.Raw("lat_deg", "null").Raw("lon_deg", "null").Raw("height_km", "null").Raw("az_deg", "null");
                j.Raw("alt_deg", "null").Raw("range_km", "null").Raw("shadow", "null").Raw("sunlit", "null");
            }
            items.push_back(j.Text());
            continue;
        }
        std::printf("%s  #%05d  %s\n", s.elm.name, s.elm.catalogNumber, ModelNote(s).c_str());
        if (!ok) {
            std::printf("  no position: the elements are not valid at this date\n");
            continue;
        }
        std::printf("  sub-satellite point  lat %+8.3f°  lon %+9.3f°  height %9.1f km\n", sub.latitude, lon,
                    sub.height / 1000.0);
        std::printf("  seen from here       az %6.2f°  alt %+6.2f°  range %9.1f km  %s\n", az * kRadToDeg,
                    el * kRadToDeg, range, LightName(shadow));
    }
    if (json) {
        Json out;
        out.Num("jd", jd).When(place, jd).Raw("satellites", JsonArray(items));
        std::printf("%s\n", out.Text().c_str());
    }
    return 0;
}

}  // namespace

int RunSat(const Args &args) {
    args.ExpectPositional(1, 1);
    const std::string file = args.Positional()[0];
    Place place = PlaceFrom(args);
    const ADate date = DateOption(args, &place);
    const double jd = GetJd(&date);
    const double days = args.Number("days", 1.0);
    if (!(days > 0.0 && days <= 60.0)) throw UsageError{"--days must be between 0 and 60"};
    const bool json = args.Flag("json");
    std::vector<Satellite> sats;
    try {
        sats = ReadSets(file);
        if (auto name = args.Option("name")) {
            std::vector<Satellite> chosen;
            const std::string want = Lower(*name);
            for (const auto &s : sats)
                if (Lower(s.elm.name).find(want) != std::string::npos || std::to_string(s.elm.catalogNumber) == *name)
                    chosen.push_back(s);
            if (chosen.empty()) throw FileError{"no satellite named '" + *name + "' in " + file};
            sats = chosen;
        }
    } catch (const FileError &e) {
        std::fprintf(stderr, "kvx: %s\n", e.message.c_str());
        return 2;
    }
    if (args.Flag("now")) return Now(sats, place, jd, json);

    std::vector<std::string> items;
    for (const auto &s : sats) {
        const auto passes = Passes(s, place, jd, days, args.Flag("visible"));
        if (json) {
            std::vector<std::string> evs;
            for (const auto &v : passes) {
                Json e;
                e.Str("kind", KindName(v.e.kind)).Num("jd", v.e.jd).Str("local", LocalClock(v.e.jd, place.tz));
                if (std::isnan(v.az)) e.Raw("az_deg", "null");
                else e.Num("az_deg", v.az);
                e.Num("alt_deg", v.e.altitude);
                if (std::isnan(v.shadow)) e.Raw("sunlit", "null");
                else e.Raw("sunlit", v.shadow < 1.0 ? "true" : "false");
                evs.push_back(e.Text());
            }
            Json j;
            j.Str("name", s.elm.name).Int("catalog", s.elm.catalogNumber).Str("model", s.full ? "full" : "near-Earth");
            j.Num("period_min", s.period).Raw("events", JsonArray(evs));
            items.push_back(j.Text());
            continue;
        }
        std::printf("%s  #%05d  %s\n", s.elm.name, s.elm.catalogNumber, ModelNote(s).c_str());
        if (passes.empty()) std::printf("  no %spasses\n", args.Flag("visible") ? "visible " : "");
        for (size_t i = 0; i < passes.size(); ++i) {
            const auto &v = passes[i];
            if (i > 0 && v.e.kind == 1) std::printf("\n");
            std::printf("  %s %s  %-11s  az %6.1f°  alt %+5.1f°  %s\n", LocalClock(v.e.jd, place.tz).c_str(),
                        FormatZone(place.tz).c_str(), KindName(v.e.kind), v.az, v.e.altitude, LightName(v.shadow));
        }
    }
    if (json) {
        Json out;
        out.Num("jd", jd).Num("days", days).Raw("satellites", JsonArray(items));
        std::printf("%s\n", out.Text().c_str());
    }
    return 0;
}

}  // namespace kvx::cli
