// Rise, transit and set for one local civil day. The search solves the
// hour-angle equation cos H = (sin a - sin d sin phi) / (cos d cos phi) with
// the body's place re-evaluated at each estimate (Meeus, Astronomical
// Algorithms, ch. 15), the refraction and dip of the standard horizon added
// as a first-order shift of the hour angle, H + c / (sin H cos d cos phi).
#include "riseset/riseset.h"

#include <algorithm>
#include <cmath>

#include "math/constants.h"

namespace kvx::riseset {

namespace {

DayContext g_day;

constexpr int kMaxIterations = 10;
constexpr int kFallbackPasses = 11;

double HeightOf(const Observer *obs) { return obs ? obs->height : 0.0; }
double LongitudeOf(const Observer *obs) { return obs ? obs->longitude : 0.0; }

bool InDay(const DayContext &c, double t) { return t >= Midnight(c) && t < Midnight(c) + 1.0; }
bool InClosedDay(const DayContext &c, double t) { return t >= Midnight(c) && t <= Midnight(c) + 1.0; }

// UT at which the local sidereal time reaches st on the day that begins at
// jdBase with local sidereal time lstBase.
double SiderealToJd(double st, double lstBase, double jdBase) {
    return (st - lstBase) / kSiderealRate / 360.0 + jdBase;
}

// Geometric altitude of a place of date seen from t: nutation and annual
// aberration applied, then the horizon turned by the local sidereal time
// and the colatitude as the geometric horizontal system does.
double AltitudeOf(const ATime &t, double ra, double dec) {
    const Ad ad{ra, dec};
    Dc v;
    AdToDc(&ad, &v);
    RotateDc(&v, t.nutMtx, &v);
    double w[3] = {v.x, v.y, v.z};
    AnnualAberration(&t, w, 1, w);
    v = Dc{w[0], w[1], w[2]};
    double m[9];
    RotateZ(t.lst, m);
    RotateDc(&v, m, &v);
    RotateY(90.0 - t.obsLatitude, m);
    RotateDc(&v, m, &v);
    v.y = -v.y;
    Ad hz;
    DcToAd(&v, &hz);
    return hz.d;
}

// The time record the body's place needs at t: the Sun's place is
// interpolated from the day context and reads only the UT date, so the full
// fill (nutation, sidereal time, observer vector) is skipped for it.
void TimeFor(int body, double t, double tz, const Observer *obs, ATime *at) {
    if (body == kSun) {
        at->jd = t;
        return;
    }
    SetATimeJd(t, tz, obs, at);
}

}  // namespace

const DayContext &Day() { return g_day; }

double HorizonH0(int body, const Observer *obs) {
    const double h = HeightOf(obs);
    double dip = RadToDeg(std::atan(std::sqrt(std::fabs((h + kEarthDiameterM) * h)) / kEarthRadiusM));
    if (h < 0.0) dip = -dip;
    double h0 = dip + kRefraction;
    if (body == kSun) h0 += g_day.sunStart.f[14];
    return h0;
}

bool CircumpolarState(int body, const void *object, double tz, const Observer *obs, double a, int *state) {
    ATime t;
    TimeFor(body, g_day.noonJd, tz, obs, &t);
    double ra, d;
    if (!BodyPlace(body, object, t, false, &ra, &d)) return false;
    const double p = obs ? obs->latitude : 0.0;
    const double h0 = HorizonH0(body, obs);
    // The southern branch keeps p's sign, so that it practically never
    // decides and the search itself finds out.
    if (p >= 0.0) {
        *state = d >= 90.0 - p - h0 - a ? 1 : d <= p - 90.0 - h0 + a ? -1 : 0;
    } else {
        *state = d <= p - 90.0 + h0 + a ? 1 : d >= 90.0 - p + h0 - a ? -1 : 0;
    }
    return true;
}

int Search(double tz, int body, const void *object, int event, const Observer *obs, double a, bool seeded,
           double *T, double *L) {
    const DayContext &c = g_day;
    int state = 0;
    if (CircumpolarState(body, object, tz, obs, a, &state) && state != 0) return kNoEvent;
    if (std::fabs(c.cosLat) < 1e-10) return kNoEvent;

    const double sinA = std::sin(DegToRad(a));
    const double seed = seeded ? *T : c.noonJd;
    const double midnight = Midnight(c);
    double t = seed;
    int n = 0;
    for (;;) {
        const double tStart = t;
        ATime at;
        TimeFor(body, t, tz, obs, &at);
        double r, d;
        if (!BodyPlace(body, object, at, false, &r, &d)) return kNoEvent;
        const double cosD = std::cos(DegToRad(d));
        const double cosH = (sinA - std::sin(DegToRad(d)) * c.sinLat) / (cosD * c.cosLat);
        if (!(cosH >= -1.0 && cosH <= 1.0)) {
            if (n == 0) return kNoEvent;
            if (++n > kMaxIterations) return kNoEvent;
            t = (t + t) * 0.5;  // the estimate stays; the altitude check rejects a wrong one
        } else {
            double H = RadToDeg(std::acos(cosH));
            if (event != kTransit && a == 0.0) {
                double corr = kRefraction;
                if (body == kSun) corr += c.sunStart.f[14];
                const double hm = HeightOf(obs);
                if (hm > 0.0) corr += RadToDeg(std::acos(6378.137 / (6378.137 + hm / 1000.0)));
                H = H + corr / (std::sin(DegToRad(H)) * cosD * c.cosLat);
            }
            const double st = event == kRise ? r - H : event == kSet ? r + H : r;
            t = SiderealToJd(st, c.lst[1], c.jd0);
            if (seeded) {
                if (std::fabs(seed - t) > 0.75) t = t > seed ? t - kSiderealDay : t + kSiderealDay;
            } else if (t < midnight) {
                t = SiderealToJd(st, c.lst[2], c.jd0 + 1.0);
                if (t < midnight) {
                    double s = GetLst(c.jd0 + 2.0, LongitudeOf(obs));
                    if (s < c.lst[2]) s += 360.0;
                    t = SiderealToJd(st, s, c.jd0 + 2.0);
                }
            } else if (t > midnight + 1.0) {
                t = SiderealToJd(st, c.lst[0], c.jd0 - 1.0);
                if (t > midnight + 1.0) t = SiderealToJd(st, GetLst(c.jd0 - 2.0, LongitudeOf(obs)), c.jd0 - 2.0);
            }
            if (!std::isfinite(t)) return kNoEvent;
        }
        if (std::fabs(tStart - t) <= kOneSecond && InDay(c, t) && n <= kMaxIterations) break;
        if (++n > kMaxIterations) {
            *T = tStart;
            *L = t;
            return kNotConverged;
        }
    }

    if ((event == kRise || event == kSet) && a == 0.0) {
        ATime at;
        SetATimeJd(t, tz, obs, &at);
        double r, d;
        if (!BodyPlace(body, object, at, false, &r, &d)) return kNoEvent;
        const double h0 = HorizonH0(body, obs);
        if (!(std::fabs(AltitudeOf(at, r, d) + h0) <= 3.0)) return kNoEvent;  // NaN height: none
    }
    *T = t;
    return kFound;
}

bool TransitFallback(double tz, int body, const void *object, const Observer *obs, double *result) {
    const DayContext &c = g_day;
    const double midnight = Midnight(c);
    double t = c.noonJd, tNew = t;
    bool any = false;
    for (int pass = 0; pass < kFallbackPasses; ++pass) {
        ATime at;
        TimeFor(body, t, tz, obs, &at);
        double r, d;
        if (!BodyPlace(body, object, at, true, &r, &d)) {
            if (any) *result = tNew;
            return false;
        }
        tNew = SiderealToJd(r, c.lst[1], c.jd0);
        if (tNew < midnight) tNew = SiderealToJd(r, c.lst[2], c.jd0 + 1.0);
        else if (tNew > midnight + 1.0) tNew = SiderealToJd(r, c.lst[0], c.jd0 - 1.0);
        any = true;
        if (std::fabs(t - tNew) <= kSixSeconds && InDay(c, tNew)) {
            *result = tNew;
            return true;
        }
        t = tNew;
    }
    *result = tNew;
    return false;
}

}  // namespace kvx::riseset

