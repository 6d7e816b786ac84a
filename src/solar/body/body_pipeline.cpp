// The shared steps of the body routines. The reduction is the classical one
// (Explanatory Supplement to the Astronomical Almanac, 1992, sect. 3.3):
// astrometric place on the J2000.0 axes, precession to the mean equator of
// date, nutation to the true equator, then annual aberration.
#include "solar/body/body_pipeline.h"

#include <cmath>

namespace kvx::body {

namespace {

void Angles(AngleRule rule, const double v[3], double *a, double *d) {
    if (rule == AngleRule::kAtan2) {
        vec3::ToAngles(v, a, d);
        return;
    }
    const Dc dc{v[0], v[1], v[2]};
    Ad ad;
    DcToAd(&dc, &ad);
    *a = ad.a;
    *d = ad.d;
}

}  // namespace

void EclipticOfDate(const ATime &t, const double v[3], double out[3]) {
    double w[3];
    vec3::Rotate(t.precFromJ2000, v, w);
    vec3::Rotate(t.eqToEcl, w, out);
}

void ApparentOfDate(const ATime &t, const double u[3], double out[3]) {
    double m[3], n[3];
    vec3::Rotate(t.precFromJ2000, u, m);
    vec3::Rotate(t.nutMtx, m, n);
    AnnualAberration(&t, n, 1, out);
}

void FillHead(const ATime &t, const double s[3], AngleRule rule, BodyPos *out) {
    double *f = out->f;
    const double delta = vec3::Norm(s);
    f[kDistance] = delta;
    const double u[3] = {s[0] / delta, s[1] / delta, s[2] / delta};
    Angles(rule, u, &f[kRaJ2000], &f[kDecJ2000]);
    double m[3], ecl[3], n[3];
    vec3::Rotate(t.precFromJ2000, u, m);
    vec3::Rotate(t.eqToEcl, m, ecl);
    Angles(rule, ecl, &f[kEclLon], &f[kEclLat]);
    vec3::Rotate(t.nutMtx, m, n);
    AnnualAberration(&t, n, 1, n);
    Angles(rule, n, &f[kRaApparent], &f[kDecApparent]);
}

void SetPhase(const BodyPos &sun, double bodyDistance, int fractionSlot, int limbSlot, BodyPos *out) {
    GetPhase(&sun, sun.f[kDistance], out, bodyDistance, &out->f[fractionSlot], &out->f[limbSlot]);
}

void SetMagnitude(double magnitude, int magnitudeSlot, int tenthsSlot, BodyPos *out) {
    out->f[magnitudeSlot] = magnitude;
    // A magnitude from zero distances (a body on the observer or on the
    // Sun) is infinite or NaN: its tenths saturate or are 0, never undefined.
    out->i[2 * tenthsSlot] = ToInt32(std::floor(magnitude * 10.0 + 0.5));
    out->i[2 * tenthsSlot + 1] = 0;
}

void FillSlots(int first, int end, double value, BodyPos *out) {
    for (int k = first; k < end; ++k) out->f[k] = value;
}

}  // namespace kvx::body
