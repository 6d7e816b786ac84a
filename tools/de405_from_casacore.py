#!/usr/bin/python3
"""Writes a genuine JPL DE405 binary file from Debian's casacore DE405 table.

  apt-get install python3-casacore casacore-data-jpl-de405
  tools/de405_from_casacore.py de405.bin [--from JD] [--to JD]

The table (/usr/share/casacore/data/ephemerides/DE405) has one row per
32-day record: MJD is the record's start; x holds the record's coefficients
3..1018 (without the two leading dates) followed by two zeros; the column
keyword Description of x is the 3 x 13 pointer table; the table keywords
are the DE405 constants (DENUM, AU, EMRAT, ...). The whole table covers
JD 2436912.5 to 2473488.5. --from/--to cut out the records that overlap
[from, to] (for small test files).
"""
import argparse
import os
import sys

import numpy as np

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import jplde  # noqa: E402

TABLE = '/usr/share/casacore/data/ephemerides/DE405'
NOT_CONSTANTS = {'VS_CREATE', 'VS_DATE', 'VS_VERSION', 'VS_TYPE', 'TAB_VERSION', 'MJD0', 'dMJD'}


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument('output')
    ap.add_argument('--table', default=TABLE)
    ap.add_argument('--from', dest='jd_from', type=float)
    ap.add_argument('--to', dest='jd_to', type=float)
    a = ap.parse_args()

    from casacore.tables import table
    t = table(a.table, ack=False)
    kw = t.getkeywords()
    constants = [(k, float(v)) for k, v in kw.items() if k not in NOT_CONSTANTS]
    denum = int(kw['DENUM'])
    pt = np.asarray(t.getcolkeywords('x')['Description']).reshape(3, 13)
    pointers = [tuple(int(v) for v in pt[:, i]) for i in range(13)]
    mjd = np.asarray(t.getcol('MJD'), dtype=float)
    x = np.asarray(t.getcol('x'), dtype=float)
    step = float(kw.get('dMJD', 32.0))
    if not np.all(np.diff(mjd) == step):
        sys.exit('records are not contiguous')
    jd0 = mjd + 2400000.5
    keep = np.ones(len(mjd), bool)
    if a.jd_from is not None:
        keep &= jd0 + step > a.jd_from
    if a.jd_to is not None:
        keep &= jd0 < a.jd_to
    jd0, x = jd0[keep], x[keep]
    if len(jd0) == 0:
        sys.exit('no records in the range')
    ncoeff = jplde.COEFFS_BY_VERSION[denum]
    records = np.zeros((len(jd0), ncoeff))
    records[:, 0] = jd0
    records[:, 1] = jd0 + step
    records[:, 2:] = x[:, :ncoeff - 2]
    if np.any(x[:, ncoeff - 2:] != 0):
        sys.exit('unexpected coefficients past the record')
    jplde.write_de(a.output, denum, float(jd0[0]), step, float(kw['AU']), float(kw['EMRAT']), pointers,
                   constants, records, 'JPL Planetary Ephemeris DE%d/LE%d' % (denum, int(kw['LENUM'])))
    print('%s: DE%d, JD %.1f to %.1f, %d records' % (a.output, denum, jd0[0], jd0[-1] + step, len(jd0)))


if __name__ == '__main__':
    main()
