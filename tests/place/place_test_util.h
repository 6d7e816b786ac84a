// Helpers of the apparent-place and coordinate tests.
#pragma once

#include <cmath>
#include <cstdio>
#include <vector>

#include "kvxlib.h"
#include "support/angles.h"

namespace kvx::test {

inline void Transpose(const double m[9], double out[9]) {
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) out[3 * j + i] = m[3 * i + j];
}

// A record filled by hand: the given matrices (precession J2000 -> date
// and nutation; their transposes as the inverses), obliquities, sidereal
// time and latitude. Identity matrices when null.
inline ATime HandTime(double jde, double eps, double epsTrue, const double *prec, const double *nut, double lst,
                      double lat) {
    ATime t{};
    t.jd = jde;
    t.jde = jde;
    t.eps = eps;
    t.epsTrue = epsTrue;
    t.lst = lst;
    t.obsLatitude = lat;
    t.obsHeight = lat == 0.0 ? -6378137.0 : 0.0;
    UnitMatrix(t.precFromJ2000);
    UnitMatrix(t.nutMtx);
    if (prec)
        for (int i = 0; i < 9; ++i) t.precFromJ2000[i] = prec[i];
    if (nut)
        for (int i = 0; i < 9; ++i) t.nutMtx[i] = nut[i];
    Transpose(t.precFromJ2000, t.precToJ2000);
    Transpose(t.nutMtx, t.nutInvMtx);
    RotateX(eps, t.eqToEcl);
    RotateX(-eps, t.eclToEq);
    return t;
}

// Largest value and a summary line for the test log.
struct MaxError {
    const char *what;
    double max = 0.0, sum = 0.0;
    int n = 0;
    explicit MaxError(const char *w) : what(w) {}
    void Add(double e) {
        if (e > max) max = e;
        sum += e;
        ++n;
    }
    void Report() const { std::printf("[ measured ] %s: max %.3g, mean %.3g over %d\n", what, max, n ? sum / n : 0.0, n); }
};

}  // namespace kvx::test
