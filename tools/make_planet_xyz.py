#!/usr/bin/python3
"""Writes "planet.xyz", the planet position file, from a JPL DE file.

  tools/make_planet_xyz.py de405.bin planet.xyz [--from JD] [--to JD]
                           [--step BODY=DAYS ...] [--tolerance AU]

Format: rows of six little-endian float64 (48 bytes). One block per body:
a header row {file body number, first JD, last JD, step (days), rows
including the header, 48}, then rows {x, y, z, vx, vy, vz}: heliocentric
position (AU) and velocity (AU/day) on the axes of the J2000.0 equator (the
DE frame) at first JD + k step, dynamical time. Body numbers: 199 Mercury,
299 Venus, 399 Earth, 499 Mars, ..., 999 Pluto.

The reader interpolates with a ten-point Lagrange polynomial over the rows
around the date. Unless --step fixes it, each body's step is the largest
of the candidate steps whose interpolation error, measured against the DE
file at mid-points between rows across the whole span (with the reader's
choice of rows), stays below --tolerance (default 1e-9 AU). The measured
errors are printed.
"""
import argparse
import os
import sys

import numpy as np

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import jplde  # noqa: E402

BODIES = [(199, 1, 'Mercury'), (299, 2, 'Venus'), (399, 3, 'Earth'), (499, 4, 'Mars'),
          (599, 5, 'Jupiter'), (699, 6, 'Saturn'), (799, 7, 'Uranus'), (899, 8, 'Neptune'), (999, 9, 'Pluto')]
CANDIDATES = [0.25, 0.5, 1.0, 2.0, 4.0, 5.0, 8.0, 10.0, 16.0, 20.0, 32.0, 40.0, 50.0, 64.0, 80.0, 100.0]


def helio(de, jpl, jd):
    p, v = de.body(jpl, jd)
    sp, sv = de.body(11, jd)
    return np.concatenate([p - sp, v - sv])


def table(de, jpl, first, step, count):
    return np.array([helio(de, jpl, first + k * step) for k in range(count)])


def lagrange(x, xs, ys):
    s = np.zeros(ys.shape[1])
    for i in range(len(xs)):
        t = ys[i].copy()
        for j in range(len(xs)):
            if j != i:
                t *= (x - xs[j]) / (xs[i] - xs[j])
        s += t
    return s


def interpolation_error(de, jpl, first, step, rows):
    """Largest position and velocity errors (AU, AU/day) of the reader's
    interpolation at every mid-point between rows, where the ten-point
    error is largest, with the reader's choice of rows."""
    n = len(rows)
    mids = np.arange(n - 1)
    want = np.array([helio(de, jpl, first + (i + 0.5) * step) for i in mids])
    got = np.empty_like(want)
    # Away from the ends the window is rows i-4..i+5 and the weights of the
    # mid-point are the same for every i.
    nodes = np.arange(10.0)
    weights = np.array([np.prod([(4.5 - nodes[m]) / (nodes[k] - nodes[m]) for m in range(10) if m != k])
                        for k in range(10)])
    for i in mids:
        j = 0 if i < 4 else (i - 4 if i + 5 < n else n - 10)
        if j == i - 4:
            got[i] = weights @ rows[j:j + 10]
        else:
            got[i] = lagrange(first + (i + 0.5) * step, first + (j + nodes) * step, rows[j:j + 10])
    err = np.abs(got - want)
    return err[:, :3].max(), err[:, 3:].max()


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument('de')
    ap.add_argument('output')
    ap.add_argument('--from', dest='jd_from', type=float)
    ap.add_argument('--to', dest='jd_to', type=float)
    ap.add_argument('--step', action='append', default=[], help='BODY=DAYS, BODY a file number (199...)')
    ap.add_argument('--tolerance', type=float, default=1e-9)
    a = ap.parse_args()
    de = jplde.DeFile(a.de)
    lo = de.start if a.jd_from is None else max(a.jd_from, de.start)
    hi = de.end if a.jd_to is None else min(a.jd_to, de.end)
    fixed = {int(k): float(v) for k, v in (s.split('=') for s in a.step)}
    blocks = []
    for number, jpl, name in BODIES:
        chosen = None
        for step in ([fixed[number]] if number in fixed else CANDIDATES):
            count = int(np.floor((hi - lo) / step + 1e-9)) + 1
            if count < 10:
                break
            rows = table(de, jpl, lo, step, count)
            ep, ev = interpolation_error(de, jpl, lo, step, rows)
            if number in fixed or ep < a.tolerance:
                chosen = (step, count, rows, ep, ev)
            else:
                break
        if chosen is None:
            sys.exit('%s: no step keeps the error below %g AU' % (name, a.tolerance))
        step, count, rows, ep, ev = chosen
        print('%-8s %4d  step %6g d  %6d rows  max error %.2e AU  %.2e AU/day' % (name, number, step, count, ep, ev))
        header = [number, lo, lo + (count - 1) * step, step, count + 1, 48]
        blocks.append(np.vstack([header, rows]))
    np.vstack(blocks).astype('<f8').tofile(a.output)


if __name__ == '__main__':
    main()
