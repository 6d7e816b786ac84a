// The pass search against Skyfield's find_events and a brute-force scan of
// every second; the bounds on what is written and the visible-pass filter.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "asat/asat_test_util.h"
#include "asat/geometry.h"
#include "asat/sgp4.h"
#include "support/angles.h"
#include "support/reference.h"

namespace {

using namespace kvx::test;

const Lla kPlaces[] = {{35.6895, 139.6917, 40.0}, {64.84, -147.72, 150.0}, {-33.92, 18.42, 1200.0}, {0.5, -78.5, 2800.0}};
constexpr double kSecond = 1.0 / 86400.0;

// Dip of the horizon for the height plus 35'08" of refraction: the grazing limit of a pass is 0.2 degree above -H0.
double H0(double heightM) {
    const double h = heightM / 1000.0, k = 6378.137 / (h + 6378.137);
    return std::atan(std::sqrt(1.0 - k * k) * (h / 6378.137 + 1.0)) * 180.0 / kPi + 0.5855555;
}

std::vector<ASatPassEvent> Passes(double from, double to, const Lla &place, const Elm &elm, int flags = 0,
                                  double minAltitude = -90.0) {
    std::vector<ASatPassEvent> ev(400);
    ev.resize(static_cast<size_t>(ASatRiseSet2(from, to, &place, &elm, minAltitude, flags, ev.data(), 400)));
    return ev;
}

// The event of that kind nearest to jd, or null.
const ASatPassEvent *Nearest(const std::vector<ASatPassEvent> &ev, int kind, double jd) {
    const ASatPassEvent *best = nullptr;
    for (const auto &e : ev)
        if (e.kind == kind && (!best || std::fabs(e.jd - jd) < std::fabs(best->jd - jd))) best = &e;
    return best;
}

TEST(ASatPasses, EventsMatchSkyfieldFindEvents) {
    const auto sets = ReadTleFile("asat_pass_sets.tle");
    const Reference ref("asat_passes_skyfield.txt", {"set", "place", "kind", "jd", "alt"});
    // Skyfield propagates with WGS-72 (metres over two days: milliseconds).
    Comparison cmp({{"rise_set_s", 5.0, "refinement to a 3 s step with six-point interpolation"},
                    {"culmination_s", 5.0, "refinement to a 3 s step with six-point interpolation"},
                    {"culmination_alt_deg", 0.01, "same geometry; WGS-72 against the library's constants"}});
    int matched = 0;
    for (size_t s = 0; s < 3; ++s)
        for (int p = 0; p < 4; ++p) {
            const double from = std::floor(sets[s].epoch) + 0.5, to = from + 2.0;
            const auto ours = Passes(from, to, kPlaces[p], sets[s]);
            const double cut = 0.2 - H0(kPlaces[p].height) + 0.02;
            std::vector<Reference::Row> theirs;
            for (const auto &row : ref)
                if (row["set"] == static_cast<double>(s) && row["place"] == p) theirs.push_back(row);
            // Passes culminating clearly above the grazing limit (rise and set
            // away from the span's ends) are found by the other side.
            for (size_t i = 0; i < theirs.size(); ++i) {
                if (theirs[i]["kind"] != 2 || theirs[i]["alt"] <= cut) continue;
                ++matched;
                for (size_t j : {i - 1, i, i + 1}) {
                    if (j >= theirs.size() || (j != i && theirs[j]["kind"] == 2)) continue;
                    const auto &row = theirs[j];
                    if (j != i && (row["jd"] - from < 60 * kSecond || to - row["jd"] < 60 * kSecond)) continue;
                    const ASatPassEvent *e = Nearest(ours, static_cast<int>(row["kind"]), row["jd"]);
                    ASSERT_NE(e, nullptr) << row.Label();
                    cmp.Add(j == i ? "culmination_s" : "rise_set_s", (e->jd - row["jd"]) * 86400.0, row);
                    if (j == i) cmp.Add("culmination_alt_deg", e->altitude - row["alt"], row);
                }
            }
            for (const auto &e : ours) {
                if (e.kind != 2 || e.altitude <= cut) continue;
                double best = 1e9;
                for (const auto &row : theirs)
                    if (row["kind"] == 2) best = std::min(best, std::fabs(row["jd"] - e.jd) * 86400.0);
                EXPECT_LT(best, 5.0) << "culmination at " << e.jd << " not in the reference";
            }
        }
    EXPECT_GT(matched, 40);
    cmp.Check();
}

// A day's passes scanned every second with the propagator and look angles:
// interpolated ends, highest second, open at a span end.
struct Pass { double rise, set, top; bool openStart, openEnd; };

std::vector<Pass> Scan(const Elm &elm, bool full, const Lla &place, double from) {
    kvx::asat::NearEarth model;
    kvx::asat::InitNearEarth(elm, &model);
    const kvx::asat::Station station = kvx::asat::MakeStation(place);
    const double h0 = H0(place.height);
    auto f = [&](double jd) {
        double r[3], v[3];
        const double t = (jd - elm.epoch) * 1440.0;
        if (!(full ? kvx::asat::PropagateFull(elm, t, r, v) : kvx::asat::PropagateNearEarth(model, t, r, v)))
            return -90.0;
        return kvx::asat::LookAt(jd, station, r, v).elevation * 180.0 / kPi + h0;
    };
    std::vector<Pass> passes;
    double prev = f(from);
    bool up = prev > 0.0;
    Pass cur{from, 0, up ? prev - h0 : -90.0, true, false};
    for (int i = 1; i <= 86400; ++i) {
        const double t = from + i * kSecond, v = f(t);
        if (!up && v > 0.0) cur = Pass{t - kSecond * v / (v - prev), 0, -90, false, false};
        up = up || v > 0.0;
        if (up) cur.top = std::max(cur.top, v - h0);
        if (up && v <= 0.0) {
            cur.set = t - kSecond * v / (v - prev);
            passes.push_back(cur);
            up = false;
        }
        prev = v;
    }
    if (up) passes.push_back(Pass{cur.rise, from + 1.0, cur.top, cur.openStart, true});
    return passes;
}

TEST(ASatPasses, ScannerMissesNoPassOfAOneSecondScan) {
    auto sets = ReadTleFile("asat_pass_sets.tle");
    // and a Molniya orbit with the full model (12 h resonance, e = 0.69)
    sets.push_back(ReadTleFile("asat_near_sets.tle").back());
    int passes = 0;
    for (size_t s : {0, 1, 2, 4})
        for (int p : {0, 1, 3}) {
            SCOPED_TRACE("set " + std::to_string(s) + " place " + std::to_string(p));
            const double from = std::floor(sets[s].epoch) + 0.5, cut = 0.2 - H0(kPlaces[p].height);
            const auto ours = Passes(from, from + 1.0, kPlaces[p], sets[s], s == 4 ? KVX_ASAT_FULL_MODEL : 0);
            const auto brute = Scan(sets[s], s == 4, kPlaces[p], from);
            for (const auto &b : brute) {
                if (b.top <= cut + 0.01) continue;  // grazing passes are left out by rule
                ++passes;
                for (int kind : {1, 3}) {
                    if (kind == 1 ? b.openStart : b.openEnd) continue;
                    const double want = kind == 1 ? b.rise : b.set;
                    const ASatPassEvent *e = Nearest(ours, kind, want);
                    ASSERT_TRUE(e) << "pass at " << b.rise;
                    EXPECT_LT(std::fabs(e->jd - want) * 86400.0, 1.0) << "kind " << kind << " at " << want;
                }
                if (b.openStart || b.openEnd) continue;  // the top may lie outside the span
                // The highest culmination (a long pass may have two), at the zero of the elevation rate, is the
                // top: not below the best second (1e-4 deg for the refinement), not 0.01 deg above it.
                double top = -90.0;
                for (const auto &e : ours)
                    if (e.kind == 2 && e.jd >= b.rise - kSecond && e.jd <= b.set + kSecond) top = std::max(top, e.altitude);
                EXPECT_GE(top, b.top - 1e-4) << "pass at " << b.rise;
                EXPECT_LT(top - b.top, 0.01) << "pass at " << b.rise;
            }
            // and nothing that the scan does not see
            for (const auto &e : ours) {
                bool seen = e.kind != 2;
                for (const auto &b : brute) seen = seen || (e.jd >= b.rise - kSecond && e.jd <= b.set + kSecond);
                EXPECT_TRUE(seen) << "culmination at " << e.jd;
            }
        }
    EXPECT_GT(passes, 15);
}

TEST(ASatPasses, BoundsVisibilityAndInvalidElements) {
    const auto sets = ReadTleFile("asat_pass_sets.tle");
    const Elm &iss = sets[0];
    const double from = std::floor(iss.epoch) + 0.5, to = from + 3.0;
    const auto all = Passes(from, to, kPlaces[0], iss);
    ASSERT_GT(all.size(), 12u);
    for (size_t i = 0; i < all.size(); ++i)
        EXPECT_TRUE(all[i].jd >= from && all[i].jd < to && (i == 0 || all[i - 1].jd < all[i].jd)) << all[i].jd;
    // maxCount bounds the records written: the first ones.
    ASatPassEvent guard[6];
    guard[5].kind = 77;
    EXPECT_EQ(ASatRiseSet(from, to, &kPlaces[0], &iss, -90.0, guard, 5), 5);
    EXPECT_EQ(guard[5].kind, 77);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(guard[i].jd, all[static_cast<size_t>(i)].jd);
    // A minimum culmination altitude keeps only the higher passes.
    const auto high = Passes(from, to, kPlaces[0], iss, 0, 30.0);
    EXPECT_GT(high.size(), 0u);
    for (const auto &e : high) EXPECT_TRUE(e.kind != 2 || e.altitude > 30.0) << e.jd;
    // Visible passes are some of all the passes.
    const auto vis = Passes(from, to, kPlaces[0], iss, KVX_ASAT_VISIBLE);
    EXPECT_TRUE(!vis.empty() && vis.size() < all.size()) << vis.size();
    for (const auto &e : vis) EXPECT_NE(Nearest(all, e.kind, e.jd), nullptr);
    // The 1980 set's blank launch year reads as 2000: no pass before.
    const Elm &old = sets[3];
    EXPECT_EQ(ASatRiseSet(old.epoch, old.epoch + 1.0, &kPlaces[0], &old, -90.0, guard, 5), 0);
    EXPECT_EQ(ASatRiseSet(from, to, nullptr, &iss, -90.0, guard, 5) + ASatRiseSet(to, from, &kPlaces[0], &iss, -90.0, guard, 5) +
                  ASatRiseSet(from, to, &kPlaces[0], &iss, -90.0, guard, 0) +
                  ASatRiseSet(NAN, to, &kPlaces[0], &iss, -90.0, guard, 5), 0);
}

}  // namespace
