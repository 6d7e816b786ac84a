// Earth-fixed and inertial places, look angles, the J2000.0 conversions
// and the Earth's shadow for artificial satellites. Inertial axes are the
// propagator's equator and equinox of date turned by the Greenwich mean
// sidereal angle; the Earth is the GRS80 ellipsoid (T. S. Kelso, "Orbital
// Coordinate Systems", Satellite Times 1995-96, parts I-III).
#include "asat/geometry.h"

#include <cmath>

#include "math/constants.h"

namespace kvx::asat {

namespace {

constexpr double kRadiusKm = 6378.137;
constexpr double kE2 = 0.006694384999587949;  // GRS80 first eccentricity squared
constexpr double kTwoPi = 2.0 * kPi;
// Earth's rotation, rad/s: the sidereal rate of the angle below.
constexpr double kOmegaEarth = 86636.555366976 / 86400.0 * kTwoPi / 86400.0;

// The propagator's two-argument arctangent (see sgp4.cpp).
double Actan(double s, double c) {
    if (c == 0.0) return s > 0.0 ? kPi / 2.0 : 3.0 * kPi / 2.0;
    const double a = std::atan(s / c);
    return c > 0.0 ? a : a + kPi;
}

double Reduce2Pi(double x) {
    double r = x - Trunc(x / kTwoPi) * kTwoPi;
    if (r < 0.0) r += kTwoPi;
    return r;
}

}  // namespace

// GMST of Aoki et al. (1982) evaluated at 0 h UT with the day's fraction
// added at the sidereal rate.
double SiderealAngle(double jd) {
    const double whole = Floor(jd - 0.5);
    const double jd0 = whole + 0.5;
    const double f = (jd - 0.5) - whole;
    const double t = (jd0 - 2451545.0) / 36525.0;
    double s = 24110.54841 + 8640184.812866 * t + 0.093104 * t * t - 6.2e-6 * t * t * t + f * 86636.555366976;
    s = s - Trunc(s / 86400.0) * 86400.0;
    if (s < 0.0) s += 86400.0;
    return s * kTwoPi / 86400.0;
}

Station MakeStation(const Lla &place) {
    const double phi = DegToRad(place.latitude);
    return Station{std::sin(phi), std::cos(phi), DegToRad(place.longitude), place.height / 1000.0};
}

namespace {

void StationXyz(const Station &s, double theta, double out[3]) {
    const double n = kRadiusKm / std::sqrt(1.0 - kE2 * s.sinLat * s.sinLat);
    const double xp = (n + s.height) * s.cosLat * std::cos(s.lonRad);
    const double yp = (n + s.height) * s.cosLat * std::sin(s.lonRad);
    out[0] = xp * std::cos(theta) - yp * std::sin(theta);
    out[1] = yp * std::cos(theta) + xp * std::sin(theta);
    out[2] = ((1.0 - kE2) * n + s.height) * s.sinLat;
}

}  // namespace

// Topocentric south, east and zenith components of the range vector; the
// rate of the elevation follows from the range rate relative to the
// rotating observer and the turning zenith.
Look LookAt(double jd, const Station &s, const double r[3], const double v[3]) {
    const double gmst = SiderealAngle(jd);
    double obs[3];
    StationXyz(s, gmst, obs);
    const double theta = Reduce2Pi(gmst + s.lonRad);
    const double st = std::sin(theta), ct = std::cos(theta);
    const double rx = r[0] - obs[0], ry = r[1] - obs[1], rz = r[2] - obs[2];
    const double south = s.sinLat * ct * rx + s.sinLat * st * ry - s.cosLat * rz;
    const double east = -st * rx + ct * ry;
    const double zenith = s.cosLat * ct * rx + s.cosLat * st * ry + s.sinLat * rz;
    Look out{0.0, 0.0, 0.0, 0.0};
    out.range = std::sqrt(rx * rx + ry * ry + rz * rz);
    if (!(out.range > 0.0)) return out;
    // atan(-east/south) is undefined on the east-west line: there the
    // azimuth is due east or west.
    double az;
    if (south == 0.0) {
        az = east > 0.0 ? kPi / 2.0 : east < 0.0 ? 3.0 * kPi / 2.0 : 0.0;
    } else {
        az = std::atan(-east / south);
        if (south > 0.0) az += kPi;
        if (az < 0.0) az += kTwoPi;
    }
    out.azimuth = az;
    const double sinEl = zenith / out.range;
    out.elevation = std::asin(sinEl > 1.0 ? 1.0 : sinEl < -1.0 ? -1.0 : sinEl);
    if (v) {
        // d/dt (rho . u / |rho|) with u the zenith turning at the Earth's rate.
        const double dx = v[0] + kOmegaEarth * obs[1], dy = v[1] - kOmegaEarth * obs[0], dz = v[2];
        const double ux = s.cosLat * ct, uy = s.cosLat * st, uz = s.sinLat;
        const double udx = -kOmegaEarth * uy, udy = kOmegaEarth * ux;
        const double rdot = (rx * dx + ry * dy + rz * dz) / out.range;
        const double dsin = (dx * ux + dy * uy + dz * uz + rx * udx + ry * udy) / out.range - sinEl * rdot / out.range;
        const double cosEl = std::cos(out.elevation);
        out.elevationRate = cosEl > 1e-12 ? dsin / cosEl : 0.0;
    }
    return out;
}

}  // namespace kvx::asat

using namespace kvx;
using namespace kvx::asat;

extern "C" void ASatLlaToXyz(double jd, const Lla *place, double *xyz) {
    if (!place || !xyz) return;
    StationXyz(MakeStation(*place), SiderealAngle(jd), xyz);
}

