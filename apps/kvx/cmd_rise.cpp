// kvx rise and kvx twilight: rise, transit and set of the Sun, the Moon,
// the planets, their satellites, a star or a comet, and the Sun's twilight, for one or more
// local days (or a whole year, one row per day); and the almanac's lines
// for today's Sun and Moon.
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "commands.h"
#include "report.h"

namespace kvx::cli {

namespace {

constexpr int kMaxDays = 3700;

struct Body {
    std::string name;
    int code;      // rise/set body code
    Ad star;       // J2000.0 place of a star
    CometElements comet;
    const void *Object() const { return code == KVX_RS_STAR ? static_cast<const void *>(&star)
                                        : code >= 2000   ? static_cast<const void *>(&comet)
                                                         : nullptr; }
};

struct Event {
    bool found = false;
    double jd = 0.0;
    double angle = 0.0;  // azimuth at rise and set, altitude at transit (degrees)
};

struct BodyDay {
    Event ev[3];  // rise, transit, set
    const char *state;  // "rises and sets", "circumpolar", "never rises"
};

// Topocentric J2000.0 place of the body at t, for its horizon at an event.
bool PlaceJ2000(const Body &b, ATime &t, double *ra, double *dec) {
    if (b.code == KVX_RS_STAR) {
        *ra = b.star.a;
        *dec = b.star.d;
        return true;
    }
    BodyPos sun, p;
    CalcSun(&t, &sun);
    if (b.code == -2) {
        p = sun;
    } else if (b.code == -1) {
        CalcMoon2(&t, &p);
    } else if (b.code >= 2000) {
        if (!CalcComet(&b.comet, &t, &sun, &p)) return false;
    } else if (b.code >= 100) {
        int32_t planet = 0, index = 0;
        BodyPos parent;
        if (!SplitSatelliteCode(b.code, &planet, &index) || !CalcPlanet(planet, &t, &sun, &parent) ||
            !CalcSatellite(&t, planet, index, &parent, &p))
            return false;
    } else if (!CalcPlanet(b.code, &t, &sun, &p)) {
        return false;
    }
    *ra = p.f[0];
    *dec = p.f[1];
    return true;
}

Horizon HorizonAt(const Body &b, double jd, const Place &place) {
    ATime t;
    SetATimeJd(jd, place.tz, &place.observer, &t);
    double ra = 0.0, dec = 0.0;
    if (!PlaceJ2000(b, t, &ra, &dec)) return Horizon{NAN, NAN};
    return HorizonOf(t, ra, dec);
}

// Local midnight (UT) opening the local civil date d.
double MidnightUt(const ADate &d) { return CalcJd(d.year, d.month, d.day) - d.tz / 24.0; }

ADate LocalDay(double midnightUt, double tz) {
    ADate d{};
    JdToDate2(midnightUt + tz / 24.0 + 0.25, &d);  // a quarter day in: clear of rounding at 0 h
    d.hour = d.minute = 0;
    d.second = 0.0;
    d.tz = tz;
    return d;
}

BodyDay RiseSetOf(const Body &b, const ADate &day, const Place &place) {
    BodyDay r{};
    InitRiseSet(&day, &place.observer);
    for (int e = 0; e < 3; ++e) {
        Event &ev = r.ev[e];
        ev.found = GetRiseSet(place.tz, b.code, b.Object(), e + 1, &place.observer, 0.0, &ev.jd) == 1;
        if (!ev.found) continue;
        const Horizon h = HorizonAt(b, ev.jd, place);
        ev.angle = e == 1 ? h.altitude : h.azimuth;
    }
    r.state = "rises and sets";
    if (!r.ev[0].found && !r.ev[2].found) {
        // Up or down all day: judged by the altitude at the meridian passage
        // (or at local noon when there is none).
        const double at = r.ev[1].found ? r.ev[1].jd : MidnightUt(day) + 0.5;
        r.state = HorizonAt(b, at, place).altitude > 0.0 ? "circumpolar" : "never rises";
    }
    return r;
}

std::string LocalTime(double jd, double tz, bool withDate) {
    const ADate d = LocalSecond(jd, tz);
    char buf[64];
    if (withDate)
        std::snprintf(buf, sizeof buf, "%04d-%02d-%02dT%02d:%02d:%02d%s", d.year, d.month, d.day, d.hour, d.minute,
                      static_cast<int>(d.second), FormatZone(tz).c_str());
    else
        std::snprintf(buf, sizeof buf, "%02d:%02d:%02d", d.hour, d.minute, static_cast<int>(d.second));
    return buf;
}

std::string DayName(const ADate &d) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%04d-%02d-%02d", d.year, d.month, d.day);
    return buf;
}

std::string EventText(const Event &ev, int kind, double tz, const char *state) {
    char buf[64];
    if (ev.found) {
        std::snprintf(buf, sizeof buf, "%s %s %5.1f", LocalTime(ev.jd, tz, false).c_str(), kind == 1 ? "alt" : "az",
                      ev.angle);
        return buf;
    }
    if (kind != 1 && std::string(state) != "rises and sets") return state;
    return "no event this day";
}

std::string EventJson(const Event &ev, int kind, double tz) {
    if (!ev.found) return "null";
    return Json()
        .Str("time", LocalTime(ev.jd, tz, true))
        .Num("jd_ut", ev.jd)
        .Num(kind == 1 ? "alt_deg" : "az_deg", ev.angle)
        .Text();
}

// The days asked for: --year Y (every day of it), else --date and --days.
std::vector<ADate> DaysFromArgs(const Args &args, const Place &place) {
    double first, count;
    if (auto y = args.Option("year")) {
        const int year = ParseYear(*y);
        const ADate jan1{static_cast<int>(year), 1, 1, 0, 0, 0.0, place.tz};
        first = MidnightUt(jan1);
        count = CalcJd(year + 1, 1, 1) - CalcJd(year, 1, 1);
    } else {
        Place at = place;
        const ADate d = DateOption(args, &at);
        const ADate day{d.year, d.month, d.day, 0, 0, 0.0, at.tz};
        first = MidnightUt(day);
        count = args.Number("days", 1.0);
        if (count != std::floor(count) || count < 1 || count > kMaxDays)
            throw UsageError{"--days must be a whole number from 1 to " + std::to_string(kMaxDays)};
    }
    std::vector<ADate> days;
    for (int k = 0; k < static_cast<int>(count); ++k) days.push_back(LocalDay(first + k, place.tz));
    return days;
}

std::vector<Body> BodiesFromArgs(const Args &args) {
    std::vector<Body> bodies;
    Body b{};
    if (auto ra = args.Option("star")) {
        if (args.Positional().size() != 1) throw UsageError{"--star needs RA and DEC (J2000.0, degrees)"};
        b.name = "star";
        b.code = KVX_RS_STAR;
        b.star = Ad{ParseNumber(*ra, "--star RA"), ParseNumber(args.Positional()[0], "--star DEC")};
        if (std::fabs(b.star.d) > 90.0) throw UsageError{"--star DEC must lie within -90..90"};
        return {b};
    }
    if (args.Flag("comet")) {
        args.ExpectPositional(0, 0);
        b.comet = CometFromArgs(args);
        b.name = b.comet.designation;
        b.code = 2000;
        return {b};
    }
    args.ExpectPositional(0, 1);
    const std::string want = args.Positional().empty() ? "sun" : Lower(args.Positional()[0]);
    const bool all = want == "all";
    if (all || want == "sun") bodies.push_back(Body{"Sun", -2, {}, {}});
    if (all || want == "moon") bodies.push_back(Body{"Moon", -1, {}, {}});
    for (int code = 0; code < 12; ++code)
        if ((all && code < 8) || want == Lower(kPlanetNames[code]))
            bodies.push_back(Body{kPlanetNames[code], code, {}, {}});
    for (int planet = 2; planet <= 7; ++planet)
        for (int index = 1; index <= GetNumSatellites(planet); ++index) {
            const char *name = GetSatelliteName(planet, index);
            if (name && SatelliteExist(planet, index) && want == Lower(name))
                bodies.push_back(Body{name, GetSatelliteCode(planet, index), {}, {}});
        }
    if (bodies.empty())
        throw UsageError{"unknown body '" + args.Positional()[0] + "' (sun, moon, mercury..haumea, io, titan, ..., all)"};
    return bodies;
}

void PrintPlaceLine(const Place &p) {
    const Observer &o = p.observer;
    std::printf("place %.4f %s  %.4f %s  %.0f m  zone UTC%s\n", std::fabs(o.latitude), o.latitude >= 0 ? "N" : "S",
                std::fabs(o.longitude), o.longitude >= 0 ? "E" : "W", o.height, FormatZone(p.tz).c_str());
}

std::string PlaceJson(const Place &p) {
    return Json()
        .Num("lat_deg", p.observer.latitude)
        .Num("lon_deg", p.observer.longitude)
        .Num("height_m", p.observer.height)
        .Num("tz_h", p.tz)
        .Text();
}

struct Twilight {
    Event rise, set, morning[3], evening[3];  // civil, nautical, astronomical
};
const char *const kTwilightNames[3] = {"civil", "nautical", "astronomical"};

Twilight TwilightOf(const ADate &day, const Place &place) {
    Twilight w;
    w.rise.found = GetSunRise(&day, &place.observer, &w.rise.jd) == 1;
    w.set.found = GetSunSet(&day, &place.observer, &w.set.jd) == 1;
    for (int k = 0; k < 3; ++k) {
        const int deg = -6 * (k + 1);
        w.morning[k].found = GetSunRiseDeg(&day, &place.observer, &w.morning[k].jd, deg) == 1;
        w.evening[k].found = GetSunSetDeg(&day, &place.observer, &w.evening[k].jd, deg) == 1;
    }
    return w;
}

std::string TimeOrDash(const Event &e, double tz) { return e.found ? LocalTime(e.jd, tz, false) : "--:--:--"; }
std::string TimeJson(const Event &e, double tz) { return e.found ? JsonString(LocalTime(e.jd, tz, true)) : "null"; }

// Day length (hours) between sunrise and sunset of the day; without them,
// 24 under the midnight Sun and 0 in the polar night.
double DayLengthHours(const Twilight &w, const ADate &day, const Place &place) {
    if (w.rise.found && w.set.found && w.set.jd > w.rise.jd) return (w.set.jd - w.rise.jd) * 24.0;
    // The Sun sets before it rises in this local day (a zone far from the
    // place's meridian): daylight at both ends of the day.
    if (w.rise.found && w.set.found) return (w.set.jd - w.rise.jd + 1.0) * 24.0;
    if (w.rise.found || w.set.found) {
        const double mid = MidnightUt(day);
        return ((w.set.found ? w.set.jd : mid + 1.0) - (w.rise.found ? w.rise.jd : mid)) * 24.0;
    }
    const Body sun{"Sun", -2, {}, {}};
    return HorizonAt(sun, MidnightUt(day) + 0.5, place).altitude > 0.0 ? 24.0 : 0.0;
}

std::string HoursText(double h) {
    const long minutes = std::lround(h * 60.0);
    char buf[32];
    std::snprintf(buf, sizeof buf, "%2ldh%02ldm", minutes / 60, minutes % 60);
    return buf;
}

}  // namespace

