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

void Apply(const double m[9], Dc &v) { RotateDc(&v, m, &v); }

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

void ToHub(const ATime &t, int32_t from, Dc &v) {
    const FixedFrames &f = Frames();
    switch (from) {
    case 1:
        HorizonToEquator(t, v);
        Apply(t.precToJ2000, v);
        break;
    case 2:
        HorizonToEquator(t, v);
        Apply(t.nutInvMtx, v);
        Apply(t.precToJ2000, v);
        Aberration(t, v, false);
        break;
    case 4:
        Apply(f.b1950ToJ2000, v);
        break;
    case 5:
        Apply(t.precToJ2000, v);
        break;
    case 6:
        Apply(t.nutInvMtx, v);
        Apply(t.precToJ2000, v);
        Aberration(t, v, false);
        break;
    case 7:
        Apply(f.eclJ2000ToEq, v);
        break;
    case 8:
        Apply(t.eclToEq, v);
        Apply(t.precToJ2000, v);
        break;
    case 9:
        Apply(t.eclToEq, v);
        Apply(t.nutInvMtx, v);
        Apply(t.precToJ2000, v);
        Aberration(t, v, false);
        break;
    case 10:
        Apply(f.galZ1, v);
        Apply(f.galX, v);
        Apply(f.galZ2, v);
        Apply(f.b1950ToJ2000, v);
        break;
    default:  // 3 and unknown codes: already on the hub
        break;
    }
}

void FromHub(const ATime &t, int32_t to, Dc &v) {
    const FixedFrames &f = Frames();
    switch (to) {
    case 1:
        Apply(t.precFromJ2000, v);
        EquatorToHorizon(t, v);
        break;
    case 2:
        Aberration(t, v, true);
        Apply(t.precFromJ2000, v);
        Apply(t.nutMtx, v);
        EquatorToHorizon(t, v);
        break;
    case 4:
        Apply(f.j2000ToB1950, v);
        break;
    case 5:
        Apply(t.precFromJ2000, v);
        break;
    case 6:
        Aberration(t, v, true);
        Apply(t.precFromJ2000, v);
        Apply(t.nutMtx, v);
        break;
    case 7:
        Apply(f.eqToEclJ2000, v);
        break;
    case 8:
        Apply(t.precFromJ2000, v);
        Apply(t.eqToEcl, v);
        break;
    case 9:
        Aberration(t, v, true);
        Apply(t.precFromJ2000, v);
        Apply(t.nutMtx, v);
        Apply(t.eqToEcl, v);
        break;
    case 10:
        Apply(f.j2000ToB1950, v);
        Apply(f.eqZ1, v);
        Apply(f.eqX, v);
        Apply(f.eqZ2, v);
        break;
    default:
        break;
    }
}

}  // namespace

/// Coordinates: converts the pair `in` (degrees) from coordinate system
/// `from` to system `to` (codes 1-10, see the header; any other code means
/// J2000.0 mean equatorial) for the instant and observer of `t`, which is
/// only read. When from == to the input is copied unchanged (not
/// normalised) and `in` is returned. Otherwise the result has its
/// longitude in 0..360 and `out` is returned; out may be in. Apparent
/// systems include annual aberration (removed by iteration on the way
/// in); no refraction or diurnal parallax is applied. Null in or out, or a
/// null t when from != to, returns null and writes nothing.
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
