// The start and end times of the phenomena of Jupiter's four Galilean
// satellites over a date range (header only: built on the exported
// functions, for the library's tests and the kvx command alike).
#pragma once

#include <cmath>

#include "kvxlib.h"

namespace kvx::psat {

enum JovianEventKind { kTransit = 0, kOccultation = 1, kShadowTransit = 2, kEclipse = 3 };

struct JovianEvent {
    double jd;  // universal time, to one second
    int satellite;  // 1 Io .. 4 Callisto
    JovianEventKind kind;
    bool start;  // true: the phenomenon begins; false: it ends
};

// Longest range searched in one call, days.
inline constexpr double kMaxSearchDays = 400.0;
// Sampling step: shorter than the briefest phenomenon worth listing
// (grazing ones shorter than this can be missed), days.
inline constexpr double kSearchStep = 10.0 / 1440.0;
inline constexpr double kSecond = 1.0 / 86400.0;

// The four flags of the four Galilean satellites at universal time jd, as
// bits (satellite s, kind k at bit 4 s + k). Returns -1 when a position
// failed.
inline int PhenomenaBits(double jd) {
    ATime t;
    SetATimeJd(jd, 0.0, nullptr, &t);
    BodyPos sun, jup, sat;
    CalcSun(&t, &sun);
    CalcPlanet(3, &t, &sun, &jup);
    int bits = 0;
    for (int s = 0; s < 4; ++s) {
        if (!CalcSatellite(&t, 3, s + 1, &jup, &sat)) return -1;
        JoviSatResult r;
        JoviSatPhenomena(&t, &jup, &sat, &r);
        const int flags[4] = {r.transit, r.occultation, r.shadowTransit, r.eclipse};
        for (int k = 0; k < 4; ++k)
            if (flags[k]) bits |= 1 << (4 * s + k);
    }
    return bits;
}

// Every start and end of a transit, occultation, shadow transit or eclipse
// of Io..Callisto between universal-time Julian dates jd0 and jd1 (at most
// kMaxSearchDays), geocentric, found by sampling JoviSatPhenomena every
// kSearchStep and bisecting each change to one second. Writes at most max
// events in time order; returns their number. Uses only the library's
// exported functions, so the command line shares it.
inline int FindJovianEvents(double jd0, double jd1, JovianEvent *out, int max) {
    if (!out || max <= 0 || !std::isfinite(jd0) || !std::isfinite(jd1) || !(jd1 > jd0)) return 0;
    if (jd1 - jd0 > kMaxSearchDays) jd1 = jd0 + kMaxSearchDays;
    int n = 0;
    int prev = PhenomenaBits(jd0);
    if (prev < 0) return 0;
    const long steps = static_cast<long>(std::ceil((jd1 - jd0) / kSearchStep));
    for (long i = 1; i <= steps && n < max; ++i) {
        const double a = jd0 + (i - 1) * kSearchStep;
        const double b = std::fmin(jd0 + i * kSearchStep, jd1);
        const int cur = PhenomenaBits(b);
        if (cur < 0) return n;
        const int changed = cur ^ prev;
        for (int bit = 0; bit < 16 && n < max; ++bit) {
            if (!(changed & (1 << bit))) continue;
            // Bisection to one second on this flag alone.
            double lo = a, hi = b;
            const int before = prev & (1 << bit);
            for (int it = 0; it < 40 && hi - lo > kSecond; ++it) {
                const double mid = 0.5 * (lo + hi);
                const int m = PhenomenaBits(mid);
                if (m < 0) break;
                if ((m & (1 << bit)) == before) lo = mid;
                else hi = mid;
            }
            JovianEvent &e = out[n++];
            e.jd = 0.5 * (lo + hi);
            e.satellite = bit / 4 + 1;
            e.kind = static_cast<JovianEventKind>(bit % 4);
            e.start = before == 0;
        }
        prev = cur;
    }
    // In time order (events of one step were found flag by flag).
    for (int i = 1; i < n; ++i)
        for (int j = i; j > 0 && out[j].jd < out[j - 1].jd; --j) {
            const JovianEvent tmp = out[j];
            out[j] = out[j - 1];
            out[j - 1] = tmp;
        }
    return n;
}

}  // namespace kvx::psat
