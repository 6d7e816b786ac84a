// Conversion of a direction between the ten coordinate systems. Every
// conversion passes through direction cosines on the mean equator and
// equinox of J2000.0 (the hub): the source system is brought to the hub,
// then the hub is carried to the target system by the exact reverse steps.
//
// Frames and constants:
//  - mean of date: the precession matrices of the ATime record (IAU 2006,
//    Fukushima-Williams angles, with frame bias);
//  - true of date: the nutation matrix of the record; the apparent
//    ecliptic is the mean-obliquity rotation applied after the full
//    nutation matrix (equivalent to the true-obliquity form to first order);
//  - apparent systems carry annual aberration, applied in the J2000 frame;
//  - B1950.0 is the mean equator of JD 2433282.42346 (precession only, no
//    E-terms of aberration);
//  - galactic coordinates use the IAU 1958 definition (Blaauw, Gum,
//    Pawsey & Westerhout, MNRAS 121 (1960) 123): north pole at B1950.0
//    right ascension 192.25 deg, declination 27.4 deg, ascending node of the
//    galactic plane on the B1950.0 equator at galactic longitude 33 deg;
//  - horizontal systems: azimuth from the south through the west, the
//    geocentric direction referred to the observer's horizon through the
//    local apparent sidereal time; no refraction, no diurnal parallax.
#include "kvxlib.h"
#include "math/constants.h"
#include "math/vec3.h"
#include "place/apparent.h"
#include "platform/thread_cache.h"

namespace {

// The constant frame matrices, computed once.
struct FixedFrames {
    double b1950ToJ2000[9];
    double j2000ToB1950[9];
    double eclJ2000ToEq[9];  // RotateX(-eps0)
    double eqToEclJ2000[9];  // RotateX(+eps0)
    // Galactic -> B1950.0: Z(33), then X(-62.6), then Z(-282.25).
    double galZ1[9], galX[9], galZ2[9];
    // B1950.0 -> galactic: Z(282.25), then X(62.6), then Z(-33).
    double eqZ1[9], eqX[9], eqZ2[9];

