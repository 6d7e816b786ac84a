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

// Largest offset ratio of the near rule: the series of atan u below, cut
// after u^7, is then within u^9 / 9 = 5.7e-17 rad of it.
constexpr double kNearLimit = 0.02;

// Longitude and latitude of v from those of a nearby direction (A, D):
// turned by -A about the pole, v has the longitude offset atan(y' / x');
// turned by D in its meridian, the latitude offset atan(z'' / rho''), with
// rho the distance from the pole as in vec3::ToAngles. Both offsets are
// tiny, so their arctangent is the odd series u - u^3/3 + u^5/5 - u^7/7.
void NearAngles(const double ref[2], const SinCos sc[2], const double v[3], double *a, double *d) {
    const double cA = sc[0].c, sA = sc[0].s, cD = sc[1].c, sD = sc[1].s;
    const double x1 = cA * v[0] + sA * v[1], y1 = cA * v[1] - sA * v[0];
    const double rho = std::sqrt(v[0] * v[0] + v[1] * v[1]);
    const double z2 = v[2] * cD - rho * sD, rho2 = rho * cD + v[2] * sD;
    const double u = y1 / x1, w = z2 / rho2;
    if (!(x1 > 0.0 && rho2 > 0.0 && std::fabs(u) <= kNearLimit && std::fabs(w) <= kNearLimit)) {
        vec3::ToAngles(v, a, d);
        return;
    }
    const double u2 = u * u, w2 = w * w;
    const double du = u - u * u2 * (1.0 / 3.0 - u2 * (1.0 / 5.0 - u2 * (1.0 / 7.0)));
    const double dw = w - w * w2 * (1.0 / 3.0 - w2 * (1.0 / 5.0 - w2 * (1.0 / 7.0)));
    *a = vec3::Reduce360(ref[0] + RadToDeg(du));
    *d = ref[1] + RadToDeg(dw);
}

// The steps of the head, with the rule that turns vectors into angles.
template <class ToAngles>
void HeadWith(const ATime &t, const double s[3], ToAngles &&angles, BodyPos *out) {
    double *f = out->f;
    const double delta = vec3::Norm(s);
    f[kDistance] = delta;
    const double u[3] = {s[0] / delta, s[1] / delta, s[2] / delta};
    angles(0, u, &f[kRaJ2000], &f[kDecJ2000]);
    double m[3], ecl[3], n[3];
    vec3::Rotate(t.precFromJ2000, u, m);
    vec3::Rotate(t.eqToEcl, m, ecl);
    angles(1, ecl, &f[kEclLon], &f[kEclLat]);
    vec3::Rotate(t.nutMtx, m, n);
    AnnualAberration(&t, n, 1, n);
    angles(2, n, &f[kRaApparent], &f[kDecApparent]);
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
    HeadWith(t, s, [rule](int, const double v[3], double *a, double *d) { Angles(rule, v, a, d); }, out);
}

void MakeNearPlace(const BodyPos &near, NearPlace *out) {
    const int slots[3][2] = {{kRaJ2000, kDecJ2000}, {kEclLon, kEclLat}, {kRaApparent, kDecApparent}};
    for (int k = 0; k < 3; ++k)
        for (int j = 0; j < 2; ++j) {
            out->deg[k][j] = near.f[slots[k][j]];
            out->sc[k][j] = FastSinCosDeg(out->deg[k][j]);
        }
}

void FillHead(const ATime &t, const double s[3], const NearPlace &near, BodyPos *out) {
    HeadWith(t, s, [&near](int k, const double v[3], double *a, double *d) { NearAngles(near.deg[k], near.sc[k], v, a, d); },
         out);
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
