// Fixed-point arithmetic (units of 2^-30) against libm: documented values and guards, and the interpolation error
// over each whole range.
#include "test_support.h"

#include <cstdint>
#include <iterator>

namespace {

constexpr double kOne = 1073741824.0;
constexpr uint32_t kPi = 0xC90FDAA2u;

// Documented values: arithmetic shifts round down, division truncates toward zero and never traps, guards for small
// radii and negative roots.
TEST(FixedPoint, DocumentedValuesAndGuards) {
    const struct {
        int64_t got, want;
    } cases[] = {
        {fxpmul(1073741824, 1073741824), 1073741824}, {fxpmul(-1, 1), -1}, {fxpmul(-1073741824, 536870912), -536870912},
        {fxpdiv(536870912, 1073741824), 536870912}, {fxpdiv(-1, 3), -357913941}, {fxpdiv(1, 0), 0},
        {fxpcos(0), 1073741824}, {fxpcos(-5), 1073741824}, {fxpcos(1686629713), 0},
        {fxpacos(1073741824), 0}, {static_cast<uint32_t>(fxpacos(-1073741824)), kPi}, {fxpacos(0), 1686629713},
        {fxpasin(0), 0}, {fxpatan2(0, -1073741823), 0},  // not pi: the sign of x is not used
        {fxpatan2(0x380000, 0x380000), 0},               // radius 0x4F3000, below 0x500000
        {fxpsqrt(268435456), 536870912}, {fxpsqrt(1073741824), 1073741824}, {fxpsqrt(0), 0}, {fxpsqrt(-7), 0},
        {fxpusqrt(0x9DE9E64Du), 1686629713u}, {fxpusqrt(0xFFFFFFFFu), 1686629713u},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(cases[i].got, cases[i].want) << "case " << i;
}

// Linear interpolation between exact table entries at spacing h errs by at most h^2/8 max|f''| on the interval, plus
// one unit of rounding per entry and one for the fraction product: checked per interval, so the growth of f'' (sqrt
// near 0, acos near 1) is not hidden by one wide tolerance.
struct Piece {
    int64_t start, end, step;  // sampled x range (fixed point)
    double h;                  // table spacing, as a real number
};
template <typename F, typename G, typename D2>
void CheckAgainstBound(const Piece &p, F fixed, G exact, D2 maxSecondDerivative) {
    for (int64_t x = p.start; x < p.end; x += p.step) {
        const double xr = x / kOne;
        const double err = std::fabs(fixed(x) - exact(xr) * kOne);
        const double bound = p.h * p.h / 8.0 * maxSecondDerivative(xr, p.h) * kOne + 3.0;
        EXPECT_LE(err, bound) << "x = " << x;
        if (err > bound) break;
    }
}

TEST(FixedPoint, InterpolationErrorAgainstLibm) {
    const double h18 = 1.0 / 4096;  // spacing 2^18 units
    CheckAgainstBound(
        {0, 1686629713, 1237, h18}, [](int64_t x) { return double(fxpcos(int32_t(x))); },
        [](double x) { return std::cos(x); }, [](double, double) { return 1.0; });
    // sqrt'' = -x^-1.5 / 4, largest at the interval's left end; the first interval (0..2^-12) has no finite bound and
    // is left out.
    auto sqrtD2 = [](double x, double h) {
        const double left = std::floor(x / h) * h;
        return 0.25 * std::pow(left, -1.5);
    };
    CheckAgainstBound(
        {1 << 18, 1073741824, 997, h18}, [](int64_t x) { return double(fxpsqrt(int32_t(x))); },
        [](double x) { return std::sqrt(x); }, sqrtD2);
    CheckAgainstBound(
        {1 << 18, 0x9DE9E64D, 1999, h18}, [](int64_t x) { return double(fxpusqrt(uint32_t(x))); },
        [](double x) { return std::sqrt(x); }, sqrtD2);
    // acos'' = -x / (1 - x^2)^1.5, largest at the interval's right end; the four tables refine the spacing toward 1
    // and the very last interval (1 - 2^-26 .. 1) has no finite bound.
    auto acosD2 = [](double x, double h) {
        const double right = std::fmin((std::floor(std::fabs(x) / h) + 1) * h, 1.0 - 1e-300);
        return right / std::pow(1 - right * right, 1.5);
    };
    auto acosFixed = [](int64_t x) { return double(static_cast<uint32_t>(fxpacos(int32_t(x)))); };
    auto acosExact = [](double x) { return std::acos(x); };
    const Piece acosPieces[] = {
        {0, 0x3F000000, 331, h18},                        // table A
        {0x3F000000, 0x3FF00000, 37, 1.0 / 32768},        // table B
        {0x3FF00000, 0x3FFFF000, 7, 1.0 / 524288},        // table C
        {0x3FFFF000, 0x3FFFFFF0, 1, 1.0 / 67108864},      // table D, last interval left out
    };
    for (const Piece &p : acosPieces) {
        CheckAgainstBound(p, acosFixed, acosExact, acosD2);
        const Piece neg{-p.end + 1, -p.start + 1, p.step, p.h};
        CheckAgainstBound(neg, acosFixed, acosExact, acosD2);
    }
}

TEST(FixedPoint, ConversionsTruncateAndRotationsMatchDoubles) {
    const Dc v{0.5, -0.3, 0.9999999999};
    FxVec f{};
    DcToFx(&v, &f);
    EXPECT_EQ(std::vector<int32_t>({f.x, f.y, f.z}), std::vector<int32_t>({536870912, int32_t(-0.3 * kOne), 1073741823}));
    Dc back{};
    FxToDc(&f, &back);
    EXPECT_NEAR(back.y, -0.3, 1e-9);  // one unit of 2^-30
    const Ad ad{123.0, -45.0};
    const FxVec pole{0, 0, 5};
    Ad out{}, atPole{};
    AdToFx(&ad, &f);
    FxToAd(&f, &out), FxToAd(&pole, &atPole);
    EXPECT_NEAR(std::fmax(std::fabs(out.a - 123.0), std::fabs(out.d + 45.0)), 0.0, 1e-6);  // fxpatan2's tables
    EXPECT_EQ(std::vector<double>({atPole.a, atPole.d}), std::vector<double>({0.0, 90.0}));
    const double mf[9] = {1.0, 0.25, -0.5, 0, 1, 0, -1.0, 0, 0.125};
    Fx fm[9];
    MatrixFlToFx(mf, fm);
    EXPECT_EQ(std::vector<int32_t>({fm[0], fm[2], fm[6]}), std::vector<int32_t>({1073741824, -536870912, -1073741824}));
    // Against doubles: 2^-30 per product and entry; partial forms write only their part.
    double m[9];
    RotatePrm1(30, -23.44, m);
    MatrixFlToFx(m, fm);
    Dc dv{-0.77, -0.28, 0.5736}, r;
    RotateDc(&dv, m, &r);
    FxVec fv{}, res{};
    DcToFx(&dv, &fv);
    RotateFx(&fv, fm, &res);
    EXPECT_NEAR(std::fmax(std::fabs(res.x / kOne - r.x), std::fmax(std::fabs(res.y / kOne - r.y), std::fabs(res.z / kOne - r.z))), 0.0, 4e-9);
    FxVec partial{12345, 0, 0}, inPlace = fv;
    RotateFxYZ(&fv, fm, &partial);
    RotateFx(&inPlace, fm, &inPlace);
    EXPECT_EQ(std::vector<int32_t>({RotateFxX(&fv, fm), RotateFxZ(&fv, fm), partial.x, partial.y, partial.z, inPlace.x, inPlace.z}),
              std::vector<int32_t>({res.x, res.z, 12345, res.y, res.z, res.x, res.z}));
}

}  // namespace