    FixedFrames() {
        GetPrecMtx(kvx::kB1950, kvx::kJ2000, b1950ToJ2000);
        GetPrecMtx(kvx::kJ2000, kvx::kB1950, j2000ToB1950);
        const double eps0 = GetEp(kvx::kJ2000);
        RotateX(-eps0, eclJ2000ToEq);
        RotateX(eps0, eqToEclJ2000);
        RotateZ(33.0, galZ1);
        RotateX(-62.6, galX);
        RotateZ(-282.25, galZ2);
        RotateZ(282.25, eqZ1);
        RotateX(62.6, eqX);
        RotateZ(-33.0, eqZ2);
    }
};

const FixedFrames &Frames() {
    static const FixedFrames frames;
    return frames;
}

using kvx::vec3::Rotate;

// Annual aberration of the hub vector: added on the way out, removed on the
// way in.
void Aberration(const ATime &t, double v[3], bool add) {
    kvx::place::ApplyAberration(kvx::place::MakeAberrationTerms(t), v, add, v);
}

// The two rotations between the equator of date and the horizon depend on
// the sidereal time and the latitude alone; a run of conversions for one
// record uses the same ones, so the last pair of each direction is kept per
// thread, keyed by the two angles themselves.
struct HorizonTurns {
    double lst, latitude;
    bool valid;
    double first[9], second[9];
};

const HorizonTurns &Turns(const ATime &t, bool toEquator) {
    struct Last {
        HorizonTurns turns[2];
    };
    HorizonTurns &h = kvx::platform::ThreadCache<Last>().turns[toEquator ? 1 : 0];
    if (!(h.valid && h.lst == t.lst && h.latitude == t.obsLatitude)) {
        if (toEquator) {
            RotateY(t.obsLatitude - 90.0, h.first);
            RotateZ(-t.lst, h.second);
        } else {
            RotateZ(t.lst, h.first);
            RotateY(90.0 - t.obsLatitude, h.second);
        }
        h.lst = t.lst;
        h.latitude = t.obsLatitude;
        h.valid = true;
    }
    return h;
}

// Horizon (azimuth from the south through the west, altitude) -> true or
// mean equator of date: y negated, then about y by (latitude - 90) and
// about z by -(sidereal time).
void HorizonToEquator(const ATime &t, double v[3]) {
    const HorizonTurns &h = Turns(t, true);
    v[1] = -v[1];
    Rotate(h.first, v, v);
    Rotate(h.second, v, v);
}

// Equator of date -> horizon: the reverse steps.
void EquatorToHorizon(const ATime &t, double v[3]) {
    const HorizonTurns &h = Turns(t, false);
    Rotate(h.first, v, v);
    Rotate(h.second, v, v);
    v[1] = -v[1];
}

// True equator and equinox of date with aberration -> the hub, and back.
void ApparentToHub(const ATime &t, double v[3]) {
    Rotate(t.nutInvMtx, v, v);
    Rotate(t.precToJ2000, v, v);
    Aberration(t, v, false);
}

void HubToApparent(const ATime &t, double v[3]) {
    Aberration(t, v, true);
    Rotate(t.precFromJ2000, v, v);
    Rotate(t.nutMtx, v, v);
}

// Each system to the J2000.0 hub. Any code outside 1..10 is the hub itself.
void ToHub(const ATime &t, int32_t from, double v[3]) {
    switch (from) {
    case 2: HorizonToEquator(t, v); [[fallthrough]];
    case 6: ApparentToHub(t, v); break;
    case 9:
        Rotate(t.eclToEq, v, v);
        ApparentToHub(t, v);
        break;
    case 1:
        HorizonToEquator(t, v);
        Rotate(t.precToJ2000, v, v);
        break;
    case 8: Rotate(t.eclToEq, v, v); [[fallthrough]];
    case 5: Rotate(t.precToJ2000, v, v); break;
    case 7: Rotate(Frames().eclJ2000ToEq, v, v); break;
    case 10: {
        const FixedFrames &f = Frames();
        Rotate(f.galZ1, v, v);
        Rotate(f.galX, v, v);
        Rotate(f.galZ2, v, v);
        [[fallthrough]];
    }
    case 4: Rotate(Frames().b1950ToJ2000, v, v); break;
    default: break;
    }
}

// The hub to each system: the steps of ToHub in reverse order, each one
// inverted (the inverse matrices are those kept in the ATime and in
// FixedFrames, not recomputed).
void FromHub(const ATime &t, int32_t to, double v[3]) {
    switch (to) {
    case 1:
        Rotate(t.precFromJ2000, v, v);
        EquatorToHorizon(t, v);
        break;
    case 2:
        HubToApparent(t, v);
        EquatorToHorizon(t, v);
        break;
    case 5:
    case 8:
        Rotate(t.precFromJ2000, v, v);
        if (to == 8) Rotate(t.eqToEcl, v, v);
        break;
    case 6:
    case 9:
        HubToApparent(t, v);
        if (to == 9) Rotate(t.eqToEcl, v, v);
        break;
    case 7: Rotate(Frames().eqToEclJ2000, v, v); break;
    case 4:
    case 10: {
        const FixedFrames &f = Frames();
        Rotate(f.j2000ToB1950, v, v);
        if (to == 4) break;
        Rotate(f.eqZ1, v, v);
        Rotate(f.eqX, v, v);
        Rotate(f.eqZ2, v, v);
        break;
    }
    default: break;
    }
}

}  // namespace

extern "C" Ad *Coordinates(const ATime *t, int32_t from, const Ad *in, int32_t to, Ad *out) {
    if (!in || !out) return nullptr;
    if (from == to) {
        *out = *in;
        return const_cast<Ad *>(in);
    }
    if (!t) return nullptr;
    double v[3];
    kvx::vec3::FromAd(in->a, in->d, v);
    ToHub(*t, from, v);
    FromHub(*t, to, v);
    double a, d;
    kvx::vec3::ToAd(v, &a, &d);
    out->a = a;
    out->d = d;
    return out;
}
