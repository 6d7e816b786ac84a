// CalcComet against PyEphem for the same elements (elliptic, near-parabolic,
// parabolic and hyperbolic orbits and a minor planet), and GetCometOrbit.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>

#include "kvxlib.h"
#include "test_support.h"

namespace {

using kvx::test::ReadRows;
using kvx::test::ReferencePath;
using kvx::test::AtJde;
using kvx::test::SepArcsec;

// The orbits of tests/reference/comets_pyephem.py.
CometElements Orbit(int k) {
    struct Row {
        char kind;
        double T, e, q, peri, node, incl, H, slope;
    } rows[] = {
        {'C', 2446470.95, 0.967, 0.5871, 111.85, 58.14, 162.24, 5.5, 10.0},
        {'C', 2460700.50, 0.995, 1.1000, 40.00, 200.00, 70.00, 6.0, 8.0},
        {'C', 2460500.50, 1.000, 0.8500, 130.00, 20.00, 95.00, 7.0, 10.0},
        {'C', 2460800.50, 1.060, 2.3000, 300.00, 150.00, 30.00, 8.0, 10.0},
        {'M', 2454872.06723, 0.079275, 2.546744, 72.75528, 80.39565, 10.58586, 3.3, 0.12},
    };
    CometElements el;
    std::memset(&el, 0, sizeof el);
    const Row &r = rows[k];
    el.kind = r.kind;
    el.perihelionJd = r.T;
    el.e = r.e;
    el.q = r.q;
    el.peri = r.peri;
    el.node = r.node;
    el.incl = r.incl;
    el.equinox = 2000.0;
    el.h = r.H;
    el.slope = r.slope;
    return el;
}

TEST(CalcComet, AstrometricPlaceMatchesPyEphem) {
    const auto rows = ReadRows(ReferencePath("comets_pyephem.txt"));
    ASSERT_EQ(rows.size(), 50u);
    double maxSep[5] = {0}, maxMag[5] = {0}, maxDelta[5] = {0};
    for (const auto &r : rows) {
        const int k = static_cast<int>(r[0]);
        const CometElements el = Orbit(k);
        ATime t;
        SetATimeJd2(r[1], r[2], 0.0, nullptr, &t);  // PyEphem's own Delta T
        BodyPos sun, c;
        CalcSun(&t, &sun);
        ASSERT_EQ(CalcComet(&el, &t, &sun, &c), 1);
        maxSep[k] = std::fmax(maxSep[k], SepArcsec(c.f[0], c.f[1], r[3], r[4]));
        maxDelta[k] = std::fmax(maxDelta[k], std::fabs(c.f[6] - r[5]));
        maxMag[k] = std::fmax(maxMag[k], std::fabs(c.f[35] - r[7]));
    }
    for (int k = 0; k < 5; ++k) {
        std::printf("orbit %d: astrometric max %.3f\", distance %.1e AU, magnitude %.3f\n", k, maxSep[k], maxDelta[k],
                    maxMag[k]);
        EXPECT_LT(maxSep[k], 1.0) << k;
        EXPECT_LT(maxMag[k], 0.01) << k;  // PyEphem prints magnitudes to 0.001
    }
}

TEST(CalcComet, FailsWithZeroPerihelionDistance) {
    CometElements el = Orbit(0);
    el.q = 0.0;
    ATime t;
    SetATimeJd2(2451545.0, 64.0, 0.0, nullptr, &t);
    BodyPos sun, c;
    CalcSun(&t, &sun);
    EXPECT_EQ(CalcComet(&el, &t, &sun, &c), 0);
    EXPECT_EQ(CalcComet(nullptr, &t, &sun, &c), 0);
}

TEST(GetCometOrbit, EllipseParabolaHyperbola) {
    double xyz[3 * 41];
    // Ellipse: closed, through perihelion (first point) and aphelion (middle).
    const CometElements el = Orbit(0);
    ASSERT_EQ(GetCometOrbit(&el, 41, 0.0, xyz), 41);
    auto r = [&](int k) { return std::sqrt(xyz[3 * k] * xyz[3 * k] + xyz[3 * k + 1] * xyz[3 * k + 1] + xyz[3 * k + 2] * xyz[3 * k + 2]); };
    EXPECT_NEAR(r(0), el.q, 1e-12);
    EXPECT_NEAR(r(20), el.q * (1 + el.e) / (1 - el.e), 1e-9);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(xyz[i], xyz[3 * 40 + i], 1e-12);
    // Open orbits: symmetric about perihelion out to rMax.
    for (int k : {2, 3}) {
        const CometElements o = Orbit(k);
        ASSERT_EQ(GetCometOrbit(&o, 41, 6.0, xyz), 41) << k;
        EXPECT_NEAR(r(0), 6.0, 1e-9) << k;
        EXPECT_NEAR(r(40), 6.0, 1e-9) << k;
        EXPECT_NEAR(r(20), o.q, 1e-12) << k;
    }
    const CometElements o = Orbit(2);
    EXPECT_EQ(GetCometOrbit(&o, 41, 0.5, xyz), 0);  // rMax inside the perihelion
    EXPECT_EQ(GetCometOrbit(&o, 1, 6.0, xyz), 0);
    EXPECT_EQ(GetCometOrbit(nullptr, 41, 6.0, xyz), 0);
}

}  // namespace
