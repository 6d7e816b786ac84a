// The two-body solvers of comets and minor planets: boundary behaviour and the conservation laws the
// velocities must obey (the places in time are compared with PyEphem for every solver's range in
// test_comet.cpp), and the orientation matrices.
#include <gtest/gtest.h>

#include <cmath>

#include "comet/comet_orbit.h"
#include "kvxlib.h"
#include "math/constants.h"

namespace {

using kvx::comet::OrbitState;

constexpr double kGauss = 0.01720209895;

CometElements Elements(double e, double q) {
    CometElements el{};
    el.kind = 'C', el.perihelionJd = 2451545.0, el.e = e, el.q = q, el.equinox = 2000.0;
    return el;
}

// Position and velocity at perihelion, and from there on: vis-viva, the angular momentum and the conic, for
// every solver's range and the switches between them (0.6, 0.98, 1 -+ 1e-8).
TEST(CometSolver, PerihelionAndConservationLawsForEveryEccentricity) {
    for (double e : {0.0, 0.3, 0.59, 0.6, 0.9, 0.97999, 0.98, 0.999, 1.0 - 5e-9, 1.0, 1.0 + 5e-9, 1.001, 1.5, 5.0}) {
        OrbitState s;
        ASSERT_EQ(kvx::comet::SolveOrbit(2451545.0, Elements(e, 0.7), &s, true), 1) << e;
        // At q on the x axis, speed k sqrt((1 + e) / q) perpendicular to the radius.
        EXPECT_LT(std::fmax(std::fmax(std::fabs(s.x - 0.7), std::fabs(s.y)), std::fmax(std::fabs(s.trueAnomaly), std::fabs(s.vx))), 1e-12) << e;
        EXPECT_NEAR(s.vy, kGauss * std::sqrt((1 + e) / 0.7), 1e-10) << e;
    }
    const double q = 1.3;
    for (double e : {0.1, 0.59, 0.6, 0.95, 0.97999, 0.98, 0.9999, 1.0, 1.0001, 1.3, 3.0})
        for (double dt : {-20000.0, -3000.0, -400.0, -35.0, -1.0, 0.5, 12.0, 150.0, 2500.0, 40000.0}) {
            SCOPED_TRACE(testing::Message() << "e " << e << " dt " << dt);
            OrbitState s;
            ASSERT_EQ(kvx::comet::SolveOrbit(2451545.0 + dt, Elements(e, q), &s, true), 1);
            const double r = std::hypot(s.x, s.y), v2 = s.vx * s.vx + s.vy * s.vy;
            EXPECT_NEAR(s.r, r, 1e-12 * r);
            EXPECT_NEAR(v2, kGauss * kGauss * (2.0 / r - (1.0 - e) / q), 1e-9 * v2);      // vis-viva
            EXPECT_NEAR(s.x * s.vy - s.y * s.vx, kGauss * std::sqrt(q * (1 + e)), 1e-9);  // r x v
            EXPECT_NEAR(r, q * (1 + e) / (1 + e * std::cos(s.trueAnomaly)), 1e-8 * r);     // the conic
        }
    // 2M/e + 1.85 < 0 long before perihelion on a hyperbola: the start is ln(0.01).
    OrbitState s;
    ASSERT_EQ(kvx::comet::SolveOrbit(2451545.0 - 5000.0, Elements(1.2, 1.0), &s, true), 1);
    EXPECT_LT(s.y, 0.0);
    EXPECT_GT(std::hypot(s.x, s.y), 10.0);
}

TEST(GetVectorConst, GaussVectorsAreTheFirstColumnsOfTheOrientation) {
    double pq[9], m[9];
    for (double year : {2000.0, 1950.0, -5000.0, 7000.0}) {
        GetVectorConst(pq, 113.0, 57.5, 162.3, year);
        GetVectorConst3D(m, 113.0, 57.5, 162.3, year);
        for (int k = 0; k < 9; ++k) EXPECT_NEAR(pq[k], k % 3 == 2 ? 0.0 : m[k], k % 3 == 2 ? 0.0 : 1e-15) << year << " " << k;
    }
    // Beyond 4000 years the fixed obliquities: a zero-inclination orbit with
    // node and perihelion 0 has Q = (0, cos eps, sin eps).
    const double years[][2] = {{7000.0, 23.05253}, {-3000.0, 23.83253}, {2000.0, GetEp(CalcJd(2000.0, 1, 1.5))}};
    for (const auto &y : years) {
        GetVectorConst(pq, 0.0, 0.0, 0.0, y[0]);
        EXPECT_NEAR(pq[7], std::sin(kvx::DegToRad(y[1])), 1e-15) << y[0];
    }
}

}  // namespace
