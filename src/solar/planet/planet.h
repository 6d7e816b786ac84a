// The planet dispatcher: heliocentric vectors of the Earth, the planets and
// the dwarf planets from the best source of the date.
#pragma once

namespace kvx::planet {

// Heliocentric position (AU, J2000.0 mean equator and equinox) of body code
// (-3 Earth, 0..7 Mercury..Pluto, 8 Eris, 9 Ceres, 10 Makemake, 11 Haumea) at
// dynamical Julian date jde. Returns 1, or 0 for an unknown code.
int HelioVector(int code, double jde, double out[3]);

// True for the codes the planet routines accept.
inline bool ValidCode(int code) { return code == -3 || (code >= 0 && code <= 11); }

}  // namespace kvx::planet
