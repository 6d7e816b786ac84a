// Theories of motion of the satellites of the planets: planetocentric
// positions on the J2000.0 equator at a dynamical time.
#pragma once

namespace kvx::psat {

// Planetocentric position (AU, J2000.0 mean equator and equinox) of satellite
// code (402 Deimos, 501 Io, ...; see SatelliteExist) at dynamical Julian date
// jde. Returns 0 on success, non-zero for a code without a theory or a
// non-finite date (out untouched then).
int SatellitePosition(int code, double jde, double out[3]);

// Position and velocity (AU, AU/day), the velocity by a central difference
// of the position over +-kVelocityStep days. Returns 0 on success.
int SatelliteState(int code, double jde, double pos[3], double vel[3]);

// GM of the planet plus the satellite, AU^3/day^2 (0 for a code without a
// theory): for the osculating elements.
double SatelliteGm(int code);

// The individual theories (index from 1 as in the satellite codes); each
// returns 0 on success.
int GalileanL12(int index, double jde, double out[3]);          // Io..Callisto
int UranusGust86(int index, double jde, double out[3]);         // Ariel..Miranda
int SaturnMeeus(int index, double jde, double out[3]);          // Mimas..Iapetus
int MeanElementSatellite(int code, double jde, double out[3]);  // the rest

// Equinoctial elements to a position on the axes of the elements' plane:
// semi-major axis a, mean longitude lambda (rad), k = e cos(varpi),
// h = e sin(varpi), q = sin(i/2) cos(node), p = sin(i/2) sin(node).
void EquinoctialToPosition(double a, double lambda, double k, double h, double q, double p, double out[3]);

}  // namespace kvx::psat
