// 32-bit fixed-point arithmetic with 30 fraction bits, for callers that
// rotate many directions in integers: products and quotients in 64 bits,
// table-driven cosine, square roots and arc cosine with linear
// interpolation, and whole or partial matrix-vector rotations. Sums wrap in
// 32 bits (done in unsigned arithmetic, which is well defined).
#include <cmath>
#include <cstdint>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/fixed_point_tables.h"

namespace {

using namespace kvx::fxtables;

constexpr int32_t kOne = 0x40000000;          // 1.0
constexpr uint32_t kFxPi = 0xC90FDAA2u;       // pi, as an unsigned bit pattern
constexpr int32_t kFxHalfPi = 1686629713;     // pi / 2
constexpr double kScale = 1073741824.0;       // 2^30

// Wrap-around 32-bit addition.
inline int32_t Add(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

// Linear interpolation between two table entries; `fraction` has 30 bits.
inline int32_t Interpolate(int32_t lo, int32_t hi, int32_t fraction) {
    return Add(lo, fxpmul(static_cast<int32_t>(static_cast<uint32_t>(hi) - static_cast<uint32_t>(lo)), fraction));
}

// Double to fixed point, truncated toward zero. Values outside the 32-bit
// range (and NaN) give 0x80000000, as the x86 conversion instruction does.
inline int32_t ToFx(double v) {
    const double scaled = v * kScale;
    if (!(scaled > -2147483649.0 && scaled < 2147483648.0)) return INT32_MIN;
    return static_cast<int32_t>(scaled);
}

// One row of M v: m_i2 z + m_i1 y + m_i0 x, each product truncated separately.
inline int32_t Row(const Fx *m, int row, const FxVec &v) {
    const Fx *r = m + 3 * row;
    return Add(Add(fxpmul(r[2], v.z), fxpmul(r[1], v.y)), fxpmul(r[0], v.x));
}

}  // namespace

extern "C" int32_t fxpmul(int32_t a, int32_t b) {
    return static_cast<int32_t>((static_cast<int64_t>(a) * b) >> 30);
}

extern "C" int32_t fxpdiv(int32_t a, int32_t b) {
    if (b == 0) return 0;
    return static_cast<int32_t>(static_cast<uint64_t>((static_cast<int64_t>(a) * 1073741824LL) / b));
}

// Table and linear interpolation between its entries.
extern "C" int32_t fxpcos(int32_t x) {
    if (x < 0) return kOne;
    if (x >= kFxHalfPi) return 0;
    const int i = x >> 18;
    return Interpolate(kCos[i], kCos[i + 1], (x & 0x3FFFF) << 12);
}

// Four tables of finer step toward |x| = 1.
extern "C" int32_t fxpacos(int32_t x) {
    if (x >= kOne) return 0;
    if (x < -0x3FFFFFFF) return static_cast<int32_t>(kFxPi);
    const int32_t a = x < 0 ? -x : x;
    int32_t r;
    if (a < 0x3F000000) {
        const int i = a >> 18;
        r = Interpolate(kAcosA[i], kAcosA[i + 1], (a & 0x3FFFF) << 12);
    } else if (a < 0x3FF00000) {
        const int i = (a - 0x3F000000) >> 15;
        r = Interpolate(kAcosB[i], kAcosB[i + 1], (a & 0x7FFF) << 15);
    } else if (a >= 0x3FFFF000) {
        const int i = (a - 0x3FFFF000) >> 4;
        r = Interpolate(kAcosD[i], kAcosD[i + 1], (a & 0xF) << 26);
    } else {
        const int i = (a - 0x3FF00000) >> 11;
        r = Interpolate(kAcosC[i], kAcosC[i + 1], (a & 0x7FF) << 19);
    }
    if (x < 0) return static_cast<int32_t>(kFxPi - static_cast<uint32_t>(r));
    return r;
}

extern "C" int32_t fxpasin(int32_t x) {
    return static_cast<int32_t>(static_cast<uint32_t>(kFxHalfPi) - static_cast<uint32_t>(fxpacos(x)));
}

extern "C" int32_t fxpatan2(int32_t y, int32_t x) {
    const int32_t r = fxpsqrt(Add(fxpmul(y, y), fxpmul(x, x)));
    if (r < 0x500000) return 0;
    return fxpasin(fxpdiv(y, r));
}

extern "C" int32_t fxpsqrt(int32_t x) {
    if (x >= kOne) return kOne;
    if (x < 1) return 0;
    const int i = x >> 18;
    return Interpolate(kSqrt[i], kSqrt[i + 1], (x & 0x3FFFF) << 12);
}

extern "C" uint32_t fxpusqrt(uint32_t x) {
    if (x >= 0x9DE9E64Du) return static_cast<uint32_t>(kFxHalfPi);
    const uint32_t i = x >> 18;
    const int32_t lo = static_cast<int32_t>(kUSqrt[i]);
    const int32_t hi = static_cast<int32_t>(kUSqrt[i + 1]);
    const int32_t f = static_cast<int32_t>((x & 0x3FFFFu) << 12);
    return kUSqrt[i] + static_cast<uint32_t>(fxpmul(hi - lo, f));
}

extern "C" void AdToFx(const Ad *in, FxVec *out) {
    if (!in || !out) return;
    const double a = kvx::DegToRad(in->a), d = kvx::DegToRad(in->d);
    const double cd = std::cos(d);
    const FxVec r{ToFx(cd * std::cos(a)), ToFx(cd * std::sin(a)), ToFx(std::sin(d))};
    *out = r;
}

extern "C" void DcToFx(const Dc *in, FxVec *out) {
    if (!in || !out) return;
    const FxVec r{ToFx(in->x), ToFx(in->y), ToFx(in->z)};
    *out = r;
}

extern "C" void FxToDc(const FxVec *in, Dc *out) {
    if (!in || !out) return;
    const double s = 9.313225746154785e-10;
    const Dc r{in->x * s, in->y * s, in->z * s};
    *out = r;
}

extern "C" void FxToAd(const FxVec *in, Ad *out) {
    if (!in || !out) return;
    const double x = in->x, y = in->y, z = in->z;
    const double r = std::sqrt(x * x + y * y + z * z);
    double a = 0.0;
    if (!(x == 0.0 && y == 0.0)) {
        a = kvx::RadToDeg(std::atan2(y, x));
        if (a < 0.0) a += 360.0;
    }
    out->a = a;
    out->d = kvx::RadToDeg(std::asin(z / r));
}

extern "C" void MatrixFlToFx(const double m[9], Fx out[9]) {
    if (!m || !out) return;
    Fx r[9];
    for (int k = 0; k < 9; ++k) r[k] = ToFx(m[k]);
    for (int k = 0; k < 9; ++k) out[k] = r[k];
}

extern "C" void RotateFx(const FxVec *v, const Fx m[9], FxVec *out) {
    if (!v || !m || !out) return;
    const FxVec in = *v;
    const FxVec r{Row(m, 0, in), Row(m, 1, in), Row(m, 2, in)};
    *out = r;
}

extern "C" int32_t RotateFxX(const FxVec *v, const Fx m[9]) {
    if (!v || !m) return 0;
    return Row(m, 0, *v);
}

extern "C" void RotateFxYZ(const FxVec *v, const Fx m[9], FxVec *out) {
    if (!v || !m || !out) return;
    const FxVec in = *v;
    const int32_t y = Row(m, 1, in), z = Row(m, 2, in);
    out->y = y;
    out->z = z;
}

extern "C" int32_t RotateFxZ(const FxVec *v, const Fx m[9]) {
    if (!v || !m) return 0;
    return Row(m, 2, *v);
}
