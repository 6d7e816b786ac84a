// The planets: the dispatcher of heliocentric vectors, CalcPlanet,
// CalcPlanetLbr, the phase and the magnitudes.
#include "solar/planet/planet.h"

#include <cmath>
#include <limits>

#include "comet/comet.h"
#include "kvxlib.h"
#include "math/constants.h"
#include "math/vec3.h"
#include "solar/body/body_pipeline.h"
#include "solar/planet/dwarf_planet_elements.h"
#include "solar/ephem/jpl_query.h"
#include "solar/planet/orbit_elements.h"
#include "solar/planet/physical.h"
#include "solar/planet/planet_series.h"
#include "solar/ephem/planet_xyz.h"
#include "solar/sun/sun.h"
#include "solar/sun/sun_theory.h"

namespace kvx::planet {

namespace {

// Visual magnitude at 1 AU (V0) and apparent diameter at 1 AU (arcseconds)
// of codes 0..11.
struct MagDiameter {
    double v0, s0;
};
using vec3::Norm;
using vec3::Rotate;
using vec3::ToAngles;

constexpr MagDiameter kMagDiameter[12] = {
    {-0.42, 3.3638}, {-4.4, 8.3442},   {-1.52, 4.6827}, {-9.4, 98.5728}, {-8.88, 83.0972}, {-7.19, 35.2406},
    {-6.87, 34.1445}, {-1.0, 1.638},   {-1.1, 1.6035},  {3.3, 0.6522},   {-0.1, 1.0355},   {0.2, 1.3512},
};

// Two-body extrapolation from the nearer end of the position file's entry.
int Extrapolate(int code, double jde, double out[3]) {
    double start, end;
    if (!planetxyz::Range(code, &start, &end)) return 0;
    if (jde >= start && jde <= end) return 0;
    const double edge = jde <= start ? start : end;
    double p[3], v[3];
    if (!jpl::Query(code, edge, -2, p, v) && !planetxyz::Lookup(code, edge, p, v)) return 0;
    OrbitElm el;
    if (!CalPVtoElm(p, v, edge, GetEp(kJ2000), 2000.0, &el)) return 0;
    // The mean motion of the osculating orbit, Gaussian constant.
    double ecl[3];
    if (!GetPlanetByElement(&el, jde, ecl, nullptr)) return 0;
    vec3::EclipticToEquator(GetEp(kJ2000), ecl, out);
    return 1;
}

// Mean elements of date (Standish), ecliptic of J2000 -> J2000 equator.
void FromMeanElements(int code, double jde, double out[3]) {
    OrbitElm el;
    GetPlanetOrbitElm(code, jde, &el);
    // Far outside the range of the elements' polynomials the eccentricity
    // can leave 0..1; GetPlanetByElement then gives no position, and
    // neither does this (NaN rather than uninitialised values).
    const double none = std::numeric_limits<double>::quiet_NaN();
    double ecl[3] = {none, none, none};
    GetPlanetByElement(&el, jde, ecl, nullptr);
    vec3::EclipticToEquator(GetEp(kJ2000), ecl, out);
}

}  // namespace

int HelioVector(int code, double jde, double out[3]) {
    if (!ValidCode(code)) return 0;
    if (jpl::Query(code, jde, -2, out, nullptr)) return 1;
    if (planetxyz::Lookup(code, jde, out, nullptr)) return 1;
    if (code != -3 && Extrapolate(code, jde, out)) return 1;
    if (code >= 8) return comet::HelioJ2000(kDwarfPlanetElements[code - 8], jde, out);
    // Inside the built-in theories' span: the Earth as the negated Sun, and
    // Mercury, Venus and Jupiter from their analytic series. Everything else
    // (the Earth and these three outside the span too) from the mean
    // elements of date.
    if (InSeriesRange(jde)) {
        if (code == -3) {
            sun::GetSunVector(jde, out);
            out[0] = -out[0];
            out[1] = -out[1];
            out[2] = -out[2];
            return 1;
        }
        if (HasSeries(code)) return SeriesVector(code, jde, out);
    }
    FromMeanElements(code, jde, out);
    return 1;
}

// Visual magnitude (r heliocentric, delta observer, R Sun-observer distance).
double Magnitude(int code, double r, double delta, double R, double ringTerm) {
    double m = kMagDiameter[code].v0 + 5.0 * std::log10(r * delta);
    double i = 0.0;
    if (code <= 3) {
        double c = (delta * delta + r * r - R * R) / (2.0 * r * delta);
        c = std::fmax(-1.0, std::fmin(1.0, c));
        i = RadToDeg(std::acos(c));
    }
    switch (code) {
        case 0: return m + (0.038 - 0.000273 * i + 2e-6 * i * i) * i;
        case 1: return m + (0.0009 + 0.000239 * i - 6.5e-7 * i * i) * i;
        case 2: return m + 0.016 * i;
        case 3: return m + 0.005 * i;
        case 4: return m + ringTerm;
        case 9: {
            double s = (R - r + delta) * (r + R - delta) / (4.0 * r * delta);
            s = std::fmax(0.0, s);
            const double tb = std::tan(std::asin(std::sqrt(s)));
            return m - 2.5 * std::log10(0.88 * std::exp(-3.33 * std::pow(tb, 0.63)) +
                                        0.12 * std::exp(-1.87 * std::pow(tb, 1.22)));
        }
        default: return m;
    }
}

// Saturn's ring term from the geocentric ecliptic place (lambda, beta) and
// the heliocentric place (l, b, r), degrees and AU, T centuries from J2000.
double SaturnRingTerm(double T, double lambda, double beta, double l, double b, double r) {
    const double I = DegToRad(28.075216 - 0.012998 * T + 4e-6 * T * T);
    const double N0 = 169.50847 + 1.394681 * T + 0.000412 * T * T;
    const double lam = DegToRad(lambda), bet = DegToRad(beta);
    const double sinB = std::sin(I) * std::cos(bet) * std::sin(lam - DegToRad(N0)) - std::cos(I) * std::sin(bet);
    const double N = 113.6655 + 0.8771 * T;
    const double l1 = DegToRad(l - 0.01759 / r);
    const double b1 = DegToRad(b - 0.000764 * std::cos(DegToRad(l - N)) / r);
    const double n0 = DegToRad(N0);
    const double U1 = RadToDeg(std::atan((std::sin(I) * std::sin(b1) + std::cos(I) * std::cos(b1) * std::sin(l1 - n0)) /
                                         (std::cos(b1) * std::cos(l1 - n0))));
    const double U2 = RadToDeg(std::atan((std::sin(I) * std::sin(bet) + std::cos(I) * std::cos(bet) * std::sin(lam - n0)) /
                                         (std::cos(bet) * std::cos(lam - n0))));
    const double absB = std::fabs(std::asin(sinB));
    return 0.044 * std::fabs(U1 - U2) - 2.6 * std::sin(absB) + 1.25 * sinB * sinB;
}

}  // namespace kvx::planet

