#!/usr/bin/python3
"""Reference dust-tail grains and ion-tail tips by numerical integration.

Each grain leaves the nucleus with the nucleus' velocity and moves under the
reduced solar attraction (1 - beta) GM; it is integrated here with SciPy's
8th-order Dormand-Prince scheme (DOP853, relative tolerance 1e-13) from the
comet's state at emission, which comes from this script's own Kepler
solution of the elements. No Kepler orbit is used for the grains. The Earth
is PyEphem's (VSOP87): its heliocentric vector is minus the geocentric
astrometric Sun. Places are geocentric astrometric (J2000.0), with the
grain's own light time.

Writes data/comet_tails_integration.txt:
    dust rows:  0 comet jde beta age sep_deg pa_deg r_au
    ion rows:   1 comet jde wind_kms length_au aberration_deg sep_deg pa_deg
sep/pa: angular distance and position angle (north through east) of the
grain (tail tip) from the nucleus.
"""
import math
import os

import ephem
import numpy as np
from scipy.integrate import solve_ivp

K = 0.01720209895               # Gaussian constant, rad/day
LIGHT = 0.005775518308          # days per AU
AU_KM = 149597870.0
# The elements' ecliptic is turned to the equator with the obliquity the
# library uses for the equinox 2000.0 (IAU 2006, 84381.406"): the comparison
# is about the grains' motion, not about that convention (the IAU 1980 value
# 84381.448" would turn every vector by 0.042").
EPS = math.radians(84381.406 / 3600.0)
DJD0 = 2415020.0                # ephem.Date zero

# Osculating elements (J2000.0 ecliptic): T (JD, TT), q, e, omega, node, incl.
COMETS = [
    # C/2020 F3 (NEOWISE), epoch 2020 July
    (2459034.1784, 0.2946494, 0.9991780, 37.27865, 61.01042, 128.93750),
    # C/1995 O1 (Hale-Bopp), epoch 1997 April
    (2450539.6378, 0.9141424, 0.9950681, 130.58870, 282.47070, 89.43000),
]
# Instants (JDE), radiation-pressure ratios and ages (days) per comet.
CASES = [
    (2459050.5, [0.02, 0.1, 0.3, 0.6, 1.0], [1.0, 3.0, 6.0, 10.0, 15.0]),
    (2450532.5, [0.05, 0.2, 0.5, 1.0], [5.0, 15.0, 30.0, 60.0]),
]
WINDS = [400.0, 250.0, 800.0]
ION_LENGTH = 0.1


def kepler_state(el, t):
    """Heliocentric equatorial J2000 position and velocity (elliptic orbit)."""
    T, q, e, w, node, inc = el
    a = q / (1.0 - e)
    n = K / a ** 1.5
    M = n * (t - T)
    E = M if e < 0.8 else math.copysign(math.pi, M) if abs(M) > 1 else M
    for _ in range(100):
        dE = (E - e * math.sin(E) - M) / (1.0 - e * math.cos(E))
        E -= dE
        if abs(dE) < 1e-15:
            break
    x, y = a * (math.cos(E) - e), a * math.sqrt(1 - e * e) * math.sin(E)
    edot = n / (1.0 - e * math.cos(E))
    vx, vy = -a * math.sin(E) * edot, a * math.sqrt(1 - e * e) * math.cos(E) * edot
    w, node, inc = map(math.radians, (w, node, inc))
    cw, sw, cn, sn, ci, si = map(lambda f: f[0](f[1]), [(math.cos, w), (math.sin, w), (math.cos, node),
                                                       (math.sin, node), (math.cos, inc), (math.sin, inc)])
    P = np.array([cw * cn - sw * sn * ci, cw * sn + sw * cn * ci, sw * si])
    Q = np.array([-sw * cn - cw * sn * ci, -sw * sn + cw * cn * ci, cw * si])
    R = np.array([[1, 0, 0], [0, math.cos(EPS), -math.sin(EPS)], [0, math.sin(EPS), math.cos(EPS)]])
    return R @ (x * P + y * Q), R @ (vx * P + vy * Q)


def earth(jde):
    d = ephem.Date(jde - DJD0)
    d = ephem.Date(jde - DJD0 - ephem.delta_t(d) / 86400.0)
    s = ephem.Sun(d)
    ra, dec, r = float(s.a_ra), float(s.a_dec), s.earth_distance
    return -r * np.array([math.cos(dec) * math.cos(ra), math.cos(dec) * math.sin(ra), math.sin(dec)])


def retarded(pos_at, t, E):
    d = np.linalg.norm(pos_at(t) - E)
    for _ in range(20):
        p = pos_at(t - d * LIGHT)
        d1 = np.linalg.norm(p - E)
        if abs(d1 - d) * LIGHT < 1e-9:
            break
        d = d1
    return p


def grain_path(el, beta, t0, t1):
    p0, v0 = kepler_state(el, t0)
    mu = (1.0 - beta) * K * K

    def f(_, y):
        r = y[:3]
        return np.concatenate([y[3:], -mu * r / np.linalg.norm(r) ** 3])

    sol = solve_ivp(f, (t0, t1), np.concatenate([p0, v0]), method="DOP853", rtol=1e-13, atol=1e-16,
                    dense_output=True)
    return lambda t: sol.sol(t)[:3]


def main():
    out = os.path.join(os.path.dirname(os.path.abspath(__file__)), "data", "comet_tails_integration.txt")
    rows = []
    for c, (el, (jde, betas, ages)) in enumerate(zip(COMETS, CASES)):
        E = earth(jde)
        head = retarded(lambda t: kepler_state(el, t)[0], jde, E)
        for beta in betas:
            for age in ages:
                g = retarded(grain_path(el, beta, jde - age, jde), jde, E)
                d = g - head
                rows.append("0 %d %.4f %.4f %.2f %.12f %.12f %.12f %.10f" % (c, jde, beta, age, *d, np.linalg.norm(g)))
        # Ion tail at the nucleus' retarded instant.
        d = np.linalg.norm(head - E)
        for _ in range(20):
            p, v = kepler_state(el, jde - d * LIGHT)
            d = np.linalg.norm(p - E)
        for wind in WINDS:
            rel = wind * 86400.0 / AU_KM * p / np.linalg.norm(p) - v
            u = rel / np.linalg.norm(rel)
            ab = math.degrees(math.acos(np.dot(u, p / np.linalg.norm(p))))
            d = ION_LENGTH * u
            rows.append("1 %d %.4f %.1f %.3f %.8f %.12f %.12f %.12f" % (c, jde, wind, ION_LENGTH, ab, *d))
    with open(out, "w") as fh:
        fh.write("# kind comet jde beta|wind_kms age|length_au [aberration_deg] dx dy dz [r_au]\n")
        fh.write("# made by tests/reference/comet_tails_integration.py (SciPy DOP853, PyEphem %s)\n" % ephem.__version__)
        fh.write("\n".join(rows) + "\n")


if __name__ == "__main__":
    main()
