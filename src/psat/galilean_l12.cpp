// Io, Europa, Ganymede and Callisto by the L1.2 theory (Lainey, Duriez &
// Vienne 2004, "New accurate ephemerides for the Galilean satellites of
// Jupiter. I", A&A 420, 1171-1183), in the truncated series of
// galilean_l12_table.cpp. The full theory is fitted to observations of
// 1891-2003 at the level of tens of kilometres; the truncation keeps the
// terms that matter at about 100 km (a few milliarcseconds at Jupiter's
// opposition distance). Valid roughly 1500-2500.
#include <cmath>

#include "math/fast_trig.h"
#include "math/pair.h"
#include "platform/thread_cache.h"
#include "psat/galilean_l12_table.h"
#include "psat/sat_theory.h"

namespace kvx::psat {

namespace {

constexpr double kL12Epoch = 2433282.5;  // 1950-01-01 0h TT
// Largest shift of the one-pass evaluation (days), for which the bound at
// kOrders below is worked out.
constexpr double kMaxShift = 0.05;
// Span of the local model around its instant (days; 43 s, against the
// 7 s by which Callisto's light time can differ from Jupiter's). There the
// model's neglected third-order term stays below 0.4 m (L12LocalPosition)
// and the velocity's neglected rates of the orbital plane below 0.3 m.
constexpr double kLocalSpan = 5.0e-4;
// The elements at t - shift come from Taylor's series in the shift to the
// shift^4 term. Its remainder for a term of amplitude A and frequency f is
// |A| (f shift)^5 / 120. Summed over the terms with |f| > 0.1 rad/day
// (amplitudes times the orbit radius, up to 410 km; |f| <= 3.56 rad/day)
// it is below 1.2 m for each satellite at the largest shift and below
// 0.3 m at Jupiter's light time (at most 0.037 day); the slow terms
// (|f| < 0.014 rad/day) leave under 1e-10 m. The rates' remainder,
// |A| f (f shift)^4 / 24, over the few seconds the local model spans adds
// less than a millimetre.
constexpr int kOrders = 4;

// The theory's frame to the J2000.0 equator.
void ToJ2000(const double v[3], double out[3]) {
    const double *r = kL12ToJ2000;
    out[0] = r[0] * v[0] + r[1] * v[1] + r[2] * v[2];
    out[1] = r[3] * v[0] + r[4] * v[1] + r[5] * v[2];
    out[2] = r[6] * v[0] + r[7] * v[1] + r[8] * v[2];
}

// The terms of the four satellites use 56 distinct frequencies, many of
// them in several series. Each distinct frequency f gets an index (0 for
// the constant terms, frequency 0), each term its amplitude A turned by its
// phase, Ac = A cos(phase) and As = A sin(phase), so that with c = cos(f t),
// s = sin(f t) the term is the complex number
//   z = A exp(i (phase + f t)) = (Ac c - As s) + i (As c + Ac s);
// the a series sums Re z, the mean longitude's Im z, z = k + ih and
// zeta = q + ip both parts. The n-th time derivative of z is (i f)^n z.
constexpr int kMaxFrequencies = 96, kMaxTerms = 16;

// The complex numbers of the sums are pairs (re, im) (math/pair.h).
using pair::Add;
using pair::Load;
using pair::Mul;
using pair::Pair;
using pair::Store;
using pair::Swap;
using pair::Zero;

// A term as the pairs that make z from (c, s): z = (Ac, Ac) (c, s) +
// (-As, As) (s, c); and its frequency's powers, each in both lanes.
struct alignas(16) Term {
    double acc[2], mas[2];
    double fn[kOrders][2];  // f, f^2, f^3, f^4
    int f;
};

// A series' constant first term (frequency 0) is its start value: the sum
// begins with it as it would after adding its z = (Ac, As) to zero.
struct Series {
    alignas(16) double start[2] = {0.0, 0.0};
    int count = 0;
    Term terms[kMaxTerms];
};

struct SharedFrequencies {
    int count = 1;  // index 0: the constant terms
    bool complete = true;  // every term indexed (the table fits the arrays)
    double frequency[kMaxFrequencies] = {0.0};
    // Per satellite: the distinct frequencies it reads, and per series
    // (a, lambda, z, zeta) its terms.
    int used[4][kMaxFrequencies];
    int usedCount[4] = {0, 0, 0, 0};
    Series series[4][4];
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
                Series &out = t.series[m][s];
                for (int i = 0; i < counts[s]; ++i) {
                    const L12Term &w = series[s][i];
                    int f = -1;
                    for (int j = 0; j < t.count && f < 0; ++j)
                        if (t.frequency[j] == w.frequency) f = j;
                    if (f < 0 && t.count < kMaxFrequencies) {
                        f = t.count++;
                        t.frequency[f] = w.frequency;
                    }
                    // The remainder bound above needs |f| kMaxShift <= 0.18.
                    if (f < 0 || out.count >= kMaxTerms || !(std::fabs(w.frequency) * kMaxShift <= 0.18)) {
                        t.complete = false;
                        continue;
                    }
                    const double g = w.frequency, ac = w.amplitude * std::cos(w.phase), as = w.amplitude * std::sin(w.phase);
                    if (i == 0 && g == 0.0 && s != 1) {
                        out.start[0] = ac;
                        out.start[1] = as;
                        continue;
                    }
                    if (!seen[f]) t.used[m][t.usedCount[m]++] = f;
                    seen[f] = true;
                    out.terms[out.count++] = {{ac, ac}, {-as, as}, {{g, g}, {g * g, g * g}, {g * g * g, g * g * g}, {g * g * g * g, g * g * g * g}}, f};
                }
            }
        }
        return t;
    }();
    return table;
}

