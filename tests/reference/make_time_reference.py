#!/usr/bin/python3
"""Reference values for the time scales and the frame of date, from ERFA
(python3-erfa) and from formulas evaluated here independently.

Writes into tests/reference/data/:
  precession_pmat06.csv  jd(TT), the IAU 2006 bias-precession matrix
                         erfa.pmat06 (9 elements, row by row);
                         years -1000..+5000.
  nutation_nut80.csv     jd(TT), dpsi, deps (degrees) from erfa.nut80, the
                         full 106-term IAU 1980 series; years 1600..2400.
  sidereal_gmst82.csv    jd(UT), obliquity (deg), dpsi (deg), longitude
                         (deg), erfa.gmst82 + dpsi cos(eps) + longitude in
                         degrees 0..360.
  topocentre_gd2gce.csv  latitude, longitude (deg), height (m), jd(UT),
                         theta (deg), x, y, z (AU): erfa.gd2gce on GRS80
                         rotated by the apparent sidereal angle theta and
                         brought to the J2000.0 mean equator with
                         pmat06(J2000) pmat06(jd)^T; theta is
                         gmst82(jd) + dpsi cos(eps) with dpsi from nut80 and
                         eps from obl06 at jd + Delta T (below).
  delta_t.csv            jd(UT), Delta T (seconds): the Espenak-Meeus
                         polynomials (NASA TP-2006-214141) with the
                         -0.000012932 (y - 1955)^2 correction, TAI - UTC of
                         1961-1971 from erfa.dat + 32.184 s; y from the
                         Julian calendar before 1582 October 15 and the
                         Gregorian after (erfa.jd2cal).

Run: /usr/bin/python3 tests/reference/make_time_reference.py
"""
import math
import os
import random

import erfa
import numpy as np

DATA = os.path.join(os.path.dirname(__file__), "data")
J2000 = 2451545.0
AU_KM = 149597870.0
GRS80_A = 6378137.0  # metres
GRS80_F = 1.0 / 298.257222101


def civil_year_month(jd):
    """Year and month of a Julian date: Julian calendar up to 1582-10-04,
    Gregorian from 1582-10-15 (JD 2299160.5 on)."""
    if math.floor(jd + 0.5) >= 2299161:
        y, m, _, _ = erfa.jd2cal(jd, 0.0)
        return int(y), int(m)
    # Julian calendar: inverse day count (Meeus, Astronomical Algorithms, ch. 7).
    z = math.floor(jd + 0.5)
    b = z + 1524
    c = math.floor((b - 122.1) / 365.25)
    d = math.floor(365.25 * c)
    e = math.floor((b - d) / 30.6001)
    m = e - 1 if e < 14 else e - 13
    y = c - 4716 if m > 2 else c - 4715
    return int(y), int(m)


