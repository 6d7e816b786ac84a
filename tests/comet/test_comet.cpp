// CalcComet against PyEphem for the same elements (elliptic, near-parabolic,
// parabolic and hyperbolic orbits and a minor planet), and GetCometOrbit.
#include <gtest/gtest.h>

#include <cmath>

#include "kvxlib.h"
#include "test_support.h"

namespace {

using kvx::test::SepArcsec;

// The orbits of tests/reference/comets_pyephem.py (0 Halley-like, 1 near-parabolic ellipse, 2 parabola,
// 3 hyperbola, 4 Ceres), on the J2000.0 equinox.
CometElements Orbit(int k) {
    static const kvx::test::Reference orbits("comet_orbits.txt", {"minor", "T", "e", "q", "peri", "node", "incl", "h", "slope"});
    const auto r = orbits[k];
    CometElements el{};
    el.kind = r["minor"] ? 'M' : 'C', el.perihelionJd = r["T"], el.e = r["e"], el.q = r["q"], el.peri = r["peri"];
    el.node = r["node"], el.incl = r["incl"], el.equinox = 2000.0, el.h = r["h"], el.slope = r["slope"];
    return el;
}

BodyPos Place(const CometElements &el, ATime t, int expect = 1) {
    BodyPos sun, c;
    CalcSun(&t, &sun);
    EXPECT_EQ(CalcComet(&el, &t, &sun, &c), expect);
    return c;
}

// Five orbits at PyEphem's own Delta T.
TEST(CalcComet, AstrometricPlaceMatchesPyEphem) {
    kvx::test::Comparison cmp({{"astrometric_arcsec", 1.0, "PyEphem's (libastro) precision"},
                               {"mag", 0.01, "PyEphem prints magnitudes to 0.001"}});
    const kvx::test::Reference ref("comets_pyephem.txt", {"orbit", "jd", "delta_t", "ra", "dec", "delta", "r", "mag"});
    for (const auto &row : ref) {
        ATime t;
        SetATimeJd2(row["jd"], row["delta_t"], 0.0, nullptr, &t);
        const BodyPos c = Place(Orbit(static_cast<int>(row["orbit"])), t);
        cmp.Add("astrometric_arcsec", SepArcsec(c.f[0], c.f[1], row["ra"], row["dec"]), row);
        cmp.Add("mag", c.f[35] - row["mag"], row);
    }
    cmp.Check();
    CometElements el = Orbit(0);
    el.q = 0.0;
    Place(el, kvx::test::AtJde(2451545.0), 0);
}

// Elements of B1950.0 are precessed first: 50 years of precession (0.7 deg
// about the ecliptic pole) move Halley's comet at its 1986 perihelion by a part of that.
TEST(CalcComet, ElementsOfAnotherEquinoxArePrecessed) {
    CometElements el = Orbit(0);
    const ATime t = kvx::test::AtJde(2446470.95);
    const BodyPos j2000 = Place(el, t);
    el.equinox = 1950.0;
    const BodyPos b1950 = Place(el, t);
    const double shift = SepArcsec(j2000.f[0], j2000.f[1], b1950.f[0], b1950.f[1]) / 3600.0;
    EXPECT_TRUE(shift > 0.05 && shift < 2.0) << shift;
}

TEST(GetCometOrbit, EllipseParabolaHyperbola) {
    double xyz[3 * 41];
    auto r = [&](int k) { return kvx::test::Norm(&xyz[3 * k]); };
    // Ellipse: closed, through perihelion (first point), the end of the
    // minor axis (E = 90 deg, r = a) and aphelion (middle).
    const CometElements el = Orbit(0);
    ASSERT_EQ(GetCometOrbit(&el, 41, 0.0, xyz), 41);
    EXPECT_NEAR(r(0), el.q, 1e-12);
    EXPECT_NEAR(r(10), el.q / (1 - el.e), 1e-9);
    EXPECT_NEAR(r(20), el.q * (1 + el.e) / (1 - el.e), 1e-9);
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(xyz[i], xyz[3 * 40 + i], 1e-12);
    // Open orbits: symmetric about perihelion out to rMax.
    for (int k : {2, 3}) {
        const CometElements o = Orbit(k);
        ASSERT_EQ(GetCometOrbit(&o, 41, 6.0, xyz), 41) << k;
        EXPECT_LT(std::fmax(std::fabs(r(0) - 6.0), std::fabs(r(40) - 6.0)), 1e-9) << k;
        EXPECT_NEAR(r(20), o.q, 1e-12) << k;
    }
    const CometElements o = Orbit(2);
    EXPECT_EQ(GetCometOrbit(&o, 41, 0.5, xyz) + GetCometOrbit(&o, 1, 6.0, xyz), 0);  // rMax inside q; one point
}

}  // namespace
