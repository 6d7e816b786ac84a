#!/usr/bin/python3
"""Reference places of comets and minor planets from PyEphem (libastro) for
the same osculating elements as the library's tests.

Writes data/comet_orbits.txt, the ORBITS below for the tests, one row each:
    minor_planet T e q peri node incl H slope
and data/comets_pyephem.txt, one row per object and instant:
    obj jd_ut deltaT_s ra dec delta r mag
obj indexes ORBITS below; jd_ut is the universal-time Julian date, deltaT_s
PyEphem's Delta T at that instant (seconds), ra/dec the astrometric
geocentric place (J2000.0, light time applied, no aberration) in degrees,
delta and r the geocentric and heliocentric distances (AU) and mag PyEphem's
visual magnitude.
"""
import math
import os

import ephem

DJD0 = 2415020.0  # ephem.Date zero: 1899 December 31.5

# kind, T (JD, TT), e, q, argument of perihelion, node, inclination (J2000),
# magnitude parameters: comets (H, K) with m = H + 5 log delta + K log r,
# minor planets (H, G).
ORBITS = [
    ("C", 2446470.95, 0.967, 0.5871, 111.85, 58.14, 162.24, 5.5, 10.0),    # Halley-like, elliptic solver
    ("C", 2460700.50, 0.995, 1.1000, 40.00, 200.00, 70.00, 6.0, 8.0),      # near-parabolic ellipse
    ("C", 2460500.50, 1.000, 0.8500, 130.00, 20.00, 95.00, 7.0, 10.0),     # parabola
    ("C", 2460800.50, 1.060, 2.3000, 300.00, 150.00, 30.00, 8.0, 10.0),    # hyperbola
    ("M", 2454872.06723, 0.079275, 2.546744, 72.75528, 80.39565, 10.58586, 3.3, 0.12),  # Ceres
]


def body(o):
    kind, T, e, q, w, node, inc, H, s = o
    # libastro reckons the motion from its epochs in ephemeris time (mjed),
    # so the perihelion time goes in as it is (TT).
    Tdate = ephem.Date(T - DJD0)
    if e < 1.0:
        b = ephem.EllipticalBody()
        b._a = q / (1.0 - e)
        b._e = e
        b._M = 0.0
        b._epoch_M = Tdate
    else:
        # The parabola goes through HyperbolicBody with e - 1 = 1e-9 (its
        # places differ from the parabola's by far less than 1 mas):
        # PyEphem's ParabolicBody puts this orbit some 16" away from its own
        # elliptical and hyperbolic bodies with e within 1e-6 of 1.
        b = ephem.HyperbolicBody()
        b._q = q
        b._e = e if e > 1.0 else 1.0 + 1e-9
        b._epoch_p = Tdate
    b._inc, b._om, b._Om = inc, w, node
    b._epoch = ephem.Date("2000/1/1.5")
    if kind == "M":
        b._H, b._G = H, s
    else:
        b._g, b._k = H, s / 2.5
    return b


def main():
    data = os.path.join(os.path.dirname(os.path.abspath(__file__)), "data")
    with open(os.path.join(data, "comet_orbits.txt"), "w") as f:
        f.write("# The orbits of tests/reference/comets_pyephem.py (J2000.0): minor planets (1) with H, G; comets (0)\n")
        f.write("# with H and the slope K of m = H + 5 log delta + K log r\n")
        f.write("# minor_planet T e q peri node incl H slope\n")
        for o in ORBITS:
            f.write("%d %s\n" % (o[0] == "M", " ".join(repr(v) for v in o[1:])))
    out = os.path.join(data, "comets_pyephem.txt")
    with open(out, "w") as f:
        f.write("# PyEphem %s: astrometric geocentric places of orbits from elements\n" % ephem.__version__)
        f.write("# obj jd_ut deltaT_s ra dec delta r mag\n")
        for k, o in enumerate(ORBITS):
            b = body(o)
            T = o[1]
            for dt in (-300.0, -120.0, -45.0, -10.0, 0.0, 7.0, 30.0, 90.0, 200.0, 400.0):
                jd = T + dt
                d = ephem.Date(jd - DJD0)
                b.compute(d)
                f.write("%d %.6f %.4f %.9f %.9f %.10f %.10f %.3f\n" % (
                    k, jd, ephem.delta_t(d), math.degrees(b.a_ra), math.degrees(b.a_dec),
                    b.earth_distance, b.sun_distance, b.mag))


if __name__ == "__main__":
    main()
