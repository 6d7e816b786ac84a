// The Moon's age, and the instants of its principal phases in a month.
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "solar/body/body_slots.h"

namespace {

// Validity range (Julian dates, inclusive) of the series of the true phases
// as used here; outside it the phases are searched for in the positions.
constexpr double kSeriesFirstJd = 1356173.0;
constexpr double kSeriesLastJd = 3547272.0;

// Mean daily elongation of the Moon from the Sun, degrees per day.
constexpr double kMeanElongationPerDay = 12.190749056850848;

bool InSeriesRange(double jd) { return jd >= kSeriesFirstJd && jd <= kSeriesLastJd; }

// Target elongation (degrees) of each phase number.
double TargetElongation(int phase) { return 90.0 * phase; }

// Elongation of the Moon from the Sun in apparent ecliptic longitude of date
// (degrees) from the library's own Sun and Moon at a universal-time Julian
// date, seen from the centre of the Earth; above 315 degrees it is taken
// negative so that a new Moon is bracketed without a jump.
double ApparentElongation(double jd) {
    ATime t;
    SetATimeJd(jd, 0.0, nullptr, &t);
    BodyPos sun{}, moon{};
    CalcSun(&t, &sun);
    CalcMoon(&t, &moon, &sun);
    using namespace kvx::body;
    const Ad sunEq{sun.f[kRaJ2000], sun.f[kDecJ2000]}, moonEq{moon.f[kRaJ2000], moon.f[kDecJ2000]};
    Ad sunEcl{}, moonEcl{};
    Coordinates(&t, KVX_COORD_J2000, &sunEq, KVX_COORD_ECL_APPARENT, &sunEcl);
    Coordinates(&t, KVX_COORD_J2000, &moonEq, KVX_COORD_ECL_APPARENT, &moonEcl);
    double e = degmal(moonEcl.a - sunEcl.a);
    if (e > 315.0) e -= 360.0;
    return e;
}

// The instant (universal time) at which the elongation reaches the phase's
// target, interpolated through five samples from an hour before to an hour
// after the approximate instant jd.
double RefinePhase(double jd, int phase) {
    double elong[5], times[5];
    for (int i = 0; i < 5; ++i) {
        times[i] = jd - 1.0 / 24.0 + i / 48.0;
        elong[i] = ApparentElongation(times[i]);
    }
    return Lagrange(TargetElongation(phase), 5, elong, times);
}

// Month (1..12) of a Julian date in the zone tz (hours).
int LocalMonth(double jd, double tz) {
    ADate d{};
    JdToDate2(jd + tz / 24.0, &d);
    return d.month;
}

// Phases inside the validity range of the series: every quarter from two
// before to six after the estimated one at the month's start, approximated
// by the series (converted to universal time), kept when the approximate
// instant falls in the month, and refined with the library's positions.
int32_t PhasesFromSeries(const ADate &month, double jd0, MoonPhase *out, int32_t max) {
    const ADate newYear{month.year, 1, 1, 0, 0, 0.0, month.tz};
    const double q0 =
        std::floor(((jd0 - GetJd(&newYear)) / 365.2422 + month.year - 2000.0) * 12.3685 * 4.0);
    int32_t count = 0;
    // The nine quarters q0 - 2 .. q0 + 6, counted so that the loop ends
    // whatever q0 is.
    for (int k = 0; k < 9 && count < max; ++k) {
        const double q = q0 - 2.0 + k;
        const double t = DtToUt(GetNewMoonJd2000(q * 0.25));
        if (LocalMonth(t, month.tz) != month.month) continue;
        int phase = kvx::ToInt32(std::fmod(q, 4.0));
        if (phase < 0) phase += 4;
        out[count].phase = phase;
        out[count].jd = RefinePhase(t, phase);
        ++count;
    }
    return count;
}

// Phases outside the validity range: the elongation of the Moon from the
// Sun (geometric longitudes of date, the Sun opposite the Earth's
// heliocentric longitude) sampled daily from four days before the month's
// start, made continuous, and interpolated at each multiple of 90 degrees it
// passes. The target moves on only after a phase has been stored, so a
// first crossing that falls before the month stops the search (every later
// sample lies beyond that target without crossing it): that is the
// method's known behaviour and is kept. No Delta T is applied.
int32_t PhasesFromSamples(const ADate &month, double jd0, MoonPhase *out, int32_t max) {
    constexpr int kSamples = 39;
    double times[kSamples], elong[kSamples];
    for (int i = 0; i < kSamples; ++i) {
        times[i] = jd0 - 4.0 + i;
        double earth[2], moon[2], r, dist;
        CalcPlanetLbr(-3, times[i], earth, &r);
        CalcMoonLbr(times[i], moon, &dist);
        double e = degmal(moon[0] - (earth[0] + 180.0));
        // The Moon gains about 12 degrees a day on the Sun, so one or two
        // turns make the series continuous; the cap of four turns only
        // bounds the loop for positions that are not finite or not real
        // (dates far outside every theory).
        if (i > 0)
            for (int turn = 0; turn < 4 && e < elong[i - 1]; ++turn) e += 360.0;
        elong[i] = e;
    }
    double target = (std::floor(elong[0] / 90.0) + 1.0) * 90.0;
    int phase = kvx::ToInt32(std::fmod(target / 90.0, 4.0)) & 3;  // NaN elongations give phase 0
    int32_t count = 0;
    for (int i = 1; i < kSamples && count < max; ++i) {
        // Only the sample that first passes the target marks its crossing.
        if (!(elong[i] > target && elong[i - 1] <= target)) continue;
        // Six samples around the crossing: three before it, it, two after;
        // shifted inwards where the crossing lies near either end.
        int first = i - 3;
        if (first < 0) first = 0;
        if (first > kSamples - 6) first = kSamples - 6;
        const double jd = Lagrange(target, 6, elong + first, times + first);
        if (LocalMonth(jd, month.tz) != month.month) continue;
        out[count].phase = phase;
        out[count].jd = jd;
        ++count;
        phase = (phase + 1) % 4;
        target += 90.0;
    }
    return count;
}

}  // namespace

extern "C" double GetMoonAge(double jd, const BodyPos *sunPos, const BodyPos *moonPos) {
    if (InSeriesRange(jd)) {
        const double k = std::floor(((jd - 1721423.5) / 365.244 + 1.0 - 2000.0) * 12.3685);
        const double next = GetNewMoonJd2000(k + 1.0);
        if (jd > next) return jd - next;
        const double here = GetNewMoonJd2000(k);
        if (jd > here) return jd - here;
        return jd - GetNewMoonJd2000(k - 1.0);
    }
    if (sunPos == nullptr || moonPos == nullptr) return 0.0;
    return degmal(moonPos->f[kvx::body::moon_slot::kEclLonGeo] - sunPos->f[kvx::body::kEclLon]) / kMeanElongationPerDay;
}
extern "C" int32_t GetMoonPhases(const ADate *month, MoonPhase *out, int32_t max) {
    if (month == nullptr || out == nullptr || max < 1) return 0;
    const ADate start{month->year, month->month, 1, 0, 0, 0.0, month->tz};
    const double jd0 = GetJd(&start);
    if (!std::isfinite(jd0)) return 0;  // a non-finite zone
    if (InSeriesRange(jd0)) return PhasesFromSeries(*month, jd0, out, max);
    return PhasesFromSamples(*month, jd0, out, max);
}