int RunRise(const Args &args) {
    const Place place = PlaceFrom(args);
    const std::vector<Body> bodies = BodiesFromArgs(args);
    const std::vector<ADate> days = DaysFromArgs(args, place);
    const bool json = args.Flag("json");
    const bool table = bodies.size() == 1 && days.size() > 1;
    std::string items;
    if (!json) {
        PrintPlaceLine(place);
        if (table) std::printf("%-10s  %-20s  %-20s  %-20s  (%s)\n", "date", "rise", "transit", "set",
                               bodies[0].name.c_str());
    }
    for (const ADate &day : days) {
        std::string bodyItems;
        if (!json && !table) std::printf("%s\n", DayName(day).c_str());
        for (const Body &b : bodies) {
            const BodyDay r = RiseSetOf(b, day, place);
            if (json) {
                if (!bodyItems.empty()) bodyItems += ",";
                bodyItems += Json()
                                 .Str("body", b.name)
                                 .Str("state", r.state)
                                 .Raw("rise", EventJson(r.ev[0], 0, place.tz))
                                 .Raw("transit", EventJson(r.ev[1], 1, place.tz))
                                 .Raw("set", EventJson(r.ev[2], 2, place.tz))
                                 .Text();
            } else if (table) {
                std::printf("%-10s  %-20s  %-20s  %-20s\n", DayName(day).c_str(),
                            EventText(r.ev[0], 0, place.tz, r.state).c_str(),
                            EventText(r.ev[1], 1, place.tz, r.state).c_str(),
                            EventText(r.ev[2], 2, place.tz, r.state).c_str());
            } else {
                std::printf("  %-9s rise %-20s  transit %-20s  set %s\n", b.name.c_str(),
                            EventText(r.ev[0], 0, place.tz, r.state).c_str(),
                            EventText(r.ev[1], 1, place.tz, r.state).c_str(),
                            EventText(r.ev[2], 2, place.tz, r.state).c_str());
            }
        }
        if (json) {
            if (!items.empty()) items += ",";
            items += Json().Str("date", DayName(day)).Raw("bodies", "[" + bodyItems + "]").Text();
        }
    }
    if (json) std::printf("%s\n", Json().Raw("place", PlaceJson(place)).Raw("days", "[" + items + "]").Text().c_str());
    return 0;
}

