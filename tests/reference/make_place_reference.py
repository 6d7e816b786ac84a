#!/usr/bin/python3
"""Reference values for the apparent-place corrections and the coordinate
systems, computed with ERFA (python3-erfa) and numpy.

Writes into tests/reference/data/:
  place_aberration.csv   annual aberration, erfa.ab with the Earth's
                         barycentric velocity from erfa.epv00
  place_deflection.csv   light deflection, erfa.ldsun (stars) and erfa.ld
  place_star.csv         apparent place of a star: erfa.pmpx, erfa.ldsun,
                         erfa.ab, erfa.pmat06, nutation matrix
  place_horizontal.csv   hour angle/declination <-> azimuth/altitude,
                         erfa.hd2ae
  place_frames.csv       J2000.0 -> mean/apparent equator and ecliptic of
                         date, horizontal, B1950.0 and galactic

Conventions shared with the library under test:
  - the nutation matrix is erfa.numat(obl06, nut80) (IAU 1980 nutation on
    the IAU 2006 mean obliquity), the precession erfa.pmat06 (IAU 2006 with
    frame bias);
  - azimuth is measured from the south through the west (ERFA's azimuth
    from the north through the east minus 180 degrees);
  - the local sidereal time of the horizontal rows is erfa.gmst82 (UT1)
    plus erfa.eqeq94 plus the east longitude.
Run: /usr/bin/python3 tests/reference/make_place_reference.py
"""
import math
import os

import erfa
import numpy as np

DATA = os.path.join(os.path.dirname(__file__), "data")
RNG = np.random.default_rng(20240611)
D2R = math.pi / 180.0
R2D = 180.0 / math.pi
AULT_DAY = erfa.AULT / erfa.DAYSEC  # light time for 1 AU, in days


def unit(v):
    return v / np.linalg.norm(v)


def s2c(ra, dec):
    return erfa.s2c(ra * D2R, dec * D2R)


def c2ad(v):
    a, d = erfa.c2s(v)
    return (a * R2D) % 360.0, d * R2D


def random_dir():
    ra = RNG.uniform(0.0, 360.0)
    dec = math.degrees(math.asin(RNG.uniform(-1.0, 1.0)))
    return ra, dec


def earth(jde):
    """Heliocentric position and barycentric velocity (AU, AU/day), BCRS."""
    pvh, pvb = erfa.epv00(jde, 0.0)
    return pvh[0], pvb[1]


def nutation(jde):
    eps = erfa.obl06(jde, 0.0)
    dpsi, deps = erfa.nut80(jde, 0.0)
    return eps, dpsi, deps, erfa.numat(eps, dpsi, deps)


def aberrate(p, jde, frame=None):
    """erfa.ab of the unit vector p; frame rotates the BCRS velocity."""
    ph, vb = earth(jde)
    v = vb * AULT_DAY
    if frame is not None:
        v = frame @ v
        ph = frame @ ph
    s = np.linalg.norm(ph)
    bm1 = math.sqrt(1.0 - v @ v)
    return erfa.ab(p, v, s, bm1)


def fmt(values):
    return ",".join(repr(float(x)) for x in values)


def write(name, header, rows):
    with open(os.path.join(DATA, name), "w") as f:
        f.write("# " + header + "\n")
        for r in rows:
            f.write(fmt(r) + "\n")


def aberration_rows():
    # frame 0: direction and velocity on the true equator and equinox of
    # date (where the circular-orbit model is referred); frame 1: on the
    # J2000 axes, as the library applies it for stars and in conversions.
    rows = []
    for i in range(400):
        jde = RNG.uniform(2415020.5, 2488069.5)  # 1900..2100
        frame = i % 2
        eps, dpsi, deps, n = nutation(jde)
        eps_true = (eps + deps) * R2D
        ra, dec = random_dir()
        p = s2c(ra, dec)
        if frame == 0:
            m = n @ erfa.pmat06(jde, 0.0)
            a = aberrate(p, jde, m)
        else:
            a = aberrate(p, jde)
        rows.append([frame, jde, eps_true, *p, *a])
    write("place_aberration.csv",
          "frame(0 date,1 J2000), jde, epsTrue_deg, x, y, z, ab_x, ab_y, ab_z", rows)


def deflection_rows():
    # kind 0: star (erfa.ldsun); kind 1: body of the solar system at
    # heliocentric position q (erfa.ld with the Sun's unit mass, dlim 1e-9).
    rows = []
    for i in range(200):
        jde = RNG.uniform(2415020.5, 2488069.5)
        eh, _ = earth(jde)
        if i % 2 == 0:
            # Many stars close to the Sun, where the effect is large.
            if i % 4 == 0:
                sun = unit(-eh)
                off = unit(np.cross(sun, RNG.normal(size=3)))
                ang = RNG.uniform(0.3, 5.0) * D2R
                p = unit(math.cos(ang) * sun + math.sin(ang) * off)
            else:
                p = s2c(*random_dir())
            out = erfa.ldsun(p, unit(eh), np.linalg.norm(eh))
            rows.append([0, *p, 0.0, 0.0, 0.0, *eh, *out])
        else:
            q = unit(RNG.normal(size=3)) * RNG.uniform(0.4, 40.0)
            geo = q - eh
            p = unit(geo)
            out = erfa.ld(1.0, p, unit(q), unit(eh), np.linalg.norm(eh), 1e-9)
            rows.append([1, *p, *q, *eh, *out])
    write("place_deflection.csv", "kind(0 star,1 body), p_x, p_y, p_z, q_x, q_y, q_z, e_x, e_y, e_z, out_x, out_y, out_z", rows)


