// The catalogue of the satellites of the planets: index, name, mass ratio
// to the planet, radii a, b, c (km; b and c -1 for a sphere), sidereal
// period (days; negative retrograde; -1 when none is given), geometric
// albedo, absolute magnitude V(1,0) and mean opposition magnitude.
// Source: the catalogue as the application has always shipped it (mean
// physical data compiled from the JPL satellite physical parameters);
// Hyperion's and Nereid's periods are stored as -1 on purpose.
#include "psat/satellite_catalog.h"

namespace kvx::psat {

const SatelliteEntry kSatellites[kSatelliteCount] = {
    {-3, 1, "Moon", 0.0123, 1737.4, -1, -1, 27.321661, 0.12, 0.21, -12.74},
    {2, 1, "Phobos", 0, 13.4, 11.2, 9.2, 0.31891, 0.07, 11.8, 11.3},
    {2, 2, "Deimos", 0, 7.5, 6.1, 5.2, 1.262441, 0.08, 12.89, 12.4},
    {3, 1, "Io", 4.7e-05, 1830, 1819, 1815, 1.769138, 0.63, -1.68, 5.02},
    {3, 2, "Europa", 2.5e-05, 1565, -1, -1, 3.551181, 0.67, -1.41, 5.29},
    {3, 3, "Ganymede", 7.8e-05, 2634, -1, -1, 7.154553, 0.44, -2.09, 4.61},
    {3, 4, "Callisto", 5.7e-05, 2403, -1, -1, 16.689018, 0.2, -1.05, 5.65},
    {3, 5, "Amalthea", 0, 131, 73, 67, 0.498179, 0.07, 7.4, 14.1},
    {4, 1, "Mimas", 0, 209, 196, 191, 0.942422, 0.5, 3.3, 12.9},
    {4, 2, "Enceladus", 0, 256, 247, 245, 1.370218, 1.0, 2.1, 11.7},
    {4, 3, "Tethys", 1e-06, 536, 528, 526, 1.887802, 0.9, 0.6, 10.2},
    {4, 4, "Dione", 2e-06, 560, -1, -1, 2.736915, 0.7, 0.8, 10.4},
    {4, 5, "Rhea", 4e-06, 764, -1, -1, 4.5175, 0.7, 0.1, 9.7},
    {4, 6, "Titan", 0.000237, 2575, -1, -1, 15.945421, 0.22, -1.28, 8.28},
    {4, 7, "Hyperion", 0, 180, 140, 113, -1, 0.3, 4.63, 14.19},
    {4, 8, "Iapetus", 3e-06, 718, -1, -1, 79.330183, 0.2, 1.5, 11.1},
    {5, 1, "Ariel", 1.6e-05, 581, 578, 578, 2.520379, 0.35, 1.45, 14.16},
    {5, 2, "Umbriel", 1.3e-05, 585, -1, -1, 4.144177, 0.19, 2.1, 14.81},
    {5, 3, "Titania", 4.1e-05, 789, -1, -1, 8.705872, 0.28, 1.02, 13.73},
    {5, 4, "Oberon", 3.5e-05, 761, -1, -1, 13.463239, 0.25, 1.23, 13.94},
    {5, 5, "Miranda", 1e-06, 240, 234, 233, 1.413479, 0.27, 3.6, 16.3},
    {6, 1, "Triton", 0.000209, 1353, -1, -1, -5.876854, 0.77, -1.24, 13.47},
    {6, 2, "Nereid", 0, 170, -1, -1, -1, 0.4, 4.0, 18.7},
    {7, 1, "Charon", 0.125, 593, -1, -1, -6.38725, 0.5, 0.9, 16.8},
};

}  // namespace kvx::psat
