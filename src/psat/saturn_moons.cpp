// Mimas, Enceladus, Tethys, Dione, Rhea, Titan, Hyperion and Iapetus by
// J. Meeus, Astronomical Algorithms (2nd ed. 1998), chapter 46, after the
// theories adopted by G. Dourneau (1987) and D. Harper & D. B. Taylor
// (1993, A&A 268, 326): mean elements with the principal periodic terms,
// referred to the ecliptic and equinox of B1950.0. Meeus states an accuracy
// of a few hundredths of Saturn's radius for the inner satellites and
// better than 0.1 radius for Hyperion and Iapetus (a few hundred km; 0.1 to
// 0.3 arcsec) over the 20th and 21st centuries.
//
// The orbital radii are in units of Saturn's equatorial radius as the
// theory uses it: 2475 radii per AU (the factor of its light-time term).
#include <cmath>

#include "kvxlib.h"
#include "psat/sat_theory.h"

namespace kvx::psat {

namespace {

constexpr double kD = 3.141592653589793 / 180.0;
constexpr double kRadiiPerAu = 2475.0;
constexpr double kB1950 = 2433282.4235;

struct Orbit {
    double lambda, r, gamma, omega;  // radians, Saturn radii
};

// Quantities shared by the satellites (Meeus 46.1 ff.).
struct Args {
    double t1, t2, t3, t4, t5, t6, t7, t8, t9, t10, t11;
    double W0, W1, W2, W3, W4, W5, W6, W7, W8;
    double s1, c1, s2, c2, e1;
    explicit Args(double jde) {
        t1 = jde - 2411093.0;
        t2 = t1 / 365.25;
        t3 = (jde - 2433282.423) / 365.25 + 1950.0;
        t4 = jde - 2411368.0;
        t5 = t4 / 365.25;
        t6 = jde - 2415020.0;
        t7 = t6 / 36525.0;
        t8 = t6 / 365.25;
        t9 = (jde - 2442000.5) / 365.25;
        t10 = jde - 2409786.0;
        t11 = t10 / 36525.0;
        W0 = 5.095 * kD * (t3 - 1866.39);
        W1 = 74.4 * kD + 32.39 * kD * t2;
        W2 = 134.3 * kD + 92.62 * kD * t2;
        W3 = 42.0 * kD - 0.5118 * kD * t5;
        W4 = 276.59 * kD + 0.5118 * kD * t5;
        W5 = 267.2635 * kD + 1222.1136 * kD * t7;
        W6 = 175.4762 * kD + 1221.5515 * kD * t7;
        W7 = 2.4891 * kD + 0.002435 * kD * t7;
        W8 = 113.35 * kD - 0.2597 * kD * t7;
        s1 = std::sin(28.0817 * kD);
        c1 = std::cos(28.0817 * kD);
        s2 = std::sin(168.8112 * kD);
        c2 = std::cos(168.8112 * kD);
        e1 = 0.05589 - 0.000346 * t7;
    }
    // Elements of Rhea, Titan, Hyperion and Iapetus from the mean longitude
    // lp, longitude of periapsis p, e, a, node and inclination on the
    // ecliptic of B1950.0 (Meeus' subroutine of chapter 46).
    Orbit Subr(double lp, double p, double e, double a, double node, double i) const {
        const double M = lp - p;
        const double e2 = e * e, e3 = e2 * e, e4 = e2 * e2, e5 = e3 * e2;
        const double C = (2.0 * e - 0.25 * e3 + 0.0520833333 * e5) * std::sin(M) +
                         (1.25 * e2 - 0.458333333 * e4) * std::sin(2.0 * M) +
                         (1.083333333 * e3 - 0.671875 * e5) * std::sin(3.0 * M) + 1.072917 * e4 * std::sin(4.0 * M) +
                         1.142708 * e5 * std::sin(5.0 * M);
        Orbit o;
        o.r = a * (1.0 - e2) / (1.0 + e * std::cos(M + C));
        const double g = node - 168.8112 * kD;
        const double a1 = std::sin(i) * std::sin(g);
        const double a2 = c1 * std::sin(i) * std::cos(g) - s1 * std::cos(i);
        o.gamma = std::asin(std::fmin(1.0, std::hypot(a1, a2)));
        const double u = std::atan2(a1, a2);
        o.omega = 168.8112 * kD + u;
        const double h = c1 * std::sin(i) - s1 * std::cos(i) * std::cos(g);
        const double psi = std::atan2(s1 * std::sin(g), h);
        o.lambda = lp + C + u - g - psi;
        return o;
    }
};

Orbit Mimas(const Args &q) {
    const double sW0 = std::sin(q.W0);
    const double L = 127.64 * kD + 381.994497 * kD * q.t1 - 43.57 * kD * sW0 - 0.72 * kD * std::sin(3.0 * q.W0) -
                     0.02144 * kD * std::sin(5.0 * q.W0);
    const double p = 106.1 * kD + 365.549 * kD * q.t2;
    const double M = L - p;
    const double C = 2.18287 * kD * std::sin(M) + 0.025988 * kD * std::sin(2.0 * M) + 0.00043 * kD * std::sin(3.0 * M);
    return {L + C, 3.06879 / (1.0 + 0.01905 * std::cos(M + C)), 1.563 * kD, 54.5 * kD - 365.072 * kD * q.t2};
}

Orbit Enceladus(const Args &q) {
    const double L = 200.317 * kD + 262.7319002 * kD * q.t1 + 0.25667 * kD * std::sin(q.W1) +
                     0.20883 * kD * std::sin(q.W2);
    const double p = 309.107 * kD + 123.44121 * kD * q.t2;
    const double M = L - p;
    const double C = 0.55577 * kD * std::sin(M) + 0.00168 * kD * std::sin(2.0 * M);
    return {L + C, 3.94118 / (1.0 + 0.00485 * std::cos(M + C)), 0.0262 * kD, 348.0 * kD - 151.95 * kD * q.t2};
}

Orbit Tethys(const Args &q) {
    const double lambda = 285.306 * kD + 190.69791226 * kD * q.t1 + 2.063 * kD * std::sin(q.W0) +
                          0.03409 * kD * std::sin(3.0 * q.W0) + 0.001015 * kD * std::sin(5.0 * q.W0);
    return {lambda, 4.880998, 1.0976 * kD, 111.33 * kD - 72.2441 * kD * q.t2};
}

Orbit Dione(const Args &q) {
    const double L = 254.712 * kD + 131.53493193 * kD * q.t1 - 0.0215 * kD * std::sin(q.W1) -
                     0.01733 * kD * std::sin(q.W2);
    const double p = 174.8 * kD + 30.82 * kD * q.t2;
    const double M = L - p;
    const double C = 0.24717 * kD * std::sin(M) + 0.00033 * kD * std::sin(2.0 * M);
    return {L + C, 6.24871 / (1.0 + 0.002157 * std::cos(M + C)), 0.0139 * kD, 232.0 * kD - 30.27 * kD * q.t2};
}

Orbit Rhea(const Args &q) {
    const double pp = 342.7 * kD + 10.057 * kD * q.t2;
    const double a1 = 0.000265 * std::sin(pp) + 0.001 * std::sin(q.W4);
    const double a2 = 0.000265 * std::cos(pp) + 0.001 * std::cos(q.W4);
    const double e = std::hypot(a1, a2), p = std::atan2(a1, a2);
    const double N = 345.0 * kD - 10.057 * kD * q.t2;
    const double lp = 359.244 * kD + 79.6900472 * kD * q.t1 + 0.086754 * kD * std::sin(N);
    const double i = 28.0362 * kD + 0.346898 * kD * std::cos(N) + 0.0193 * kD * std::cos(q.W3);
    const double node = 168.8034 * kD + 0.736936 * kD * std::sin(N) + 0.041 * kD * std::sin(q.W3);
    return q.Subr(lp, p, e, 8.725924, node, i);
}

Orbit Titan(const Args &q) {
    const double L = 261.1582 * kD + 22.57697855 * kD * q.t4 + 0.074025 * kD * std::sin(q.W3);
    const double ip = 27.45141 * kD + 0.295999 * kD * std::cos(q.W3);
    const double np = 168.66925 * kD + 0.628808 * kD * std::sin(q.W3);
    const double a1 = std::sin(q.W7) * std::sin(np - q.W8);
    const double a2 = std::cos(q.W7) * std::sin(ip) - std::sin(q.W7) * std::cos(ip) * std::cos(np - q.W8);
    const double g0 = 102.8623 * kD;
    const double psi = std::atan2(a1, a2), s = std::hypot(a1, a2);
    double g = q.W4 - np - psi, varpi = 0.0;
    for (int k = 0; k < 3; ++k) {
        varpi = q.W4 + 0.37515 * kD * (std::sin(2.0 * g) - std::sin(2.0 * g0));
        g = varpi - np - psi;
    }
    const double ep = 0.029092 + 0.00019048 * (std::cos(2.0 * g) - std::cos(2.0 * g0));
    const double qq = 2.0 * (q.W5 - varpi);
    const double b1 = std::sin(ip) * std::sin(np - q.W8);
    const double b2 = std::cos(q.W7) * std::sin(ip) * std::cos(np - q.W8) - std::sin(q.W7) * std::cos(ip);
    const double theta = std::atan2(b1, b2) + q.W8;
    const double e = ep + 0.002778797 * ep * std::cos(qq);
    const double p = varpi + 0.159215 * kD * std::sin(qq);
    const double u = 2.0 * q.W5 - 2.0 * theta + psi;
    const double h = 0.9375 * ep * ep * std::sin(qq) + 0.1875 * s * s * std::sin(2.0 * (q.W5 - theta));
    const double lp =
        L - 0.254744 * kD * (q.e1 * std::sin(q.W6) + 0.75 * q.e1 * q.e1 * std::sin(2.0 * q.W6) + h);
    const double i = ip + 0.031843 * kD * s * std::cos(u);
    const double node = np + 0.031843 * kD * s * std::sin(u) / std::sin(ip);
    return q.Subr(lp, p, e, 20.216193, node, i);
}

Orbit Hyperion(const Args &q) {
    const double eta = 92.39 * kD + 0.5621071 * kD * q.t6;
    const double zeta = 148.19 * kD - 19.18 * kD * q.t8;
    const double theta = 184.8 * kD - 35.41 * kD * q.t9;
    const double thetap = theta - 7.5 * kD;
    const double as = 176.0 * kD + 12.22 * kD * q.t8;
    const double bs = 8.0 * kD + 24.44 * kD * q.t8;
    const double cs = bs + 5.0 * kD;
    const double varpi = 69.898 * kD - 18.67088 * kD * q.t8;
    const double phi = 2.0 * (varpi - q.W5);
    const double chi = 94.9 * kD - 2.292 * kD * q.t8;
    const double a = 24.50601 - 0.08686 * std::cos(eta) - 0.00166 * std::cos(zeta + eta) +
                     0.00175 * std::cos(zeta - eta);
    const double e = 0.103458 - 0.004099 * std::cos(eta) - 0.000167 * std::cos(zeta + eta) +
                     0.000235 * std::cos(zeta - eta) + 0.02303 * std::cos(zeta) - 0.00212 * std::cos(2.0 * zeta) +
                     0.000151 * std::cos(3.0 * zeta) + 0.00013 * std::cos(phi);
    const double p = varpi + 0.15648 * kD * std::sin(chi) - 0.4457 * kD * std::sin(eta) -
                     0.2657 * kD * std::sin(zeta + eta) - 0.3573 * kD * std::sin(zeta - eta) -
                     12.872 * kD * std::sin(zeta) + 1.668 * kD * std::sin(2.0 * zeta) -
                     0.2419 * kD * std::sin(3.0 * zeta) - 0.07 * kD * std::sin(phi);
    const double lp = 177.047 * kD + 16.91993829 * kD * q.t6 + 0.15648 * kD * std::sin(chi) +
                      9.142 * kD * std::sin(eta) + 0.007 * kD * std::sin(2.0 * eta) -
                      0.014 * kD * std::sin(3.0 * eta) + 0.2275 * kD * std::sin(zeta + eta) +
                      0.2112 * kD * std::sin(zeta - eta) - 0.26 * kD * std::sin(zeta) -
                      0.0098 * kD * std::sin(2.0 * zeta) - 0.013 * kD * std::sin(as) + 0.017 * kD * std::sin(bs) -
                      0.0303 * kD * std::sin(phi);
    const double i = 27.3347 * kD + 0.6434886 * kD * std::cos(chi) + 0.315 * kD * std::cos(q.W3) +
                     0.018 * kD * std::cos(theta) - 0.018 * kD * std::cos(cs);
    const double node = 168.6812 * kD + 1.40136 * kD * std::cos(chi) + 0.68599 * kD * std::sin(q.W3) -
                        0.0392 * kD * std::sin(cs) + 0.0366 * kD * std::sin(thetap);
    return q.Subr(lp, p, e, a, node, i);
}

Orbit Iapetus(const Args &q) {
    const double L = 261.1582 * kD + 22.57697855 * kD * q.t4;
    const double varpip = 91.796 * kD + 0.562 * kD * q.t7;
    const double psi = 4.367 * kD - 0.195 * kD * q.t7;
    const double theta = 146.819 * kD - 3.198 * kD * q.t7;
    const double phi = 60.47 * kD + 1.521 * kD * q.t7;
    const double Phi = 205.055 * kD - 2.091 * kD * q.t7;
    const double ep = 0.028298 + 0.001156 * q.t11;
    const double varpi0 = 352.91 * kD + 11.71 * kD * q.t11;
    const double mu = 76.3852 * kD + 4.53795125 * kD * q.t10;
    const double T = q.t11;
    const double ip = (18.4602 + T * (-0.9518 + T * (-0.072 + T * 0.0054))) * kD;
    const double np = (143.198 + T * (-3.919 + T * (0.116 + T * 0.008))) * kD;
    const double l = mu - varpi0, g = varpi0 - np - psi, g1 = varpi0 - np - phi;
    const double ls = q.W5 - varpip, gs = varpip - theta;
    const double lT = L - q.W4, gT = q.W4 - Phi;
    const double u1 = 2.0 * (l + g - ls - gs), u2 = l + g1 - lT - gT, u3 = l + 2.0 * (g - ls - gs);
    const double u4 = lT + gT - g1, u5 = 2.0 * (ls + gs);
    const double a = 58.935028 + 0.004638 * std::cos(u1) + 0.058222 * std::cos(u2);
    const double e = ep - 0.0014097 * std::cos(g1 - gT) + 0.0003733 * std::cos(u5 - 2.0 * g) +
                     0.000118 * std::cos(u3) + 0.0002408 * std::cos(l) + 0.0002849 * std::cos(l + u2) +
                     0.000619 * std::cos(u4);
    const double w = 0.08077 * kD * std::sin(g1 - gT) + 0.02139 * kD * std::sin(u5 - 2.0 * g) -
                     0.00676 * kD * std::sin(u3) + 0.0138 * kD * std::sin(l) + 0.01632 * kD * std::sin(l + u2) +
                     0.03547 * kD * std::sin(u4);
    const double p = varpi0 + w / ep;
    const double lp = mu - 0.04299 * kD * std::sin(u2) - 0.00789 * kD * std::sin(u1) - 0.06312 * kD * std::sin(ls) -
                      0.00295 * kD * std::sin(2.0 * ls) - 0.02231 * kD * std::sin(u5) +
                      0.0065 * kD * std::sin(u5 + psi);
    const double i = ip + 0.04204 * kD * std::cos(u5 + psi) + 0.00235 * kD * std::cos(l + g1 + lT + gT + phi) +
                     0.0036 * kD * std::cos(u2 + phi);
    const double wp = 0.04204 * kD * std::sin(u5 + psi) + 0.00235 * kD * std::sin(l + g1 + lT + gT + phi) +
                      0.00358 * kD * std::sin(u2 + phi);
    const double node = np + wp / std::sin(ip);
    return q.Subr(lp, p, e, a, node, i);
}

// Precession from B1950.0 to J2000.0, computed once.
struct Precession {
    double m[9];
    Precession() { GetPrecMtx(kB1950, 2451545.0, m); }
};

}  // namespace

int SaturnMeeus(int index, double jde, double out[3]) {
    if (index < 1 || index > 8) return 1;
    const Args q(jde);
    Orbit o;
    switch (index) {
    case 1: o = Mimas(q); break;
    case 2: o = Enceladus(q); break;
    case 3: o = Tethys(q); break;
    case 4: o = Dione(q); break;
    case 5: o = Rhea(q); break;
    case 6: o = Titan(q); break;
    case 7: o = Hyperion(q); break;
    default: o = Iapetus(q); break;
    }
    // Orbit -> Saturn's equator of B1950.0 with its node at 168.8112 deg and
    // inclination 28.0817 deg on the ecliptic -> ecliptic of B1950.0.
    const double u = o.lambda - o.omega, w = o.omega - 168.8112 * kD;
    const double X = o.r * (std::cos(u) * std::cos(w) - std::sin(u) * std::cos(o.gamma) * std::sin(w));
    const double Y = o.r * (std::sin(u) * std::cos(w) * std::cos(o.gamma) + std::cos(u) * std::sin(w));
    const double Z = o.r * std::sin(u) * std::sin(o.gamma);
    const double b0 = q.c1 * Y - q.s1 * Z, c = q.s1 * Y + q.c1 * Z;
    const double x = q.c2 * X - q.s2 * b0, y = q.s2 * X + q.c2 * b0;
    // Ecliptic B1950.0 -> equator B1950.0 (obliquity 23.4457889 deg) -> J2000.0.
    const double eps = 23.4457889 * kD;
    const double v[3] = {x / kRadiiPerAu, (y * std::cos(eps) - c * std::sin(eps)) / kRadiiPerAu,
                         (y * std::sin(eps) + c * std::cos(eps)) / kRadiiPerAu};
    static const Precession kToJ2000;
    const double *m = kToJ2000.m;
    out[0] = m[0] * v[0] + m[1] * v[1] + m[2] * v[2];
    out[1] = m[3] * v[0] + m[4] * v[1] + m[5] * v[2];
    out[2] = m[6] * v[0] + m[7] * v[1] + m[8] * v[2];
    return 0;
}

}  // namespace kvx::psat
