// Rise, transit and set: the day context prepared by InitRiseSet and the
// iterative search on the hour-angle equation shared by every body.
#pragma once

#include "kvxlib.h"

namespace kvx::riseset {

inline constexpr double kSiderealRate = 1.00273790935;        // sidereal days per solar day
inline constexpr double kSiderealDay = 0.9972695663298751;    // days
inline constexpr double kRefraction = 0.5855555;              // 35'08" at the horizon, degrees
inline constexpr double kEarthRadiusM = 6378137.0;
inline constexpr double kEarthDiameterM = 12756274.0;
inline constexpr double kOneSecond = 1.1574074074074073e-5;   // days
inline constexpr double kSixSeconds = 6.944444444444444e-5;   // days
inline constexpr double kExSeedStep = 0.9945391326597501;     // 2 sidereal days - 1 day

enum EventKind { kRise = 1, kTransit = 2, kSet = 3 };
enum SearchResult { kFound = 0, kNotConverged = 1, kNoEvent = 2 };

inline constexpr int kStar = -10;
inline constexpr int kSun = -2;
inline constexpr int kMoon = -1;

// The prepared day: one for the whole library, written by InitRiseSet.
struct DayContext {
    bool prepared = false;
    double tzDays = 0.0;
    double jd0 = 0.0;         // 0 h UT of the civil date's number
    double lst[3] = {};       // local sidereal time at jd0 - 1, jd0, jd0 + 1, made increasing
    double noonJd = 0.0;      // local noon, UT
    double sinLat = 0.0, cosLat = 1.0;
    BodyPos sunStart{}, sunEnd{};  // CalcSun at local midnight and the next local midnight
};
const DayContext &Day();

// Local midnight opening the prepared day (UT).
inline double Midnight(const DayContext &c) { return c.noonJd - 0.5; }

// Right ascension and declination of date (degrees) that the search uses for
// body at t (for the Sun only t.jd is read); false when a satellite or comet
// cannot be computed.
// transitFrame: a fixed star is taken to the apparent equator of date (the
// transit fallback) instead of the mean equator of date (the main search).
bool BodyPlace(int body, const void *object, ATime &t, bool transitFrame, double *ra, double *dec);

// Horizon correction h0 (degrees): the dip of the horizon for the observer's
// height, 35'08" of refraction, and the Sun's semi-diameter for the Sun.
double HorizonH0(int body, const Observer *obs);

// Circumpolar state for the requested altitude a at local noon: 1 always
// above, -1 always below, 0 rises and sets. False when the place cannot be
// computed.
bool CircumpolarState(int body, const void *object, double tz, const Observer *obs, double a, int *state);

// One search of the event (see GetRiseSet). seeded: start from *T and keep
// the result within 0.75 day of it. Returns kFound with the instant in *T,
// kNotConverged with the last two estimates in *T and *L, or kNoEvent.
int Search(double tz, int body, const void *object, int event, const Observer *obs, double a, bool seeded,
           double *T, double *L);

// Meridian passage by direct iteration on the right ascension; writes its
// last estimate to *result and returns true when it converged.
bool TransitFallback(double tz, int body, const void *object, const Observer *obs, double *result);

}  // namespace kvx::riseset
