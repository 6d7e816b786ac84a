// Mean orbital elements of the planets and the two-body routines that use
// them: elements to position, position and velocity to elements, points
// along an orbit.
#include "solar/planet/orbit_elements.h"

#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/vec3.h"
#include "solar/planet/planet_elements_table.h"

namespace kvx::orbit {

namespace {

const KeplerRow *RowOf(int32_t code) {
    if (code >= 0 && code <= 7) return &kKeplerRows[code];
    if (code == -3) return &kKeplerRows[8];
    return nullptr;
}

}  // namespace

double SolveKepler(double m, double e) {
    m = std::remainder(m, 2.0 * kPi);
    // Start at m + e sin m, or at pi sign(m) for high eccentricity, from which
    // Newton's method converges monotonically.
    double E = e < 0.8 ? m + e * std::sin(m) : (m < 0 ? -kPi : kPi);
    for (int k = 0; k < 50; ++k) {
        const double f = E - e * std::sin(E) - m;
        const double step = f / (1.0 - e * std::cos(E));
        E -= step;
        if (std::fabs(step) < 1e-14) break;
    }
    return E;
}

void OrbitPlaneToEcliptic(double peri, double node, double incl, double m[9]) {
    const double sw = std::sin(DegToRad(peri)), cw = std::cos(DegToRad(peri));
    const double sn = std::sin(DegToRad(node)), cn = std::cos(DegToRad(node));
    const double si = std::sin(DegToRad(incl)), ci = std::cos(DegToRad(incl));
    m[0] = cw * cn - sw * sn * ci;
    m[1] = -sw * cn - cw * sn * ci;
    m[2] = sn * si;
    m[3] = cw * sn + sw * cn * ci;
    m[4] = -sw * sn + cw * cn * ci;
    m[5] = -cn * si;
    m[6] = sw * si;
    m[7] = cw * si;
    m[8] = ci;
}

}  // namespace kvx::orbit

using namespace kvx;
using namespace kvx::orbit;

extern "C" int32_t GetPlanetOrbitElm(int32_t code, double jde, OrbitElm *out) {
    const KeplerRow *k = RowOf(code);
    if (!k || !out) return 0;
    const double T = (jde - kJ2000) / kDaysPerCentury;
    const double periLon = k->periLon + k->periLonRate * T;
    const double node = k->node + k->nodeRate * T;
    const double fT = DegToRad(k->f * T);
    const double m = k->meanLon + k->meanLonRate * T - periLon + k->b * T * T + k->c * std::cos(fT) +
                     k->s * std::sin(fT);
    const double dmdT = k->meanLonRate - k->periLonRate + 2.0 * k->b * T +
                        DegToRad(k->f) * (-k->c * std::sin(fT) + k->s * std::cos(fT));
    out->epoch = jde;
    out->a = k->a + k->aRate * T;
    out->e = k->e + k->eRate * T;
    out->incl = k->incl + k->inclRate * T;
    out->node = vec3::Reduce360(node);
    out->peri = vec3::Reduce360(periLon - node);
    out->m = vec3::Reduce360(m);
    out->n = dmdT / kDaysPerCentury;
    out->equinox = 2000.0;
    out->reserved = 0.0;
    return 1;
}

extern "C" int32_t GetPlanetByElement(const OrbitElm *elm, double jde, double pos[3], double vel[3]) {
    if (!elm || !pos || !(elm->e >= 0.0 && elm->e < 1.0)) return 0;
    const double M = DegToRad(vec3::Reduce360(elm->m + elm->n * (jde - elm->epoch)));
    const double e = elm->e, a = elm->a;
    const double E = SolveKepler(M, e);
    const double cE = std::cos(E), sE = std::sin(E), b = a * std::sqrt(1.0 - e * e);
    const double x = a * (cE - e), y = b * sE;
    double r[9];
    OrbitPlaneToEcliptic(elm->peri, elm->node, elm->incl, r);
    pos[0] = r[0] * x + r[1] * y;
    pos[1] = r[3] * x + r[4] * y;
    pos[2] = r[6] * x + r[7] * y;
    if (vel) {
        const double edot = DegToRad(elm->n) / (1.0 - e * cE);
        const double vx = -a * sE * edot, vy = b * cE * edot;
        vel[0] = r[0] * vx + r[1] * vy;
        vel[1] = r[3] * vx + r[4] * vy;
        vel[2] = r[6] * vx + r[7] * vy;
    }
    return 1;
}

