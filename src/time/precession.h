// Internal pieces of the precession shared with the time-and-observer record.
#pragma once

namespace kvx::prec {

// IAU 2006 bias-precession matrix P(jd) (Fukushima-Williams angles, frame
// bias included): J2000.0 reference frame to the mean equator and equinox
// of the dynamical Julian date jd. P(2451545.0) is the frame bias.
void BiasPrecession(double jd, double out[9]);

// P(jd) of one date, evaluated at most once for the several matrices that
// need it (the two precession matrices of an ATime fill).
struct DateMatrix {
    double jd = 0.0;
    bool evaluated = false;
    double p[9] = {};
};

// GetPrecMtx(from, to, out), taking P(memo->jd) from memo (computing it on
// first use) when it is needed; memo may be null. The matrices of the
// constant epochs J2000.0, B1950.0 and B1875.0 are computed once per
// process, and each thread keeps the last date it evaluated. Results are the
// same bits as without any of these.
void PrecessionBetween(double from, double to, DateMatrix *memo, double out[9]);

}  // namespace kvx::prec
