// The time-and-observer record: the setters and their common fill, sidereal
// time, and the conversions between an observer's geodetic position and a
// geocentric vector on the axes of the J2000.0 equator.
//
// Sidereal time is the IAU 1982 expression of Greenwich mean sidereal time
// (S. Aoki et al., "The new definition of universal time", A&A 105, 359,
// 1982) plus the equation of the equinoxes dpsi cos(eps). The Earth is the
// GRS80 ellipsoid (H. Moritz, "Geodetic Reference System 1980", Bulletin
// Geodesique 54, 395, 1980): a = 6378.137 km, f = 1/298.257222101.
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "time/precession.h"
#include "platform/thread_cache.h"

namespace {

constexpr double kEarthFlattening = 0.003352810681182319;  // 1 / 298.257222101
constexpr double kEarthE2 = 0.006694380022900787;          // (2 - f) f
constexpr double kEarthOneMinusE2 = 0.9933056199770992;    // 1 - e^2
constexpr double kAuPerKm = 6.684587153547039e-9;          // 1 / 149597870

void ObserverVector(const Observer *obs, double jd, double theta, double e2, double oneMinusE2, double a,
                    double out[3]);

// The fill shared by the three setters, once the date fields, jd and jde
// are in place. The steps run in this order; later ones use earlier results.
// When jde is the library's UtToDt(jd), the local sidereal time just filled
// is exactly GetLst(jd, longitude), so the observer's vector reuses it
// instead of evaluating Delta T and the nutation series a second time.
void CommonFill(const Observer *obs, bool libraryDeltaT, ATime *t) {
    if (obs) {
        t->obsLatitude = obs->latitude;
        t->obsLongitude = obs->longitude;
        t->obsHeight = obs->height;
    } else {
        t->obsLatitude = 0.0;
        t->obsLongitude = 0.0;
        t->obsHeight = -kvx::kEarthRadiusKm * 1000.0;
    }
    t->t = GetT(t->jde);
    t->t2 = GetT2(t->jde);
    t->eps = GetEp(t->jde);
    GetNutationParam(t->jde, t->nutation);
    GetNutationMtx(t->nutation, t->eps, t->nutMtx);
    GetInvMatrix(t->nutMtx, t->nutInvMtx);
    t->lst = GetLst2(t->jd, t->eps, t->nutation[0], t->obsLongitude);
    RotateX(t->eps, t->eqToEcl);
    RotateX(-t->eps, t->eclToEq);
    // Both matrices share the bias-precession matrix of the date.
    kvx::prec::DateMatrix date;
    date.jd = t->jde;
    kvx::prec::PrecessionBetween(t->jde, kvx::kJ2000, &date, t->precToJ2000);
    kvx::prec::PrecessionBetween(kvx::kJ2000, t->jde, &date, t->precFromJ2000);
    t->epsTrue = t->nutation[1] + t->eps;
    if (obs && libraryDeltaT)
        ObserverVector(obs, t->jd, t->lst - obs->longitude, kEarthE2, kEarthOneMinusE2, kvx::kEarthRadiusKm, t->obsPos);
    else
        GetTopocenter(obs, t->jd, t->obsPos);
}

// The observer's place on the ellipsoid in km: x1, y1 in the equator
// (from the meridian of Greenwich), z along the axis.
struct EllipsoidPlace {
    double x1, y1, z;
};

EllipsoidPlace PlaceOnEllipsoid(const Observer &obs, double e2, double oneMinusE2, double a) {
    const double phi = kvx::DegToRad(obs.latitude);
    const double lambda = kvx::DegToRad(obs.longitude);
    const double sinPhi = std::sin(phi);
    const double n = a / std::sqrt(1.0 - e2 * sinPhi * sinPhi);
    const double h = obs.height / 1000.0;
    const double rhoC = (n + h) * std::cos(phi);
    return {rhoC * std::cos(lambda), rhoC * std::sin(lambda), (oneMinusE2 * n + h) * sinPhi};
}

// The place depends on the observer and the ellipsoid alone, and a run of
// fills is usually for one observer: the last one is kept per thread.
EllipsoidPlace CachedPlace(const Observer &obs, double e2, double oneMinusE2, double a) {
    struct Last {
        double key[6] = {std::nan(""), 0.0, 0.0, 0.0, 0.0, 0.0};
        EllipsoidPlace place{};
    };
    Last &last = kvx::platform::ThreadCache<Last>();
    const double key[6] = {obs.latitude, obs.longitude, obs.height, e2, oneMinusE2, a};
    bool same = true;
    for (int k = 0; k < 6; ++k) same = same && key[k] == last.key[k];
    if (!same) {
        last.place = PlaceOnEllipsoid(obs, e2, oneMinusE2, a);
        for (int k = 0; k < 6; ++k) last.key[k] = key[k];
    }
    return last.place;
}

// Observer on an ellipsoid (e2, radius a in km, (1 - e2) given separately so
// the Earth's stored constant is used as is) turned by the sidereal angle
// theta (degrees), in AU on the J2000.0 axes.
void ObserverVector(const Observer *obs, double jd, double theta, double e2, double oneMinusE2, double a,
                    double out[3]) {
    const EllipsoidPlace p = CachedPlace(*obs, e2, oneMinusE2, a);
    const double th = kvx::DegToRad(theta);
    const double c = std::cos(th), s = std::sin(th);
    const Dc v{(c * p.x1 - s * p.y1) * kAuPerKm, (c * p.y1 + s * p.x1) * kAuPerKm, p.z * kAuPerKm};
    double m[9];
    GetPrecMtx(jd, kvx::kJ2000, m);
    Dc w;
    RotateDc(&v, m, &w);
    out[0] = w.x;
    out[1] = w.y;
    out[2] = w.z;
}

// Date fields 1 to 7 of an ATime: local time JdToDate2(jd + tz/24) in zone tz.
void LocalDate(double jd, double tz, ATime *t) {
    ADate d{};
    JdToDate2(jd + tz / 24.0, &d);
    t->year = d.year;
    t->month = d.month;
    t->day = d.day;
    t->hour = d.hour;
    t->minute = d.minute;
    t->second = d.second;
    t->tz = tz;
}

}  // namespace

