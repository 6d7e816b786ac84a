#!/usr/bin/python3
"""Starts and ends of occultations and eclipses of Io..Callisto from PyEphem
(python3-ephem): its earth_visible flag (false while a satellite is behind
Jupiter as seen from the Earth's centre) and sun_visible flag (false while it
is in Jupiter's shadow), sampled every 5 minutes and bisected to 0.5 s.

Writes: jd_ut satellite kind start (kind 1 occultation, 3 eclipse; start 1
for the beginning, 0 for the end).

  /usr/bin/python3 tests/reference/jovian_events_pyephem.py > tests/reference/data/jovian_events_pyephem.txt
"""
import ephem

MOONS = [ephem.Io, ephem.Europa, ephem.Ganymede, ephem.Callisto]
JD_DUBLIN = 2415020.0
STEP = 5.0 / 1440.0


def flags(jd, k):
    m = MOONS[k](ephem.Date(jd - JD_DUBLIN))
    return (not m.earth_visible, not m.sun_visible)


def search(jd0, jd1):
    events = []
    for k in range(4):
        prev = flags(jd0, k)
        jd = jd0
        while jd < jd1:
            nxt = jd + STEP
            cur = flags(nxt, k)
            for which, kind in ((0, 1), (1, 3)):
                if cur[which] != prev[which]:
                    lo, hi = jd, nxt
                    while (hi - lo) * 86400.0 > 0.5:
                        mid = 0.5 * (lo + hi)
                        if flags(mid, k)[which] == prev[which]:
                            lo = mid
                        else:
                            hi = mid
                    events.append((0.5 * (lo + hi), k + 1, kind, 1 if cur[which] else 0))
            prev = cur
            jd = nxt
    return sorted(events)


print('# PyEphem %s: occultations (1) and eclipses (3) of the Galilean satellites, geocentric' % ephem.__version__)
print('# jd_ut satellite kind start')
# Two fortnights: before and after the 2023 November opposition, and near
# the 2026 January opposition.
for jd0, jd1 in ((2460200.5, 2460215.5), (2460320.5, 2460335.5), (2461030.5, 2461040.5)):
    for e in search(jd0, jd1):
        print('%.7f %d %d %d' % e)
