// Physical ephemeris of the planets: poles, central meridians, the
// planetocentric places of the observer and the Sun, and the magnitudes of
// Mallama & Hilton (2018).
#pragma once

#include "kvxlib.h"

namespace kvx::physical {

// Orientation of a planet seen from the observer.
struct Geometry {
    double earthLat, sunLat;  // planetocentric declinations of the observer and the Sun
    double earthLon, sunLon;  // planetographic longitudes of the sub-observer and sub-solar points
    double phiEarth, phiSun;  // their angles along the equator from the node on the J2000.0 equator
    double phiEarthOfDate;    // Jupiter: the observer's angle from the node on the mean equator of date
    double phaseCorrection;   // Jupiter: to the meridians of the illuminated disk, degrees
    double axisAngle;         // position angle of the pole, true equator of date
    double phaseAngle;        // Sun-planet-observer
    double poleRa, poleDec;   // J2000.0
    double retardedJde;       // the instant at which the planet is seen
    double r, delta;          // heliocentric and observer distances, AU
};

// Pole unit vector (J2000.0 equator), its RA/Dec and the prime meridian W
// (degrees, not reduced) at jde, for codes -3 and 0..7; false otherwise.
bool Pole(int code, double jde, double pole[3], double *ra, double *dec, double *w);

// The geometry from a CalcPlanet record of code (0..7) for t.
bool Compute(int code, const ATime &t, const BodyPos &planet, Geometry *g);

// Mallama & Hilton magnitude; false where the paper gives none.
bool MagnitudeMH(int code, const Geometry &g, double *mag);

// Jupiter's System I and II central meridians; Saturn's Delta U and ring
// axes (arcseconds).
void JupiterSystems(const Geometry &g, double *cm1, double *cm2);
void SaturnRing(const Geometry &g, double *deltaU, double *major, double *minor);

// Fields 21-34 of a planet record whose head, retarded vector and diameter
// are filled; -1 where nothing applies.
void Fill(int code, const ATime &t, BodyPos *out);

}  // namespace kvx::physical
