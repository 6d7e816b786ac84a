// The time-and-observer record: the setters and their fill, sidereal time
// against ERFA's gmst82, the observer vector against ERFA's gd2gce, and the
// inverse conversion.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>

#include "kvxlib.h"
#include "test_support.h"
#include "time/delta_t.h"

namespace {

constexpr double kRad = 3.141592653589793 / 180.0;
constexpr double kMetresPerAu = 149597870000.0;
constexpr double kNutationTruncation = 9.0 / 3600.0 / 1000.0;  // degrees: 9 mas
// Sidereal time is summed in seconds of 3.16e9 per century and reduced from
// ~1e7 degrees: rounding of ~1e-8 degree over 1600-2400.
constexpr double kLstRounding = 5e-8;  // degrees

double AngleDiff(double a, double b) {
    double d = std::fabs(a - b);
    return d > 180.0 ? 360.0 - d : d;
}

double Distance(const double a[3], const double b[3]) {
    return std::sqrt((a[0] - b[0]) * (a[0] - b[0]) + (a[1] - b[1]) * (a[1] - b[1]) + (a[2] - b[2]) * (a[2] - b[2]));
}

TEST(ATimeFill, EveryFieldComesFromItsSourceAtTheRightTimeScale) {
    kvx::deltat::Release();
    const ADate date{2024, 3, 20, 12, 6, 30.25, 9.0};
    const Observer obs{35.6895, 139.6917, 40.0};
    ATime a;
    std::memset(&a, 0x5a, sizeof a);
    SetATimeDate(&date, &obs, &a);
    EXPECT_EQ(a.year, 2024);
    EXPECT_EQ(a.minute, 6);
    EXPECT_EQ(a.second, 30.25);
    EXPECT_EQ(a.tz, 9.0);
    EXPECT_EQ(a.obsLatitude, 35.6895);
    EXPECT_EQ(a.obsLongitude, 139.6917);
    EXPECT_EQ(a.obsHeight, 40.0);
    EXPECT_EQ(a.jd, GetJd(&date));
    EXPECT_EQ(a.jde, UtToDt(a.jd));
    EXPECT_NEAR((a.jde - a.jd) * 86400.0, 73.9, 0.1);  // Espenak-Meeus for 2024
    EXPECT_EQ(a.t, GetT(a.jde));
    EXPECT_EQ(a.t2, GetT2(a.jde));
    EXPECT_EQ(a.eps, GetEp(a.jde));
    double nut[2];
    GetNutationParam(a.jde, nut);
    EXPECT_EQ(a.nutation[0], nut[0]);
    EXPECT_EQ(a.nutation[1], nut[1]);
    EXPECT_EQ(a.epsTrue, a.eps + nut[1]);
    // Sidereal time from universal time, with the observer's longitude.
    EXPECT_EQ(a.lst, GetLst(a.jd, obs.longitude));
    double m[9], inv[9];
    GetNutationMtx(nut, a.eps, m);
    GetInvMatrix(m, inv);
    RotateX(a.eps, m);
    EXPECT_EQ(std::memcmp(a.eqToEcl, m, sizeof m), 0);
    RotateX(-a.eps, m);
    EXPECT_EQ(std::memcmp(a.eclToEq, m, sizeof m), 0);
    GetNutationMtx(nut, a.eps, m);
    EXPECT_EQ(std::memcmp(a.nutMtx, m, sizeof m), 0);
    EXPECT_EQ(std::memcmp(a.nutInvMtx, inv, sizeof inv), 0);
    GetPrecMtx(a.jde, 2451545.0, m);
    EXPECT_EQ(std::memcmp(a.precToJ2000, m, sizeof m), 0);
    GetPrecMtx(2451545.0, a.jde, m);
    EXPECT_EQ(std::memcmp(a.precFromJ2000, m, sizeof m), 0);
    // The observer's vector is taken at universal time.
    double pos[3];
    GetTopocenter(&obs, a.jd, pos);
    EXPECT_EQ(std::memcmp(a.obsPos, pos, sizeof pos), 0);
    EXPECT_NEAR(std::sqrt(pos[0] * pos[0] + pos[1] * pos[1] + pos[2] * pos[2]) * 149597870.0, 6371.0, 10.0);
}

// The observer's vector of every setter is GetTopocenter at the record's
// universal time to the bit, also when the caller's Delta T differs from the
// library's (SetATimeJd2), over dates from -2000 to +4000 and all latitudes.
TEST(ATimeFill, ObserverVectorIsGetTopocenterForEverySetter) {
    for (int k = 0; k < 300; ++k) {
        const double jd = 990557.5 + k * 7302.41;
        const Observer obs{-89.5 + (k * 37 % 180), -179.0 + (k * 53 % 359), -400.0 + k * 13.0};
        double want[3];
        GetTopocenter(&obs, jd, want);
        ATime a{}, b{};
        SetATimeJd(jd, 9.0, &obs, &a);
        SetATimeJd2(jd, 1000.0 + k, -5.0, &obs, &b);
        ASSERT_EQ(std::memcmp(a.obsPos, want, sizeof want), 0) << jd;
        ASSERT_EQ(std::memcmp(b.obsPos, want, sizeof want), 0) << jd;
        ADate d{};
        JdToDate2(jd, &d);
        ATime c{};
        SetATimeDate(&d, &obs, &c);
        GetTopocenter(&obs, c.jd, want);
        ASSERT_EQ(std::memcmp(c.obsPos, want, sizeof want), 0) << jd;
    }
}

TEST(ATimeFill, NullObserverIsTheCentreOfTheEarth) {
    ATime a;
    std::memset(&a, 0x5a, sizeof a);
    SetATimeJd(2460000.25, 0.0, nullptr, &a);
    EXPECT_EQ(a.obsLatitude, 0.0);
    EXPECT_EQ(a.obsLongitude, 0.0);
    EXPECT_EQ(a.obsHeight, -6378137.0);
    EXPECT_EQ(a.obsPos[0], 0.0);
    EXPECT_EQ(a.obsPos[1], 0.0);
    EXPECT_EQ(a.obsPos[2], 0.0);
    EXPECT_EQ(a.lst, GetLst(a.jd, 0.0));
    const ADate date{2023, 2, 24, 18, 0, 0.0, 0.0};
    SetATimeDate(&date, nullptr, &a);
    EXPECT_EQ(a.lst, GetLst(a.jd, 0.0));
    // Null records do nothing.
    SetATimeDate(nullptr, nullptr, &a);
    SetATimeDate(&date, nullptr, nullptr);
    SetATimeJd(2451545.0, 0.0, nullptr, nullptr);
    SetATimeJd2(2451545.0, 0.0, 0.0, nullptr, nullptr);
}

TEST(ATimeFill, JulianDateSettersWriteLocalTime) {
    ATime a;
    SetATimeJd(2451545.0, 9.0, nullptr, &a);
    EXPECT_EQ(a.year, 2000);
    EXPECT_EQ(a.month, 1);
    EXPECT_EQ(a.day, 1);
    EXPECT_EQ(a.hour, 21);
    EXPECT_EQ(a.minute, 0);
    EXPECT_NEAR(a.second, 0.0, 1e-4);
    EXPECT_EQ(a.tz, 9.0);
    EXPECT_EQ(a.jd, 2451545.0);
    EXPECT_EQ(a.jde, UtToDt(2451545.0));

    SetATimeJd2(2451545.0, 0.0, -6.0, nullptr, &a);
    EXPECT_EQ(a.jde, a.jd);
    EXPECT_EQ(a.day, 1);
    EXPECT_EQ(a.hour, 6);
    SetATimeJd2(2451545.0, 64.184, 0.0, nullptr, &a);
    EXPECT_EQ(a.jde, 2451545.0 + 64.184 / 86400.0);
    // SetATimeDate of the date SetATimeJd wrote gives the same record.
    ATime b;
    SetATimeJd(2460123.40625, 5.5, nullptr, &a);
    const ADate local{a.year, a.month, a.day, a.hour, a.minute, a.second, a.tz};
    SetATimeDate(&local, nullptr, &b);
    EXPECT_NEAR(b.jd, a.jd, 1e-9);
    EXPECT_NEAR(b.lst, a.lst, 1e-6);
}

TEST(SiderealTime, Gmst82PlusEquationOfTheEquinoxesOfErfa) {
    const auto rows = kvx::test::ReadRows(kvx::test::ReferencePath("sidereal_gmst82.csv"));
    ASSERT_GT(rows.size(), 300u);
    double worst2 = 0.0, worst = 0.0;
    for (const auto &r : rows) {
        // GetLst2 with ERFA's inputs: the same expression; rounding of
        // 3.16e9 s per century times T up to 4 is ~1e-8 degree.
        const double lst2 = GetLst2(r[0], r[1], r[2], r[3]);
        EXPECT_LT(AngleDiff(lst2, r[4]), kLstRounding) << "jd " << r[0];
        worst2 = std::fmax(worst2, AngleDiff(lst2, r[4]));
        // GetLst with the library's own Delta T and truncated nutation.
        const double lst = GetLst(r[0], r[3]);
        EXPECT_LT(AngleDiff(lst, r[4]), kNutationTruncation + kLstRounding) << "jd " << r[0];
        worst = std::fmax(worst, AngleDiff(lst, r[4]));
    }
    std::printf("[ measured ] GetLst2 vs gmst82 + eqeq: max %.3g deg (%.3g s); GetLst: max %.3g deg (%.3g mas)\n",
                worst2, worst2 * 240.0, worst, worst * 3.6e6);
}

TEST(SiderealTime, DocumentedValues) {
    EXPECT_NEAR(GetLst2(2451545.0, 23.44, 0.0, 0.0), 280.46061837504, 1e-9);
    // Longitude adds directly; the equation of the equinoxes is dpsi cos(eps).
    EXPECT_NEAR(GetLst2(2451545.0, 23.44, 0.0, 100.0), 20.46061837504, 1e-9);
    EXPECT_NEAR(GetLst2(2451545.0, 60.0, 0.002, 0.0), 280.46061837504 + 0.001, 1e-9);
    for (double jd : {2299160.5, 2451545.3, 2500000.9}) {
        const double l = GetLst(jd, -75.0);
        EXPECT_GE(l, 0.0);
        EXPECT_LT(l, 360.0);
    }
}

TEST(ObserverVector, Gd2gceOfErfaTurnedBySiderealTimeAndPrecessed) {
    const auto rows = kvx::test::ReadRows(kvx::test::ReferencePath("topocentre_gd2gce.csv"));
    ASSERT_GT(rows.size(), 250u);
    double worstTheta = 0.0, worst = 0.0;
    for (const auto &r : rows) {
        const Observer o{r[0], r[1], r[2]};
        const double ref[3] = {r[5], r[6], r[7]};
        // With ERFA's sidereal angle: the ellipsoid and the precession.
        double x[3];
        ObsToPcEqtXyz(&o, r[3], r[4], 1.0 / 298.257222101, 6378.137, x);
        const double dTheta = Distance(x, ref) * kMetresPerAu;
        EXPECT_LT(dTheta, 1e-5) << "row lat " << r[0];
        worstTheta = std::fmax(worstTheta, dTheta);
        // With the library's own apparent sidereal time: the truncated
        // nutation turns the equatorial component.
        double g[3];
        GetTopocenter(&o, r[3], g);
        const double rxy = std::hypot(ref[0], ref[1]) * kMetresPerAu;
        const double d = Distance(g, ref) * kMetresPerAu;
        EXPECT_LT(d, rxy * kNutationTruncation * kRad + 1e-5) << "row lat " << r[0];
        worst = std::fmax(worst, d);
        // The same on the Earth, with the Greenwich angle taken directly
        // rather than as local minus longitude (rounding of the 1e7-degree
        // sidereal angle, see the sidereal-time test).
        double e[3];
        ObsToGcEqtXyz(&o, r[3], e);
        EXPECT_LT(Distance(e, g) * kMetresPerAu, rxy * kLstRounding * kRad + 1e-6);
    }
    std::printf("[ measured ] observer vs gd2gce: %.3g m with ERFA's sidereal angle, %.3g m with GetTopocenter\n",
                worstTheta, worst);
    double out[3] = {1, 1, 1};
    GetTopocenter(nullptr, 2451545.0, out);
    EXPECT_EQ(out[0], 0.0);
    EXPECT_EQ(out[2], 0.0);
    out[1] = 1.0;
    ObsToPcEqtXyz(nullptr, 2451545.0, 0.0, 0.0, 1.0, out);
    EXPECT_EQ(out[1], 0.0);
}

TEST(ObserverVector, InverseRecoversTheObserverToAboutAMetre) {
    // The forward conversion ends on the mean equator of J2000.0 while the
    // inverse starts from the reference frame (frame bias, ~1e-7 rad), so a
    // round trip is good to about the bias times the radius.
    const double jds[] = {2451545.0, 2460000.3, 2415020.7, 2488070.1};
    double worst = 0.0;
    int k = 0;
    for (double lat = -90.0; lat <= 90.0; lat += 7.5) {
        for (double h : {-6000.0, 0.0, 1234.5, 35786.0, 100000.0}) {
            const Observer o{lat, -179.0 + 37.0 * (k % 10), h};
            const double jd = jds[k++ % 4];
            double x[3];
            ObsToGcEqtXyz(&o, jd, x);
            Observer back{};
            GcEqtXyzToObs(x, jd, &back);
            const double r = 6378137.0 + h;
            const double dLat = (back.latitude - lat) * kRad * r;
            const double dLon = AngleDiff(back.longitude, o.longitude < 0 ? o.longitude + 360.0 : o.longitude) * kRad *
                                r * std::cos(lat * kRad);
            const double dH = back.height - h;
            const double err = std::sqrt(dLat * dLat + dLon * dLon + dH * dH);
            EXPECT_LT(err, 1.2e-7 * r) << "lat " << lat << " h " << h;
            EXPECT_GE(back.longitude, 0.0);
            EXPECT_LT(back.longitude, 360.0);
            worst = std::fmax(worst, err);
        }
    }
    std::printf("[ measured ] GcEqtXyzToObs(ObsToGcEqtXyz(x)): max %.3g m\n", worst);
    // On another body: Mars-like ellipsoid with a given rotation angle.
    const Observer o{-22.5, 137.4, 2500.0};
    double x[3];
    ObsToPcEqtXyz(&o, 2451545.0, 123.0, 0.00589, 3396.19, x);
    Observer back{};
    PcEqtXyzToObs(x, 2451545.0, 123.0, 0.00589, 3396.19, &back);
    EXPECT_NEAR(back.latitude, o.latitude, 1e-5);
    EXPECT_NEAR(back.longitude, o.longitude, 1e-5);
    EXPECT_NEAR(back.height, o.height, 1.0);
}

TEST(ObserverVector, CentreOfTheBody) {
    const double zero[3] = {0.0, 0.0, 0.0};
    Observer o{1, 2, 3};
    GcEqtXyzToObs(zero, 2451545.0, &o);
    EXPECT_EQ(o.latitude, 0.0);
    EXPECT_EQ(o.longitude, 0.0);
    EXPECT_EQ(o.height, -6378137.0);
    const double tiny[3] = {5e-7, 5e-7, 5e-7};  // 130 km from the centre
    PcEqtXyzToObs(tiny, 2451545.0, 0.0, 0.0, 1737.4, &o);
    EXPECT_EQ(o.height, -1737400.0);
    GcEqtXyzToObs(nullptr, 2451545.0, &o);
    GcEqtXyzToObs(zero, 2451545.0, nullptr);
}

}  // namespace
