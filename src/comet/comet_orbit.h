// Two-body motion of comets and minor planets from perihelion elements.
#pragma once

#include "kvxlib.h"

namespace kvx::comet {

inline constexpr double kGauss = 0.01720209895;  // radians per day

// State in the orbit plane: x, y, z (AU, x toward perihelion, z = 0),
// vx, vy, vz (AU/day, vz = 0), r (AU) and the true anomaly (radians).
// The last five are written only when velocities are wanted.
struct OrbitState {
    double x, y, z, vx, vy, vz, r, trueAnomaly;
};

// Solves the two-body motion at dynamical Julian date t: elliptic solver for
// e < 0.98, parabolic for |e - 1| < 1e-8, near-parabolic / hyperbolic
// (Laguerre) otherwise. Returns 1, or 0 for q = 0 or no convergence in 70
// iterations.
int SolveOrbit(double t, const CometElements &el, OrbitState *out, bool wantVelocity);

// The three solvers, for the tests.
int SolveElliptic(double t, const CometElements &el, OrbitState *out, bool wantVelocity);
int SolveNearParabolic(double t, const CometElements &el, OrbitState *out, bool wantVelocity);
int SolveParabolic(double t, const CometElements &el, OrbitState *out, bool wantVelocity);

// True for a minor planet: kind 'M', or a designation whose leading digits
// are followed by 'A'.
bool IsMinorPlanet(const CometElements &el);

// Visual magnitude from the Sun-observer (R), Sun-object (r) and
// observer-object (delta) distances, AU: the comet law H + 5 log delta +
// K log r, or the H, G law of minor planets.
double Magnitude(const CometElements &el, double R, double r, double delta);

// Perihelion elements (equinox 2000.0) of the conic through a heliocentric
// state on the J2000.0 equator (AU, AU/day) at dynamical Julian date jde,
// for the attraction s^2 GM (0 < s <= 1; GM = k^2). The solvers work with
// k, so the orbit is read at the stretched time T + (t - T) s: at that
// argument SolveOrbit gives the position on the weaker orbit at t.
// Returns 1, or 0 for a zero or radial state or s outside (0, 1].
int ElementsFromState(const double pos[3], const double vel[3], double jde, double s, CometElements *out);

// Obliquity (degrees) used to orient orbits of the equinox year y.
double EquinoxObliquity(double equinoxYear);

}  // namespace kvx::comet
