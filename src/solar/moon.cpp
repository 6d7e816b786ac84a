// The place of the Moon for an ATime: geocentric and topocentric
// directions, distances, semi-diameters, horizontal coordinates, phase and
// the physical ephemeris (librations and axis).
//
// Sources, in order: the main JPL DE ephemeris, the Moon handle (a file in
// the DE format: the DE file itself or the Moon position file), the built-in
// lunar theory (moon_theory.cpp).
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "solar/jpl_query.h"
#include "solar/moon_theory.h"

namespace {

using kvx::kKmPerAu;

// Library body codes of the main reader.
constexpr int kMoonCode = -1, kEarthCode = -3;

double Length(const double v[3]) { return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }

// Geocentric Moon (AU, J2000.0 equator) at dynamical date jde, geometric.
bool FileGeocentric(double jde, double v[3]) {
    return kvx::jpl::Query(kMoonCode, jde, kEarthCode, v, nullptr) != 0;
}

Dc Unit(const double v[3], double length) { return Dc{v[0] / length, v[1] / length, v[2] / length}; }

}  // namespace

/// CalcMoonLbr: geocentric ecliptic longitude and latitude of the Moon
/// (degrees, mean ecliptic and equinox of date) and its distance (km) at
/// dynamical Julian date jd, geometric (no light time). From the main JPL
/// ephemeris, else the Moon file, else the built-in theory; the theory is
/// evaluated with T = GetT(jd), as its published series are. Returns 1, or
/// 0 (nothing written) when lb is null; dist may be null.
extern "C" int32_t CalcMoonLbr(double jd, double lb[2], double *dist) {
    if (lb == nullptr) return 0;
    double km;
    double v[3];
    if (FileGeocentric(jd, v)) {
        const double r = Length(v);
        km = r * kKmPerAu;
        const Dc u = Unit(v, r);
        double prec[9], ecl[9];
        GetPrecMtx(kvx::kJ2000, jd, prec);
        RotateX(GetEp(jd), ecl);
        Dc m, e;
        RotateDc(&u, prec, &m);
        RotateDc(&m, ecl, &e);
        Ad ad;
        DcToAd(&e, &ad);
        lb[0] = ad.a;
        lb[1] = ad.d;
    } else {
        kvx::moon::TheoryLbr(jd, lb, &km);
    }
    if (dist != nullptr) *dist = km;
    return 1;
}

