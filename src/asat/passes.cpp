// Passes of an artificial satellite over an observer: rise, culmination
// and set found by a scan in whole minutes, refined by repeated sampling
// with Lagrange interpolation.
//
// The scan never steps over a pass: at each sample the satellite's
// geocentric angle from the observer, psi, is compared with the largest
// angle psiMax at which it can stand above the horizon threshold (from its
// apogee radius); since psi changes at most at the satellite's angular
// rate at perigee plus the Earth's rotation, the next sample may be taken
// (psi - psiMax) / rate later: one to ten minutes. Near the observer every
// minute is sampled, and each pair of consecutive samples is examined for
// a threshold crossing (rise or set) and for a change of sign of the
// elevation rate (culmination). A pass too short to put a sample above the
// threshold still has its culmination between two samples; its rise and
// set are then searched on either side of it.
#include <algorithm>
#include <cmath>

#include "asat/geometry.h"
#include "asat/sgp4.h"
#include "kvxlib.h"
#include "math/constants.h"

namespace kvx::asat {

namespace {

constexpr double kFine = 0.0006944444444444445;   // one minute, days
constexpr double kCoarse = 0.006944444444444445;  // ten minutes, days
constexpr double kThreeSeconds = 3.472222222222222e-5;
constexpr double kMaxSpanDays = 60.0;
constexpr double kRadiusKm = 6378.137;

struct Sample {
    bool valid;
    double f;     // altitude above the threshold, degrees
    double rate;  // elevation rate, degrees per minute
    double psi;   // geocentric angle observer - satellite, radians
};

struct Context {
    const Elm *elm;
    bool full;  // the complete model of the 2006 revision, no lifetime test
    NearEarth model;
    Station station;
    Lla place;
    double h0;
    double obsUnit[3];  // the observer's geocentric direction in Earth-fixed axes
    double psiMax, psiRate;  // radians, radians per day
};

bool State(const Context &c, double jd, double r[3], double v[3]) {
    if (c.full) return PropagateFull(*c.elm, (jd - c.elm->epoch) * 1440.0, r, v);
    if (!ASatIsElmValid(jd, c.elm)) return false;
    return PropagateNearEarth(c.model, (jd - c.elm->epoch) * 1440.0, r, v);
}

Sample Evaluate(const Context &c, double jd) {
    Sample s{false, 0.0, 0.0, 0.0};
    double r[3], v[3];
    if (!State(c, jd, r, v)) return s;
    const Look l = LookAt(jd, c.station, r, v);
    s.valid = std::isfinite(l.elevation);
    s.f = RadToDeg(l.elevation) + c.h0;
    s.rate = RadToDeg(l.elevationRate) * 60.0;
    // Angle between the observer's and the satellite's geocentric
    // directions, with the observer turned to the inertial axes.
    const double th = SiderealAngle(jd);
    const double ox = c.obsUnit[0] * std::cos(th) - c.obsUnit[1] * std::sin(th);
    const double oy = c.obsUnit[1] * std::cos(th) + c.obsUnit[0] * std::sin(th);
    const double rn = std::sqrt(r[0] * r[0] + r[1] * r[1] + r[2] * r[2]);
    double cp = (ox * r[0] + oy * r[1] + c.obsUnit[2] * r[2]) / rn;
    cp = cp > 1.0 ? 1.0 : cp < -1.0 ? -1.0 : cp;
    s.psi = std::acos(cp);
    return s;
}

// The value whose zero marks an event: the altitude above the threshold
// for rise and set, the elevation rate for the culmination.
double Value(const Sample &s, int kind) { return kind == KVX_ASAT_CULMINATION ? s.rate : s.f; }

// A rise crosses from below to above, a set and a culmination from above
// to below.
bool Crosses(double a, double b, int kind) { return kind == KVX_ASAT_RISE ? (a <= 0.0 && b > 0.0) : (a > 0.0 && b <= 0.0); }

// Refines an event bracketed by [lo, hi]: the step starts as the bracket
// and is divided by five on each pass; six samples 2.5 steps either side
// of the estimate bracket the zero, and the time is interpolated through
// all six. Done when the step is below three seconds or the values are all
// below 0.01, provided the interpolated time lies within its bracket;
// after four passes without that, the event is dropped (false). An
// interpolated time outside its bracket is replaced by the bracket's
// middle, and a window that misses the zero goes back to the last bracket,
// so each window covers a span known to hold the zero.
bool Refine(const Context &c, int kind, double lo, double hi, double *jd) {
    double step = hi - lo;
    double est = 0.5 * (lo + hi);
    for (int pass = 0; pass < 4; ++pass) {
        step /= 5.0;
        double ts[6], gs[6];
        double largest = 0.0;
        for (int i = 0; i < 6; ++i) {
            ts[i] = est + (i - 2.5) * step;
            const Sample s = Evaluate(c, ts[i]);
            if (!s.valid) return false;
            gs[i] = Value(s, kind);
            largest = std::max(largest, std::fabs(gs[i]));
        }
        int j = -1;
        for (int i = 0; i < 5 && j < 0; ++i)
            if (Crosses(gs[i], gs[i + 1], kind)) j = i;
        if (j < 0) {
            est = 0.5 * (lo + hi);
            step = hi - lo;
            continue;
        }
        lo = ts[j];
        hi = ts[j + 1];
        const double t = Lagrange(0.0, 6, gs, ts);
        const bool inside = t >= lo && t <= hi;
        est = inside ? t : 0.5 * (lo + hi);
        if (inside && (step < kThreeSeconds || largest < 0.01)) {
            *jd = est;
            return true;
        }
    }
    return false;
}

// Assembles the records of one pass before they are written, so that a
// grazing pass can be dropped whole and a pass can be tested for
// visibility.
class Collector {
public:
    Collector(double jdStart, double jdEnd, double cut, bool visibleOnly, const Context &c, ASatPassEvent *out,
              int32_t maxCount)
        : jdStart_(jdStart), jdEnd_(jdEnd), cut_(cut), visibleOnly_(visibleOnly), c_(c), out_(out),
          max_(maxCount) {}

