// The two-body solvers of comets and minor planets: boundary behaviour,
// agreement between the solvers where their ranges meet, the conservation
// laws the velocities must obey, and the orientation matrices.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "comet/comet_orbit.h"
#include "kvxlib.h"
#include "math/constants.h"
#include "solar/planet/orbit_elements.h"

namespace {

using kvx::comet::OrbitState;

CometElements Elements(double e, double q, double T = 2451545.0) {
    CometElements el;
    std::memset(&el, 0, sizeof el);
    el.kind = 'C';
    el.e = e;
    el.q = q;
    el.perihelionJd = T;
    el.equinox = 2000.0;
    return el;
}

TEST(CometSolver, PerihelionPositionForEveryEccentricity) {
    for (double e : {0.0, 0.3, 0.59, 0.6, 0.9, 0.97999, 0.98, 0.999, 1.0 - 5e-9, 1.0, 1.0 + 5e-9, 1.001, 1.5, 5.0}) {
        const CometElements el = Elements(e, 0.7);
        OrbitState s;
        ASSERT_EQ(kvx::comet::SolveOrbit(el.perihelionJd, el, &s, true), 1) << e;
        EXPECT_NEAR(s.x, 0.7, 1e-12) << e;
        EXPECT_NEAR(s.y, 0.0, 1e-12) << e;
        EXPECT_NEAR(s.trueAnomaly, 0.0, 1e-12) << e;
        // Perihelion speed k sqrt((1 + e) / q), perpendicular to the radius.
        EXPECT_NEAR(s.vy, 0.01720209895 * std::sqrt((1 + e) / 0.7), 1e-10) << e;
        EXPECT_NEAR(s.vx, 0.0, 1e-12) << e;
    }
}

TEST(CometSolver, VelocitiesObeyVisVivaAndAngularMomentum) {
    const double k = 0.01720209895;
    for (double e : {0.1, 0.59, 0.6, 0.95, 0.97999, 0.98, 0.9999, 1.0, 1.0001, 1.3, 3.0}) {
        const double q = 1.3;
        const CometElements el = Elements(e, q);
        for (double dt : {-20000.0, -3000.0, -400.0, -35.0, -1.0, 0.5, 12.0, 150.0, 2500.0, 40000.0}) {
            OrbitState s;
            ASSERT_EQ(kvx::comet::SolveOrbit(el.perihelionJd + dt, el, &s, true), 1) << e << " " << dt;
            const double r = std::hypot(s.x, s.y), v2 = s.vx * s.vx + s.vy * s.vy;
            EXPECT_NEAR(s.r, r, 1e-12 * r);
            // v^2 = k^2 (2/r - (1 - e)/q)
            EXPECT_NEAR(v2, k * k * (2.0 / r - (1.0 - e) / q), 1e-9 * v2) << e << " " << dt;
            // r x v = k sqrt(q (1 + e))
            EXPECT_NEAR(s.x * s.vy - s.y * s.vx, k * std::sqrt(q * (1 + e)), 1e-9) << e << " " << dt;
            // Conic: r = q (1 + e) / (1 + e cos v)
            EXPECT_NEAR(r, q * (1 + e) / (1 + e * std::cos(s.trueAnomaly)), 1e-8 * r) << e << " " << dt;
        }
    }
}

TEST(CometSolver, SolversAgreeWhereTheirRangesMeet) {
    OrbitState a, b;
    // Elliptic (fixed point / Newton) against Laguerre on the same orbit.
    for (double e : {0.2, 0.6, 0.9, 0.97}) {
        const CometElements el = Elements(e, 0.9);
        for (double dt : {-500.0, 17.0, 333.0}) {
            ASSERT_EQ(kvx::comet::SolveElliptic(el.perihelionJd + dt, el, &a, true), 1);
            ASSERT_EQ(kvx::comet::SolveNearParabolic(el.perihelionJd + dt, el, &b, true), 1);
            EXPECT_NEAR(a.x, b.x, 1e-7);
            EXPECT_NEAR(a.y, b.y, 1e-7);
            EXPECT_NEAR(a.vx, b.vx, 1e-9);
            EXPECT_NEAR(a.vy, b.vy, 1e-9);
        }
    }
    // The parabola against orbits just inside and outside it.
    for (double dt : {-200.0, 30.0, 400.0}) {
        const CometElements p = Elements(1.0, 0.5);
        ASSERT_EQ(kvx::comet::SolveParabolic(p.perihelionJd + dt, p, &a, true), 1);
        for (double e : {1.0 - 1e-7, 1.0 + 1e-7}) {
            const CometElements n = Elements(e, 0.5);
            ASSERT_EQ(kvx::comet::SolveNearParabolic(n.perihelionJd + dt, n, &b, true), 1);
            EXPECT_NEAR(a.x, b.x, 1e-5) << e;
            EXPECT_NEAR(a.y, b.y, 1e-5) << e;
        }
    }
    // The elliptic solver against the planets' Kepler solver.
    const CometElements el = Elements(0.4, 2.0);
    ASSERT_EQ(kvx::comet::SolveElliptic(el.perihelionJd + 1234.5, el, &a, false), 1);
    const double aAxis = 2.0 / 0.6;
    const double M = 1234.5 * 0.01720209895 / (aAxis * std::sqrt(aAxis));
    const double E = kvx::orbit::SolveKepler(M, 0.4);
    // The comet solver stops at 1e-8 radians of eccentric anomaly.
    EXPECT_NEAR(a.x, aAxis * (std::cos(E) - 0.4), aAxis * 1e-8);
    EXPECT_NEAR(a.y, aAxis * std::sqrt(1 - 0.16) * std::sin(E), aAxis * 1e-8);
}

TEST(CometSolver, HyperbolaLongBeforePerihelionConverges) {
    const CometElements el = Elements(1.2, 1.0);
    OrbitState s;
    // 2M/e + 1.85 is negative here, so the start is ln(0.01).
    ASSERT_EQ(kvx::comet::SolveOrbit(el.perihelionJd - 5000.0, el, &s, true), 1);
    EXPECT_LT(s.y, 0.0);
    EXPECT_GT(std::hypot(s.x, s.y), 10.0);
}

TEST(GetVectorConst, GaussVectorsAreTheFirstColumnsOfTheOrientation) {
    for (double year : {2000.0, 1950.0, -5000.0, 7000.0}) {
        double pq[9], m[9];
        GetVectorConst(pq, 113.0, 57.5, 162.3, year);
        GetVectorConst3D(m, 113.0, 57.5, 162.3, year);
        for (int row = 0; row < 3; ++row) {
            EXPECT_NEAR(pq[3 * row], m[3 * row], 1e-15) << year;
            EXPECT_NEAR(pq[3 * row + 1], m[3 * row + 1], 1e-15) << year;
            EXPECT_EQ(pq[3 * row + 2], 0.0);
        }
    }
    // Beyond 4000 years the fixed obliquities: zero-inclination orbit with
    // node and perihelion 0 has Q = (0, cos eps, sin eps).
    double pq[9];
    GetVectorConst(pq, 0.0, 0.0, 0.0, 7000.0);
    EXPECT_NEAR(pq[7], std::sin(kvx::DegToRad(23.05253)), 1e-15);
    GetVectorConst(pq, 0.0, 0.0, 0.0, -3000.0);
    EXPECT_NEAR(pq[7], std::sin(kvx::DegToRad(23.83253)), 1e-15);
    GetVectorConst(pq, 0.0, 0.0, 0.0, 2000.0);
    EXPECT_NEAR(pq[7], std::sin(kvx::DegToRad(GetEp(CalcJd(2000.0, 1, 1.5)))), 1e-15);
}

}  // namespace
