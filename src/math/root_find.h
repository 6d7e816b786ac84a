// Bracketed root and minimum finding for the event searches (eclipse
// contacts and greatest eclipse, planetary events).
#pragma once

#include <cmath>

namespace kvx {

// A root of f between a and b, where f(a) and f(b) differ in sign: regula
// falsi with the Illinois modification (Dowell & Jarratt 1971, BIT 11, 168),
// which halves the value kept at an end that stays twice in a row and so
// converges superlinearly where plain regula falsi stalls. A step that falls
// outside the bracket (equal values, rounding) bisects instead. Stops when
// the bracket is narrower than tolerance or after maxIterations steps, and
// returns the middle of the last bracket.
template <class F>
double IllinoisRoot(double a, double b, F &&f, double tolerance, int maxIterations) {
    double fa = f(a), fb = f(b);
    int side = 0;
    for (int i = 0; i < maxIterations && std::fabs(b - a) > tolerance; ++i) {
        double x = fb != fa ? b - fb * (b - a) / (fb - fa) : 0.5 * (a + b);
        if (!(x > std::fmin(a, b) && x < std::fmax(a, b))) x = 0.5 * (a + b);
        const double fx = f(x);
        if ((fx < 0.0) == (fa < 0.0)) {
            a = x;
            fa = fx;
            if (side == -1) fb *= 0.5;
            side = -1;
        } else {
            b = x;
            fb = fx;
            if (side == 1) fa *= 0.5;
            side = 1;
        }
    }
    return 0.5 * (a + b);
}

// The abscissa of the least value of f in [a, b], f having one minimum there:
// golden-section search (Kiefer 1953), one evaluation per step, stopping when
// the interval is narrower than tolerance or after maxIterations steps.
template <class F>
double GoldenMinimum(double a, double b, F &&f, double tolerance, int maxIterations) {
    const double g = (std::sqrt(5.0) - 1.0) / 2.0;
    double x1 = b - g * (b - a), x2 = a + g * (b - a);
    double f1 = f(x1), f2 = f(x2);
    for (int i = 0; i < maxIterations && b - a > tolerance; ++i) {
        if (f1 < f2) {
            b = x2;
            x2 = x1;
            f2 = f1;
            x1 = b - g * (b - a);
            f1 = f(x1);
        } else {
            a = x1;
            x1 = x2;
            f1 = f2;
            x2 = a + g * (b - a);
            f2 = f(x2);
        }
    }
    return 0.5 * (a + b);
}

}  // namespace kvx
