// The satellite catalogue exports, CalcSatellite and the osculating
// elements of a satellite's planetocentric orbit.
#include <cmath>
#include <cstring>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/vec3.h"
#include "platform/thread_cache.h"
#include "psat/sat_theory.h"
#include "psat/satellite_catalog.h"
#include "solar/body/body_pipeline.h"

namespace kvx::psat {

namespace {

constexpr double kLightTolerance = 1.1574074074074074e-6;  // 0.1 s in days
constexpr int kMaxLightIterations = 50;
// GM of the Earth plus the Moon, km^3/s^2 (DE430), for the Moon's elements.
constexpr double kEarthMoonGmKm = 403503.2355;

// Satellite code -> the planet numbers of the library (hundreds 1..9).
constexpr int kPlanetOfHundred[10] = {0, 0, 1, -3, 2, 3, 4, 5, 6, 7};

int Hundreds(int planet) {
    switch (planet) {
    case -3: return 3;
    case 0: return 1;
    case 1: return 2;
    default: return (planet >= 2 && planet <= 7) ? planet + 2 : -1;
    }
}

// The record of a satellite from the planetocentric vector s at the
// light-time instant, s0 at the instant itself and the planet's geocentric
// vector P, on the body pipeline's head measured from the planet's.
void FillSatelliteBody(const ATime *t, const BodyPos *planet, const double P[3], const double s[3],
                       const double s0[3], const body::NearPlace &near, const SatelliteEntry *entry, BodyPos *out) {
    namespace slot = body::satellite_slot;
    const double *ph = body::Vec(*planet, body::planet_slot::kHelio);
    const double *pr = body::Vec(*planet, body::planet_slot::kHelioRetarded);
    const double h0[3] = {ph[0] + s0[0], ph[1] + s0[1], ph[2] + s0[2]};
    const double hr[3] = {pr[0] + s[0], pr[1] + s[1], pr[2] + s[2]};
    body::SetVec(*out, slot::kHelio, h0);
    body::SetVec(*out, slot::kHelioRetarded, hr);
    body::SetVec(*out, slot::kPlanetocentric, s);
    out->f[slot::kHelioDistance] = vec3::Norm(h0);
    body::EclipticOfDate(*t, h0, body::Vec(*out, slot::kHelioEcliptic));
    const double v[3] = {P[0] + s[0] - t->obsPos[0], P[1] + s[1] - t->obsPos[1], P[2] + s[2] - t->obsPos[2]};
    body::FillHead(*t, v, near, out);
    if (entry) {
        out->f[slot::kMassRatio] = entry->massRatio;
        out->f[slot::kRadiusA] = entry->a;
        out->f[slot::kRadiusB] = entry->b;
        out->f[slot::kRadiusC] = entry->c;
        out->f[slot::kPeriod] = entry->period;
        body::SetMagnitude(entry->oppMag, slot::kMagnitude, slot::kMagnitudeTenths, out);
    } else {
        body::FillSlots(slot::kMassRatio, slot::kPeriod + 1, -1.0, out);
        body::SetMagnitude(0.0, slot::kMagnitude, slot::kMagnitudeTenths, out);
    }
}

// Geocentric state of the Moon (AU, AU/day, J2000.0 equator) from the
// library's Moon, for the Moon's osculating elements.
int MoonState(double jde, double pos[3], double vel[3]) {
    constexpr double h = 1.0e-3;
    double p[3][3];
    const double dates[3] = {jde - h, jde, jde + h};
    for (int j = 0; j < 3; ++j) {
        double lb[2], dist;
        CalcMoonLbr(dates[j], lb, &dist);
        const double r = dist / kKmPerAu, lo = DegToRad(lb[0]), la = DegToRad(lb[1]);
        double v[3] = {r * std::cos(la) * std::cos(lo), r * std::cos(la) * std::sin(lo), r * std::sin(la)};
        vec3::EclipticToEquator(GetEp(dates[j]), v, v);
        double m[9];
        GetPrecMtx(dates[j], kJ2000, m);
        vec3::Rotate(m, v, p[j]);
    }
    for (int k = 0; k < 3; ++k) {
        pos[k] = p[1][k];
        vel[k] = (p[2][k] - p[0][k]) / (2.0 * h);
    }
    return std::isfinite(pos[0]) ? 0 : 1;
}

// Osculating elements from a planetocentric state for the gravitational
// parameter gm (AU^3/day^2), on the equator (option 0), the ecliptic of
// J2000.0 (1) or the mean ecliptic and equinox of date (2).
int StateToElements(const double pos[3], const double vel[3], double jde, double gm, int option, OrbitElm *out) {
    double r[3] = {pos[0], pos[1], pos[2]}, v[3] = {vel[0], vel[1], vel[2]};
    double equinox = 2000.0;
    if (option == 1) {
        const double eps = GetEp(kJ2000);
        vec3::EquatorToEcliptic(eps, r, r);
        vec3::EquatorToEcliptic(eps, v, v);
    } else if (option == 2) {
        double m[9];
        GetPrecMtx(kJ2000, jde, m);
        vec3::Rotate(m, r, r);
        vec3::Rotate(m, v, v);
        const double eps = GetEp(jde);
        vec3::EquatorToEcliptic(eps, r, r);
        vec3::EquatorToEcliptic(eps, v, v);
        equinox = 2000.0 + (jde - kJ2000) / 365.25;
    }
    const double rn = vec3::Norm(r), v2 = v[0] * v[0] + v[1] * v[1] + v[2] * v[2];
    if (!(rn > 0.0) || !(gm > 0.0)) return 0;
    const double hv[3] = {r[1] * v[2] - r[2] * v[1], r[2] * v[0] - r[0] * v[2], r[0] * v[1] - r[1] * v[0]};
    const double hn = vec3::Norm(hv);
    const double rv = r[0] * v[0] + r[1] * v[1] + r[2] * v[2];
    const double a = 1.0 / (2.0 / rn - v2 / gm);
    double ev[3];
    for (int k = 0; k < 3; ++k) ev[k] = ((v2 - gm / rn) * r[k] - rv * v[k]) / gm;
    const double e = vec3::Norm(ev);
    if (!(a > 0.0) || !(e < 1.0) || !(hn > 0.0)) return 0;
    const double incl = std::acos(std::fmax(-1.0, std::fmin(1.0, hv[2] / hn)));
    double node = std::atan2(hv[0], -hv[1]);
    // Argument of latitude of the satellite and of the periapsis, from the node.
    const double nv[3] = {std::cos(node), std::sin(node), 0.0};
    const double mv[3] = {-std::cos(incl) * nv[1], std::cos(incl) * nv[0], std::sin(incl)};
    double peri = std::atan2(ev[0] * mv[0] + ev[1] * mv[1] + ev[2] * mv[2], ev[0] * nv[0] + ev[1] * nv[1] + ev[2] * nv[2]);
    if (e < 1.0e-12) peri = 0.0;
    const double u = std::atan2(r[0] * mv[0] + r[1] * mv[1] + r[2] * mv[2], r[0] * nv[0] + r[1] * nv[1] + r[2] * nv[2]);
    const double nu = u - peri;
    const double E = 2.0 * std::atan2(std::sqrt(1.0 - e) * std::sin(nu / 2.0), std::sqrt(1.0 + e) * std::cos(nu / 2.0));
    const double M = E - e * std::sin(E);
    std::memset(out, 0, sizeof *out);
    out->epoch = jde;
    out->a = a;
    out->e = e;
    out->incl = RadToDeg(incl);
    out->node = vec3::Reduce360(RadToDeg(node));
    out->peri = vec3::Reduce360(RadToDeg(peri));
    out->m = vec3::Reduce360(RadToDeg(M));
    out->n = RadToDeg(std::sqrt(gm / (a * a * a)));
    out->equinox = equinox;
    return 1;
}

}  // namespace

const SatelliteEntry *FindSatellite(int planet, int index) {
    for (const SatelliteEntry &e : kSatellites)
        if (e.planet == planet && e.index == index) return &e;
    return nullptr;
}

int SatelliteCode(int planet, int index) {
    const int h = Hundreds(planet);
    return h < 0 ? -1 : 100 * h + index;
}

bool HasTheory(int planet, int index) {
    switch (planet) {
    case 2: return index >= 1 && index <= 2;
    case 3: return index >= 1 && index <= 5;
    case 4: return index >= 1 && index <= 8;
    case 5: return index >= 1 && index <= 5;
    case 6: return index >= 1 && index <= 2;
    case 7: return index == 1;
    default: return false;
    }
}

}  // namespace kvx::psat

