// Io, Europa, Ganymede and Callisto by the L1.2 theory (Lainey, Duriez &
// Vienne 2004, "New accurate ephemerides for the Galilean satellites of
// Jupiter. I", A&A 420, 1171-1183), in the truncated series of
// galilean_l12_table.cpp. The full theory is fitted to observations of
// 1891-2003 at the level of tens of kilometres; the truncation keeps the
// terms that matter at about 100 km (a few milliarcseconds at Jupiter's
// opposition distance). Valid roughly 1500-2500.
#include <cmath>

#include "math/fast_trig.h"
#include "psat/galilean_l12_table.h"
#include "psat/sat_theory.h"

namespace kvx::psat {

namespace {

constexpr double kL12Epoch = 2433282.5;  // 1950-01-01 0h TT
// Largest shift of the one-pass evaluation (days): |frequency x shift| stays
// within 3.56 x 0.05 = 0.18 rad, where the turn of Fill below holds 2e-14.
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

// The terms of the four satellites use 55 distinct frequencies, many of
// them in several series. Each distinct frequency f gets an index (0 for
// the constant terms, frequency 0), each term its amplitude A turned by its
// phase: A cos(phase + f t) = Ac cos(f t) - As sin(f t) with Ac = A cos(phase),
// As = A sin(phase), and the same times f for the rates.
constexpr int kMaxFrequencies = 96, kMaxTerms = 16;

struct Term {
    int f;
    double ac, as, afc, afs;  // A cos(phase), A sin(phase), and both times f
};

struct SharedFrequencies {
    int count = 1;  // index 0: the constant terms
    bool complete = true;  // every term indexed (the table fits the arrays)
    double frequency[kMaxFrequencies] = {0.0};
    // Per satellite: the distinct frequencies it reads, and per series
    // (a, lambda, z, zeta) its terms.
    int used[4][kMaxFrequencies];
    int usedCount[4] = {0, 0, 0, 0};
    Term terms[4][4][kMaxTerms];
};

const SharedFrequencies &Frequencies() {
    static const SharedFrequencies table = [] {
        SharedFrequencies t;
        for (int m = 0; m < 4; ++m) {
            const L12Moon &moon = kL12Moons[m];
            const L12Term *series[4] = {moon.a, moon.l, moon.z, moon.zeta};
            const int counts[4] = {moon.na, moon.nl, moon.nz, moon.nzeta};
            bool seen[kMaxFrequencies] = {};
            for (int s = 0; s < 4; ++s) {
                t.complete = t.complete && counts[s] <= kMaxTerms;
                for (int i = 0; i < counts[s] && i < kMaxTerms; ++i) {
                    const L12Term &w = series[s][i];
                    int f = -1;
                    for (int j = 0; j < t.count && f < 0; ++j)
                        if (t.frequency[j] == w.frequency) f = j;
                    if (f < 0 && t.count < kMaxFrequencies) {
                        f = t.count++;
                        t.frequency[f] = w.frequency;
                    }
                    // Beyond kMaxShift x this the turn of Fill loses its precision.
                    if (f < 0 || !(std::fabs(w.frequency) * kMaxShift <= 0.18)) {
                        t.complete = false;
                        continue;
                    }
                    if (!seen[f]) t.used[m][t.usedCount[m]++] = f;
                    seen[f] = true;
                    const double ac = w.amplitude * std::cos(w.phase), as = w.amplitude * std::sin(w.phase);
                    t.terms[m][s][i] = {f, ac, as, ac * w.frequency, as * w.frequency};
                }
            }
        }
        return t;
    }();
    return table;
}

// cos and sin of f t and of f (t - shift) for each distinct frequency, kept
// per thread for the last (t, shift): the four satellites of one instant
// share them. A frequency is filled when the first satellite that reads it
// asks (stamp == generation), so a caller of one satellite pays for its own.
// The second pair turns the first through x = f shift with the Taylor
// series of cos x and sin x to x^8 and x^9: for |x| <= 0.18 rad their
// truncation, x^10 / 10! and x^11 / 11!, is below 2e-14 and 2e-16.
struct FrequencyCache {
    double t = NAN, shift = NAN;
    unsigned generation = 0;
    unsigned ready[4] = {0, 0, 0, 0};  // satellite m's frequencies all filled
    unsigned stamp[kMaxFrequencies] = {};
    double c1[kMaxFrequencies], s1[kMaxFrequencies], c0[kMaxFrequencies], s0[kMaxFrequencies];
};

void Fill(FrequencyCache &cache, const SharedFrequencies &table, int moon) {
    for (int k = 0; k < table.usedCount[moon]; ++k) {
        const int j = table.used[moon][k];
        if (cache.stamp[j] == cache.generation) continue;
        const double f = table.frequency[j];
        const SinCos a = FastSinCosRad(cache.t * f);
        const double x = f * cache.shift, x2 = x * x;
        const double cx = 1.0 - x2 * (0.5 - x2 * (1.0 / 24.0 - x2 * (1.0 / 720.0 - x2 * (1.0 / 40320.0))));
        const double sx = x * (1.0 - x2 * (1.0 / 6.0 - x2 * (1.0 / 120.0 - x2 * (1.0 / 5040.0 - x2 * (1.0 / 362880.0)))));
        cache.c1[j] = a.c;
        cache.s1[j] = a.s;
        cache.c0[j] = a.c * cx + a.s * sx;
        cache.s0[j] = a.s * cx - a.c * sx;
        cache.stamp[j] = cache.generation;
    }
    cache.ready[moon] = cache.generation;
}

}  // namespace

int GalileanL12(int index, double jde, double out[3]) {
    if (index < 1 || index > 4) return 1;
    const L12Moon &m = kL12Moons[index - 1];
    const double t = jde - kL12Epoch;
    double a = 0.0, l = m.al[0] + t * m.al[1], k = 0.0, h = 0.0, q = 0.0, p = 0.0;
    for (int i = 0; i < m.na; ++i) a += m.a[i].amplitude * std::cos(m.a[i].phase + t * m.a[i].frequency);
    for (int i = 0; i < m.nl; ++i) l += m.l[i].amplitude * std::sin(m.l[i].phase + t * m.l[i].frequency);
    l = WrapRad(l);
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
        if (++cache.generation == 0) {  // wrapped: no stamp may look current
            for (unsigned &v : cache.stamp) v = 0;
            for (unsigned &v : cache.ready) v = 0;
            cache.generation = 1;
        }
    }
    const int moon = index - 1;
    if (cache.ready[moon] != cache.generation) Fill(cache, table, moon);
    const double *c1 = cache.c1, *s1 = cache.s1, *c0 = cache.c0, *s0 = cache.s0;
    // el: a, lambda, k, h, q, p at t; e0, r0: the same and their rates at t - shift.
    double el[6] = {0.0, m.al[0] + t * m.al[1], 0.0, 0.0, 0.0, 0.0};
    double e0[6] = {0.0, m.al[0] + (t - shift) * m.al[1], 0.0, 0.0, 0.0, 0.0};
    double r0[6] = {0.0, m.al[1], 0.0, 0.0, 0.0, 0.0};
    const Term *terms = table.terms[moon][0];
    for (int i = 0; i < m.na; ++i) {  // A cos(phase + f t)
        const Term &w = terms[i];
        const int j = w.f;
        el[0] += w.ac * c1[j] - w.as * s1[j];
        e0[0] += w.ac * c0[j] - w.as * s0[j];
        r0[0] -= w.afs * c0[j] + w.afc * s0[j];
    }
    terms = table.terms[moon][1];
    for (int i = 0; i < m.nl; ++i) {  // A sin(phase + f t)
        const Term &w = terms[i];
        const int j = w.f;
        el[1] += w.as * c1[j] + w.ac * s1[j];
        e0[1] += w.as * c0[j] + w.ac * s0[j];
        r0[1] += w.afc * c0[j] - w.afs * s0[j];
    }
    // z = k + ih and zeta = q + ip: cosine and sine of the same argument.
    const int counts[2] = {m.nz, m.nzeta};
    for (int s = 0; s < 2; ++s) {
        terms = table.terms[moon][2 + s];
        double *e = el + 2 + 2 * s, *f = e0 + 2 + 2 * s, *r = r0 + 2 + 2 * s;
        for (int i = 0; i < counts[s]; ++i) {
            const Term &w = terms[i];
            const int j = w.f;
            const double c = w.ac * c0[j] - w.as * s0[j], sn = w.as * c0[j] + w.ac * s0[j];
            e[0] += w.ac * c1[j] - w.as * s1[j];
            e[1] += w.as * c1[j] + w.ac * s1[j];
            f[0] += c;
            f[1] += sn;
            r[0] -= w.afs * c0[j] + w.afc * s0[j];
            r[1] += w.afc * c0[j] - w.afs * s0[j];
        }
    }
    el[1] = WrapRad(el[1]);
    e0[1] = WrapRad(e0[1]);
    double v[3];
    const double F = EquinoctialToPosition(el[0], el[1], el[2], el[3], el[4], el[5], v);
    ToJ2000(v, out);
    // The model's own instant: its position (the loop's first pass) and its
    // eccentric longitude, from which later passes start Kepler's equation;
    // F moves with lambda at the rate 1 / (1 - k cos F - h sin F). Its
    // Kepler's equation starts from the instant's F - lambda, which moves by
    // about e n shift (5e-4 rad for Io).
    double cs[2];
    local->F = EquinoctialToPosition(e0[0], e0[1], e0[2], e0[3], e0[4], e0[5], v, e0[1] + (F - el[1]), cs);
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
