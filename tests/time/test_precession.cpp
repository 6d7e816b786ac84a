// Precession against ERFA's IAU 2006 pmat06; the rules around J2000.0 and for early start epochs; continuity of the
// 50"-per-year extension.

#include <algorithm>

#include "test_support.h"
#include "time/precession.h"

namespace {

using namespace kvx::test;

// The obliquity's IAU 2006 coefficients rounded in degrees: how far the matrix may depart from ERFA's at t centuries.
double ObliquityRoundingBoundRad(double t) {
    const double a = std::fabs(t);
    const double deg = std::fabs(84381.406 / 3600.0 - 23.4392794444) + std::fabs(46.836769 / 3600.0 - 0.01301021361) * a +
                       std::fabs(0.0001831 / 3600.0 - 5.0861e-8) * a * a +
                       std::fabs(0.0000000434 / 3600.0 - 1.2056e-11) * a * a * a * a * a;
    return deg * kvx::test::kDegToRad;
}

TEST(Precession, FromJ2000IsTheIau2006BiasPrecessionMatrixOfErfa) {
    const kvx::test::Reference ref("precession_pmat06.csv", {"jd", "m0"});
    kvx::test::Comparison cmp({{"excess", 2e-13, "the obliquity's coefficients rounded in degrees, see above"},
                               {"internal", 4.5e-16, "the end epoch passes through the span in centuries"}});
    for (const auto &row : ref) {
        double m[9], p[9];
        GetPrecMtx(kJ2000, row["jd"], m);
        cmp.Add("excess",
                std::max(0.0, MaxDiff(m, row.From("m0")) - ObliquityRoundingBoundRad((row["jd"] - kJ2000) / 36525.0)),
                row);
        kvx::prec::BiasPrecession(row["jd"], p);
        cmp.Add("internal", MaxDiff(m, p), row);
    }
    cmp.Check();
}

// Equal epochs give exactly the identity; a start before -30 centuries is the inverse of the other way round; two
// dates compose through J2000.0.
TEST(Precession, IdentityInverseAndComposition) {
    for (double jd : {kJ2000, 0.0, 1000000.5, 2460000.25, 1e7, -3e6}) {
        double m[9];
        GetPrecMtx(jd, jd, m);
        EXPECT_EQ(FromIdentity(m), 0.0) << jd;
    }
    for (double from : {1355794.0, 1000000.5, -500000.0, 4000000.0})
        for (double to : {kJ2000, 2460000.5, 2000000.0}) {
            double m[9], other[9], inv[9];
            GetPrecMtx(from, to, m);
            GetPrecMtx(to, from, other);
            GetInvMatrix(other, inv);
            EXPECT_EQ(MaxDiff(m, inv), 0.0) << from << " -> " << to;
        }
    // Both epochs early: each direction from its own end, inverses up to rounding.
    double a[9], b[9], c[9], ab[9];
    GetPrecMtx(1355794.0, 1300000.0, a);
    GetPrecMtx(1300000.0, 1355794.0, b);
    MulMatrix(a, b, ab);
    EXPECT_LT(FromIdentity(ab), 1e-14);
    GetPrecMtx(2415020.0, 2488070.0, c);  // 1900 to 2100
    GetPrecMtx(2415020.0, 2451544.0, a);
    GetPrecMtx(2451544.0, 2488070.0, b);
    MulMatrix(b, a, ab);
    EXPECT_LT(MaxDiff(ab, c), 1e-14);
}

TEST(Precession, StartWithinADayOfJ2000KeepsTheFrameBias) {
    double m[9], bias[9], later[9], pure[9], inv[9];
    GetPrecMtx(kJ2000, 2451545.5, m);
    kvx::prec::BiasPrecession(kJ2000, bias);
    // Precession alone, P(end) P(J2000)^-1, differs by the frame bias (~8e-8).
    kvx::prec::BiasPrecession(2451545.5, later);
    GetInvMatrix(bias, inv);
    MulMatrix(later, inv, pure);
    EXPECT_LE(MaxDiff(m, later), 4.5e-16);
    EXPECT_GT(MaxDiff(m, pure), 5e-8);
    EXPECT_LT(MaxDiff(m, pure), 1.5e-7);
    // A start 0.9 day from J2000.0 is still the reference frame; 1.0 day is not.
    GetPrecMtx(2451545.9, 2460000.5, m);
    kvx::prec::BiasPrecession(2460000.5, later);
    EXPECT_LE(MaxDiff(m, later), 4.5e-16);
    GetPrecMtx(2451546.0, 2460000.5, m);
    EXPECT_GT(MaxDiff(m, later), 1e-8);
    // Back to J2000.0 ends on the mean equator: not the forward matrix's inverse.
    GetPrecMtx(2460000.5, kJ2000, m);
    MulMatrix(m, later, pure);
    EXPECT_NEAR(MaxDiff(pure, bias), 0.0, 1e-15);
    EXPECT_GT(FromIdentity(pure), 5e-8);
}

TEST(Precession, ContinuousAcrossTheThirtyCenturyClampAndThenFiftyArcsecondsPerYear) {
    // One day of precession is ~6.9e-7 rad; no jump at either edge.
    for (double edge : {kJ2000 + 30.0 * 36525.0, kJ2000 - 30.0 * 36525.0}) {
        double before[9], at[9], after[9];
        GetPrecMtx(kJ2000, edge - 1.0, before);
        GetPrecMtx(kJ2000, edge, at);
        GetPrecMtx(kJ2000, edge + 1.0, after);
        EXPECT_LT(MaxDiff(before, at), 1.5e-6);
        EXPECT_LT(MaxDiff(after, at), 1.5e-6);
        EXPECT_GT(MaxDiff(after, at), 1e-7);
    }
    // 1000 years past the clamp: 50000" about the ecliptic pole of the clamp.
    const double edge = kJ2000 + 30.0 * 36525.0;
    double at[9], far[9], rel[9], inv[9], ecl[9], eclInv[9], tmp[9];
    GetPrecMtx(kJ2000, edge, at);
    GetPrecMtx(kJ2000, edge + 1000.0 * 365.24, far);
    GetInvMatrix(at, inv);
    MulMatrix(far, inv, rel);
    RotateX(GetEp(edge), ecl);
    RotateX(-GetEp(edge), eclInv);
    MulMatrix(ecl, rel, tmp);
    MulMatrix(tmp, eclInv, rel);
    EXPECT_NEAR(-std::atan2(rel[1], rel[0]) / kvx::test::kDegToRad * 3600.0, 50000.0, 1e-5);
    EXPECT_NEAR(rel[8], 1.0, 1e-15);
    // The obliquity is compared with ERFA through the matrix; here its clamp.
    EXPECT_EQ(GetEp(kJ2000 + 40 * 36525.0), GetEp(edge));
    // PrecEqt keeps right ascension in 0..360 and may write its input.
    Ad nearZero{359.999, 10.0};
    GetPrecMtx(kJ2000, 2469807.5, at);  // J2000 to 2050
    PrecEqt(&nearZero, &nearZero, at);
    EXPECT_GE(nearZero.a, 0.0);
    EXPECT_LT(nearZero.a, 1.0);
}

}  // namespace