extern "C" void SetATimeDate(const ADate *date, const Observer *obs, ATime *out) {
    if (!date || !out) return;
    out->year = date->year;
    out->month = date->month;
    out->day = date->day;
    out->hour = date->hour;
    out->minute = date->minute;
    out->second = date->second;
    out->tz = date->tz;
    out->jd = GetJd(date);
    out->jde = UtToDt(out->jd);
    CommonFill(obs, true, out);
}

extern "C" void SetATimeJd(double jd, double tz, const Observer *obs, ATime *out) {
    if (!out) return;
    LocalDate(jd, tz, out);
    out->jd = jd;
    out->jde = UtToDt(jd);
    CommonFill(obs, true, out);
}

extern "C" void SetATimeJd2(double jd, double deltaT, double tz, const Observer *obs, ATime *out) {
    if (!out) return;
    LocalDate(jd, tz, out);
    out->jd = jd;
    out->jde = jd + deltaT / kvx::kSecondsPerDay;
    CommonFill(obs, false, out);
}

// GMST is the IAU 1982 series in seconds; the equation of the equinoxes has no
// further terms.
extern "C" double GetLst2(double jd, double obliquity, double dpsi, double longitude) {
    const double t = (jd - kvx::kJ2000) / kvx::kDaysPerCentury;
    const double theta = 67310.54841 + 3164400184.812866 * t + 0.093104 * t * t - 6.2e-6 * t * t * t;
    const double h = std::cos(kvx::DegToRad(obliquity)) * dpsi / 15.0 + theta / 3600.0 + longitude / 15.0;
    return hourmal(h) / 24.0 * 360.0;
}

extern "C" double GetLst(double jd, double longitude) {
    const double jde = UtToDt(jd);
    double nutation[2];
    GetNutationParam(jde, nutation);
    const double eps = GetEp(jde);
    return GetLst2(jd, eps, nutation[0], longitude);
}

extern "C" void GetTopocenter(const Observer *obs, double jd, double out[3]) {
    if (!out) return;
    if (!obs) {
        out[0] = out[1] = out[2] = 0.0;
        return;
    }
    const double theta = GetLst(jd, obs->longitude) - obs->longitude;
    ObserverVector(obs, jd, theta, kEarthE2, kEarthOneMinusE2, kvx::kEarthRadiusKm, out);
}

extern "C" void ObsToPcEqtXyz(const Observer *obs, double jd, double theta, double flattening,
                              double equatorialRadius, double out[3]) {
    if (!out) return;
    if (!obs) {
        out[0] = out[1] = out[2] = 0.0;
        return;
    }
    const double e2 = (2.0 - flattening) * flattening;
    ObserverVector(obs, jd, theta, e2, 1.0 - e2, equatorialRadius, out);
}

extern "C" void ObsToGcEqtXyz(const Observer *obs, double jd, double out[3]) {
    if (!out) return;
    ObsToPcEqtXyz(obs, jd, GetLst(jd, 0.0), kEarthFlattening, kvx::kEarthRadiusKm, out);
}

extern "C" void PcEqtXyzToObs(const double xyz[3], double jd, double theta, double flattening,
                              double equatorialRadius, Observer *out) {
    if (!xyz || !out) return;
    if (xyz[0] * xyz[0] + xyz[1] * xyz[1] + xyz[2] * xyz[2] < 1e-12) {
        out->latitude = 0.0;
        out->longitude = 0.0;
        out->height = -equatorialRadius * 1000.0;
        return;
    }
    const double e2 = (2.0 - flattening) * flattening;
    double m[9];
    GetPrecMtx(kvx::kJ2000, jd, m);
    const Dc v{xyz[0], xyz[1], xyz[2]};
    Dc w;
    RotateDc(&v, m, &w);
    const double x = w.x * kvx::kKmPerAu, y = w.y * kvx::kKmPerAu, z = w.z * kvx::kKmPerAu;

    const double longitude = degmal(kvx::RadToDeg(std::atan2(y, x)) - theta);
    const double p = std::sqrt(x * x + y * y);
    double phi = kvx::RadToDeg(std::atan(z / p / (1.0 - e2)));
    double n = equatorialRadius;
    for (int i = 0; i < 50; ++i) {
        const double s = std::sin(kvx::DegToRad(phi));
        n = equatorialRadius / std::sqrt(1.0 - e2 * s * s);
        phi = kvx::RadToDeg(std::atan(z / (p - e2 * n * std::cos(kvx::DegToRad(phi)))));
        // This exit test compares with 100 degrees, which no latitude
        // reaches: all 50 iterations always run.
        if (std::fabs(100.0 - phi) < 1.7453292519943295e-14) break;
    }
    out->latitude = phi;
    out->longitude = longitude;
    out->height = (p / std::cos(kvx::DegToRad(phi)) - n) * 1000.0;
}

extern "C" void GcEqtXyzToObs(const double xyz[3], double jd, Observer *out) {
    if (!xyz || !out) return;
    PcEqtXyzToObs(xyz, jd, GetLst(jd, 0.0), kEarthFlattening, kvx::kEarthRadiusKm, out);
}
