// Series of the GUST86 theory of Uranus' five major satellites (table in
// uranus_gust86_table.cpp).
#pragma once

namespace kvx::psat {

// amplitude x cos or sin(sum of mult[j] x an[j] + ae[eIndex]); eIndex -1:
// no ae term. an, ae: the theory's fundamental arguments (radians).
struct Gust86Term {
    double amplitude;
    signed char mult[5];
    signed char eIndex;
};

struct Gust86Series {
    const Gust86Term *terms;
    int count;
};

// Satellite s (0 Miranda, 1 Ariel, 2 Umbriel, 3 Titania, 4 Oberon).
struct Gust86Moon {
    double rmu;           // GM, AU^3/day^2
    double n0;            // constant of the mean motion, rad/day
    Gust86Series n;       // cosine terms of the mean motion
    double l0, l1;        // mean longitude: l0 + l1 t (rad, rad/day)
    Gust86Series l;       // sine terms of the mean longitude
    double ze[5];         // k + ih: amplitudes of the proper terms exp(i ae[j])
    Gust86Series z;       // further terms of k (cosine) and h (sine)
    double zi[5];         // q + ip: amplitudes of exp(i ai[j])
};

extern const double kGust86Fqn[5], kGust86Fqe[5], kGust86Fqi[5];
extern const double kGust86Phn[5], kGust86Phe[5], kGust86Phi[5];
extern const Gust86Moon kGust86Moons[5];
extern const double kGust86ToJ2000[9];

}  // namespace kvx::psat
