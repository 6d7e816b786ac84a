// Physical ephemeris of the Moon: optical and physical librations and the
// position angle of the rotation axis.
#pragma once

namespace kvx::moon {

// The physical librations of the standard theory of the lunar rotation, in
// degrees, at T Julian centuries of dynamical time from J2000.0.
struct PhysicalLibration {
    double rho;
    double sigma;
    double tau;
};
PhysicalLibration PhysicalLibrationSeries(double t);

// Librations (degrees, -180..180) and the position angle of the axis
// (degrees, -180..180) for the Moon at ecliptic longitude lambda and latitude
// beta (mean ecliptic and equinox of date, degrees), its right ascension
// alpha on the mean equator of date (degrees), the nutation in longitude
// dpsi and the mean obliquity eps (degrees), at T Julian centuries of
// dynamical time from J2000.0.
struct Libration {
    double axisAngle;  // position angle of the Moon's axis
    double longitude;  // total libration in longitude
    double latitude;   // total libration in latitude
};
Libration MoonLibration(double t, double lambda, double beta, double alpha, double dpsi, double eps);

// Outside the range of dynamical Julian dates 1538798.0 < jde < 3364651.0
// the series are not trusted: the axis angle is clamped to -26..26, the
// libration in longitude set to 0 and that in latitude clamped to -7..7.
void ClampLibration(double jde, Libration *lib);

}  // namespace kvx::moon
