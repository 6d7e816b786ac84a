// The almanac of planetary events: conjunctions with the Sun, oppositions,
// greatest elongations, stationary points, perihelia and aphelia,
// conjunctions in right ascension between planets and with the Moon,
// occultations of planets by the Moon, the Moon's perigees, apogees and
// nodes.
//
// Every quantity is sampled once a day from the library's own geocentric
// apparent places (CalcSun, CalcPlanet, CalcMoon at the Earth's centre);
// a sign change between two samples brackets a root (conjunctions, nodes),
// three samples with the middle one highest or lowest bracket an extremum
// (elongations, stations, distances). Roots are refined by regula falsi
// with the Illinois step, extrema by golden-section search, both to a
// second and capped. Definitions follow the Astronomical Almanac's
// "Phenomena" section (conjunctions and oppositions in apparent ecliptic
// longitude, planetary conjunctions in right ascension) and Meeus,
// Astronomical Algorithms, 2nd ed., ch. 36 and 48 to 50.
#include <algorithm>
#include <cmath>
#include <vector>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/root_find.h"
#include "solar/body/body_slots.h"

namespace {

constexpr int kMoon = -1;
constexpr int kSun = -2;
constexpr int kNone = -100;
constexpr int kPlanets = 8;              // Mercury .. Pluto
constexpr double kTolerance = 1.0 / 86400.0;  // one second
constexpr int kMaxIterations = 80;
constexpr double kMaxSpanDays = 400.0;

struct Place {
    double lon, lat;  // apparent ecliptic of date
    double ra, dec;   // apparent equatorial of date
    double dist;      // AU (the Moon: km)
    double r;         // heliocentric distance (AU; the Moon: 0)
    double elong;     // angular distance from the Sun
    double lonSun;    // the Sun's apparent longitude
    double distSun;   // the Sun's distance (AU)
    double mag;       // visual magnitude (the Moon: 0)
    double radius;    // semi-diameter, degrees
    double parallax;  // equatorial horizontal parallax, degrees
};

double Wrap180(double a) { return a - 360.0 * std::floor((a + 180.0) / 360.0); }

double Separation(double ra1, double dec1, double ra2, double dec2) {
    const Ad a{ra1, dec1}, b{ra2, dec2};
    Dc u, v;
    AdToDc(&a, &u);
    AdToDc(&b, &v);
    Dc c;
    DcOuterProduct(&u, &v, &c);
    return kvx::RadToDeg(std::atan2(DcAbs(&c), DcScalarProduct(&u, &v)));
}

// Geocentric apparent place of a body at the universal-time date jd.
Place PlaceOf(int body, double jd) {
    ATime t;
    SetATimeJd(jd, 0.0, nullptr, &t);
    BodyPos sun{}, b{};
    CalcSun(&t, &sun);
    Place p{};
    namespace ps = kvx::body::planet_slot;
    using namespace kvx::body;
    if (body == kMoon) {
        CalcMoon2(&t, &b);
        p.dist = b.f[kDistance];
        p.radius = kvx::RadToDeg(std::atan(kvx::kMoonRadiusKm / p.dist));
        p.parallax = kvx::RadToDeg(std::asin(kvx::kEarthRadiusKm / p.dist));
    } else {
        CalcPlanet(body, &t, &sun, &b);
        p.dist = b.f[kDistance];
        p.r = b.f[ps::kHelioDistance];
        p.mag = b.f[ps::kMagnitude];
        p.radius = b.f[ps::kDiameter] / 7200.0;
    }
    const Ad eq{b.f[kRaApparent], b.f[kDecApparent]};
    Ad ecl;
    Coordinates(&t, 6, &eq, 9, &ecl);
    const Ad sunEq{sun.f[kRaApparent], sun.f[kDecApparent]};
    Ad sunEcl;
    Coordinates(&t, 6, &sunEq, 9, &sunEcl);
    p.lon = ecl.a;
    // The latitude on the mean ecliptic of date (the ecliptic does not
    // nutate); aberration changes it by a few hundredths of the Moon's.
    p.lat = b.f[kEclLat];
    p.ra = eq.a;
    p.dec = eq.d;
    p.lonSun = sunEcl.a;
    p.distSun = sun.f[kDistance];
    p.elong = Separation(eq.a, eq.d, sunEq.a, sunEq.d);
    return p;
}

// Root of f between a and b (f(a) and f(b) of opposite signs), to a second.
template <class F>
double Root(double a, double b, F &&f) {
    return kvx::IllinoisRoot(a, b, f, kTolerance, kMaxIterations);
}

// Instant of the least value of f in [a, b], to a second.
template <class F>
double Minimum(double a, double b, F &&f) {
    return kvx::GoldenMinimum(a, b, f, kTolerance, kMaxIterations);
}

class Almanac {
public:
    Almanac(double start, double end, uint32_t kinds, int only) : start_(start), end_(end), kinds_(kinds), only_(only) {
        n_ = static_cast<int>(std::ceil(end - start)) + 3;
        for (int b = 0; b < 9; ++b) table_[b].resize(n_);
        for (int i = 0; i < n_; ++i)
            for (int b = 0; b < 9; ++b) table_[b][i] = PlaceOf(b - 1, Day(i));
    }

