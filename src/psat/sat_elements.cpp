// Shared orbit geometry of the satellite theories: equinoctial elements to
// rectangular coordinates, and the dispatcher from satellite codes to the
// theories.
#include <cmath>

#include "math/fast_trig.h"
#include "psat/sat_theory.h"

namespace kvx::psat {

namespace {
constexpr int kMaxKeplerIterations = 30;
constexpr double kTurnStep = 1.2e-2;  // rad, above the eccentricities of the satellites given a start
constexpr double kVelocityStep = 1.0e-4;  // days
constexpr double kKmPerAu = 149597870.0;
constexpr double kSecondsPerDay = 86400.0;

// GM of the planets with their satellites' share, km^3/s^2 (JPL: Mars
// MAR097, Jupiter JUP365, Saturn SAT441, Uranus URA111, Neptune NEP097,
// Pluto PLU058 system values).
double PlanetGmKm(int hundreds) {
    switch (hundreds) {
    case 4: return 42828.37;
    case 5: return 126712764.1;
    case 6: return 37940584.8;
    case 7: return 5794556.4;
    case 8: return 6836527.1;
    case 9: return 975.5;
    default: return 0.0;
    }
}
}  // namespace

double EquinoctialToPosition(double a, double lambda, double k, double h, double q, double p, double out[3],
                             double startF, const double rates[6], double velocity[3]) {
    // Eccentric longitude F from Kepler's equation lambda = F - k sin F + h cos F
    // (Broucke & Cefola 1972), Newton's method from the first-order guess or
    // from startF. Newton's error after a step d is at most
    // e / (2 (1 - e)) d^2, below 1e-15 rad for d < 1e-7 and e < 0.1, so the
    // loop stops there; the cosine and sine of the corrected F follow from
    // the last pass's by the rotation through d (to d^3 / 6). The sines and
    // cosines are those of math/fast_trig.h (within 2.3e-16).
    //
    // From a given nearby start, a step below kTurnStep turns the cosine and
    // sine through d by their series to d^6 and d^7 instead of evaluating
    // them again: the remainders, d^8 / 8! and d^9 / 9!, are below 3e-21.
    double F = startF;
    const bool started = std::isfinite(F);
    if (!started) {
        const SinCos l = FastSinCosRad(lambda);
        F = lambda + k * l.s - h * l.c;
    }
    SinCos csF = FastSinCosRad(F);
    double cf = csF.c, sf = csF.s;
    const double e2 = k * k + h * h;
    const double stop = e2 < 0.01 ? 1.0e-7 : 1.0e-13;
    for (int it = 0; it < kMaxKeplerIterations; ++it) {
        const double d = (lambda - F + k * sf - h * cf) / (1.0 - k * cf - h * sf);
        F += d;
        if (!(std::fabs(d) >= stop)) {
            const double h2 = 1.0 - d * d / 2.0;
            const double c = cf * h2 - sf * d;
            sf = sf * h2 + cf * d;
            cf = c;
            break;
        }
        if (started && std::fabs(d) < kTurnStep) {
            const double d2 = d * d;
            const double cd = 1.0 - d2 * (0.5 - d2 * (1.0 / 24.0 - d2 * (1.0 / 720.0)));
            const double sd = d * (1.0 - d2 * (1.0 / 6.0 - d2 * (1.0 / 120.0 - d2 * (1.0 / 5040.0))));
            const double c = cf * cd - sf * sd;
            sf = sf * cd + cf * sd;
            cf = c;
            continue;
        }
        csF = FastSinCosRad(F);
        cf = csF.c;
        sf = csF.s;
    }
    const double dle = h * cf - k * sf;
    const double phi = std::sqrt(1.0 - k * k - h * h);
    const double psi = 1.0 / (1.0 + phi);
    const double x1 = a * (cf - k - psi * h * dle);
    const double y1 = a * (sf - h + psi * k * dle);
    const double f2 = 2.0 * std::sqrt(1.0 - q * q - p * p);
    const double p2 = 1.0 - 2.0 * p * p, q2 = 1.0 - 2.0 * q * q, pq = 2.0 * p * q;
    out[0] = x1 * p2 + y1 * pq;
    out[1] = x1 * pq + y1 * q2;
    out[2] = (q * y1 - x1 * p) * f2;
    if (rates && velocity) {
        // The time derivative of the steps above with the rates of a,
        // lambda, k and h. Kepler's equation differentiated:
        // dlambda = dF (1 - k cos F - h sin F) - dk sin F + dh cos F.
        // Left out: the rates of psi (a e^2 de / 4) and of the plane's
        // q and p (2 a dq), which the theories that ask for velocities keep
        // below 1e-6 of the orbital velocity.
        const double da = rates[0], dk = rates[2], dh = rates[3];
        const double dF = (rates[1] + dk * sf - dh * cf) / (1.0 - k * cf - h * sf);
        const double ddle = dh * cf - dk * sf - dF * (h * sf + k * cf);
        const double ra = da / a;
        const double dx1 = ra * x1 + a * (-sf * dF - dk - psi * (dh * dle + h * ddle));
        const double dy1 = ra * y1 + a * (cf * dF - dh + psi * (dk * dle + k * ddle));
        velocity[0] = dx1 * p2 + dy1 * pq;
        velocity[1] = dx1 * pq + dy1 * q2;
        velocity[2] = (q * dy1 - dx1 * p) * f2;
    }
    return F;
}

int SatellitePosition(int code, double jde, double out[3]) {
    if (!std::isfinite(jde)) return 1;
    const int hundreds = code / 100, index = code % 100;
    double v[3];
    int rc = 1;
    switch (hundreds) {
    case 4: rc = (index == 1 || index == 2) ? MeanElementSatellite(code, jde, v) : 1; break;
    case 5:
        if (index >= 1 && index <= 4) rc = GalileanL12(index, jde, v);
        else if (index == 5) rc = MeanElementSatellite(code, jde, v);
        break;
    case 6: rc = (index >= 1 && index <= 8) ? SaturnMeeus(index, jde, v) : 1; break;
    case 7: rc = (index >= 1 && index <= 5) ? UranusGust86(index, jde, v) : 1; break;
    case 8: rc = (index == 1 || index == 2) ? MeanElementSatellite(code, jde, v) : 1; break;
    case 9: rc = index == 1 ? MeanElementSatellite(code, jde, v) : 1; break;
    default: break;
    }
    if (rc != 0) return rc;
    if (!std::isfinite(v[0]) || !std::isfinite(v[1]) || !std::isfinite(v[2])) return 1;
    out[0] = v[0];
    out[1] = v[1];
    out[2] = v[2];
    return 0;
}

int SatelliteState(int code, double jde, double pos[3], double vel[3]) {
    double a[3], b[3];
    if (SatellitePosition(code, jde, pos) != 0) return 1;
    if (SatellitePosition(code, jde - kVelocityStep, a) != 0 || SatellitePosition(code, jde + kVelocityStep, b) != 0)
        return 1;
    for (int i = 0; i < 3; ++i) vel[i] = (b[i] - a[i]) / (2.0 * kVelocityStep);
    return 0;
}

double SatelliteGm(int code) {
    const double gm = PlanetGmKm(code / 100);
    return gm * kSecondsPerDay * kSecondsPerDay / (kKmPerAu * kKmPerAu * kKmPerAu);
}

}  // namespace kvx::psat