// cos and sin of f t for each distinct frequency, kept per thread for the
// last t: the four satellites of one instant share them. A frequency is
// filled when the first satellite that reads it asks (stamp == generation),
// so a caller of one satellite pays for its own.
struct FrequencyCache {
    double t = NAN;
    unsigned generation = 0;
    unsigned ready[4] = {0, 0, 0, 0};  // satellite m's frequencies all filled
    unsigned stamp[kMaxFrequencies] = {};
    alignas(16) double cs[kMaxFrequencies][2];  // cos(f t), sin(f t)
};

void Fill(FrequencyCache &cache, const SharedFrequencies &table, int moon) {
    for (int k = 0; k < table.usedCount[moon]; ++k) {
        const int j = table.used[moon][k];
        if (cache.stamp[j] == cache.generation) continue;
        const SinCos a = FastSinCosRad(cache.t * table.frequency[j]);
        cache.cs[j][0] = a.c;
        cache.cs[j][1] = a.s;
        cache.stamp[j] = cache.generation;
    }
    cache.ready[moon] = cache.generation;
}

// One series at t: its value (from start) and the sums S_n = sum f^n z
// (n = 1..4, so that the n-th derivative is i^n S_n), as pairs (re, im).
struct Sums {
    Pair s[kOrders + 1];
};

Sums Accumulate(const Series &series, const double (*cs)[2], Pair start) {
    Pair s0 = start, s1 = Zero(), s2 = Zero(), s3 = Zero(), s4 = Zero();
    for (int i = 0; i < series.count; ++i) {
        const Term &w = series.terms[i];
        const Pair x = Load(cs[w.f]);
        const Pair z = Add(Mul(Load(w.acc), x), Mul(Load(w.mas), Swap(x)));
        s0 = Add(s0, z);
        s1 = Add(s1, Mul(Load(w.fn[0]), z));
        s2 = Add(s2, Mul(Load(w.fn[1]), z));
        s3 = Add(s3, Mul(Load(w.fn[2]), z));
        s4 = Add(s4, Mul(Load(w.fn[3]), z));
    }
    return {{s0, s1, s2, s3, s4}};
}

// i z for a pair z = (re, im): (-im, re).
Pair TimesI(Pair z) { return Mul(Swap(z), pair::Set(-1.0, 1.0)); }

