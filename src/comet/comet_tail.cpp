// Dust and ion tails of comets: syndynes and synchrones of grains under
// radiation pressure (Finson & Probstein 1968) and the aberrated ion tail.
#include <cmath>

#include "comet/comet.h"
#include "comet/comet_orbit.h"
#include "math/constants.h"
#include "math/vec3.h"
#include "solar/body/body_pipeline.h"

namespace kvx::comet {

namespace {

using vec3::Norm;

// Below this 1 - beta the grain is taken to move on a straight line: the
// neglected attraction (1 - beta) GM / r^2 moves it by at most 1.5e-7 AU
// in 100 days at r >= 0.1 AU (1.5e-9 AU at 1 AU).
constexpr double kFreeFlight = 1e-9;

// Light time of the nucleus and of every grain to a millisecond rather than
// CalcComet's second: a comet near the Sun covers 60 km in a second, 0.1"
// between a grain and the nucleus, which the tail's small offsets would
// show. The loop converges by v/c per pass, so this costs one pass.
constexpr double kTailLightTolerance = 1e-3 / 86400.0;

// Default solar-wind speed (km/s): the slow wind near the ecliptic
// (Brandt & Chapman 2004, ch. 7).
constexpr double kDefaultWindKmS = 400.0;

// The nucleus seen from the observer: light time as CalcComet.
struct Head {
    double earth[3];
    double rel[3];    // observer to nucleus (J2000.0, AU)
    double helio[3];  // nucleus at the retarded instant
    double when;      // the retarded instant (dynamical JD)
    Ad place;         // astrometric RA/Dec
};

bool FindHead(const CometElements &el, const ATime &t, const BodyPos &sun, Head *h) {
    const auto source = [&el](double when, double v[3]) { return HelioJ2000(el, when, v) != 0; };
    double now[3];
    if (!source(t.jde, now)) return false;
    const double *e = body::Vec(sun, body::sun_slot::kEarthHelio);
    for (int i = 0; i < 3; ++i) h->earth[i] = e[i];
    const double g[3] = {now[0] - e[0] - t.obsPos[0], now[1] - e[1] - t.obsPos[1], now[2] - e[2] - t.obsPos[2]};
    const body::LightTimeRule rule{Norm(g), kTailLightTolerance, body::NonFinite::kFail, body::kMaxLightPasses};
    body::Retarded r;
    if (!body::LightTime(t.jde, h->earth, t.obsPos, rule, source, &r)) return false;
    for (int i = 0; i < 3; ++i) {
        h->rel[i] = r.relative[i];
        h->helio[i] = r.position[i];
    }
    h->when = t.jde - r.lightTime;
    BodyPos bp;
    body::FillHead(t, r.relative, body::AngleRule::kAtan2, &bp);
    h->place = {bp.f[body::kRaJ2000], bp.f[body::kDecJ2000]};
    return true;
}

// The comet's heliocentric position and velocity (J2000.0) at jde.
bool CometState(const CometElements &el, double jde, double pos[3], double vel[3]) {
    OrbitState s;
    if (!SolveOrbit(jde, el, &s, true)) return false;
    PlaneToJ2000(el, s.x, s.y, pos);
    PlaneToJ2000(el, s.vx, s.vy, vel);
    return true;
}

// A grain released at t0 from (p0, v0): a Kepler orbit for the attraction
// (1 - beta) GM read through the stretched clock of ElementsFromState, or a
// straight line when radiation pressure balances gravity.
struct Grain {
    CometElements orbit;
    double s;  // sqrt(1 - beta)
    bool line;
    double t0, p0[3], v0[3];

    bool At(double jde, double out[3]) const {
        if (line) {
            for (int i = 0; i < 3; ++i) out[i] = p0[i] + v0[i] * (jde - t0);
            return true;
        }
        return HelioJ2000(orbit, orbit.perihelionJd + (jde - orbit.perihelionJd) * s, out) != 0;
    }
};

bool MakeGrain(const CometElements &el, double beta, double t0, Grain *g) {
    if (!CometState(el, t0, g->p0, g->v0)) return false;
    g->t0 = t0;
    g->line = 1.0 - beta < kFreeFlight;
    g->s = std::sqrt(1.0 - beta);
    return g->line || ElementsFromState(g->p0, g->v0, t0, g->s, &g->orbit) != 0;
}

void SetPoint(const ATime &t, const Head &h, const double rel[3], const double helio[3], CometTailPoint *p) {
    BodyPos bp;
    body::FillHead(t, rel, body::AngleRule::kAtan2, &bp);
    p->ra = bp.f[body::kRaJ2000];
    p->dec = bp.f[body::kDecJ2000];
    p->distance = bp.f[body::kDistance];
    const Ad at = {p->ra, p->dec};
    AdToPaDist(&h.place, &at, &p->pa, &p->separation);
    p->r = Norm(helio);
}

// A grain of the given beta released `age` days before t, seen with its own
// light time.
bool GrainPoint(const CometElements &el, const ATime &t, const Head &h, double beta, double age, CometTailPoint *p) {
    Grain g;
    if (!MakeGrain(el, beta, t.jde - age, &g)) return false;
    const body::LightTimeRule rule{Norm(h.rel), kTailLightTolerance, body::NonFinite::kFail, body::kMaxLightPasses};
    body::Retarded r;
    if (!body::LightTime(t.jde, h.earth, t.obsPos, rule, [&g](double when, double v[3]) { return g.At(when, v); }, &r))
        return false;
    SetPoint(t, h, r.relative, r.position, p);
    p->beta = beta;
    p->age = age;
    return true;
}

bool BetaOk(double beta) { return beta >= 0.0 && beta <= 1.0; }

// Position angle of the direction d (J2000.0) in the plane of the sky at
// the place u: its components toward the north and the east.
double SkyPa(const Ad &u, const double d[3]) {
    const double a = DegToRad(u.a), b = DegToRad(u.d);
    const double east = -std::sin(a) * d[0] + std::cos(a) * d[1];
    const double north = -std::sin(b) * std::cos(a) * d[0] - std::sin(b) * std::sin(a) * d[1] + std::cos(b) * d[2];
    const double pa = RadToDeg(std::atan2(east, north));
    return pa <= 0.0 ? pa + 360.0 : pa;
}

void SetHead(const Head &h, CometTail *tail) {
    tail->headRa = h.place.a;
    tail->headDec = h.place.d;
    tail->headDistance = Norm(h.rel);
    tail->antisolarPa = SkyPa(h.place, h.helio);
}

}  // namespace

}  // namespace kvx::comet

