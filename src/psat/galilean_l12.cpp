// Io, Europa, Ganymede and Callisto by the L1.2 theory (Lainey, Duriez &
// Vienne 2004, "New accurate ephemerides for the Galilean satellites of
// Jupiter. I", A&A 420, 1171-1183), in the truncated series of
// galilean_l12_table.cpp. The full theory is fitted to observations of
// 1891-2003 at the level of tens of kilometres; the truncation keeps the
// terms that matter at about 100 km (a few milliarcseconds at Jupiter's
// opposition distance). Valid roughly 1500-2500.
#include <cmath>

#include "psat/galilean_l12_table.h"
#include "psat/sat_theory.h"

namespace kvx::psat {

namespace {

constexpr double kTwoPi = 2.0 * 3.141592653589793;
constexpr double kL12Epoch = 2433282.5;  // 1950-01-01 0h TT
// Largest shift of the one-pass evaluation (days): the polynomial cos and
// sin below stay below 1e-14 for |frequency x shift| <= 3.56 x 0.05 rad.
constexpr double kMaxShift = 0.05;
// Span of the local model around its instant (days): its neglected
// second-order terms, sum |A| f^2 dt^2 / 2, stay below 2 m there.
constexpr double kLocalSpan = 1.0e-3;

// The theory's frame to the J2000.0 equator.
void ToJ2000(const double v[3], double out[3]) {
    const double *r = kL12ToJ2000;
    out[0] = r[0] * v[0] + r[1] * v[1] + r[2] * v[2];
    out[1] = r[3] * v[0] + r[4] * v[1] + r[5] * v[2];
    out[2] = r[6] * v[0] + r[7] * v[1] + r[8] * v[2];
}

// One term's argument at t (cos c1, sin s1) and at t - shift (c0, s0).
struct Turned {
    double c1, s1, c0, s0;
};

// Many terms of the four satellites share a frequency. Each distinct
// frequency f gets its index once, each term the cosine and sine of its
// phase, so that a term's argument phase + f t is the rotation of f t.
constexpr int kMaxFrequencies = 96, kMaxTerms = 16;

struct SharedFrequencies {
    int count = 0;
    bool complete = true;  // every term indexed (the table fits the arrays)
    double frequency[kMaxFrequencies];
    // Per satellite and series (a, lambda, z, zeta), per term: the
    // frequency's index (-1 for a constant term) and cos, sin of the phase.
    struct TermIndex {
        int f;
        double cp, sp;
    };
    TermIndex terms[4][4][kMaxTerms];
};

const SharedFrequencies &Frequencies() {
    static const SharedFrequencies table = [] {
        SharedFrequencies t;
        for (int m = 0; m < 4; ++m) {
            const L12Moon &moon = kL12Moons[m];
            const L12Term *series[4] = {moon.a, moon.l, moon.z, moon.zeta};
            const int counts[4] = {moon.na, moon.nl, moon.nz, moon.nzeta};
            for (int s = 0; s < 4; ++s) {
                t.complete = t.complete && counts[s] <= kMaxTerms;
                for (int i = 0; i < counts[s] && i < kMaxTerms; ++i) {
                    const L12Term &w = series[s][i];
                    int f = -1;
                    if (w.frequency != 0.0) {
                        for (int j = 0; j < t.count && f < 0; ++j)
                            if (t.frequency[j] == w.frequency) f = j;
                        if (f < 0 && t.count < kMaxFrequencies) {
                            f = t.count++;
                            t.frequency[f] = w.frequency;
                        }
                        t.complete = t.complete && f >= 0;
                    }
                    t.terms[m][s][i] = {f, std::cos(w.phase), std::sin(w.phase)};
                }
            }
        }
        return t;
    }();
    return table;
}

// cos and sin of f t and of f (t - shift) for each distinct frequency, kept
// per thread for the last (t, shift): the four satellites of one instant
// share them. The second pair turns the first through x = f shift with the
// Taylor series of cos x and sin x (|x| < 0.18: truncation below 1e-14).
struct FrequencyCache {
    double t = NAN, shift = NAN;
    bool done[kMaxFrequencies];
    double c1[kMaxFrequencies], s1[kMaxFrequencies], c0[kMaxFrequencies], s0[kMaxFrequencies];
};

[[gnu::always_inline]] inline Turned Turn(FrequencyCache &cache, const SharedFrequencies &table, int moon, int series,
                                          int i) {
    const SharedFrequencies::TermIndex &w = table.terms[moon][series][i];
    if (w.f < 0) return {w.cp, w.sp, w.cp, w.sp};  // a constant term
    const int j = w.f;
    if (!cache.done[j]) {
        const double f = table.frequency[j], arg = cache.t * f;
        cache.c1[j] = std::cos(arg);
        cache.s1[j] = std::sin(arg);
        const double x = f * cache.shift, x2 = x * x;
        const double cx = 1.0 - x2 / 2.0 * (1.0 - x2 / 12.0 * (1.0 - x2 / 30.0 * (1.0 - x2 / 56.0)));
        const double sx = x * (1.0 - x2 / 6.0 * (1.0 - x2 / 20.0 * (1.0 - x2 / 42.0 * (1.0 - x2 / 72.0))));
        cache.c0[j] = cache.c1[j] * cx + cache.s1[j] * sx;
        cache.s0[j] = cache.s1[j] * cx - cache.c1[j] * sx;
        cache.done[j] = true;
    }
    // cos and sin of phase + argument.
    return {w.cp * cache.c1[j] - w.sp * cache.s1[j], w.sp * cache.c1[j] + w.cp * cache.s1[j],
            w.cp * cache.c0[j] - w.sp * cache.s0[j], w.sp * cache.c0[j] + w.cp * cache.s0[j]};
}

}  // namespace

int GalileanL12(int index, double jde, double out[3]) {
    if (index < 1 || index > 4) return 1;
    const L12Moon &m = kL12Moons[index - 1];
    const double t = jde - kL12Epoch;
    double a = 0.0, l = m.al[0] + t * m.al[1], k = 0.0, h = 0.0, q = 0.0, p = 0.0;
    for (int i = 0; i < m.na; ++i) a += m.a[i].amplitude * std::cos(m.a[i].phase + t * m.a[i].frequency);
    for (int i = 0; i < m.nl; ++i) l += m.l[i].amplitude * std::sin(m.l[i].phase + t * m.l[i].frequency);
    l = std::fmod(l, kTwoPi);
    for (int i = 0; i < m.nz; ++i) {
        const double arg = m.z[i].phase + t * m.z[i].frequency;
        k += m.z[i].amplitude * std::cos(arg);
        h += m.z[i].amplitude * std::sin(arg);
    }
    for (int i = 0; i < m.nzeta; ++i) {
        const double arg = m.zeta[i].phase + t * m.zeta[i].frequency;
        q += m.zeta[i].amplitude * std::cos(arg);
        p += m.zeta[i].amplitude * std::sin(arg);
    }
    double v[3];
    EquinoctialToPosition(a, l, k, h, q, p, v);
    ToJ2000(v, out);
    return 0;
}

// The same sums as GalileanL12 at t, and in the same pass the elements and
// their rates at t - shift: each term's argument is turned instead of
// evaluated again, so the two instants cost one set of cosines and sines,
// shared with the other satellites of the same instant.
int GalileanL12Local(int index, double jde, double shift, double out[3], L12Local *local) {
    if (index < 1 || index > 4 || !std::isfinite(jde) || !(std::fabs(shift) <= kMaxShift)) return 1;
    const L12Moon &m = kL12Moons[index - 1];
    const SharedFrequencies &table = Frequencies();
    if (!table.complete) return 1;  // the caller evaluates the series instead
    const double t = jde - kL12Epoch;
    thread_local FrequencyCache cache;
    if (!(cache.t == t && cache.shift == shift)) {
        cache.t = t;
        cache.shift = shift;
        for (bool &d : cache.done) d = false;
    }
    const int moon = index - 1;
    // el: a, lambda, k, h, q, p at t; e0, r0: the same and their rates at t - shift.
    double el[6] = {0.0, m.al[0] + t * m.al[1], 0.0, 0.0, 0.0, 0.0};
    double e0[6] = {0.0, m.al[0] + (t - shift) * m.al[1], 0.0, 0.0, 0.0, 0.0};
    double r0[6] = {0.0, m.al[1], 0.0, 0.0, 0.0, 0.0};
    for (int i = 0; i < m.na; ++i) {
        const L12Term &w = m.a[i];
        const Turned u = Turn(cache, table, moon, 0, i);
        el[0] += w.amplitude * u.c1;
        e0[0] += w.amplitude * u.c0;
        r0[0] -= w.amplitude * w.frequency * u.s0;
    }
    for (int i = 0; i < m.nl; ++i) {
        const L12Term &w = m.l[i];
        const Turned u = Turn(cache, table, moon, 1, i);
        el[1] += w.amplitude * u.s1;
        e0[1] += w.amplitude * u.s0;
        r0[1] += w.amplitude * w.frequency * u.c0;
    }
    // z = k + ih and zeta = q + ip: cosine and sine of the same argument.
    const L12Term *complex[2] = {m.z, m.zeta};
    const int counts[2] = {m.nz, m.nzeta};
    for (int s = 0; s < 2; ++s)
        for (int i = 0; i < counts[s]; ++i) {
            const L12Term &w = complex[s][i];
            const Turned u = Turn(cache, table, moon, 2 + s, i);
            el[2 + 2 * s] += w.amplitude * u.c1;
            el[3 + 2 * s] += w.amplitude * u.s1;
            e0[2 + 2 * s] += w.amplitude * u.c0;
            e0[3 + 2 * s] += w.amplitude * u.s0;
            r0[2 + 2 * s] -= w.amplitude * w.frequency * u.s0;
            r0[3 + 2 * s] += w.amplitude * w.frequency * u.c0;
        }
    el[1] = std::fmod(el[1], kTwoPi);
    e0[1] = std::fmod(e0[1], kTwoPi);
    double v[3];
    EquinoctialToPosition(el[0], el[1], el[2], el[3], el[4], el[5], v);
    ToJ2000(v, out);
    // The model's own instant: its position (the loop's first pass) and its
    // eccentric longitude, from which later passes start Kepler's equation;
    // F moves with lambda at the rate 1 / (1 - k cos F - h sin F).
    double cs[2];
    local->F = EquinoctialToPosition(e0[0], e0[1], e0[2], e0[3], e0[4], e0[5], v, NAN, cs);
    ToJ2000(v, local->position);
    local->rateF = r0[1] / (1.0 - e0[2] * cs[0] - e0[3] * cs[1]);
    local->index = index;
    local->jde = jde - shift;
    for (int k = 0; k < 6; ++k) {
        local->elements[k] = e0[k];
        local->rates[k] = r0[k];
    }
    return 0;
}

int L12LocalPosition(const L12Local &local, double jde, double out[3]) {
    const double dt = jde - local.jde;
    if (!(std::fabs(dt) <= kLocalSpan)) return GalileanL12(local.index, jde, out);
    if (dt == 0.0) {
        for (int k = 0; k < 3; ++k) out[k] = local.position[k];
        return 0;
    }
    double e[6];
    for (int k = 0; k < 6; ++k) e[k] = local.elements[k] + local.rates[k] * dt;
    double v[3];
    EquinoctialToPosition(e[0], e[1], e[2], e[3], e[4], e[5], v, local.F + local.rateF * dt);
    ToJ2000(v, out);
    return 0;
}

}  // namespace kvx::psat
