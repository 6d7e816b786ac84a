// CalcSun: apparent place against Swiss Ephemeris, the physical ephemeris
// against Meeus' worked example, and the record's fixed fields.
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

TEST(CalcSun, ApparentPlaceMatchesSwissEphemeris1900To2100) {
    const auto rows = ReadRows(ReferencePath("sun_swe_1900_2100.txt"));
    double maxApp = 0, maxRa = 0, maxDec = 0;
    for (const auto &r : rows) {
        ATime t = AtJde(r[0]);
        BodyPos s;
        CalcSun(&t, &s);
        const double sep = SepArcsec(s.f[2], s.f[3], r[7], r[8]);
        maxApp = std::fmax(maxApp, sep);
        maxRa = std::fmax(maxRa, std::fabs(std::remainder(s.f[2] - r[7], 360.0)) * 3600.0);
        maxDec = std::fmax(maxDec, std::fabs(s.f[3] - r[8]) * 3600.0);
        // Geocentric observer: the distance is the geocentric distance.
        EXPECT_EQ(s.f[6], s.f[13]);
        EXPECT_EQ(s.f[19], -1.0);
    }
    std::printf("CalcSun vs Swiss Ephemeris 1900-2100: apparent place max %.3f\" (RA %.3f\", Dec %.3f\")\n",
                maxApp, maxRa, maxDec);
    EXPECT_LT(maxApp, 1.5);
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
    // L0 is reckoned here from universal time and the mean longitude, where
    // Meeus takes dynamical time and the apparent longitude: +0.010 and
    // about +0.011 degrees.
    EXPECT_NEAR(s.f[18], 238.63 + 0.021, 0.01);
    // Semi-diameter: 959.63" at 1 AU.
    EXPECT_NEAR(s.f[14] * 3600.0, 959.63 / s.f[6], 0.01);
}

TEST(CalcSun, TopocentricObserverAndFrames) {
    const Observer tokyo{35.68, 139.77, 40.0};
    ATime g = AtJde(2460000.5), t = AtJde(2460000.5, &tokyo);
    BodyPos sg, st;
    CalcSun(&g, &sg);
    CalcSun(&t, &st);
    // Same Earth vector; the topocentric place differs by up to the solar
    // parallax (8.8").
    for (int k = 7; k < 14; ++k) EXPECT_EQ(sg.f[k], st.f[k]);
    const double par = SepArcsec(sg.f[0], sg.f[1], st.f[0], st.f[1]);
    EXPECT_GT(par, 0.5);
    EXPECT_LT(par, 8.8);
    EXPECT_NE(st.f[6], st.f[13]);
    // Fields 8-10 are minus the geocentric Sun; 11-13 their ecliptic of date.
    const double r8 = std::sqrt(sg.f[7] * sg.f[7] + sg.f[8] * sg.f[8] + sg.f[9] * sg.f[9]);
    const double r11 = std::sqrt(sg.f[10] * sg.f[10] + sg.f[11] * sg.f[11] + sg.f[12] * sg.f[12]);
    EXPECT_NEAR(r8, sg.f[13], 1e-15);
    EXPECT_NEAR(r11, r8, 1e-14);
    // The Earth lies on the ecliptic of date: its latitude is below 1".
    EXPECT_LT(std::fabs(sg.f[12] / r11), 5e-6);
    // Heliocentric longitude of the Earth = geocentric longitude of the Sun + 180.
    const double lon = std::atan2(sg.f[11], sg.f[10]) * 180.0 / 3.141592653589793;
    EXPECT_NEAR(std::remainder(lon + 180.0 - sg.f[4], 360.0), 0.0, 1e-9);
}

TEST(CalcSun, NullPointersDoNothing) {
    ATime t = AtJde(2451545.0);
    BodyPos s;
    std::memset(&s, 0, sizeof s);
    CalcSun(nullptr, &s);
    EXPECT_EQ(s.f[0], 0.0);
    CalcSun(&t, nullptr);
}

}  // namespace
