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
#include "math/vec3.h"
#include "solar/body/body_pipeline.h"
#include "solar/ephem/jpl_de.h"
#include "solar/ephem/jpl_query.h"
#include "solar/moon/moon_libration.h"
#include "solar/moon/moon_theory.h"

namespace {

using kvx::kKmPerAu;
using kvx::kLightDaysPerAu;

// Mean Earth-Moon distance (AU): the first guess of the light-time loops.
constexpr double kMeanDistanceAu = 0.002569555301823482;
// Convergence of the light-time loops: a hundredth of a second for the
// ephemeris files, one second for the theory (days).
constexpr double kFileLightTimeStop = kvx::body::kOneSecond / 100.0;
constexpr double kTheoryLightTimeStop = kvx::body::kOneSecond;

// Library body codes of the main reader, and JPL body numbers of the Moon
// handle.
constexpr int kMoonCode = -1, kSunCode = -2, kEarthCode = -3;
constexpr int kJplEarth = 3, kJplMoon = 10, kJplSun = 11;

// Geocentric Moon (AU, J2000.0 equator) at dynamical date jde, geometric.
bool FileGeocentric(double jde, double v[3]) {
    if (kvx::jpl::Query(kMoonCode, jde, kEarthCode, v, nullptr)) return true;
    return kvx::jpl::MoonQuery(kJplMoon, jde, kJplEarth, v, nullptr) != 0;
}

// Heliocentric Moon and Earth (AU, J2000.0 equator).
bool FileHeliocentricMoon(double jde, double v[3]) {
    if (kvx::jpl::Query(kMoonCode, jde, kSunCode, v, nullptr)) return true;
    return kvx::jpl::MoonQuery(kJplMoon, jde, kJplSun, v, nullptr) != 0;
}
bool FileHeliocentricEarth(double jde, double v[3]) {
    if (kvx::jpl::Query(kEarthCode, jde, kSunCode, v, nullptr)) return true;
    return kvx::jpl::MoonQuery(kJplEarth, jde, kJplSun, v, nullptr) != 0;
}

// Geocentric Moon seen at jde (AU, J2000.0 equator), corrected for light
// time: the Moon is taken where it was when the light left it, the Earth
// where it is at jde. False when no file answers.
bool FileGeocentricWithLightTime(double jde, double g[3]) {
    double earth[3];
    if (!FileHeliocentricEarth(jde, earth)) return false;
    const kvx::body::LightTimeRule rule{kMeanDistanceAu, kFileLightTimeStop, kvx::body::NonFinite::kFail,
                                        kvx::body::kMaxLightPasses};
    kvx::body::Retarded r;
    if (!kvx::body::LightTime(jde, earth, nullptr, rule, FileHeliocentricMoon, &r)) return false;
    g[0] = r.relative[0];
    g[1] = r.relative[1];
    g[2] = r.relative[2];
    return true;
}

Dc Unit(const double v[3], double length) { return Dc{v[0] / length, v[1] / length, v[2] / length}; }

}  // namespace

bool kvx::moon::FromFile(double jde) {
    double v[3];
    return FileGeocentric(jde, v);
}

