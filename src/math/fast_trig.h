// Sine and cosine of angles in degrees for the trigonometric series of the
// theories (Moon, librations, nutation, Sun, planets), where the arguments
// are phase + rate x T in degrees and thousands of calls are made per
// position.
//
// Reduction: a = 90 n + r with n the nearest integer to a / 90, so
// |r| <= 45 degrees (the two octants around the nearest quadrant). In
// degrees this step is exact: 90 n is an integer, and when n is not zero
// (|a| >= 45) r is a multiple of the last-place unit of a, at least 2^-47,
// and below 2^6 in size, so it fits in 53 bits. That holds for |a| < 1e15;
// beyond, and for non-finite a, the library's sin/cos of the radian
// argument is used. The only rounding before the polynomial is
// r x (pi / 180), so large arguments lose nothing to the reduction, unlike
// sin(a x pi / 180) whose argument carries an error of |a| x 1e-16 radians.
//
// Polynomials on |u| <= pi/4 (u in radians): the minimax approximations of
// K. C. Ng's kernels in fdlibm 5.3 (Sun Microsystems, 1993), published with
// the bounds |sin(u)/u - (1 + S1 u^2 + ... + S6 u^12)| <= 2^-58 and
// |cos(u) - (1 - u^2/2 + C1 u^4 + ... + C6 u^14)| <= 2^-58.
// With the rounding of u and of the evaluation the absolute error of each
// result is below 2.3e-16 (one unit in the last place of 1); the test
// measures it against the long-double library over +-1e7 degrees.
// No rounding mode is read or set.
//
// The radian variant (FastSinCosRad, for theories whose arguments are in
// radians) reduces by the nearest multiple n of pi/2 in the manner of Cody &
// Waite (1980), "Software Manual for the Elementary Functions", with the
// two-part pi/2 of fdlibm's __ieee754_rem_pio2 (33 leading bits, then the
// rest): for |x| < 1e6 (n < 2^20) the product n x pio2_1 is exact and so is
// x - n pio2_1, and the second part adds below 2e-20, so r carries half an
// ulp of its own size as the degree path does; the same bound holds.
#pragma once

#include <cmath>
#include <cstdint>

#include "math/constants.h"

namespace kvx {

struct SinCos {
    double s, c;
};

namespace fast_trig {

inline constexpr double kS1 = -1.66666666666666324348e-01;
inline constexpr double kS2 = 8.33333333332248946124e-03;
inline constexpr double kS3 = -1.98412698298579493134e-04;
inline constexpr double kS4 = 2.75573137070700676789e-06;
inline constexpr double kS5 = -2.50507602534068634195e-08;
inline constexpr double kS6 = 1.58969099521155010221e-10;
inline constexpr double kC1 = 4.16666666666666019037e-02;
inline constexpr double kC2 = -1.38888888888741095749e-03;
inline constexpr double kC3 = 2.48015872894767294178e-05;
inline constexpr double kC4 = -2.75573143513906633035e-07;
inline constexpr double kC5 = 2.08757232129817482790e-09;
inline constexpr double kC6 = -1.13596475577881948265e-11;

inline constexpr double kRadPerDeg = 0.017453292519943295;  // pi / 180
inline constexpr double kRoundShift = 6755399441055744.0;   // 1.5 x 2^52
inline constexpr double kReduceLimit = 1e15;
inline constexpr double kTwoOverPi = 6.36619772367581382433e-01;
inline constexpr double kPio2Hi = 1.57079632673412561417e+00;  // 33 bits of pi/2
inline constexpr double kPio2Lo = 6.07710050650619224932e-11;  // pi/2 - kPio2Hi
inline constexpr double kRadReduceLimit = 1e6;

// sin and cos of u, |u| <= pi/4 (radians).
inline SinCos Kernel(double u) {
    const double z = u * u;
    const double s = u + u * z * (kS1 + z * (kS2 + z * (kS3 + z * (kS4 + z * (kS5 + z * kS6)))));
    const double c = 1.0 - (0.5 * z - z * z * (kC1 + z * (kC2 + z * (kC3 + z * (kC4 + z * (kC5 + z * kC6))))));
    return {s, c};
}

// Signs of sin and cos by quadrant, after the swap of odd quadrants:
// sin(90 q + r), cos(90 q + r) = (s, c), (c, -s), (-s, -c), (-c, s).
inline constexpr double kSinSign[4] = {1.0, 1.0, -1.0, -1.0};
inline constexpr double kCosSign[4] = {1.0, -1.0, -1.0, 1.0};

}  // namespace fast_trig

// sin and cos of a (degrees) together; see the notes above for the error.
// The quadrant selects by table, not by branch: series arguments fall in
// every quadrant at random, and a mispredicted branch costs more than the
// polynomials.
[[gnu::always_inline]] inline SinCos FastSinCosDeg(double a) {
    using namespace fast_trig;
    if (!(std::fabs(a) < kReduceLimit)) [[unlikely]] {
        const double u = DegToRad(a);
        return {std::sin(u), std::cos(u)};
    }
    // Nearest integer to a / 90 by the shift of 1.5 x 2^52 (round to
    // nearest); a rounding of a x (1/90) that picks the other neighbour at a
    // half-way point only gives |r| a hair above 45, within the kernels' range.
    const double n = (a * (1.0 / 90.0) + kRoundShift) - kRoundShift;
    const SinCos k = Kernel((a - n * 90.0) * kRadPerDeg);
    const unsigned q = static_cast<unsigned>(static_cast<int64_t>(n)) & 3u;
    const double v[2] = {k.s, k.c};
    return {v[q & 1u] * kSinSign[q], v[(q & 1u) ^ 1u] * kCosSign[q]};
}

// sin and cos of x (radians) together, with the same error bound.
[[gnu::always_inline]] inline SinCos FastSinCosRad(double x) {
    using namespace fast_trig;
    if (!(std::fabs(x) < kRadReduceLimit)) [[unlikely]]
        return {std::sin(x), std::cos(x)};
    const double n = (x * kTwoOverPi + kRoundShift) - kRoundShift;
    const SinCos k = Kernel((x - n * kPio2Hi) - n * kPio2Lo);
    const unsigned q = static_cast<unsigned>(static_cast<int64_t>(n)) & 3u;
    const double v[2] = {k.s, k.c};
    return {v[q & 1u] * kSinSign[q], v[(q & 1u) ^ 1u] * kCosSign[q]};
}

// x (radians) less the nearest whole number of turns, in [-pi, pi] up to
// rounding, by the same two-part reduction (4 x pi/2): exact to half an ulp
// of the result for |x| < 1e6, unlike fmod by the double nearest 2 pi, whose
// own error of 2.4e-16 grows with the number of turns. Beyond, and for
// non-finite x, fmod by 2 pi.
inline double WrapRad(double x) {
    using namespace fast_trig;
    if (!(std::fabs(x) < kRadReduceLimit)) [[unlikely]]
        return std::fmod(x, 4.0 * kPio2Hi + 4.0 * kPio2Lo);
    const double n = (x * (0.25 * kTwoOverPi) + kRoundShift) - kRoundShift;
    return (x - n * (4.0 * kPio2Hi)) - n * (4.0 * kPio2Lo);
}

inline double FastSinDeg(double a) { return FastSinCosDeg(a).s; }
inline double FastCosDeg(double a) { return FastSinCosDeg(a).c; }

}  // namespace kvx
