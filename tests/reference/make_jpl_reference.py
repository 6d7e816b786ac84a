#!/usr/bin/python3
"""Reference values for the JPL DE reader from Swiss Ephemeris, an
independent reader of the same DE file (libswe, Debian libswe-dev /
libswe2.0, called through ctypes: swi_open_jpl_file / swi_pleph, whose body
numbers are the JPL numbers minus one), and an independent check of the file
itself against the Swiss Ephemeris compressed lunar ephemeris (semo_18.se1
of swe-basic-data, fitted to DE431).

Reads tests/data/de405_2000.bin (DE405 records JD 2451536.5 to 2452272.5,
made by tools/de405_from_casacore.py). Writes to tests/reference/data/:
  jpl_barycentric.txt  jd target centre x y z vx vy vz
      JPL numbers: targets 1-11 and 13 relative to 12 (barycentre), 3
      relative to 10, 10 relative to 3; 14 nutations (dpsi, deps, 0 and
      rates), 15 librations (rates by central difference). AU, AU/day;
      radians, radians/day.
      Epochs: both ends (the end exactly), every record boundary and a
      millisecond either side, the Moon's 4-day sub-interval boundaries of
      three records, and seeded random dates: 200 in all.
  jpl_pairs.txt  jd target centre x y z vx vy vz
      library body codes (-3 Earth, -2 Sun, -1 Moon, 0-7 Mercury-Pluto),
      every target/centre pair at 6 epochs.
Stops if the file's geocentric Moon is more than 0.1 km from semo_18.se1.
Run: /usr/bin/python3 tests/reference/make_jpl_reference.py
"""
import ctypes
import os
import random

HERE = os.path.dirname(os.path.abspath(__file__))
DATA = os.path.join(HERE, 'data')
DE_DIR = os.path.join(HERE, '..', 'data')
DE_FILE = 'de405_2000.bin'
START, END, STEP = 2451536.5, 2452272.5, 32.0

swe = ctypes.CDLL('libswe.so.2')
swe.swi_pleph.argtypes = [ctypes.c_double, ctypes.c_int, ctypes.c_int, ctypes.POINTER(ctypes.c_double),
                          ctypes.c_char_p]
swe.swe_calc.argtypes = [ctypes.c_double, ctypes.c_int, ctypes.c_int, ctypes.POINTER(ctypes.c_double),
                         ctypes.c_char_p]
serr = ctypes.create_string_buffer(512)


def open_de():
    ss = (ctypes.c_double * 3)()
    if swe.swi_open_jpl_file(ss, DE_FILE.encode(), (os.path.abspath(DE_DIR) + '/').encode(), serr) != 0:
        raise SystemExit(serr.value.decode())
    assert list(ss) == [START, END, STEP], list(ss)


def raw_pleph(jd, target, centre):
    rrd = (ctypes.c_double * 6)()
    if swe.swi_pleph(jd, target - 1, centre - 1, rrd, serr) != 0:
        raise SystemExit('swi_pleph %f %d %d: %s' % (jd, target, centre, serr.value.decode()))
    return list(rrd)


def pleph(jd, target, centre):
    v = raw_pleph(jd, target, centre)
    if target == 14:  # dpsi, deps, their rates
        v = [v[0], v[1], 0.0, v[2], v[3], 0.0]
    if target == 15:
        # swi_pleph gives no libration rates (it returns the centre's velocity
        # or zeros there): use a central difference of its angles over
        # +-2^-10 day instead (a power of two, so that jd +- h is exact),
        # good to about 1e-10 rad/day.
        h = 2.0 ** -10
        f = lambda x: raw_pleph(x, 15, centre)[:3]  # noqa: E731
        if jd - h < START:  # one-sided second-order differences at the ends
            a, b, c = f(jd), f(jd + h), f(jd + 2 * h)
            rate = [(-3 * a[i] + 4 * b[i] - c[i]) / (2 * h) for i in range(3)]
        elif jd + h > END:
            a, b, c = f(jd), f(jd - h), f(jd - 2 * h)
            rate = [(3 * a[i] - 4 * b[i] + c[i]) / (2 * h) for i in range(3)]
        else:
            a, b = f(jd - h), f(jd + h)
            rate = [(b[i] - a[i]) / (2 * h) for i in range(3)]
        v = v[:3] + rate
    return v


def epochs():
    e = {START, END}
    for k in range(1, 23):
        b = START + STEP * k
        e.update({b, b - 0.001, b + 0.001})
    for k in (0, 11, 22):
        for j in range(9):
            e.add(START + STEP * k + 4.0 * j)
    rng = random.Random(405)
    while len(e) < 200:
        e.add(round(rng.uniform(START, END), 6))
    return sorted(x for x in e if START <= x <= END)


def fmt(row):
    return ' '.join(repr(float(x)) if isinstance(x, float) else str(x) for x in row)


def main():
    open_de()
    with open(os.path.join(DATA, 'jpl_barycentric.txt'), 'w') as f:
        f.write('# jd target centre x y z vx vy vz (JPL numbers; Swiss Ephemeris swi_pleph on %s)\n' % DE_FILE)
        for jd in epochs():
            pairs = [(t, 12) for t in list(range(1, 12)) + [13]] + [(3, 10), (10, 3), (14, 0), (15, 0)]
            for t, c in pairs:
                f.write(fmt([jd, t, c] + pleph(jd, t, c if c else 12)) + '\n')

    codes = {-3: 3, -2: 11, -1: 10, 0: 1, 1: 2, 2: 4, 3: 5, 4: 6, 5: 7, 6: 8, 7: 9}
    with open(os.path.join(DATA, 'jpl_pairs.txt'), 'w') as f:
        f.write('# jd target centre x y z vx vy vz (library body codes; swi_pleph on %s)\n' % DE_FILE)
        for jd in (START, 2451545.0, START + 64.0, 2451900.123456, 2452100.75, END):
            for t in codes:
                for c in codes:
                    if t != c:
                        f.write(fmt([jd, t, c] + pleph(jd, codes[t], codes[c])) + '\n')

    moon_jds = [START + 0.5 + k * (END - START - 1.0) / 59 for k in range(60)]
    moon_de = [raw_pleph(jd, 10, 3)[:3] for jd in moon_jds]  # before the path change closes the DE file
    swe.swe_set_ephe_path(b'/usr/share/libswe/ephe')
    flags = 2 | 16 | 32 | 64 | 256 | 512 | 1024 | 2048 | 4096 | 131072  # SWIEPH J2000 XYZ ICRS geometric
    # The file itself: its geocentric Moon within 0.1 km of the lunar file (DE405 against DE431 and the lunar
    # file's compression: tens of metres).
    xx = (ctypes.c_double * 6)()
    worst = 0.0
    for jd, de in zip(moon_jds, moon_de):
        if swe.swe_calc(jd, 1, flags, xx, serr) < 0:
            raise SystemExit(serr.value.decode())
        km = sum((a - b) ** 2 for a, b in zip(de, list(xx)[:3])) ** 0.5 * 149597870.691
        worst = max(worst, km)
        if km > 0.1:
            raise SystemExit('%s: the Moon at %.5f is %.3f km from semo_18.se1' % (DE_FILE, jd, km))
    print('%s: the Moon within %.3f km of semo_18.se1' % (DE_FILE, worst))


if __name__ == '__main__':
    main()
