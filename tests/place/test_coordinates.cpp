// Conversions between the ten coordinate systems against ERFA (make_place_reference.py), and the position angle.

#include <algorithm>

#include "test_support.h"

using namespace kvx::test;

namespace {

// IAU 2006 frame bias, sqrt(16.617^2 + 6.819^2 + 14.6^2) mas.
constexpr double kFrameBiasArcsec = 0.02315;
// IAU 1980 nutation terms below 1 mas, dropped by the series.
constexpr double kNutationTruncation = 0.006;

// Precession to J2000.0 ends on the mean equator, one bias more than the matrix from J2000.0 removes; within a day of
// J2000.0 it is applied twice.
double BiasPerPassage(double jde) { return (std::fabs(jde - kJ2000) < 1.0 ? 2.0 : 1.0) * kFrameBiasArcsec; }

// Aberration on J2000 axes (see test_apparent.cpp).
double AberrationBound(double jde) {
    return 0.03 + 20.5 * 1.02 * std::fabs(jde - kJ2000) / 36525.0 * 5028.796195 / kRadToArcsec;
}

Ad Convert(const ATime &t, int from, Ad in, int to) {
    Ad out{};
    Coordinates(&t, from, &in, to, &out);
    return out;
}

const Reference &Frames() {
    static const Reference ref("place_frames.csv",
                               {"jd", "delta_t", "lat", "lon", "ra", "dec", "mean_ra", "mean_dec", "app_ra",
                                "app_dec", "eclm_lon", "eclm_lat", "ecla_lon", "ecla_lat", "hz_az", "hz_alt",
                                "hza_az", "hza_alt", "b1950_ra", "b1950_dec", "gal_l", "gal_b", "icrs_l", "icrs_b"});
    return ref;
}

ATime FilledTime(const Reference::Row &row) {
    const Observer obs{row["lat"], row["lon"], 0.0};
    ATime t;
    SetATimeJd2(row["jd"], row["delta_t"], 0.0, &obs, &t);
    return t;
}

Ad At(const Reference::Row &row, const char *column) { return Ad{row.From(column)[0], row.From(column)[1]}; }

}  // namespace

// Each system from J2000.0 against ERFA, and every system to every other and back (each passage through a dated or
// B1950.0 hub leaves the frame bias). The horizon's geometry alone on hand-filled records, both ways.
TEST(Coordinates, AgainstErfaAndEveryPairRoundTrips) {
    Comparison cmp({{"mean_of_date", 1e-4, "the same IAU 2006 precession: rounding"},
                    {"mean_ecliptic", 1e-4, "the same IAU 2006 precession: rounding"},
                    {"b1950", 1e-4, "the same IAU 2006 precession: rounding"},
                    {"mean_back_excess", 1e-4, "the frame bias left per passage, see BiasPerPassage"},
                    {"apparent_excess", 0.0, "aberration bound plus nutation truncation"},
                    {"horizontal", 0.01, "same GMST; truncated nutation and eqeq94's complementary terms"},
                    {"galactic", 1e-4, "the same IAU 1958 pole and node: rounding"},
                    {"galactic_icrs", 1.0, "FK4 1958 definition without E-terms vs erfa.icrs2g, 0.3-0.6\""},
                    {"round_trip_excess", 0.0032, "asin near the poles resolves sqrt(2 ulp) = 3 mas"},
                    {"hd2ae_both_ways", 1e-6, "exact rotations: rounding"}});
    for (const auto &row : Frames()) {
        const ATime t = FilledTime(row);
        const Ad in = At(row, "ra");
        cmp.Add("mean_of_date", SepArcsec(Convert(t, 3, in, 5), At(row, "mean_ra")), row);
        cmp.Add("mean_ecliptic", SepArcsec(Convert(t, 3, in, 8), At(row, "eclm_lon")), row);
        cmp.Add("b1950", SepArcsec(Convert(t, 3, in, 4), At(row, "b1950_ra")), row);
        cmp.Add("mean_back_excess",
                std::max(0.0, SepArcsec(Convert(t, 5, At(row, "mean_ra"), 3), in) - BiasPerPassage(t.jde)), row);
        const double apparent = AberrationBound(t.jde) + kNutationTruncation;
        cmp.Add("apparent_excess", std::max(0.0, SepArcsec(Convert(t, 3, in, 6), At(row, "app_ra")) - apparent), row);
        cmp.Add("apparent_excess", std::max(0.0, SepArcsec(Convert(t, 3, in, 9), At(row, "ecla_lon")) - apparent), row);
        cmp.Add("apparent_excess",
                std::max(0.0, SepArcsec(Convert(t, 3, in, 2), At(row, "hza_az")) - apparent - 0.01), row);
        cmp.Add("horizontal", SepArcsec(Convert(t, 3, in, 1), At(row, "hz_az")), row);
        cmp.Add("galactic", SepArcsec(Convert(t, 3, in, 10), At(row, "gal_l")), row);
        cmp.Add("galactic_icrs", SepArcsec(Convert(t, 3, in, 10), At(row, "icrs_l")), row);
        const auto b1950Side = [](int c) { return c == 4 || c == 10 || c == 3 || c == 7; };
        for (int from = 1; from <= 10; ++from)
            for (int to = 1; to <= 10; ++to) {
                if (from == to) continue;
                const Ad back = Convert(t, to, Convert(t, from, in, to), from);
                const int passages = (from != 3 && from != 7) + (to != 3 && to != 7);
                const double bias = b1950Side(from) && b1950Side(to) ? kFrameBiasArcsec : BiasPerPassage(t.jde);
                cmp.Add("round_trip_excess", std::max(0.0, SepArcsec(back, in) - passages * bias), row);
            }
    }
    for (const auto &row : Reference("place_horizontal.csv", {"lst", "lat", "ra", "dec", "az", "alt"})) {
        const ATime t = HandTime(kJ2000, 23.44, 23.44, nullptr, nullptr, row["lst"], row["lat"]);
        cmp.Add("hd2ae_both_ways", SepArcsec(Convert(t, 5, At(row, "ra"), 1), At(row, "az")), row);
        cmp.Add("hd2ae_both_ways", SepArcsec(Convert(t, 1, At(row, "az"), 5), At(row, "ra")), row);
    }
    cmp.Check();
}

