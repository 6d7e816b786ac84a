// Observation geometry of artificial satellites: Earth-fixed and inertial places and look angles against
// Skyfield, the sidereal angle, the J2000.0 conversions and the Earth's shadow.
#include <gtest/gtest.h>

#include <cmath>

#include "asat/asat_test_util.h"
#include "asat/geometry.h"
#include "support/angles.h"
#include "support/reference.h"

namespace {

using namespace kvx::test;

// Both sides turn the ellipsoid by the IAU 1982 GMST (the library's from 0 h
// UT at a constant rate: 1e-10 rad); what remains is rounding.
TEST(ASatGeometry, PlacesAndLookAnglesMatchSkyfield) {
    Comparison cmp({{"to_xyz_m", 1.0, "same ellipsoid and sidereal angle"},
                    {"to_lla_m", 1.0, "same ellipsoid; latitude iterated to 1e-12 rad"},
                    {"direction_arcsec", 1.0, "same frames, same ellipsoid"},
                    {"range_m", 1.0, "same frames, same ellipsoid"}});
    for (const auto &row : Reference("asat_lla_skyfield.txt", {"jd", "lat", "lon", "h", "x", "y", "z"})) {
        const Lla place{row["lat"], row["lon"], row["h"]};
        double xyz[3], p1[3];
        ASatLlaToXyz(row["jd"], &place, xyz);
        cmp.Add("to_xyz_m", Dist3(xyz, row.From("x")) * 1000.0, row);
        Lla back;
        ASatXyzToLla(row["jd"], row.From("x"), &back);
        EXPECT_TRUE(back.longitude >= 0.0 && back.longitude < 360.0) << back.longitude;
        // both places put back on the ellipsoid without any rotation
        ASatLlaToXyz(2451545.0, &back, p1);
        ASatLlaToXyz(2451545.0, &place, xyz);
        cmp.Add("to_lla_m", Dist3(p1, xyz) * 1000.0, row);
    }
    for (const auto &row : Reference("asat_look_skyfield.txt", {"jd", "lat", "lon", "h", "x", "y", "z", "az", "el", "range"})) {
        const Lla obs{row["lat"], row["lon"], row["h"]};
        double az = -1, el = -1, range = -1;
        ASSERT_EQ(ASatLookAngle(row["jd"], &obs, row.From("x"), &az, &el, &range), 1);
        EXPECT_TRUE(az >= 0.0 && az < 2.0 * kPi) << az;
        cmp.Add("direction_arcsec", SepArcsec(az / kDegToRad, el / kDegToRad, row["az"], row["el"]), row);
        cmp.Add("range_m", (range - row["range"]) * 1000.0, row);
    }
    cmp.Check();
    EXPECT_EQ(ASatLookAngle(2451545.0, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
}

TEST(ASatGeometry, TheCentreAndThePole) {
    // The Earth's centre, and a point over the pole: the polar radius is a sqrt(1 - e^2) with GRS80's e^2.
    const double centre[3] = {0, 0, 0}, pole[3] = {0, 0, 7000.0};
    Lla c, p;
    ASatXyzToLla(2460311.3, centre, &c);
    EXPECT_EQ(c.height, -6378137.0);
    ASatXyzToLla(2460311.3, pole, &p);
    EXPECT_NEAR(p.latitude, 90.0, 1e-12);
    EXPECT_NEAR(p.height, (7000.0 - 6378.137 * std::sqrt(1.0 - 0.006694384999587949)) * 1000.0, 1e-6);
}

// The cone's cases, worked by hand, in tests/data/expected/earth_shadow.txt.
TEST(ASatGeometry, EarthShadowCone) {
    const double r = (1.0 - 1000.0 / 1500000.0) * 6378.137, earth[3] = {1.0, 0.0, 0.0};  // 1000 km behind
    for (const auto &c : ExpectedRows("earth_shadow.txt")) {
        const double sat[3] = {1.0 + c[0] / 149597870.0, (c[1] + c[2] * r) / 149597870.0, 0.0};
        EXPECT_NEAR(ASatEarthShadow(sat, earth), c[3], c[4]) << c[0] << " " << c[1] << " " << c[2];
    }
    EXPECT_EQ(ASatEarthShadow(nullptr, earth), 0.0);
}

TEST(ASatGeometry, HorizonAndEarthFixedDirectionsInJ2000) {
    // North at the altitude of the latitude: the mean pole of date.
    const Observer obs{35.6895, 139.6917, 40.0};
    const double jd = 2460311.0;
    Ad pole, up, zenith;
    ASatHrzToAd(jd, &obs, 0.0, obs.latitude, &pole);
    ATime t;
    SetATimeJd(jd, 0.0, &obs, &t);
    const double p[3] = {t.precToJ2000[2], t.precToJ2000[5], t.precToJ2000[8]};
    double got[3];
    UnitVector(pole.a, pole.d, got);
    EXPECT_LT(SepArcsec(got, p), 0.01);
    EXPECT_GT(90.0 - pole.d, 0.1);  // 24 years of precession
    // A point on the observer's radius (latitude taken as geocentric): the zenith.
    ASatLLDToAd(jd, &obs, obs.longitude, obs.latitude, 7000.0, &up);
    ASatHrzToAd(jd, &obs, 0.0, 90.0, &zenith);
    EXPECT_LT(SepArcsec(up, zenith), 0.01);
    // 1000 km above another place, seen from the equator (geodetic = geocentric latitude): the
    // direction of its look angles, within the two observer figures (3 m) and mean vs apparent time.
    const Observer equator{0.0, 139.6917, 40.0};
    const Lla target{10.0, 150.0, 1000e3}, station{equator.latitude, equator.longitude, equator.height};
    double xyz[3], az, el;
    ASatLlaToXyz(jd, &target, xyz);
    ASatLookAngle(jd, &station, xyz, &az, &el, nullptr);
    Ad viaLook, viaPoint;
    ASatHrzToAd(jd, &equator, az / kDegToRad, el / kDegToRad, &viaLook);
    const double th = kvx::asat::SiderealAngle(jd);
    const double ex = xyz[0] * std::cos(th) + xyz[1] * std::sin(th), ey = -xyz[0] * std::sin(th) + xyz[1] * std::cos(th);
    ASatLLDToAd(jd, &equator, std::atan2(ey, ex) / kDegToRad, std::atan2(xyz[2], std::hypot(ex, ey)) / kDegToRad,
                Norm(xyz), &viaPoint);
    EXPECT_LT(SepArcsec(viaLook, viaPoint), 5.0);
}

TEST(ASatGeometry, PropagatorFrameToJ2000) {
    // At J2000.0 only the equation of the equinoxes, dpsi cos(eps), turns it.
    const ATime t = AtJde(2451545.0);
    double v[3] = {7000.0, 0.0, 100.0};
    ASSERT_EQ(ASatAppToJ2000(&t, v), v);
    EXPECT_NEAR(std::atan2(v[1], v[0]) / kDegToRad, t.nutation[0] * std::cos(t.eps * kDegToRad), 1e-7);
    EXPECT_NEAR(Norm(v), std::hypot(7000.0, 100.0), 1e-9);
    EXPECT_EQ(ASatAppToJ2000(nullptr, v), nullptr);
}

}  // namespace
