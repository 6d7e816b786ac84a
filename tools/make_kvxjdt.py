#!/usr/bin/python3
"""Writes the Delta T file "kvxjdt.dat" (version 2) from the IERS/NIST
leap-second list that Debian's tzdata installs.

  tools/make_kvxjdt.py [--list /usr/share/zoneinfo/leap-seconds.list]
                       [--no-expiry] > kvxjdt.dat

Version 2 format: the header line "# KVXJDT VER.2", then one line per step
of UTC, newest first: the Julian date (UTC) at which the step takes effect,
a space, and TAI - UTC in seconds from that date. The library stores each
as Delta T = (TAI - UTC + 32.184 s) / 86400 days (TT - UTC; UT1 - UTC stays
below 0.9 s) and uses the newest entry for five years after its date.

The list gives NTP seconds since 1900-01-01 (JD 2415020.5). Its "#@" line
is the date until which the list asserts that no further step occurs; an
entry at that date with the current TAI - UTC is written first, so the table
holds up to five years past the list's expiry (--no-expiry leaves it out).
The SHA-1 of the list's "#h" line is checked.
"""
import argparse
import hashlib
import sys

NTP_EPOCH_JD = 2415020.5


def read_list(path):
    steps, expiry, updated, digest = [], None, None, None
    data = []
    for line in open(path, encoding='ascii'):
        if line.startswith('#@'):
            expiry = int(line.split()[1])
            data.append(line[2:].split()[0])
        elif line.startswith('#$'):
            updated = int(line.split()[1])
            data.append(line[2:].split()[0])
        elif line.startswith('#h'):
            digest = ''.join(line[2:].split())
        elif line.strip() and not line.startswith('#'):
            fields = line.split('#')[0].split()
            steps.append((int(fields[0]), int(fields[1])))
            data.extend(fields[:2])
    if digest is not None and hashlib.sha1(''.join(data).encode()).hexdigest() != digest:
        sys.exit('%s: the #h checksum does not match' % path)
    return steps, expiry, updated


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument('--list', default='/usr/share/zoneinfo/leap-seconds.list')
    ap.add_argument('--no-expiry', action='store_true')
    a = ap.parse_args()
    steps, expiry, _ = read_list(a.list)
    if not steps:
        sys.exit('%s: no leap seconds found' % a.list)
    rows = [(NTP_EPOCH_JD + s / 86400.0, d) for s, d in steps]
    if expiry is not None and not a.no_expiry and NTP_EPOCH_JD + expiry / 86400.0 > rows[-1][0]:
        rows.append((NTP_EPOCH_JD + expiry / 86400.0, steps[-1][1]))
    out = ['# KVXJDT VER.2']
    out += ['%.1f %d' % r for r in reversed(rows)]
    sys.stdout.write('\n'.join(out) + '\n')


if __name__ == '__main__':
    main()
