// The built-in analytic series of Mercury, Venus and Jupiter: heliocentric
// longitude, latitude and radius on the mean ecliptic and equinox of date.
#pragma once

namespace kvx::planet {

// Julian dates (TT) strictly inside which the planet dispatcher uses the
// series (AD 1000 Jan 1.0 to AD 3000 Jan 1.0, Julian and Gregorian
// calendars respectively).
constexpr double kSeriesFirstJd = 2086307.5;
constexpr double kSeriesLastJd = 2816787.5;

inline bool InSeriesRange(double jde) { return jde > kSeriesFirstJd && jde < kSeriesLastJd; }

// True for the codes with a series: 0 Mercury, 1 Venus, 3 Jupiter.
inline bool HasSeries(int code) { return code == 0 || code == 1 || code == 3; }

// Heliocentric longitude lbr[0] (0..360) and latitude lbr[1] (degrees) and
// radius lbr[2] (AU), mean ecliptic and equinox of date, at dynamical Julian
// date jde. Any date is evaluated (the fit covers AD 1000-3000). Returns 1,
// or 0 for a code without a series (nothing written).
int SeriesLbr(int code, double jde, double lbr[3]);

// The same place as a heliocentric vector on the J2000.0 mean equator and
// equinox (AU): rotated to the equator of date by the mean obliquity and
// precessed to J2000.0. Returns 1, or 0 for a code without a series.
int SeriesVector(int code, double jde, double out[3]);

}  // namespace kvx::planet