using namespace kvx;

extern "C" int32_t CalcPlanetLbr(int32_t code, double jd, double lb[2], double *r) {
    if (!planet::ValidCode(code) || !lb || !r) return 0;
    double h[3], m[9];
    planet::HelioVector(code, jd, h);
    GetPrecMtx(kJ2000, jd, m);
    planet::Rotate(m, h, h);
    vec3::EquatorToEcliptic(GetEp(jd), h, h);
    *r = planet::Norm(h);
    const double u[3] = {h[0] / *r, h[1] / *r, h[2] / *r};
    planet::ToAngles(u, &lb[0], &lb[1]);
    return 1;
}

extern "C" void GetPhase(const BodyPos *sunPos, double sunDist, const BodyPos *body, double bodyDist, double *fraction,
                         double *limbAngle) {
    if (!sunPos || !body) return;
    const double a0 = DegToRad(sunPos->f[kvx::body::kRaJ2000]), d0 = DegToRad(sunPos->f[kvx::body::kDecJ2000]);
    const double a = DegToRad(body->f[kvx::body::kRaJ2000]), d = DegToRad(body->f[kvx::body::kDecJ2000]);
    const double limb = RadToDeg(std::atan2(std::cos(d0) * std::sin(a0 - a),
                                            std::sin(d0) * std::cos(d) - std::cos(d0) * std::sin(d) * std::cos(a0 - a)));
    double c = std::sin(d0) * std::sin(d) + std::cos(d0) * std::cos(d) * std::cos(a0 - a);
    c = std::fmax(-1.0, std::fmin(1.0, c));
    const double psi = std::acos(c);
    const double i = std::atan2(sunDist * std::sin(psi), bodyDist - sunDist * std::cos(psi));
    if (fraction) *fraction = (1.0 + std::cos(i)) / 2.0;
    if (limbAngle) *limbAngle = limb;
}

