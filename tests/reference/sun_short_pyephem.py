#!/usr/bin/python3
"""Geometric longitude of the Sun, mean equinox of date, and distance from
PyEphem (libastro, VSOP87) for 3000..4000, beyond the range of Moshier's
ephemeris in Swiss Ephemeris.  Writes data/sun_pyephem_short.txt with rows
"jde lon r" (dynamical Julian date, degrees, AU).

PyEphem takes universal time; the instant is chosen so that UT plus PyEphem's
own Delta T is the wanted dynamical time.  Its heliocentric longitude of the
Earth (hlon of the Sun) is geometric and referred to the equinox of date.
"""
import math
import os

import ephem

DJD0 = 2415020.0  # ephem.Date counts days from 1899 December 31.5


def main():
    out = os.path.join(os.path.dirname(os.path.abspath(__file__)), "data", "sun_pyephem_short.txt")
    with open(out, "w") as f:
        f.write("# PyEphem %s: geometric longitude (mean equinox of date) and distance of the Sun\n" % ephem.__version__)
        f.write("# jde lon r\n")
        jde = 2817000.5  # year 2999
        while jde < 3182000.5:  # year 3999
            ut = jde - DJD0
            for _ in range(5):
                ut = jde - DJD0 - ephem.delta_t(ephem.Date(ut)) / 86400.0
            s = ephem.Sun(ephem.Date(ut))
            lon = (math.degrees(s.hlon) + 180.0) % 360.0
            f.write("%.5f %.8f %.10f\n" % (jde, lon, s.earth_distance))
            jde += 1000.37


if __name__ == "__main__":
    main()
