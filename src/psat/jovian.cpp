// Phenomena of Jupiter's satellites: transits, occultations, shadow
// transits and eclipses at one instant.
#include <cmath>
#include <cstring>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/vec3.h"
#include "solar/planet/planet.h"

namespace kvx::psat {

namespace {

constexpr double kJupiterRadiusAu = 0.0004778945047813849;  // 71492 km
constexpr double kFlattening = 1.071374;                    // equatorial / polar radius
constexpr double kLightDays = 0.005775518308;
constexpr double kLightTolerance = 1.1574074074074074e-6;
constexpr int kMaxLightIterations = 50;

// The satellite (l2, b2) against Jupiter (l1, b1), degrees, for Jupiter's
// radius angle rho: inside the ellipse flattened towards the ecliptic poles.
// The longitude difference is taken as it is: neither multiplied by
// cos(latitude) nor wrapped, so near longitude 0/360 the two places do not
// meet on the disc.
bool OnDisc(double l1, double b1, double l2, double b2, double rho) {
    const double x = (b2 - b1) / rho;
    const double y = (l2 - l1) / rho;
    return (kFlattening * x) * (kFlattening * x) + y * y < 1.0;
}

double RadiusAngle(double distance) { return RadToDeg(std::atan(kJupiterRadiusAu / distance)); }

}  // namespace

}  // namespace kvx::psat

using namespace kvx;

extern "C" void JoviSatPhenomena(const ATime *t, const BodyPos *jupiter, const BodyPos *satellite, JoviSatResult *out) {
    if (!out) return;
    out->transit = out->occultation = out->shadowTransit = out->eclipse = 0;
    if (!t || !jupiter || !satellite) return;
    const double *jf = jupiter->f, *sf = satellite->f;

    // Seen by the observer, on the apparent ecliptic of date.
    Ad ja = {jf[0], jf[1]}, sa = {sf[0], sf[1]}, je, se;
    Coordinates(t, 3, &ja, 9, &je);
    Coordinates(t, 3, &sa, 9, &se);
    if (psat::OnDisc(je.a, je.d, se.a, se.d, psat::RadiusAngle(jf[6]))) {
        if (jf[6] > sf[6]) out->transit = 1;
        else out->occultation = 1;
    }

    // Seen from the Sun: Jupiter at the instant its light left for the
    // observer, iterated for the light time from Jupiter to the Sun.
    const double tau = t->jde - jf[6] * psat::kLightDays;
    double tau2 = tau - jf[16] * psat::kLightDays, h[3] = {jf[10], jf[11], jf[12]};
    for (int k = 0; k < psat::kMaxLightIterations; ++k) {
        planet::HelioVector(3, tau2, h);
        const double next = tau - vec3::Norm(h) * psat::kLightDays;
        const bool done = std::fabs(next - tau2) <= psat::kLightTolerance;
        tau2 = next;
        if (done) break;
    }
    double rx[9], prec[9], m[9];
    RotateX(GetEp(tau), rx);
    GetPrecMtx(2451545.0, tau, prec);
    MulMatrix(rx, prec, m);
    const double s[3] = {h[0] + sf[10], h[1] + sf[11], h[2] + sf[12]};
    double he[3], se3[3];
    vec3::Rotate(m, h, he);
    vec3::Rotate(m, s, se3);
    double l1, b1, l2, b2;
    vec3::ToAngles(he, &l1, &b1);
    vec3::ToAngles(se3, &l2, &b2);
    const double r = vec3::Norm(h);
    if (!psat::OnDisc(l1, b1, l2, b2, psat::RadiusAngle(r))) return;
    if (r <= vec3::Norm(s)) {
        out->eclipse = 1;
        return;
    }
    // The shadow: where the line from the Sun through the satellite meets
    // Jupiter's spheroid (equatorial radius a, polar a / 1.071374, axis
    // normal to the ecliptic of date as in the disc test), on the side
    // facing the Sun.
    const double sn = vec3::Norm(se3);
    const double d[3] = {se3[0] / sn, se3[1] / sn, se3[2] / sn};
    const double o[3] = {-he[0], -he[1], -he[2]};  // the Sun from Jupiter
    const double f2 = psat::kFlattening * psat::kFlattening, a2 = psat::kJupiterRadiusAu * psat::kJupiterRadiusAu;
    const double A = d[0] * d[0] + d[1] * d[1] + f2 * d[2] * d[2];
    const double B = 2.0 * (o[0] * d[0] + o[1] * d[1] + f2 * o[2] * d[2]);
    const double C = o[0] * o[0] + o[1] * o[1] + f2 * o[2] * o[2] - a2;
    const double disc = B * B - 4.0 * A * C;
    if (!(disc >= 0.0)) return;
    const double lambda = (-B - std::sqrt(disc)) / (2.0 * A);
    double p[3] = {o[0] + lambda * d[0], o[1] + lambda * d[1], o[2] + lambda * d[2]};
    // Back to the J2000.0 equator, as a heliocentric point moved with
    // Jupiter to the observer's light-time instant (fields 8-10), then
    // expressed from Jupiter's centre in equatorial radii.
    double q[3], hp[3];
    vec3::Rotate(t->eclToEq, p, q);
    vec3::Rotate(t->precToJ2000, q, p);
    for (int k = 0; k < 3; ++k) hp[k] = h[k] + p[k] + (jf[7 + k] - h[k]);
    for (int k = 0; k < 3; ++k) out->shadowPoint[k] = (hp[k] - jf[7 + k]) / psat::kJupiterRadiusAu;
    out->shadowTransit = 1;
}
