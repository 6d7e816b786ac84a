#!/usr/bin/python3
"""Rise, transit, set and twilight times from PyEphem (python3-ephem).

PyEphem's horizon is set to the one the library uses: refraction 35'08"
(PyEphem's own refraction off, pressure 0), the dip of the horizon for the
observer's height, atan(sqrt((H + 2R) H) / R) with R = 6378137 m, and for
the Sun its upper limb (use_center=False; every other body: its centre).
Twilight is the Sun's geometric centre at -6, -12 and -18 degrees.

Writes, under tests/reference/data/:
  riseset_pyephem.txt   Sun, Moon, Mercury..Pluto, stars: rise, transit, set
  riseset_twilight_pyephem.txt  the Sun's centre at -6/-12/-18, morning and evening
  riseset_polar_pyephem.txt     polar day and night, and transits near the poles

Every row is one local civil day [midnight, midnight + 1) in zone tz, with
the event's UT Julian date, or a state when PyEphem finds none that day.
Events within 3 minutes of the day's ends are left out (a second of
difference would move them to the neighbouring day).

Run: /usr/bin/python3 tests/reference/make_riseset_reference.py
"""
import math
import os
import random

import ephem

DUBLIN = 2415020.0
REFRACTION_DEG = 35.0 / 60.0 + 8.0 / 3600.0
R_EARTH = 6378137.0
EDGE = 3.0 / 1440.0  # days kept clear of the window's ends

# state column: 1 event found; 0 none in the window; 2 always up; 3 never up
STARS = [  # J2000.0 right ascension, declination (degrees)
    (101.2872, -16.7161),   # Sirius
    (279.2347, 38.7837),    # Vega
    (95.9880, -52.6957),    # Canopus
    (37.9546, 89.2641),     # Polaris
    (213.9153, 19.1824),    # Arcturus
    (219.9021, -60.8340),   # alpha Centauri
    (88.7929, 7.4071),      # Betelgeuse
    (310.3580, 45.2803),    # Deneb
    (186.6496, -63.0991),   # Acrux
    (152.0930, 11.9672),    # Regulus
]
PLANETS = [ephem.Mercury, ephem.Venus, ephem.Mars, ephem.Jupiter, ephem.Saturn,
           ephem.Uranus, ephem.Neptune, ephem.Pluto]


def dip_deg(h):
    return math.degrees(math.atan(math.sqrt(abs((h + 2 * R_EARTH) * h)) / R_EARTH))


def jd_of(y, m, d):
    return ephem.julian_date(ephem.Date((y, m, d)))


def observer(lat, lon, height, horizon_deg):
    o = ephem.Observer()
    o.lat = math.radians(lat)
    o.lon = math.radians(lon)
    o.elevation = height
    o.pressure = 0.0
    o.horizon = math.radians(horizon_deg)
    return o


def body_for(code, ra=0.0, dec=0.0):
    if code == -2:
        return ephem.Sun()
    if code == -1:
        return ephem.Moon()
    if code == -10:
        b = ephem.FixedBody()
        b._ra = math.radians(ra)
        b._dec = math.radians(dec)
        b._epoch = ephem.J2000
        return b
    return PLANETS[code]()


def find(o, body, event, start, use_center):
    """(state, jd) of the first event at or after start within one day."""
    o.date = ephem.Date(start - DUBLIN)
    try:
        if event == 1:
            d = o.next_rising(body, use_center=use_center)
        elif event == 3:
            d = o.next_setting(body, use_center=use_center)
        else:
            d = o.next_transit(body)
    except ephem.AlwaysUpError:
        return 2, 0.0
    except ephem.NeverUpError:
        return 3, 0.0
    jd = float(d) + DUBLIN
    return (1, jd) if jd < start + 1.0 else (0, jd)


def random_day(rng, lat_range, years=(1900, 2100)):
    lat = rng.uniform(*lat_range)
    lon = rng.uniform(-180.0, 180.0)
    height = rng.choice([0.0, rng.uniform(0.0, 4000.0)])
    y = rng.randint(*years)
    m = rng.randint(1, 12)
    d = rng.randint(1, 28)
    tz = float(round(lon / 15.0))
    return lat, lon, height, y, m, d, tz


def clear_of_edges(state, jd, start):
    if state == 1:
        return start + EDGE < jd < start + 1.0 - EDGE
    if state == 0:
        return jd > start + 1.0 + EDGE
    return True


