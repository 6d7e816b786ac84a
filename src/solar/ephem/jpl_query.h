// Query interface of the main JPL DE ephemeris handle, used by the nutation,
// the Sun, the Moon and the planets.
#pragma once

namespace kvx::jpl {

// Body codes of the library: -31 librations, -30 nutations, -3 Earth,
// -2 Sun, -1 Moon, 0..7 Mercury..Pluto.
//
// Position (AU) and optional velocity (AU/day, may be null) of `target`
// relative to `center` at dynamical Julian date jde, on the J2000.0 equator
// axes; for nutations (-30) pos[0], pos[1] are dpsi, deps in radians.
// Returns 1 when the main handle is open, covers jde and both codes map to
// bodies of the file; 0 otherwise (outputs untouched).
int Query(int target, double jde, int center, double pos[3], double vel[3]);

}  // namespace kvx::jpl
