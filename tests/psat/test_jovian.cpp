// Phenomena of Jupiter's satellites: the instant test on built geometries,
// and the event search against PyEphem and a published almanac table.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

#include "kvxlib.h"
#include "psat/jovian.h"
#include "support/angles.h"
#include "support/reference.h"

namespace {

using kvx::test::Comparison;
using kvx::test::kDegToRad;
using kvx::test::Reference;
using kvx::psat::JovianEvent;

constexpr double kJupiterRadiusAu = 0.0004778945047813849;  // 71492 km
constexpr double kQuadrature = 2460345.5;  // 2024 Jan 29: Sun-Jupiter-Earth angle near its largest

// Jupiter's record and a satellite's at planetocentric vector S (AU), placed
// as CalcSatellite would; unit vectors from the observer and the Sun to Jupiter.
struct Built {
    ATime t;
    BodyPos sun, jup, sat;
    double toJupiter[3], fromSun[3];
    Built(double jde, const double S[3]) {
        t = kvx::test::AtJde(jde);
        CalcSun(&t, &sun);
        CalcPlanet(3, &t, &sun, &jup);
        std::memset(&sat, 0, sizeof sat);
        kvx::test::UnitVector(jup.f[0], jup.f[1], toJupiter);
        double v[3];
        for (int k = 0; k < 3; ++k) {
            fromSun[k] = jup.f[10 + k] / jup.f[16];
            v[k] = toJupiter[k] * jup.f[6] + S[k];
            sat.f[10 + k] = S[k];
        }
        sat.f[6] = kvx::test::Norm(v);
        sat.f[0] = std::atan2(v[1], v[0]) / kDegToRad;
        if (sat.f[0] < 0) sat.f[0] += 360.0;
        sat.f[1] = std::asin(v[2] / sat.f[6]) / kDegToRad;
    }
    JoviSatResult Run() const {
        JoviSatResult r;
        std::memset(&r, 0x7f, sizeof r);  // the flags must be cleared first
        JoviSatPhenomena(&t, &jup, &sat, &r);
        return r;
    }
};

int Flags(const JoviSatResult &r) { return r.transit + r.occultation + r.shadowTransit + r.eclipse; }

// At quadrature, where the observer's and the Sun's views of the disc are apart.
TEST(JoviSatPhenomena, PlacesOnTheSightAndSunLines) {
    const double zero[3] = {0, 0, 0};
    const Built probe(kQuadrature, zero);
    const double up[3] = {0.0, 0.0, 1.0};
    struct Case { const char *name; const double *axis; double scale; /* AU along the axis */ int flags[4]; } cases[] = {
        // flags: transit, occultation, shadow transit, eclipse
        {"750000 km behind the centre", probe.toJupiter, 0.005, {0, 1, 0, 0}},
        {"in front: at quadrature its shadow misses", probe.toJupiter, -0.005, {1, 0, 0, 0}},
        {"towards the Sun: a shadow transit", probe.fromSun, -0.003, {0, 0, 1, 0}},
        {"away from the Sun: an eclipse", probe.fromSun, 0.003, {0, 0, 0, 1}},
        {"far off the disc in both views", up, 0.01, {0, 0, 0, 0}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const double S[3] = {c.axis[0] * c.scale, c.axis[1] * c.scale, c.axis[2] * c.scale};
        const JoviSatResult r = Built(kQuadrature, S).Run();
        const int got[4] = {r.transit, r.occultation, r.shadowTransit, r.eclipse};
        EXPECT_EQ(std::vector<int>(got, got + 4), std::vector<int>(c.flags, c.flags + 4));
        if (!c.flags[2]) continue;
        // The shadow falls at the sub-solar point, one equatorial radius towards the
        // Sun, which is within 3.3 deg of the spheroid's equator (the ecliptic).
        const double *p = r.shadowPoint;
        const double n = kvx::test::Norm(p);
        EXPECT_NEAR(n, 1.0, 0.01);
        EXPECT_NEAR(-(p[0] * probe.fromSun[0] + p[1] * probe.fromSun[1] + p[2] * probe.fromSun[2]) / n, 1.0, 1e-4);
    }
    JoviSatResult c;
    std::memset(&c, 1, sizeof c);
    JoviSatPhenomena(&probe.t, nullptr, &probe.jup, &c);
    EXPECT_EQ(Flags(c), 0);
    JoviSatPhenomena(&probe.t, &probe.jup, &probe.jup, nullptr);  // no crash
    // Non-finite records set nothing.
    for (int which = 0; which < 2; ++which) {
        Built b(kQuadrature, zero);
        for (int k = 0; k < 37; ++k) (which ? b.sat : b.jup).f[k] = which ? INFINITY : NAN;
        EXPECT_EQ(Flags(b.Run()), 0) << which;
    }
}

// Nearest found event of each contact's satellite, kind (onlyKind, or the row's when -1) and side: Io and
// Europa compared, Ganymede and Callisto counted (.second of .first within an hour).
std::pair<int, int> CompareContacts(const Reference &ref, Comparison &cmp, const std::vector<JovianEvent> &ours,
                                    int onlyKind) {
    int outer = 0, outerFound = 0;
    for (const auto &row : ref) {
        const int sat = static_cast<int>(row["sat"]), kind = static_cast<int>(row["kind"]);
        if (onlyKind >= 0 && kind != onlyKind) continue;
        double best = 1e9;
        for (const auto &e : ours)
            if (e.satellite == sat && e.kind == kind && e.start == (row["start"] != 0.0))
                best = std::fmin(best, std::fabs(e.jd - row["jd"]) * 86400.0);
        if (sat <= 2) {
            cmp.Add(sat == 1 ? "io_s" : "europa_s", best, row);
        } else {
            ++outer;
            outerFound += best < 3600.0;
        }
    }
    cmp.Check();
    return {outer, outerFound};
}

std::vector<JovianEvent> Search(const std::vector<std::pair<double, double>> &ranges) {
    std::vector<JovianEvent> ours;
    for (const auto &[from, to] : ranges) {
        JovianEvent buf[400];
        const int n = kvx::psat::FindJovianEvents(from, to, buf, 400);
        EXPECT_TRUE(n > 0 && n < 400) << n;
        ours.insert(ours.end(), buf, buf + n);
    }
    return ours;
}

// Ranges of tests/reference/jovian_events_pyephem.py: occultations against PyEphem's earth_visible
// flag; eclipses against the shadow's geometry (its sun_visible flag switches up to 20 min inside the
// cylinder). The disc is flattened along the ecliptic pole, 2.2 deg from Jupiter's: chords differ by
// seconds to minutes; Ganymede's and Callisto's near the poles can vanish or appear: counted.
TEST(JovianEvents, OccultationsAndEclipsesOverThePyEphemRanges) {
    const auto ours = Search({{2460200.5, 2460215.5}, {2460320.5, 2460335.5}, {2461030.5, 2461040.5}});
    const Reference ref("jovian_events_pyephem.txt", {"jd", "sat", "kind", "start"});
    Comparison cmp({
        {"io_s", 150.0, "chords across the ecliptic-aligned disc, 0.2 radius off Jupiter's equator"},
        {"europa_s", 400.0, "the same at 0.35 radius; Europa crosses 2.4 times slower than Io"},
    });
    const auto [outer, outerFound] = CompareContacts(ref, cmp, ours, kvx::psat::kOccultation);
    EXPECT_GT(outerFound, outer / 2);
    // At each eclipse contact the satellite lies beyond Jupiter, between the
    // polar and the equatorial radius from the Sun-Jupiter line.
    Comparison shadow({{"radius_excess", 0.01, "polar to equatorial radius, plus 1 s of motion (0.00025 radius)"}});
    for (const auto &e : ours) {
        if (e.kind != kvx::psat::kEclipse) continue;
        ATime t;
        SetATimeJd(e.jd, 0.0, nullptr, &t);
        BodyPos sun, jup, sat;
        CalcSun(&t, &sun);
        CalcPlanet(3, &t, &sun, &jup);
        ASSERT_EQ(CalcSatellite(&t, 3, e.satellite, &jup, &sat), 1);
        const double *h = &jup.f[7], *S = &sat.f[10], hn = kvx::test::Norm(h);
        const double su = (S[0] * h[0] + S[1] * h[1] + S[2] * h[2]) / hn;
        const double perp[3] = {S[0] - su * h[0] / hn, S[1] - su * h[1] / hn, S[2] - su * h[2] / hn};
        const double rho = kvx::test::Norm(perp) / kJupiterRadiusAu, polar = 1.0 / 1.071374;
        EXPECT_GT(su, 0.0);
        shadow.Add("radius_excess", rho > 1.0 ? rho - 1.0 : (rho < polar ? polar - rho : 0.0),
                   "jd " + std::to_string(e.jd) + " satellite " + std::to_string(e.satellite));
    }
    shadow.Check();
}

// Every kind of event against IMCCE's predictions for 2016 January 1-10 as
// published by Sky & Telescope (tests/reference/jovian_events_published.py),
// UT to the minute; Ganymede's and Callisto's contacts must all be found.
TEST(JovianEvents, AgreeWithThePublishedTable) {
    const Reference ref("jovian_events_published.txt", {"jd", "sat", "kind", "start"});
    Comparison cmp({
        {"io_s", 180.0, "disc 0.2 radius off Jupiter's equator at Io (150 s), minutes rounded (30 s)"},
        {"europa_s", 430.0, "the same at 0.35 radius for Europa (400 s), minutes rounded (30 s)"},
    });
    const auto [outer, outerFound] = CompareContacts(ref, cmp, Search({{2457388.5, 2457398.6}}), -1);
    EXPECT_EQ(outerFound, outer);
}

TEST(JovianEvents, BadRangesFindNothing) {
    JovianEvent buf[4];
    EXPECT_EQ(kvx::psat::FindJovianEvents(2460200.5, 2460200.5, buf, 4) + kvx::psat::FindJovianEvents(NAN, 2460200.5, buf, 4) +
                  kvx::psat::FindJovianEvents(2460200.5, 2460210.5, nullptr, 4), 0);
    EXPECT_EQ(kvx::psat::FindJovianEvents(2460200.5, 2460210.5, buf, 4), 4);  // a full buffer stops the search
}

}  // namespace
