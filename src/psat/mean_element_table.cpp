// Precessing-ellipse mean elements of Phobos, Deimos, Amalthea and Nereid.
//
// Source: R. A. Jacobson, JPL Solar System Dynamics, "Planetary Satellite
// Mean Orbital Parameters" (ssd.jpl.nasa.gov/?sat_elem): elements of an
// ellipse fitted by least squares to the integrated orbit, its periapsis and
// node precessing uniformly on the local Laplace plane (Mars: MAR080, epoch
// 1950 Jan 1.0 TT; Jupiter: JUP230, epoch 1997 Jan 16.0 TT), and Nereid on
// the mean ecliptic of J2000.0 (NEP081, epoch 2000 Jan 1.5 TT). The mean
// motion n is the rate of the mean longitude (the sidereal period is
// 360 / n); Pw and Pnode are the periods of w and of the node. Second
// sources: tests/reference/satellite_elements_check.py.
#include "psat/mean_element_table.h"

namespace kvx::psat {

const MeanElements kMeanElements[kMeanElementCount] = {
    // code, epoch, a (km), e, w, M, i, node (deg), n (deg/day), Pw, Pnode (yr), pole RA, Dec (deg), ecliptic
    {401, 2433282.5, 9376.0, 0.0151, 150.057, 91.059, 1.075, 207.784, 1128.8447569, 1.1316, 2.2617, 317.671, 52.893, 0},
    {402, 2433282.5, 23458.0, 0.0002, 260.729, 325.329, 1.788, 24.525, 285.1618790, 27.3703, 54.5367, 316.657, 53.529, 0},
    {505, 2450464.5, 181400.0, 0.0032, 155.873, 185.194, 0.380, 108.946, 722.6317143, 0.196, 0.393, 268.057, 64.495, 0},
    {802, 2451545.0, 5513818.0, 0.7507, 280.830, 359.341, 7.090, 335.570, 0.9996276, 0.0, 0.0, 0.0, 0.0, 1},
};

}  // namespace kvx::psat