    std::vector<PlanetEvent> Run() {
        for (int p = 0; p < kPlanets; ++p) {
            if (Wanted(p)) PlanetPhenomena(p);
            for (int q = p + 1; q < kPlanets; ++q)
                if (Wanted(p) || Wanted(q)) PlanetPair(p, q);
            if (Wanted(p) || Wanted(kMoon)) MoonAndPlanet(p);
        }
        if (Wanted(kMoon)) MoonPhenomena();
        std::stable_sort(events_.begin(), events_.end(),
                         [](const PlanetEvent &a, const PlanetEvent &b) { return a.jd < b.jd; });
        return events_;
    }

private:
    double Day(int i) const { return start_ - 1.0 + i; }
    const Place &At(int body, int i) const { return table_[body + 1][i]; }
    bool Wanted(int body) const { return only_ == kNone || only_ == body; }

    void Add(int kind, int body, int other, double jd, double value, double mag) {
        if (jd < start_ || jd >= end_) return;
        if (kinds_ != 0 && !(kinds_ & (1u << kind))) return;
        events_.push_back(PlanetEvent{kind, body, other, jd, value, mag});
    }

    // Sign changes of f(i) between samples, |f| < 90 on both sides (so that
    // a jump through +-180 is not taken for a root): calls on(i) for the
    // interval [i, i + 1].
    template <class F, class On>
    void Crossings(F &&f, On &&on) {
        for (int i = 0; i + 1 < n_; ++i) {
            const double a = f(i), b = f(i + 1);
            if (std::fabs(a) < 90.0 && std::fabs(b) < 90.0 && ((a < 0.0) != (b < 0.0))) on(i);
        }
    }
    // Samples i where g is higher (sign = 1) or lower (sign = -1) than both
    // neighbours.
    template <class G, class On>
    void Extrema(G &&g, On &&on) {
        for (int i = 1; i + 1 < n_; ++i) {
            const double a = g(i - 1), b = g(i), c = g(i + 1);
            if (b > a && b >= c) on(i, 1);
            if (b < a && b <= c) on(i, -1);
        }
    }

    void PlanetPhenomena(int p) {
        const bool inner = p < 2;
        // Conjunction with the Sun and opposition, in apparent longitude.
        for (double target : {0.0, 180.0}) {
            if (inner && target != 0.0) continue;
            auto f = [&](const Place &x) { return Wrap180(x.lon - x.lonSun - target); };
            Crossings([&](int i) { return f(At(p, i)); },
                      [&](int i) {
                          const double jd = Root(Day(i), Day(i + 1), [&](double t) { return f(PlaceOf(p, t)); });
                          const Place x = PlaceOf(p, jd);
                          const int kind = target != 0.0                ? KVX_EVENT_OPPOSITION
                                           : inner && x.dist < x.distSun ? KVX_EVENT_INFERIOR_CONJUNCTION
                                                                         : KVX_EVENT_CONJUNCTION;
                          Add(kind, p, kSun, jd, x.elong, x.mag);
                      });
        }
        // Greatest elongations of Mercury and Venus.
        if (inner)
            Extrema([&](int i) { return At(p, i).elong; },
                    [&](int i, int sign) {
                        if (sign < 0) return;
                        const double jd =
                            Minimum(Day(i - 1), Day(i + 1), [&](double t) { return -PlaceOf(p, t).elong; });
                        const Place x = PlaceOf(p, jd);
                        const bool east = Wrap180(x.lon - x.lonSun) > 0.0;
                        Add(east ? KVX_EVENT_ELONGATION_EAST : KVX_EVENT_ELONGATION_WEST, p, kSun, jd, x.elong, x.mag);
                    });
        // Stationary points: extrema of the apparent longitude, from the
        // signs of the daily steps (the longitude itself wraps at 360).
        for (int i = 1; i + 1 < n_; ++i) {
            const double before = Wrap180(At(p, i).lon - At(p, i - 1).lon);
            const double after = Wrap180(At(p, i + 1).lon - At(p, i).lon);
            const int sign = before > 0.0 && after <= 0.0 ? 1 : before < 0.0 && after >= 0.0 ? -1 : 0;
            if (sign == 0) continue;
            [&](int i, int sign) {
                    const double ref = At(p, i).lon;
                    const double jd = Minimum(Day(i - 1), Day(i + 1),
                                              [&](double t) { return -sign * Wrap180(PlaceOf(p, t).lon - ref); });
                    const Place x = PlaceOf(p, jd);
                    Add(sign > 0 ? KVX_EVENT_STATION_RETROGRADE : KVX_EVENT_STATION_DIRECT, p, kNone, jd, x.lon, x.mag);
            }(i, sign);
        }
        // Perihelion and aphelion.
        Extrema([&](int i) { return At(p, i).r; },
                [&](int i, int sign) {
                    const double jd =
                        Minimum(Day(i - 1), Day(i + 1), [&](double t) { return -sign * PlaceOf(p, t).r; });
                    const Place x = PlaceOf(p, jd);
                    Add(sign > 0 ? KVX_EVENT_APHELION : KVX_EVENT_PERIHELION, p, kNone, jd, x.r, x.mag);
                });
    }

