// Internal pieces of the nutation.
#pragma once

namespace kvx::nut {

// The truncated IAU 1980 series at t Julian centuries of TT from J2000.0
// (no clamping here): out[0] = dpsi, out[1] = deps, in units of 0.0001".
void Iau1980Truncated(double t, double out[2]);

}  // namespace kvx::nut
