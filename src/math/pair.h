// Two doubles handled together: the two lanes of an SSE2 register where the
// target has them (every x86-64) and two plain doubles elsewhere. Each lane
// rounds exactly as the scalar operation would, so code written on pairs
// gives the same bits as the same code on single doubles.
#pragma once

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#endif

namespace kvx::pair {

#if defined(__SSE2__) || defined(_M_X64)
using Pair = __m128d;
inline Pair Load(const double *p) { return _mm_load_pd(p); }  // p 16-byte aligned
inline Pair Set(double lo, double hi) { return _mm_set_pd(hi, lo); }
inline Pair Both(double v) { return _mm_set1_pd(v); }
inline Pair Add(Pair a, Pair b) { return _mm_add_pd(a, b); }
inline Pair Sub(Pair a, Pair b) { return _mm_sub_pd(a, b); }
inline Pair Mul(Pair a, Pair b) { return _mm_mul_pd(a, b); }
inline Pair Swap(Pair a) { return _mm_shuffle_pd(a, a, 1); }
inline void Store(double *p, Pair a) { _mm_storeu_pd(p, a); }
#else
struct Pair {
    double lo, hi;
};
inline Pair Load(const double *p) { return {p[0], p[1]}; }
inline Pair Set(double lo, double hi) { return {lo, hi}; }
inline Pair Both(double v) { return {v, v}; }
inline Pair Add(Pair a, Pair b) { return {a.lo + b.lo, a.hi + b.hi}; }
inline Pair Sub(Pair a, Pair b) { return {a.lo - b.lo, a.hi - b.hi}; }
inline Pair Mul(Pair a, Pair b) { return {a.lo * b.lo, a.hi * b.hi}; }
inline Pair Swap(Pair a) { return {a.hi, a.lo}; }
inline void Store(double *p, Pair a) {
    p[0] = a.lo;
    p[1] = a.hi;
}
#endif

inline Pair Zero() { return Both(0.0); }

}  // namespace kvx::pair
