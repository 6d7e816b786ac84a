#!/usr/bin/python3
"""Reference data for the constellation lookup, from two independent
implementations of the IAU boundaries (Delporte 1930; Roman 1987, PASP 99,
695; CDS catalogue VI/42): PyEphem's ephem.constellation (python3-ephem)
and Skyfield's load_constellation_map (python3-skyfield).

Writes to tests/reference/data/:

  constellation_j2000.csv  ra, dec (degrees, J2000.0), abbreviation
  constellation_b1875.csv  ra, dec (degrees, B1875.0), abbreviation
      Random directions, uniform on the sphere, kept only when PyEphem
      gives the same constellation at the direction and at 24 points around
      it at 0.6' and 1.2' (so no boundary lies within about an arcminute)
      and Skyfield agrees at the direction. Abbreviations are PyEphem's,
      which tells the two parts of Serpens apart (Se1 Caput, Se2 Cauda);
      Skyfield answers Ser for both.

  constellation_codes.csv  code, PyEphem abbreviation, IAU abbreviation, name
      The library numbers the 89 regions with codes of its own. This table
      is derived, not assumed: the built library (loaded with ctypes) is
      asked for the code of many random B1875.0 directions away from
      boundaries, and each code must meet exactly one PyEphem constellation
      and each constellation exactly one code; the script stops otherwise.

Run after a build (the library is needed only for the code table):
  /usr/bin/python3 tests/reference/make_constellation_reference.py [build/libkvxlib.so]
"""
import ctypes
import math
import os
import random
import sys
from collections import Counter, defaultdict

import ephem
from skyfield.api import load, load_constellation_map, position_of_radec
from skyfield.timelib import julian_date_of_besselian_epoch

HERE = os.path.dirname(os.path.abspath(__file__))
DATA = os.path.join(HERE, "data")
B1875_JD = 2405888.5  # 1875 Jan 1.0, the equinox the library refers to
EPHEM_B1875 = ephem.Date(B1875_JD - 2415020.0)  # PyEphem dates count from 1899 Dec 31.5

TS = load.timescale(builtin=True)
SKY_B1875 = TS.tt_jd(julian_date_of_besselian_epoch(1875))
SKY_AT = load_constellation_map()


def random_direction(rng):
    ra = rng.uniform(0.0, 360.0)
    dec = math.degrees(math.asin(rng.uniform(-1.0, 1.0)))
    return ra, dec


def offset(ra, dec, dist_arcmin, bearing):
    # The point dist_arcmin away from (ra, dec) towards position angle bearing.
    r = math.radians(dist_arcmin / 60.0)
    d1 = math.radians(dec)
    t = math.radians(bearing)
    sd2 = math.sin(d1) * math.cos(r) + math.cos(d1) * math.sin(r) * math.cos(t)
    d2 = math.asin(max(-1.0, min(1.0, sd2)))
    dra = math.atan2(math.sin(t) * math.sin(r) * math.cos(d1), math.cos(r) - math.sin(d1) * sd2)
    return (ra + math.degrees(dra)) % 360.0, math.degrees(d2)


def pyephem(ra, dec, epoch):
    return ephem.constellation((math.radians(ra), math.radians(dec)), epoch=epoch)


RING = [(1.2, b) for b in range(0, 360, 22)] + [(0.6, b) for b in range(0, 360, 45)]


def away_from_boundaries(ra, dec, epoch):
    # PyEphem's abbreviation when the direction and 24 points around it agree, else None.
    abbr = pyephem(ra, dec, epoch)[0]
    for dist, bearing in RING:
        if pyephem(*offset(ra, dec, dist, bearing), epoch)[0] != abbr:
            return None
    return abbr


def skyfield_abbr(ra, dec, epoch):
    return str(SKY_AT(position_of_radec(ra / 15.0, dec, epoch=epoch)))


def same(ephem_abbr, sky_abbr):
    return (sky_abbr == "Ser" and ephem_abbr in ("Se1", "Se2")) or ephem_abbr == sky_abbr


def directions(rng, count, ephem_epoch, sky_epoch):
    rows = []
    while len(rows) < count:
        ra, dec = random_direction(rng)
        abbr = away_from_boundaries(ra, dec, ephem_epoch)
        if abbr is None:
            continue
        sky = skyfield_abbr(ra, dec, sky_epoch)
        if not same(abbr, sky):
            sys.exit("PyEphem %s and Skyfield %s differ at %.6f %.6f" % (abbr, sky, ra, dec))
        rows.append((ra, dec, abbr))
    return rows


def write_directions(name, rows, frame):
    with open(os.path.join(DATA, name), "w") as f:
        f.write("# ra, dec (degrees, %s), constellation from PyEphem (Se1/Se2: Serpens Caput/Cauda),\n" % frame)
        f.write("# Skyfield agreeing; no boundary within ~1.2'. See make_constellation_reference.py\n")
        for ra, dec, abbr in rows:
            f.write("%.9f, %.9f, %s\n" % (ra, dec, abbr))


def derive_codes(library, rng, samples):
    lib = ctypes.CDLL(library)
    lib.GetConstellation.restype = ctypes.c_int32
    lib.GetConstellation.argtypes = [ctypes.POINTER(ctypes.c_double), ctypes.c_double]
    seen = defaultdict(Counter)
    names = {}
    n = 0
    while n < samples:
        ra, dec = random_direction(rng)
        abbr = away_from_boundaries(ra, dec, EPHEM_B1875)
        if abbr is None:
            continue
        n += 1
        ad = (ctypes.c_double * 2)(ra, dec)
        code = lib.GetConstellation(ad, B1875_JD)
        seen[code][abbr] += 1
        names[abbr] = pyephem(ra, dec, EPHEM_B1875)[1]
    codes = {}
    for code, counter in sorted(seen.items()):
        if len(counter) != 1:
            sys.exit("code %d meets more than one constellation: %s" % (code, dict(counter)))
        codes[code] = next(iter(counter))
    if sorted(codes) != list(range(89)):
        sys.exit("codes seen: %s" % sorted(codes))
    if len(set(codes.values())) != 89:
        sys.exit("two codes share a constellation: %s" % codes)
    return codes, names, seen


def main():
    library = sys.argv[1] if len(sys.argv) > 1 else os.path.join(HERE, "..", "..", "build", "libkvxlib.so")
    rng = random.Random(18750101)
    write_directions("constellation_j2000.csv", directions(rng, 4000, ephem.J2000, None), "J2000.0")
    write_directions("constellation_b1875.csv", directions(rng, 2000, EPHEM_B1875, SKY_B1875), "B1875.0")

    codes, names, seen = derive_codes(library, rng, 60000)
    with open(os.path.join(DATA, "constellation_codes.csv"), "w") as f:
        f.write("# code, PyEphem abbreviation, IAU abbreviation, name: derived by comparing the library's\n")
        f.write("# codes with PyEphem at 60000 random B1875.0 directions away from boundaries (min votes %d).\n"
                % min(sum(c.values()) for c in seen.values()))
        for code in range(89):
            abbr = codes[code]
            iau = "Ser" if abbr in ("Se1", "Se2") else abbr
            f.write("%d, %s, %s, %s\n" % (code, abbr, iau, names[abbr]))


if __name__ == "__main__":
    main()
