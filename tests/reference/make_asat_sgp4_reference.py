#!/usr/bin/python3
"""Reference states of artificial satellites from python3-sgp4 (Debian),
the pure-Python transcription of Vallado et al. (2006) SGP4/SDP4.

Writes, under data/:
  asat_sgp4_ver.tle        the element sets of the 2006 revision's public
                           verification file (SGP4-VER.TLE, shipped with
                           python3-sgp4), lines 1 and 2 cut to 69 columns
  asat_full_sgp4_ver.txt   set, tsince (min), error code, r (km), v (km/s):
                           the full model with WGS-72 over each set's
                           verification span
  asat_near_sets.tle       near-Earth and long-period sets for the
                           near-Earth model
  asat_near_3days.txt      set, tsince, error code, r, v: the near-Earth
                           model configured like the library's required one

The near-Earth configuration: gravity constants GM = 398600.44 km^3/s^2,
a = 6378.137 km, xke = 0.07436684757161681, J2 = 1.082629e-3,
J3 = -2.54e-6, J4 = -1.62e-6; the deep-space branch switched off (every
period runs the near-Earth equations); Kepler's equation stopped at a
correction of 1e-6 rad without the step limit, and the eccentricity
neither floored at 1e-6 nor rejected below -0.001 (only e^2 > 1 fails),
as in Spacetrack Report No. 3. These changes are made to a copy of the
module's source.
"""
import os
import sys

import sgp4.propagation as prop
from sgp4.earth_gravity import EarthGravity
from sgp4.model import Satrec
from sgp4.io import twoline2rv

HERE = os.path.dirname(os.path.abspath(__file__))
DATA = os.path.join(HERE, 'data')
VER = '/usr/lib/python3/dist-packages/sgp4/SGP4-VER.TLE'


def read_ver():
    sets = []
    lines = open(VER).read().splitlines()
    for i, l in enumerate(lines):
        if l.startswith('1 ') and i + 1 < len(lines) and lines[i + 1].startswith('2 '):
            l2 = lines[i + 1]
            start, stop, step = (float(x) for x in l2[69:].split())
            sets.append((l[:69], l2[:69], start, stop, step))
    return sets


def fmt(i, t, err, r, v):
    return '%d %.8f %d %.9f %.9f %.9f %.12f %.12f %.12f' % ((i, t, err) + tuple(r) + tuple(v))


def full_model(sets):
    rows = []
    for i, (l1, l2, start, stop, step) in enumerate(sets):
        sat = Satrec.twoline2rv(l1, l2)
        n = int(round((stop - start) / step))
        ts = [start + k * step for k in range(n + 1)]
        if ts[-1] != stop:
            ts.append(stop)
        if len(ts) > 20:  # keep the file small: 20 of the verification times, both ends included
            ts = [ts[round(k * (len(ts) - 1) / 19)] for k in range(20)]
        for t in ts:
            err, r, v = sat.sgp4_tsince(t)
            if err:
                r = v = (0.0, 0.0, 0.0)
            rows.append(fmt(i, t, err, r, v))
    return rows


def near_module():
    src = open(prop.__file__).read()
    patches = [('if 2*pi / satrec.no_unkozai >= 225.0:', 'if False:'),
               ('while fabs(tem5) >= 1.0e-12 and ktr <= 10:', 'while fabs(tem5) > 1.0e-6 and ktr <= 10:'),
               ('if fabs(tem5) >= 0.95:', 'if False:'),
               ('if em >= 1.0 or em < -0.001:', 'if em * em > 1.0:'),
               ('if em < 1.0e-6:', 'if False:')]
    for old, new in patches:
        assert src.count(old) == 1, old
        src = src.replace(old, new)
    mod = {'__name__': 'sgp4_near_patched'}
    exec(compile(src, 'propagation_near.py', 'exec'), mod)
    return mod


NEAR_SETS = [
    # (catalogue number in SGP4-VER, why)
    ('88888', 'STR#3 SGP4 test set, full drag'),
    ('06251', 'near Earth, moderate drag'),
    ('28350', 'perigee 127 km: s below 156 km'),
    ('29238', 'perigee 212 km: simple drag'),
    ('00005', 'e = 0.186, 133 min'),
    ('23599', 'period 233 min'),
    ('28129', 'GPS, 12 h'),
    ('14128', 'geostationary'),
    ('24208', 'geostationary, i > 3 deg'),
    ('08195', 'Molniya, e = 0.69'),
]


def near_model(sets):
    mod = near_module()
    xke = 0.07436684757161681
    j2, j3, j4 = 0.001082629, -2.54e-6, -1.62e-6
    grav = EarthGravity(1.0 / xke, 398600.44, 6378.137, xke, j2, j3, j4, j3 / j2)
    by_number = {}
    for s in sets:
        by_number.setdefault(s[0][2:7], s)
    chosen, rows = [], []
    for i, (num, why) in enumerate(NEAR_SETS):
        l1, l2 = by_number[num][:2]
        chosen.append((l1, l2, why))
        sat = Satrec()
        twoline2rv(l1, l2, grav, 'i', sat)  # fills the elements; set-up below
        mod['sgp4init'](grav, 'i', sat.satnum, sat.jdsatepoch - 2433281.5, sat.bstar, sat.ndot, sat.nddot,
                        sat.ecco, sat.argpo, sat.inclo, sat.mo, sat.no_kozai, sat.nodeo, sat)
        for k in range(-12, 13):
            t = k * 360.0
            r, v = mod['sgp4'](sat, t)
            err = sat.error
            if err or r is False:
                err = err or 9
                r = v = (0.0, 0.0, 0.0)
            rows.append(fmt(i, t, err, r, v))
    return chosen, rows


def main():
    sets = read_ver()
    with open(os.path.join(DATA, 'asat_sgp4_ver.tle'), 'w') as f:
        f.write('# SGP4-VER.TLE of Vallado et al. (2006), as shipped with python3-sgp4; lines cut to 69 columns\n')
        for l1, l2, *_ in sets:
            f.write(l1 + '\n' + l2 + '\n')
    with open(os.path.join(DATA, 'asat_full_sgp4_ver.txt'), 'w') as f:
        f.write('# python3-sgp4 %s (pure Python), WGS-72, opsmode i: set tsince_min error x y z (km) vx vy vz (km/s)\n'
                % getattr(__import__('sgp4'), '__version__', '?'))
        f.write('\n'.join(full_model(sets)) + '\n')
    chosen, rows = near_model(sets)
    with open(os.path.join(DATA, 'asat_near_sets.tle'), 'w') as f:
        f.write('# near-Earth and long-period element sets from SGP4-VER.TLE\n')
        for l1, l2, why in chosen:
            f.write('# ' + why + '\n' + l1 + '\n' + l2 + '\n')
    with open(os.path.join(DATA, 'asat_near_3days.txt'), 'w') as f:
        f.write('# python3-sgp4 near-Earth equations only, GM 398600.44, a 6378.137, J2 1.082629e-3, J3 -2.54e-6, '
                'J4 -1.62e-6, Kepler to 1e-6 rad: set tsince_min error x y z vx vy vz\n')
        f.write('\n'.join(rows) + '\n')


if __name__ == '__main__':
    sys.exit(main())
