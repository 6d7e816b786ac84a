// Evaluation of the built-in lunar theory (tables in moon_theory_table.cpp).
#include "solar/moon/moon_theory.h"

#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/fast_trig.h"

namespace kvx::moon {

namespace {

// The series use the degree sine and cosine of math/fast_trig.h.
inline double SinDeg(double a) { return FastSinDeg(a); }
inline double CosDeg(double a) { return FastCosDeg(a); }

}  // namespace

void TheoryLbr(double jde, double lb[2], double *distKm) {
    const double t = GetT(jde);

    // Long-period corrections shared by the arguments of longitude and latitude.
    const double a1 = SinDeg(93.8 - 1.33 * t);
    const double a2 = SinDeg(248.6 - 19.34 * t);
    const double a3 = SinDeg(249.0 - 19.3 * t);

    const double anomaly =
        338.915 + 4771.9886 * t + 0.004 * a1 + 0.002 * a2 + 0.0006 * SinDeg(66.0 + 0.2 * t) + 0.0006 * a3;
    double lon = 124.8754 + 4812.67881 * t + 6.2887 * SinDeg(anomaly);
    for (const TheoryTerm &term : kLongitudeTerms) lon += term.amplitude * SinDeg(term.phase + term.rate * t);

    const double latitudeArgument = 236.231 + 4832.0202 * t + 0.0267 * SinDeg(68.64 - 19.341 * t) +
                                    0.0043 * SinDeg(342.0 - 19.36 * t) + 0.004 * a1 + 0.002 * a2 +
                                    0.0005 * SinDeg(358.0 - 19.4 * t);
    double lat = 5.1282 * SinDeg(latitudeArgument);
    for (const TheoryTerm &term : kLatitudeTerms) lat += term.amplitude * SinDeg(term.phase + term.rate * t);

    double parallax = 0.9507;
    for (const TheoryTerm &term : kParallaxTerms) parallax += term.amplitude * CosDeg(term.phase + term.rate * t);

    lb[0] = degmal(lon);
    lb[1] = lat;
    *distKm = kEarthRadiusKm / SinDeg(parallax);
}

}  // namespace kvx::moon
