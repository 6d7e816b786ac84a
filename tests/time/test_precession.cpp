// Precession: the bias-precession matrix against ERFA's IAU 2006 pmat06,
// the identity and one-day rules around J2000.0, the inversion for early
// start epochs, and continuity of the 50"-per-year extension.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "kvxlib.h"
#include "test_support.h"
#include "time/precession.h"

namespace {

constexpr double kDegToRad = 3.141592653589793 / 180.0;

double MaxDiff(const double a[9], const double b[9]) {
    double d = 0.0;
    for (int k = 0; k < 9; ++k) d = std::fmax(d, std::fabs(a[k] - b[k]));
    return d;
}

// The library's obliquity carries the IAU 2006 coefficients rounded in
// degrees; their differences from the exact values (arcseconds / 3600)
// bound how far the matrix may depart from ERFA's at t centuries.
double ObliquityRoundingBoundRad(double t) {
    const double a = std::fabs(t);
    const double deg = std::fabs(84381.406 / 3600.0 - 23.4392794444) + std::fabs(46.836769 / 3600.0 - 0.01301021361) * a +
                       std::fabs(0.0001831 / 3600.0 - 5.0861e-8) * a * a +
                       std::fabs(0.0000000434 / 3600.0 - 1.2056e-11) * a * a * a * a * a;
    return deg * kDegToRad;
}

TEST(Precession, FromJ2000IsTheIau2006BiasPrecessionMatrixOfErfa) {
    const kvx::test::Reference ref("precession_pmat06.csv", {"jd", "m0"});
    kvx::test::Comparison cmp({{"excess", 2e-13, "the obliquity's coefficients rounded in degrees, see above"},
                               {"internal", 4.5e-16, "the end epoch passes through the span in centuries"}});
    for (const auto &row : ref) {
        double m[9], p[9];
        GetPrecMtx(2451545.0, row["jd"], m);
        cmp.Add("excess",
                std::max(0.0, MaxDiff(m, row.From("m0")) - ObliquityRoundingBoundRad((row["jd"] - 2451545.0) / 36525.0)),
                row);
        kvx::prec::BiasPrecession(row["jd"], p);
        cmp.Add("internal", MaxDiff(m, p), row);
    }
    cmp.Check();
}

TEST(Precession, EqualEpochsGiveExactlyTheIdentity) {
    for (double jd : {2451545.0, 0.0, 1000000.5, 2460000.25, 1e7, -3e6}) {
        double m[9];
        GetPrecMtx(jd, jd, m);
        for (int k = 0; k < 9; ++k) EXPECT_EQ(m[k], (k % 4 == 0) ? 1.0 : 0.0) << jd;
    }
}

TEST(Precession, StartWithinADayOfJ2000KeepsTheFrameBias) {
    double m[9], bias[9], later[9], pure[9], inv[9];
    GetPrecMtx(2451545.0, 2451545.5, m);
    kvx::prec::BiasPrecession(2451545.0, bias);
    // Half a day of precession alone, P(end) P(J2000)^-1, differs from it by
    // the frame bias (~8e-8 in the x-z terms).
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
    // Back to J2000.0 from a date ends on the mean equator without the bias:
    // not the inverse of the forward matrix.
    double back[9], product[9];
    GetPrecMtx(2460000.5, 2451545.0, back);
    MulMatrix(back, later, product);
    double identity[9];
    UnitMatrix(identity);
    EXPECT_NEAR(MaxDiff(product, bias), 0.0, 1e-15);
    EXPECT_GT(MaxDiff(product, identity), 5e-8);
}

TEST(Precession, BetweenTwoDatesComposesThroughJ2000) {
    double a[9], b[9], c[9], ab[9];
    GetPrecMtx(2415020.0, 2488070.0, c);  // 1900 to 2100
    GetPrecMtx(2415020.0, 2451544.0, a);
    GetPrecMtx(2451544.0, 2488070.0, b);
    MulMatrix(b, a, ab);
    EXPECT_LT(MaxDiff(ab, c), 1e-14);
}

TEST(Precession, EarlyStartEpochGivesTheInverseOfTheOtherWayRound) {
    for (double from : {1355794.0, 1000000.5, -500000.0, 4000000.0}) {
        for (double to : {2451545.0, 2460000.5, 2000000.0}) {
            double m[9], other[9], inv[9];
            GetPrecMtx(from, to, m);
            GetPrecMtx(to, from, other);
            GetInvMatrix(other, inv);
            EXPECT_EQ(MaxDiff(m, inv), 0.0) << from << " -> " << to;
        }
    }
    // Both epochs early: each direction is computed from its own end and
    // inverted, so the two agree as inverses up to rounding.
    double m[9], other[9], product[9];
    GetPrecMtx(1355794.0, 1300000.0, m);
    GetPrecMtx(1300000.0, 1355794.0, other);
    MulMatrix(m, other, product);
    for (int k = 0; k < 9; ++k) EXPECT_NEAR(product[k], (k % 4 == 0) ? 1.0 : 0.0, 1e-14);
}

TEST(Precession, ContinuousAcrossTheThirtyCenturyClampAndThenFiftyArcsecondsPerYear) {
    const double start = 2451545.0;
    const double edge = start + 30.0 * 36525.0;
    double before[9], at[9], after[9], far[9];
    GetPrecMtx(start, edge - 1.0, before);
    GetPrecMtx(start, edge, at);
    GetPrecMtx(start, edge + 1.0, after);
    // One day of precession is ~6.9e-7 rad; no jump at the edge.
    EXPECT_LT(MaxDiff(before, at), 1.5e-6);
    EXPECT_LT(MaxDiff(after, at), 1.5e-6);
    EXPECT_GT(MaxDiff(after, at), 1e-7);
    // 1000 years past the clamp: a turn of 50000" about the ecliptic pole of
    // J2000 + 30 centuries, i.e. 50000" in ecliptic longitude.
    GetPrecMtx(start, edge + 1000.0 * 365.24, far);
    double rel[9], inv[9];
    GetInvMatrix(at, inv);
    MulMatrix(far, inv, rel);
    double ecl[9], eclInv[9], inEcl[9], tmp[9];
    RotateX(GetEp(edge), ecl);
    RotateX(-GetEp(edge), eclInv);
    MulMatrix(ecl, rel, tmp);
    MulMatrix(tmp, eclInv, inEcl);
    EXPECT_NEAR(-std::atan2(inEcl[1], inEcl[0]) / kDegToRad * 3600.0, 50000.0, 1e-5);
    EXPECT_NEAR(inEcl[8], 1.0, 1e-15);
    // Backwards beyond -30 centuries as well.
    const double early = start - 30.0 * 36525.0;
    GetPrecMtx(start, early + 1.0, before);
    GetPrecMtx(start, early, at);
    GetPrecMtx(start, early - 1.0, after);
    EXPECT_LT(MaxDiff(before, at), 1.5e-6);
    EXPECT_LT(MaxDiff(after, at), 1.5e-6);
}

// PrecEqt keeps right ascension in 0..360 and may write its input.
TEST(Precession, PrecEqtReducesAndMayWriteItsInput) {
    double m[9];
    GetPrecMtx(2451545.0, 2469807.5, m);  // J2000 to 2050
    Ad nearZero{359.999, 10.0};
    PrecEqt(&nearZero, &nearZero, m);
    EXPECT_GE(nearZero.a, 0.0);
    EXPECT_LT(nearZero.a, 1.0);
}

}  // namespace
