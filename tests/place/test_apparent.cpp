// Aberration, deflection, parallax, proper motion and a star's apparent place against ERFA (make_place_reference.py)
// and their geometry.

#include <algorithm>

#include "test_support.h"

using namespace kvx::test;

namespace {


// The model's velocity is of the equinox of date but applied on J2000 axes: kappa (20.5") times the precession since
// J2000.0 (IAU 2006 rate) on top of its own 0.03" on the axes of date.
double AberrationBoundArcsec(double jde) {
    const double precession = std::fabs(jde - kJ2000) / 36525.0 * 5028.796195 / kRadToArcsec;
    return 0.03 + 20.5 * 1.02 * precession;
}

}  // namespace

TEST(AnnualAberration, AgainstErfaOnTheAxesOfDateAndOfJ2000) {
    const Reference ref("place_aberration.csv", {"frame", "jde", "eps_true", "x", "y", "z", "ab_x"});
    Comparison cmp({{"axes_of_date_arcsec", 0.03, "circular orbit with first-order eccentricity terms vs epv00"},
                    {"j2000_excess_arcsec", 0.0, "kappa times the precession since J2000.0, see above"}});
    for (const auto &row : ref) {
        const ATime t = HandTime(row["jde"], 0.0, row["eps_true"]);
        double out[3];
        AnnualAberration(&t, row.From("x"), 1, out);
        const double e = SepArcsec(out, row.From("ab_x"));
        if (row["frame"] == 0.0) cmp.Add("axes_of_date_arcsec", e, row);
        else cmp.Add("j2000_excess_arcsec", std::max(0.0, e - AberrationBoundArcsec(row["jde"])), row);
    }
    cmp.Check();
}

// Removal undoes addition, in place, to the inverse's 1e-6 iteration limit in the vector's difference (second order:
// below 1e-4").
TEST(AnnualAberration, RemovalUndoesAdditionInPlace) {
    const ATime t = HandTime(2460000.5, 23.43, 23.44);
    for (int i = 0; i < 500; ++i) {
        double p[3], q[3];
        UnitVector(i * 17.3, std::asin(-1.0 + (i + 0.5) / 250.0) / kDegToRad, p);
        AnnualAberration(&t, p, 1, q);
        EXPECT_GT(SepArcsec(q, p), 0.3);  // aberration is 20" times a sine
        EXPECT_NEAR(Norm(q), 1.0, 1e-15);
        AnnualAberration(&t, q, 0, q);
        EXPECT_LT(SepArcsec(q, p), 1e-4) << i;
    }
}

TEST(Deflection, AgainstErfaForStarsAndBodies) {
    const Reference ref("place_deflection.csv", {"kind", "p_x", "p_y", "p_z", "q_x", "q_y", "q_z", "e_x", "e_y",
                                                 "e_z", "out_x"});
    Comparison cmp({{"star_arcsec", 2e-4, "constant 1.974e-8 vs ERFA's 1.97412574336e-8: 6e-5 of <= 2\""},
                    {"body_arcsec", 2e-4, "constant 1.974e-8 vs ERFA's 1.97412574336e-8: 6e-5 of <= 2\""}});
    for (const auto &row : ref) {
        double out[3];
        if (row["kind"] == 0.0) {
            DeflectionStar(row.From("p_x"), row.From("e_x"), out);
            EXPECT_NEAR(Norm(out), 1.0, 1e-15);
            cmp.Add("star_arcsec", SepArcsec(out, row.From("out_x")), row);
        } else {
            DeflectionSolar(row.From("p_x"), row.From("q_x"), row.From("e_x"), out);
            const double *r = row.From("out_x");
            const double d[3] = {out[0] - r[0], out[1] - r[1], out[2] - r[2]};
            cmp.Add("body_arcsec", Norm(d) * kRadToArcsec, row);
        }
    }
    cmp.Check();
}

// Exactly behind the Sun both forms leave the direction alone.
TEST(Deflection, NothingBehindTheSun) {
    const double e[3] = {1.0, 0.0, 0.0}, sunDir[3] = {-1.0, 0.0, 0.0}, q[3] = {-2.0, 0.0, 0.0};
    double out[3];
    DeflectionStar(sunDir, e, out);
    EXPECT_EQ(out[0], -1.0);
    DeflectionSolar(sunDir, q, e, out);
    EXPECT_EQ(out[0], -1.0);
}

// The whole chain against ERFA's with the same matrices in the record: proper motions to 2"/yr over 50 years,
// parallaxes to 0.8".
TEST(StarApparent, AgainstTheErfaChain) {
    const Reference ref("place_star.csv", {"jde", "eps_true", "ra", "dec", "pmra", "pmdec", "parallax", "sun_ra",
                                           "sun_dec", "earth_x", "earth_y", "earth_z", "pmat", "p1", "p2", "p3",
                                           "p4", "p5", "p6", "p7", "p8", "nut", "n1", "n2", "n3", "n4", "n5", "n6",
                                           "n7", "n8", "app_x"});
    Comparison cmp({{"excess_arcsec", 0.0, "the aberration bound on J2000 axes; great-circle proper motion"}});
    for (const auto &row : ref) {
        const ATime t = HandTime(row["jde"], 0.0, row["eps_true"], row.From("pmat"), row.From("nut"));
        BodyPos sun{};
        sun.f[2] = row["sun_ra"];
        sun.f[3] = row["sun_dec"];
        for (int k = 0; k < 3; ++k) sun.f[7 + k] = row.From("earth_x")[k];
        double p[3], out[3];
        UnitVector(row["ra"], row["dec"], p);
        const double pm[2] = {row["pmra"], row["pmdec"]};
        StarApparent(&t, p, pm, row["parallax"], &sun, out);
        const double e = SepArcsec(out, row.From("app_x"));
        cmp.Add("excess_arcsec", std::max(0.0, e - AberrationBoundArcsec(row["jde"])), row);
    }
    cmp.Check();
}
