// Solutions of the two-body problem for comets and minor planets, the
// orientation of their orbits and their magnitudes.
#include "comet/comet_orbit.h"

#include <cmath>
#include <cstring>

#include "math/constants.h"
#include "math/vec3.h"

namespace kvx::comet {

namespace {

constexpr int kMaxIterations = 70;

void Velocities(OrbitState *s) {
    s->z = 0.0;
    s->vz = 0.0;
    s->r = std::sqrt(s->x * s->x + s->y * s->y);
    s->trueAnomaly = std::atan2(s->y, s->x);
}

// Laguerre's method of order 5 (n = 5): x - n f / (f' + sign(f') sqrt(|(n-1)^2 f'^2 - n (n-1) f f''|)).
inline double LaguerreStep(double f, double f1, double f2) {
    const double root = std::sqrt(std::fabs(16.0 * f1 * f1 - 20.0 * f * f2));
    return 5.0 * f / (f1 + (f1 < 0.0 ? -root : root));
}

}  // namespace

int SolveElliptic(double t, const CometElements &el, OrbitState *out, bool wantVelocity) {
    constexpr double kTol = 5.729577951308232e-7;  // degrees (1e-8 radians)
    const double e = el.e, q = el.q;
    if (q == 0.0) return 0;
    const double a = q / (1.0 - e);
    const double M = RadToDeg((t - el.perihelionJd) * kGauss / (std::sqrt(a) * a));
    const double ed = e * 180.0 / kPi;
    double E = M + ed * std::sin(DegToRad(M));
    bool done = false;
    if (e >= 0.6) {
        for (int k = 0; k < kMaxIterations; ++k) {
            const double f = M + ed * std::sin(DegToRad(E)) - E;
            const double f1 = 1.0 - e * std::cos(DegToRad(E));
            if (std::fabs(f) < kTol || std::fabs(f1) < kTol) {
                done = true;
                break;
            }
            const double step = f / f1;
            E += step;
            if (!(std::fabs(step) > kTol)) {
                done = true;
                break;
            }
        }
    } else {
        for (int k = 0; k < kMaxIterations; ++k) {
            const double next = M + ed * std::sin(DegToRad(E));
            const double change = next - E;
            E = next;
            if (!(std::fabs(change) > kTol)) {
                done = true;
                break;
            }
        }
    }
    if (!done) return 0;
    const double cE = std::cos(DegToRad(E)), sE = std::sin(DegToRad(E));
    const double w = std::sqrt(1.0 - e * e);
    out->x = (cE - e) * a;
    out->y = w * a * sE;
    out->z = 0.0;
    if (wantVelocity) {
        Velocities(out);
        const double c = std::sqrt(a) * kGauss / out->r;
        out->vx = -c * sE;
        out->vy = c * w * cE;
    }
    return 1;
}

int SolveNearParabolic(double t, const CometElements &el, OrbitState *out, bool wantVelocity) {
    constexpr double kTol = 1e-8;
    const double e = el.e, q = el.q;
    if (q == 0.0) return 0;
    if (e <= 1.0) {
        const double a = q / (1.0 - e);
        const double M = (t - el.perihelionJd) * kGauss / (std::sqrt(a) * a);
        double E = M + 0.85 * e * (std::sin(M) < 0.0 ? -1.0 : 1.0);
        bool done = false;
        for (int k = 0; k < kMaxIterations; ++k) {
            const double sE = std::sin(E), cE = std::cos(E);
            const double step = LaguerreStep(E - e * sE - M, 1.0 - e * cE, e * sE);
            E -= step;
            if (!(std::fabs(step) > kTol)) {
                done = true;
                break;
            }
        }
        if (!done) return 0;
        out->x = (std::cos(E) - e) * a;
        out->y = std::sqrt(1.0 - e * e) * a * std::sin(E);
        out->z = 0.0;
        if (wantVelocity) {
            Velocities(out);
            const double c = kGauss / out->r, w = std::sqrt((1.0 - e * e) * a);
            out->vx = -out->y * c / w;
            out->vy = (out->x / a + e) * c * w;
        }
        return 1;
    }
    const double a = q / (e - 1.0);
    const double M = (t - el.perihelionJd) * kGauss / (std::sqrt(a) * a);
    double H = std::log(std::fmax(0.01, 2.0 * M / e + 1.85));
    bool done = false;
    for (int k = 0; k < kMaxIterations; ++k) {
        const double sh = std::sinh(H), ch = std::cosh(H);
        const double step = LaguerreStep(e * sh - H - M, e * ch - 1.0, e * sh);
        H -= step;
        if (!(std::fabs(step) > kTol)) {
            done = true;
            break;
        }
    }
    if (!done) return 0;
    const double w = std::sqrt(e * e - 1.0);
    out->x = (e - std::cosh(H)) * a;
    out->y = w * a * std::sinh(H);
    out->z = 0.0;
    if (wantVelocity) {
        Velocities(out);
        const double Hy = std::asinh(out->y / (w * a));
        const double n = kGauss / ((e * std::cosh(Hy) - 1.0) * std::sqrt(a) * a);
        out->vx = -a * n * std::sinh(Hy);
        out->vy = w * a * n * std::cosh(Hy);
    }
    return 1;
}

int SolveParabolic(double t, const CometElements &el, OrbitState *out, bool wantVelocity) {
    const double q = el.q;
    if (q == 0.0) return 0;
    const double W = (t - el.perihelionJd) * kGauss / (std::sqrt(q) * q * std::sqrt(2.0));
    double s = W;
    bool done = false;
    for (int k = 0; k < kMaxIterations; ++k) {
        const double next = (2.0 * s * s * s / 3.0 + W) / (s * s + 1.0);
        const double change = next - s;
        s = next;
        if (!(std::fabs(change) > 1e-8)) {
            done = true;
            break;
        }
    }
    if (!done) return 0;
    out->x = (1.0 - s * s) * q;
    out->y = 2.0 * q * s;
    out->z = 0.0;
    if (wantVelocity) {
        Velocities(out);
        out->vy = kGauss * std::sqrt(2.0 / ((s * s + 1.0) * out->r));
        out->vx = -s * out->vy;
    }
    return 1;
}

int SolveOrbit(double t, const CometElements &el, OrbitState *out, bool wantVelocity) {
    if (el.e < 0.98) return SolveElliptic(t, el, out, wantVelocity);
    if (std::fabs(el.e - 1.0) < 1e-8) return SolveParabolic(t, el, out, wantVelocity);
    return SolveNearParabolic(t, el, out, wantVelocity);
}

bool IsMinorPlanet(const CometElements &el) {
    if (el.kind == 'M') return true;
    const char *d = el.designation;
    const size_t n = strnlen(d, sizeof el.designation);
    size_t i = 0;
    while (i < n && d[i] >= '0' && d[i] <= '9') ++i;
    return i > 0 && i < n && d[i] == 'A';
}

double Magnitude(const CometElements &el, double R, double r, double delta) {
    if (!IsMinorPlanet(el)) return el.h + 5.0 * std::log10(delta) + el.slope * std::log10(r);
    double s2 = (R + r - delta) * (R - r + delta) / (4.0 * r * delta);
    s2 = std::fmin(0.99, std::fmax(0.0, s2));
    const double tb = std::tan(std::asin(std::sqrt(s2)));
    const double G = el.slope;
    return el.h + 5.0 * std::log10(r * delta) -
           2.5 * std::log10((1.0 - G) * std::exp(-3.33 * std::pow(tb, 0.63)) + G * std::exp(-1.87 * std::pow(tb, 1.22)));
}

double EquinoxObliquity(double equinoxYear) {
    const double jd = CalcJd(equinoxYear, 1, 1.5);
    const double T2 = GetT2(jd);
    if (T2 < -40.0) return 23.83253;
    if (T2 > 40.0) return 23.05253;
    return GetEp(jd);
}

}  // namespace kvx::comet

