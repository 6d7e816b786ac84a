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
#include "time/nutation.h"

namespace kvx::nut {

void Iau1980Truncated(double t, double out[2]) {
    const double t2 = t * t, t3 = t2 * t;
    // Fundamental arguments in degrees, reduced, then in radians.
    const double l = DegToRad(degmal(134.9629814 + 477198.8673981 * t + 0.0086972 * t2 + 1.78e-5 * t3));
    const double lp = DegToRad(degmal(357.5277233 + 35999.05034 * t - 0.0001603 * t2 - 3.3e-6 * t3));
    const double f = DegToRad(degmal(93.2719103 + 483202.0175381 * t - 0.0036825 * t2 + 3.1e-6 * t3));
    const double d = DegToRad(degmal(297.8503631 + 445267.11148 * t - 0.0019142 * t2 + 5.3e-6 * t3));
    const double om = DegToRad(degmal(125.0445222 - 1934.1362608 * t + 0.0020708 * t2 + 2.2e-6 * t3));

    // Combined arguments.
    const double l2 = l + l;
    const double d2 = d + d;
    const double f2 = f + f;
    const double o2 = om + om;
    const double f2o = f2 + om;     // 2F + Om
    const double f2o2 = f2 + o2;    // 2F + 2Om
    const double a2 = f2o2 - d2;    // -2D + 2F + 2Om

    double psi = 0.0, eps = 0.0, a;
    //  1  Om
    a = om;
    psi += (-171996.0 - 174.2 * t) * std::sin(a);
    eps += (92025.0 + 8.9 * t) * std::cos(a);
    //  2  -2D + 2F + 2Om
    a = a2;
    psi += (-13187.0 - 1.6 * t) * std::sin(a);
    eps += (5736.0 - 3.1 * t) * std::cos(a);
    //  3  2F + 2Om
    a = f2o2;
    psi += (-2274.0 - 0.2 * t) * std::sin(a);
    eps += (977.0 - 0.5 * t) * std::cos(a);
    //  4  2Om
    a = o2;
    psi += (2062.0 + 0.2 * t) * std::sin(a);
    eps += (-895.0 + 0.5 * t) * std::cos(a);
    //  5  M
    a = lp;
    psi += (1426.0 - 3.4 * t) * std::sin(a);
    eps += (54.0 - 0.1 * t) * std::cos(a);
    //  6  M'
    a = l;
    psi += (712.0 + 0.1 * t) * std::sin(a);
    //  7  -2D + M + 2F + 2Om
    a = a2 + lp;
    psi += (-517.0 + 1.2 * t) * std::sin(a);
    eps += (224.0 - 0.6 * t) * std::cos(a);
    //  8  2F + Om
    a = f2o;
    psi += (-386.0 - 0.4 * t) * std::sin(a);
    eps += 200.0 * std::cos(a);
    //  9  M' + 2F + 2Om
    a = f2o2 + l;
    psi += -301.0 * std::sin(a);
    eps += (129.0 - 0.1 * t) * std::cos(a);
    // 10  -2D - M + 2F + 2Om
    a = a2 - lp;
    psi += (217.0 - 0.5 * t) * std::sin(a);
    eps += (-95.0 + 0.3 * t) * std::cos(a);
    // 11  -2D + M'
    a = l - d2;
    psi += -158.0 * std::sin(a);
    // 12  -2D + 2F + Om
    a = f2o - d2;
    psi += (129.0 + 0.1 * t) * std::sin(a);
    eps += -70.0 * std::cos(a);
    // 13  -M' + 2F + 2Om
    a = f2o2 - l;
    psi += 123.0 * std::sin(a);
    eps += -53.0 * std::cos(a);
    // 14  2D
    a = d2;
    psi += 63.0 * std::sin(a);
    // 15  M' + Om
    a = l + om;
    psi += (63.0 + 0.1 * t) * std::sin(a);
    eps += -33.0 * std::cos(a);
    // 16  2D - M' + 2F + 2Om
    a = f2o2 + d2 - l;
    psi += -59.0 * std::sin(a);
    eps += 26.0 * std::cos(a);
    // 17  -M' + Om
    a = om - l;
    psi += (-58.0 - 0.1 * t) * std::sin(a);
    eps += 32.0 * std::cos(a);
    // 18  M' + 2F + Om
    a = f2o + l;
    psi += -51.0 * std::sin(a);
    eps += 27.0 * std::cos(a);
    // 19  -2D + 2M'
    a = l2 - d2;
    psi += 48.0 * std::sin(a);
    // 20  -2M' + 2F + Om
    a = f2o - l2;
    psi += 46.0 * std::sin(a);
    eps += -24.0 * std::cos(a);
    // 21  2D + 2F + 2Om
    a = f2o2 + d2;
    psi += -38.0 * std::sin(a);
    eps += 16.0 * std::cos(a);
    // 22  2M' + 2F + 2Om
    a = f2o2 + l2;
    psi += -31.0 * std::sin(a);
    eps += 13.0 * std::cos(a);
    // 23  2M'
    a = l2;
    psi += 29.0 * std::sin(a);
    // 24  -2D + M' + 2F + 2Om
    a = a2 + l;
    psi += 29.0 * std::sin(a);
    eps += -12.0 * std::cos(a);
    // 25  2F
    a = f2;
    psi += 26.0 * std::sin(a);
    // 26  -2D + 2F
    a = f2 - d2;
    psi += -22.0 * std::sin(a);
    // 27  -M' + 2F + Om
    a = f2o - l;
    psi += 21.0 * std::sin(a);
    eps += -10.0 * std::cos(a);
    // 28  2M
    a = lp + lp;
    psi += (17.0 - 0.1 * t) * std::sin(a);
    // 29  2D - M' + Om
    a = d2 - l + om;
    psi += 16.0 * std::sin(a);
    // 30  -2D + 2M + 2F + 2Om
    a = a2 + lp + lp;
    psi += (-16.0 + 0.1 * t) * std::sin(a);
    // 31  M + Om
    a = lp + om;
    psi += -15.0 * std::sin(a);
    // 32  -2D + M' + Om
    a = l - d2 + om;
    psi += -13.0 * std::sin(a);
    // 33  -M + Om
    a = om - lp;
    psi += -12.0 * std::sin(a);
    // 34  2M' - 2F
    a = l2 - f2;
    psi += 11.0 * std::sin(a);
    // 35  2D - M' + 2F + Om
    a = f2o + d2 - l;
    psi += -10.0 * std::sin(a);

    out[0] = psi;
    out[1] = eps;
}

}  // namespace kvx::nut
