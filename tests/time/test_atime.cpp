// The time-and-observer record; sidereal time and the observer vector
// against ERFA (make_time_reference.py); the inverse conversion.

#include <algorithm>
#include <cstring>

#include "test_support.h"

using namespace kvx::test;

namespace {

constexpr double kMetresPerAu = 149597870000.0;
// IAU 1980 nutation terms below 1 mas, dropped: up to 9 mas in the equation of the equinoxes.
constexpr double kNutationTruncationDeg = 9.0 / 3.6e6;
// Sidereal time summed in seconds and reduced from ~1e7 degrees: ~1e-8 degree over 1600-2400.
constexpr double kLstRoundingDeg = 5e-8;

double Distance(const double a[3], const double b[3]) {
    const double d[3] = {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
    return Norm(d);
}

}  // namespace

TEST(ATimeFill, SettersWriteLocalTimeDeltaTTheObserverAndPrecession) {
    ATime a;
    SetATimeJd(2451545.0, 9.0, nullptr, &a);
    EXPECT_EQ(std::vector<double>({a.year * 1e6 + a.month * 1e4 + a.day * 100 + a.hour, a.tz, a.jde}),
              std::vector<double>({2000010121, 9.0, UtToDt(2451545.0)}));
    SetATimeJd2(2451545.0, 64.184, -6.0, nullptr, &a);  // a null observer is the centre of the Earth
    EXPECT_EQ(std::vector<double>({double(a.hour), a.jde, a.obsHeight, a.obsPos[0]}),
              std::vector<double>({6, 2451545.0 + 64.184 / 86400.0, -6378137.0, 0.0}));
    // With an observer: Delta T of the built-in table (Espenak-Meeus, 73.9 s
    // in 2024) and the observer's vector at universal time, for every setter.
    const ADate date{2024, 3, 20, 12, 6, 30.25, 9.0};
    const Observer obs{35.6895, 139.6917, 40.0};
    SetATimeDate(&date, &obs, &a);
    EXPECT_EQ(a.jd, GetJd(&date));
    EXPECT_NEAR((a.jde - a.jd) * 86400.0, 73.9, 0.1);
    EXPECT_EQ(a.lst, GetLst(a.jd, obs.longitude));
    double want[3];
    GetTopocenter(&obs, a.jd, want);
    EXPECT_EQ(std::memcmp(a.obsPos, want, sizeof want), 0);
    SetATimeJd2(a.jd, 1000.0, -5.0, &obs, &a);
    EXPECT_EQ(std::memcmp(a.obsPos, want, sizeof want), 0);
    // Both matrices, from one evaluation and a table made at first use, are
    // the bits of GetPrecMtx, across the +-30-century clamps and near J2000.0.
    for (double jd : {2451545.0, 2451545.4, 2460000.3, 1000000.5, 1355794.0, 3547296.0, 5e6, -1e6}) {
        ATime t;
        SetATimeJd2(jd, 0.0, 0.0, nullptr, &t);
        double to[9], from[9];
        GetPrecMtx(t.jde, 2451545.0, to);
        GetPrecMtx(2451545.0, t.jde, from);
        EXPECT_EQ(std::memcmp(to, t.precToJ2000, sizeof to), 0) << jd;
        EXPECT_EQ(std::memcmp(from, t.precFromJ2000, sizeof from), 0) << jd;
    }
}

// Sidereal time (gmst82 + eqeq94); the observer (gd2gce) turned by ERFA's
// angle, by the library's sidereal time, and at Greenwich.
TEST(SiderealTime, AndTheObserverVectorAgainstErfa) {
    const Reference lst("sidereal_gmst82.csv", {"jd", "eps", "dpsi", "lon", "lst"});
    const Reference topo("topocentre_gd2gce.csv", {"lat", "lon", "height", "jd", "theta", "x", "y", "z"});
    Comparison cmp({{"lst2_deg", kLstRoundingDeg, "the same IAU 1982 expression: rounding"},
                    {"lst_deg", kNutationTruncationDeg + kLstRoundingDeg, "the library's truncated nutation"},
                    {"erfa_theta_m", 1e-5, "the same ellipsoid and precession: rounding"},
                    {"own_lst_excess_m", 1e-5, "the truncated nutation turns the equatorial component"},
                    {"greenwich_excess_m", 1e-6, "sidereal angle rounding, see kLstRoundingDeg"}});
    for (const auto &row : lst) {
        cmp.Add("lst2_deg", WrapDeg(GetLst2(row["jd"], row["eps"], row["dpsi"], row["lon"]) - row["lst"]), row);
        cmp.Add("lst_deg", WrapDeg(GetLst(row["jd"], row["lon"]) - row["lst"]), row);
    }
    for (const auto &row : topo) {
        const Observer o{row["lat"], row["lon"], row["height"]};
        const double *want = row.From("x");
        const double rxy = std::hypot(want[0], want[1]) * kMetresPerAu;
        double x[3], g[3], e[3];
        ObsToPcEqtXyz(&o, row["jd"], row["theta"], 1.0 / 298.257222101, 6378.137, x);
        cmp.Add("erfa_theta_m", Distance(x, want) * kMetresPerAu, row);
        GetTopocenter(&o, row["jd"], g);
        cmp.Add("own_lst_excess_m",
                std::max(0.0, Distance(g, want) * kMetresPerAu - rxy * kNutationTruncationDeg * kDegToRad), row);
        ObsToGcEqtXyz(&o, row["jd"], e);
        cmp.Add("greenwich_excess_m",
                std::max(0.0, Distance(e, g) * kMetresPerAu - rxy * kLstRoundingDeg * kDegToRad), row);
    }
    cmp.Check();
}

// The fill keeps the last observer's place per thread: observers differing
// in one field only must each get GetTopocenter's bits.
TEST(ObserverVector, KeptPlaceFollowsEveryObserverField) {
    const Observer obs[4] = {{35.0, 139.0, 40.0}, {35.0, 139.0, 41.0}, {35.0, 139.5, 41.0}, {-35.0, 139.5, 41.0}};
    for (int k = 0; k < 8; ++k) {
        const Observer &o = obs[(k * 3) % 4];
        ATime a;
        SetATimeJd(2460000.25 + k, 0.0, &o, &a);
        double want[3];
        GetTopocenter(&o, a.jd, want);
        EXPECT_EQ(std::memcmp(a.obsPos, want, sizeof want), 0) << k;
    }
}

TEST(ObserverVector, InverseRecoversTheObserver) {
    const double jds[] = {2451545.0, 2460000.3, 2415020.7, 2488070.1};
    int k = 0;
    for (double lat = -90.0; lat <= 90.0; lat += 7.5)
        for (double h : {-6000.0, 0.0, 35786.0, 100000.0}) {
            const Observer o{lat, -179.0 + 37.0 * (k % 10), h};
            const double jd = jds[k++ % 4], r = 6378137.0 + h;
            double x[3];
            ObsToGcEqtXyz(&o, jd, x);
            Observer back{};
            GcEqtXyzToObs(x, jd, &back);
            EXPECT_GE(back.longitude, 0.0);
            const double dLat = (back.latitude - lat) * kDegToRad * r;
            const double dLon = WrapDeg(back.longitude - o.longitude) * kDegToRad * r * std::cos(lat * kDegToRad);
            // The forward conversion ends on the mean equator of J2000.0, the
            // inverse starts from the reference frame: the frame bias (~1e-7 rad).
            EXPECT_LT(std::hypot(dLat, dLon, back.height - h), 1.2e-7 * r) << lat << " " << h;
        }
    // On another body: a Mars-like ellipsoid with a given rotation angle.
    const Observer o{-22.5, 137.4, 2500.0};
    double x[3];
    ObsToPcEqtXyz(&o, 2451545.0, 123.0, 0.00589, 3396.19, x);
    Observer back{};
    PcEqtXyzToObs(x, 2451545.0, 123.0, 0.00589, 3396.19, &back);
    const double mPerDeg = 3396190.0 * kDegToRad;  // the inverse iterates to 1e-5 degree (0.6 m) and 1 m in height
    EXPECT_LT(std::hypot((back.latitude - o.latitude) * mPerDeg, (back.longitude - o.longitude) * mPerDeg, back.height - o.height), 1.0);
    // Within 130 km of the centre the answer is the centre.
    const double tiny[3] = {5e-7, 5e-7, 5e-7};
    PcEqtXyzToObs(tiny, 2451545.0, 0.0, 0.0, 1737.4, &back);
    EXPECT_EQ(back.height, -1737400.0);
}