extern "C" int32_t CalPVtoElm(const double pos[3], const double vel[3], double jde, double eps, double equinox,
                              OrbitElm *out) {
    if (!pos || !vel || !out) return 0;
    const double se = std::sin(DegToRad(eps)), ce = std::cos(DegToRad(eps));
    const double r[3] = {pos[0], ce * pos[1] + se * pos[2], -se * pos[1] + ce * pos[2]};
    const double v[3] = {vel[0], ce * vel[1] + se * vel[2], -se * vel[1] + ce * vel[2]};
    const double mu = kGauss * kGauss;
    const double rr = std::sqrt(r[0] * r[0] + r[1] * r[1] + r[2] * r[2]);
    const double v2 = v[0] * v[0] + v[1] * v[1] + v[2] * v[2];
    if (rr == 0.0) return 0;
    const double inv_a = 2.0 / rr - v2 / mu;
    if (!(inv_a > 0.0)) return 0;
    const double a = 1.0 / inv_a;
    const double h[3] = {r[1] * v[2] - r[2] * v[1], r[2] * v[0] - r[0] * v[2], r[0] * v[1] - r[1] * v[0]};
    const double hh = std::sqrt(h[0] * h[0] + h[1] * h[1] + h[2] * h[2]);
    if (hh == 0.0) return 0;
    const double rv = r[0] * v[0] + r[1] * v[1] + r[2] * v[2];
    // Eccentricity vector e = (v x h) / mu - r / |r|.
    double ev[3] = {(v[1] * h[2] - v[2] * h[1]) / mu - r[0] / rr, (v[2] * h[0] - v[0] * h[2]) / mu - r[1] / rr,
                    (v[0] * h[1] - v[1] * h[0]) / mu - r[2] / rr};
    const double e = std::sqrt(ev[0] * ev[0] + ev[1] * ev[1] + ev[2] * ev[2]);
    if (!(e < 1.0)) return 0;
    const double incl = RadToDeg(std::acos(std::fmax(-1.0, std::fmin(1.0, h[2] / hh))));
    const double nodeRad = std::hypot(h[0], h[1]) > 1e-15 * hh ? std::atan2(h[0], -h[1]) : 0.0;
    // Unit vectors of the node line and of its perpendicular in the orbit plane.
    const double nx = std::cos(nodeRad), ny = std::sin(nodeRad);
    const double px = -h[2] / hh * ny, py = h[2] / hh * nx, pz = (h[0] * ny - h[1] * nx) / hh;
    const double periRad = e > 1e-15 ? std::atan2(ev[0] * px + ev[1] * py + ev[2] * pz, ev[0] * nx + ev[1] * ny) : 0.0;
    // Eccentric and mean anomalies.
    const double ecosE = 1.0 - rr / a, esinE = rv / std::sqrt(mu * a);
    const double E = std::atan2(esinE, ecosE);
    const double M = e > 1e-15 ? E - e * std::sin(E) : std::atan2(r[0] * px + r[1] * py + r[2] * pz, r[0] * nx + r[1] * ny);
    out->epoch = jde;
    out->a = a;
    out->e = e;
    out->incl = incl;
    out->node = vec3::Reduce360(RadToDeg(nodeRad));
    out->peri = vec3::Reduce360(RadToDeg(periRad));
    out->m = vec3::Reduce360(RadToDeg(M));
    out->n = RadToDeg(kGauss / (a * std::sqrt(a)));
    out->equinox = equinox;
    out->reserved = 0.0;
    return 1;
}

extern "C" int32_t CalcPlanetOrbit3(int32_t code, double jde, int32_t n, double *xyz) {
    OrbitElm el;
    if (n < 2 || !xyz || !GetPlanetOrbitElm(code, jde, &el)) return 0;
    double r[9];
    OrbitPlaneToEcliptic(el.peri, el.node, el.incl, r);
    const double eps = DegToRad(GetEp(kJ2000));
    const double se = std::sin(eps), ce = std::cos(eps);
    const double b = el.a * std::sqrt(1.0 - el.e * el.e);
    for (int32_t k = 0; k < n; ++k) {
        const double E = 2.0 * kPi * k / (n - 1);
        const double x = el.a * (std::cos(E) - el.e), y = b * std::sin(E);
        const double ex = r[0] * x + r[1] * y, ey = r[3] * x + r[4] * y, ez = r[6] * x + r[7] * y;
        xyz[3 * k] = ex;
        xyz[3 * k + 1] = ce * ey - se * ez;
        xyz[3 * k + 2] = se * ey + ce * ez;
    }
    return n;
}