using namespace kvx;

extern "C" int32_t GetCometSyndyname(const CometElements *el, const ATime *t, const BodyPos *sunPos, double beta,
                                     double maxAge, int32_t n, CometTailPoint *out) {
    if (!el || !t || !sunPos || !out || n < 2 || !comet::BetaOk(beta)) return 0;
    comet::Head h;
    if (!comet::FindHead(*el, *t, *sunPos, &h)) return 0;
    for (int32_t k = 0; k < n; ++k)
        if (!comet::GrainPoint(*el, *t, h, beta, maxAge * k / (n - 1), &out[k])) return 0;
    return n;
}

extern "C" int32_t CalcCometDustTail(const CometElements *el, const ATime *t, const BodyPos *sunPos,
                                     const double *betas, int32_t nBeta, const double *ages, int32_t nAge,
                                     CometTailPoint *grid, CometTail *tail) {
    if (!el || !t || !sunPos || !betas || !ages || !grid || nBeta < 1 || nAge < 1) return 0;
    for (int32_t i = 0; i < nBeta; ++i)
        if (!comet::BetaOk(betas[i])) return 0;
    comet::Head h;
    if (!comet::FindHead(*el, *t, *sunPos, &h)) return 0;
    int32_t tip = 0;
    for (int32_t i = 0; i < nBeta; ++i)
        for (int32_t j = 0; j < nAge; ++j) {
            CometTailPoint &p = grid[i * nAge + j];
            if (!comet::GrainPoint(*el, *t, h, betas[i], ages[j], &p)) return 0;
            if (p.separation > grid[tip].separation) tip = i * nAge + j;
        }
    if (tail) {
        const CometTailPoint &p = grid[tip];
        comet::SetHead(h, tail);
        tail->tipRa = p.ra;
        tail->tipDec = p.dec;
        tail->pa = p.pa;
        tail->lengthDeg = p.separation;
        // The tip's vector from the observer, from its place and distance.
        Dc u;
        const Ad at = {p.ra, p.dec};
        AdToDc(&at, &u);
        const double d[3] = {u.x * p.distance - h.rel[0], u.y * p.distance - h.rel[1], u.z * p.distance - h.rel[2]};
        tail->lengthAu = vec3::Norm(d);
        tail->aberration = -1.0;
    }
    return nBeta * nAge;
}

extern "C" int32_t CalcCometIonTail(const CometElements *el, const ATime *t, const BodyPos *sunPos, double windKmS,
                                    double lengthAu, int32_t n, CometTailPoint *out, CometTail *tail) {
    if (!el || !t || !sunPos || !tail || !(lengthAu > 0.0) || !std::isfinite(lengthAu)) return 0;
    if (!(windKmS > 0.0) || !std::isfinite(windKmS)) windKmS = comet::kDefaultWindKmS;
    comet::Head h;
    double pos[3], vel[3];
    if (!comet::FindHead(*el, *t, *sunPos, &h) || !comet::CometState(*el, h.when, pos, vel)) return 0;
    // The wind as the comet meets it: radial at windKmS, less the comet's own velocity.
    const double w = windKmS * 86400.0 / kKmPerAu, r = vec3::Norm(pos);
    double rel[3], along = 0.0;
    for (int i = 0; i < 3; ++i) rel[i] = w * pos[i] / r - vel[i];
    const double speed = vec3::Norm(rel);
    for (int i = 0; i < 3; ++i) along += rel[i] / speed * pos[i] / r;
    comet::SetHead(h, tail);
    tail->aberration = RadToDeg(std::acos(std::fmax(-1.0, std::fmin(1.0, along))));
    tail->lengthAu = lengthAu;
    const int32_t m = out && n >= 2 ? n : 0;
    for (int32_t k = 0; k <= m; ++k) {
        // Points 0..n-1, then the tip once more for the summary.
        const double f = k < m ? static_cast<double>(k) / (m - 1) : 1.0;
        double helio[3], obs[3];
        for (int i = 0; i < 3; ++i) {
            helio[i] = pos[i] + rel[i] / speed * lengthAu * f;
            obs[i] = h.rel[i] + rel[i] / speed * lengthAu * f;
        }
        CometTailPoint p;
        comet::SetPoint(*t, h, obs, helio, &p);
        p.beta = -1.0;
        p.age = lengthAu * f / speed;
        if (k < m) out[k] = p;
        else {
            tail->tipRa = p.ra;
            tail->tipDec = p.dec;
            tail->pa = p.pa;
            tail->lengthDeg = p.separation;
        }
    }
    return 1;
}
