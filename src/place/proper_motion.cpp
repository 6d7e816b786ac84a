// Linear proper motion of a star, applied as a rotation along the great
// circle through the star in the direction of its motion (position angle
// theta = atan2(mu_alpha cos delta, mu_delta), total rate
// mu = sqrt(mu_delta^2 + (mu_alpha cos delta)^2)); see W. M. Smart,
// Textbook on Spherical Astronomy, 6th ed. 1977, sect. 145. Radial velocity
// and the change of the rates with time (perspective acceleration) are
// ignored.
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"

extern "C" void ProperMotion(double jd0, const double p[3], const double pm[2], double jd, double out[3]) {
    if (!p || !pm || !out) return;
    const double x = p[0], y = p[1], z = p[2];
    const double r = std::sqrt(x * x + y * y);
    const double sa = y / r, ca = x / r;
    const double th = std::atan2(pm[0] * r, pm[1]);
    const double mu = std::sqrt(pm[1] * pm[1] + (pm[0] * r) * (pm[0] * r));
    const double psi = kvx::DegToRad(mu * (jd - jd0) / 365.25);
    const double sth = std::sin(th), cth = std::cos(th);
    const double sp = std::sin(psi), cp = std::cos(psi);
    out[0] = ca * r * cp - (ca * z * cth + sth * sa) * sp;
    out[1] = (sth * ca - sa * z * cth) * sp + sa * r * cp;
    out[2] = cth * r * sp + z * cp;
}
