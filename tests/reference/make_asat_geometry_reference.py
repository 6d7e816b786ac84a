#!/usr/bin/python3
"""Reference geodetic conversions, look angles and pass times of artificial
satellites from Skyfield (Debian python3-skyfield, no ephemeris file).

The Earth is Skyfield's Geoid with the GRS80 figure (a = 6378137 m,
1/f = 298.257222101); inertial vectors are in the SGP4 TEME frame, turned
to and from the GCRS with Skyfield's TEME frame (IAU 1982 GMST) and its
ITRS (no polar motion). Times are UT1 = UTC Julian dates.

Writes under data/:
  asat_lla_skyfield.txt    jd lat lon h_m x y z: a place and its TEME
                           position (km)
  asat_look_skyfield.txt   jd lat lon h_m x y z az el range: the TEME
                           position of a satellite from python3-sgp4 and
                           Skyfield's azimuth, altitude (deg) and range (km)
  asat_passes_skyfield.txt set place kind jd alt: find_events with the
                           horizon threshold -h0 of the observer's height,
                           each time refined on Skyfield's altitudes;
                           kind 1 rise, 2 culmination, 3 set
  asat_pass_sets.tle       the low-Earth element sets of the pass table
"""
import math
import os
import random

import numpy as np
from skyfield.api import EarthSatellite, load
from skyfield.positionlib import build_position
from skyfield.sgp4lib import TEME
from skyfield.toposlib import Geoid

HERE = os.path.dirname(os.path.abspath(__file__))
DATA = os.path.join(HERE, 'data')
GRS80 = Geoid('GRS80', 6378137.0, 298.257222101)
# Delta T fixed at 65.184 s = 32.184 s + the 33 leap seconds of 2006-2008
# (the epochs of the element sets): UT1 then equals UTC, the scale of the
# element epochs, as the library takes one Julian date for both.
ts = load.timescale(delta_t=65.184)
AU_KM = 149597870.700

PASS_SETS = [
    ('ISS (ZARYA)',
     '1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927',
     '2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537'),
    ('DELTA 1 DEB',
     '1 06251U 62025E   06176.82412014  .00008885  00000-0  12808-3 0  3985',
     '2 06251  58.0579  54.0425 0030035 139.1568 221.1854 15.56387291  6774'),
    ('CBERS 2',
     '1 28057U 03049A   06177.78615833  .00000060  00000-0  35940-4 0  1836',
     '2 28057  98.4283 247.6961 0000884  88.1964 271.9322 14.35478080140550'),
    ('STR3 TEST',
     '1 88888U          80275.98708465  .00073094  13844-3  66816-4 0    87',
     '2 88888  72.8435 115.9689 0086731  52.6988 110.5714 16.05824518  1058'),
]
PLACES = [(35.6895, 139.6917, 40.0), (64.84, -147.72, 150.0), (-33.92, 18.42, 1200.0), (0.5, -78.5, 2800.0)]


def h0_of(height_m):
    h = max(0.0, height_m / 1000.0)
    k = 6378.137 / (h + 6378.137)
    return math.degrees(math.atan(math.sqrt(1.0 - k * k) * (h / 6378.137 + 1.0))) + 0.5855555


def gcrs_to_teme(t, r):
    return TEME.rotation_at(t).dot(r)


def lla_rows(rng):
    rows = []
    for _ in range(120):
        lat, lon = rng.uniform(-89.0, 89.0), rng.uniform(-180.0, 180.0)
        h = rng.choice([0.0, rng.uniform(-100.0, 9000.0), rng.uniform(100e3, 40000e3)])
        t = ts.ut1_jd(rng.uniform(2447892.5, 2462502.5))
        r = gcrs_to_teme(t, GRS80.latlon(lat, lon, elevation_m=h).at(t).position.km)
        rows.append('%.9f %.12f %.12f %.6f %.9f %.9f %.9f' % (t.ut1, lat, lon, h, r[0], r[1], r[2]))
    return rows


