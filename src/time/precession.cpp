// Precession: the IAU 2006 bias-precession matrix in the four-angle form of
// T. Fukushima, "A new precession formula", AJ 126, 494 (2003), with the
// angle series of N. Capitaine, P. T. Wallace and J. Chapront, "Expressions
// for IAU 2000 precession quantities", A&A 412, 567 (2003) as adopted by
// P. T. Wallace and N. Capitaine, "Precession-nutation procedures consistent
// with IAU 2006 resolutions", A&A 459, 981 (2006), eq. 39.
// Beyond +-30 centuries from the start epoch the series are not used: the
// rest of the span turns uniformly at 50" per year about the ecliptic pole.
#include <cmath>

#include "kvxlib.h"
#include "math/constants.h"
#include "math/vec3.h"
#include "place/constellation.h"
#include "time/precession.h"
#include "platform/thread_cache.h"

namespace kvx::prec {

namespace {

constexpr double kArcsecToDeg = 0.0002777777777777778;  // 1 / 3600

// The epochs of J2000.0 -30 and +30 centuries.
constexpr double kClampEarly = 1355795.0;
constexpr double kClampLate = 3547295.0;
constexpr double kThirtyCenturies = 1095750.0;  // days

// P at the constant epochs, evaluated once (thread-safe static
// initialisation) by the same code as any other date.
struct ConstantEpochs {
    static constexpr int kCount = 3;
    double jd[kCount] = {kJ2000, kB1950, kB1875Jd};
    double p[kCount][9];
    ConstantEpochs() {
        for (int k = 0; k < kCount; ++k) BiasPrecession(jd[k], p[k]);
    }
};

const ConstantEpochs &Constants() {
    static const ConstantEpochs constants;
    return constants;
}

void Copy(const double from[9], double to[9]) {
    for (int k = 0; k < 9; ++k) to[k] = from[k];
}

// The last date evaluated on this thread: after an ATime fill, the Sun's
// theory, the planets and the observer's vector ask again for the same date.
struct LastDate {
    double jd = std::nan("");
    double p[9] = {};
};

// P(jd) from the constant epochs, the date's memo, the thread's last date,
// or evaluated.
void BiasPrecessionAt(double jd, DateMatrix *memo, double out[9]) {
    const ConstantEpochs &c = Constants();
    for (int k = 0; k < ConstantEpochs::kCount; ++k)
        if (jd == c.jd[k]) return Copy(c.p[k], out);
    if (memo && memo->jd == jd && memo->evaluated) return Copy(memo->p, out);
    LastDate &last = platform::ThreadCache<LastDate>();
    if (last.jd == jd) {
        Copy(last.p, out);
    } else {
        BiasPrecession(jd, out);
        last.jd = jd;
        Copy(out, last.p);
    }
    if (memo && memo->jd == jd) {
        Copy(out, memo->p);
        memo->evaluated = true;
    }
}

}  // namespace

void BiasPrecession(double jd, double out[9]) {
    const double t = (jd - kJ2000) / kDaysPerCentury;
    const double epsA = GetEp(jd);
    const double t2 = t * t, t3 = t2 * t, t4 = t3 * t, t5 = t4 * t;
    const double gamma =
        (-0.052928 + 10.556378 * t + 0.4932044 * t2 - 0.00031238 * t3 - 2.788e-6 * t4 + 2.6e-8 * t5) * kArcsecToDeg;
    const double phi =
        (84381.412819 - 46.811016 * t + 0.0511268 * t2 + 0.00053289 * t3 - 4.4e-7 * t4 - 1.76e-8 * t5) *
        kArcsecToDeg;
    const double psi =
        (-0.041775 + 5038.481484 * t + 1.5584175 * t2 - 0.00018522 * t3 - 2.6452e-5 * t4 - 1.48e-8 * t5) *
        kArcsecToDeg;
    // P = Rx(-epsA) Rz(-psi) Rx(phi) Rz(gamma), multiplied from the left.
    vec3::RotationX(-epsA, out);
    vec3::TurnZ(out, -psi);
    vec3::TurnX(out, phi);
    vec3::TurnZ(out, gamma);
}

void PrecessionBetween(double fromJd, double toJd, DateMatrix *memo, double out[9]) {
    if (fromJd == toJd) {
        UnitMatrix(out);
        return;
    }
    const double tFrom = (fromJd - kJ2000) / kDaysPerCentury;
    const bool exchange = tFrom < -30.0 || tFrom > 30.0;
    const double start = exchange ? toJd : fromJd;
    const double end = exchange ? fromJd : toJd;

    double span = (end - start) / kDaysPerCentury;
    int clamped = 0;
    double extensionEpoch = 0.0;
    if (span < -30.0) {
        span = -30.0;
        clamped = -1;
        extensionEpoch = kClampEarly;
    } else if (span > 30.0) {
        span = 30.0;
        clamped = 1;
        extensionEpoch = kClampLate;
    }
    const double clampedEnd = start + kDaysPerCentury * span;

    double m[9];
    BiasPrecessionAt(clampedEnd, memo, m);
    if (std::fabs(start - kJ2000) >= 1.0) {
        double p[9], inv[9];
        BiasPrecessionAt(start, memo, p);
        GetInvMatrix(p, inv);
        vec3::Product(m, inv, m);
    }

    if (clamped != 0) {
        const double rest = clamped < 0 ? (end - start) + kThirtyCenturies
                                        : (end - start) - kThirtyCenturies;
        const double eps = GetEp(extensionEpoch);
        // X = Rx(-eps) Rz(-50" per year) Rx(eps), multiplied from the left.
        double a[9], b[9], x[9];
        RotateX(-eps, a);
        RotateZ(-(rest / 365.24) * (50.0 / 3600.0), b);
        MulMatrix(a, b, x);
        RotateX(eps, a);
        MulMatrix(x, a, x);
        MulMatrix(x, m, m);
    }

    if (exchange) GetInvMatrix(m, out);
    else Copy(m, out);
}

}  // namespace kvx::prec

extern "C" void GetPrecMtx(double fromJd, double toJd, double out[9]) {
    if (!out) return;
    kvx::prec::PrecessionBetween(fromJd, toJd, nullptr, out);
}

extern "C" void PrecEqt(const Ad *in, Ad *out, const double m[9]) {
    if (!in || !out || !m) return;
    Dc v, w;
    AdToDc(in, &v);
    RotateDc(&v, m, &w);
    const double a = degmal(kvx::RadToDeg(std::atan2(w.y, w.x)));
    const double d = kvx::RadToDeg(std::asin(w.z));
    out->a = a;
    out->d = d;
}
