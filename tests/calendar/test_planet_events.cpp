// Planetary events against a search of Swiss Ephemeris places (tests/reference/planet_events_swe.c): the
// search with the DE405 excerpt, the built-in theories over 2000-2030.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include "kvxlib.h"
#include "solar/ephem/jpl_de.h"
#include "test_support.h"

using namespace kvx::test;

namespace {

// The bound an event kind goes to: roots (sharp), extrema (flat: an error e in a rate moves the instant by e
// over the rate's change per day), the Moon's.
const char *Group(int kind) {
    switch (kind) {
    case KVX_EVENT_ELONGATION_EAST: case KVX_EVENT_ELONGATION_WEST: return "elongation_min";
    case KVX_EVENT_STATION_RETROGRADE: case KVX_EVENT_STATION_DIRECT: return "station_min";
    case KVX_EVENT_PERIHELION: case KVX_EVENT_APHELION: return "perihelion_min";
    case KVX_EVENT_PERIGEE: case KVX_EVENT_APOGEE: return "perigee_min";
    case KVX_EVENT_MOON_CONJUNCTION: case KVX_EVENT_ASCENDING_NODE: case KVX_EVENT_DESCENDING_NODE:
        return "moon_root_min";
    default: return "root_min";
    }
}

// Matches the events of [start, end) (UT, a day's margin) with the reference's by kind and bodies within
// `window` days, counting the unmatched on either side; group() names an error's bound (null: match only).
using GroupOf = std::function<const char *(const PlanetEvent &)>;
void CompareSpan(double start, double end, double window, const GroupOf &group, Comparison &cmp, int *missing) {
    static const Reference ref("planet_events_swe.txt", {"kind", "body", "other", "tt", "value"});
    std::vector<PlanetEvent> events(4000);
    const int n = GetPlanetEvents2(start, end, 0, events.data(), 4000);
    ASSERT_TRUE(n > 0 && n <= 4000) << n;
    events.resize(n);
    std::vector<bool> used(events.size(), false);
    const double startTt = UtToDt(start) + 1.0, endTt = UtToDt(end) - 1.0;
    for (const auto &row : ref) {
        if (row["tt"] < startTt || row["tt"] > endTt || row["kind"] == KVX_EVENT_OCCULTATION) continue;
        int best = -1;
        double bestDt = window;
        for (int i = 0; i < n; ++i) {
            const PlanetEvent &e = events[i];
            if (e.kind != row["kind"] || e.body != row["body"] || e.other != row["other"]) continue;
            const double dt = std::fabs(UtToDt(e.jd) - row["tt"]);
            if (dt < bestDt) best = i, bestDt = dt;
        }
        if (best < 0) {
            ++*missing;
            continue;
        }
        used[best] = true;
        if (const char *g = group(events[best])) cmp.Add(g, (UtToDt(events[best].jd) - row["tt"]) * 1440.0, row);
    }
    for (int i = 0; i < n; ++i) {
        const PlanetEvent &e = events[i];
        const double tt = UtToDt(e.jd);
        if (!used[i] && e.kind != KVX_EVENT_OCCULTATION && tt > startTt && tt < endTt) ++*missing;
    }
}

}  // namespace

// With the DE405 excerpt (2000-01-01 to 2001-12-20): roots well within the 2 minutes asked for; the flat
// extrema to the minutes DE405 vs DE431 and the precession-nutation models leave in the rates.
TEST(PlanetEvents, WithDe405AgainstSwissEphemeris) {
    ASSERT_TRUE(kvx::jpl::OpenMain(TestDataPath("de405_2000.bin").c_str(), false));
    Comparison cmp({{"root_min", 1.0, "required 2 min; measured 0.2: 1 s search on DE405 vs DE431 places"},
                    {"moon_root_min", 1.0, "required 2 min; measured 0.02"},
                    {"elongation_min", 2.0, "flat extremum; measured 0.05"},
                    {"station_min", 5.0, "flat extremum: Pluto's longitude moves 0.01\" in a minute there; "
                                         "measured 2.2"},
                    {"perihelion_min", 30.0, "flat extremum: the distance changes by micro-AU in hours; "
                                             "measured 14 (Mars)"},
                    {"perigee_min", 2.0, "flat extremum; measured 0.02"}});
    int missing = 0;
    const GroupOf byKind = [](const PlanetEvent &e) { return Group(e.kind); };
    CompareSpan(2451545.0, 2451545.0 + 365.0, 3.0, byKind, cmp, &missing);
    CompareSpan(2451545.0 + 365.0, 2452260.0, 3.0, byKind, cmp, &missing);
    kvx::jpl::CloseMain();
    EXPECT_EQ(missing, 0);
    cmp.Check();
}