def look_rows(rng):
    rows = []
    for name, l1, l2 in PASS_SETS[:3] + [('GEO', '1 24208U 96044A   06177.04061740 -.00000094  00000-0  10000-3 0  1600',
                                           '2 24208   3.8536  80.0121 0026640 311.0977  48.3000  1.00778054 36119')]:
        sat = EarthSatellite(l1, l2, name, ts)
        for _ in range(40):
            lat, lon, h = rng.uniform(-70.0, 70.0), rng.uniform(-180.0, 180.0), rng.uniform(0.0, 3000.0)
            t = ts.ut1_jd(sat.model.jdsatepoch + sat.model.jdsatepochF + rng.uniform(-1.0, 1.0))
            place = GRS80.latlon(lat, lon, elevation_m=h)
            r, v, err = sat._position_and_velocity_TEME_km(t)
            alt, az, dist = (sat - place).at(t).altaz()
            rows.append('%.9f %.9f %.9f %.4f %.9f %.9f %.9f %.10f %.10f %.9f' %
                        (t.ut1, lat, lon, h, r[0], r[1], r[2], az.degrees, alt.degrees, dist.km))
    return rows


def refine(sat, place, h0, jd, event):
    """find_events places events to a few seconds; each is refined on
    Skyfield's own altitudes: the threshold crossing by bisection within
    +-60 s, the culmination by golden-section search within +-60 s."""
    def alt(x):
        return (sat - place).at(ts.ut1_jd(x)).altaz()[0].degrees
    lo, hi = jd - 60 / 86400.0, jd + 60 / 86400.0
    if event == 1:
        g = (math.sqrt(5) - 1) / 2
        for _ in range(60):
            a, b = hi - g * (hi - lo), lo + g * (hi - lo)
            if alt(a) > alt(b):
                hi = b
            else:
                lo = a
        return 0.5 * (lo + hi)
    f = lambda x: alt(x) + h0
    flo = f(lo)
    if flo * f(hi) > 0:
        return jd
    for _ in range(40):
        mid = 0.5 * (lo + hi)
        fm = f(mid)
        if (fm > 0) == (flo > 0):
            lo, flo = mid, fm
        else:
            hi = mid
    return 0.5 * (lo + hi)


def pass_rows():
    rows = []
    for i, (name, l1, l2) in enumerate(PASS_SETS):
        sat = EarthSatellite(l1, l2, name, ts)
        start = math.floor(sat.model.jdsatepoch + sat.model.jdsatepochF) + 0.5
        for j, (lat, lon, h) in enumerate(PLACES):
            h0 = h0_of(h)
            place = GRS80.latlon(lat, lon, elevation_m=h)
            t0, t1 = ts.ut1_jd(start), ts.ut1_jd(start + 2.0)
            times, events = sat.find_events(place, t0, t1, altitude_degrees=-h0)
            for t, e in zip(times, events):
                jd = refine(sat, place, h0, t.ut1, e)
                alt = (sat - place).at(ts.ut1_jd(jd)).altaz()[0].degrees
                rows.append('%d %d %d %.9f %.6f' % (i, j, e + 1, jd, alt))
    return rows


def main():
    rng = random.Random(20061013)
    with open(os.path.join(DATA, 'asat_lla_skyfield.txt'), 'w') as f:
        f.write('# Skyfield: GRS80 place -> TEME (km): jd lat lon h_m x y z\n')
        f.write('\n'.join(lla_rows(rng)) + '\n')
    with open(os.path.join(DATA, 'asat_look_skyfield.txt'), 'w') as f:
        f.write('# Skyfield altaz of python3-sgp4 TEME positions from GRS80 places: jd lat lon h_m x y z az el range_km\n')
        f.write('\n'.join(look_rows(rng)) + '\n')
    with open(os.path.join(DATA, 'asat_pass_sets.tle'), 'w') as f:
        for name, l1, l2 in PASS_SETS:
            f.write(name + '\n' + l1 + '\n' + l2 + '\n')
    with open(os.path.join(DATA, 'asat_passes_skyfield.txt'), 'w') as f:
        f.write('# Skyfield find_events, 2 days from floor(epoch) + 0.5, threshold -h0: set place kind jd alt\n')
        f.write('# places: ' + '; '.join('%g %g %g' % p for p in PLACES) + '\n')
        f.write('\n'.join(pass_rows()) + '\n')


if __name__ == '__main__':
    main()