using namespace kvx;

extern "C" int32_t GetNumSatellites(int32_t planet) {
    switch (planet) {
    case -3: return 1;
    case 0: return 0;
    case 1: return 0;
    case 2: return 2;
    case 3: return 5;
    case 4: return 8;
    case 5: return 5;
    case 6: return 2;
    case 7: return 1;
    default: return -1;
    }
}

extern "C" int32_t GetSatelliteCode(int32_t planet, int32_t index) { return psat::SatelliteCode(planet, index); }

extern "C" int32_t SplitSatelliteCode(int32_t code, int32_t *planet, int32_t *index) {
    const int32_t hundreds = code / 100;
    if (hundreds < 1 || hundreds > 9) return 0;
    if (index) *index = code - 100 * hundreds;
    if (planet) *planet = psat::kPlanetOfHundred[hundreds];
    return 1;
}

extern "C" const char *GetSatelliteName(int32_t planet, int32_t index) {
    if (planet < -3 || planet > 7) return nullptr;
    const psat::SatelliteEntry *e = psat::FindSatellite(planet, index);
    return e ? e->name : nullptr;
}

extern "C" int32_t SatelliteExist(int32_t planet, int32_t index) { return psat::HasTheory(planet, index) ? 1 : 0; }

extern "C" int32_t GetSatelliteOrbit(double jde, int32_t planet, int32_t index, int32_t option, OrbitElm *out) {
    if (!out) return 0;
    const int code = psat::SatelliteCode(planet, index);
    double pos[3], vel[3], gm;
    if (code == 301) {
        if (psat::MoonState(jde, pos, vel) != 0) return 0;
        gm = psat::kEarthMoonGmKm * 86400.0 * 86400.0 / (kKmPerAu * kKmPerAu * kKmPerAu);
    } else {
        if (!psat::HasTheory(planet, index)) return 0;
        if (psat::SatelliteState(code, jde, pos, vel) != 0) return 0;
        const psat::SatelliteEntry *e = psat::FindSatellite(planet, index);
        gm = psat::SatelliteGm(code) * (1.0 + (e ? e->massRatio : 0.0));
    }
    return psat::StateToElements(pos, vel, jde, gm, option, out);
}

