// CalcASat: the near-Earth SGP4 model of Hoots & Roehrich, "Models for
// Propagation of NORAD Element Sets", Spacetrack Report No. 3 (1980), with
// GM = 398600.44 km^3/s^2, a = 6378.137 km, J2 = 1.082629e-3,
// J3 = -2.54e-6, J4 = -1.62e-6, applied to every element set whatever its
// period (no deep-space branch).
#include <cmath>

#include "asat/sgp4.h"
#include "math/constants.h"

namespace kvx::asat {

namespace {

constexpr double kXke = 0.07436684757161681;        // sqrt(0.005530428017740089) = sqrt(GM) in ER^1.5/min
constexpr double kCk2 = 0.0005413145;               // J2 / 2
constexpr double kCk4x125 = 7.59375e-7;             // 1.25 * (-3/8 J4)
constexpr double kA3ovk2 = 0.004692281474078377;    // -J3 / k2
constexpr double kQoms2t = 1.880276800610929e-09;   // ((120 - 78) km / a)^4
constexpr double kKmPerEr = 6378.137;
constexpr double kSimpleLimit = 1.0344928307435228;  // 1 + 220 km
constexpr double kTwoThirds = 2.0 / 3.0;
constexpr double kTwoPi = 2.0 * kPi;

// Whole turns removed by the truncated quotient, one turn added to a
// negative remainder (FMOD2P of the report).
double Fmod2p(double x) {
    double r = x - Trunc(x / kTwoPi) * kTwoPi;
    if (r < 0.0) r += kTwoPi;
    return r;
}

// The report's two-argument arctangent (ACTAN) from a one-argument one:
// atan(s/c), plus pi when c < 0; on c = 0 exactly, pi/2 for s > 0, else
// 3 pi/2.
double Actan(double s, double c) {
    if (c == 0.0) return s > 0.0 ? kPi / 2.0 : 3.0 * kPi / 2.0;
    const double a = std::atan(s / c);
    return c > 0.0 ? a : a + kPi;
}

}  // namespace

void SetUpSecular(const Elm &elm, const SecularSetUp &s, SecularTerms *out) {
    SecularTerms &m = *out;
    m.mo = elm.meanAnomaly;
    m.argpo = elm.argPerigee;
    m.nodeo = elm.raan;
    m.bstar = elm.bstar;
    m.simple = s.simple;
    const double e0 = elm.eccentricity;
    const double beta02 = 1.0 - e0 * e0;
    const double beta0 = std::sqrt(beta02);
    const double theta2 = s.cosi * s.cosi;

    // Drag: the s and q0 - s of the density function move down with a low
    // perigee.
    double s4 = 78.0 / s.radiusKm + 1.0;
    double qoms24 = s.qoms2t;
    const double perigee = (s.a0 * (1.0 - e0) - 1.0) * s.radiusKm;
    if (perigee < 156.0) {
        s4 = perigee <= 98.0 ? 20.0 : perigee - 78.0;
        const double q = (120.0 - s4) / s.radiusKm;
        qoms24 = q * q * q * q;
        s4 = s4 / s.radiusKm + 1.0;
    }
    const double tsi = 1.0 / (s.a0 - s4);
    m.eta = s.a0 * e0 * tsi;
    const double etasq = m.eta * m.eta;
    const double eeta = e0 * m.eta;
    const double psisq = std::fabs(1.0 - etasq);
    const double coef = s.revision2006 ? qoms24 * std::pow(tsi, 4.0) : qoms24 * (tsi * tsi) * (tsi * tsi);
    const double coef1 = coef / std::pow(psisq, 3.5);
    const double c2 = coef1 * s.n0 *
                      (s.a0 * (1.0 + 1.5 * etasq + eeta * (4.0 + etasq)) +
                       0.75 * s.ck2 * tsi / psisq * s.x3thm1 * (8.0 + 3.0 * etasq * (8.0 + etasq)));
    m.cc1 = m.bstar * c2;
    // C3 and the mean-anomaly drag coefficient divide by e0 (through eta):
    // for a circular orbit both terms vanish with e0 in the position, so
    // they are taken as 0 there instead of 0/0 (the revision already below
    // e0 = 1e-4).
    const bool c3Term = s.revision2006 ? e0 > 1.0e-4 : e0 != 0.0;
    const bool xmcofTerm = s.revision2006 ? e0 > 1.0e-4 : eeta != 0.0;
    const double c3 = c3Term ? coef * tsi * s.a3ovk2 * s.n0 * s.sini / e0 : 0.0;
    m.x1mth2 = 1.0 - theta2;
    m.cc4 = 2.0 * s.n0 * coef1 * s.a0 * beta02 *
            (m.eta * (2.0 + 0.5 * etasq) + e0 * (0.5 + 2.0 * etasq) -
             2.0 * s.ck2 * tsi / (s.a0 * psisq) *
                 (-3.0 * s.x3thm1 * (1.0 - 2.0 * eeta + etasq * (1.5 - 0.5 * eeta)) +
                  0.75 * m.x1mth2 * (2.0 * etasq - eeta * (1.0 + etasq)) * std::cos(2.0 * m.argpo)));
    m.cc5 = 2.0 * coef1 * s.a0 * beta02 * (1.0 + 2.75 * (etasq + eeta) + eeta * etasq);

    // Secular rates of mean anomaly, argument of perigee and node.
    const double theta4 = theta2 * theta2;
    const double temp1 = 3.0 * s.ck2 * s.pinvsq * s.n0;
    const double temp2 = temp1 * s.ck2 * s.pinvsq;
    const double temp3 = s.k4 * s.pinvsq * s.pinvsq * s.n0;
    m.mdot = s.n0 + 0.5 * temp1 * beta0 * s.x3thm1 + 0.0625 * temp2 * beta0 * (13.0 - 78.0 * theta2 + 137.0 * theta4);
    const double x1m5th = 1.0 - 5.0 * theta2;
    m.argpdot = -0.5 * temp1 * x1m5th + 0.0625 * temp2 * (7.0 - 114.0 * theta2 + 395.0 * theta4) +
                temp3 * (3.0 - 36.0 * theta2 + 49.0 * theta4);
    const double xhdot1 = -temp1 * s.cosi;
    m.nodedot = xhdot1 + (0.5 * temp2 * (4.0 - 19.0 * theta2) + 2.0 * temp3 * (3.0 - 7.0 * theta2)) * s.cosi;
    m.omgcof = m.bstar * c3 * std::cos(m.argpo);
    m.xmcof = xmcofTerm ? -kTwoThirds * coef * m.bstar / eeta : 0.0;
    m.nodecf = 3.5 * beta02 * xhdot1 * m.cc1;
    m.t2cof = 1.5 * m.cc1;
    // 1 + cos i vanishes only for a retrograde equatorial orbit; the
    // divisor is kept away from 0 as in the 2006 revision of the model.
    const double onePlusCos = std::fabs(1.0 + s.cosi) > 1.5e-12 ? 1.0 + s.cosi : 1.5e-12;
    m.xlcof = 0.125 * s.a3ovk2 * s.sini * (3.0 + 5.0 * s.cosi) / onePlusCos;
    m.aycof = 0.25 * s.a3ovk2 * s.sini;
    const double dm = 1.0 + m.eta * std::cos(m.mo);
    m.delmo = dm * dm * dm;
    m.sinmao = std::sin(m.mo);
    m.x7thm1 = 7.0 * theta2 - 1.0;
    m.d2 = m.d3 = m.d4 = m.t3cof = m.t4cof = m.t5cof = 0.0;
    if (!m.simple) {
        const double c1sq = m.cc1 * m.cc1;
        m.d2 = 4.0 * s.a0 * tsi * c1sq;
        const double temp = m.d2 * tsi * m.cc1 / 3.0;
        m.d3 = (17.0 * s.a0 + s4) * temp;
        m.d4 = 0.5 * temp * s.a0 * tsi * (221.0 * s.a0 + 31.0 * s4) * m.cc1;
        m.t3cof = m.d2 + 2.0 * c1sq;
        m.t4cof = 0.25 * (3.0 * m.d3 + m.cc1 * (12.0 * m.d2 + 10.0 * c1sq));
        m.t5cof = 0.2 * (3.0 * m.d4 + 12.0 * m.cc1 * m.d3 + 6.0 * m.d2 * m.d2 + 15.0 * c1sq * (2.0 * m.d2 + c1sq));
    }
}

Secular SecularUpdate(const SecularTerms &m, double t) {
    Secular s;
    const double xmdf = m.mo + m.mdot * t;
    const double argpdf = m.argpo + m.argpdot * t;
    s.mm = xmdf;
    s.argpm = argpdf;
    const double t2 = t * t;
    s.nodem = m.nodeo + m.nodedot * t + m.nodecf * t2;
    s.tempa = 1.0 - m.cc1 * t;
    s.tempe = m.bstar * m.cc4 * t;
    s.templ = m.t2cof * t2;
    if (!m.simple) {
        const double delomg = m.omgcof * t;
        const double dm = 1.0 + m.eta * std::cos(xmdf);
        const double delm = m.xmcof * (dm * dm * dm - m.delmo);
        const double temp = delomg + delm;
        s.mm = xmdf + temp;
        s.argpm = argpdf - temp;
        const double t3 = t2 * t;
        const double t4 = t * t3;
        s.tempa = s.tempa - m.d2 * t2 - m.d3 * t3 - m.d4 * t4;
        s.tempe = s.tempe + m.bstar * m.cc5 * (std::sin(s.mm) - m.sinmao);
        s.templ = s.templ + m.t3cof * t3 + t4 * (m.t4cof + t * m.t5cof);
    }
    return s;
}

void InitNearEarth(const Elm &elm, NearEarth *out) {
    NearEarth &m = *out;
    m.e0 = elm.eccentricity;
    m.i0 = elm.inclination;
    m.deepSpace = 0;
    m.initialised = 1;

    // Un-Kozai the mean motion (Hoots & Roehrich eqs. for a1, delta1, a0,
    // delta0, n0'', a0'').
    const double n0 = elm.meanMotion;
    const double a1 = std::pow(kXke / n0, kTwoThirds);
    m.cosi = std::cos(m.i0);
    const double theta2 = m.cosi * m.cosi;
    m.x3thm1 = 3.0 * theta2 - 1.0;
    const double beta02 = 1.0 - m.e0 * m.e0;
    const double beta0 = std::sqrt(beta02);
    const double d1 = 1.5 * kCk2 * m.x3thm1 / (a1 * a1 * beta0 * beta02);
    const double a0 = a1 * (1.0 - d1 / 3.0 - d1 * d1 - 1.654320987654321 * d1 * d1 * d1);
    const double d0 = 1.5 * kCk2 * m.x3thm1 / (a0 * a0 * beta0 * beta02);
    m.n0dp = n0 / (1.0 + d0);
    m.a0dp = a0 / (1.0 - d0);
    m.sini = std::sin(m.i0);

    SecularSetUp s;
    s.n0 = m.n0dp;
    s.a0 = m.a0dp;
    s.cosi = m.cosi;
    s.sini = m.sini;
    s.x3thm1 = m.x3thm1;
    s.pinvsq = 1.0 / (m.a0dp * m.a0dp * beta02 * beta02);
    s.radiusKm = kKmPerEr;
    s.ck2 = kCk2;
    s.k4 = kCk4x125;
    s.a3ovk2 = kA3ovk2;
    s.qoms2t = kQoms2t;
    s.revision2006 = false;
    s.simple = m.a0dp * (1.0 - m.e0) < kSimpleLimit;
    SetUpSecular(elm, s, &m);
}

void Orientation(double uk, double ik, double nodek, double u[3], double v[3]) {
    const double sinuk = std::sin(uk), cosuk = std::cos(uk);
    const double sinik = std::sin(ik), cosik = std::cos(ik);
    const double sinnok = std::sin(nodek), cosnok = std::cos(nodek);
    const double mx = -sinnok * cosik, my = cosnok * cosik, mz = sinik;
    u[0] = mx * sinuk + cosnok * cosuk;
    u[1] = my * sinuk + sinnok * cosuk;
    u[2] = mz * sinuk;
    v[0] = mx * cosuk - cosnok * sinuk;
    v[1] = my * cosuk - sinnok * sinuk;
    v[2] = mz * cosuk;
}

bool StoreFiniteState(const double p[3], const double w[3], double r[3], double v[3]) {
    for (int k = 0; k < 3; ++k)
        if (!std::isfinite(p[k]) || !std::isfinite(w[k])) return false;
    for (int k = 0; k < 3; ++k) {
        r[k] = p[k];
        v[k] = w[k];
    }
    return true;
}

int32_t CopyState(const double r[3], const double v[3], double *position, double *velocity) {
    for (int k = 0; k < 3; ++k) {
        if (position) position[k] = r[k];
        if (velocity) velocity[k] = v[k];
    }
    return 1;
}

bool PropagateNearEarth(const NearEarth &m, double tsince, double r[3], double v[3]) {
    // Secular gravity and drag.
    const Secular sec = SecularUpdate(m, tsince);
    const double xmp = sec.mm, omega = sec.argpm, xnode = sec.nodem;
    const double a = m.a0dp * sec.tempa * sec.tempa;
    const double e = m.e0 - sec.tempe;
    if (!(e * e <= 1.0)) return false;
    const double xl = xmp + omega + xnode + m.n0dp * sec.templ;
    const double beta = std::sqrt(1.0 - e * e);
    const double xn = kXke / std::pow(a, 1.5);

    // Long-period periodics.
    const double axn = e * std::cos(omega);
    double temp = 1.0 / (a * beta * beta);
    const double xll = temp * m.xlcof * axn;
    const double aynl = temp * m.aycof;
    const double xlt = xl + xll;
    const double ayn = e * std::sin(omega) + aynl;

    // Kepler's equation for E + omega by Newton's method; as in the report,
    // the short-period terms use the sine and cosine of the last iterate
    // whose correction met the tolerance.
    const double capu = Fmod2p(xlt - xnode);
    double epw = capu;
    double sinepw = 0.0, cosepw = 1.0, temp3 = 0.0, temp4 = 0.0, temp5 = 0.0, temp6 = 0.0;
    for (int i = 0; i < 10; ++i) {
        sinepw = std::sin(epw);
        cosepw = std::cos(epw);
        temp3 = axn * sinepw;
        temp4 = ayn * cosepw;
        temp5 = axn * cosepw;
        temp6 = ayn * sinepw;
        const double next = (capu - temp4 + temp3 - epw) / (1.0 - temp5 - temp6) + epw;
        if (std::fabs(next - epw) <= 1e-6) break;
        epw = next;
    }

    // Short-period preliminaries.
    const double ecose = temp5 + temp6;
    const double esine = temp3 - temp4;
    const double elsq = axn * axn + ayn * ayn;
    temp = 1.0 - elsq;
    const double pl = a * temp;
    const double rr = a * (1.0 - ecose);
    double temp1 = 1.0 / rr;
    const double rdot = kXke * std::sqrt(a) * esine * temp1;
    const double rfdot = kXke * std::sqrt(pl) * temp1;
    double temp2 = a * temp1;
    const double betal = std::sqrt(temp);
    temp3 = 1.0 / (1.0 + betal);
    const double cosu = temp2 * (cosepw - axn + ayn * esine * temp3);
    const double sinu = temp2 * (sinepw - ayn - axn * esine * temp3);
    const double u = Actan(sinu, cosu);
    const double sin2u = 2.0 * sinu * cosu;
    const double cos2u = 2.0 * cosu * cosu - 1.0;
    temp = 1.0 / pl;
    temp1 = kCk2 * temp;
    temp2 = temp1 * temp;

    // Short-period periodics.
    const double rk = rr * (1.0 - 1.5 * temp2 * betal * m.x3thm1) + 0.5 * temp1 * m.x1mth2 * cos2u;
    const double uk = u - 0.25 * temp2 * m.x7thm1 * sin2u;
    const double xnodek = xnode + 1.5 * temp2 * m.cosi * sin2u;
    const double xinck = m.i0 + 1.5 * temp2 * m.cosi * m.sini * cos2u;
    const double rdotk = rdot - xn * temp1 * m.x1mth2 * sin2u;
    const double rfdotk = rfdot + xn * temp1 * (m.x1mth2 * cos2u + 1.5 * m.x3thm1);

    double dirU[3], dirV[3];
    Orientation(uk, xinck, xnodek, dirU, dirV);
    const double ux = dirU[0], uy = dirU[1], uz = dirU[2], vx = dirV[0], vy = dirV[1], vz = dirV[2];

    const double p[3] = {rk * ux * kKmPerEr, rk * uy * kKmPerEr, rk * uz * kKmPerEr};
    const double scale = kKmPerEr / 60.0;
    const double q[3] = {(rdotk * ux + rfdotk * vx) * scale, (rdotk * uy + rfdotk * vy) * scale,
                         (rdotk * uz + rfdotk * vz) * scale};
    return StoreFiniteState(p, q, r, v);
}

}  // namespace kvx::asat

using namespace kvx::asat;

extern "C" int32_t CalcASat(double jd, const Elm *elm, double *position, double *velocity) {
    if (!elm || !ASatIsElmValid(jd, elm)) return 0;
    NearEarth m;
    InitNearEarth(*elm, &m);
    double r[3], v[3];
    if (!PropagateNearEarth(m, (jd - elm->epoch) * 1440.0, r, v)) return 0;
    return CopyState(r, v, position, velocity);
}

extern "C" int32_t CalcASat2(double jd, const Elm *first, const Elm *second, double *position, double *velocity) {
    if (!first) return 0;
    double r1[3], v1[3];
    if (!CalcASat(jd, first, r1, v1)) return 0;
    if (second) {
        double r2[3], v2[3];
        if (!CalcASat(jd, second, r2, v2)) return 0;
        // Equal epochs would divide by zero: the first set is then used.
        const double span = second->epoch - first->epoch;
        const double f = span != 0.0 ? (jd - first->epoch) / span : 0.0;
        for (int k = 0; k < 3; ++k) {
            r1[k] = r1[k] + f * (r2[k] - r1[k]);
            v1[k] = v1[k] + f * (v2[k] - v1[k]);
        }
    }
    return CopyState(r1, v1, position, velocity);
}