using namespace kvx;

extern "C" void GetVectorConst(double *m, double omega, double node, double incl, double equinoxYear) {
    if (!m) return;
    const double eps = comet::EquinoxObliquity(equinoxYear);
    const double sw = std::sin(DegToRad(omega)), cw = std::cos(DegToRad(omega));
    const double sn = std::sin(DegToRad(node)), cn = std::cos(DegToRad(node));
    const double si = std::sin(DegToRad(incl)), ci = std::cos(DegToRad(incl));
    const double se = std::sin(DegToRad(eps)), ce = std::cos(DegToRad(eps));
    const double u = cw * sn + sw * cn * ci;
    const double v = cw * cn * ci - sw * sn;
    m[0] = cw * cn - sw * sn * ci;
    m[3] = u * ce - sw * si * se;
    m[6] = u * se + sw * si * ce;
    m[1] = -sw * cn - cw * sn * ci;
    m[4] = v * ce - cw * si * se;
    m[7] = v * se + cw * si * ce;
    m[2] = m[5] = m[8] = 0.0;
}

extern "C" void GetVectorConst3D(double *m, double omega, double node, double incl, double equinoxYear) {
    if (!m) return;
    const double eps = comet::EquinoxObliquity(equinoxYear);
    double a[9], b[9], c[9];
    RotateX(-incl, a);
    RotateZ(-omega, b);
    MulMatrix(a, b, c);
    RotateZ(-node, a);
    MulMatrix(a, c, b);
    RotateX(-eps, a);
    MulMatrix(a, b, m);
}

