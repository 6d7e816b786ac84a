// The data-file sources of the Sun and the planets: the DE405 excerpt against Swiss Ephemeris (DE431), the planet
// position file and its 50-day blend into the theory, and the two-body extrapolation past the file's ends.

#include "solar/ephem/jpl_de.h"
#include "solar/ephem/jpl_query.h"
#include "solar/ephem/planet_xyz.h"
#include "solar/planet/planet.h"
#include "solar/sun/sun.h"
#include "test_support.h"

namespace {

using namespace kvx::test;

// Opens the test files for one test and closes them again, so that the other tests keep the built-in theories.
struct Files {
    Files(bool de, bool xyz) {
        EXPECT_TRUE(!de || kvx::jpl::OpenMain(TestDataPath("de405_2000.bin").c_str(), false));
        EXPECT_TRUE(!xyz || kvx::planetxyz::Open(TestDataPath("planet.xyz").c_str(), false) == 1);
    }
    ~Files() {
        kvx::jpl::CloseMain();
        kvx::planetxyz::Release();
    }
};

// With the DE405 excerpt every DE body lies within 0.1" of Swiss Ephemeris (no light deflection in the reference).
TEST(SunAndPlanetsFromDe, WithinATenthOfAnArcsecondOfSwissEphemeris) {
    Files files(true, false);
    ASSERT_NE(kvx::jpl::MainHandle(), nullptr);
    Comparison cmp({{"apparent_arcsec", 0.1, "aberration formula and truncated nutation"}});
    for (const auto &r : Reference("planets_swe_geo_2000.txt", {"jde", "code", "ra", "dec", "app_ra", "app_dec"})) {
        const int code = static_cast<int>(r["code"]);
        if (r["jde"] < 2451536.5 || r["jde"] > 2452272.5 || code == 9) continue;  // the excerpt; Ceres is no DE body
        ATime t = AtJde(r["jde"]);
        BodyPos sun, p;
        CalcSun(&t, &sun);
        ASSERT_TRUE(code == -2 || CalcPlanet(code, &t, &sun, &p) == 1);  // -2: the Sun
        const BodyPos &b = code == -2 ? sun : p;
        cmp.Add("apparent_arcsec", SepArcsec(b.f[2], b.f[3], r["app_ra"], r["app_dec"]), r);
    }
    cmp.Check();
}

// The Sun from the position file alone: the file's value from the start to 50 days before the end, then blended
// linearly into the theory, which alone answers at the end itself and beyond.
TEST(SunFromPlanetFile, BlendsIntoTheTheoryOverFiftyDays) {
    Files files(false, true);
    double start, end;
    ASSERT_EQ(kvx::planetxyz::Range(-3, &start, &end), 1);
    // Tolerance (AU): exact for one source alone, rounding of the blend.
    const struct { double jde, fileWeight, tolerance; } cases[] = {
        {start, 1, 0}, {end - 50.0, 1, 0}, {start + 25.0, 0.5, 1e-14}, {end - 25.0, 0.5, 1e-14}, {end, 0, 0}, {end + 1.0, 0, 0}};
    for (const auto &c : cases) {
        double v[3], a[3], p[3] = {0, 0, 0};
        kvx::sun::GetSunVector(c.jde, v);
        kvx::sun::AnalyticSunVector(c.jde, a);
        ASSERT_EQ(kvx::planetxyz::Lookup(-3, c.jde, p, nullptr), c.jde <= end ? 1 : 0);
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(v[i], -c.fileWeight * p[i] + (1.0 - c.fileWeight) * a[i], c.tolerance) << c.jde;
    }
}

// Past the end of the position file a planet follows the osculating orbit of the file's last state: within 0.5" for
// ten days, 40" for 200, and better than the mean elements for the bodies without an analytic series.
TEST(PlanetDispatcher, ExtrapolatesPastTheFileWithTwoBodyMotion) {
    int checked = 0;
    for (const auto &r : Reference("planets_swe_helio.txt", {"jde", "code", "x", "y", "z"})) {
        const int code = static_cast<int>(r["code"]);
        if (code < 0) continue;
        double start, end, two[3], mean[3];
        {
            Files files(false, true);
            ASSERT_EQ(kvx::planetxyz::Range(code, &start, &end), 1);
            if (r["jde"] <= end || r["jde"] > end + 200.0) continue;
            ASSERT_EQ(kvx::planet::HelioVector(code, r["jde"], two), 1);
        }
        kvx::planet::HelioVector(code, r["jde"], mean);
        const double e2 = SepArcsec(two, r.From("x"));
        EXPECT_LT(e2, r["jde"] - end < 10 ? 0.5 : 40.0) << code;
        EXPECT_TRUE(code == 0 || code == 1 || code == 3 || e2 < SepArcsec(mean, r.From("x"))) << code;
        ++checked;
    }
    EXPECT_EQ(checked, 16);
}

}  // namespace