// The series' value at t, at t - x and its rate there from the sums at t,
// by Taylor's series in x: z(t - x) = sum_n (-i x)^n / n! S_n and
// z'(t - x) = i sum_n (-i x)^n / n! S_(n+1); pairs (re, im) into the arrays.
void Shift(const Sums &sums, double x, double at[2], double value[2], double rate[2]) {
    const Pair *S = sums.s;
    const Pair x1 = pair::Both(x), x2 = pair::Both(x * x / 2.0), x3 = pair::Both(x * x * x / 6.0),
               x4 = pair::Both(x * x * x * x / 24.0);
    using pair::Sub;
    // S0 - x^2/2 S2 + x^4/24 S4 + i (x^3/6 S3 - x S1)
    Store(value, Add(Add(Sub(S[0], Mul(x2, S[2])), Mul(x4, S[4])), TimesI(Sub(Mul(x3, S[3]), Mul(x1, S[1])))));
    // x S2 - x^3/6 S4 + i (S1 - x^2/2 S3)
    Store(rate, Add(Sub(Mul(x1, S[2]), Mul(x3, S[4])), TimesI(Sub(S[1], Mul(x2, S[3])))));
    Store(at, S[0]);
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

// The same sums as GalileanL12 at t, and in the same pass their time
// derivatives, from which the elements and their rates at t - shift follow
// by Taylor's series (the error bound is at kOrders above): one set of
// cosines and sines serves both instants, and is shared with the other
// satellites of the same instant.
int GalileanL12Local(int index, double jde, double shift, double out[3], L12Local *local) {
    if (index < 1 || index > 4 || !std::isfinite(jde) || !(std::fabs(shift) <= kMaxShift)) return 1;
    const L12Moon &m = kL12Moons[index - 1];
    const SharedFrequencies &table = Frequencies();
    if (!table.complete) return 1;  // the caller evaluates the series instead
    const double t = jde - kL12Epoch;
    FrequencyCache &cache = platform::ThreadCache<FrequencyCache>();
    if (!(cache.t == t)) {
        cache.t = t;
        if (++cache.generation == 0) {  // wrapped: no stamp may look current
            for (unsigned &v : cache.stamp) v = 0;
            for (unsigned &v : cache.ready) v = 0;
            cache.generation = 1;
        }
    }
    const int moon = index - 1;
    if (cache.ready[moon] != cache.generation) Fill(cache, table, moon);
    // el: a, lambda, k, h, q, p at t; e0, r0: the same and their rates at
    // t - shift. The series a, lambda, z = k + ih, zeta = q + ip: their pairs (re, im),
    // of which a keeps the real and lambda the imaginary part. The
    // mean longitude's series starts from its mean motion, in the order of
    // GalileanL12's sum, which the values at t repeat exactly.
    const double meanT = m.al[0] + t * m.al[1];
    double el[6], e0[6], r0[6], lt[2], l0[2], lr[2];
    const Series *series = table.series[moon];
    Shift(Accumulate(series[2], cache.cs, Load(series[2].start)), shift, el + 2, e0 + 2, r0 + 2);
    Shift(Accumulate(series[3], cache.cs, Load(series[3].start)), shift, el + 4, e0 + 4, r0 + 4);
    Shift(Accumulate(series[1], cache.cs, pair::Set(0.0, meanT)), shift, lt, l0, lr);
    Shift(Accumulate(series[0], cache.cs, Load(series[0].start)), shift, el, e0, r0);  // [1]: lambda's, next
    el[1] = WrapRad(lt[1]);
    e0[1] = WrapRad(l0[1] - shift * m.al[1]);
    r0[1] = lr[1] + m.al[1];
    double v[3];
    // Kepler's equation from F = lambda, within e (below 0.01 rad).
    const double F = EquinoctialToPosition(el[0], el[1], el[2], el[3], el[4], el[5], v, el[1]);
    ToJ2000(v, out);
    // The model's own instant: its position (the loop's first pass) and
    // velocity. Kepler's equation starts from the instant's F - lambda,
    // which moves by about e n shift (5e-4 rad for Io).
    double w[3];
    EquinoctialToPosition(e0[0], e0[1], e0[2], e0[3], e0[4], e0[5], v, e0[1] + (F - el[1]), r0, w);
    ToJ2000(v, local->position);
    ToJ2000(w, local->velocity);
    local->index = index;
    local->jde = jde - shift;
    local->mu = m.mu;
    return 0;
}

// The position dt from the model's instant to second order: velocity and
// the two-body acceleration -mu r / |r|^3. The neglected third-order term,
// a n^3 dt^3 / 6, is largest for Io (a n^3 = 1.9e7 km/day^3); the
// acceleration's own error, the perturbations of about 1e-3 of it, weighs
// a n^2 dt^2 / 2 x 1e-3.
int L12LocalPosition(const L12Local &local, double jde, double out[3]) {
    const double dt = jde - local.jde;
    if (!(std::fabs(dt) <= kLocalSpan)) return GalileanL12(local.index, jde, out);
    const double *r = local.position, *v = local.velocity;
    if (dt == 0.0) {  // the loop's first pass
        for (int k = 0; k < 3; ++k) out[k] = r[k];
        return 0;
    }
    const double r2 = r[0] * r[0] + r[1] * r[1] + r[2] * r[2];
    const double g = -local.mu / (r2 * std::sqrt(r2)) * (dt * dt / 2.0);
    for (int k = 0; k < 3; ++k) out[k] = r[k] + v[k] * dt + g * r[k];
    return 0;
}

}  // namespace kvx::psat
