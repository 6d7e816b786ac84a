// Ariel, Umbriel, Titania, Oberon and Miranda by GUST86 (Laskar & Jacobson
// 1987, A&A 188, 212), the analytic theory fitted to the Earth-based
// observations of 1911-1986 and the Voyager 2 encounter. The authors give
// an accuracy of a few hundred kilometres for the 20th century (about
// 0.02 arcsec at Uranus' distance); it degrades slowly outside it.
#include <cmath>

#include "psat/sat_theory.h"
#include "psat/uranus_gust86_table.h"

namespace kvx::psat {

namespace {

double Argument(const Gust86Term &term, const double an[5], const double ae[5]) {
    double x = 0.0;
    for (int j = 0; j < 5; ++j) x += term.mult[j] * an[j];
    if (term.eIndex >= 0) x += ae[term.eIndex];
    return x;
}

}  // namespace

int UranusGust86(int index, double jde, double out[3]) {
    // Satellite codes 701..705 are Ariel..Oberon, Miranda: the theory numbers
    // Miranda first.
    if (index < 1 || index > 5) return 1;
    const int s = index == 5 ? 0 : index;
    const double t = jde - 2444239.5;
    constexpr double kTwoPi = 2.0 * 3.141592653589793;
    double an[5], ae[5], ai[5];
    for (int j = 0; j < 5; ++j) {
        an[j] = std::fmod(kGust86Fqn[j] * t + kGust86Phn[j], kTwoPi);
        ae[j] = std::fmod(kGust86Fqe[j] * t + kGust86Phe[j], kTwoPi);
        ai[j] = std::fmod(kGust86Fqi[j] * t + kGust86Phi[j], kTwoPi);
    }
    const Gust86Moon &m = kGust86Moons[s];
    double n = m.n0, l = m.l0 + m.l1 * t, k = 0.0, h = 0.0, q = 0.0, p = 0.0;
    for (int i = 0; i < m.n.count; ++i) n += m.n.terms[i].amplitude * std::cos(Argument(m.n.terms[i], an, ae));
    for (int i = 0; i < m.l.count; ++i) l += m.l.terms[i].amplitude * std::sin(Argument(m.l.terms[i], an, ae));
    for (int j = 0; j < 5; ++j) {
        k += m.ze[j] * std::cos(ae[j]);
        h += m.ze[j] * std::sin(ae[j]);
        q += m.zi[j] * std::cos(ai[j]);
        p += m.zi[j] * std::sin(ai[j]);
    }
    for (int i = 0; i < m.z.count; ++i) {
        const double x = Argument(m.z.terms[i], an, ae);
        k += m.z.terms[i].amplitude * std::cos(x);
        h += m.z.terms[i].amplitude * std::sin(x);
    }
    const double a = std::cbrt(m.rmu / (n * n));
    double v[3];
    EquinoctialToPosition(a, std::fmod(l, kTwoPi), k, h, q, p, v);
    const double *r = kGust86ToJ2000;
    out[0] = r[0] * v[0] + r[1] * v[1] + r[2] * v[2];
    out[1] = r[3] * v[0] + r[4] * v[1] + r[5] * v[2];
    out[2] = r[6] * v[0] + r[7] * v[1] + r[8] * v[2];
    return 0;
}

}  // namespace kvx::psat