    void Add(const ASatPassEvent &e) {
        if (e.kind == KVX_ASAT_RISE) Flush();
        if (e.kind == KVX_ASAT_CULMINATION && n_ > 0 && pending_[n_ - 1].kind != KVX_ASAT_RISE) Flush();
        if (e.kind == KVX_ASAT_SET && n_ > 0 && pending_[n_ - 1].kind == KVX_ASAT_SET) Flush();
        pending_[n_++] = e;
        if (e.kind == KVX_ASAT_SET || n_ == 3) Flush();
    }

    void Flush() {
        const int n = n_;
        n_ = 0;
        if (n == 0) return;
        for (int i = 0; i < n; ++i)
            if (pending_[i].kind == KVX_ASAT_CULMINATION && pending_[i].altitude <= cut_) return;
        if (visibleOnly_ && !Visible(pending_[0].jd, pending_[n - 1].jd)) return;
        for (int i = 0; i < n; ++i)
            if (pending_[i].jd >= jdStart_ && pending_[i].jd < jdEnd_ && count_ < max_) out_[count_++] = pending_[i];
    }

    bool Full() const { return count_ >= max_; }
    int32_t Count() const { return count_; }

private:
    // Sunlit satellite under a sky darker than civil twilight, at the
    // pass's ends or at a whole minute between them.
    bool Visible(double from, double to) const {
        const int steps = static_cast<int>(std::min(60.0, std::floor((to - from) / kFine)));
        for (int i = 0; i <= steps + 1; ++i) {
            const double jd = i <= steps ? from + i * kFine : to;
            double r[3], v[3];
            if (!State(c_, jd, r, v)) continue;
            const Observer obs{c_.place.latitude, c_.place.longitude, c_.place.height};
            ATime t;
            SetATimeJd(jd, 0.0, &obs, &t);
            BodyPos sun;
            CalcSun(&t, &sun);
            const Ad eq{sun.f[2], sun.f[3]};
            Ad hz;
            Coordinates(&t, 6, &eq, 1, &hz);
            if (!(hz.d < -6.0)) continue;
            ASatAppToJ2000(&t, r);
            const double earth[3] = {sun.f[7], sun.f[8], sun.f[9]};
            const double sat[3] = {earth[0] + r[0] / kKmPerAu, earth[1] + r[1] / kKmPerAu, earth[2] + r[2] / kKmPerAu};
            if (ASatEarthShadow(sat, earth) < 1.0) return true;
        }
        return false;
    }

