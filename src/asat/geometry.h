// Observation geometry shared by the pass search: the sidereal angle of
// the Earth-fixed conversions and the look angles with their rate.
#pragma once

#include "kvxlib.h"

namespace kvx::asat {

// Greenwich mean sidereal angle (IAU 1982), radians in [0, 2 pi).
double SiderealAngle(double jd);

// The observer's fixed quantities for repeated look angles.
struct Station {
    double sinLat, cosLat, lonRad, height;  // height in km
};
Station MakeStation(const Lla &place);

// Elevation (rad) and its rate (rad/s) of a satellite at inertial position
// r (km) moving with v (km/s); also the range vector length (km).
struct Look {
    double azimuth, elevation, range, elevationRate;
};
Look LookAt(double jd, const Station &s, const double r[3], const double v[3]);

}  // namespace kvx::asat
