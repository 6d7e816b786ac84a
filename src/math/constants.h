// Numerical constants shared across the library, with the exact values and
// conversion order the results depend on.
#pragma once

#include <cmath>
#include <cstdint>

namespace kvx {

inline constexpr double kPi = 3.141592653589793;

// Degrees to radians as a * pi / 180, and back as r * 180 / pi, in that
// order of operations (results are compared to the last bit).
inline double DegToRad(double a) { return a * kPi / 180.0; }
inline double RadToDeg(double r) { return r * 180.0 / kPi; }

// Epochs (Julian dates): J2000.0, the 1900 January 0.5 of Newcomb's
// theories, and B1950.0.
inline constexpr double kJ2000 = 2451545.0;
inline constexpr double kJ1900 = 2415020.0;
inline constexpr double kB1950 = 2433282.42346;

inline constexpr double kArcsecToRad = 4.84813681109536e-6;
inline constexpr double kDaysPerCentury = 36525.0;
inline constexpr double kSecondsPerDay = 86400.0;
inline constexpr double kKmPerAu = 149597870.0;
inline constexpr double kLightDaysPerAu = 0.005775518308;
// Equatorial radius of the Earth, GRS80 (km).
inline constexpr double kEarthRadiusKm = 6378.137;
// Mean radius of the Moon (km).
inline constexpr double kMoonRadiusKm = 1737.4;

}  // namespace kvx

namespace kvx {

// floor() and trunc() without a library call: bit-identical to std::floor /
// std::trunc for every finite input (values of 2^52 and more are already
// integral and are returned as they are).
inline double Trunc(double x) {
    if (!(x > -4503599627370496.0 && x < 4503599627370496.0)) return x;
    const double t = static_cast<double>(static_cast<long long>(x));
    return t == 0.0 ? std::copysign(0.0, x) : t;
}
inline double Floor(double x) {
    const double t = Trunc(x);
    return t > x ? t - 1.0 : t;
}

// std::fmod(a, 360.0) without the library call, bit for bit. For
// 360 <= |a| < 2^40 the remainder a - 360 n, n = trunc(a / 360), is exact:
// a and 360 n are both multiples of a's last-place unit (at least 2^-44)
// and the difference stays below 2^9, so it fits in 53 bits. A quotient
// that rounds across an integer leaves the remainder just outside the
// range; one exact step of 360 puts it back. Beyond 2^40 and for
// non-finite a the library answers.
inline double Fmod360(double a) {
    const double m = std::fabs(a);
    if (m < 360.0) return a;
    if (!(m < 1099511627776.0)) return std::fmod(a, 360.0);
    double r = a - Trunc(a * (1.0 / 360.0)) * 360.0;
    if (a > 0.0) {
        if (r < 0.0) r += 360.0;
        else if (r >= 360.0) r -= 360.0;
    } else {
        if (r > 0.0) r -= 360.0;
        else if (r <= -360.0) r += 360.0;
    }
    return r == 0.0 ? std::copysign(0.0, a) : r;
}

// A double turned into an int32 toward zero, as static_cast does inside the
// int32 range; beyond it the value saturates at INT32_MIN / INT32_MAX and NaN
// gives 0 (where static_cast is undefined behaviour).
inline int32_t ToInt32(double x) {
    if (!(x == x)) return 0;
    if (x >= 2147483647.0) return INT32_MAX;
    if (x <= -2147483648.0) return INT32_MIN;
    return static_cast<int32_t>(x);
}

// Sum and difference of int32 values saturated to the int32 range (calendar
// arithmetic on caller-supplied years and months).
inline int32_t SatAdd(int32_t a, int64_t b) {
    const int64_t s = static_cast<int64_t>(a) + b;
    return s > INT32_MAX ? INT32_MAX : s < INT32_MIN ? INT32_MIN : static_cast<int32_t>(s);
}

}  // namespace kvx