def star_rows():
    # A star at J2000.0 with proper motion (deg/yr, rate of RA itself) and
    # parallax (deg), seen at jde. The Sun's apparent place of date and the
    # Earth's heliocentric position are given, with the ERFA matrices of
    # date, so the test can fill its own record.
    rows = []
    for i in range(150):
        jde = RNG.uniform(2433282.5, 2469807.5)  # 1950..2050
        ra, dec = random_dir()
        dec = max(min(dec, 85.0), -85.0)
        pmra = RNG.uniform(-2.0, 2.0) / 3600.0 / math.cos(dec * D2R)
        pmdec = RNG.uniform(-2.0, 2.0) / 3600.0
        px = RNG.uniform(0.0, 0.8) / 3600.0
        eps, dpsi, deps, n = nutation(jde)
        pm = erfa.pmat06(jde, 0.0)
        eh, vb = earth(jde)
        # Sun's apparent place of date (geocentric direction -eh).
        sun_app = n @ pm @ aberrate(unit(-eh), jde)
        sra, sdec = c2ad(sun_app)
        # ERFA chain: space motion with zero radial velocity (erfa.pmpx,
        # proper motion in rad/yr with the RA rate of the angle itself,
        # parallax in arcsec) seen from an observer 1 AU from the Sun on
        # the Earth's side, as the 1 AU parallax model assumes; then
        # deflection, aberration, precession and nutation.
        t_years = (jde - 2451545.0) / 365.25
        pob = unit(eh)
        p = erfa.pmpx(ra * D2R, dec * D2R, pmra * D2R, pmdec * D2R, px * 3600.0, 0.0, t_years, pob)
        p = erfa.ldsun(p, unit(eh), np.linalg.norm(eh))
        p = aberrate(p, jde)
        p = n @ pm @ p
        rows.append([jde, (eps + deps) * R2D, ra, dec, pmra, pmdec, px, sra, sdec, *eh,
                     *pm.ravel(), *n.ravel(), *p])
    write("place_star.csv",
          "jde, epsTrue_deg, ra, dec, pmra_deg_per_yr, pmdec_deg_per_yr, parallax_deg, sun_ra, sun_dec, "
          "earth_x, earth_y, earth_z, pmat06[9], nutmtx[9], app_x, app_y, app_z", rows)


def horizontal_rows():
    rows = []
    for i in range(300):
        lst = RNG.uniform(0.0, 360.0)
        lat = RNG.uniform(-89.0, 89.0)
        if i < 4:
            lat = [0.0, 89.999, -89.999, 35.0][i]
        ra, dec = random_dir()
        ha = (lst - ra) * D2R
        az, el = erfa.hd2ae(ha, dec * D2R, lat * D2R)
        rows.append([lst, lat, ra, dec, (az * R2D - 180.0) % 360.0, el * R2D])
    write("place_horizontal.csv", "lst_deg, lat_deg, ra_of_date, dec_of_date, az_from_south, alt", rows)


def galactic_matrix():
    """B1950.0 equatorial -> galactic from the IAU 1958 pole and node."""
    l_node = 33.0 * D2R
    z = s2c(192.25, 27.4)
    # Ascending node of the galactic equator on the B1950 equator, and the
    # direction 90 degrees further along the galactic equator.
    node = unit(np.cross([0.0, 0.0, 1.0], z))
    ahead = np.cross(z, node)
    # The galactic x axis lies l_node before the node along the plane.
    x = math.cos(l_node) * node - math.sin(l_node) * ahead
    y = np.cross(z, x)
    return np.array([x, y, z])


def frames_rows():
    g = galactic_matrix()
    b1950 = 2433282.42346
    pb = erfa.pmat06(b1950, 0.0)
    rows = []
    for i in range(200):
        jd = RNG.uniform(2415020.5, 2488069.5)
        if i == 0:
            jd = 2451545.0
        dt = RNG.uniform(0.0, 90.0)
        jde = jd + dt / 86400.0
        lat = RNG.uniform(-80.0, 80.0)
        lon = RNG.uniform(-180.0, 180.0)
        ra, dec = random_dir()
        p = s2c(ra, dec)
        eps, dpsi, deps, n = nutation(jde)
        pm = erfa.pmat06(jde, 0.0)
        mean = pm @ p
        app = n @ pm @ aberrate(p, jde)
        ecl_mean = erfa.rx(eps, np.eye(3)) @ mean
        ecl_app = erfa.rx(eps, np.eye(3)) @ app
        lst = (erfa.gmst82(jd, 0.0) + erfa.eqeq94(jde, 0.0)) * R2D + lon
        hz = []
        for v in (mean, app):
            a, d = c2ad(v)
            az, el = erfa.hd2ae((lst - a) * D2R, d * D2R, lat * D2R)
            hz += [(az * R2D - 180.0) % 360.0, el * R2D]
        b = pb @ p
        gal = g @ b
        gl, gb = erfa.icrs2g(ra * D2R, dec * D2R)
        rows.append([jd, dt, lat, lon, ra, dec,
                     *c2ad(mean), *c2ad(app), *c2ad(ecl_mean), *c2ad(ecl_app), *hz,
                     *c2ad(b), *c2ad(gal), (gl * R2D) % 360.0, gb * R2D])
    write("place_frames.csv",
          "jd_ut, deltaT_s, lat, lon, ra_j2000, dec_j2000, mean(5) ra dec, apparent(6) ra dec, "
          "ecl_mean(8) lon lat, ecl_app(9) lon lat, horizontal(1) az alt, horizontal_app(2) az alt, "
          "b1950(4) ra dec, galactic_iau1958(10) l b, galactic_icrs2g l b", rows)


def main():
    os.makedirs(DATA, exist_ok=True)
    aberration_rows()
    deflection_rows()
    star_rows()
    horizontal_rows()
    frames_rows()


if __name__ == "__main__":
    main()
