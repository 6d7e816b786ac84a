// Internal pieces of the precession shared with the time-and-observer record.
#pragma once

namespace kvx::prec {

// IAU 2006 bias-precession matrix P(jd) (Fukushima-Williams angles, frame
// bias included): J2000.0 reference frame to the mean equator and equinox
// of the dynamical Julian date jd. P(2451545.0) is the frame bias.
void BiasPrecession(double jd, double out[9]);

}  // namespace kvx::prec
