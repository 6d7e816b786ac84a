// CalcComet and the orbit points of comets and minor planets.
#include "comet/comet.h"

#include <cmath>

#include "comet/comet_orbit.h"
#include "math/constants.h"
#include "math/vec3.h"
#include "solar/body/body_pipeline.h"

namespace kvx::comet {

using vec3::Norm;
using vec3::Rotate;
using vec3::ToAngles;

void PlaneToJ2000(const CometElements &el, double x, double y, double out[3]) {
    double pq[9];
    GetVectorConst(pq, el.peri, el.node, el.incl, el.equinox);
    out[0] = pq[0] * x + pq[1] * y;
    out[1] = pq[3] * x + pq[4] * y;
    out[2] = pq[6] * x + pq[7] * y;
    if (el.equinox != 2000.0) {
        double m[9];
        GetPrecMtx(CalcJd(el.equinox, 1, 1.5), kJ2000, m);
        Rotate(m, out, out);
    }
}

int HelioJ2000(const CometElements &el, double jde, double out[3]) {
    OrbitState s;
    if (!SolveOrbit(jde, el, &s, false)) return 0;
    PlaneToJ2000(el, s.x, s.y, out);
    return 1;
}

}  // namespace kvx::comet

using namespace kvx;

// The observer stays inside the light-time loop, which starts from the
// topocentric distance at the instant.
extern "C" int32_t CalcComet(const CometElements *el, ATime *t, const BodyPos *sunPos, BodyPos *out) {
    if (!el || !t || !sunPos || !out) return 0;
    using namespace body::planet_slot;
    double *f = out->f;
    const auto source = [el](double when, double v[3]) { return comet::HelioJ2000(*el, when, v) != 0; };
    double h[3];
    if (!source(t->jde, h)) return 0;
    body::SetVec(*out, kHelio, h);
    f[kHelioDistance] = comet::Norm(h);
    body::EclipticOfDate(*t, h, body::Vec(*out, kHelioEcliptic));

    // Light time with the observer inside the loop, starting from the
    // topocentric distance at the instant.
    const double *e = body::Vec(*sunPos, body::sun_slot::kEarthHelio);
    const double E[3] = {e[0], e[1], e[2]};
    const double hE[3] = {h[0] - E[0], h[1] - E[1], h[2] - E[2]};
    f[kGeoDistance] = comet::Norm(hE);
    const double g[3] = {hE[0] - t->obsPos[0], hE[1] - t->obsPos[1], hE[2] - t->obsPos[2]};
    const body::LightTimeRule rule{comet::Norm(g), body::kOneSecond, body::NonFinite::kStop, body::kMaxLightPasses};
    body::Retarded r;
    if (!body::LightTime(t->jde, E, t->obsPos, rule, source, &r)) return 0;
    body::SetVec(*out, kHelioRetarded, r.position);
    body::FillHead(*t, r.relative, body::AngleRule::kAtan2, out);
    const double delta = f[body::kDistance];

    body::FillSlots(kPhysicalFirst, kMagnitude, -1.0, out);
    body::SetMagnitude(comet::Magnitude(*el, sunPos->f[body::kDistance], comet::Norm(r.position), delta), kMagnitude,
                       kMagnitudeTenths, out);
    body::SetPhase(*sunPos, delta, kIlluminated, kLimbAngle, out);
    return 1;
}

extern "C" int32_t GetCometOrbit(const CometElements *el, int32_t n, double rMax, double *xyz) {
    if (!el || !xyz || n < 2 || !(el->q > 0.0)) return 0;
    const double e = el->e, q = el->q;
    for (int32_t k = 0; k < n; ++k) {
        double x, y;
        if (e < 1.0) {
            const double a = q / (1.0 - e);
            const double E = 2.0 * kPi * k / (n - 1);
            x = a * (std::cos(E) - e);
            y = a * std::sqrt(1.0 - e * e) * std::sin(E);
        } else {
            if (!(rMax > q)) return 0;
            // r = q (1 + e) / (1 + e cos v) = rMax
            double c = (q * (1.0 + e) / rMax - 1.0) / e;
            double vmax = std::acos(std::fmax(-1.0, std::fmin(1.0, c)));
            if (e > 1.0) vmax = std::fmin(vmax, 0.999 * std::acos(-1.0 / e));
            const double v = -vmax + 2.0 * vmax * k / (n - 1);
            const double r = q * (1.0 + e) / (1.0 + e * std::cos(v));
            x = r * std::cos(v);
            y = r * std::sin(v);
        }
        comet::PlaneToJ2000(*el, x, y, &xyz[3 * k]);
    }
    return n;
}
