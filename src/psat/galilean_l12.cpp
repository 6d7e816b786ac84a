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

int GalileanL12(int index, double jde, double out[3]) {
    if (index < 1 || index > 4) return 1;
    const L12Moon &m = kL12Moons[index - 1];
    const double t = jde - 2433282.5;  // days from 1950-01-01 0h TT
    double a = 0.0, l = m.al[0] + t * m.al[1], k = 0.0, h = 0.0, q = 0.0, p = 0.0;
    for (int i = 0; i < m.na; ++i) a += m.a[i].amplitude * std::cos(m.a[i].phase + t * m.a[i].frequency);
    for (int i = 0; i < m.nl; ++i) l += m.l[i].amplitude * std::sin(m.l[i].phase + t * m.l[i].frequency);
    l = std::fmod(l, 2.0 * 3.141592653589793);
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
    const double *r = kL12ToJ2000;
    out[0] = r[0] * v[0] + r[1] * v[1] + r[2] * v[2];
    out[1] = r[3] * v[0] + r[4] * v[1] + r[5] * v[2];
    out[2] = r[6] * v[0] + r[7] * v[1] + r[8] * v[2];
    return 0;
}

}  // namespace kvx::psat
