// Physical ephemeris of the planets: the IAU rotation models (Archinal et
// al. 2018) turned into the quantities of the Astronomical Almanac's
// physical ephemerides (Explanatory Supplement to the Astronomical Almanac,
// 1992, sec. 7.4; Meeus, Astronomical Algorithms, 2nd ed. 1998, ch. 41-45),
// and the magnitudes of Mallama & Hilton (2018).
//
// Everything is done with vectors on the J2000.0 equatorial axes: the
// planet's orientation (pole and prime meridian) is taken at the
// light-time-retarded instant, the directions to the observer and to the
// Sun from the record's astrometric place and retarded heliocentric vector.
#include "solar/planet/physical.h"

#include <cmath>

#include "math/constants.h"
#include "math/vec3.h"
#include "solar/body/body_pipeline.h"
#include "solar/body/body_slots.h"
#include "solar/planet/physical_table.h"

namespace kvx::physical {

namespace {

double Dot(const double a[3], const double b[3]) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

void Unit(const double in[3], double out[3]) {
    const double n = vec3::Norm(in);
    for (int k = 0; k < 3; ++k) out[k] = in[k] / n;
}

double AsinDeg(double x) { return RadToDeg(std::asin(std::fmax(-1.0, std::fmin(1.0, x)))); }

// Position angle (degrees 0..360, from the north pole n through the east)
// of direction p seen at direction s.
double PositionAngle(const double n[3], const double s[3], const double p[3]) {
    double east[3] = {n[1] * s[2] - n[2] * s[1], n[2] * s[0] - n[0] * s[2], n[0] * s[1] - n[1] * s[0]};
    Unit(east, east);
    const double north[3] = {s[1] * east[2] - s[2] * east[1], s[2] * east[0] - s[0] * east[2],
                             s[0] * east[1] - s[1] * east[0]};
    return vec3::Reduce360(RadToDeg(std::atan2(Dot(p, east), Dot(p, north))));
}

// The Earth's pole and rotation (IAU 1976 precession in the model's form).
constexpr PlanetPhysical kEarth = {-3, 6378.1366, 6356.7519, 0.0, 0.0, 0.0, 0.0, -0.641, 90.0, -0.557, 190.147,
                                   360.9856235};

}  // namespace

bool Pole(int code, double jde, double pole[3], double *ra, double *dec, double *w) {
    if (code != -3 && (code < 0 || code > 7)) return false;
    const PlanetPhysical &p = code == -3 ? kEarth : gPlanetPhysical[code];
    const double d = jde - kJ2000, T = d / kDaysPerCentury;
    double a = p.poleRa0 + p.poleRa1 * T, de = p.poleDec0 + p.poleDec1 * T, wm = p.w0 + p.w1 * d;
    for (int k = 0; k < gPeriodicTermCount; ++k) {
        const PeriodicTerm &term = gPeriodicTerms[k];
        if (term.code != code) continue;
        const double arg = DegToRad(term.phase + term.rate * (term.perDay ? d : T));
        switch (term.target) {
            case Target::kRa: a += term.amplitude * std::sin(arg); break;
            case Target::kDec: de += term.amplitude * std::cos(arg); break;
            case Target::kW: wm += term.amplitude * std::sin(arg); break;
        }
    }
    const double ar = DegToRad(a), dr = DegToRad(de);
    pole[0] = std::cos(dr) * std::cos(ar);
    pole[1] = std::cos(dr) * std::sin(ar);
    pole[2] = std::sin(dr);
    if (ra) *ra = a;
    if (dec) *dec = de;
    if (w) *w = wm;
    return true;
}

bool Compute(int code, const ATime &t, const BodyPos &planet, Geometry *g) {
    if (code < 0 || code > 7) return false;
    const double *f = planet.f;
    // Observer to planet (astrometric place and distance), Sun to planet at
    // the retarded instant; the retardation from the geocentric distance.
    const double ra = DegToRad(f[body::kRaJ2000]), de = DegToRad(f[body::kDecJ2000]);
    const double s[3] = {std::cos(de) * std::cos(ra), std::cos(de) * std::sin(ra), std::sin(de)};
    const double *h = &f[body::planet_slot::kHelioRetarded];
    g->delta = f[body::kDistance];
    g->r = vec3::Norm(h);
    const double geo[3] = {g->delta * s[0] + t.obsPos[0], g->delta * s[1] + t.obsPos[1],
                           g->delta * s[2] + t.obsPos[2]};
    g->retardedJde = t.jde - vec3::Norm(geo) * kLightDaysPerAu;

    double pole[3], w;
    Pole(code, g->retardedJde, pole, &g->poleRa, &g->poleDec, &w);
    const double toEarth[3] = {-s[0], -s[1], -s[2]};
    const double toSun[3] = {-h[0] / g->r, -h[1] / g->r, -h[2] / g->r};
    g->earthLat = AsinDeg(Dot(pole, toEarth));
    g->sunLat = AsinDeg(Dot(pole, toSun));
    g->phaseAngle = RadToDeg(std::acos(std::fmax(-1.0, std::fmin(1.0, Dot(toEarth, toSun)))));

    // Equator axes: x toward the ascending node of the body's equator on the
    // J2000.0 equator (right ascension poleRa + 90), y = pole x x.
    const double a0 = DegToRad(g->poleRa);
    const double x[3] = {-std::sin(a0), std::cos(a0), 0.0};
    const double y[3] = {pole[1] * x[2] - pole[2] * x[1], pole[2] * x[0] - pole[0] * x[2],
                         pole[0] * x[1] - pole[1] * x[0]};
    g->phiEarth = RadToDeg(std::atan2(Dot(toEarth, y), Dot(toEarth, x)));
    if (code == 3) {
        // Jupiter's Systems I and II count from the node of its equator on
        // the mean equator of date (Meeus ch. 43).
        double pd[3], ed[3];
        vec3::Rotate(t.precFromJ2000, pole, pd);
        vec3::Rotate(t.precFromJ2000, toEarth, ed);
        const double ad = std::atan2(pd[1], pd[0]);
        const double xd[3] = {-std::sin(ad), std::cos(ad), 0.0};
        const double yd[3] = {pd[1] * xd[2] - pd[2] * xd[1], pd[2] * xd[0] - pd[0] * xd[2],
                              pd[0] * xd[1] - pd[1] * xd[0]};
        g->phiEarthOfDate = RadToDeg(std::atan2(Dot(ed, yd), Dot(ed, xd)));
        // Meeus' correction to the meridian of the illuminated disk,
        // (1 - cos i) / 2 radians, positive when the planet's heliocentric
        // longitude exceeds the Earth's.
        const double e[3] = {h[0] - geo[0], h[1] - geo[1], h[2] - geo[2]};
        const double cross[3] = {e[1] * h[2] - e[2] * h[1], e[2] * h[0] - e[0] * h[2], e[0] * h[1] - e[1] * h[0]};
        const double eps = DegToRad(GetEp(kJ2000));
        const double c = RadToDeg((1.0 - std::cos(DegToRad(g->phaseAngle))) / 2.0);
        g->phaseCorrection = cross[2] * std::cos(eps) - cross[1] * std::sin(eps) < 0.0 ? -c : c;
    }
    g->phiSun = RadToDeg(std::atan2(Dot(toSun, y), Dot(toSun, x)));
    const bool direct = gPlanetPhysical[code].w1 > 0.0;
    g->earthLon = vec3::Reduce360(direct ? w - g->phiEarth : g->phiEarth - w);
    g->sunLon = vec3::Reduce360(direct ? w - g->phiSun : g->phiSun - w);

    // The true celestial pole of date on the J2000.0 axes.
    const double z[3] = {t.nutInvMtx[2], t.nutInvMtx[5], t.nutInvMtx[8]};
    double n[3];
    vec3::Rotate(t.precToJ2000, z, n);
    g->axisAngle = PositionAngle(n, s, pole);
    return true;
}

// Mallama & Hilton 2018, Astronomy and Computing 25, 10, eqs. 1-17 (V band,
// the geocentric ranges of phase angle and their supplements for Mercury,
// Venus, the Earth and Jupiter).
bool MagnitudeMH(int code, const Geometry &g, double *mag) {
    const double i = g.phaseAngle, dist = 5.0 * std::log10(g.r * g.delta);
    double m;
    switch (code) {
        case 0:
            m = -0.613 + i * (6.3280e-2 + i * (-1.6336e-3 + i * (3.3644e-5 + i * (-3.4265e-7 + i * (1.6893e-9 + i * -3.0334e-12)))));
            break;
        case 1:
            m = i < 163.7 ? -4.384 + i * (-1.044e-3 + i * (3.687e-4 + i * (-2.814e-6 + i * 8.938e-9)))
                          : 236.05828 + i * (-2.81914 + i * 8.39034e-3);
            break;
        case 2: m = i <= 50.0 ? -1.601 + (2.267e-2 - 1.302e-4 * i) * i : -0.367 + (-0.02573 + 3.445e-4 * i) * i; break;
        case 3:
            if (i <= 12.0) {
                m = -9.395 + (-3.7e-4 + 6.16e-4 * i) * i;
            } else {
                const double x = i / 180.0;
                m = -9.428 - 2.5 * std::log10(1.0 + x * (-1.507 + x * (-0.363 + x * (-0.062 + x * (2.809 + x * -1.876)))));
            }
            break;
        case 4: {
            // Rings: the geometric mean of the saturnicentric latitudes of the
            // Sun and the observer, zero when they see opposite faces.
            const double product = g.earthLat * g.sunLat;
            const double beta = product > 0.0 ? std::sqrt(product) : 0.0;
            if (i > 6.5 || beta > 27.0) return false;
            const double sb = std::sin(DegToRad(beta));
            m = -8.914 - 1.825 * sb + 0.026 * i - 0.378 * sb * std::exp(-2.25 * i);
            break;
        }
        case 5: {
            // Planetographic latitudes, tan(graphic) = tan(centric) / (1 - f)^2.
            const double k = 1.0 - gPlanetPhysical[5].flattening;
            const auto graphic = [k](double lat) {
                return RadToDeg(std::atan(std::tan(DegToRad(lat)) / (k * k)));
            };
            const double lat = (std::fabs(graphic(g.earthLat)) + std::fabs(graphic(g.sunLat))) / 2.0;
            m = -7.110 - 0.00084 * lat + (i > 3.1 ? (6.587e-3 + 1.045e-4 * i) * i : 0.0);
            break;
        }
        case 6: {
            const double year = 2000.0 + (g.retardedJde - kJ2000) / 365.25;
            m = std::fmin(-6.89, std::fmax(-7.00, -6.89 - 0.0054 * (year - 1980.0)));
            if (i > 1.9) {
                if (year < 2000.0) return false;
                m += (7.944e-3 + 9.617e-5 * i) * i;
            }
            break;
        }
        default: return false;
    }
    *mag = m + dist;
    return true;
}

void JupiterSystems(const Geometry &g, double *cm1, double *cm2) {
    const double d = g.retardedJde - kJupiterSystemEpoch;
    *cm1 = vec3::Reduce360(kJupiterSystem1[0] + kJupiterSystem1[1] * d - g.phiEarthOfDate);
    *cm2 = vec3::Reduce360(kJupiterSystem2[0] + kJupiterSystem2[1] * d - g.phiEarthOfDate);
}

void SaturnRing(const Geometry &g, double *deltaU, double *major, double *minor) {
    double du = std::fabs(g.phiSun - g.phiEarth);
    *deltaU = du > 180.0 ? 360.0 - du : du;
    *major = kSaturnRingAt1Au / g.delta;
    *minor = *major * std::fabs(std::sin(DegToRad(g.earthLat)));
}

void Fill(int code, const ATime &t, BodyPos *out) {
    using namespace body::planet_slot;
    double *f = out->f;
    body::FillSlots(kPhysicalFirst, kDiameter, -1.0, out);
    Geometry g;
    if (!Compute(code, t, *out, &g)) return;
    f[kEarthLat] = g.earthLat;
    f[kSunLat] = g.sunLat;
    f[kAxisAngle] = g.axisAngle;
    f[kCentralMeridian] = g.earthLon;
    f[kSunLon] = g.sunLon;
    f[kPhaseAngle] = g.phaseAngle;
    const double fraction = (1.0 + std::cos(DegToRad(g.phaseAngle))) / 2.0;
    f[kDefect] = f[kDiameter] * (1.0 - fraction);
    f[kPoleRa] = vec3::Reduce360(g.poleRa);
    f[kPoleDec] = g.poleDec;
    const PlanetPhysical &p = gPlanetPhysical[code];
    const double e2 = 1.0 - (p.polarRadius / p.eqRadius) * (p.polarRadius / p.eqRadius);
    const double c = std::cos(DegToRad(g.earthLat));
    f[kPolarDiameter] = f[kDiameter] * std::sqrt(1.0 - e2 * c * c);
    double m;
    if (MagnitudeMH(code, g, &m)) f[kMagnitudeMH] = m;
    if (code == 3) JupiterSystems(g, &f[kSpecial1], &f[kSpecial2]);
    if (code == 4) SaturnRing(g, &f[kSpecial1], &f[kSpecial2], &f[kSpecial3]);
}

}  // namespace kvx::physical

