// kvx events: the year's planetary phenomena, conjunctions, occultations
// and the Moon's perigees, apogees and nodes, in local time.
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "commands.h"
#include "report.h"

namespace kvx::cli {

namespace {

const char *const kBodies[8] = {"Mercury", "Venus", "Mars", "Jupiter", "Saturn", "Uranus", "Neptune", "Pluto"};
const char *const kKinds[KVX_EVENT_KIND_COUNT] = {"",
                                                  "conjunction with the Sun",
                                                  "inferior conjunction",
                                                  "opposition",
                                                  "greatest elongation east",
                                                  "greatest elongation west",
                                                  "stationary, retrograde",
                                                  "stationary, direct",
                                                  "perihelion",
                                                  "aphelion",
                                                  "conjunction in RA with",
                                                  "conjunction in RA with",
                                                  "occults",
                                                  "perigee",
                                                  "apogee",
                                                  "ascending node",
                                                  "descending node"};
const char *const kKeys[KVX_EVENT_KIND_COUNT] = {
    "", "conjunction", "inferior_conjunction", "opposition", "elongation_east", "elongation_west",
    "station_retrograde", "station_direct", "perihelion", "aphelion", "conjunction_ra", "moon_conjunction",
    "occultation", "perigee", "apogee", "ascending_node", "descending_node"};
// Unit of each kind's value, for the JSON key and the text.
const char *const kUnits[KVX_EVENT_KIND_COUNT] = {"",    "deg", "deg", "deg", "deg", "deg", "deg", "deg", "au",
                                                  "au",  "deg", "deg", "deg", "km",  "km",  "deg", "deg"};

std::string BodyName(int code) {
    if (code == -1) return "Moon";
    if (code == -2) return "Sun";
    if (code >= 0 && code < 8) return kBodies[code];
    return "";
}

// Body code of a name (moon, mercury..pluto); throws for another.
int BodyCode(const std::string &name) {
    const std::string n = Lower(name);
    if (n == "moon") return -1;
    for (int i = 0; i < 8; ++i)
        if (n == Lower(kBodies[i])) return i;
    throw UsageError{"unknown body '" + name + "' (moon, mercury ... pluto)"};
}

}  // namespace

int RunEvents(const Args &args) {
    args.ExpectPositional(1, 1);
    const Place place = PlaceFrom(args);
    // The years of the phase series the searches start from.
    const int year = ParseYear(args.Positional()[0], -1000, 5000);
    std::vector<PlanetEvent> events;
    if (const auto body = args.Option("body")) {
        events.resize(2000);
        events.resize(GetPlanetEvents(year, BodyCode(*body), events.data(), 2000));
    } else {
        const double start = CalcJd(year, 1, 1), end = CalcJd(year + 1.0, 1, 1);
        events.resize(GetPlanetEvents2(start, end, 0, nullptr, 0));
        if (!events.empty()) GetPlanetEvents2(start, end, 0, events.data(), static_cast<int>(events.size()));
    }
    if (args.Flag("json")) {
        std::string items;
        for (std::size_t i = 0; i < events.size(); ++i) {
            const PlanetEvent &e = events[i];
            ADate local{};
            JdToDate2(e.jd + place.tz / 24.0, &local);
            local.tz = place.tz;
            Json j;
            j.Str("kind", kKinds[e.kind][0] ? kKeys[e.kind] : "")
                .Str("body", BodyName(e.body))
                .Raw("other", e.other == -100 ? "null" : JsonString(BodyName(e.other)))
                .Num("jd", e.jd)
                .Str("local", FormatDate(local))
                .Num(std::string("value_") + kUnits[e.kind], e.value)
                .Raw("magnitude", e.body == -1 && e.other == -100 ? "null" : JsonNumber(e.magnitude));
            items += (i ? "," : "") + j.Text();
        }
        std::printf("%s\n", Json().Int("year", year).Num("tz", place.tz).Raw("events", "[" + items + "]").Text().c_str());
        return 0;
    }
    std::printf("Planetary events of %d, zone %s (geocentric, to the minute)\n", year, FormatZone(place.tz).c_str());
    for (const PlanetEvent &e : events) {
        ADate d{};
        JdToDate2(e.jd + place.tz / 24.0 + 30.0 / 86400.0, &d);
        std::string what = BodyName(e.body) + " " + kKinds[e.kind];
        if (e.kind >= KVX_EVENT_CONJUNCTION_RA && e.kind <= KVX_EVENT_OCCULTATION) what += " " + BodyName(e.other);
        char value[64];
        if (e.kind == KVX_EVENT_PERIGEE || e.kind == KVX_EVENT_APOGEE)
            std::snprintf(value, sizeof value, "%.0f km", e.value);
        else if (e.kind == KVX_EVENT_PERIHELION || e.kind == KVX_EVENT_APHELION)
            std::snprintf(value, sizeof value, "%.5f AU", e.value);
        else if (e.kind == KVX_EVENT_CONJUNCTION_RA || e.kind == KVX_EVENT_MOON_CONJUNCTION)
            std::snprintf(value, sizeof value, "%.1f deg %s", std::fabs(e.value), e.value < 0.0 ? "south" : "north");
        else
            std::snprintf(value, sizeof value, "%.2f deg", e.value);
        std::printf("%04d-%02d-%02d %02d:%02d  %-42s %s\n", d.year, d.month, d.day, d.hour, d.minute, what.c_str(),
                    value);
    }
    return 0;
}

}  // namespace kvx::cli