def main_table(rng, out):
    cases = [(-2, 150), (-1, 200)] + [(k, 40) for k in range(8)] + [(-10, 120)]
    out.write("# body lat lon height year month day tz event ra dec state jd_ut\n")
    for code, n in cases:
        for _ in range(n):
            lat, lon, height, y, m, d, tz = random_day(rng, (-60.0, 65.0))
            ra, dec = rng.choice(STARS) if code == -10 else (0.0, 0.0)
            start = jd_of(y, m, d) - tz / 24.0
            o = observer(lat, lon, height, -(REFRACTION_DEG + dip_deg(height)))
            for event in (1, 2, 3):
                body = body_for(code, ra, dec)
                state, jd = find(o, body, event, start, use_center=(code != -2))
                if not clear_of_edges(state, jd, start):
                    continue
                out.write("%d %.5f %.5f %.1f %d %d %d %.1f %d %.4f %.4f %d %.8f\n" %
                          (code, lat, lon, height, y, m, d, tz, event, ra, dec, state,
                           jd if state == 1 else 0.0))


def twilight_table(rng, out):
    out.write("# lat lon height year month day tz altitude event state jd_ut\n")
    for _ in range(150):
        lat, lon, height, y, m, d, tz = random_day(rng, (-60.0, 65.0))
        start = jd_of(y, m, d) - tz / 24.0
        for alt in (-6, -12, -18):
            o = observer(lat, lon, height, alt)
            for event in (1, 3):
                state, jd = find(o, ephem.Sun(), event, start, use_center=True)
                if not clear_of_edges(state, jd, start):
                    continue
                out.write("%.5f %.5f %.1f %d %d %d %.1f %d %d %d %.8f\n" %
                          (lat, lon, height, y, m, d, tz, alt, event, state, jd if state == 1 else 0.0))


def polar_table(rng, out):
    out.write("# body lat lon height year month day tz event state jd_ut\n")
    # Polar day and night of the Sun beyond the polar circles, around the solstices.
    for _ in range(60):
        lat = rng.choice([1, -1]) * rng.uniform(68.0, 89.5)
        lon = rng.uniform(-180.0, 180.0)
        y = rng.randint(1900, 2100)
        m = rng.choice([6, 12])
        d = rng.randint(10, 30)
        tz = float(round(lon / 15.0))
        start = jd_of(y, m, d) - tz / 24.0
        o = observer(lat, lon, 0.0, -REFRACTION_DEG)
        for event in (1, 2, 3):
            state, jd = find(o, ephem.Sun(), event, start, use_center=False)
            if not clear_of_edges(state, jd, start):
                continue
            out.write("%d %.5f %.5f %.1f %d %d %d %.1f %d %d %.8f\n" %
                      (-2, lat, lon, 0.0, y, m, d, tz, event, state, jd if state == 1 else 0.0))
    # Transits seen from the poles: the meridian of the given longitude.
    for _ in range(30):
        lat = rng.choice([90.0, -90.0])
        lon = rng.uniform(-180.0, 180.0)
        y = rng.randint(1900, 2100)
        m = rng.randint(1, 12)
        d = rng.randint(1, 28)
        tz = float(round(lon / 15.0))
        start = jd_of(y, m, d) - tz / 24.0
        o = observer(lat, lon, 0.0, -REFRACTION_DEG)
        state, jd = find(o, ephem.Sun(), 2, start, use_center=False)
        if state == 1 and clear_of_edges(state, jd, start):
            out.write("%d %.5f %.5f %.1f %d %d %d %.1f %d %d %.8f\n" %
                      (-2, lat, lon, 0.0, y, m, d, tz, 2, state, jd))


def main():
    here = os.path.join(os.path.dirname(os.path.abspath(__file__)), "data")
    rng = random.Random(20261124)
    with open(os.path.join(here, "riseset_pyephem.txt"), "w") as f:
        f.write("# PyEphem %s, horizon -(35'08\" + dip), pressure 0; Sun upper limb, others centre\n"
                % ephem.__version__)
        main_table(rng, f)
    with open(os.path.join(here, "riseset_twilight_pyephem.txt"), "w") as f:
        f.write("# PyEphem %s, the Sun's geometric centre at the altitude, pressure 0\n" % ephem.__version__)
        twilight_table(rng, f)
    with open(os.path.join(here, "riseset_polar_pyephem.txt"), "w") as f:
        f.write("# PyEphem %s, horizon -35'08\", pressure 0, Sun upper limb\n" % ephem.__version__)
        polar_table(rng, f)


if __name__ == "__main__":
    main()
