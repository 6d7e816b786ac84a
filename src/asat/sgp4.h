// Orbit propagators of artificial satellites, reachable from the tests:
// the near-Earth SGP4 of Spacetrack Report No. 3 behind CalcASat, and the
// complete SGP4/SDP4 of the 2006 revision behind CalcASatFull, both on
// minutes since the element epoch (the exported functions take Julian
// dates, whose rounding is 40 microseconds at the present epoch).
#pragma once

#include "kvxlib.h"

namespace kvx::asat {

// The drag and secular-gravity terms both propagators share: the
// near-Earth set-up of Hoots & Roehrich (1980) and its secular update of
// the elements. Names as in the 2006 revision.
struct SecularTerms {
    double mo, argpo, nodeo, bstar;  // elements at the epoch (radians)
    double mdot, argpdot, nodedot;   // secular rates (radians per minute)
    double eta, cc1, cc4, cc5, omgcof, xmcof, nodecf, delmo, sinmao;
    double t2cof, t3cof, t4cof, t5cof, d2, d3, d4;
    double xlcof, aycof, x1mth2, x7thm1;
    bool simple;  // perigee below 220 km: the d2..t5cof terms are left out
};

// What a model gives the shared set-up: its un-Kozai'd mean motion and
// semi-major axis, its gravity constants, and the places where the 1980
// report and the 2006 revision evaluate differently (kept, so that each
// model gives its own results to the bit).
struct SecularSetUp {
    double n0, a0;          // radians per minute, Earth radii
    double cosi, sini;      // of the inclination
    double x3thm1;          // 3 cos^2 i - 1 as the model computes it
    double pinvsq;          // 1 / (a0 (1 - e^2))^2 as the model computes it
    double radiusKm;        // Earth's equatorial radius
    double ck2;             // J2 / 2
    double k4;              // 1.25 (-3/8 J4) = -0.46875 J4
    double a3ovk2;          // -J3 / ck2
    double qoms2t;          // ((120 - 78) km / radius)^4
    // The 2006 revision takes (a0 - s)^-4 with pow() and drops the drag
    // terms that divide by e below e = 1e-4; the report squares twice and
    // drops them at e = 0.
    bool revision2006;
    bool simple;
};
void SetUpSecular(const Elm &elm, const SecularSetUp &s, SecularTerms *m);

// Mean anomaly, argument of perigee and node after t minutes of secular
// gravity and drag, with the drag factors of a, e and the mean longitude.
struct Secular {
    double mm, argpm, nodem, tempa, tempe, templ;
};
Secular SecularUpdate(const SecularTerms &m, double t);

// Near-Earth SGP4 set-up for one element set (one per propagation: the
// exported function builds it on every call).
struct NearEarth : SecularTerms {
    double e0, i0;  // elements (radians)
    // un-Kozai'd mean motion and semi-major axis (Earth radii)
    double n0dp, a0dp;
    int deepSpace;  // always 0: every set is propagated as near-Earth
    int initialised;
    double cosi, sini, x3thm1;
};

void InitNearEarth(const Elm &elm, NearEarth *m);
// Position (km) and velocity (km/s) at tsince minutes; false when the
// eccentricity leaves the unit range or the state is not finite.
bool PropagateNearEarth(const NearEarth &m, double tsince, double r[3], double v[3]);

// The unit vectors toward the satellite (u) and along its motion (v) for
// the argument of latitude uk, inclination ik and node nodek (radians).
void Orientation(double uk, double ik, double nodek, double u[3], double v[3]);
// Copies the state p, w to r, v when every component is finite; false,
// and nothing written, otherwise.
bool StoreFiniteState(const double p[3], const double w[3], double r[3], double v[3]);
// Writes a state to the exports' optional position and velocity; returns 1.
int32_t CopyState(const double r[3], const double v[3], double *position, double *velocity);

// The full model of Vallado, Crawford, Hujsak and Kelso (2006), WGS-72.
// Returns false on any of the model's error conditions.
bool PropagateFull(const Elm &elm, double tsince, double r[3], double v[3]);

}  // namespace kvx::asat
