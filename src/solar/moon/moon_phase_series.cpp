// Instants of the Moon's principal phases from the series of the true
// phases in J. Meeus, Astronomical Algorithms, Willmann-Bell, ch. 47 of the
// first edition (1991), ch. 49 of the second (1998): the mean phase with the
// first-edition constants, the periodic corrections for new and full Moon
// or for the quarters (with the quarter correction W), and the fourteen
// additional planetary corrections.
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "solar/moon/moon_phase_table.h"

namespace {

inline double SinDeg(double a) { return std::sin(kvx::DegToRad(a)); }
inline double CosDeg(double a) { return std::cos(kvx::DegToRad(a)); }

enum class Phase { kNew, kFirstQuarter, kFull, kLastQuarter };

Phase PhaseOfLunation(double k) {
    const double frac = k - std::floor(k);
    if (std::fabs(frac) < 1e-6) return Phase::kNew;
    if (std::fabs(frac - 0.5) < 1e-6) return Phase::kFull;
    if (std::fabs(frac - 0.25) < 1e-6) return Phase::kFirstQuarter;
    if (std::fabs(frac - 0.75) < 1e-6) return Phase::kLastQuarter;
    return Phase::kNew;
}

using kvx::moon::PhaseTerm;

template <size_t N>
double PeriodicSum(const PhaseTerm (&terms)[N], double e, double m, double mp, double f, double node) {
    double sum = 0.0;
    for (const PhaseTerm &t : terms) {
        double c = t.amplitude;
        if (t.ePower == 1) c *= e;
        if (t.ePower == 2) c *= e * e;
        sum += c * SinDeg(t.m * m + t.mp * mp + t.f * f + t.node * node);
    }
    return sum;
}

}  // namespace

// Meeus, Astronomical Algorithms, ch. 49, with the mean-phase constants of the
// book's first edition.
extern "C" double GetNewMoonJd2000(double k) {
    const Phase phase = PhaseOfLunation(k);
    const double t = k / 1236.85;
    const double t2 = t * t, t3 = t2 * t, t4 = t3 * t;

    const double m = degmal(2.5534 + 29.10535669 * k - 2.18e-5 * t2 - 1.1e-7 * t3);
    const double mp = degmal(201.5643 + 385.81693528 * k + 0.0107438 * t2 + 1.239e-5 * t3 - 5.8e-8 * t4);
    const double f = degmal(160.7108 + 390.67050274 * k - 0.0016341 * t2 - 2.27e-6 * t3 + 1.1e-8 * t4);
    const double node = degmal(124.7746 - 1.5637558 * k + 0.0020691 * t2 + 2.15e-6 * t3);
    const double e = 1.0 - 0.002516 * t - 7.4e-6 * t2;

    const double a[14] = {
        299.77 + 0.107408 * k - 0.009173 * t2,
        251.88 + 0.016321 * k,
        251.83 + 26.651886 * k,
        349.42 + 36.412478 * k,
        84.66 + 18.206239 * k,
        141.74 + 53.303771 * k,
        207.14 + 2.453732 * k,
        154.84 + 7.30686 * k,
        34.52 + 27.261239 * k,
        207.19 + 0.121824 * k,
        291.34 + 1.844379 * k,
        161.72 + 24.198154 * k,
        239.56 + 25.513099 * k,
        331.55 + 3.592518 * k,
    };

    double jde = 2451550.09765 + 29.530588853 * k + 0.0001337 * t2 - 1.5e-7 * t3 + 7.3e-10 * t4;

    switch (phase) {
        case Phase::kNew:
            jde += PeriodicSum(kvx::moon::kNewMoonTerms, e, m, mp, f, node);
            break;
        case Phase::kFull:
            jde += PeriodicSum(kvx::moon::kFullMoonTerms, e, m, mp, f, node);
            break;
        case Phase::kFirstQuarter:
        case Phase::kLastQuarter: {
            jde += PeriodicSum(kvx::moon::kQuarterTerms, e, m, mp, f, node);
            const double w = 0.00306 - 0.00038 * e * CosDeg(m) + 0.00026 * CosDeg(mp) - 0.00002 * CosDeg(mp - m) +
                             0.00002 * CosDeg(mp + m) + 0.00002 * CosDeg(2.0 * f);
            jde += phase == Phase::kFirstQuarter ? w : -w;
            break;
        }
    }

    double planetary = 0.0;
    for (int i = 0; i < 14; ++i) planetary += kvx::moon::kPlanetaryAmplitudes[i] * SinDeg(degmal(a[i]));
    return jde + planetary;
}
