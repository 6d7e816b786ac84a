// The Moon's age, and the instants of its principal phases in a month.
#include <cmath>

#include "kvxlib.h"

namespace {

// Validity range (Julian dates, inclusive) of the series of the true phases
// as used here; outside it the phases are searched for in the positions.
constexpr double kSeriesFirstJd = 1356173.0;
constexpr double kSeriesLastJd = 3547272.0;

// Mean daily elongation of the Moon from the Sun, degrees per day.
constexpr double kMeanElongationPerDay = 12.190749056850848;

bool InSeriesRange(double jd) { return jd >= kSeriesFirstJd && jd <= kSeriesLastJd; }

}  // namespace

/// GetMoonAge: days since the last new Moon at Julian date jd. Inside
/// 1356173.0..3547272.0 the new Moons come from the phase series
/// (GetNewMoonJd2000, dynamical time, compared with jd as given). Outside it
/// the age is the elongation, the Moon's geocentric ecliptic longitude
/// (moonPos field 11) minus the Sun's longitude (sunPos field 5) reduced to
/// 0..360, over the mean daily elongation 12.190749 degrees; there null
/// records give 0.
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
    return degmal(KVX_BODYPOS_FIELD(*moonPos, 11) - KVX_BODYPOS_FIELD(*sunPos, 5)) / kMeanElongationPerDay;
}
