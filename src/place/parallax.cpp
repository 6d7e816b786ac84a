// Annual parallax of a star: the star is displaced away from the Sun by
// its parallax times the component of the Sun's direction perpendicular to
// the star (W. M. Smart, Textbook on Spherical Astronomy, 6th ed. 1977,
// ch. IX), with the Earth-Sun distance taken as 1 AU.
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"

extern "C" void AnnualParallax(const double p[3], double parallax, const double sunAd[2], double out[3]) {
    if (!p || !sunAd || !out) return;
    const double x = p[0], y = p[1], z = p[2];
    // Projection onto the plane perpendicular to the star: I - p p^T.
    const double m[9] = {1.0 - x * x, -x * y,      -x * z,  //
                         -x * y,      1.0 - y * y, -y * z,  //
                         -x * z,      -y * z,      1.0 - z * z};
    const Ad sunPair{sunAd[0], sunAd[1]};
    Dc u;
    AdToDc(&sunPair, &u);
    Dc w;
    RotateDc(&u, m, &w);
    const double f = parallax * kvx::kPi / 180.0;
    const double r[3] = {x + f * w.x, y + f * w.y, z + f * w.z};
    const double len = std::sqrt(r[0] * r[0] + r[1] * r[1] + r[2] * r[2]);
    out[0] = r[0] / len;
    out[1] = r[1] / len;
    out[2] = r[2] / len;
}