// Without files, 2000-2030 every third year, the events follow the built-in theories; mean-element planets
// (hours off), slow pairs and the theory's perigees are only required to be found.
TEST(PlanetEvents, TheoriesAgainstSwissEphemeris2000To2030) {
    Comparison cmp({{"series_min", 5.0, "the analytic series of Mercury, Venus and Jupiter; measured 3.6"},
                    {"moon_conjunction_min", 40.0, "mean-element planets (arcminutes at 0.5 deg/h); measured 36"},
                    {"node_min", 6.0, "the lunar theory's 11\" in latitude (3\"/min); measured 4.2"}});
    const GroupOf bySource = [](const PlanetEvent &e) -> const char * {
        const bool series = e.body == 0 || e.body == 1 || e.body == 3;
        if (e.kind <= KVX_EVENT_STATION_DIRECT && series) return "series_min";
        if (e.kind == KVX_EVENT_MOON_CONJUNCTION) return "moon_conjunction_min";
        if (e.kind == KVX_EVENT_ASCENDING_NODE || e.kind == KVX_EVENT_DESCENDING_NODE) return "node_min";
        return nullptr;
    };
    int missing = 0;
    for (int year = 2000; year <= 2030; year += 3) {
        const double start = CalcJd(year, 1, 1);
        CompareSpan(start, start + 365.0, 5.0, bySource, cmp, &missing);
    }
    EXPECT_LE(missing, 4);  // Saturn's perihelion (2003), aphelion (2018): ~20 days off, each counted twice
    cmp.Check();
}

// One body's year against the all-body search; kind filter, sizing call and limits.
TEST(PlanetEvents, OneBodyFilterAndLimits) {
    const double start = CalcJd(2025, 1, 1), end = CalcJd(2026, 1, 1);
    std::vector<PlanetEvent> all(4000), venus(400);
    all.resize(GetPlanetEvents2(start, end, 0, all.data(), 4000));
    venus.resize(GetPlanetEvents(2025, 1, venus.data(), 400));
    EXPECT_EQ(std::ssize(venus), std::count_if(all.begin(), all.end(), [](auto &e) { return e.body == 1 || e.other == 1; }));
    EXPECT_TRUE(std::is_sorted(venus.begin(), venus.end(), [](auto &a, auto &b) { return a.jd < b.jd; }));

    const uint32_t nodes = (1u << KVX_EVENT_ASCENDING_NODE) | (1u << KVX_EVENT_DESCENDING_NODE);
    PlanetEvent few[3];
    const int sized = GetPlanetEvents2(start, end, nodes, nullptr, 0);
    EXPECT_GE(sized, 26);  // 13.4 draconic months a year, two nodes each
    EXPECT_EQ(GetPlanetEvents2(start, end, nodes, few, 3), sized);
    for (const PlanetEvent &e : few)
        EXPECT_TRUE(e.kind == KVX_EVENT_ASCENDING_NODE || e.kind == KVX_EVENT_DESCENDING_NODE) << e.kind;

    EXPECT_EQ(GetPlanetEvents(2025, -2, venus.data(), 400), 0);
    EXPECT_EQ(GetPlanetEvents(2025, 8, venus.data(), 400), 0);
    EXPECT_EQ(GetPlanetEvents2(start, start + 401.0, 0, all.data(), 4000), 0);
    EXPECT_EQ(GetPlanetEvents2(end, start, 0, all.data(), 4000), 0);
    EXPECT_EQ(GetPlanetEvents2(std::nan(""), end, 0, all.data(), 4000), 0);
}