extern "C" int32_t CalcSatellite(const ATime *t, int32_t planet, int32_t index, const BodyPos *planetPos, BodyPos *out) {
    if (!t || !planetPos || !out || !psat::HasTheory(planet, index)) return 0;
    const int code = psat::SatelliteCode(planet, index);
    const double jde = t->jde;
    const double *pf = planetPos->f;
    // Io..Callisto: one pass over the L1.2 series gives the position at the
    // instant and a local model at Jupiter's light-time instant, which the
    // loop's passes then read instead of the series.
    const double planetLight = pf[body::kDistance] * kLightDaysPerAu;
    psat::L12Local local;
    const bool galilean = planet == 3 && index <= 4;
    double s0[3];
    if (galilean && psat::GalileanL12Local(index, jde, planetLight, s0, &local) == 0) {
        if (!std::isfinite(s0[0]) || !std::isfinite(s0[1]) || !std::isfinite(s0[2])) return 0;
    } else if (psat::SatellitePosition(code, jde, s0) != 0) {
        return 0;
    } else {
        local.index = 0;  // no local model
    }

    // The planet's geocentric vector from its place and distance, and its
    // head's angles for the satellite's (a satellite is seen within a
    // degree of its planet); kept per thread for the last planet record and
    // observer, as a caller places a planet's satellites one after another.
    struct PlanetFrame {
        double key[10] = {NAN, NAN, NAN, NAN, NAN, NAN, NAN, NAN, NAN, NAN};
        double P[3];
        body::NearPlace near;
    };
    PlanetFrame &last = platform::ThreadCache<PlanetFrame>();
    const double key[10] = {pf[0], pf[1], pf[2], pf[3], pf[4], pf[5], pf[6], t->obsPos[0], t->obsPos[1], t->obsPos[2]};
    bool same = true;
    for (int k = 0; k < 10; ++k) same = same && key[k] == last.key[k];
    if (!same) {
        body::MakeNearPlace(*planetPos, &last.near);
        const SinCos ra = last.near.sc[0][0], dec = last.near.sc[0][1];
        last.P[0] = dec.c * ra.c * pf[6] + t->obsPos[0];
        last.P[1] = dec.c * ra.s * pf[6] + t->obsPos[1];
        last.P[2] = dec.s * pf[6] + t->obsPos[2];
        for (int k = 0; k < 10; ++k) last.key[k] = key[k];
    }
    const double P[3] = {last.P[0], last.P[1], last.P[2]};
    // Light time: the satellite seen from the planet's geocentric position.
    const double origin[3] = {-P[0], -P[1], -P[2]};
    const body::LightTimeRule rule{pf[body::kDistance], psat::kLightTolerance, body::NonFinite::kStop,
                                   psat::kMaxLightIterations};
    body::Retarded r;
    auto source = [code, &local](double tau, double v[3]) {
        if (local.index == 0) return psat::SatellitePosition(code, tau, v) == 0;
        return psat::L12LocalPosition(local, tau, v) == 0 && std::isfinite(v[0]) && std::isfinite(v[1]) &&
               std::isfinite(v[2]);
    };
    if (!body::LightTime(jde, origin, nullptr, rule, source, &r)) return 0;
    const double *s = r.position;
    psat::FillSatelliteBody(t, planetPos, P, s, s0, last.near, psat::FindSatellite(planet, index), out);
    return 1;
}