    double jdStart_, jdEnd_, cut_;
    bool visibleOnly_;
    const Context &c_;
    ASatPassEvent *out_;
    int32_t max_;
    int32_t count_ = 0;
    ASatPassEvent pending_[3];
    int n_ = 0;
};

void Emit(const Context &c, int kind, double jd, ASatPassEvent *list, int *n) {
    const Sample s = Evaluate(c, jd);
    if (!s.valid) return;
    list[(*n)++] = ASatPassEvent{kind, jd, s.f - c.h0};
}

// Events between two consecutive samples a (at ta) and b (at tb).
void Examine(const Context &c, double ta, const Sample &a, double tb, const Sample &b, Collector *out) {
    ASatPassEvent found[4];
    int n = 0;
    double t;
    if (a.f <= 0.0 && b.f > 0.0 && Refine(c, KVX_ASAT_RISE, ta, tb, &t)) Emit(c, KVX_ASAT_RISE, t, found, &n);
    if (a.f > 0.0 && b.f <= 0.0 && Refine(c, KVX_ASAT_SET, ta, tb, &t)) Emit(c, KVX_ASAT_SET, t, found, &n);
    if (a.rate > 0.0 && b.rate <= 0.0 && Refine(c, KVX_ASAT_CULMINATION, ta, tb, &t)) {
        const Sample top = Evaluate(c, t);
        if (top.valid && (a.f > 0.0 || b.f > 0.0 || top.f > 0.0)) {
            found[n++] = ASatPassEvent{KVX_ASAT_CULMINATION, t, top.f - c.h0};
            // A pass shorter than the sampling: both ends lie between the
            // samples.
            double tr, ts;
            if (a.f <= 0.0 && b.f <= 0.0 && top.f > 0.0) {
                if (Refine(c, KVX_ASAT_RISE, ta, t, &tr)) Emit(c, KVX_ASAT_RISE, tr, found, &n);
                if (Refine(c, KVX_ASAT_SET, t, tb, &ts)) Emit(c, KVX_ASAT_SET, ts, found, &n);
            }
        }
    }
    for (int i = 1; i < n; ++i)  // at most four records: insertion sort by time
        for (int j = i; j > 0 && found[j].jd < found[j - 1].jd; --j) std::swap(found[j], found[j - 1]);
    for (int i = 0; i < n; ++i) out->Add(found[i]);
}

}  // namespace

int32_t FindPasses(double jdStart, double jdEnd, const Lla &place, const Elm &elm, double minAltitude, int32_t flags,
                   ASatPassEvent *out, int32_t maxCount) {
    const bool visibleOnly = (flags & KVX_ASAT_VISIBLE) != 0;
    if (!(jdEnd > jdStart) || maxCount < 1 || !std::isfinite(jdStart)) return 0;
    if (jdEnd - jdStart > kMaxSpanDays) jdEnd = jdStart + kMaxSpanDays;
    Context c;
    c.elm = &elm;
    c.full = (flags & KVX_ASAT_FULL_MODEL) != 0;
    InitNearEarth(elm, &c.model);
    c.place = place;
    c.station = MakeStation(place);
    // Dip of the horizon for the observer's height plus 35'08" of refraction.
    const double hKm = std::max(0.0, place.height / 1000.0);
    const double k = kRadiusKm / (hKm + kRadiusKm);
    c.h0 = RadToDeg(std::atan(std::sqrt(1.0 - k * k) * (hKm / kRadiusKm + 1.0))) + 0.5855555;
    const double lat = DegToRad(place.latitude), lon = DegToRad(place.longitude);
    c.obsUnit[0] = std::cos(lat) * std::cos(lon);
    c.obsUnit[1] = std::cos(lat) * std::sin(lon);
    c.obsUnit[2] = std::sin(lat);

    // Largest geocentric angle at which the satellite can stand above the
    // threshold: from the apogee radius (with 5 % for the model's own
    // variations), the polar radius, the threshold and one degree for the
    // geodetic-geocentric difference of the zenith.
    const double e = std::fabs(elm.eccentricity) < 1.0 ? std::fabs(elm.eccentricity) : 0.999;
    const double n = std::fabs(elm.meanMotion);
    const double aKm = std::pow(0.07436684757161681 / std::max(n, 1e-9), 2.0 / 3.0) * kRadiusKm;
    const double rMax = aKm * (1.0 + e) * 1.05;
    const double margin = DegToRad(c.h0 + 1.0);
    const double ratio = 6356.0 * std::cos(margin) / rMax;
    c.psiMax = (ratio < 1.0 ? std::acos(ratio) : 0.0) + margin;
    // Angular rate at perigee (rad/min, with 10 % for drag) plus the
    // Earth's rotation, per day.
    const double perigeeRate = n * (1.0 + e) * (1.0 + e) / std::pow(1.0 - e * e, 1.5) * 1.1;
    c.psiRate = (perigeeRate + 0.0043752690880113) * 1440.0;

    const double cut = std::max(0.2 - c.h0, minAltitude);
    Collector collector(jdStart, jdEnd, cut, visibleOnly, c, out, maxCount);
    const double from = jdStart - 2.0 * kCoarse, to = jdEnd + 2.0 * kCoarse;
    const long total = static_cast<long>((to - from) / kFine) + 1;  // at most 60 days of minutes
    long i = 0;
    double ta = from;
    Sample a = Evaluate(c, ta);
    while (i < total && !collector.Full()) {
        long k = 1;
        if (a.valid) {
            const double lead = (a.psi - c.psiMax) / c.psiRate / kFine;  // minutes before it can come near
            k = lead >= 10.0 ? 10 : lead >= 1.0 ? static_cast<long>(lead) : 1;
        }
        i += k;
        const double tb = from + static_cast<double>(i) * kFine;
        const Sample b = Evaluate(c, tb);
        if (a.valid && b.valid) Examine(c, ta, a, tb, b, &collector);
        ta = tb;
        a = b;
    }
    collector.Flush();
    return collector.Count();
}

}  // namespace kvx::asat

extern "C" int32_t ASatRiseSet2(double jdStart, double jdEnd, const Lla *observer, const Elm *elm, double minAltitude,
                                int32_t flags, ASatPassEvent *out, int32_t maxCount) {
    if (!observer || !elm || !out) return 0;
    return kvx::asat::FindPasses(jdStart, jdEnd, *observer, *elm, minAltitude, flags, out, maxCount);
}

extern "C" int32_t ASatRiseSet(double jdStart, double jdEnd, const Lla *observer, const Elm *elm, double minAltitude,
                               ASatPassEvent *out, int32_t maxCount) {
    return ASatRiseSet2(jdStart, jdEnd, observer, elm, minAltitude, 0, out, maxCount);
}