extern "C" double GetPlanetMag(int32_t code, const double h[3], const double e[3]) {
    if (!planet::ValidCode(code) || !h || !e) return -999.0;
    const double r = planet::Norm(h), R = planet::Norm(e);
    const double g[3] = {h[0] - e[0], h[1] - e[1], h[2] - e[2]};
    const double delta = planet::Norm(g);
    const double v0 = code == -3 ? (-4.4 + -1.52) / 2.0 : planet::kMagDiameter[code].v0;
    double m = v0 + 5.0 * std::log10(r * delta);
    if (code <= 3) {
        double c = (r * r + delta * delta - R) / (2.0 * r * delta);
        c = std::fmax(-1.0, std::fmin(1.0, c));
        const double i = RadToDeg(std::acos(c));
        switch (code) {
            case 0: m += (0.038 - 0.000273 * i + 2e-6 * i * i) * i; break;
            case 1: m += (0.0009 + 0.000239 * i - 6.5e-7 * i * i) * i; break;
            case 2: m += 0.016 * i; break;
            case 3: m += 0.005 * i; break;
            default: break;  // -3: no phase law
        }
    }
    return m;
}

// The Earth stays at the instant during the light-time loop and the observer
// is subtracted after it; the ring term is taken at the retarded instant.
extern "C" int32_t CalcPlanet(int32_t code, ATime *t, const BodyPos *sunPos, BodyPos *out) {
    if (!planet::ValidCode(code) || !t || !sunPos || !out) return 0;
    using namespace body::planet_slot;
    double *f = out->f;
    const double jde = t->jde;
    const auto source = [code](double when, double v[3]) {
        planet::HelioVector(code, when, v);
        return true;
    };
    double h[3];
    source(jde, h);
    body::SetVec(*out, kHelio, h);
    body::EclipticOfDate(*t, h, body::Vec(*out, kHelioEcliptic));
    f[kHelioDistance] = planet::Norm(h);

    // Light time: the Earth stays at the instant; the observer is added after.
    const double *e = body::Vec(*sunPos, body::sun_slot::kEarthHelio);
    const double E[3] = {e[0], e[1], e[2]};
    const double g[3] = {h[0] - E[0], h[1] - E[1], h[2] - E[2]};
    f[kGeoDistance] = planet::Norm(g);
    const body::LightTimeRule rule{f[kGeoDistance], body::kOneSecond, body::NonFinite::kIterate, body::kMaxLightPasses};
    body::Retarded r;
    body::LightTime(jde, E, nullptr, rule, source, &r);
    body::SetVec(*out, kHelioRetarded, r.position);

    const double s[3] = {r.relative[0] - t->obsPos[0], r.relative[1] - t->obsPos[1], r.relative[2] - t->obsPos[2]};
    body::FillHead(*t, s, body::AngleRule::kAtan2, out);
    const double delta = f[body::kDistance];

    double ring = 0.0;
    if (code == 4) {
        double lb[2], rs;
        CalcPlanetLbr(4, jde - r.lightTime, lb, &rs);
        ring = planet::SaturnRingTerm(t->t2, f[body::kEclLon], f[body::kEclLat], lb[0], lb[1], rs);
    }
    if (code >= 0) {
        body::SetMagnitude(planet::Magnitude(code, f[kHelioDistance], delta, sunPos->f[body::kDistance], ring),
                           kMagnitude, kMagnitudeTenths, out);
        f[kDiameter] = 2.0 * planet::kMagDiameter[code].s0 / delta;
        physical::Fill(code, *t, out);  // -1 beyond code 7
    } else {
        body::FillSlots(kPhysicalFirst, kDiameter, -1.0, out);
        body::SetMagnitude(0.0, kMagnitude, kMagnitudeTenths, out);
        f[kDiameter] = 0.0;
    }
    body::SetPhase(*sunPos, delta, kIlluminated, kLimbAngle, out);
    return 1;
}
