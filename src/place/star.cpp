// The apparent place of a star: proper motion, annual parallax, light
// deflection and annual aberration in the J2000 frame, then precession and
// nutation to the true equator and equinox of date (the order of the
// classical reduction, Explanatory Supplement to the Astronomical Almanac,
// 1992, sect. 3.22, with aberration taken before the frame rotation).
#include "kvxlib.h"
#include "math/constants.h"
#include "solar/body/body_slots.h"

extern "C" void StarApparent(const ATime *t, const double p[3], const double pm[2], double parallax,
                             const BodyPos *sun, double out[3]) {
    if (!t || !p || !pm || !sun || !out) return;
    double v[3];
    ProperMotion(kvx::kJ2000, p, pm, t->jde, v);
    using namespace kvx::body;
    const double sunAd[2] = {sun->f[kRaApparent], sun->f[kDecApparent]};
    AnnualParallax(v, parallax, sunAd, v);
    DeflectionStar(v, Vec(*sun, sun_slot::kEarthHelio), v);
    AnnualAberration(t, v, 1, v);
    Dc d{v[0], v[1], v[2]};
    RotateDc(&d, t->precFromJ2000, &d);
    RotateDc(&d, t->nutMtx, &d);
    out[0] = d.x;
    out[1] = d.y;
    out[2] = d.z;
}
