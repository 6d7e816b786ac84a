// Series of the L1.2 theory of the Galilean satellites (table in
// galilean_l12_table.cpp).
#pragma once

namespace kvx::psat {

struct L12Term {
    double amplitude, phase, frequency;
};

// One satellite: GM (AU^3/day^2) of Jupiter plus the satellite, the mean
// longitude's constant and rate, and the four series: a (cosine), mean
// longitude (sine), z = k + ih and zeta = q + ip (cosine and sine).
struct L12Moon {
    double mu;
    double al[2];
    const L12Term *a;
    int na;
    const L12Term *l;
    int nl;
    const L12Term *z;
    int nz;
    const L12Term *zeta;
    int nzeta;
};

extern const L12Moon kL12Moons[4];
extern const double kL12ToJ2000[9];

}  // namespace kvx::psat