using namespace kvx::riseset;

/// Prepares the day context: the civil date's 0 h UT (jd0), the zone in
/// days, local noon in UT, three local sidereal times at jd0 - 1, jd0 and
/// jd0 + 1 made increasing, the observer's latitude, and the Sun at the two
/// local midnights (apparent right ascensions made continuous). A null or
/// non-finite date leaves the context unprepared.
extern "C" void InitRiseSet(const ADate *date, const Observer *observer) {
    DayContext &c = g_day;
    c.prepared = false;
    if (!date) return;
    const double jd0 = CalcJd(date->year, date->month, date->day);
    if (!std::isfinite(jd0) || !std::isfinite(date->tz)) return;
    const double lon = observer ? observer->longitude : 0.0;
    const double lat = observer ? observer->latitude : 0.0;
    c.tzDays = date->tz / 24.0;
    c.jd0 = jd0;
    for (int i = 0; i < 3; ++i) {
        c.lst[i] = GetLst(jd0 - 1.0 + i, lon);
        if (i > 0 && c.lst[i] < c.lst[i - 1]) c.lst[i] += 360.0;
    }
    c.noonJd = jd0 - c.tzDays + 0.5;
    c.sinLat = std::sin(kvx::DegToRad(lat));
    c.cosLat = std::cos(kvx::DegToRad(lat));
    ATime t;
    SetATimeJd(c.noonJd - 0.5, date->tz, observer, &t);
    CalcSun(&t, &c.sunStart);
    SetATimeJd(c.noonJd + 0.5, date->tz, observer, &t);
    CalcSun(&t, &c.sunEnd);
    double &ra0 = c.sunStart.f[2], &ra1 = c.sunEnd.f[2];
    if (std::fabs(ra0 - ra1) > 180.0) (ra0 < ra1 ? ra0 : ra1) += 360.0;
    c.prepared = true;
}

