// Newcomb's theory of the Sun and the short theory, as pure functions of the
// dynamical Julian date.
//
// Full theory: S. Newcomb, Tables of the Sun, Astronomical Papers of the
// American Ephemeris vol. VI part I (1895): mean elements, equation of the
// centre, long-period terms, the planetary perturbations of
// sun_newcomb_table.cpp and the lunar inequalities (the latter from Hansen's
// lunar theory as adopted by Newcomb), with the small corrections to the
// equation of the centre, the mean longitude and the latitude that were
// applied to the theory in the national ephemerides.
#include "solar/sun/sun_theory.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <initializer_list>

#include "math/constants.h"
#include "math/fast_trig.h"
#include "math/vec3.h"
#include "solar/sun/sun_newcomb_table.h"

namespace kvx::sun {

namespace {

// The theory's sines and cosines are those of math/fast_trig.h.
inline double SinD(double a) { return FastSinDeg(a); }
inline double CosD(double a) { return FastCosDeg(a); }

// Largest multiple of a mean anomaly in the perturbation tables.
constexpr int kMaxMultiple = 17;
constexpr int kSpan = 2 * kMaxMultiple + 1;

// cos and sin of k x for k = -n..n (n <= kMaxMultiple) into c[k], s[k] (c and
// s point at the k = 0 slot of kSpan values): the addition theorem for k > 0,
// parity for k < 0, so the perturbation rows index a multiple of either
// sign directly (the sign of a row's multiple follows no pattern a branch
// predictor could learn).
[[gnu::always_inline]] inline void FillMultiples(double deg, int n, double *c, double *s) {
    const SinCos x = FastSinCosDeg(deg);
    c[0] = 1.0;
    s[0] = 0.0;
    c[1] = c[-1] = x.c;
    s[1] = x.s;
    s[-1] = -x.s;
    double ck = x.c, sk = x.s;  // the k-th multiple, carried in registers
    for (int k = 2; k <= n; ++k) {
        const double cn = ck * x.c - sk * x.s, sn = sk * x.c + ck * x.s;
        ck = cn;
        sk = sn;
        c[k] = c[-k] = ck;
        s[k] = sk;
        s[-k] = -sk;
    }
}

// The multiples of the mean anomalies, row by body: 0 the Earth, 1 to 6 the
// planets in the tables' numbering (3, the Earth's own number, unused).
struct AnomalyMultiples {
    double c[7 * kSpan], s[7 * kSpan];
    static int At(int body, int k) { return body * kSpan + kMaxMultiple + k; }
    double C(int body, int k) const { return c[At(body, k)]; }
    double S(int body, int k) const { return s[At(body, k)]; }
};

// cos and sin of the tables' phases; for each row the places of its two
// multiples in AnomalyMultiples (the planet's i-th, the Earth's j-th); and
// the largest multiple of each body that the rows use. Computed once.
struct PlanetaryTables {
    double lon[kNewcombTermCount][2], rad[kNewcombTermCount][2], lat[kNewcombLatTermCount][2];
    int lonAt[kNewcombTermCount][2], latAt[kNewcombLatTermCount][2];
    int maxMultiple[7] = {};
    void Use(int planet, int i, int j, int at[2]) {
        at[0] = AnomalyMultiples::At(planet, i);
        at[1] = AnomalyMultiples::At(0, j);
        maxMultiple[planet] = std::max(maxMultiple[planet], std::abs(i));
        maxMultiple[0] = std::max(maxMultiple[0], std::abs(j));
    }
    PlanetaryTables() {
        for (int k = 0; k < kNewcombTermCount; ++k) {
            lon[k][0] = CosD(kNewcombTerms[k].lonPhase);
            lon[k][1] = SinD(kNewcombTerms[k].lonPhase);
            rad[k][0] = CosD(kNewcombTerms[k].radPhase);
            rad[k][1] = SinD(kNewcombTerms[k].radPhase);
            Use(kNewcombTerms[k].planet, kNewcombTerms[k].i, kNewcombTerms[k].j, lonAt[k]);
        }
        for (int k = 0; k < kNewcombLatTermCount; ++k) {
            lat[k][0] = CosD(kNewcombLatTerms[k].phase);
            lat[k][1] = SinD(kNewcombLatTerms[k].phase);
            Use(kNewcombLatTerms[k].planet, kNewcombLatTerms[k].i, kNewcombLatTerms[k].j, latAt[k]);
        }
        // The equation of the centre takes the Earth's first four multiples.
        maxMultiple[0] = std::max(maxMultiple[0], 4);
    }
};

const PlanetaryTables &Tables() {
    static const PlanetaryTables tables;  // thread-safe one-time initialisation
    return tables;
}

}  // namespace

// Rotation from the mean equator and equinox of B1950.0 to J2000.0: the
// IAU 1976 precession between the two epochs in the 16-digit form tabulated
// with the cosine-sine transcription of Newcomb's tables. Used as published,
// row by row; it differs from a fresh evaluation of Lieske's angles
// (A&A 58, 1, 1977) at JD 2433282.42346 by about 0.1".
const double kB1950ToJ2000[9] = {
    0.9999257180268403, -0.0111782838886141, -0.0048584357372842,
    0.0111782838782385, 0.9999375206641666,  -0.0000271576311202,
    0.0048584357611567, -0.0000271533600777, 0.9999881973626738,
};

void NewcombEclipticOfDate(double jde, double *lon, double *lat, double *r) {
    const double t = jde - kJ1900;  // days from 1900 January 0.5
    const double T = t / kDaysPerCentury;
    const double T2 = T * T;
    const double T3 = T2 * T;

    // Mean longitude, with the correction to Newcomb's value.
    const double L = vec3::Reduce360(279.696677778 + 36000.768925 * T + 0.0003025 * T2 +
                             (9.22528e-5 - 1.47194e-5 * T + 1.09972e-5 * T2));

    // Long-period terms ("): the first three also shift the mean anomaly.
    const double lp = (1.882 - 0.016 * T) * SinD(57.24 + 150.27 * T) + 6.4 * SinD(231.19 + 20.2 * T) +
                      0.266 * SinD(31.8 + 119.0 * T);
    const double lpMars = 0.202 * SinD(315.6 + 893.3 * T);

    // Mean anomaly of the Earth, corrected, with the long-period terms.
    const double g = vec3::Reduce360(358.475833333 + 35999.04975 * T - 0.00015 * T2 + 0.00148833 + 0.0015963889 * T +
                             0.000143333 * T2 - 3.3333e-6 * T3 + lp / 3600.0);

    // Mean anomalies of the planets (years from 1850 January 0.5).
    const double y = (jde - 2396758.0) / 365.25;
    double gp[7];
    gp[0] = 0.0;
    gp[1] = vec3::Reduce360(248.07 + 1494.7235 * y);    // Mercury
    gp[2] = vec3::Reduce360(114.5 + 585.17493 * y);     // Venus
    gp[3] = 0.0;
    gp[4] = vec3::Reduce360(109.856 + 191.39977 * y);   // Mars
    gp[5] = vec3::Reduce360(148.031 + 30.34583 * y);    // Jupiter
    gp[6] = vec3::Reduce360(284.716 + 12.21794 * y);    // Saturn

    // Multiples of the mean anomalies, as far as the rows use them.
    const PlanetaryTables &tab = Tables();
    AnomalyMultiples mult;
    for (int p : {0, 1, 2, 4, 5, 6}) {
        const int at = AnomalyMultiples::At(p, 0);
        FillMultiples(p == 0 ? g : gp[p], tab.maxMultiple[p], mult.c + at, mult.s + at);
    }

    // Equation of the centre (") and the elliptic part of log10 R (1e-8).
    const double sg = mult.S(0, 1), cg = mult.C(0, 1), s2g = mult.S(0, 2), c2g = mult.C(0, 2);
    const double s3g = mult.S(0, 3), c3g = mult.C(0, 3), s4g = mult.S(0, 4), c4g = mult.C(0, 4);
    const double centre = (6909.794 - 17.274 * T) * sg + (72.334 - 0.362 * T) * s2g + (1.05 - 0.008 * T) * s3g +
                          0.017 * s4g;
    const double logRElliptic = 3059.4 - 15.2 * T + (-727384.1 + 1818.2 * T + 2.2 * T2) * cg +
                                (-9137.4 + 46.0 * T) * c2g + (-145.0 + 1.0 * T) * c3g - 2.0 * c4g;

    // Planetary perturbations: cos(phase - A) = cos(phase) cos A + sin(phase) sin A,
    // with A = i gP + j g and cos A, sin A from the multiples by the
    // addition theorem.
    const double *mc = mult.c, *ms = mult.s;
    double dl = 0.0, dr = 0.0, db = 0.0;
    for (int k = 0; k < kNewcombTermCount; ++k) {
        const int p = tab.lonAt[k][0], e = tab.lonAt[k][1];
        const double cA = mc[p] * mc[e] - ms[p] * ms[e], sA = ms[p] * mc[e] + mc[p] * ms[e];
        dl += kNewcombTerms[k].lonCoef * (tab.lon[k][0] * cA + tab.lon[k][1] * sA);
        dr += kNewcombTerms[k].radCoef * (tab.rad[k][0] * cA + tab.rad[k][1] * sA);
    }
    for (int k = 0; k < kNewcombLatTermCount; ++k) {
        const int p = tab.latAt[k][0], e = tab.latAt[k][1];
        const double cA = mc[p] * mc[e] - ms[p] * ms[e], sA = ms[p] * mc[e] + mc[p] * ms[e];
        db += kNewcombLatTerms[k].coef * (tab.lat[k][0] * cA + tab.lat[k][1] * sA);
    }

    // Lunar inequalities: mean elongation D, the Moon's mean anomaly m, its
    // argument of latitude F and the Sun's mean longitude from the Moon's node u.
    const double D = 350.7374861 + 12.19074919142 * t - 0.001436111 * T2 + 1.889e-6 * T3;
    const double m = 296.1046083 + 13.0649924465 * t + 0.009191667 * T2 + 1.4389e-5 * T3;
    const double F = 11.2508889 + 13.22935044901 * t - 0.003211111 * T2 - 3.33e-7 * T3;
    const double u = 20.5134028 + 1.038601257586 * t - 0.001775278 * T2 - 2.222e-6 * T3;
    double mDc[7], mDs[7];
    FillMultiples(D, 3, mDc + 3, mDs + 3);
    const double sD = mDs[4], cD = mDc[4], s3D = mDs[6], c3D = mDc[6];
    const SinCos scm = FastSinCosDeg(m), scF = FastSinCosDeg(F), sc2u = FastSinCosDeg(2.0 * u);
    const double sm = scm.s, cm = scm.c;
    const double sF = scF.s, cF = scF.c;
    const double s2u = sc2u.s, c2u = sc2u.c;
    // sin and cos of the combined arguments by the addition theorem.
    const double sDpm = sD * cm + cD * sm, cDpm = cD * cm - sD * sm;          // D + m
    const double sDmm = sD * cm - cD * sm, cDmm = cD * cm + sD * sm;          // D - m
    const double s3Dmm = s3D * cm - c3D * sm, c3Dmm = c3D * cm + s3D * sm;    // 3D - m
    const double sDpg = sD * cg + cD * sg, cDpg = cD * cg - sD * sg;          // D + g
    const double sDmg = sD * cg - cD * sg, cDmg = cD * cg + sD * sg;          // D - g
    const double sDmmg = sDmm * cg - cDmm * sg, cDmmg = cDmm * cg + sDmm * sg;  // D - m - g
    dl += 6.466 * sD + 0.013 * s3D + 0.177 * sDpm - 0.425 * sDmm + 0.039 * s3Dmm - 0.064 * sDpg + 0.172 * sDmg -
          0.013 * sDmmg;
    dr += 13384.0 * cD + 30.0 * c3D + 370.0 * cDpm - 1332.0 * cDmm + 80.0 * c3Dmm - 140.0 * cDpg + 360.0 * cDmg -
          30.0 * cDmmg + 30.0 * c2u;
    const double sFm2u = sF * c2u - cF * s2u, cFm2u = cF * c2u + sF * s2u;  // F - 2u
    db += 0.576 * sF + 0.016 * (sF * cm + cF * sm) - 0.047 * (sF * cm - cF * sm) + 0.021 * sFm2u +
          0.005 * (sFm2u * cm - cFm2u * sm) + 0.005 * (sF * cg + cF * sg) + 0.005 * (sF * cg - cF * sg);

    // Corrections of the equation of the centre (longitude of perihelion and
    // eccentricity), in arcseconds of longitude.
    const double dCentre = (0.01015 + 0.00035 * T + 0.00023 * T2) * sg + (0.02652 + 2e-5 * T - 0.00054 * T2) * cg;

    const double lonRad = DegToRad(L) + (centre + lp + lpMars + dl + dCentre) * kArcsecToRad;
    const double lonDeg = vec3::Reduce360(RadToDeg(lonRad));

    // Latitude corrections: the Moon's node and the ecliptic of the theory.
    const double node = 259.183275 - 1934.14200833 * T + 0.00207778 * T2;
    db += -0.01914 * SinD(lonDeg - node) + (0.0345 * T - 0.03903 - 0.00077 * T2) * SinD(lonDeg) +
          (0.03363 + 0.01058 * T + 0.00286 * T2) * CosD(lonDeg);

    *lon = lonDeg;
    *lat = db / 3600.0;
    *r = std::pow(10.0, dr / 1e9 + logRElliptic / 1e8);
}

void NewcombEquatorOfDate(double jde, double v[3]) {
    double l, b, R;
    NewcombEclipticOfDate(jde, &l, &b, &R);
    const double T = (jde - kJ1900) / kDaysPerCentury;
    const double eps = 23.45229444 - 0.0130125 * T - 1.6389e-6 * T * T + 5.0278e-7 * T * T * T;
    const double se = SinD(eps), ce = CosD(eps);
    const double sb = SinD(b), cb = CosD(b), sl = SinD(l), cl = CosD(l);
    v[0] = R * cb * cl;
    v[1] = R * (ce * cb * sl - se * sb);
    v[2] = R * (se * cb * sl + ce * sb);
}

void ShortEclipticOfDate(double jde, double *lon, double *r) {
    // The epoch is 1900 January 1.0 (one day after the full theory's).
    const double T = (jde - 2415021.0) / kDaysPerCentury;
    const double L = vec3::Reduce360(280.6824 + 36000.769325 * T + 0.000722222 * T * T);
    const double G = vec3::Reduce360(281.2206 + 1.717697 * T + 0.000483333 * T * T + 2.77777e-6 * T * T * T);
    // The eccentricity polynomial is held at its values of the range ends.
    double Te = T;
    if (jde > 5373484.5) Te = 80.99831622176592;
    if (jde < -1931806.5) Te = -119.00965092402464;
    const double e = 0.0167498 - 4.258e-5 * Te - 1.37e-7 * Te * Te;
    const double M = vec3::Reduce360(L - G);
    const double Q = (1.91946 - 0.00478889 * T - 1.44444e-5 * T * T) * SinD(M) + 0.0200939 * SinD(2.0 * M);
    *lon = vec3::Reduce360(L + Q);
    *r = 1.00000129 * (1.0 - e * e) / (1.0 + e * CosD(M + Q));
}

}  // namespace kvx::sun
