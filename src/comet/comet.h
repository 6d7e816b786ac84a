// Positions of comets and minor planets in the J2000.0 frame.
#pragma once

#include "kvxlib.h"

namespace kvx::comet {

// Heliocentric position (AU, J2000.0 mean equator and equinox) at dynamical
// Julian date jde: the orbit solution turned by the Gauss vectors of the
// elements' equinox and, when that is not 2000.0, precessed from January 1.5
// of the equinox year to J2000.0. Returns 1, or 0 when the solver fails.
int HelioJ2000(const CometElements &el, double jde, double out[3]);

// A vector of the orbit plane (x toward the perihelion) on the J2000.0
// equator: Gauss vectors of the elements' equinox, then precession from
// January 1.5 of the equinox year when that is not 2000.0. Linear, so it
// turns velocities as well as positions.
void PlaneToJ2000(const CometElements &el, double x, double y, double out[3]);

}  // namespace kvx::comet
