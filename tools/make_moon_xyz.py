#!/usr/bin/python3
"""Writes "moon.xyz", the Moon's position file, from a JPL DE file.

  tools/make_moon_xyz.py de405.bin moon.xyz [--from JD] [--to JD]

The result is a DE-format file in the "KQ" layout (header laid out for the
reader, see include/kvxlib.h) holding only three components of each record:
the Earth-Moon barycentre, the geocentric Moon and the Sun, with their
Chebyshev coefficients copied unchanged. Records are therefore shorter than
the DE file's (458 coefficients instead of 1018 for DE405), and the Moon,
the Earth and the Sun evaluate to exactly the DE file's values.
"""
import argparse
import os
import sys

import numpy as np

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import jplde  # noqa: E402

KEEP = (2, 9, 10)  # pointer entries: Earth-Moon barycentre, Moon, Sun


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument('de')
    ap.add_argument('output')
    ap.add_argument('--from', dest='jd_from', type=float)
    ap.add_argument('--to', dest='jd_to', type=float)
    a = ap.parse_args()
    de = jplde.DeFile(a.de)
    starts = de.start + de.step * np.arange(len(de.records))
    keep = np.ones(len(starts), bool)
    if a.jd_from is not None:
        keep &= starts + de.step > a.jd_from
    if a.jd_to is not None:
        keep &= starts < a.jd_to
    recs = de.records[keep]
    if len(recs) == 0:
        sys.exit('no records in the range')
    pointers4 = [(0, 0, 0, 2 if e == 11 else 3) for e in range(13)]
    columns = [recs[:, 0:2]]
    first = 3
    for e in KEEP:
        f, n, s = de.pointers[e]
        size = n * s * 3
        columns.append(recs[:, f - 1:f - 1 + size])
        pointers4[e] = (first, n, s, 3)
        first += size
    out = np.hstack(columns)
    jplde.write_kq(a.output, de.denum, float(recs[0, 0]), de.step, de.au, de.emrat, pointers4, de.ncon, out)
    print('%s: DE%d Moon, Earth-Moon barycentre and Sun, JD %.1f to %.1f, %d records of %d coefficients'
          % (a.output, de.denum, recs[0, 0], recs[-1, 1], len(recs), out.shape[1]))


if __name__ == '__main__':
    main()
