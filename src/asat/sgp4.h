// Orbit propagators of artificial satellites, reachable from the tests:
// the near-Earth SGP4 of Spacetrack Report No. 3 behind CalcASat, and the
// complete SGP4/SDP4 of the 2006 revision behind CalcASatFull, both on
// minutes since the element epoch (the exported functions take Julian
// dates, whose rounding is 40 microseconds at the present epoch).
#pragma once

#include "kvxlib.h"

namespace kvx::asat {

// Near-Earth SGP4 set-up for one element set (one per propagation: the
// exported function builds it on every call).
struct NearEarth {
    // elements (radians, radians per minute)
    double e0, i0, node0, omega0, m0, bstar;
    // un-Kozai'd mean motion and semi-major axis (Earth radii)
    double n0dp, a0dp;
    bool simple;
    int deepSpace;  // always 0: every set is propagated as near-Earth
    int initialised;
    double cosi, sini, eta, delmo, sinmo;
    double x3thm1, x1mth2, x7thm1;
    double c1, c4, c5, d2, d3, d4;
    double omgcof, xmcof, xnodcf, t2cof, t3cof, t4cof, t5cof, xlcof, aycof;
    double mdot, omgdot, nodedot;
};

void InitNearEarth(const Elm &elm, NearEarth *m);
// Position (km) and velocity (km/s) at tsince minutes; false when the
// eccentricity leaves the unit range or the state is not finite.
bool PropagateNearEarth(const NearEarth &m, double tsince, double r[3], double v[3]);

// The full model of Vallado, Crawford, Hujsak and Kelso (2006), WGS-72.
// Returns false on any of the model's error conditions.
bool PropagateFull(const Elm &elm, double tsince, double r[3], double v[3]);

}  // namespace kvx::asat