/// The unseeded search; when it does not settle, two seeded retries from its
/// last two estimates; for a transit that none of them finds, the direct
/// iteration on the right ascension.
extern "C" int32_t GetRiseSet(double tz, int32_t body, const void *object, int32_t event, const Observer *observer,
                              double altitude, double *result) {
    if (!result || !g_day.prepared) return 0;
    double T = 0.0, L = 0.0;
    const int first = Search(tz, body, object, event, observer, altitude, false, &T, &L);
    if (first == kFound) {
        *result = T;
        return 1;
    }
    if (first == kNotConverged) {
        const double seeds[2] = {T, L};
        for (double seed : seeds) {
            double t = seed, unused = 0.0;
            if (Search(tz, body, object, event, observer, altitude, true, &t, &unused) == kFound &&
                InClosedDay(g_day, t)) {
                *result = t;
                return 1;
            }
        }
    }
    if (event == kTransit) return TransitFallback(tz, body, object, observer, result) ? 1 : 0;
    return 0;
}

/// GetRiseSet, then seeded searches one sidereal-day step (2 sidereal days
/// less one day) before and after the first result; distinct events of the
/// window are kept in ascending order.
extern "C" int32_t GetRiseSetEx(double tz, int32_t body, const void *object, int32_t event, const Observer *observer,
                                double altitude, double *results, int32_t maxCount) {
    if (maxCount < 1 || !results) return 0;
    if (!GetRiseSet(tz, body, object, event, observer, altitude, &results[0])) return 0;
    if (maxCount < 2) return 1;
    int count = 1;
    const double first = results[0];
    for (int s = -1; s <= 1; s += 2) {
        double t = first + s * kExSeedStep, unused = 0.0;
        if (!InClosedDay(g_day, t)) continue;
        if (Search(tz, body, object, event, observer, altitude, true, &t, &unused) != kFound) continue;
        if (!InClosedDay(g_day, t)) continue;
        bool distinct = true;
        for (int k = 0; k < count; ++k)
            if (std::fabs(results[k] - t) < 1e-6) distinct = false;
        if (distinct) results[count++] = t;
    }
    if (count >= 2) std::sort(results, results + count);
    return count;
}

/// Circumpolar test at local noon of the prepared day for the standard
/// horizon (dip, refraction, and the Sun's semi-diameter).
extern "C" int32_t CheckCircumPolar(int32_t body, const void *object, const ADate *date, const Observer *observer,
                                    int32_t *state) {
    if (!date || !state || !g_day.prepared) return 0;
    int s = 0;
    if (!CircumpolarState(body, object, date->tz, observer, 0.0, &s)) return 0;
    *state = s;
    return 1;
}

extern "C" int32_t GetSunRiseDeg(const ADate *date, const Observer *observer, double *result, int32_t degrees) {
    if (!date || !result) return 0;
    InitRiseSet(date, observer);
    return GetRiseSet(date->tz, kSun, nullptr, kRise, observer, static_cast<double>(degrees), result);
}

extern "C" int32_t GetSunSetDeg(const ADate *date, const Observer *observer, double *result, int32_t degrees) {
    if (!date || !result) return 0;
    InitRiseSet(date, observer);
    return GetRiseSet(date->tz, kSun, nullptr, kSet, observer, static_cast<double>(degrees), result);
}

extern "C" int32_t GetSunRise(const ADate *date, const Observer *observer, double *result) {
    return GetSunRiseDeg(date, observer, result, 0);
}

extern "C" int32_t GetSunSet(const ADate *date, const Observer *observer, double *result) {
    return GetSunSetDeg(date, observer, result, 0);
}

/// Box test on the raw coordinate differences (no cos(latitude) factor),
/// then the great-circle distance of AdToPaDist.
extern "C" int32_t IsTransit(const Ad *a, const Ad *b, double radius, double *positionAngle, double *distance) {
    if (!a || !b) return 0;
    const double box = 1.1 * radius;
    if (std::fabs(degmal2(a->a - b->a)) > box || std::fabs(degmal2(a->d - b->d)) > box) return 0;
    double pa = 0.0, dist = 0.0;
    AdToPaDist(a, b, &pa, &dist);
    if (positionAngle) *positionAngle = pa;
    if (distance) *distance = dist;
    return dist <= radius ? 1 : 0;
}
