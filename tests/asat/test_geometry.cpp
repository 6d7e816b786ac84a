// Observation geometry of artificial satellites: Earth-fixed and inertial
// places and look angles against Skyfield, the sidereal angle, the J2000.0
// conversions and the Earth's shadow.
#include <gtest/gtest.h>

#include <cmath>

#include "asat/asat_test_util.h"
#include "asat/geometry.h"
#include "support/angles.h"
#include "support/reference.h"

namespace {

using namespace kvx::test;

TEST(ASatGeometry, PlacesToInertialAndBackMatchSkyfield) {
    const Reference ref("asat_lla_skyfield.txt", {"jd", "lat", "lon", "h", "x", "y", "z"});
    // Both sides turn the ellipsoid by the IAU 1982 GMST; the library's is
    // evaluated at 0 h UT plus the day's fraction at a constant rate
    // (differences of 1e-10 rad), so what remains is rounding.
    Comparison cmp({{"to_xyz_m", 1.0, "same ellipsoid and sidereal angle"},
                    {"to_lla_m", 1.0, "same ellipsoid; latitude iterated to 1e-12 rad"}});
    for (const auto &row : ref) {
        const Lla place{row["lat"], row["lon"], row["h"]};
        double xyz[3];
        ASatLlaToXyz(row["jd"], &place, xyz);
        const double want[3] = {row["x"], row["y"], row["z"]};
        cmp.Add("to_xyz_m", Dist3(xyz, want) * 1000.0, row);
        Lla back;
        ASatXyzToLla(row["jd"], want, &back);
        // the place found, put back on the ellipsoid without any rotation
        const Lla got{back.latitude, back.longitude, back.height};
        double p1[3], p2[3];
        ASatLlaToXyz(2451545.0, &got, p1);
        ASatLlaToXyz(2451545.0, &place, p2);
        cmp.Add("to_lla_m", Dist3(p1, p2) * 1000.0, row);
        EXPECT_GE(back.longitude, 0.0);
        EXPECT_LT(back.longitude, 360.0);
    }
    cmp.Check();
}

TEST(ASatGeometry, LookAnglesMatchSkyfield) {
    const Reference ref("asat_look_skyfield.txt", {"jd", "lat", "lon", "h", "x", "y", "z", "az", "el", "range"});
    // Skyfield turns the satellite through the GCRS and the observer
    // through the ITRS; both reduce to the same IAU 1982 rotation.
    Comparison cmp({{"direction_arcsec", 1.0, "same frames, same ellipsoid"},
                    {"range_m", 1.0, "same frames, same ellipsoid"}});
    for (const auto &row : ref) {
        const Lla obs{row["lat"], row["lon"], row["h"]};
        const double sat[3] = {row["x"], row["y"], row["z"]};
        double az = -1, el = -1, range = -1;
        ASSERT_EQ(ASatLookAngle(row["jd"], &obs, sat, &az, &el, &range), 1);
        EXPECT_GE(az, 0.0);
        EXPECT_LT(az, 2.0 * kPi);
        cmp.Add("direction_arcsec", SepArcsec(az / kDegToRad, el / kDegToRad, row["az"], row["el"]), row);
        cmp.Add("range_m", (range - row["range"]) * 1000.0, row);
    }
    cmp.Check();
    EXPECT_EQ(ASatLookAngle(2451545.0, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
}

TEST(ASatGeometry, SiderealAngleAndTheEquatorialPoint) {
    // GMST at 2000 January 1, 12 h UT: 18h 41m 50.54841s (IAU 1982).
    EXPECT_NEAR(kvx::asat::SiderealAngle(2451545.0) / kDegToRad, 280.46061837504, 1e-8);
    // The point at latitude 0, longitude 0, height 0 lies on the x axis
    // turned by the sidereal angle: (6378.137, 0, 0) at angle 0.
    const double jd = 2460311.3;
    const double theta = kvx::asat::SiderealAngle(jd);
    const Lla origin{0.0, 0.0, 0.0};
    double xyz[3];
    ASatLlaToXyz(jd, &origin, xyz);
    EXPECT_NEAR(xyz[0], 6378.137 * std::cos(theta), 1e-9);
    EXPECT_NEAR(xyz[1], 6378.137 * std::sin(theta), 1e-9);
    EXPECT_EQ(xyz[2], 0.0);
    // The Earth's centre and a point over the pole.
    const double centre[3] = {0, 0, 0}, pole[3] = {0, 0, 7000.0};
    Lla c, p;
    ASatXyzToLla(jd, centre, &c);
    EXPECT_EQ(c.height, -6378137.0);
    ASatXyzToLla(jd, pole, &p);
    EXPECT_NEAR(p.latitude, 90.0, 1e-12);
    // polar radius a sqrt(1 - e^2) with the library's e^2
    EXPECT_NEAR(p.height, (7000.0 - 6378.137 * std::sqrt(1.0 - 0.006694384999587949)) * 1000.0, 1e-6);
}

TEST(ASatGeometry, EarthShadowCone) {
    const double earth[3] = {1.0, 0.0, 0.0};
    auto behind = [&](double alongKm, double offKm) {
        const double sat[3] = {1.0 + alongKm / 149597870.0, offKm / 149597870.0, 0.0};
        return ASatEarthShadow(sat, earth);
    };
    EXPECT_EQ(behind(1000.0, 0.0), 1.0);         // on the Sun-Earth line behind the Earth
    EXPECT_EQ(behind(-1000.0, 0.0), 0.0);        // day side
    EXPECT_EQ(behind(1000.0, 6400.0), 0.0);      // beside the Earth's radius
    EXPECT_EQ(behind(1600000.0, 0.0), 0.0);      // beyond the cone's tip
    // Cone radius 1000 km behind: (1 - 1000 / 1.5e6) 6378.137 = 6373.885 km;
    // full shadow inside 99.5 % of it, a linear fade across the rest.
    const double r = (1.0 - 1000.0 / 1500000.0) * 6378.137;
    EXPECT_EQ(behind(1000.0, 0.99 * r), 1.0);
    // (off the axis the satellite is p^2 / 2 AU = 0.135 km further from the
    // Sun, which narrows the cone by 0.6 m: 2e-5 of the fade)
    EXPECT_NEAR(behind(1000.0, 0.9975 * r), 0.5, 1e-4);
    EXPECT_EQ(behind(1000.0, 1.0001 * r), 0.0);
    EXPECT_EQ(ASatEarthShadow(nullptr, earth), 0.0);
}

TEST(ASatGeometry, HorizonAndEarthFixedDirectionsInJ2000) {
    // Looking north at the altitude of the latitude is looking at the mean
    // pole of date, which precession moves away from the J2000.0 pole.
    const Observer obs{35.6895, 139.6917, 40.0};
    const double jd = 2460311.0;
    Ad pole;
    ASatHrzToAd(jd, &obs, 0.0, obs.latitude, &pole);
    ATime t;
    SetATimeJd(jd, 0.0, &obs, &t);
    const double p[3] = {t.precToJ2000[2], t.precToJ2000[5], t.precToJ2000[8]};
    const double got[3] = {std::cos(pole.d * kDegToRad) * std::cos(pole.a * kDegToRad),
                           std::cos(pole.d * kDegToRad) * std::sin(pole.a * kDegToRad), std::sin(pole.d * kDegToRad)};
    EXPECT_LT(SepArcsec(got, p), 0.01);
    EXPECT_GT(90.0 - pole.d, 0.1);  // 24 years of precession

    // A point straight above the observer (on the geocentric radius the
    // function uses) is seen at the zenith.
    const double rho = (0.998327112 + 0.001676399 * std::pow(std::cos(obs.latitude * kDegToRad), 2) +
                        3.519e-6 * std::pow(std::cos(obs.latitude * kDegToRad), 4)) * 6378.140 + 0.040;
    Ad up, zenith;
    ASatLLDToAd(jd, &obs, obs.longitude, obs.latitude, rho + 500.0, &up);
    ASatHrzToAd(jd, &obs, 0.0, 90.0, &zenith);
    EXPECT_LT(SepArcsec(up, zenith), 0.01);

    // A satellite 1000 km above another place, seen from the equator
    // (where the geodetic latitude the function takes as geocentric is
    // exact): the same direction as from its look angles, within the two
    // observer figures (3 m) and mean against apparent sidereal time.
    const Observer equator{0.0, 139.6917, 40.0};
    const Lla target{10.0, 150.0, 1000e3};
    double xyz[3];
    ASatLlaToXyz(jd, &target, xyz);
    const Lla station{equator.latitude, equator.longitude, equator.height};
    double az, el;
    ASatLookAngle(jd, &station, xyz, &az, &el, nullptr);
    Ad viaLook, viaPoint;
    ASatHrzToAd(jd, &equator, az / kDegToRad, el / kDegToRad, &viaLook);
    const double th = kvx::asat::SiderealAngle(jd);
    const double ex = xyz[0] * std::cos(th) + xyz[1] * std::sin(th), ey = -xyz[0] * std::sin(th) + xyz[1] * std::cos(th);
    const double lon = std::atan2(ey, ex) / kDegToRad, lat = std::atan2(xyz[2], std::hypot(ex, ey)) / kDegToRad;
    const double dist = std::sqrt(xyz[0] * xyz[0] + xyz[1] * xyz[1] + xyz[2] * xyz[2]);
    ASatLLDToAd(jd, &equator, lon, lat, dist, &viaPoint);
    EXPECT_LT(SepArcsec(viaLook, viaPoint), 5.0);
}

TEST(ASatGeometry, PropagatorFrameToJ2000) {
    // At J2000.0 precession vanishes: only the equation of the equinoxes
    // turns the vector, adding dpsi cos(eps) to its right ascension.
    const ATime t = AtJde(2451545.0);
    double v[3] = {7000.0, 0.0, 100.0};
    ASSERT_EQ(ASatAppToJ2000(&t, v), v);
    const double eqeq = t.nutation[0] * std::cos(t.eps * kDegToRad);
    EXPECT_NEAR(std::atan2(v[1], v[0]) / kDegToRad, eqeq, 1e-7);
    EXPECT_NEAR(std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]), std::sqrt(7000.0 * 7000.0 + 100.0 * 100.0), 1e-9);
    EXPECT_EQ(ASatAppToJ2000(nullptr, v), nullptr);
}

}  // namespace
