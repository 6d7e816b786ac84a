// Annual aberration of light in the equatorial frame, with the terms of the
// Earth's orbital eccentricity ("elliptic" or "e-terms").
//
// The Earth's velocity is that of a circular orbit of the constant of
// aberration kappa = 20.49552", directed 90 degrees behind the Sun's true
// longitude, plus the first-order correction for the eccentric orbit
// (e kappa towards the longitude of perihelion). The Sun's longitude uses
// the low-precision mean elements of J. Meeus, Astronomical Algorithms,
// 2nd ed. (1998), ch. 25; the eccentricity and perihelion are those of
// ch. 23 (eq. 23.3). The displacement is the first-order term of the
// classical formula v - u (u . v) (Explanatory Supplement to the
// Astronomical Almanac, 1992, sect. 3.252), written out component by
// component; the trigonometric factors are worked out once per instant.
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/fast_trig.h"
#include "place/apparent.h"
#include "platform/thread_cache.h"

namespace kvx::place {

namespace {

constexpr double kAberrationConstant = 20.49552;

AberrationTerms Evaluate(double jde, double epsTrue) {
    const double T = (jde - kJ2000) / kDaysPerCentury;
    const double M = degmal(357.528 + 35999.05 * T);
    const double S = degmal(280.4606 + 36000.770054 * T + 0.000388 * T * T + 1.915 * FastSinDeg(M) +
                            0.02 * FastSinDeg(2.0 * M));
    const double w = degmal(102.93735 + 0.332856 * T);
    AberrationTerms a;
    a.kappa = kAberrationConstant * kArcsecToRad;
    a.ek = (0.01671022 - 3.804e-5 * T) * a.kappa;
    const SinCos sS = FastSinCosDeg(S), sW = FastSinCosDeg(w), sE = FastSinCosDeg(epsTrue);
    a.sinS = sS.s;
    a.cosS = sS.c;
    a.sinW = sW.s;
    a.cosW = sW.c;
    a.sinE = sE.s;
    a.cosE = sE.c;
    return a;
}

}  // namespace

// The terms depend on the instant alone (jde and the true obliquity), and
// the routines of one instant (the Sun, the Moon, each planet, the
// conversions) ask for the same ones in turn: the last instant's terms are
// kept per thread.
const AberrationTerms &MakeAberrationTerms(const ATime &t) {
    struct Last {
        double jde, epsTrue;
        bool valid;
        AberrationTerms terms;
    };
    Last &last = platform::ThreadCache<Last>();
    if (!(last.valid && last.jde == t.jde && last.epsTrue == t.epsTrue)) {
        last.terms = Evaluate(t.jde, t.epsTrue);
        last.jde = t.jde;
        last.epsTrue = t.epsTrue;
        last.valid = true;
    }
    return last.terms;
}

void ApplyAberration(const AberrationTerms &a, const double v[3], bool add, double out[3]) {
    double d[3];
    if (add) {
        AberrationDisplacement(a, v, d);
        const double s[3] = {v[0] + d[0], v[1] + d[1], v[2] + d[2]};
        const double r = std::sqrt(s[0] * s[0] + s[1] * s[1] + s[2] * s[2]);
        out[0] = s[0] / r;
        out[1] = s[1] / r;
        out[2] = s[2] / r;
        return;
    }
    // Fixed-point iteration x = v - d(x). The displacement changes by only
    // kappa^2 ~ 1e-8 between the apparent and the geometric direction, so
    // the first pass already meets the accuracy of the first-order formula;
    // at most four passes are made.
    const double v0[3] = {v[0], v[1], v[2]};
    double x[3] = {v0[0], v0[1], v0[2]};
    for (int pass = 1;; ++pass) {
        const double old[3] = {x[0], x[1], x[2]};
        AberrationDisplacement(a, x, d);
        x[0] = v0[0] - d[0];
        x[1] = v0[1] - d[1];
        x[2] = v0[2] - d[2];
        const double r = std::sqrt(x[0] * x[0] + x[1] * x[1] + x[2] * x[2]);
        x[0] /= r;
        x[1] /= r;
        x[2] /= r;
        if (pass == 4) break;
        const double e0 = old[0] - x[0], e1 = old[1] - x[1], e2 = old[2] - x[2];
        if (std::sqrt(e0 * e0 + e1 * e1 + e2 * e2) < 1e-6) break;
    }
    out[0] = x[0];
    out[1] = x[1];
    out[2] = x[2];
}

}  // namespace kvx::place

extern "C" void AnnualAberration(const ATime *t, const double v[3], int32_t add, double out[3]) {
    if (!t || !v || !out) return;
    const kvx::place::AberrationTerms &a = kvx::place::MakeAberrationTerms(*t);
    kvx::place::ApplyAberration(a, v, add != 0, out);
}