// Latitude by fixed-point iteration on the ellipsoid's normal (Kelso,
// part III); the height from the normal's foot, stable at every latitude.
extern "C" void ASatXyzToLla(double jd, const double *xyz, Lla *place) {
    if (!xyz || !place) return;
    const double x = xyz[0], y = xyz[1], z = xyz[2];
    const double r = std::sqrt(x * x + y * y);
    if (!(r > 0.0) && z == 0.0) {
        *place = Lla{0.0, 0.0, -kRadiusKm * 1000.0};
        return;
    }
    const double lon = Reduce2Pi(Actan(y, x) - SiderealAngle(jd));
    double phi = std::atan2(z, r);
    double n = kRadiusKm;
    for (int i = 0; i < 50; ++i) {
        const double sp = std::sin(phi);
        n = kRadiusKm / std::sqrt(1.0 - kE2 * sp * sp);
        const double next = std::atan2(z + n * kE2 * sp, r);
        const double change = std::fabs(next - phi);
        phi = next;
        if (!(change >= 1e-12)) break;
    }
    const double sp = std::sin(phi), cp = std::cos(phi);
    n = kRadiusKm / std::sqrt(1.0 - kE2 * sp * sp);
    const double h = r * cp + z * sp - n * (1.0 - kE2 * sp * sp);
    *place = Lla{RadToDeg(phi), RadToDeg(lon), h * 1000.0};
}

extern "C" int32_t ASatLookAngle(double jd, const Lla *observer, const double *satXyz, double *azimuth,
                                 double *elevation, double *range) {
    if (!observer || !satXyz) return 0;
    const Look l = LookAt(jd, MakeStation(*observer), satXyz, nullptr);
    if (azimuth) *azimuth = l.azimuth;
    if (elevation) *elevation = l.elevation;
    if (range) *range = l.range;
    return 1;
}

extern "C" double *ASatAppToJ2000(const ATime *t, double *dc) {
    if (!t || !dc) return nullptr;
    double m[9];
    RotateZ(-(std::cos(DegToRad(t->eps)) * t->nutation[0]), m);
    Dc v{dc[0], dc[1], dc[2]};
    RotateDc(&v, m, &v);
    RotateDc(&v, t->precToJ2000, &v);
    dc[0] = v.x;
    dc[1] = v.y;
    dc[2] = v.z;
    return dc;
}

extern "C" void ASatHrzToAd(double jd, const Observer *observer, double azimuth, double altitude, Ad *out) {
    if (!out) return;
    ATime t;
    SetATimeJd(jd, 0.0, observer, &t);
    const Ad hz{degmal(azimuth + 180.0), altitude};
    Coordinates(&t, 1, &hz, 3, out);
}

// The observer's geocentric radius from the series in cos(phi) of the
// IAU 1964 figure (Explanatory Supplement 1961, 4F), metres.
extern "C" void ASatLLDToAd(double jd, const Observer *observer, double longitude, double latitude, double distanceKm,
                            Ad *out) {
    if (!observer || !out) return;
    const double phi = DegToRad(observer->latitude);
    const double lam = DegToRad(observer->longitude);
    const double c = std::cos(phi);
    const double rho = (0.998327112 + 0.001676399 * c * c + 3.519e-6 * c * c * c * c) * 6378140.0 + observer->height;
    const double lo = DegToRad(longitude), la = DegToRad(latitude);
    const double d[3] = {distanceKm * 1000.0 * std::cos(lo) * std::cos(la) - rho * std::cos(lam) * c,
                         distanceKm * 1000.0 * std::sin(lo) * std::cos(la) - rho * std::sin(lam) * c,
                         distanceKm * 1000.0 * std::sin(la) - rho * std::sin(phi)};
    const double horiz = std::sqrt(d[0] * d[0] + d[1] * d[1]);
    Observer pseudo;
    pseudo.longitude = RadToDeg(Actan(d[1], d[0]));
    pseudo.latitude = RadToDeg(std::atan2(d[2], horiz));
    pseudo.height = std::sqrt(horiz * horiz + d[2] * d[2]);
    ATime t;
    SetATimeJd(jd, 0.0, &pseudo, &t);
    const Ad zenith{180.0, 90.0};
    Coordinates(&t, 1, &zenith, 3, out);
}

// A cone of the Earth's equatorial radius narrowing to a point 1.5 million
// km behind the Earth, with a linear fade over its outer 0.5 %.
extern "C" double ASatEarthShadow(const double *satFromSun, const double *earthFromSun) {
    if (!satFromSun || !earthFromSun) return 0.0;
    const double *s = satFromSun, *e = earthFromSun;
    const double cx = s[1] * e[2] - s[2] * e[1], cy = s[2] * e[0] - s[0] * e[2], cz = s[0] * e[1] - s[1] * e[0];
    const double eLen = std::sqrt(e[0] * e[0] + e[1] * e[1] + e[2] * e[2]);
    const double p = std::sqrt(cx * cx + cy * cy + cz * cz) / eLen * kKmPerAu;
    if (!(6378.137 > p)) return 0.0;
    const double ds = std::sqrt(s[0] * s[0] + s[1] * s[1] + s[2] * s[2]) * kKmPerAu;
    const double de = eLen * kKmPerAu;
    if (!(ds > de)) return 0.0;
    if (!(de + 1500000.0 > ds)) return 0.0;
    const double cone = (1.0 - (ds - de) / 1500000.0) * 6378.137;
    if (!(cone > p)) return 0.0;
    if (0.995 * cone > p) return 1.0;
    const double f = 1.0 - (p - 0.995 * cone) / (0.005 * cone);
    return f < 0.0 ? 0.0 : f > 1.0 ? 1.0 : f;
}