namespace kvx::comet {

// The inverse of SolveOrbit and GetVectorConst (e.g. Danby, Fundamentals of
// Celestial Mechanics, 2nd ed. 1988, section 6.4): the eccentricity vector
// e = v x h / mu - r / |r| gives e, the perihelion direction and q =
// h^2 / (mu (1 + e)); the true anomaly gives the time from perihelion
// through the same anomaly (E, H or Barker's s) the solvers use.
int ElementsFromState(const double pos[3], const double vel[3], double jde, double s, CometElements *out) {
    if (!(s > 0.0 && s <= 1.0)) return 0;
    const double eps = EquinoxObliquity(2000.0);
    double r[3], v[3];
    vec3::EquatorToEcliptic(eps, pos, r);
    vec3::EquatorToEcliptic(eps, vel, v);
    const double mu = s * s * kGauss * kGauss;
    const double rn = vec3::Norm(r);
    const double h[3] = {r[1] * v[2] - r[2] * v[1], r[2] * v[0] - r[0] * v[2], r[0] * v[1] - r[1] * v[0]};
    const double hn = vec3::Norm(h);
    if (!(rn > 0.0) || !(hn > 0.0) || !std::isfinite(hn)) return 0;
    double ev[3] = {(v[1] * h[2] - v[2] * h[1]) / mu - r[0] / rn, (v[2] * h[0] - v[0] * h[2]) / mu - r[1] / rn,
                    (v[0] * h[1] - v[1] * h[0]) / mu - r[2] / rn};
    const double e = vec3::Norm(ev);
    const double q = hn * hn / mu / (1.0 + e);
    const double incl = std::acos(std::fmax(-1.0, std::fmin(1.0, h[2] / hn)));
    const double node = std::hypot(h[0], h[1]) > 1e-15 * hn ? std::atan2(h[0], -h[1]) : 0.0;
    // Node line n and m = h x n / |h|, 90 degrees ahead of it in the plane.
    const double n[3] = {std::cos(node), std::sin(node), 0.0};
    const double m[3] = {(h[1] * n[2] - h[2] * n[1]) / hn, (h[2] * n[0] - h[0] * n[2]) / hn,
                         (h[0] * n[1] - h[1] * n[0]) / hn};
    auto dot = [](const double a[3], const double b[3]) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; };
    const double peri = e > 1e-12 ? std::atan2(dot(ev, m), dot(ev, n)) : 0.0;
    const double nu = std::atan2(dot(r, m), dot(r, n)) - peri;
    // Time from perihelion at the Gaussian constant (the solvers' clock).
    double since;
    if (std::fabs(e - 1.0) < 1e-8) {
        const double w = std::tan(nu / 2.0);
        since = (w * w * w / 3.0 + w) * std::sqrt(q) * q * std::sqrt(2.0) / kGauss;
    } else if (e < 1.0) {
        const double a = q / (1.0 - e);
        const double E = 2.0 * std::atan2(std::sqrt(1.0 - e) * std::sin(nu / 2.0), std::sqrt(1.0 + e) * std::cos(nu / 2.0));
        since = (E - e * std::sin(E)) * std::sqrt(a) * a / kGauss;
    } else {
        const double a = q / (e - 1.0);
        const double H = 2.0 * std::atanh(std::sqrt((e - 1.0) / (e + 1.0)) * std::tan(nu / 2.0));
        since = (e * std::sinh(H) - H) * std::sqrt(a) * a / kGauss;
    }
    if (!std::isfinite(since) || !(q > 0.0)) return 0;
    std::memset(out, 0, sizeof *out);
    out->kind = 'C';
    out->perihelionJd = jde - since / s;
    out->e = e;
    out->q = q;
    out->peri = vec3::Reduce360(RadToDeg(peri));
    out->node = vec3::Reduce360(RadToDeg(node));
    out->incl = RadToDeg(incl);
    out->equinox = 2000.0;
    return 1;
}

}  // namespace kvx::comet
