// The data-file sources of the Sun and the planets: the DE405 excerpt
// against Swiss Ephemeris (DE431), the planet position file and its 50-day
// blend into the theory, and the two-body extrapolation past the file's ends.
#include <gtest/gtest.h>

#include <cmath>

#include "kvxlib.h"
#include "solar/ephem/jpl_de.h"
#include "solar/ephem/jpl_query.h"
#include "solar/planet/planet.h"
#include "solar/ephem/planet_xyz.h"
#include "solar/sun/sun.h"
#include "test_support.h"

namespace {

using kvx::test::ReadRows;
using kvx::test::ReferencePath;
using kvx::test::AtJde;
using kvx::test::SepArcsec;
using kvx::test::TestDataPath;

// Opens the test files for one test and closes them again, so that the
// other tests keep the built-in theories.
struct Files {
    Files(bool de, bool xyz) {
        if (de) {
            EXPECT_TRUE(kvx::jpl::OpenMain(TestDataPath("de405_2000.bin").c_str(), false));
        }
        if (xyz) {
            EXPECT_EQ(kvx::planetxyz::Open(TestDataPath("planet.xyz").c_str(), false), 1);
        }
    }
    ~Files() {
        kvx::jpl::CloseMain();
        kvx::planetxyz::Release();
    }
};

double Dist(const double a[3], const double b[3]) {
    return std::sqrt((a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]) + (a[2] - b[2]) * (a[2] - b[2]));
}

// With the DE405 excerpt every DE body lies within 0.1" of Swiss Ephemeris
// (no light deflection in the reference): what is left is the aberration
// formula and the truncated nutation.
TEST(SunAndPlanetsFromDe, WithinATenthOfAnArcsecondOfSwissEphemeris) {
    Files files(true, false);
    ASSERT_NE(kvx::jpl::MainHandle(), nullptr);
    const double start = 2451536.5, end = 2452272.5;  // the excerpt's span
    kvx::test::Comparison cmp({{"apparent_arcsec", 0.1, "aberration formula and truncated nutation"}});
    const kvx::test::Reference ref("planets_swe_geo_2000.txt", {"jde", "code", "ra", "dec", "app_ra", "app_dec"});
    for (const auto &r : ref) {
        const int code = static_cast<int>(r["code"]);
        if (r["jde"] < start || r["jde"] > end || code == 9) continue;  // Ceres is not a DE body
        ATime t = AtJde(r["jde"]);
        BodyPos sun, p;
        CalcSun(&t, &sun);
        const BodyPos *b = &sun;
        if (code != -2) {
            ASSERT_EQ(CalcPlanet(code, &t, &sun, &p), 1);
            b = &p;
        }
        cmp.Add("apparent_arcsec", SepArcsec(b->f[2], b->f[3], r["app_ra"], r["app_dec"]), r);
    }
    cmp.Check();
}

TEST(SunFromPlanetFile, BlendsIntoTheTheoryOverFiftyDays) {
    Files files(false, true);
    double start, end;
    ASSERT_EQ(kvx::planetxyz::Range(-3, &start, &end), 1);
    double v[3], a[3], f[3], p[3];
    // Pure file value 50 days inside the end and at the start itself.
    for (double jde : {end - 50.0, start}) {
        kvx::sun::GetSunVector(jde, v);
        ASSERT_EQ(kvx::planetxyz::Lookup(-3, jde, p, nullptr), 1);
        for (int i = 0; i < 3; ++i) EXPECT_EQ(v[i], -p[i]) << jde;
    }
    // Pure theory at the end itself.
    kvx::sun::GetSunVector(end, v);
    kvx::sun::AnalyticSunVector(end, a);
    for (int i = 0; i < 3; ++i) EXPECT_DOUBLE_EQ(v[i], a[i]);
    // Half way, 25 days from either end.
    for (double jde : {end - 25.0, start + 25.0}) {
        kvx::sun::GetSunVector(jde, v);
        kvx::sun::AnalyticSunVector(jde, a);
        kvx::planetxyz::Lookup(-3, jde, p, nullptr);
        for (int i = 0; i < 3; ++i) f[i] = 0.5 * -p[i] + 0.5 * a[i];
        EXPECT_LT(Dist(v, f), 1e-14) << jde;
    }
    // Outside the file: the theory alone.
    kvx::sun::GetSunVector(end + 1.0, v);
    kvx::sun::AnalyticSunVector(end + 1.0, a);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(v[i], a[i]);
}

TEST(PlanetDispatcher, ExtrapolatesPastTheFileWithTwoBodyMotion) {
    const auto rows = ReadRows(ReferencePath("planets_swe_helio.txt"));
    int checked = 0;
    for (const auto &r : rows) {
        const int code = static_cast<int>(r[1]);
        if (code < 0) continue;
        double start, end, two[3], mean[3];
        {
            Files files(false, true);
            ASSERT_EQ(kvx::planetxyz::Range(code, &start, &end), 1);
            if (r[0] <= end || r[0] > end + 200.0) continue;
            ASSERT_EQ(kvx::planet::HelioVector(code, r[0], two), 1);
        }
        kvx::planet::HelioVector(code, r[0], mean);
        const double ref[3] = {r[2], r[3], r[4]};
        const double e2 = SepArcsec(two, ref), em = SepArcsec(mean, ref);
        EXPECT_LT(e2, r[0] - end < 10 ? 0.5 : 40.0) << code;
        if (code != 0 && code != 1 && code != 3) {
            EXPECT_LT(e2, em) << code;
        }
        ++checked;
    }
    EXPECT_EQ(checked, 16);
}

}  // namespace
