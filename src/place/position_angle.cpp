// Position angle and angular distance between two points of the sphere,
// and the inverse: the point at a given position angle and distance
// (W. M. Smart, Textbook on Spherical Astronomy, 6th ed. 1977, ch. I,
// the cosine and four-parts formulae of the spherical triangle formed by
// the pole, the centre and the target).
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"

using kvx::DegToRad;
using kvx::RadToDeg;

extern "C" double *AdToPaDist(const Ad *centre, const Ad *target, double *positionAngle, double *distance) {
    if (!centre || !target) return nullptr;
    Deg2Point(centre, target, positionAngle, distance);
    return distance;
}

// The declination comes from a plain arctangent of sin(dec) / cos(dec).
extern "C" void PaDistToAd(const Ad *centre, double positionAngle, double distance, Ad *out) {
    if (!centre || !out) return;
    const double a0 = centre->a, d0deg = centre->d;
    if (distance == 0.0) {
        *out = Ad{a0, d0deg};
        return;
    }
    const double d0 = DegToRad(d0deg), p = DegToRad(positionAngle), r = DegToRad(distance);
    const double D = std::cos(r) * std::cos(d0) - std::sin(r) * std::sin(d0) * std::cos(p);
    const double dA = std::atan2(std::sin(p) * std::sin(r), D);
    const double a = a0 + RadToDeg(dA);
    double dec = d0deg;
    if (D != 0.0 && std::cos(dA) != 0.0)
        dec = RadToDeg(std::atan((std::sin(r) * std::cos(d0) * std::cos(p) + std::sin(d0) * std::cos(r)) /
                                 (D / std::cos(dA))));
    Ad res{degmal(a), dec};
    const double pr = degmal(positionAngle);
    if ((pr == 0.0 || pr == 180.0) && std::fabs(std::fabs(dec) - 90.0) < 1e-6) res.a = a0;
    *out = res;
}