def delta_t_seconds(jd):
    """Delta T (s) by the Espenak-Meeus polynomials of the integer year, or
    the 1961-1971 UTC steps, with the secular-acceleration correction."""
    Y, M = civil_year_month(jd)
    y = Y + (M - 0.5) / 12.0
    if 2437300.5 <= jd < 2441317.5:
        yy, mm, dd, fd = erfa.jd2cal(jd, 0.0)
        dt = erfa.dat(yy, mm, dd, fd) + 32.184
    elif Y < -499:
        u = (y - 1820) / 100
        dt = -20 + 32 * u ** 2
    elif Y <= 500:
        u = y / 100
        dt = (10583.6 - 1014.41 * u + 33.78311 * u ** 2 - 5.952053 * u ** 3 - 0.1798452 * u ** 4
              + 0.022174192 * u ** 5 + 0.0090316521 * u ** 6)
    elif Y <= 1600:
        u = (y - 1000) / 100
        dt = (1574.2 - 556.01 * u + 71.23472 * u ** 2 + 0.319781 * u ** 3 - 0.8503463 * u ** 4
              - 0.005050998 * u ** 5 + 0.0083572073 * u ** 6)
    elif Y <= 1700:
        t = y - 1600
        dt = 120 - 0.9808 * t - 0.01532 * t ** 2 + t ** 3 / 7129
    elif Y <= 1800:
        t = y - 1700
        dt = 8.83 + 0.1603 * t - 0.0059285 * t ** 2 + 0.00013336 * t ** 3 - t ** 4 / 1174000
    elif Y <= 1860:
        t = y - 1800
        dt = (13.72 - 0.332447 * t + 0.0068612 * t ** 2 + 0.0041116 * t ** 3 - 0.00037436 * t ** 4
              + 0.0000121272 * t ** 5 - 0.0000001699 * t ** 6 + 0.000000000875 * t ** 7)
    elif Y <= 1900:
        t = y - 1860
        dt = (7.62 + 0.5737 * t - 0.251754 * t ** 2 + 0.01680668 * t ** 3 - 0.0004473624 * t ** 4
              + t ** 5 / 233174)
    elif Y <= 1920:
        t = y - 1900
        dt = -2.79 + 1.494119 * t - 0.0598939 * t ** 2 + 0.0061966 * t ** 3 - 0.000197 * t ** 4
    elif Y <= 1941:
        t = y - 1920
        dt = 21.20 + 0.84493 * t - 0.076100 * t ** 2 + 0.0020936 * t ** 3
    elif Y <= 1960:
        t = y - 1950
        dt = 29.07 + 0.407 * t - t ** 2 / 233 + t ** 3 / 2547
    elif Y <= 1986:
        t = y - 1975
        dt = 45.45 + 1.067 * t - t ** 2 / 260 - t ** 3 / 718
    elif Y <= 2005:
        t = y - 2000
        dt = (63.86 + 0.3345 * t - 0.060374 * t ** 2 + 0.0017275 * t ** 3 + 0.000651814 * t ** 4
              + 0.00002373599 * t ** 5)
    elif Y <= 2050:
        t = y - 2000
        dt = 62.92 + 0.32217 * t + 0.005589 * t ** 2
    elif Y <= 2150:
        dt = -20 + 32 * ((y - 1820) / 100) ** 2 - 0.5628 * (2150 - y)
    else:
        dt = -20 + 32 * ((y - 1820) / 100) ** 2
    return dt - 0.000012932 * (y - 1955) ** 2


def jd_of_year_start(year):
    """JD of January 1, 0h of a year (Julian calendar before 1583)."""
    if year >= 1583:
        a, b = erfa.cal2jd(year, 1, 1)
        return a + b
    yy = year - 1
    return math.floor(365.25 * (yy + 4716)) + math.floor(30.6001 * 14) + 1 - 1524.5


def write(name, header, rows, fmt):
    with open(os.path.join(DATA, name), "w") as f:
        for line in header:
            f.write("# " + line + "\n")
        for r in rows:
            f.write(fmt % tuple(r) + "\n")


def precession(rng):
    rows = []
    lo, hi = 1355795.0 + 1.0, 3547295.0 - 1.0
    for jd in list(np.linspace(lo, hi, 240)) + [rng.uniform(lo, hi) for _ in range(60)] + [J2000 + 0.5, J2000 + 2.0]:
        m = erfa.pmat06(jd, 0.0)
        rows.append([jd] + list(m.reshape(9)))
    write("precession_pmat06.csv",
          ["jd(TT), erfa.pmat06(jd) row by row: IAU 2006 bias-precession matrix",
           "made by make_time_reference.py"], rows, "%.17g" + ", %.17e" * 9)


def nutation(rng):
    rows = []
    lo, hi = jd_of_year_start(1600), jd_of_year_start(2400)
    for jd in list(np.linspace(lo, hi, 1201)) + [rng.uniform(lo, hi) for _ in range(300)]:
        dpsi, deps = erfa.nut80(jd, 0.0)
        rows.append([jd, math.degrees(dpsi), math.degrees(deps)])
    write("nutation_nut80.csv",
          ["jd(TT), dpsi, deps in degrees: erfa.nut80 (full 106-term IAU 1980 series)",
           "made by make_time_reference.py"], rows, "%.17g, %.17e, %.17e")


