// Theories of motion of the satellites of the planets: planetocentric
// positions on the J2000.0 equator at a dynamical time.
#pragma once

#include <cmath>

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

// A Galilean satellite's position and velocity at one instant: the
// light-time loop of CalcSatellite moves the satellite from there over the
// few seconds by which its retardation differs from Jupiter's.
struct L12Local {
    int index;
    double jde;          // the model's instant
    double position[3];  // J2000.0 equator (AU)
    double velocity[3];  // AU/day
    double mu;           // GM of Jupiter plus the satellite (AU^3/day^2)
};

// One pass over the L1.2 series: the position at jde into out (as
// GalileanL12) and the local model at jde - shift (|shift| <= 0.05 day,
// e.g. Jupiter's light time). Returns 0 on success.
int GalileanL12Local(int index, double jde, double shift, double out[3], L12Local *local);

// Position from the local model within kLocalSpan (galilean_l12.cpp) of its
// instant (the full series beyond). Returns 0 on success.
int L12LocalPosition(const L12Local &local, double jde, double out[3]);

// Equinoctial elements to a position on the axes of the elements' plane:
// semi-major axis a, mean longitude lambda (rad), k = e cos(varpi),
// h = e sin(varpi), q = sin(i/2) cos(node), p = sin(i/2) sin(node).
// Kepler's equation is solved from startF when it is finite (a nearby
// solution; its small Newton steps then turn the cosine and sine instead of
// evaluating them, which agrees to rounding); returns the eccentric
// longitude F (rad). With the elements' rates (per day, in the order
// a, lambda, k, h, q, p) and a velocity array, the velocity follows too.
double EquinoctialToPosition(double a, double lambda, double k, double h, double q, double p, double out[3],
                             double startF = NAN, const double rates[6] = nullptr, double velocity[3] = nullptr);

}  // namespace kvx::psat
