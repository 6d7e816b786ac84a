// Direction-cosine vectors, angle pairs and 3x3 matrices (row by row,
// acting as M v). Every function reads all inputs before writing, so an
// output may alias an input.
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/vec3.h"

using kvx::DegToRad;
using kvx::RadToDeg;

extern "C" void AdToDc(const Ad *in, Dc *out) {
    if (!in || !out) return;
    double v[3];
    kvx::vec3::FromAd(in->a, in->d, v);
    *out = Dc{v[0], v[1], v[2]};
}

extern "C" void DcToAd(const Dc *in, Ad *out) {
    if (!in || !out) return;
    const double v[3] = {in->x, in->y, in->z};
    double a, d;
    kvx::vec3::ToAd(v, &a, &d);
    out->a = a;
    out->d = d;
}

extern "C" int32_t DcToAdR(const Dc *in, Ad *out) {
    if (!in || !out) return 0;
    const double r = DcAbs(in);
    if (r == 0.0) return 0;
    const Dc u{in->x / r, in->y / r, in->z / r};
    DcToAd(&u, out);
    return 1;
}

extern "C" double DcAbs(const Dc *v) {
    if (!v) return 0.0;
    return std::sqrt(v->x * v->x + v->y * v->y + v->z * v->z);
}

extern "C" void DcAdd(const Dc *a, const Dc *b, Dc *out) {
    if (!a || !b || !out) return;
    const Dc r{a->x + b->x, a->y + b->y, a->z + b->z};
    *out = r;
}

extern "C" void DcSub(const Dc *a, const Dc *b, Dc *out) {
    if (!a || !b || !out) return;
    const Dc r{a->x - b->x, a->y - b->y, a->z - b->z};
    *out = r;
}

extern "C" double DcDist(const Dc *a, const Dc *b) {
    if (!a || !b) return 0.0;
    const Dc d{b->x - a->x, b->y - a->y, b->z - a->z};
    return DcAbs(&d);
}

extern "C" Dc *DcMul(const Dc *v, double s, Dc *out) {
    if (!v || !out) return nullptr;
    const Dc r{v->x * s, v->y * s, v->z * s};
    *out = r;
    return out;
}

extern "C" Dc *DcDiv(const Dc *v, double s, Dc *out) {
    if (!v || !out) return nullptr;
    const Dc r{v->x / s, v->y / s, v->z / s};
    *out = r;
    return out;
}

extern "C" double DcNorm(const Dc *v, Dc *out) {
    if (!v || !out) return 0.0;
    const double r = DcAbs(v);
    DcDiv(v, r, out);
    return r;
}

extern "C" double DcScalarProduct(const Dc *a, const Dc *b) {
    if (!a || !b) return 0.0;
    return a->x * b->x + a->y * b->y + a->z * b->z;
}

extern "C" void DcOuterProduct(const Dc *a, const Dc *b, Dc *out) {
    if (!a || !b || !out) return;
    const Dc r{a->y * b->z - a->z * b->y, a->z * b->x - a->x * b->z, a->x * b->y - a->y * b->x};
    *out = r;
}

extern "C" Dc *RotateDc(const Dc *v, const double m[9], Dc *out) {
    if (!v || !m || !out) return nullptr;
    const Dc r{m[0] * v->x + m[1] * v->y + m[2] * v->z,
               m[3] * v->x + m[4] * v->y + m[5] * v->z,
               m[6] * v->x + m[7] * v->y + m[8] * v->z};
    *out = r;
    return out;
}

extern "C" void MulMatrix(const double a[9], const double b[9], double out[9]) {
    if (!a || !b || !out) return;
    kvx::vec3::Product(a, b, out);
}

// The determinant is expanded along the first row; on a rotation the result
// differs from the transpose only by rounding.
extern "C" void GetInvMatrix(const double m[9], double out[9]) {
    if (!m || !out) return;
    const double c00 = m[4] * m[8] - m[5] * m[7];
    const double c01 = m[5] * m[6] - m[3] * m[8];
    const double c02 = m[3] * m[7] - m[4] * m[6];
    const double det = m[0] * c00 + m[1] * c01 + m[2] * c02;
    double r[9];
    r[0] = c00 / det;
    r[1] = (m[2] * m[7] - m[1] * m[8]) / det;
    r[2] = (m[1] * m[5] - m[2] * m[4]) / det;
    r[3] = c01 / det;
    r[4] = (m[0] * m[8] - m[2] * m[6]) / det;
    r[5] = (m[2] * m[3] - m[0] * m[5]) / det;
    r[6] = c02 / det;
    r[7] = (m[1] * m[6] - m[0] * m[7]) / det;
    r[8] = (m[0] * m[4] - m[1] * m[3]) / det;
    for (int k = 0; k < 9; ++k) out[k] = r[k];
}

extern "C" double *UnitMatrix(double out[9]) {
    if (!out) return nullptr;
    for (int k = 0; k < 9; ++k) out[k] = (k % 4 == 0) ? 1.0 : 0.0;
    return out;
}

extern "C" void RotateX(double a, double out[9]) {
    if (!out) return;
    kvx::vec3::RotationX(a, out);
}

extern "C" void RotateY(double a, double out[9]) {
    if (!out) return;
    const double r = DegToRad(a), c = std::cos(r), s = std::sin(r);
    out[0] = c;   out[1] = 0.0; out[2] = -s;
    out[3] = 0.0; out[4] = 1.0; out[5] = 0.0;
    out[6] = s;   out[7] = 0.0; out[8] = c;
}

extern "C" void RotateZ(double a, double out[9]) {
    if (!out) return;
    kvx::vec3::RotationZ(a, out);
}

extern "C" void RotatePrm1(double a, double b, double out[9]) {
    if (!out) return;
    double rz[9], ry[9];
    RotateZ(a, rz);
    RotateY(b, ry);
    MulMatrix(ry, rz, out);
}

extern "C" double atan3(double y, double x) {
    if (y == 0.0 && x == 0.0) return 0.0;
    return std::atan2(y, x);
}
