#!/usr/bin/python3
"""Jupiter's central meridians (Systems I and II), Saturn's ring tilts and
the illuminated fraction of the planets from PyEphem (libastro), geocentric
apparent, at universal-time Julian dates spread over 1950-2050.

    /usr/bin/python3 tests/reference/physical_pyephem.py > tests/reference/data/physical_pyephem.txt

Rows: jd code fraction cm1 cm2 earth_tilt sun_tilt (degrees; -999 where
PyEphem gives no such value).
"""
import math

import ephem

BODIES = [ephem.Mercury, ephem.Venus, ephem.Mars, ephem.Jupiter, ephem.Saturn, ephem.Uranus, ephem.Neptune, ephem.Pluto]
DJD = 2415020.0  # ephem.Date counts days from 1899 December 31.5

print('# PyEphem %s, geocentric apparent' % ephem.__version__)
print('# jd code fraction cm1 cm2 earth_tilt sun_tilt')
jd = 2433282.5
while jd <= 2469807.5:
    for code, cls in enumerate(BODIES):
        b = cls(ephem.Date(jd - DJD))
        cm1 = cm2 = et = st = -999.0
        if code == 3:
            cm1, cm2 = math.degrees(b.cmlI) % 360.0, math.degrees(b.cmlII) % 360.0
        if code == 4:
            et, st = math.degrees(b.earth_tilt), math.degrees(b.sun_tilt)
        print('%.5f %d %.6f %.5f %.5f %.5f %.5f' % (jd, code, b.phase / 100.0, cm1, cm2, et, st))
    jd += 97.31