using namespace kvx;

extern "C" const PlanetPhysical *GetPlanetPhysicalTable(int32_t *count) {
    if (count) *count = 8;
    return physical::gPlanetPhysical;
}

extern "C" int32_t GetPoleXyz(int32_t code, double jde, double pole[3], double *w) {
    if (!pole) return 0;
    double p[3], wm;
    if (!physical::Pole(code, jde, p, nullptr, nullptr, &wm)) return 0;
    for (int k = 0; k < 3; ++k) pole[k] = p[k];
    if (w) *w = vec3::Reduce360(wm);
    return 1;
}

extern "C" int32_t GetNpJupiter(const ATime *t, const BodyPos *jupiter, NpJupiter *out) {
    if (!t || !jupiter || !out) return 0;
    physical::Geometry g;
    physical::Compute(3, *t, *jupiter, &g);
    physical::JupiterSystems(g, &out->cm1, &out->cm2);
    out->phaseCorrection = g.phaseCorrection;
    out->cm3 = g.earthLon;
    out->earthLat = g.earthLat;
    out->sunLat = g.sunLat;
    out->axisAngle = g.axisAngle;
    return 1;
}

extern "C" int32_t GetNpSaturn(const ATime *t, const BodyPos *saturn, NpSaturn *out) {
    if (!t || !saturn || !out) return 0;
    physical::Geometry g;
    physical::Compute(4, *t, *saturn, &g);
    physical::SaturnRing(g, &out->deltaU, &out->majorAxis, &out->minorAxis);
    out->earthLat = g.earthLat;
    out->sunLat = g.sunLat;
    out->axisAngle = g.axisAngle;
    out->cm3 = g.earthLon;
    return 1;
}

extern "C" int32_t GetPlanetMagMH(int32_t code, const ATime *t, const BodyPos *planetPos, double *mag) {
    if (!t || !planetPos || !mag) return 0;
    physical::Geometry g;
    if (!physical::Compute(code, *t, *planetPos, &g)) return 0;
    return physical::MagnitudeMH(code, g, mag) ? 1 : 0;
}