    // Conjunction in right ascension of two planets.
    void PlanetPair(int p, int q) {
        Crossings([&](int i) { return Wrap180(At(p, i).ra - At(q, i).ra); },
                  [&](int i) {
                      const double jd = Root(Day(i), Day(i + 1), [&](double t) {
                          return Wrap180(PlaceOf(p, t).ra - PlaceOf(q, t).ra);
                      });
                      const Place x = PlaceOf(p, jd), y = PlaceOf(q, jd);
                      Add(KVX_EVENT_CONJUNCTION_RA, p, q, jd, x.dec - y.dec, x.mag);
                  });
    }

    // Conjunction in right ascension with the Moon, and an occultation when
    // the least geocentric distance is within the Moon's parallax plus the
    // two semi-diameters (the planet is then hidden somewhere on the Earth).
    void MoonAndPlanet(int p) {
        Crossings([&](int i) { return Wrap180(At(kMoon, i).ra - At(p, i).ra); },
                  [&](int i) {
                      const double jd = Root(Day(i), Day(i + 1), [&](double t) {
                          return Wrap180(PlaceOf(kMoon, t).ra - PlaceOf(p, t).ra);
                      });
                      const Place m = PlaceOf(kMoon, jd), x = PlaceOf(p, jd);
                      Add(KVX_EVENT_MOON_CONJUNCTION, kMoon, p, jd, m.dec - x.dec, x.mag);
                      auto sep = [&](double t) {
                          const Place a = PlaceOf(kMoon, t), b = PlaceOf(p, t);
                          return Separation(a.ra, a.dec, b.ra, b.dec);
                      };
                      const double least = Minimum(jd - 0.25, jd + 0.25, sep);
                      const Place a = PlaceOf(kMoon, least), b = PlaceOf(p, least);
                      const double d = Separation(a.ra, a.dec, b.ra, b.dec);
                      if (d < a.parallax + a.radius + b.radius) Add(KVX_EVENT_OCCULTATION, kMoon, p, least, d, b.mag);
                  });
    }

    void MoonPhenomena() {
        Extrema([&](int i) { return At(kMoon, i).dist; },
                [&](int i, int sign) {
                    const double jd =
                        Minimum(Day(i - 1), Day(i + 1), [&](double t) { return -sign * PlaceOf(kMoon, t).dist; });
                    Add(sign > 0 ? KVX_EVENT_APOGEE : KVX_EVENT_PERIGEE, kMoon, kNone, jd, PlaceOf(kMoon, jd).dist, 0.0);
                });
        Crossings([&](int i) { return At(kMoon, i).lat; },
                  [&](int i) {
                      const double jd = Root(Day(i), Day(i + 1), [&](double t) { return PlaceOf(kMoon, t).lat; });
                      const bool ascending = At(kMoon, i).lat < 0.0;
                      Add(ascending ? KVX_EVENT_ASCENDING_NODE : KVX_EVENT_DESCENDING_NODE, kMoon, kNone, jd,
                          PlaceOf(kMoon, jd).lon, 0.0);
                  });
    }

    double start_, end_;
    uint32_t kinds_;
    int only_;
    int n_;
    std::vector<Place> table_[9];
    std::vector<PlanetEvent> events_;
};

int32_t Write(const std::vector<PlanetEvent> &events, PlanetEvent *out, int32_t max) {
    const int32_t n = static_cast<int32_t>(std::min<std::size_t>(events.size(), static_cast<std::size_t>(max)));
    if (n > 0) std::copy(events.begin(), events.begin() + n, out);
    return n;
}

bool ValidSpan(double start, double end) {
    return std::isfinite(start) && std::isfinite(end) && start > 0.0 && end < 1e8 && end > start &&
           end - start <= kMaxSpanDays;
}

}  // namespace

extern "C" {

KVX_API int32_t GetPlanetEvents(int32_t year, int32_t body, PlanetEvent *out, int32_t max) {
    if (!out || max < 1 || body < kMoon || body >= kPlanets) return 0;
    const double start = CalcJd(year, 1, 1), end = CalcJd(year + 1.0, 1, 1);
    if (!ValidSpan(start, end)) return 0;
    return Write(Almanac(start, end, 0, body).Run(), out, max);
}

KVX_API int32_t GetPlanetEvents2(double jdStart, double jdEnd, uint32_t kinds, PlanetEvent *out, int32_t max) {
    if ((!out && max != 0) || max < 0 || !ValidSpan(jdStart, jdEnd)) return 0;
    const std::vector<PlanetEvent> events = Almanac(jdStart, jdEnd, kinds, kNone).Run();
    Write(events, out, max);
    return static_cast<int32_t>(events.size());
}

}  // extern "C"