int RunTwilight(const Args &args) {
    args.ExpectPositional(0, 0);
    const Place place = PlaceFrom(args);
    const std::vector<ADate> days = DaysFromArgs(args, place);
    const bool json = args.Flag("json");
    std::string items;
    if (!json) {
        PrintPlaceLine(place);
        std::printf("%-10s  %-8s  %-8s  %-8s  %-8s  %-8s  %-8s  %-8s  %-8s  %s\n", "date", "astro", "nautical",
                    "civil", "sunrise", "sunset", "civil", "nautical", "astro", "day");
    }
    for (const ADate &day : days) {
        const Twilight w = TwilightOf(day, place);
        const double length = DayLengthHours(w, day, place);
        if (json) {
            Json j;
            j.Str("date", DayName(day))
                .Raw("sunrise", TimeJson(w.rise, place.tz))
                .Raw("sunset", TimeJson(w.set, place.tz));
            for (int k = 0; k < 3; ++k) {
                const std::string n = kTwilightNames[k];
                j.Raw(n + "_morning", TimeJson(w.morning[k], place.tz)).Raw(n + "_evening", TimeJson(w.evening[k], place.tz));
            }
            j.Num("day_length_h", length);
            if (!items.empty()) items += ",";
            items += j.Text();
        } else {
            std::printf("%-10s  %-8s  %-8s  %-8s  %-8s  %-8s  %-8s  %-8s  %-8s  %s\n", DayName(day).c_str(),
                        TimeOrDash(w.morning[2], place.tz).c_str(), TimeOrDash(w.morning[1], place.tz).c_str(),
                        TimeOrDash(w.morning[0], place.tz).c_str(), TimeOrDash(w.rise, place.tz).c_str(),
                        TimeOrDash(w.set, place.tz).c_str(), TimeOrDash(w.evening[0], place.tz).c_str(),
                        TimeOrDash(w.evening[1], place.tz).c_str(), TimeOrDash(w.evening[2], place.tz).c_str(),
                        HoursText(length).c_str());
        }
    }
    if (json) std::printf("%s\n", Json().Raw("place", PlaceJson(place)).Raw("days", "[" + items + "]").Text().c_str());
    return 0;
}

