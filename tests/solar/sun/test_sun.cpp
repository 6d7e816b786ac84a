// The Sun: the analytic theories against Swiss Ephemeris (DE431 for 1900-2100, Moshier's ephemeris back to
// -2000; tests/reference/sun_swe.c) and PyEphem (VSOP87, 3000-4000); CalcSun against Meeus' worked example.

#include "solar/sun/sun.h"
#include "solar/sun/sun_theory.h"
#include "test_support.h"

using namespace kvx::test;

TEST(SunTheory, AgainstSwissEphemeris1900To2100) {
    const Reference ref("sun_swe_1900_2100.txt", {"jde", "lon", "lat", "r", "x", "y", "z", "ra", "dec"});
    Comparison cmp({{"newcomb_lon_arcsec", 1.5, "Newcomb's 0.4\" on the FK4 equinox, drifting 1.3\" a century"},
                    {"newcomb_lat_arcsec", 0.25, "Newcomb's latitude terms"},
                    {"newcomb_r_au", 1e-6, "Newcomb's radius terms"},
                    {"j2000_arcsec", 1.5, "the same, precessed and rotated from B1950.0"},
                    {"earth_lat_arcsec", 0.3, "Newcomb's latitude terms and the precession back"},
                    {"apparent_arcsec", 1.5, "the same plus aberration and truncated nutation"}});
    for (const auto &row : ref) {
        double l, b, r, v[3], lb[2];
        kvx::sun::NewcombEclipticOfDate(row["jde"], &l, &b, &r);
        cmp.Add("newcomb_lon_arcsec", DiffArcsec(l, row["lon"]), row);
        cmp.Add("newcomb_lat_arcsec", (b - row["lat"]) * 3600.0, row);
        cmp.Add("newcomb_r_au", r - row["r"], row);
        kvx::sun::AnalyticSunVector(row["jde"], v);
        cmp.Add("j2000_arcsec", SepArcsec(v, row.From("x")), row);
        kvx::sun::GetEarthLbr(row["jde"], lb, &r);
        cmp.Add("newcomb_lon_arcsec", DiffArcsec(lb[0] + 180.0, row["lon"]), row);
        cmp.Add("earth_lat_arcsec", (lb[1] + row["lat"]) * 3600.0, row);
        ATime t = AtJde(row["jde"]);
        BodyPos s;
        CalcSun(&t, &s);
        cmp.Add("apparent_arcsec", SepArcsec(s.f[2], s.f[3], row["ra"], row["dec"]), row);
    }
    cmp.Check();
}

// The short theory from the range bounds outwards, against Moshier's
// ephemeris and VSOP87: its error grows with its secular terms.
TEST(SunTheory, ShortTheoryOverSixMillennia) {
    const struct { const char *file; double from, to, lonLimit; /* JDE, arcseconds */ } spans[] = {
        {"sun_swe_short.txt", 2268923.5, 2633972.5, 80.0},       // 1500..2500
        {"sun_swe_short.txt", 990557.5, 2268923.5, 2500.0},      // -2000..1500
        {"sun_swe_short.txt", 2633972.5, 2818000.5, 250.0},      // 2500..3000
        {"sun_pyephem_short.txt", 2817000.0, 3182000.5, 1000.0}, // 3000..4000
    };
    for (const auto &s : spans) {
        const Reference ref(s.file, {"jde", "lon", "r"});
        Comparison cmp({{"lon_arcsec", s.lonLimit, "the short theory's secular terms"},
                        {"r_au", 4e-4, "the short theory's radius terms"}});
        for (const auto &row : ref) {
            if (row["jde"] < s.from || row["jde"] >= s.to) continue;
            double l, r;
            kvx::sun::ShortEclipticOfDate(row["jde"], &l, &r);
            cmp.Add("lon_arcsec", DiffArcsec(l, row["lon"]), row);
            cmp.Add("r_au", r - row["r"], row);
        }
        cmp.Check();
    }
    // At the range bounds the vector is the short theory's (a jump to the full one just inside).
    for (double edge : {2086307.5, 2816787.5}) {
        double atEdge[3], inside[3], l, r;
        kvx::sun::AnalyticSunVector(edge, atEdge);
        kvx::sun::AnalyticSunVector(std::nextafter(edge, 2451545.0), inside);
        kvx::sun::ShortEclipticOfDate(edge, &l, &r);
        EXPECT_NEAR(Norm(atEdge), r, 1e-12);
        EXPECT_GT(SepArcsec(atEdge, inside), 1e-3) << edge;
    }
}

// J. Meeus, Astronomical Algorithms (2nd ed. 1998), example 29.a:
// 1992 October 13.0 TD: P = 26.27, B0 = 5.99, L0 = 238.63 degrees.
TEST(CalcSun, PhysicalEphemerisMatchesMeeusExample) {
    ATime t;
    SetATimeJd2(2448908.5 - 59.0 / 86400.0, 59.0, 0.0, nullptr, &t);
    BodyPos s;
    CalcSun(&t, &s);
    EXPECT_NEAR(s.f[15], 26.27, 0.01);
    EXPECT_NEAR(s.f[16], 5.99, 0.01);
    // L0 from universal time and the mean longitude, Meeus' from dynamical
    // time and the apparent longitude: +0.010 and about +0.011 degrees.
    EXPECT_NEAR(s.f[18], 238.63 + 0.021, 0.01);
    EXPECT_NEAR(s.f[14] * 3600.0, 959.63 / s.f[6], 0.01);  // 959.63" at 1 AU
    EXPECT_EQ(s.f[19], -1.0);
}

TEST(CalcSun, TopocentricObserverAndFrames) {
    const Observer tokyo{35.68, 139.77, 40.0};
    ATime g = AtJde(2460000.5), t = AtJde(2460000.5, &tokyo);
    BodyPos sg, st;
    CalcSun(&g, &sg);
    CalcSun(&t, &st);
    // The same Earth vector; the topocentric place differs by up to the solar parallax (8.8").
    for (int k = 7; k < 14; ++k) EXPECT_EQ(sg.f[k], st.f[k]);
    EXPECT_EQ(sg.f[6], sg.f[13]);
    const double par = SepArcsec(sg.f[0], sg.f[1], st.f[0], st.f[1]);
    EXPECT_TRUE(par > 0.5 && par < 8.8) << par;
    // Fields 8-10 are minus the geocentric Sun, 11-13 the same on the ecliptic of
    // date, where the Earth's latitude is below 1" and its longitude the Sun's + 180.
    EXPECT_NEAR(Norm(&sg.f[7]), sg.f[13], 1e-15);
    EXPECT_LT(std::fabs(sg.f[12]) / sg.f[13], 5e-6);
    EXPECT_NEAR(WrapDeg(std::atan2(sg.f[11], sg.f[10]) / kDegToRad + 180.0 - sg.f[4]), 0.0, 1e-9);
}
