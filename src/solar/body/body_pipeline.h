// The steps that every body routine shares, from a position source to the
// filled BodyPos: the light-time loop, the frames of date, the head of the
// record (astrometric, ecliptic and apparent place, distance), and the phase
// and magnitude hooks. A body routine supplies its own source (a function of
// the dynamical date) and its own extra slots (body_slots.h).
//
// Typical use, for a body with heliocentric vectors h(jde):
//   h = source(jde);                         Earth E = Sun record kEarthHelio
//   SetVec(out, kHelio, h); EclipticOfDate(t, h, Vec(out, kHelioEcliptic));
//   LightTime(jde, E, offset, rule, source, &r);
//   FillHead(t, topocentric vector, AngleRule::kAtan2, out);
//   SetPhase(...); SetMagnitude(...);
//
// Every step keeps the order of floating-point operations of the routines
// it serves: results are compared to the last bit.
#pragma once

#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/fast_trig.h"
#include "math/vec3.h"
#include "solar/body/body_slots.h"

namespace kvx::body {

// What the light-time loop does when a pass gives a distance that is not a
// finite number (a source far outside its range, an orbit that cannot be
// solved):
//   kIterate: the pass does not count as settled; go on up to maxPasses;
//   kStop:    the pass is taken as the last one (the test is "not above
//             the tolerance");
//   kFail:    the loop gives up and returns false.
enum class NonFinite { kIterate, kStop, kFail };

struct LightTimeRule {
    double firstDistance;  // AU: the first guess of the distance
    double tolerance;      // days: settled when |d - d'| x light time per AU is within it
    NonFinite nonFinite;
    int maxPasses;
};

// One second, the usual tolerance (days).
inline constexpr double kOneSecond = 1.0 / 86400.0;
inline constexpr int kMaxLightPasses = 50;

struct Retarded {
    double position[3];  // the source's vector at the retarded instant
    double relative[3];  // position - origin (- offset): observer to body
    double distance;     // |relative| of the last pass (AU)
    double lightTime;    // days, the retardation of the last pass
};

// Light time against a position source: the source is evaluated at
// jde - d x (light time per AU) while the origin (the Earth, or a planet
// seen from the Earth) stays at jde; offset (the observer, may be null) is
// subtracted after the origin. `source(jde, out)` returns false when it
// cannot answer; the loop then returns false. Returns true after the last
// pass (settled, or maxPasses reached).
template <class Source>
bool LightTime(double jde, const double origin[3], const double *offset, const LightTimeRule &rule, Source &&source,
               Retarded *r) {
    double d = rule.firstDistance;
    r->distance = d;
    r->lightTime = 0.0;
    for (int k = 0; k < rule.maxPasses; ++k) {
        r->lightTime = d * kLightDaysPerAu;
        if (!source(jde - r->lightTime, r->position)) return false;
        for (int i = 0; i < 3; ++i) r->relative[i] = r->position[i] - origin[i];
        if (offset)
            for (int i = 0; i < 3; ++i) r->relative[i] -= offset[i];
        const double d1 = vec3::Norm(r->relative);
        if (rule.nonFinite == NonFinite::kFail && !std::isfinite(d1)) return false;
        const double change = std::fabs(d - d1) * kLightDaysPerAu;
        const bool settled = rule.nonFinite == NonFinite::kStop ? !(change > rule.tolerance) : change <= rule.tolerance;
        d = d1;
        r->distance = d1;
        if (settled) break;
    }
    return true;
}

// A vector on the J2000.0 equator rotated to the mean equator of date and
// then to the mean ecliptic of date; out may be v.
void EclipticOfDate(const ATime &t, const double v[3], double out[3]);

// Direction of a J2000.0 unit vector on the true equator and equinox of
// date with annual aberration added (precession, nutation, aberration).
void ApparentOfDate(const ATime &t, const double u[3], double out[3]);

// How the head turns vectors into angle pairs: kAtan2 takes the latitude
// as atan2(z, rho) of the vector as it is; kAsin is DcToAd (asin(z) of a
// unit vector, clamped at the poles), used by the Moon.
enum class AngleRule { kAtan2, kAsin };

// The head of the record from the vector s from the observer to the body
// (J2000.0 equator; any unit, which the distance slot keeps): distance,
// astrometric place, ecliptic place of date and apparent place of date.
void FillHead(const ATime &t, const double s[3], AngleRule rule, BodyPos *out);

// The head's three angle pairs of a nearby body (a satellite's planet, from
// its record), with their cosines and sines: FillHead then measures a body
// close to it by its small offsets from them. Pairs: astrometric, ecliptic
// of date, apparent of date.
struct NearPlace {
    double deg[3][2];
    SinCos sc[3][2];
};
void MakeNearPlace(const BodyPos &near, NearPlace *out);

// FillHead for a body seen within about a degree of the NearPlace: the same
// vectors, with each angle pair found as the reference's plus the offset,
// whose arctangent is a short series (no library call). A body farther out
// (or a reference from another instant) takes the kAtan2 rule.
void FillHead(const ATime &t, const double s[3], const NearPlace &near, BodyPos *out);

// Illuminated fraction and bright-limb angle into the two slots, from the
// Sun's record and the body's head (bodyDistance in AU).
void SetPhase(const BodyPos &sun, double bodyDistance, int fractionSlot, int limbSlot, BodyPos *out);

// The magnitude and, as an int32 at the start of its slot (the other half
// zero), the magnitude in tenths floor(m x 10 + 0.5), saturated to the
// int32 range (0 for a NaN magnitude).
void SetMagnitude(double magnitude, int magnitudeSlot, int tenthsSlot, BodyPos *out);

// slots first..end-1 = value.
void FillSlots(int first, int end, double value, BodyPos *out);

}  // namespace kvx::body
