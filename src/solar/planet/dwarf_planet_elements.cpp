// Osculating heliocentric elements of four dwarf planets, ecliptic and
// equinox J2000.0, for the osculation epoch JD 2455100.5 (2009 October 9.0
// TT), as published by the Minor Planet Center (MPCORB) for that epoch, with
// the MPC's absolute magnitudes H and slope parameters G. Used for all dates
// (validity -1e30..1e30): two-body motion from one epoch, so the error grows
// with the distance in time from 2009 (for Ceres about a degree per few
// decades; the distant bodies far more slowly).
#include "solar/planet/dwarf_planet_elements.h"

namespace kvx::planet {

#define KVX_DWARF(number, name, T, e, q, peri, node, incl, H, G) \
    {'M', {0, 0, 0}, number, name, T, e, q, peri, node, incl, 2000.0, H, G, 2455100.5, -1e30, 1e30}

const CometElements kDwarfPlanetElements[4] = {
    KVX_DWARF(136199, "Eris", 2546355.80542, 0.434553, 38.443152, 151.38532, 36.00252, 43.93749, -1.2, 0.15),
    KVX_DWARF(1, "Ceres", 2454872.06723, 0.079275, 2.546744, 72.75528, 80.39565, 10.58586, 3.3, 0.12),
    KVX_DWARF(136472, "Makemake", 2407837.55156, 0.162895, 37.975771, 295.22405, 79.51204, 29.00123, -0.3, 0.15),
    KVX_DWARF(136108, "Haumea", 2499993.79509, 0.196934, 34.574199, 239.49623, 122.09392, 28.22326, 0.2, 0.15),
};

#undef KVX_DWARF

}  // namespace kvx::planet
