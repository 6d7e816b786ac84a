#!/usr/bin/python3
"""Offsets of planetary satellites from their planet by PyEphem (python3-ephem),
whose satellite routines follow the Bureau des Longitudes theories (Lieske's
E5 for Jupiter, TASS for Saturn, GUST86 for Uranus, ESAPHO/ESADE for Mars).

Writes: jd_ut delta_t_s code dx_arcsec dy_arcsec, where dx, dy are the
geocentric offsets of the satellite from the planet's centre on the sky,
east and north, in arcseconds: PyEphem's x and -y (planet radii) times the
planet's apparent radius. (Its a_ra of a satellite adds x to the planet's
right ascension without dividing by cos Dec, so the a_ra difference is not
used.)

  /usr/bin/python3 tests/reference/moons_pyephem.py > tests/reference/data/moons_pyephem.txt
"""
import ephem

MOONS = [
    (501, ephem.Jupiter, ephem.Io), (502, ephem.Jupiter, ephem.Europa),
    (503, ephem.Jupiter, ephem.Ganymede), (504, ephem.Jupiter, ephem.Callisto),
    (601, ephem.Saturn, ephem.Mimas), (602, ephem.Saturn, ephem.Enceladus),
    (603, ephem.Saturn, ephem.Tethys), (604, ephem.Saturn, ephem.Dione),
    (605, ephem.Saturn, ephem.Rhea), (606, ephem.Saturn, ephem.Titan),
    (607, ephem.Saturn, ephem.Hyperion), (608, ephem.Saturn, ephem.Iapetus),
    (701, ephem.Uranus, ephem.Ariel), (702, ephem.Uranus, ephem.Umbriel),
    (703, ephem.Uranus, ephem.Titania), (704, ephem.Uranus, ephem.Oberon),
    (705, ephem.Uranus, ephem.Miranda),
]

print('# PyEphem %s: satellite offsets from the planet, geocentric astrometric J2000.0' % ephem.__version__)
print('# jd_ut delta_t_s code dx_arcsec dy_arcsec')
JD_DUBLIN = 2415020.0  # ephem.Date zero


def dates(j0, j1, n):
    # Uneven steps, so the rows sample every phase of the orbits.
    return [j0 + (j1 - j0) * k / (n - 1) + 0.4137 * k for k in range(n)]


# Phobos and Deimos are left out: PyEphem's drift by tens of degrees a year
# against JPL's mean elements.
# PyEphem's satellites come from the Bureau des Longitudes tables inside
# about 1999-2030 (2000-2020 used here); outside them its Mars and Uranus
# satellites answer nothing and its Saturn satellites are not usable.
for code, planet, moon in MOONS:
    for jd in dates(2451544.5, 2458849.5, 14):
        d = ephem.Date(jd - JD_DUBLIN)
        dt = ephem.delta_t(d)
        p = planet(d)
        m = moon(d)
        r = float(p.radius) * 206264.80624709636
        dx = m.x * r
        dy = -m.y * r
        print('%.6f %.3f %d %.4f %.4f' % (jd, dt, code, dx, dy))
