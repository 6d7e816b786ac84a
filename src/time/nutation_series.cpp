// The IAU 1980 theory of nutation (P. K. Seidelmann, "1980 IAU Theory of
// Nutation: the final report of the IAU Working Group on Nutation",
// Celestial Mechanics 27, 79-106 (1982); Explanatory Supplement to the
// Astronomical Almanac, 1992, table 3.222.1), truncated to the terms of at
// least 0.0010": the 35 terms with |A| >= 10 in longitude and the 20 terms
// with |B| >= 10 in obliquity, amplitudes in units of 0.0001". The terms are
// in the order of decreasing amplitude of J. Meeus, "Astronomical
// Algorithms", 2nd ed. (1998), table 22.A; each argument is named there by
// its multiples of D, M, M', F and Om (M = l', M' = l).
//
// The series is written out term by term: the combined arguments are formed
// once and no table is walked at run time.
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/fast_trig.h"
#include "time/nutation.h"

namespace kvx::nut {

void Iau1980Truncated(double t, double out[2]) {
    const double t2 = t * t, t3 = t2 * t;
    // Fundamental arguments in degrees, reduced to 0..360.
    const double l = degmal(134.9629814 + 477198.8673981 * t + 0.0086972 * t2 + 1.78e-5 * t3);
    const double lp = degmal(357.5277233 + 35999.05034 * t - 0.0001603 * t2 - 3.3e-6 * t3);
    const double f = degmal(93.2719103 + 483202.0175381 * t - 0.0036825 * t2 + 3.1e-6 * t3);
    const double d = degmal(297.8503631 + 445267.11148 * t - 0.0019142 * t2 + 5.3e-6 * t3);
    const double om = degmal(125.0445222 - 1934.1362608 * t + 0.0020708 * t2 + 2.2e-6 * t3);

    // Combined arguments.
    const double l2 = l + l;
    const double d2 = d + d;
    const double f2 = f + f;
    const double o2 = om + om;
    const double f2o = f2 + om;     // 2F + Om
    const double f2o2 = f2 + o2;    // 2F + 2Om
    const double a2 = f2o2 - d2;    // -2D + 2F + 2Om

    double psi = 0.0, eps = 0.0, a;
    SinCos sc;
    //  1  Om
    a = om;
    sc = FastSinCosDeg(a);
    psi += (-171996.0 - 174.2 * t) * sc.s;
    eps += (92025.0 + 8.9 * t) * sc.c;
    //  2  -2D + 2F + 2Om
    a = a2;
    sc = FastSinCosDeg(a);
    psi += (-13187.0 - 1.6 * t) * sc.s;
    eps += (5736.0 - 3.1 * t) * sc.c;
    //  3  2F + 2Om
    a = f2o2;
    sc = FastSinCosDeg(a);
    psi += (-2274.0 - 0.2 * t) * sc.s;
    eps += (977.0 - 0.5 * t) * sc.c;
    //  4  2Om
    a = o2;
    sc = FastSinCosDeg(a);
    psi += (2062.0 + 0.2 * t) * sc.s;
    eps += (-895.0 + 0.5 * t) * sc.c;
    //  5  M
    a = lp;
    sc = FastSinCosDeg(a);
    psi += (1426.0 - 3.4 * t) * sc.s;
    eps += (54.0 - 0.1 * t) * sc.c;
    //  6  M'
    a = l;
    sc = FastSinCosDeg(a);
    psi += (712.0 + 0.1 * t) * sc.s;
    //  7  -2D + M + 2F + 2Om
    a = a2 + lp;
    sc = FastSinCosDeg(a);
    psi += (-517.0 + 1.2 * t) * sc.s;
    eps += (224.0 - 0.6 * t) * sc.c;
    //  8  2F + Om
    a = f2o;
    sc = FastSinCosDeg(a);
    psi += (-386.0 - 0.4 * t) * sc.s;
    eps += 200.0 * sc.c;
    //  9  M' + 2F + 2Om
    a = f2o2 + l;
    sc = FastSinCosDeg(a);
    psi += -301.0 * sc.s;
    eps += (129.0 - 0.1 * t) * sc.c;
    // 10  -2D - M + 2F + 2Om
    a = a2 - lp;
    sc = FastSinCosDeg(a);
    psi += (217.0 - 0.5 * t) * sc.s;
    eps += (-95.0 + 0.3 * t) * sc.c;
    // 11  -2D + M'
    a = l - d2;
    sc = FastSinCosDeg(a);
    psi += -158.0 * sc.s;
    // 12  -2D + 2F + Om
    a = f2o - d2;
    sc = FastSinCosDeg(a);
    psi += (129.0 + 0.1 * t) * sc.s;
    eps += -70.0 * sc.c;
    // 13  -M' + 2F + 2Om
    a = f2o2 - l;
    sc = FastSinCosDeg(a);
    psi += 123.0 * sc.s;
    eps += -53.0 * sc.c;
    // 14  2D
    a = d2;
    sc = FastSinCosDeg(a);
    psi += 63.0 * sc.s;
    // 15  M' + Om
    a = l + om;
    sc = FastSinCosDeg(a);
    psi += (63.0 + 0.1 * t) * sc.s;
    eps += -33.0 * sc.c;
    // 16  2D - M' + 2F + 2Om
    a = f2o2 + d2 - l;
    sc = FastSinCosDeg(a);
    psi += -59.0 * sc.s;
    eps += 26.0 * sc.c;
    // 17  -M' + Om
    a = om - l;
    sc = FastSinCosDeg(a);
    psi += (-58.0 - 0.1 * t) * sc.s;
    eps += 32.0 * sc.c;
    // 18  M' + 2F + Om
    a = f2o + l;
    sc = FastSinCosDeg(a);
    psi += -51.0 * sc.s;
    eps += 27.0 * sc.c;
    // 19  -2D + 2M'
    a = l2 - d2;
    sc = FastSinCosDeg(a);
    psi += 48.0 * sc.s;
    // 20  -2M' + 2F + Om
    a = f2o - l2;
    sc = FastSinCosDeg(a);
    psi += 46.0 * sc.s;
    eps += -24.0 * sc.c;
    // 21  2D + 2F + 2Om
    a = f2o2 + d2;
    sc = FastSinCosDeg(a);
    psi += -38.0 * sc.s;
    eps += 16.0 * sc.c;
    // 22  2M' + 2F + 2Om
    a = f2o2 + l2;
    sc = FastSinCosDeg(a);
    psi += -31.0 * sc.s;
    eps += 13.0 * sc.c;
    // 23  2M'
    a = l2;
    sc = FastSinCosDeg(a);
    psi += 29.0 * sc.s;
    // 24  -2D + M' + 2F + 2Om
    a = a2 + l;
    sc = FastSinCosDeg(a);
    psi += 29.0 * sc.s;
    eps += -12.0 * sc.c;
    // 25  2F
    a = f2;
    sc = FastSinCosDeg(a);
    psi += 26.0 * sc.s;
    // 26  -2D + 2F
    a = f2 - d2;
    sc = FastSinCosDeg(a);
    psi += -22.0 * sc.s;
    // 27  -M' + 2F + Om
    a = f2o - l;
    sc = FastSinCosDeg(a);
    psi += 21.0 * sc.s;
    eps += -10.0 * sc.c;
    // 28  2M
    a = lp + lp;
    sc = FastSinCosDeg(a);
    psi += (17.0 - 0.1 * t) * sc.s;
    // 29  2D - M' + Om
    a = d2 - l + om;
    sc = FastSinCosDeg(a);
    psi += 16.0 * sc.s;
    // 30  -2D + 2M + 2F + 2Om
    a = a2 + lp + lp;
    sc = FastSinCosDeg(a);
    psi += (-16.0 + 0.1 * t) * sc.s;
    // 31  M + Om
    a = lp + om;
    sc = FastSinCosDeg(a);
    psi += -15.0 * sc.s;
    // 32  -2D + M' + Om
    a = l - d2 + om;
    sc = FastSinCosDeg(a);
    psi += -13.0 * sc.s;
    // 33  -M + Om
    a = om - lp;
    sc = FastSinCosDeg(a);
    psi += -12.0 * sc.s;
    // 34  2M' - 2F
    a = l2 - f2;
    sc = FastSinCosDeg(a);
    psi += 11.0 * sc.s;
    // 35  2D - M' + 2F + Om
    a = f2o + d2 - l;
    sc = FastSinCosDeg(a);
    psi += -10.0 * sc.s;

    out[0] = psi;
    out[1] = eps;
}

}  // namespace kvx::nut
