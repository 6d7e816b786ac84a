// Names of the 37 slots of BodyPos, per body kind: the only place that knows
// where a quantity lives in the record. Values are zero-based indices into
// BodyPos::f; a vector slot names the first of its three consecutive fields.
// A magnitude-in-tenths slot holds a 32-bit integer at the start of the
// eight-byte slot (write it with body::SetMagnitude).
#pragma once

#include "kvxlib.h"

namespace kvx::body {

// The head, the same for every body.
enum Head : int {
    kRaJ2000 = 0,      // astrometric, topocentric, J2000.0 mean equator
    kDecJ2000 = 1,
    kRaApparent = 2,   // true equator and equinox of date, with aberration
    kDecApparent = 3,
    kEclLon = 4,       // mean ecliptic and equinox of date, no aberration
    kEclLat = 5,
    kDistance = 6,     // observer to body (AU; the Moon in km)
    kHeadSize = 7,
};

namespace sun_slot {
enum : int {
    kEarthHelio = 7,       // 3: the Earth's heliocentric vector, J2000.0 equator, AU
    kEarthEcliptic = 10,   // 3: the same on the mean ecliptic of date
    kGeoDistance = 13,     // geocentric distance R
    kSemiDiameter = 14,    // topocentric, degrees
    kP = 15,               // position angle of the rotation axis
    kB0 = 16,              // heliographic latitude of the disk centre
    kNodeLongitude = 17,   // heliographic longitude of the centre from the equator's node
    kL0 = 18,              // heliographic longitude of the central meridian
    kPhase = 19,           // -1: no phase
};
}  // namespace sun_slot

// Planets, dwarf planets, comets and minor planets.
namespace planet_slot {
enum : int {
    kHelioRetarded = 7,     // 3: heliocentric vector at the light-time-retarded instant
    kHelio = 10,            // 3: heliocentric vector at the instant, J2000.0 equator
    kHelioEcliptic = 13,    // 3: kHelio on the mean ecliptic of date
    kHelioDistance = 16,
    kGeoDistance = 17,      // geometric, at the instant, before light time
    kIlluminated = 18,      // illuminated fraction
    kLimbAngle = 19,        // position angle of the bright limb
    kPhysicalFirst = 20,    // first slot of the physical-ephemeris block (codes 0..7):
    kEarthLat = 20,         //   planetocentric declination of the observer, DE
    kSunLat = 21,           //   planetocentric declination of the Sun, DS
    kAxisAngle = 22,        //   position angle of the north pole, true equator of date
    kCentralMeridian = 23,  //   sub-observer longitude (System III for the giants)
    kSunLon = 24,           //   sub-solar longitude
    kPhaseAngle = 25,
    kDefect = 26,           //   defect of illumination, arcseconds
    kPoleRa = 27,           //   pole, J2000.0, at the retarded instant
    kPoleDec = 28,
    kPolarDiameter = 29,    //   apparent polar diameter, arcseconds
    kMagnitudeMH = 30,      //   Mallama & Hilton 2018
    kSpecial1 = 31,         //   Jupiter: System I; Saturn: Delta U
    kSpecial2 = 32,         //   Jupiter: System II; Saturn: ring major axis
    kSpecial3 = 33,         //   Saturn: ring minor axis
    kDiameter = 34,         // apparent diameter, arcseconds (comets: part of the block)
    kMagnitude = 35,
    kMagnitudeTenths = 36,  // int32
};
}  // namespace planet_slot

namespace moon_slot {
enum : int {
    kSemiDiameter = 7,      // topocentric, degrees
    kRaGeo = 8,             // geocentric J2000.0 right ascension and declination
    kDecGeo = 9,
    kEclLonGeo = 10,        // geocentric, mean ecliptic and equinox of date
    kEclLatGeo = 11,
    kGeoDistance = 12,      // km
    kGeoSemiDiameter = 13,
    kAzimuth = 14,          // geometric horizon
    kAltitude = 15,
    kAxisAngle = 16,        // position angle of the axis
    kIlluminated = 17,
    kLimbAngle = 18,
    kLibrationLon = 19,     // total librations
    kLibrationLat = 20,
    kDirection = 23,        // 3: direction cosines of the head's J2000.0 place;
                            // BodyPos::moon.fx holds it in fixed point
};
}  // namespace moon_slot

// Satellites of the planets.
namespace satellite_slot {
enum : int {
    kHelioRetarded = 7,     // 3: the parent's retarded heliocentric vector + planetocentric
    kPlanetocentric = 10,   // 3: planetocentric vector at the retarded instant
    kHelio = 13,            // 3: heliocentric vector at the instant, J2000.0 equator
    kHelioEcliptic = 16,    // 3: kHelio on the mean ecliptic of date
    kHelioDistance = 19,
    kMassRatio = 20,        // satellite to planet
    kRadiusA = 21,          // km
    kRadiusB = 22,
    kRadiusC = 23,
    kPeriod = 24,           // sidereal, days
    kMagnitude = 25,        // mean opposition magnitude
    kMagnitudeTenths = 26,  // int32
};
}  // namespace satellite_slot

// The three-vector that starts at slot k.
inline double *Vec(BodyPos &b, int k) { return &b.f[k]; }
inline const double *Vec(const BodyPos &b, int k) { return &b.f[k]; }
inline void SetVec(BodyPos &b, int k, const double v[3]) {
    b.f[k] = v[0];
    b.f[k + 1] = v[1];
    b.f[k + 2] = v[2];
}

}  // namespace kvx::body
