// kvx phases: the principal phases of the Moon in a year or a month, in
// local time, with how accurate the instants are for that epoch.
//
// The library's GetMoonPhases answers month by month; outside the range of
// its phase series it samples the elongation daily, without Delta T, and
// can miss a phase. The command therefore refines each phase the library
// gives on the geocentric Sun-Moon elongation in apparent ecliptic
// longitude (CalcSun, CalcMoon, Coordinates) in universal time, searches
// every quarter of the span itself on the same function, and adds each
// phase the library left out, so that every year is listed whole and in
// order.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "commands.h"

namespace kvx::cli {

namespace {

const char *const kPhaseNames[4] = {"new Moon", "first quarter", "full Moon", "last quarter"};

// Mean synodic motion of the Moon from the Sun, degrees per day
// (360 / 29.530589 d, Meeus, Astronomical Algorithms, 2nd ed., ch. 49).
constexpr double kDegreesPerDay = 360.0 / 29.530588861;

// Apparent geocentric elongation of the Moon from the Sun in ecliptic
// longitude of date, 0..360, at a universal-time Julian date.
double Elongation(double jd) {
    ATime t;
    SetATimeJd(jd, 0.0, nullptr, &t);
    BodyPos bodies[2]{};  // the Sun, the Moon
    CalcSun(&t, &bodies[0]);
    CalcMoon(&t, &bodies[1], &bodies[0]);
    Ad ecliptic[2]{};
    for (int i = 0; i < 2; ++i) {
        const Ad apparent{bodies[i].f[2], bodies[i].f[3]};
        Coordinates(&t, KVX_COORD_APPARENT, &apparent, KVX_COORD_ECL_APPARENT, &ecliptic[i]);
    }
    return degmal(ecliptic[1].a - ecliptic[0].a);
}

// Signed difference a - b reduced to -180..180 degrees.
double Diff(double a, double b) { return degmal(a - b + 180.0) - 180.0; }

// The instant near `guess` at which the elongation equals target, by the
// secant method (converges to well under a second in a few steps: the
// elongation is smooth, its rate 10-15 degrees a day).
double Solve(double guess, double target) {
    double t0 = guess, f0 = Diff(Elongation(t0), target);
    double t1 = guess - f0 / kDegreesPerDay, f1 = Diff(Elongation(t1), target);
    for (int i = 0; i < 12 && std::fabs(t1 - t0) > 1e-7 && f1 != f0; ++i) {
        const double t2 = t1 - f1 * (t1 - t0) / (f1 - f0);
        t0 = t1;
        f0 = f1;
        t1 = t2;
        f1 = Diff(Elongation(t1), target);
    }
    return t1;
}

// Every principal phase in [from, to) (universal-time Julian dates).
std::vector<MoonPhase> AllPhases(double from, double to) {
    std::vector<MoonPhase> out;
    const double e0 = Elongation(from);
    int quarter = static_cast<int>(std::floor(e0 / 90.0)) + 1;
    double guess = from + (quarter * 90.0 - e0) / kDegreesPerDay;
    for (int n = 0; n < 60; ++n, ++quarter) {
        const int phase = quarter % 4;
        const double jd = Solve(guess, phase * 90.0);
        if (jd >= to) break;
        if (jd >= from) out.push_back(MoonPhase{phase, jd});
        guess = jd + 90.0 / kDegreesPerDay;
    }
    return out;
}

// Delta T's standard error in seconds: Morrison and Stephenson (2004)
// sigma = 0.8 t^2 s, t in centuries from 1820 (stated for 1000 BC to
// AD 1200, used here as the order of magnitude elsewhere), at least a second.
double DeltaTSigma(int year) {
    const double t = (year - 1820.0) / 100.0;
    return std::max(1.0, 0.8 * t * t);
}

std::string Duration(double seconds) {
    char buf[48];
    if (seconds < 90.0) std::snprintf(buf, sizeof buf, "%.0f s", seconds);
    else if (seconds < 5400.0) std::snprintf(buf, sizeof buf, "%.0f min", seconds / 60.0);
    else std::snprintf(buf, sizeof buf, "%.1f h", seconds / 3600.0);
    return buf;
}

}  // namespace

int RunPhases(const Args &args) {
    args.ExpectPositional(1, 2);
    Place place = PlaceFrom(args);
    const int year = ParseYear(args.Positional()[0]);
    int first = 1, last = 12;
    if (args.Positional().size() == 2) {
        const double m = ParseNumber(args.Positional()[1], "month");
        if (m != std::floor(m) || m < 1 || m > 12) throw UsageError{"month must be 1 to 12"};
        first = last = static_cast<int>(m);
    }
    // The span asked for, local midnight to local midnight.
    ADate a{year, first, 1, 0, 0, 0.0, 0.0}, b{last == 12 ? year + 1 : year, last == 12 ? 1 : last + 1, 1, 0, 0, 0.0, 0.0};
    const double from = GetJd(&a) - ZoneAt(place, GetJd(&a)) / 24.0, to = GetJd(&b) - ZoneAt(place, GetJd(&b)) / 24.0;

    // The library's phases, refined (they stay put to well under a second
    // inside its series range), then the ones it left out.
    std::vector<MoonPhase> phases;
    for (int month = first; month <= last; ++month) {
        const ADate request{year, month, 1, 0, 0, 0.0, ZoneAt(place, GetJd(&a))};
        MoonPhase got[6];
        const int n = GetMoonPhases(&request, got, 6);
        for (int i = 0; i < n; ++i) {
            const MoonPhase refined{got[i].phase, Solve(got[i].jd, got[i].phase * 90.0)};
            if (refined.jd >= from && refined.jd < to) phases.push_back(refined);
        }
    }
    const int fromLibrary = static_cast<int>(phases.size());
    for (const MoonPhase &p : AllPhases(from, to)) {
        bool listed = false;
        for (const MoonPhase &q : phases) listed = listed || (q.phase == p.phase && std::fabs(q.jd - p.jd) < 0.01);
        if (!listed) phases.push_back(p);
    }
    std::sort(phases.begin(), phases.end(), [](const MoonPhase &x, const MoonPhase &y) { return x.jd < y.jd; });

    // Accuracy for the epoch: Delta T's uncertainty, and the largest
    // difference from Meeus's series of the true phases (Astronomical
    // Algorithms, ch. 49, TT converted with the library's Delta T) where
    // that series is defined (years -1000 to 5000 here).
    const double sigma = DeltaTSigma(year);
    double series = NAN;
    if (year >= -1000 && year <= 5000) {
        series = 0.0;
        for (const MoonPhase &p : phases) {
            const double k = std::round((p.jd - 2451550.09766) / 29.530588861 * 4.0) / 4.0;
            series = std::max(series, std::fabs(DtToUt(GetNewMoonJd2000(k)) - p.jd) * 86400.0);
        }
    }
    const std::string accuracy = "Delta T uncertain by about " + Duration(sigma) +
                                 (std::isnan(series) ? std::string()
                                                     : "; within " + Duration(series) + " of Meeus's phase series");

    if (args.Flag("json")) {
        std::string items;
        for (const MoonPhase &p : phases) {
            Json j;
            j.Int("phase", p.phase).Str("name", kPhaseNames[p.phase & 3]).Num("jd", p.jd).Str("local", IsoTime(p.jd, ZoneAt(place, p.jd)));
            items += (items.empty() ? "" : ", ") + j.Text();
        }
        std::printf("%s\n", Json()
                                .Str("zone", place.zone)
                                .Int("from_library", fromLibrary)
                                .Int("completed", static_cast<int>(phases.size()) - fromLibrary)
                                .Num("delta_t_sigma_s", sigma)
                                .Num("series_difference_s", series)
                                .Raw("phases", "[" + items + "]")
                                .Text()
                                .c_str());
        return 0;
    }
    std::printf("Moon phases %d%s, local time (%s); accuracy: %s\n", year,
                first == last ? ("-" + std::to_string(first)).c_str() : "", place.zone.c_str(), accuracy.c_str());
    for (const MoonPhase &p : phases) {
        // To the nearest minute.
        const double tz = ZoneAt(place, p.jd);
        ADate shown{};
        JdToDate2(p.jd + tz / 24.0 + 30.0 / 86400.0, &shown);
        std::printf("%s%04d-%02d-%02d %02d:%02d %s  %s\n", shown.year < 0 ? "-" : "", std::abs(shown.year), shown.month,
                    shown.day, shown.hour, shown.minute, FormatZone(tz).c_str(), kPhaseNames[p.phase & 3]);
    }
    return 0;
}

}  // namespace kvx::cli