// The theory is evaluated with T = GetT(jd), as its published series are.
extern "C" int32_t CalcMoonLbr(double jd, double lb[2], double *dist) {
    if (lb == nullptr) return 0;
    double km;
    double v[3];
    if (FileGeocentric(jd, v)) {
        const double r = kvx::vec3::Norm(v);
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

extern "C" void CalcMoon2(ATime *t, BodyPos *out) {
    if (t == nullptr || out == nullptr) return;
    using namespace kvx::body::moon_slot;
    double *f = out->f;
    Dc j2000;          // geocentric unit vector, J2000.0 equator
    Ad ofDate;         // geocentric right ascension and declination of date
    double g[3];
    if (FileGeocentricWithLightTime(t->jde, g)) {
        const double r = kvx::vec3::Norm(g);
        f[kGeoDistance] = r * kKmPerAu;
        j2000 = Unit(g, r);
        Ad ad;
        DcToAd(&j2000, &ad);
        f[kRaGeo] = ad.a;
        f[kDecGeo] = ad.d;
        Dc m, e;
        RotateDc(&j2000, t->precFromJ2000, &m);
        DcToAd(&m, &ofDate);
        RotateDc(&m, t->eqToEcl, &e);
        DcToAd(&e, &ad);
        f[kEclLonGeo] = ad.a;
        f[kEclLatGeo] = ad.d;
    } else {
        // The theory's light-time loop works on its ecliptic place.
        // Two or three passes settle to a second; the cap ends the loop when
        // the source flips between a file and the theory from one pass to
        // the next (a file whose first date lies inside the light time).
        double d = kMeanDistanceAu;
        for (int pass = 0; pass < kvx::body::kMaxLightPasses; ++pass) {
            double lb[2];
            CalcMoonLbr(t->jde - d * kLightDaysPerAu, lb, &f[kGeoDistance]);
            f[kEclLonGeo] = lb[0];
            f[kEclLatGeo] = lb[1];
            const double d2 = f[kGeoDistance] / kKmPerAu;
            // A non-finite date gives no distance to converge on.
            if (!std::isfinite(d2)) break;
            if (std::fabs(d2 - d) * kLightDaysPerAu <= kTheoryLightTimeStop) break;
            d = d2;
        }
        const Ad ecl{f[kEclLonGeo], f[kEclLatGeo]};
        Dc e, m;
        AdToDc(&ecl, &e);
        RotateDc(&e, t->eclToEq, &m);
        DcToAd(&m, &ofDate);
        RotateDc(&m, t->precToJ2000, &j2000);
        Ad ad;
        DcToAd(&j2000, &ad);
        f[kRaGeo] = ad.a;
        f[kDecGeo] = ad.d;
    }

    // Topocentric vector (km); the head keeps kilometres in its distance.
    const double s[3] = {j2000.x * f[kGeoDistance] - t->obsPos[0] * kKmPerAu,
                         j2000.y * f[kGeoDistance] - t->obsPos[1] * kKmPerAu,
                         j2000.z * f[kGeoDistance] - t->obsPos[2] * kKmPerAu};
    kvx::body::FillHead(*t, s, kvx::body::AngleRule::kAsin, out);

    // Direction cosines of the astrometric place, and in fixed point.
    const Ad radec{f[kvx::body::kRaJ2000], f[kvx::body::kDecJ2000]};
    Dc dc;
    AdToDc(&radec, &dc);
    const double dv[3] = {dc.x, dc.y, dc.z};
    kvx::body::SetVec(*out, kDirection, dv);
    DcToFx(&dc, &out->moon.fx);

    // Physical ephemeris.
    kvx::moon::Libration lib =
        kvx::moon::MoonLibration(t->t2, f[kEclLonGeo], f[kEclLatGeo], ofDate.a, t->nutation[0], t->eps);
    kvx::moon::ClampLibration(t->jde, &lib);
    f[kAxisAngle] = lib.axisAngle;
    f[kLibrationLon] = lib.longitude;
    f[kLibrationLat] = lib.latitude;
}

extern "C" void CalcMoon(ATime *t, BodyPos *out, const BodyPos *sunPos) {
    if (t == nullptr || out == nullptr) return;
    CalcMoon2(t, out);
    using namespace kvx::body::moon_slot;
    double *f = out->f;
    const double distance = f[kvx::body::kDistance];
    f[kGeoSemiDiameter] = kvx::RadToDeg(std::atan(kvx::kMoonRadiusKm / f[kGeoDistance]));
    f[kSemiDiameter] = kvx::RadToDeg(std::atan(kvx::kMoonRadiusKm / distance));
    if (sunPos != nullptr) kvx::body::SetPhase(*sunPos, distance / kKmPerAu, kIlluminated, kLimbAngle, out);
    const Ad radec{f[kvx::body::kRaJ2000], f[kvx::body::kDecJ2000]};
    Ad azAlt{};
    Coordinates(t, KVX_COORD_J2000, &radec, KVX_COORD_HORIZONTAL, &azAlt);
    f[kAzimuth] = azAlt.a;
    f[kAltitude] = azAlt.d;
}
