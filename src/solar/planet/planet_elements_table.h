// Mean Keplerian elements of the planets (see planet_elements_table.cpp).
#pragma once

namespace kvx::orbit {

// Elements at J2000.0 and their rates per Julian century, mean ecliptic and
// equinox of J2000.0, with the extra terms of the mean anomaly
// b T^2 + c cos(f T) + s sin(f T) (degrees, f in degrees per century).
struct KeplerRow {
    double a, e, incl, meanLon, periLon, node;              // AU, -, deg x4
    double aRate, eRate, inclRate, meanLonRate, periLonRate, nodeRate;  // per century
    double b, c, s, f;
};

// Rows 0..7 Mercury..Pluto as the library's planet codes, row 8 the
// Earth-Moon barycentre (code -3).
extern const KeplerRow kKeplerRows[9];

}  // namespace kvx::orbit