// Same system: the input pointer back, the direction copied as it is; unknown codes mean J2000.0 equatorial.
TEST(Coordinates, SameSystemAndUnknownCodes) {
    const ATime t = HandTime(2455000.5, 23.44, 23.44, nullptr, nullptr, 77.0, 40.0);
    const Ad odd{370.0, 95.0}, in{123.4, -21.5};
    Ad out{};
    for (int code = 0; code <= 11; ++code) {
        EXPECT_EQ(Coordinates(&t, code, &odd, code, &out), &odd);
        EXPECT_EQ(std::vector<double>({out.a, out.d}), std::vector<double>({370.0, 95.0}));
    }
    for (int target = 1; target <= 10; ++target) {
        const Ad ref = Convert(t, 3, in, target);
        for (int unknown : {0, 11, -3}) {
            EXPECT_EQ(Convert(t, unknown, in, target).a, ref.a);
            EXPECT_EQ(Convert(t, target, ref, unknown).d, Convert(t, target, ref, 3).d);
        }
    }
}

// The horizon turns of the last record are kept per thread: one with the same sidereal time and another latitude
// must not reuse them, either way (the way back ends in asin near 1: 1e-6 degrees).
TEST(Coordinates, HorizonTurnsPerRecord) {
    const ATime north = HandTime(kJ2000, 23.44, 23.44, nullptr, nullptr, 123.0, 35.6);
    const ATime south = HandTime(kJ2000, 23.44, 23.44, nullptr, nullptr, 123.0, -20.0);
    EXPECT_NEAR(Convert(south, 5, Ad{0.0, 90.0}, 1).d, -20.0, 1e-12);
    EXPECT_NEAR(Convert(north, 1, Ad{180.0, 35.6}, 5).d, 90.0, 1e-6);
    EXPECT_NEAR(Convert(south, 1, Ad{180.0, -20.0}, 5).d, 90.0, 1e-6);
}

TEST(PositionAngle, PaDistToAdInvertsAdToPaDist) {
    const Ad c{10.0, 20.0}, north{10.0, 30.0};
    double pa = 0.0, dist = 0.0, worst = 0.0;
    EXPECT_EQ(AdToPaDist(&c, &north, &pa, &dist), &dist);
    for (int i = 0; i < 500; ++i) {
        const Ad from{std::fmod(i * 73.1, 360.0), -85.0 + std::fmod(i * 7.7, 170.0)};
        const double pa0 = 0.5 + std::fmod(i * 29.3, 359.0), dist0 = 0.01 + std::fmod(i * 3.1, 89.0);
        Ad p;
        PaDistToAd(&from, pa0, dist0, &p);
        AdToPaDist(&from, &p, &pa, &dist);
        worst = std::max({worst, std::fabs(WrapDeg(pa - pa0)), std::fabs(dist - dist0)});
    }
    EXPECT_LT(worst, 1e-9);  // exact spherical formulae: rounding
    // Past the pole the point continues on the other side.
    Ad p;
    const Ad c2{123.0, 80.0};
    PaDistToAd(&c2, 0.0, 20.0, &p);
    EXPECT_LT(SepArcsec(p, Ad{303.0, 80.0}), 3.6e-6);  // 1e-9 degree: rounding
}
