// Angle reduction, sexagesimal records, position angle and distance,
// Lagrange interpolation and the integer square root.
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"

using kvx::DegToRad;
using kvx::RadToDeg;

extern "C" double degmal(double a) {
    double r = kvx::Fmod360(a);
    if (r < 0.0) r += 360.0;
    if (r >= 360.0) r -= 360.0;
    return r;
}

extern "C" double degmal180(double a) {
    if (a > 180.0) a -= 360.0;
    if (a < -180.0) a += 360.0;
    return a;
}

extern "C" double degmal2(double a) {
    double r = degmal(a);
    if (r > 180.0) r -= 360.0;
    if (r < -90.0) r = -90.0;
    if (r > 90.0) r = 90.0;
    return r;
}

extern "C" int32_t degmalInt(int32_t a) {
    int32_t r = a % 360;
    if (r < 0) r += 360;
    if (r >= 360) r -= 360;
    return r;
}

extern "C" double hourmal(double h) {
    return degmal(h / 24.0 * 360.0) / 360.0 * 24.0;
}

// Each part through fmod of |a|, independently of the others.
extern "C" void DegTo60(double a, Deg60 *out) {
    if (!out) return;
    const int32_t sign = a >= 0.0 ? 1 : -1;
    const double b = std::fabs(a);
    out->sign = sign;
    out->deg = kvx::ToInt32(std::floor(b));
    out->min = kvx::ToInt32(std::floor(std::fmod(b * 60.0, 60.0)));
    out->sec = std::fmod(b * 60.0 * 60.0, 60.0);
}

// The input is shifted by half a minute toward its sign before the split.
extern "C" void DegTo60_2(double a, Deg60 *out) {
    if (!out) return;
    DegTo60(a, out);
    const double half_minute = 0.008333333333333333;
    DegTo60(a >= 0.0 ? a + half_minute : a - half_minute, out);
}

extern "C" double DegTo10(Deg60 a) {
    return (a.min / 60.0 + a.deg + a.sec / 60.0 / 60.0) * a.sign;
}

extern "C" void HourTo60(double h, Hour60 *out) {
    if (!out) return;
    out->hour = kvx::ToInt32(std::floor(h));
    out->min = kvx::ToInt32(std::floor(std::fmod(h * 60.0, 60.0)));
    out->sec = std::fmod(h * 60.0 * 60.0, 60.0);
}

extern "C" double HourTo10(Hour60 h) {
    return h.min / 60.0 + h.hour + h.sec / 60.0 / 60.0;
}

extern "C" void Deg2Point(const Ad *from, const Ad *to, double *positionAngle, double *distance) {
    if (!from || !to) return;
    const double a1 = from->a, d1 = DegToRad(from->d);
    const double a2 = to->a, d2 = DegToRad(to->d);
    const double delta = DegToRad(degmal(a2 - a1));
    double pa = RadToDeg(std::atan2(std::cos(d2) * std::sin(delta),
                                    std::cos(d1) * std::sin(d2) - std::sin(d1) * std::cos(d2) * std::cos(delta)));
    if (!(pa > 0.0)) pa += 360.0;
    const double sd = std::sin(DegToRad(degmal(from->d - to->d) / 2.0));
    const double sa = std::sin(DegToRad(degmal(a1 - a2) / 2.0));
    const double dist = RadToDeg(2.0 * std::asin(std::sqrt(sd * sd + std::cos(d1) * std::cos(d2) * sa * sa)));
    if (positionAngle) *positionAngle = pa;
    if (distance) *distance = dist;
}

extern "C" double Lagrange(double x, int32_t n, const double *xs, const double *ys) {
    if (n < 1 || !xs || !ys) return 0.0;
    double sum = 0.0;
    for (int32_t i = 0; i < n; ++i) {
        double term = ys[i];
        for (int32_t j = 0; j < n; ++j)
            if (j != i) term *= (x - xs[j]) / (xs[i] - xs[j]);
        sum += term;
    }
    return sum;
}

// Newton's method in integers, starting from a power of two above sqrt(n).
extern "C" int32_t lsqrt(int32_t n) {
    if (n <= 0) return 0;
    int32_t g = 1;
    if (n >= 2) {
        int32_t m = n;
        while (g < m) {
            g <<= 1;
            m >>= 1;
        }
    }
    int32_t p;
    do {
        p = g;
        g = (g + n / g) >> 1;
    } while (g < p);
    return p;
}
