// CalcASatFull: the complete SGP4/SDP4 model as revised by Vallado,
// Crawford, Hujsak and Kelso, "Revisiting Spacetrack Report #3", AIAA
// 2006-6753 (near-Earth SGP4 of Hoots & Roehrich 1980 with the revision's
// fixes; for periods of 225 minutes and more the deep-space secular and
// periodic lunar-solar terms and the 12 h / 24 h resonance integrator of
// Hujsak 1979), WGS-72 constants, the revision's "improved" operation mode
// (IAU 1982 sidereal time at the epoch, the perturbed inclination for the
// Lyddane choice). The resonance integrator always starts at the epoch, so
// every call is independent of earlier ones.
#include <cmath>

#include "asat/sgp4.h"
#include "math/constants.h"

namespace kvx::asat {

namespace {

// WGS-72 gravity constants.
constexpr double kRe = 6378.135;
constexpr double kMu = 398600.8;
constexpr double kJ2 = 0.001082616;
constexpr double kJ3 = -0.00000253881;
constexpr double kJ4 = -0.00000165597;
constexpr double kJ3oJ2 = kJ3 / kJ2;
const double kXke = 60.0 / std::sqrt(kRe * kRe * kRe / kMu);
constexpr double kTwoPi = 2.0 * kPi;
constexpr double kX2o3 = 2.0 / 3.0;

// Lunar and solar constants of the deep-space theory.
constexpr double kZns = 1.19459e-5;      // Sun's mean motion, rad/min
constexpr double kZes = 0.01675;         // Sun's eccentricity
constexpr double kZnl = 1.5835218e-4;    // Moon's mean motion, rad/min
constexpr double kZel = 0.05490;         // Moon's eccentricity
constexpr double kRptim = 4.37526908801129966e-3;  // Earth's rotation, rad/min

double CFmod(double x, double y) { return std::fmod(x, y); }

// Sidereal angle at the epoch (IAU 1982 GMST), radians.
double Gstime(double jdut1) {
    const double tut1 = (jdut1 - 2451545.0) / 36525.0;
    double temp = -6.2e-6 * tut1 * tut1 * tut1 + 0.093104 * tut1 * tut1 +
                  (876600.0 * 3600 + 8640184.812866) * tut1 + 67310.54841;
    temp = CFmod(temp * (kPi / 180.0) / 240.0, kTwoPi);
    if (temp < 0.0) temp += kTwoPi;
    return temp;
}

// Coefficients of the lunar and solar periodics.
struct Periodics {
    double e3, ee2, se2, se3, sgh2, sgh3, sgh4, sh2, sh3, si2, si3, sl2, sl3, sl4;
    double xgh2, xgh3, xgh4, xh2, xh3, xi2, xi3, xl2, xl3, xl4, zmol, zmos;
};

// The quantities shared by the secular set-up: the Sun's (ss*, sz*) and
// the Moon's (s*, z*) geometry factors.
struct Common {
    double sinim, cosim, emsq, s1, s2, s3, s4, s5, ss1, ss2, ss3, ss4, ss5;
    double sz1, sz3, sz11, sz13, sz21, sz23, sz31, sz33;
    double z1, z3, z11, z13, z21, z23, z31, z33;
};

struct Resonance {
    int irez;  // 0 none, 1 synchronous (24 h), 2 half-day (12 h)
    double d2201, d2211, d3210, d3222, d4410, d4422, d5220, d5232, d5421, d5433;
    double del1, del2, del3, xfact, xlamo;
};

struct Model : SecularTerms {
    double ecco, inclo, noUnkozai;
    bool deep;
    double con41;
    double gsto;
    double dedt, didt, dmdt, dnodt, domdt;
    Periodics p;
    Resonance res;
};

// Lunar-solar geometry at the epoch (the revision's dscom).
void DeepCommon(double epoch, double ep, double argpp, double inclp, double nodep, double np, Common *c,
                Periodics *p) {
    constexpr double c1ss = 2.9864797e-6, c1l = 4.7968065e-7;
    constexpr double zsinis = 0.39785416, zcosis = 0.91744867, zcosgs = 0.1945905, zsings = -0.98088458;
    const double nm = np, em = ep;
    const double snodm = std::sin(nodep), cnodm = std::cos(nodep);
    const double sinomm = std::sin(argpp), cosomm = std::cos(argpp);
    c->sinim = std::sin(inclp);
    c->cosim = std::cos(inclp);
    const double sinim = c->sinim, cosim = c->cosim;
    const double emsq = em * em;
    c->emsq = emsq;
    const double betasq = 1.0 - emsq;
    const double rtemsq = std::sqrt(betasq);

    // The Moon's node and orbit orientation at the epoch.
    const double day = epoch + 18261.5;
    const double xnodce = CFmod(4.5236020 - 9.2422029e-4 * day, kTwoPi);
    const double stem = std::sin(xnodce), ctem = std::cos(xnodce);
    const double zcosil = 0.91375164 - 0.03568096 * ctem;
    const double zsinil = std::sqrt(1.0 - zcosil * zcosil);
    const double zsinhl = 0.089683511 * stem / zsinil;
    const double zcoshl = std::sqrt(1.0 - zsinhl * zsinhl);
    const double gam = 5.8351514 + 0.0019443680 * day;
    double zx = 0.39785416 * stem / zsinil;
    const double zy = zcoshl * ctem + 0.91744867 * zsinhl * stem;
    zx = std::atan2(zx, zy);
    zx = gam + zx - xnodce;
    const double zcosgl = std::cos(zx), zsingl = std::sin(zx);

    // First pass the Sun, second the Moon.
    double zcosg = zcosgs, zsing = zsings, zcosi = zcosis, zsini = zsinis, zcosh = cnodm, zsinh = snodm;
    double cc = c1ss;
    const double xnoi = 1.0 / nm;
    double s1 = 0, s2 = 0, s3 = 0, s4 = 0, s5 = 0, s6 = 0, s7 = 0;
    double z1 = 0, z2 = 0, z3 = 0, z11 = 0, z12 = 0, z13 = 0, z21 = 0, z22 = 0, z23 = 0, z31 = 0, z32 = 0, z33 = 0;
    double ss1 = 0, ss2 = 0, ss3 = 0, ss4 = 0, ss5 = 0, ss6 = 0, ss7 = 0;
    double sz1 = 0, sz2 = 0, sz3 = 0, sz11 = 0, sz12 = 0, sz13 = 0, sz21 = 0, sz22 = 0, sz23 = 0, sz31 = 0,
           sz32 = 0, sz33 = 0;
    for (int body = 0; body < 2; ++body) {
        const double a1 = zcosg * zcosh + zsing * zcosi * zsinh;
        const double a3 = -zsing * zcosh + zcosg * zcosi * zsinh;
        const double a7 = -zcosg * zsinh + zsing * zcosi * zcosh;
        const double a8 = zsing * zsini;
        const double a9 = zsing * zsinh + zcosg * zcosi * zcosh;
        const double a10 = zcosg * zsini;
        const double a2 = cosim * a7 + sinim * a8;
        const double a4 = cosim * a9 + sinim * a10;
        const double a5 = -sinim * a7 + cosim * a8;
        const double a6 = -sinim * a9 + cosim * a10;
        const double x1 = a1 * cosomm + a2 * sinomm;
        const double x2 = a3 * cosomm + a4 * sinomm;
        const double x3 = -a1 * sinomm + a2 * cosomm;
        const double x4 = -a3 * sinomm + a4 * cosomm;
        const double x5 = a5 * sinomm;
        const double x6 = a6 * sinomm;
        const double x7 = a5 * cosomm;
        const double x8 = a6 * cosomm;
        z31 = 12.0 * x1 * x1 - 3.0 * x3 * x3;
        z32 = 24.0 * x1 * x2 - 6.0 * x3 * x4;
        z33 = 12.0 * x2 * x2 - 3.0 * x4 * x4;
        z1 = 3.0 * (a1 * a1 + a2 * a2) + z31 * emsq;
        z2 = 6.0 * (a1 * a3 + a2 * a4) + z32 * emsq;
        z3 = 3.0 * (a3 * a3 + a4 * a4) + z33 * emsq;
        z11 = -6.0 * a1 * a5 + emsq * (-24.0 * x1 * x7 - 6.0 * x3 * x5);
        z12 = -6.0 * (a1 * a6 + a3 * a5) + emsq * (-24.0 * (x2 * x7 + x1 * x8) - 6.0 * (x3 * x6 + x4 * x5));
        z13 = -6.0 * a3 * a6 + emsq * (-24.0 * x2 * x8 - 6.0 * x4 * x6);
        z21 = 6.0 * a2 * a5 + emsq * (24.0 * x1 * x5 - 6.0 * x3 * x7);
        z22 = 6.0 * (a4 * a5 + a2 * a6) + emsq * (24.0 * (x2 * x5 + x1 * x6) - 6.0 * (x4 * x7 + x3 * x8));
        z23 = 6.0 * a4 * a6 + emsq * (24.0 * x2 * x6 - 6.0 * x4 * x8);
        z1 = z1 + z1 + betasq * z31;
        z2 = z2 + z2 + betasq * z32;
        z3 = z3 + z3 + betasq * z33;
        s3 = cc * xnoi;
        s2 = -0.5 * s3 / rtemsq;
        s4 = s3 * rtemsq;
        s1 = -15.0 * em * s4;
        s5 = x1 * x3 + x2 * x4;
        s6 = x2 * x3 + x1 * x4;
        s7 = x2 * x4 - x1 * x3;
        if (body == 0) {
            ss1 = s1, ss2 = s2, ss3 = s3, ss4 = s4, ss5 = s5, ss6 = s6, ss7 = s7;
            sz1 = z1, sz2 = z2, sz3 = z3, sz11 = z11, sz12 = z12, sz13 = z13;
            sz21 = z21, sz22 = z22, sz23 = z23, sz31 = z31, sz32 = z32, sz33 = z33;
            zcosg = zcosgl;
            zsing = zsingl;
            zcosi = zcosil;
            zsini = zsinil;
            zcosh = zcoshl * cnodm + zsinhl * snodm;
            zsinh = snodm * zcoshl - cnodm * zsinhl;
            cc = c1l;
        }
    }
    p->zmol = CFmod(4.7199672 + 0.22997150 * day - gam, kTwoPi);
    p->zmos = CFmod(6.2565837 + 0.017201977 * day, kTwoPi);
    // Solar terms.
    p->se2 = 2.0 * ss1 * ss6;
    p->se3 = 2.0 * ss1 * ss7;
    p->si2 = 2.0 * ss2 * sz12;
    p->si3 = 2.0 * ss2 * (sz13 - sz11);
    p->sl2 = -2.0 * ss3 * sz2;
    p->sl3 = -2.0 * ss3 * (sz3 - sz1);
    p->sl4 = -2.0 * ss3 * (-21.0 - 9.0 * emsq) * kZes;
    p->sgh2 = 2.0 * ss4 * sz32;
    p->sgh3 = 2.0 * ss4 * (sz33 - sz31);
    p->sgh4 = -18.0 * ss4 * kZes;
    p->sh2 = -2.0 * ss2 * sz22;
    p->sh3 = -2.0 * ss2 * (sz23 - sz21);
    // Lunar terms.
    p->ee2 = 2.0 * s1 * s6;
    p->e3 = 2.0 * s1 * s7;
    p->xi2 = 2.0 * s2 * z12;
    p->xi3 = 2.0 * s2 * (z13 - z11);
    p->xl2 = -2.0 * s3 * z2;
    p->xl3 = -2.0 * s3 * (z3 - z1);
    p->xl4 = -2.0 * s3 * (-21.0 - 9.0 * emsq) * kZel;
    p->xgh2 = 2.0 * s4 * z32;
    p->xgh3 = 2.0 * s4 * (z33 - z31);
    p->xgh4 = -18.0 * s4 * kZel;
    p->xh2 = -2.0 * s2 * z22;
    p->xh3 = -2.0 * s2 * (z23 - z21);

    c->s1 = s1, c->s2 = s2, c->s3 = s3, c->s4 = s4, c->s5 = s5;
    c->ss1 = ss1, c->ss2 = ss2, c->ss3 = ss3, c->ss4 = ss4, c->ss5 = ss5;
    c->sz1 = sz1, c->sz3 = sz3, c->sz11 = sz11, c->sz13 = sz13, c->sz21 = sz21, c->sz23 = sz23;
    c->sz31 = sz31, c->sz33 = sz33;
    c->z1 = z1, c->z3 = z3, c->z11 = z11, c->z13 = z13, c->z21 = z21, c->z23 = z23, c->z31 = z31, c->z33 = z33;
}

// Secular lunar-solar rates and the resonance coefficients (dsinit).
void DeepInit(const Common &c, double xpidot, double eccsq, Model *m) {
    constexpr double q22 = 1.7891679e-6, q31 = 2.1460748e-6, q33 = 2.2123015e-7;
    constexpr double root22 = 1.7891679e-6, root44 = 7.3636953e-9, root54 = 2.1765803e-9;
    constexpr double root32 = 3.7393792e-7, root52 = 1.1428639e-7;
    const double nm = m->noUnkozai;
    const double em = m->ecco;
    const double cosim = c.cosim, sinim = c.sinim, emsq = c.emsq;
    Resonance &r = m->res;
    r = Resonance{};
    if (nm > 0.0034906585 && nm < 0.0052359877) r.irez = 1;
    if (nm >= 8.26e-3 && nm <= 9.24e-3 && em >= 0.5) r.irez = 2;

    const double ses = c.ss1 * kZns * c.ss5;
    const double sis = c.ss2 * kZns * (c.sz11 + c.sz13);
    const double sls = -kZns * c.ss3 * (c.sz1 + c.sz3 - 14.0 - 6.0 * emsq);
    const double sghs = c.ss4 * kZns * (c.sz31 + c.sz33 - 6.0);
    double shs = -kZns * c.ss2 * (c.sz21 + c.sz23);
    const bool nearEquatorial = m->inclo < 5.2359877e-2 || m->inclo > kPi - 5.2359877e-2;
    if (nearEquatorial) shs = 0.0;
    if (sinim != 0.0) shs = shs / sinim;
    const double sgs = sghs - cosim * shs;
    m->dedt = ses + c.s1 * kZnl * c.s5;
    m->didt = sis + c.s2 * kZnl * (c.z11 + c.z13);
    m->dmdt = sls - kZnl * c.s3 * (c.z1 + c.z3 - 14.0 - 6.0 * emsq);
    const double sghl = c.s4 * kZnl * (c.z31 + c.z33 - 6.0);
    double shll = -kZnl * c.s2 * (c.z21 + c.z23);
    if (nearEquatorial) shll = 0.0;
    m->domdt = sgs + sghl;
    m->dnodt = shs;
    if (sinim != 0.0) {
        m->domdt = m->domdt - cosim / sinim * shll;
        m->dnodt = m->dnodt + shll / sinim;
    }
    if (r.irez == 0) return;

    const double theta = CFmod(m->gsto, kTwoPi);
    const double aonv = std::pow(nm / kXke, kX2o3);
    if (r.irez == 2) {
        // Half-day resonance: eccentricity functions G of Gooding's fit,
        // taken at the epoch eccentricity.
        const double cosisq = cosim * cosim;
        const double e = m->ecco;
        const double esq = eccsq;
        const double eoc = e * esq;
        const double g201 = -0.306 - (e - 0.64) * 0.440;
        double g211, g310, g322, g410, g422, g520, g521, g532, g533;
        if (e <= 0.65) {
            g211 = 3.616 - 13.2470 * e + 16.2900 * esq;
            g310 = -19.302 + 117.3900 * e - 228.4190 * esq + 156.5910 * eoc;
            g322 = -18.9068 + 109.7927 * e - 214.6334 * esq + 146.5816 * eoc;
            g410 = -41.122 + 242.6940 * e - 471.0940 * esq + 313.9530 * eoc;
            g422 = -146.407 + 841.8800 * e - 1629.014 * esq + 1083.4350 * eoc;
            g520 = -532.114 + 3017.977 * e - 5740.032 * esq + 3708.2760 * eoc;
        } else {
            g211 = -72.099 + 331.819 * e - 508.738 * esq + 266.724 * eoc;
            g310 = -346.844 + 1582.851 * e - 2415.925 * esq + 1246.113 * eoc;
            g322 = -342.585 + 1554.908 * e - 2366.899 * esq + 1215.972 * eoc;
            g410 = -1052.797 + 4758.686 * e - 7193.992 * esq + 3651.957 * eoc;
            g422 = -3581.690 + 16178.110 * e - 24462.770 * esq + 12422.520 * eoc;
            if (e > 0.715) g520 = -5149.66 + 29936.92 * e - 54087.36 * esq + 31324.56 * eoc;
            else g520 = 1464.74 - 4664.75 * e + 3763.64 * esq;
        }
        if (e < 0.7) {
            g533 = -919.22770 + 4988.6100 * e - 9064.7700 * esq + 5542.21 * eoc;
            g521 = -822.71072 + 4568.6173 * e - 8491.4146 * esq + 5337.524 * eoc;
            g532 = -853.66600 + 4690.2500 * e - 8624.7700 * esq + 5341.4 * eoc;
        } else {
            g533 = -37995.780 + 161616.52 * e - 229838.20 * esq + 109377.94 * eoc;
            g521 = -51752.104 + 218913.95 * e - 309468.16 * esq + 146349.42 * eoc;
            g532 = -40023.880 + 170470.89 * e - 242699.48 * esq + 115605.82 * eoc;
        }
        const double sini2 = sinim * sinim;
        const double f220 = 0.75 * (1.0 + 2.0 * cosim + cosisq);
        const double f221 = 1.5 * sini2;
        const double f321 = 1.875 * sinim * (1.0 - 2.0 * cosim - 3.0 * cosisq);
        const double f322 = -1.875 * sinim * (1.0 + 2.0 * cosim - 3.0 * cosisq);
        const double f441 = 35.0 * sini2 * f220;
        const double f442 = 39.3750 * sini2 * sini2;
        const double f522 = 9.84375 * sinim *
                            (sini2 * (1.0 - 2.0 * cosim - 5.0 * cosisq) + 0.33333333 * (-2.0 + 4.0 * cosim + 6.0 * cosisq));
        const double f523 = sinim * (4.92187512 * sini2 * (-2.0 - 4.0 * cosim + 10.0 * cosisq) +
                                     6.56250012 * (1.0 + 2.0 * cosim - 3.0 * cosisq));
        const double f542 = 29.53125 * sinim * (2.0 - 8.0 * cosim + cosisq * (-12.0 + 8.0 * cosim + 10.0 * cosisq));
        const double f543 = 29.53125 * sinim * (-2.0 - 8.0 * cosim + cosisq * (12.0 + 8.0 * cosim - 10.0 * cosisq));
        const double xno2 = nm * nm;
        const double ainv2 = aonv * aonv;
        double temp1 = 3.0 * xno2 * ainv2;
        double temp = temp1 * root22;
        r.d2201 = temp * f220 * g201;
        r.d2211 = temp * f221 * g211;
        temp1 = temp1 * aonv;
        temp = temp1 * root32;
        r.d3210 = temp * f321 * g310;
        r.d3222 = temp * f322 * g322;
        temp1 = temp1 * aonv;
        temp = 2.0 * temp1 * root44;
        r.d4410 = temp * f441 * g410;
        r.d4422 = temp * f442 * g422;
        temp1 = temp1 * aonv;
        temp = temp1 * root52;
        r.d5220 = temp * f522 * g520;
        r.d5232 = temp * f523 * g532;
        temp = 2.0 * temp1 * root54;
        r.d5421 = temp * f542 * g521;
        r.d5433 = temp * f543 * g533;
        r.xlamo = CFmod(m->mo + m->nodeo + m->nodeo - theta - theta, kTwoPi);
        r.xfact = m->mdot + m->dmdt + 2.0 * (m->nodedot + m->dnodt - kRptim) - nm;
    } else {
        // Synchronous resonance.
        const double g200 = 1.0 + emsq * (-2.5 + 0.8125 * emsq);
        const double g310 = 1.0 + 2.0 * emsq;
        const double g300 = 1.0 + emsq * (-6.0 + 6.60937 * emsq);
        const double f220 = 0.75 * (1.0 + cosim) * (1.0 + cosim);
        const double f311 = 0.9375 * sinim * sinim * (1.0 + 3.0 * cosim) - 0.75 * (1.0 + cosim);
        double f330 = 1.0 + cosim;
        f330 = 1.875 * f330 * f330 * f330;
        r.del1 = 3.0 * nm * nm * aonv * aonv;
        r.del2 = 2.0 * r.del1 * f220 * g200 * q22;
        r.del3 = 3.0 * r.del1 * f330 * g300 * q33 * aonv;
        r.del1 = r.del1 * f311 * g310 * q31 * aonv;
        r.xlamo = CFmod(m->mo + m->nodeo + m->argpo - theta, kTwoPi);
        r.xfact = m->mdot + xpidot - kRptim + m->dmdt + m->domdt + m->dnodt - nm;
    }
}

// Resonance: the mean longitude and mean motion integrated from the epoch
// in steps of 720 minutes (second-order Taylor steps), then a Taylor step
// to t. Returns the resonant mean anomaly and mean motion.
void Resonate(const Model &m, double t, double nodem, double argpm, double *mm, double *nm) {
    constexpr double fasx2 = 0.13130908, fasx4 = 2.8843198, fasx6 = 0.37448087;
    constexpr double g22 = 5.7686396, g32 = 0.95240898, g44 = 1.8014998, g52 = 1.0508330, g54 = 4.4108898;
    constexpr double stepp = 720.0, step2 = 259200.0;
    // At most ~ 100 years of steps: beyond that the model means nothing and
    // the loop must stay bounded.
    constexpr double kMaxSpan = 720.0 * 80000.0;
    const Resonance &r = m.res;
    const double theta = CFmod(m.gsto + t * kRptim, kTwoPi);
    double atime = 0.0, xni = m.noUnkozai, xli = r.xlamo;
    const double delt = t > 0.0 ? stepp : -stepp;
    double xndt = 0, xldot = 0, xnddt = 0, ft = 0;
    const double tt = std::fabs(t) > kMaxSpan ? std::copysign(kMaxSpan, t) : t;
    for (;;) {
        if (r.irez != 2) {
            xndt = r.del1 * std::sin(xli - fasx2) + r.del2 * std::sin(2.0 * (xli - fasx4)) +
                   r.del3 * std::sin(3.0 * (xli - fasx6));
            xldot = xni + r.xfact;
            xnddt = r.del1 * std::cos(xli - fasx2) + 2.0 * r.del2 * std::cos(2.0 * (xli - fasx4)) +
                    3.0 * r.del3 * std::cos(3.0 * (xli - fasx6));
            xnddt = xnddt * xldot;
        } else {
            const double xomi = m.argpo + m.argpdot * atime;
            const double x2omi = xomi + xomi;
            const double x2li = xli + xli;
            xndt = r.d2201 * std::sin(x2omi + xli - g22) + r.d2211 * std::sin(xli - g22) +
                   r.d3210 * std::sin(xomi + xli - g32) + r.d3222 * std::sin(-xomi + xli - g32) +
                   r.d4410 * std::sin(x2omi + x2li - g44) + r.d4422 * std::sin(x2li - g44) +
                   r.d5220 * std::sin(xomi + xli - g52) + r.d5232 * std::sin(-xomi + xli - g52) +
                   r.d5421 * std::sin(xomi + x2li - g54) + r.d5433 * std::sin(-xomi + x2li - g54);
            xldot = xni + r.xfact;
            xnddt = r.d2201 * std::cos(x2omi + xli - g22) + r.d2211 * std::cos(xli - g22) +
                    r.d3210 * std::cos(xomi + xli - g32) + r.d3222 * std::cos(-xomi + xli - g32) +
                    r.d5220 * std::cos(xomi + xli - g52) + r.d5232 * std::cos(-xomi + xli - g52) +
                    2.0 * (r.d4410 * std::cos(x2omi + x2li - g44) + r.d4422 * std::cos(x2li - g44) +
                           r.d5421 * std::cos(xomi + x2li - g54) + r.d5433 * std::cos(-xomi + x2li - g54));
            xnddt = xnddt * xldot;
        }
        if (!(std::fabs(tt - atime) >= stepp)) {
            ft = tt - atime;
            break;
        }
        xli = xli + xldot * delt + xndt * step2;
        xni = xni + xndt * delt + xnddt * step2;
        atime = atime + delt;
    }
    // The mean motion goes through its change from n0 like the published
    // code (dndt = n - n0, n = n0 + dndt), which can differ in the last bit.
    const double dndt = (xni + xndt * ft + xnddt * ft * ft * 0.5) - m.noUnkozai;
    *nm = m.noUnkozai + dndt;
    const double xl = xli + xldot * ft + xndt * ft * ft * 0.5;
    if (r.irez != 1) *mm = xl - 2.0 * nodem + 2.0 * theta;
    else *mm = xl - nodem - argpm + theta;
}

// Lunar-solar periodics at t (dpper) applied to the mean elements; with
// the Lyddane form of the node and perigee below 0.2 rad of inclination.
void LunarSolarPeriodics(const Periodics &p, double t, double *ep, double *inclp, double *nodep, double *argpp,
                         double *mp) {
    double zm = p.zmos + kZns * t;
    double zf = zm + 2.0 * kZes * std::sin(zm);
    double sinzf = std::sin(zf);
    double f2 = 0.5 * sinzf * sinzf - 0.25;
    double f3 = -0.5 * sinzf * std::cos(zf);
    const double ses = p.se2 * f2 + p.se3 * f3;
    const double sis = p.si2 * f2 + p.si3 * f3;
    const double sls = p.sl2 * f2 + p.sl3 * f3 + p.sl4 * sinzf;
    const double sghs = p.sgh2 * f2 + p.sgh3 * f3 + p.sgh4 * sinzf;
    const double shs = p.sh2 * f2 + p.sh3 * f3;
    zm = p.zmol + kZnl * t;
    zf = zm + 2.0 * kZel * std::sin(zm);
    sinzf = std::sin(zf);
    f2 = 0.5 * sinzf * sinzf - 0.25;
    f3 = -0.5 * sinzf * std::cos(zf);
    const double sel = p.ee2 * f2 + p.e3 * f3;
    const double sil = p.xi2 * f2 + p.xi3 * f3;
    const double sll = p.xl2 * f2 + p.xl3 * f3 + p.xl4 * sinzf;
    const double sghl = p.xgh2 * f2 + p.xgh3 * f3 + p.xgh4 * sinzf;
    const double shll = p.xh2 * f2 + p.xh3 * f3;
    const double pe = ses + sel;
    const double pinc = sis + sil;
    const double pl = sls + sll;
    double pgh = sghs + sghl;
    double ph = shs + shll;

    *inclp = *inclp + pinc;
    *ep = *ep + pe;
    const double sinip = std::sin(*inclp), cosip = std::cos(*inclp);
    if (*inclp >= 0.2) {
        ph /= sinip;
        pgh -= cosip * ph;
        *argpp += pgh;
        *nodep += ph;
        *mp += pl;
    } else {
        const double sinop = std::sin(*nodep), cosop = std::cos(*nodep);
        double alfdp = sinip * sinop;
        double betdp = sinip * cosop;
        const double dalf = ph * cosop + pinc * cosip * sinop;
        const double dbet = -ph * sinop + pinc * cosip * cosop;
        alfdp = alfdp + dalf;
        betdp = betdp + dbet;
        *nodep = CFmod(*nodep, kTwoPi);
        const double xls = *mp + *argpp + pl + pgh + (cosip - pinc * sinip) * *nodep;
        const double xnoh = *nodep;
        *nodep = std::atan2(alfdp, betdp);
        if (std::fabs(xnoh - *nodep) > kPi) {
            if (*nodep < xnoh) *nodep += kTwoPi;
            else *nodep -= kTwoPi;
        }
        *mp += pl;
        *argpp = xls - *mp - cosip * *nodep;
    }
}

bool Init(const Elm &elm, Model *out) {
    Model &m = *out;
    m = Model{};
    m.ecco = elm.eccentricity;
    m.inclo = elm.inclination;
    m.nodeo = elm.raan;
    m.argpo = elm.argPerigee;
    m.mo = elm.meanAnomaly;
    m.bstar = elm.bstar;
    const double epoch = elm.epoch - 2433281.5;  // days from 1950 January 0.0

    // Un-Kozai (initl).
    const double eccsq = m.ecco * m.ecco;
    const double omeosq = 1.0 - eccsq;
    const double rteosq = std::sqrt(omeosq);
    const double cosio = std::cos(m.inclo);
    const double cosio2 = cosio * cosio;
    const double ak = std::pow(kXke / elm.meanMotion, kX2o3);
    const double d1 = 0.75 * kJ2 * (3.0 * cosio2 - 1.0) / (rteosq * omeosq);
    double del = d1 / (ak * ak);
    const double adel = ak * (1.0 - del * del - del * (1.0 / 3.0 + 134.0 * del * del / 81.0));
    del = d1 / (adel * adel);
    m.noUnkozai = elm.meanMotion / (1.0 + del);
    const double ao = std::pow(kXke / m.noUnkozai, kX2o3);
    const double sinio = std::sin(m.inclo);
    const double po = ao * omeosq;
    const double con42 = 1.0 - 5.0 * cosio2;
    m.con41 = -con42 - cosio2 - cosio2;
    const double posq = po * po;
    const double rp = ao * (1.0 - m.ecco);
    m.gsto = Gstime(epoch + 2433281.5);
    if (!(m.noUnkozai > 0.0) || !(omeosq > 0.0) || !std::isfinite(ao)) return false;

    // Near-Earth drag and gravity coefficients.
    SecularSetUp s;
    s.n0 = m.noUnkozai;
    s.a0 = ao;
    s.cosi = cosio;
    s.sini = sinio;
    s.x3thm1 = m.con41;
    s.pinvsq = 1.0 / posq;
    s.radiusKm = kRe;
    s.ck2 = 0.5 * kJ2;
    s.k4 = -0.46875 * kJ4;
    s.a3ovk2 = -2.0 * kJ3oJ2;
    const double qz = (120.0 - 78.0) / kRe;
    s.qoms2t = qz * qz * qz * qz;
    s.revision2006 = true;
    s.simple = rp < 220.0 / kRe + 1.0;
    SetUpSecular(elm, s, &m);
    const double xpidot = m.argpdot + m.nodedot;

    if (2.0 * kPi / m.noUnkozai >= 225.0) {
        m.deep = true;
        m.simple = true;
        Common c;
        DeepCommon(epoch, m.ecco, m.argpo, m.inclo, m.nodeo, m.noUnkozai, &c, &m.p);
        DeepInit(c, xpidot, eccsq, &m);
    }
    return true;
}

bool Propagate(const Model &m, double t, double r[3], double v[3]) {
    // Secular gravity and drag.
    const Secular sec = SecularUpdate(m, t);
    double mm = sec.mm, argpm = sec.argpm, nodem = sec.nodem;
    const double tempa = sec.tempa, tempe = sec.tempe, templ = sec.templ;
    double nm = m.noUnkozai;
    double em = m.ecco;
    double inclm = m.inclo;
    if (m.deep) {
        // Lunar-solar secular rates, then the resonance.
        em = em + m.dedt * t;
        inclm = inclm + m.didt * t;
        argpm = argpm + m.domdt * t;
        nodem = nodem + m.dnodt * t;
        mm = mm + m.dmdt * t;
        if (m.res.irez != 0) Resonate(m, t, nodem, argpm, &mm, &nm);
    }
    if (!(nm > 0.0)) return false;
    double am = std::pow(kXke / nm, kX2o3) * tempa * tempa;
    nm = kXke / std::pow(am, 1.5);
    em = em - tempe;
    if (!(em < 1.0 && em >= -0.001)) return false;
    if (em < 1.0e-6) em = 1.0e-6;
    mm = mm + m.noUnkozai * templ;
    double xlm = mm + argpm + nodem;
    nodem = CFmod(nodem, kTwoPi);
    argpm = CFmod(argpm, kTwoPi);
    xlm = CFmod(xlm, kTwoPi);
    mm = CFmod(xlm - argpm - nodem, kTwoPi);

    // Lunar-solar periodics.
    double ep = em, xincp = inclm, argpp = argpm, nodep = nodem, mp = mm;
    double sinip = std::sin(inclm), cosip = std::cos(inclm);
    double aycof = m.aycof, xlcof = m.xlcof, con41 = m.con41, x1mth2 = m.x1mth2, x7thm1 = m.x7thm1;
    if (m.deep) {
        LunarSolarPeriodics(m.p, t, &ep, &xincp, &nodep, &argpp, &mp);
        if (xincp < 0.0) {
            xincp = -xincp;
            nodep = nodep + kPi;
            argpp = argpp - kPi;
        }
        if (ep < 0.0 || ep > 1.0) return false;
        sinip = std::sin(xincp);
        cosip = std::cos(xincp);
        aycof = -0.5 * kJ3oJ2 * sinip;
        const double div = std::fabs(cosip + 1.0) > 1.5e-12 ? 1.0 + cosip : 1.5e-12;
        xlcof = -0.25 * kJ3oJ2 * sinip * (3.0 + 5.0 * cosip) / div;
        const double cosisq = cosip * cosip;
        con41 = 3.0 * cosisq - 1.0;
        x1mth2 = 1.0 - cosisq;
        x7thm1 = 7.0 * cosisq - 1.0;
    }

    // Long-period periodics.
    const double axnl = ep * std::cos(argpp);
    double temp = 1.0 / (am * (1.0 - ep * ep));
    const double aynl = ep * std::sin(argpp) + temp * aycof;
    const double xl = mp + argpp + nodep + temp * xlcof * axnl;

    // Kepler's equation, Newton steps limited to 0.95 rad.
    const double u = CFmod(xl - nodep, kTwoPi);
    double eo1 = u, tem5 = 9999.9, sineo1 = 0.0, coseo1 = 1.0;
    for (int ktr = 1; std::fabs(tem5) >= 1.0e-12 && ktr <= 10; ++ktr) {
        sineo1 = std::sin(eo1);
        coseo1 = std::cos(eo1);
        tem5 = 1.0 - coseo1 * axnl - sineo1 * aynl;
        tem5 = (u - aynl * coseo1 + axnl * sineo1 - eo1) / tem5;
        if (std::fabs(tem5) >= 0.95) tem5 = tem5 > 0.0 ? 0.95 : -0.95;
        eo1 = eo1 + tem5;
    }

    // Short-period periodics.
    const double ecose = axnl * coseo1 + aynl * sineo1;
    const double esine = axnl * sineo1 - aynl * coseo1;
    const double el2 = axnl * axnl + aynl * aynl;
    const double pl = am * (1.0 - el2);
    if (!(pl >= 0.0)) return false;
    const double rl = am * (1.0 - ecose);
    const double rdotl = std::sqrt(am) * esine / rl;
    const double rvdotl = std::sqrt(pl) / rl;
    const double betal = std::sqrt(1.0 - el2);
    temp = esine / (1.0 + betal);
    const double sinu = am / rl * (sineo1 - aynl - axnl * temp);
    const double cosu = am / rl * (coseo1 - axnl + aynl * temp);
    double su = std::atan2(sinu, cosu);
    const double sin2u = (cosu + cosu) * sinu;
    const double cos2u = 1.0 - 2.0 * sinu * sinu;
    temp = 1.0 / pl;
    const double temp1 = 0.5 * kJ2 * temp;
    const double temp2 = temp1 * temp;
    const double mrt = rl * (1.0 - 1.5 * temp2 * betal * con41) + 0.5 * temp1 * x1mth2 * cos2u;
    su = su - 0.25 * temp2 * x7thm1 * sin2u;
    const double xnode = nodep + 1.5 * temp2 * cosip * sin2u;
    const double xinc = xincp + 1.5 * temp2 * cosip * sinip * cos2u;
    const double mvt = rdotl - nm * temp1 * x1mth2 * sin2u / kXke;
    const double rvdot = rvdotl + nm * temp1 * (x1mth2 * cos2u + 1.5 * con41) / kXke;

    double uv[3], vv[3];
    Orientation(su, xinc, xnode, uv, vv);
    const double ux = uv[0], uy = uv[1], uz = uv[2], vx = vv[0], vy = vv[1], vz = vv[2];
    const double mr = mrt * kRe;
    const double vkmpersec = kRe * kXke / 60.0;
    const double p[3] = {mr * ux, mr * uy, mr * uz};
    const double w[3] = {(mvt * ux + rvdot * vx) * vkmpersec, (mvt * uy + rvdot * vy) * vkmpersec,
                         (mvt * uz + rvdot * vz) * vkmpersec};
    if (!(mrt >= 1.0)) return false;  // decayed
    return StoreFiniteState(p, w, r, v);
}

}  // namespace

bool PropagateFull(const Elm &elm, double tsince, double r[3], double v[3]) {
    Model m;
    if (!Init(elm, &m)) return false;
    return Propagate(m, tsince, r, v);
}

}  // namespace kvx::asat

extern "C" int32_t CalcASatFull(double jd, const Elm *elm, double *position, double *velocity) {
    if (!elm) return 0;
    double r[3], v[3];
    if (!kvx::asat::PropagateFull(*elm, (jd - elm->epoch) * 1440.0, r, v)) return 0;
    return kvx::asat::CopyState(r, v, position, velocity);
}
