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

// v = m v, the product of RotateDc.
void Apply(const double m[9], Dc &v) {
    const double in[3] = {v.x, v.y, v.z};
    double out[3];
    kvx::vec3::Rotate(m, in, out);
    v = Dc{out[0], out[1], out[2]};
}

void Aberration(const ATime &t, Dc &v, bool add) {
    const double in[3] = {v.x, v.y, v.z};
    double out[3];
    kvx::place::ApplyAberration(kvx::place::MakeAberrationTerms(t), in, add, out);
    v = Dc{out[0], out[1], out[2]};
}

// Horizon (azimuth from the south through the west, altitude) -> true or
// mean equator of date.
void HorizonToEquator(const ATime &t, Dc &v) {
    double m[9];
    v.y = -v.y;
    RotateY(t.obsLatitude - 90.0, m);
    Apply(m, v);
    RotateZ(-t.lst, m);
    Apply(m, v);
}

// Equator of date -> horizon.
void EquatorToHorizon(const ATime &t, Dc &v) {
    double m[9];
    RotateZ(t.lst, m);
    Apply(m, v);
    RotateY(90.0 - t.obsLatitude, m);
    Apply(m, v);
    v.y = -v.y;
}

// Each system reaches the J2000.0 hub by a chain of steps; the way back
// runs the chain in reverse with every step inverted (the inverse matrices
// are those kept in the ATime and in FixedFrames, not recomputed).
enum Step : unsigned char {
    kNone,
    kHorizon,        // horizon <-> equator of date (through the sidereal time)
    kPrecession,     // mean equator of date <-> J2000.0
    kNutation,       // true <-> mean equator of date
    kAberration,     // apparent <-> geometric
    kEcliptic,       // ecliptic <-> equator of date
    kB1950,          // B1950.0 <-> J2000.0
    kEclipticJ2000,  // ecliptic <-> equator of J2000.0
    kGalactic,       // galactic <-> equator of B1950.0
};

constexpr int kMaxSteps = 4;
constexpr Step kToHub[11][kMaxSteps] = {
    {},                                                       // unused
    {kHorizon, kPrecession},                                  // 1 horizontal, geometric
    {kHorizon, kNutation, kPrecession, kAberration},          // 2 horizontal, apparent
    {},                                                       // 3 the hub
    {kB1950},                                                 // 4
    {kPrecession},                                            // 5
    {kNutation, kPrecession, kAberration},                    // 6
    {kEclipticJ2000},                                         // 7
    {kEcliptic, kPrecession},                                 // 8
    {kEcliptic, kNutation, kPrecession, kAberration},         // 9
    {kGalactic, kB1950},                                      // 10
};

[[gnu::always_inline]] inline void Apply(const ATime &t, Step step, bool toHub, Dc &v) {
    switch (step) {
    case kHorizon: toHub ? HorizonToEquator(t, v) : EquatorToHorizon(t, v); break;
    case kPrecession: Apply(toHub ? t.precToJ2000 : t.precFromJ2000, v); break;
    case kNutation: Apply(toHub ? t.nutInvMtx : t.nutMtx, v); break;
    case kAberration: Aberration(t, v, !toHub); break;
    case kEcliptic: Apply(toHub ? t.eclToEq : t.eqToEcl, v); break;
    case kB1950: {
        const FixedFrames &f = Frames();
        Apply(toHub ? f.b1950ToJ2000 : f.j2000ToB1950, v);
        break;
    }
    case kEclipticJ2000: {
        const FixedFrames &f = Frames();
        Apply(toHub ? f.eclJ2000ToEq : f.eqToEclJ2000, v);
        break;
    }
    case kGalactic: {
        const FixedFrames &f = Frames();
        Apply(toHub ? f.galZ1 : f.eqZ1, v);
        Apply(toHub ? f.galX : f.eqX, v);
        Apply(toHub ? f.galZ2 : f.eqZ2, v);
        break;
    }
    case kNone: break;
    }
}

// Any code outside 1..10 means the hub itself.
const Step *Chain(int32_t code) { return kToHub[(code >= 1 && code <= 10) ? code : 3]; }

// The chains list their steps first and end at the first kNone.
void ToHub(const ATime &t, int32_t from, Dc &v) {
    const Step *chain = Chain(from);
    for (int k = 0; k < kMaxSteps && chain[k] != kNone; ++k) Apply(t, chain[k], true, v);
}

void FromHub(const ATime &t, int32_t to, Dc &v) {
    const Step *chain = Chain(to);
    int n = 0;
    while (n < kMaxSteps && chain[n] != kNone) ++n;
    for (int k = n - 1; k >= 0; --k) Apply(t, chain[k], false, v);
}

}  // namespace

extern "C" Ad *Coordinates(const ATime *t, int32_t from, const Ad *in, int32_t to, Ad *out) {
    if (!in || !out) return nullptr;
    if (from == to) {
        *out = *in;
        return const_cast<Ad *>(in);
    }
    if (!t) return nullptr;
    Dc v;
    AdToDc(in, &v);
    ToHub(*t, from, v);
    FromHub(*t, to, v);
    DcToAd(&v, out);
    return out;
}