def sidereal(rng):
    rows = []
    for _ in range(400):
        jd = rng.uniform(jd_of_year_start(1600), jd_of_year_start(2400))
        jde = jd + delta_t_seconds(jd) / 86400.0
        eps = math.degrees(erfa.obl06(jde, 0.0))
        dpsi = math.degrees(erfa.nut80(jde, 0.0)[0])
        lon = rng.uniform(-180.0, 180.0)
        gmst = math.degrees(erfa.gmst82(jd, 0.0))
        lst = (gmst + dpsi * math.cos(math.radians(eps)) + lon) % 360.0
        rows.append([jd, eps, dpsi, lon, lst])
    write("sidereal_gmst82.csv",
          ["jd(UT), obliquity, dpsi, longitude, gmst82 + dpsi cos(eps) + longitude (degrees 0..360)",
           "made by make_time_reference.py"], rows, "%.17g, %.17g, %.17e, %.17g, %.17g")


def topocentre(rng):
    rows = []
    bias = erfa.pmat06(J2000, 0.0)
    for i in range(300):
        lat = rng.uniform(-90.0, 90.0) if i > 4 else [-90.0, 0.0, 45.0, 89.999, 90.0][i]
        lon = rng.uniform(-180.0, 180.0)
        h = rng.uniform(-500.0, 9000.0) if i % 3 else rng.uniform(-6000.0, 100000.0)
        jd = rng.uniform(jd_of_year_start(1800), jd_of_year_start(2200))
        jde = jd + delta_t_seconds(jd) / 86400.0
        eps = erfa.obl06(jde, 0.0)
        dpsi = erfa.nut80(jde, 0.0)[0]
        theta = erfa.gmst82(jd, 0.0) + dpsi * math.cos(eps)
        ecef = erfa.gd2gce(GRS80_A, GRS80_F, math.radians(lon), math.radians(lat), h)
        c, s = math.cos(theta), math.sin(theta)
        v = np.array([c * ecef[0] - s * ecef[1], s * ecef[0] + c * ecef[1], ecef[2]]) / 1000.0 / AU_KM
        # Mean equator of date (jd taken as is) to the mean equator of J2000.0.
        w = bias @ erfa.pmat06(jd, 0.0).T @ v
        rows.append([lat, lon, h, jd, math.degrees(theta) % 360.0, w[0], w[1], w[2]])
    write("topocentre_gd2gce.csv",
          ["latitude, longitude (deg), height (m), jd(UT), theta (deg), x, y, z (AU, J2000.0 mean equator)",
           "erfa.gd2gce on GRS80 turned by theta, then pmat06(J2000) pmat06(jd)^T; make_time_reference.py"],
          rows, "%.17g, %.17g, %.17g, %.17g, %.17g, %.17e, %.17e, %.17e")


def delta_t(rng):
    jds = []
    # Ends of every polynomial's range of integer years.
    for year in [-600, -500, -499, 0, 500, 501, 1000, 1600, 1601, 1700, 1701, 1800, 1801, 1860, 1861,
                 1900, 1901, 1920, 1921, 1941, 1942, 1950, 1960, 1961, 1986, 1987, 2000, 2005, 2006,
                 2050, 2051, 2150, 2151, 2500, 3000]:
        start = jd_of_year_start(year)
        end = jd_of_year_start(year + 1) - 0.25
        jds += [start + 0.25, end, start + 180.3]
    # Inside the 1961-1971 UTC steps, on both sides of every step.
    for step in [2437300.5, 2437512.5, 2437665.5, 2438334.5, 2438395.5, 2438486.5, 2438639.5,
                 2438761.5, 2438820.5, 2438942.5, 2439004.5, 2439126.5, 2439887.5, 2441317.5]:
        jds += [step - 0.1, step + 0.1, step + 17.37]
    jds += [rng.uniform(jd_of_year_start(-3000), jd_of_year_start(4000)) for _ in range(200)]
    jds += [J2000]
    rows = [[jd, delta_t_seconds(jd)] for jd in sorted(jds)]
    write("delta_t.csv",
          ["jd(UT), Delta T (s): Espenak-Meeus polynomials, 1961-1971 from erfa.dat + 32.184,",
           "with -0.000012932 (y - 1955)^2; made by make_time_reference.py"], rows, "%.17g, %.17g")


def main():
    rng = random.Random(20240605)
    os.makedirs(DATA, exist_ok=True)
    precession(rng)
    nutation(rng)
    sidereal(rng)
    topocentre(rng)
    delta_t(rng)


if __name__ == "__main__":
    main()