void RiseSetAlmanacText(const AlmanacContext &c) {
    const ADate day{c.date.year, c.date.month, c.date.day, 0, 0, 0.0, c.place.tz};
    for (const Body &b : {Body{"Sun", -2, {}, {}}, Body{"Moon", -1, {}, {}}}) {
        const BodyDay r = RiseSetOf(b, day, c.place);
        std::printf("  %-9s rise %s  set %s\n", (b.name + " today").c_str(),
                    EventText(r.ev[0], 0, c.place.tz, r.state).c_str(), EventText(r.ev[2], 2, c.place.tz, r.state).c_str());
    }
    const Twilight w = TwilightOf(day, c.place);
    for (int k = 0; k < 3; ++k)
        std::printf("  %-13s twilight %s - %s\n", kTwilightNames[k], TimeOrDash(w.morning[k], c.place.tz).c_str(),
                    TimeOrDash(w.evening[k], c.place.tz).c_str());
    std::printf("  day length %s\n", HoursText(DayLengthHours(w, day, c.place)).c_str());
}

void RiseSetAlmanacJson(const AlmanacContext &c, Json &out) {
    const ADate day{c.date.year, c.date.month, c.date.day, 0, 0, 0.0, c.place.tz};
    for (const Body &b : {Body{"Sun", -2, {}, {}}, Body{"Moon", -1, {}, {}}}) {
        const BodyDay r = RiseSetOf(b, day, c.place);
        const std::string key = b.code == -2 ? "sun" : "moon";
        out.Raw(key + "_rise", EventJson(r.ev[0], 0, c.place.tz)).Raw(key + "_set", EventJson(r.ev[2], 2, c.place.tz));
    }
    const Twilight w = TwilightOf(day, c.place);
    for (int k = 0; k < 3; ++k) {
        const std::string n = kTwilightNames[k];
        out.Raw(n + "_twilight_morning", TimeJson(w.morning[k], c.place.tz))
            .Raw(n + "_twilight_evening", TimeJson(w.evening[k], c.place.tz));
    }
    out.Num("day_length_h", DayLengthHours(w, day, c.place));
}

}  // namespace kvx::cli
