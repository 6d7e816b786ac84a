// Coefficient tables of the built-in analytic series of Mercury, Venus and
// Jupiter (planet_series_table.cpp, written by tools/fit_planet_series.py).
#pragma once

namespace kvx::planet {

// One periodic term (a + b T) f(phase + rate T), f cosine (Mercury) or sine
// (Venus, Jupiter): a and b in degrees (longitude, latitude) or AU (radius),
// phase in degrees, rate in degrees per Julian century.
struct SeriesTerm {
    double a, b, phase, rate;
};

// Venus, T in Julian centuries from J1900.0: mean longitude L0 + L1 T + L2
// T^2, amplitude E0 + E1 T of the equation of the centre, mean anomaly g0 +
// g1 T (degrees).
struct VenusCore {
    double L0, L1, L2, E0, E1, g0, g1;
};

// Jupiter, T in Julian centuries from J1900.0: mean longitude L0 + L1 T + L2
// T^2, eccentricity e0 + e1 T, longitude of perihelion w0 + w1 T, semi-major
// axis a (AU), inclination i0 + i1 T and node N0 + N1 T on the mean ecliptic
// and equinox of date (degrees).
struct JupiterCore {
    double L0, L1, L2, e0, e1, w0, w1, a, i0, i1, N0, N1;
};

extern const SeriesTerm kMercuryLon[];
extern const int kMercuryLonCount;
extern const SeriesTerm kMercuryLat[];
extern const int kMercuryLatCount;
extern const SeriesTerm kMercuryRad[];
extern const int kMercuryRadCount;

extern const VenusCore kVenusCore;
extern const SeriesTerm kVenusPhase[];  // exactly 12 terms
extern const int kVenusPhaseCount;
extern const SeriesTerm kVenusLon[];
extern const int kVenusLonCount;
extern const SeriesTerm kVenusLat[];
extern const int kVenusLatCount;
extern const double kVenusRadius0;
extern const SeriesTerm kVenusRad[];
extern const int kVenusRadCount;

extern const JupiterCore kJupiterCore;
extern const SeriesTerm kJupiterMeanLon[];
extern const int kJupiterMeanLonCount;
extern const SeriesTerm kJupiterLon[];
extern const int kJupiterLonCount;
extern const SeriesTerm kJupiterLat[];
extern const int kJupiterLatCount;
extern const SeriesTerm kJupiterRad[];
extern const int kJupiterRadCount;

}  // namespace kvx::planet
