#!/usr/bin/python3
"""Fit the built-in analytic series of Mercury, Venus and Jupiter.

Least squares of the library's series forms against Swiss Ephemeris
heliocentric positions (JPL DE431 through the Swiss Ephemeris files
1800-2400 of swe-basic-data, Moshier's analytic ephemeris before and after),
AD 1000-3000, on the mean ecliptic and equinox of date as the library itself
defines them: each Swiss Ephemeris J2000.0 vector is carried to the date
with the library's own precession matrix and mean obliquity (GetPrecMtx,
GetEp through ctypes), so that the series, turned back into a J2000.0
vector by the dispatcher, reproduce the ephemeris with no difference of
precession model.

    cmake --build build            # libkvxlib.so for the frame
    /usr/bin/python3 tools/fit_planet_series.py --lib build/libkvxlib.so \
        --out src/solar/planet/planet_series_table.cpp

Needs numpy, scipy and libswe-dev + swe-basic-data (tools/swe_helio.c is
compiled on the fly). Deterministic: fixed random seed, fixed term counts.

The forms (angles in degrees, T in Julian centuries):

Mercury, T from J2000.0; every term (a + b T) cos(phase + rate T):
  l = 252.2502 + 149474.0714 T + sum, r = 0.395283 + sum, b = sum,
  with the leading terms kept as given (longitude: 23.4405/2.9818 pair,
  latitude: 6.7057, radius: 0.078341) and the rest fitted.
Venus, T from J1900.0 (JD 2415020.0):
  l = L0 + L1 T + L2 T^2 + (E0 + E1 T) sin(g0 + g1 T + 2 S) + sum A sin(p + n T)
  S = sum of 12 terms s sin(p + n T)
  b, r: sums of (a + b T) sin(p + n T) (r with a constant).
Jupiter, T from J1900.0:
  mean longitude L = L0 + L1 T + L2 T^2 + sum P sin(p + n T) (long-period
  perturbations), mean anomaly M = L - w, w = w0 + w1 T, Kepler's equation
  with e = e0 + e1 T, true anomaly v; argument of latitude u = w + v - N;
  l = N + atan2(cos i sin u, cos u) + sum, b = asin(sin i sin u) + sum,
  r = a (1 - e cos E) + sum, i = i0 + i1 T, N = N0 + N1 T, sums of
  (a + b T) sin(p + n T).

Frequencies are integer combinations of the mean motions of date (rounded
values after J. L. Simon et al., "Numerical expressions for precession
formulae and mean elements for the Moon and the planets", A&A 282, 663,
1994), chosen greedily (orthogonal matching pursuit) and then refined with
the other parameters by nonlinear least squares.
"""
import argparse
import ctypes
import os
import subprocess
import sys
import tempfile

import numpy as np
from scipy.optimize import least_squares

JD_LO, JD_HI = 2086307.5, 2816787.5
JD_1800, JD_2200 = 2378496.5, 2524593.5
J2000, J1900 = 2451545.0, 2415020.0
D2R = np.pi / 180.0
AS = 3600.0

# Mean motions of date (degrees per Julian century).
RATE = {
    'Me': 149474.0722, 'V': 58519.2130, 'E': 36000.7698, 'Ma': 19141.6965,
    'J': 3036.3028, 'S': 1223.5111, 'U': 429.8641,
}
# Perihelion and node rates of date (degrees per century).
PERI = {'Me': 1.5565, 'V': 1.4022, 'J': 1.6126}
NODE = {'Me': 1.1862, 'V': 0.9011, 'J': 1.0210}


# ---------------------------------------------------------------- data ---

def build_swe(tmp):
    src = os.path.join(os.path.dirname(os.path.abspath(__file__)), 'swe_helio.c')
    exe = os.path.join(tmp, 'swe_helio')
    subprocess.run(['cc', '-O2', src, '-lswe', '-lm', '-o', exe], check=True)
    return exe


def swe_rows(exe, body, jds):
    text = '\n'.join('%.6f' % j for j in jds) + '\n'
    out = subprocess.run([exe, str(body)], input=text, capture_output=True, text=True, check=True).stdout
    return np.array([[float(x) for x in line.split()] for line in out.splitlines()])


class Frame:
    """The library's J2000.0 -> mean ecliptic of date rotation."""

    def __init__(self, path):
        self.lib = ctypes.CDLL(path)
        self.lib.GetEp.restype = ctypes.c_double
        self.lib.GetEp.argtypes = [ctypes.c_double]
        self.lib.GetPrecMtx.restype = None
        self.lib.GetPrecMtx.argtypes = [ctypes.c_double, ctypes.c_double, ctypes.POINTER(ctypes.c_double)]

    def lbr(self, jds, xyz):
        m = (ctypes.c_double * 9)()
        out = np.empty((len(jds), 3))
        for k, (jd, v) in enumerate(zip(jds, xyz)):
            self.lib.GetPrecMtx(jd, J2000, m)  # date -> J2000, the dispatcher's matrix
            M = np.array(m[:]).reshape(3, 3)
            q = M.T @ v
            eps = self.lib.GetEp(jd) * D2R
            c, s = np.cos(eps), np.sin(eps)
            x, y, z = q[0], c * q[1] + s * q[2], -s * q[1] + c * q[2]
            out[k] = (np.degrees(np.arctan2(y, x)) % 360.0, np.degrees(np.arctan2(z, np.hypot(x, y))),
                      np.sqrt(x * x + y * y + z * z))
        return out


def sample_dates(rng, n_all, n_modern):
    a = rng.uniform(JD_LO + 1.0, JD_HI - 1.0, n_all)
    b = rng.uniform(JD_1800, JD_2200, n_modern)
    return np.sort(np.concatenate([a, b]))


def wrap(x):
    return (x + 180.0) % 360.0 - 180.0


# ---------------------------------------------------- generic term sums ---

def term_sum(T, terms, trig):
    """terms: array (k, 4) of a, b, phase (deg), rate (deg/cy)."""
    out = np.zeros_like(T)
    f = np.cos if trig == 'cos' else np.sin
    for a, b, p, n in terms:
        out += (a + b * T) * f((p + n * T) * D2R)
    return out


def term_jac(T, terms, trig, linear):
    cols = []
    for a, b, p, n in terms:
        x = (p + n * T) * D2R
        c, s = (np.cos(x), -np.sin(x)) if trig == 'cos' else (np.sin(x), np.cos(x))
        amp = a + b * T
        cols.append(c)
        if linear:
            cols.append(T * c)
        cols.append(amp * s * D2R)
        cols.append(amp * s * T * D2R)
    return np.column_stack(cols) if cols else np.zeros((len(T), 0))


def pack(terms, linear):
    return np.concatenate([t if linear else t[[0, 2, 3]] for t in terms]) if len(terms) else np.zeros(0)


def unpack(v, linear):
    k = 4 if linear else 3
    rows = v.reshape(-1, k)
    if linear:
        return rows.copy()
    return np.column_stack([rows[:, 0], np.zeros(len(rows)), rows[:, 1], rows[:, 2]])


def candidates(nM, nF, perturbers, jmax, fmax, kfs=(0,)):
    """Integer combinations j nM + k nF + sum kP nP (k in kfs), at most two
    perturbers, as non-negative frequencies (degrees per century)."""
    combos = [()]
    names = list(perturbers)
    for i, p in enumerate(names):
        for k in range(1, perturbers[p] + 1):
            for s in (k, -k):
                combos.append(((p, s),))
        for q in names[i + 1:]:
            for k1 in (-2, -1, 1, 2):
                for k2 in (-2, -1, 1, 2):
                    combos.append(((p, k1), (q, k2)))
    seen = set()
    out = []
    for j in range(-jmax, jmax + 1):
        for kf in kfs:
            for c in combos:
                f = j * nM + kf * nF + sum(k * RATE[p] for p, k in c)
                f = abs(f)
                if f > fmax:
                    continue
                key = round(f, 3)
                if key in seen:
                    continue
                seen.add(key)
                out.append(f)
    return np.array(sorted(out))


def greedy(y, T, cands, count, trig, linear, base=None, exclude=(), forced=()):
    """Orthogonal matching pursuit: pick count frequencies from cands for the
    residual y; returns terms (a, b, phase, rate) from the linear solution.
    base(T) optionally gives fixed extra columns solved along."""
    chosen = []
    sel = np.ones(len(cands), bool)
    for f in exclude:
        sel &= np.abs(cands - f) > 1e-6
    resid = y.copy()
    sub = slice(None, None, max(1, len(T) // 9000))
    Ts, = (T[sub],)

    def design(freqs):
        cols = []
        for f in freqs:
            x = f * T * D2R
            cols += [np.cos(x), np.sin(x)]
            if linear:
                cols += [T * np.cos(x), T * np.sin(x)]
        if base is not None:
            cols += list(base)
        return np.column_stack(cols)

    coef = None
    chosen = list(forced)
    if chosen:
        A = design(chosen)
        coef, *_ = np.linalg.lstsq(A, y, rcond=None)
        resid = y - A @ coef
    for _ in range(count):
        rs = resid[sub]
        best, bestf = -1.0, None
        idx = np.nonzero(sel)[0]
        for chunk in np.array_split(idx, max(1, len(idx) // 300)):
            x = np.outer(Ts, cands[chunk] * D2R)
            sc = (np.cos(x).T @ rs) ** 2 + (np.sin(x).T @ rs) ** 2
            k = int(np.argmax(sc))
            if sc[k] > best:
                best, bestf = sc[k], chunk[k]
        chosen.append(cands[bestf])
        sel[bestf] = False
        A = design(chosen)
        coef, *_ = np.linalg.lstsq(A, y, rcond=None)
        resid = y - A @ coef
    terms = []
    k = 4 if linear else 2
    turn = 90.0 if trig == 'sin' else 0.0
    tmax = np.abs(T).max()
    for i, f in enumerate(chosen):
        c = coef[i * k:(i + 1) * k]
        z0 = complex(c[0], -c[1])
        z1 = complex(c[2], -c[3]) if linear else 0j
        if abs(z1) * tmax <= 0.1 * abs(z0) or abs((z1 / z0).imag) * tmax < 1.0:
            # (a + b T) cos(phase + (rate + dn) T) to first order in T.
            r = z1 / z0 if abs(z0) > 0 else 0j
            a, b, dn = abs(z0), abs(z0) * r.real, r.imag
            terms.append([a, b, (np.degrees(np.angle(z0)) + turn) % 360.0, f + np.degrees(dn)])
        else:
            # Constant and secular parts out of phase: two terms.
            terms.append([abs(z0), 0.0, (np.degrees(np.angle(z0)) + turn) % 360.0, f])
            terms.append([0.0, abs(z1), (np.degrees(np.angle(z1)) + turn) % 360.0, f])
    return np.array(terms).reshape(-1, 4)


# --------------------------------------------------------------- Mercury ---

MERCURY_FIXED_L = np.array([[23.4405, 0.0023, 84.7947, 149472.5153], [2.9818, 0.0006, 259.589, 298945.031]])
MERCURY_FIXED_B = np.array([[6.7057, 0.0017, 113.919, 149472.886]])
MERCURY_FIXED_R = np.array([[0.078341, 8e-6, 354.795, 149472.515]])


def mercury_core(T):
    l = 252.2502 + 149474.0714 * T + term_sum(T, MERCURY_FIXED_L, 'cos')
    b = term_sum(T, MERCURY_FIXED_B, 'cos')
    r = 0.395283 + term_sum(T, MERCURY_FIXED_R, 'cos')
    return l, b, r


def mercury_eval(T, tab):
    l, b, r = mercury_core(T)
    return (l + term_sum(T, tab['lon'], 'cos'), b + term_sum(T, tab['lat'], 'cos'),
            r + term_sum(T, tab['rad'], 'cos'))


def refine_rows(y, T, terms, trig, linear, scale, extra=None):
    """Nonlinear least squares of a pure sum of terms against y (plus
    optional fixed-frequency polynomial columns 'extra' solved along)."""
    if len(terms) == 0:
        return terms

    def res(v):
        return (term_sum(T, unpack(v, linear), trig) - y) * scale

    def jac(v):
        return term_jac(T, unpack(v, linear), trig, linear) * scale

    sol = least_squares(res, pack(terms, linear), jac=jac, method='lm', max_nfev=60)
    return unpack(sol.x, linear)


def fit_mercury(T, lbr, counts):
    l0, b0, r0 = mercury_core(T)
    yl = wrap(lbr[:, 0] - l0)
    yb = lbr[:, 1] - b0
    yr = lbr[:, 2] - r0
    nM, nF = 149472.5153, 149472.886
    pert = {'V': 6, 'E': 4, 'Ma': 2, 'J': 3, 'S': 1}
    # Slow terms (multiples of the perihelion rate) stand for the secular
    # parts beyond linear, the quadratic term of precession among them.
    slow = PERI['Me'] * np.arange(0, 5)
    even = np.concatenate([slow, candidates(nM, nF, pert, 12, 13 * nM)])
    odd = candidates(nM, nF, pert, 12, 13 * nM, (-1, 1))
    tab = {}
    # Pairs of terms beating slowly about the main harmonics stand for their
    # amplitudes' and phases' curvature in time (cos((n+d)T) + cos((n-d)T) =
    # 2 cos(nT) cos(dT)), d twice the perihelion rate.
    d = 2.0 * PERI['Me']
    beats = {'lon': [j * nM + s * d for j in (1, 2, 3) for s in (-1, 1)],
             'rad': [j * nM + s * d for j in (1, 2) for s in (-1, 1)],
             'lat': [f + s * d for f in (nF, nF + nM) for s in (-1, 1)]}
    for key, y, n, sc in (('lon', yl, counts[0], AS), ('lat', yb, counts[1], AS), ('rad', yr, counts[2], 2.0626e5 / 0.39)):
        terms = greedy(y, T, odd if key == 'lat' else even, n, 'cos', True, forced=beats[key])
        terms = refine_rows(y, T, terms, 'cos', True, sc)
        tab[key] = sort_terms(terms)
        print('mercury', key, len(terms), 'terms', file=sys.stderr)
    return tab


def sort_terms(terms):
    order = np.argsort(-np.abs(terms[:, 0]))
    t = terms[order].copy()
    neg = t[:, 0] < 0  # positive amplitudes, phase turned by 180 degrees
    t[neg, 0] *= -1
    t[neg, 1] *= -1
    t[neg, 2] += 180.0
    t[:, 2] %= 360.0
    return t


# ----------------------------------------------------------------- Venus ---

def venus_lon(T, core, s_terms, rows):
    L0, L1, L2, E0, E1, g0, g1 = core
    S = term_sum(T, s_terms, 'sin')
    return (L0 + L1 * T + L2 * T * T + (E0 + E1 * T) * np.sin((g0 + g1 * T + 2.0 * S) * D2R)
            + term_sum(T, rows, 'sin'))


def venus_eval(T, tab):
    l = venus_lon(T, tab['core'], tab['s'], tab['lon'])
    b = term_sum(T, tab['lat'], 'sin')
    r = tab['r0'] + term_sum(T, tab['rad'], 'sin')
    return l, b, r


def fit_venus(T, lbr, counts):
    nV = RATE['V']
    ng, nF = nV - PERI['V'], nV - NODE['V']
    L0 = (181.979801 - nV) % 360.0
    g0 = (L0 - (131.563703 - PERI['V'])) % 360.0
    core = np.array([L0, nV, 3.1e-4, 0.7758, -0.0055, g0, ng])
    lam = lbr[:, 0]
    # Unwrap the observed longitude against the mean motion.
    def core_res(c, s_terms, rows):
        return wrap(venus_lon(T, c, s_terms, rows) - lam) * AS
    empty = np.zeros((0, 4))
    sol = least_squares(lambda c: core_res(c, empty, empty), core, method='lm', x_scale=np.array([1, 1, 1e-4, 1e-2, 1e-3, 1, 1]))
    core = sol.x
    pert = {'Me': 3, 'E': 5, 'Ma': 3, 'J': 3, 'S': 2}
    cands = candidates(ng, nF, pert, 6, 7 * ng)
    # The 12 phase terms S of the equation of the centre: greedy on the
    # residual with the product basis E cos(g) {sin, cos}(n T).
    y = -core_res(core, empty, empty) / AS
    E = core[3] + core[4] * T
    g = (core[5] + core[6] * T) * D2R
    w = 2.0 * E * np.cos(g) * D2R
    slow = cands[(cands < 0.5 * ng) & (cands > 1.0)]
    s_terms = greedy_weighted(y, T, slow, 12, w)
    rows = greedy(y - term_sum(T, s_terms, 'sin') * w, T, cands, counts[0], 'sin', False)
    # Joint refinement of core, S and rows on the longitude.
    ns = len(s_terms)

    def split(v):
        c = v[:7]
        s = unpack(v[7:7 + 3 * ns], False)
        r = unpack(v[7 + 3 * ns:], False)
        return c, s, r

    v0 = np.concatenate([core, pack(s_terms, False), pack(rows, False)])
    nc = 7 + 3 * ns

    def jac(v):
        # Core and S by differences, the rows (linear in their own terms)
        # analytically.
        f0 = core_res(*split(v))
        cols = []
        for k in range(nc):
            h = 1e-7 * max(1.0, abs(v[k]))
            u = v.copy()
            u[k] += h
            cols.append((core_res(*split(u)) - f0) / h)
        c, s_, r = split(v)
        return np.column_stack(cols + [term_jac(T, r, 'sin', False) * AS])

    sol = least_squares(lambda v: core_res(*split(v)), v0, jac=jac, method='lm', max_nfev=30)
    core, s_terms, rows = split(sol.x)
    tab = {'core': core, 's': sort_terms(s_terms), 'lon': sort_terms(rows)}
    # Latitude and radius: pure sums with amplitudes linear in T.
    yb = lbr[:, 1]
    t = greedy(yb, T, candidates(ng, nF, pert, 6, 7 * ng, (-1, 1)), counts[1], 'sin', True)
    tab['lat'] = sort_terms(refine_rows(yb, T, t, 'sin', True, AS))
    r0 = 0.723330
    yr = lbr[:, 2] - r0
    t = greedy(yr, T, np.concatenate([[0.0], cands]), counts[2], 'sin', True)
    tab['rad'] = sort_terms(refine_rows(yr, T, t, 'sin', True, 2.0626e5 / 0.72))
    tab['r0'] = r0
    print('venus', len(rows), len(tab['lat']), len(tab['rad']), 'terms', file=sys.stderr)
    return tab


def greedy_weighted(y, T, cands, count, w):
    """Greedy choice of sine terms s sin(p + n T) entering y as w * S."""
    chosen = []
    sel = np.ones(len(cands), bool)
    sub = slice(None, None, max(1, len(T) // 9000))
    Ts, ws = T[sub], w[sub]
    resid = y.copy()
    coef = None

    def design(freqs):
        cols = []
        for f in freqs:
            x = f * T * D2R
            cols += [w * np.cos(x), w * np.sin(x)]
        return np.column_stack(cols)

    for _ in range(count):
        rs = resid[sub]
        best, bestf = -1.0, None
        idx = np.nonzero(sel)[0]
        for chunk in np.array_split(idx, max(1, len(idx) // 300)):
            x = np.outer(Ts, cands[chunk] * D2R)
            c, s = np.cos(x) * ws[:, None], np.sin(x) * ws[:, None]
            sc = np.nan_to_num(((c.T @ rs) ** 2) / np.sum(c * c, 0) + ((s.T @ rs) ** 2) / np.sum(s * s, 0))
            k = int(np.argmax(sc))
            if sc[k] > best:
                best, bestf = sc[k], chunk[k]
        chosen.append(cands[bestf])
        sel[bestf] = False
        A = design(chosen)
        coef, *_ = np.linalg.lstsq(A, y, rcond=None)
        resid = y - A @ coef
    terms = []
    for i, f in enumerate(chosen):
        z0 = complex(coef[2 * i], -coef[2 * i + 1])
        terms.append([abs(z0), 0.0, (np.degrees(np.angle(z0)) + 90.0) % 360.0, f])
    return np.array(terms)


# --------------------------------------------------------------- Jupiter ---

JUP_CORE = 12  # L0 L1 L2 e0 e1 w0 w1 a i0 i1 N0 N1


def kepler(M, e):
    E = M + e * np.sin(M)
    for _ in range(8):
        E = E - (E - e * np.sin(E) - M) / (1.0 - e * np.cos(E))
    return E


def jupiter_core(T, c, p_terms):
    L0, L1, L2, e0, e1, w0, w1, a, i0, i1, N0, N1 = c
    L = L0 + L1 * T + L2 * T * T + term_sum(T, p_terms, 'sin')
    w = w0 + w1 * T
    e = e0 + e1 * T
    M = ((L - w) % 360.0) * D2R
    E = kepler(M, e)
    v = 2.0 * np.arctan2(np.sqrt(1.0 + e) * np.sin(E / 2.0), np.sqrt(1.0 - e) * np.cos(E / 2.0))
    u = (w - (N0 + N1 * T)) * D2R + v
    inc = (i0 + i1 * T) * D2R
    l = N0 + N1 * T + np.degrees(np.arctan2(np.cos(inc) * np.sin(u), np.cos(u)))
    b = np.degrees(np.arcsin(np.sin(inc) * np.sin(u)))
    r = a * (1.0 - e * np.cos(E))
    return l, b, r


def jupiter_eval(T, tab):
    l, b, r = jupiter_core(T, tab['core'], tab['p'])
    return (l + term_sum(T, tab['lon'], 'sin'), b + term_sum(T, tab['lat'], 'sin'),
            r + term_sum(T, tab['rad'], 'sin'))


def fit_jupiter(T, lbr, counts, n_p):
    nJ = RATE['J']
    L0 = (34.351519 - nJ) % 360.0
    core = np.array([L0, nJ, 3.1e-4, 0.048498, 0.000163, 14.331207 - PERI['J'], PERI['J'], 5.20260,
                     1.303267, -0.0054966, 100.464407 - NODE['J'], NODE['J']])
    rs = 2.0626e5 / 5.2
    empty = np.zeros((0, 4))

    def res(c, p, rows=(empty, empty, empty)):
        l, b, r = jupiter_core(T, c, p)
        return np.concatenate([wrap(l + term_sum(T, rows[0], 'sin') - lbr[:, 0]) * AS,
                               (b + term_sum(T, rows[1], 'sin') - lbr[:, 1]) * AS,
                               (r + term_sum(T, rows[2], 'sin') - lbr[:, 2]) * rs])

    xs = np.array([1, 1, 1e-4, 1e-4, 1e-5, 1, 1e-2, 1e-5, 1e-3, 1e-4, 1, 1e-2])
    core = least_squares(lambda c: res(c, empty), core, method='lm', x_scale=xs).x
    ng, nF = nJ - PERI['J'], nJ - NODE['J']
    pert = {'S': 7, 'U': 3, 'Ma': 2, 'E': 2}
    cands = candidates(ng, nF, pert, 6, 7 * ng)
    cands0 = np.concatenate([[0.0], cands])
    odd = candidates(ng, nF, pert, 6, 7 * ng, (-1, 1))
    # Long-period perturbations of the mean longitude.
    l, b, r = jupiter_core(T, core, empty)
    y = wrap(lbr[:, 0] - l)
    p_terms = greedy(y, T, cands[cands < 1000.0], n_p, 'sin', False)
    npar = len(p_terms)

    def split(v):
        return v[:JUP_CORE], unpack(v[JUP_CORE:], False)

    v0 = np.concatenate([core, pack(p_terms, False)])
    sol = least_squares(lambda v: res(*split(v)), v0, method='trf', x_scale='jac', max_nfev=60)
    core, p_terms = split(sol.x)
    tab = {'core': core, 'p': p_terms}
    for it in range(1):
        l, b, r = jupiter_core(T, core, p_terms)
        rows = []
        for y, n, sc, cs in ((wrap(lbr[:, 0] - l), counts[0], AS, cands0), (lbr[:, 1] - b, counts[1], AS, odd),
                             (lbr[:, 2] - r, counts[2], rs, cands0)):
            t = greedy(y, T, cs, n, 'sin', True)
            rows.append(refine_rows(y, T, t, 'sin', True, sc))
        # Core and P again with the rows held.
        sol = least_squares(lambda v: res(*split(v), rows), np.concatenate([core, pack(p_terms, False)]),
                            method='trf', x_scale='jac', max_nfev=30)
        core, p_terms = split(sol.x)
    l, b, r = jupiter_core(T, core, p_terms)
    tab = {'core': core, 'p': sort_terms(p_terms)}
    for key, y, n, sc, cs in (('lon', wrap(lbr[:, 0] - l), counts[0], AS, cands0),
                              ('lat', lbr[:, 1] - b, counts[1], AS, odd), ('rad', lbr[:, 2] - r, counts[2], rs, cands0)):
        t = greedy(y, T, cs, n, 'sin', True)
        tab[key] = sort_terms(refine_rows(y, T, t, 'sin', True, sc))
    print('jupiter', npar, [len(tab[k]) for k in ('lon', 'lat', 'rad')], 'terms', file=sys.stderr)
    return tab


# ---------------------------------------------------------------- output ---

def rounded(tab):
    """The table as written (the printed digits), for the accuracy report."""
    out = {}
    for k, v in tab.items():
        if isinstance(v, np.ndarray):
            out[k] = np.array([float('%.10g' % x) for x in v.ravel()]).reshape(v.shape)
        else:
            out[k] = float('%.10g' % v)
    return out


def stats(model, T, lbr, jds):
    l, b, r = model(T)
    dl = np.abs(wrap(l - lbr[:, 0])) * AS * np.cos(lbr[:, 1] * D2R)
    db = np.abs(b - lbr[:, 1]) * AS
    dr = np.abs(r - lbr[:, 2])
    ang = np.hypot(dl, db)
    res = {}
    for name, sel in (('1000-3000', np.ones(len(jds), bool)), ('1800-2200', (jds >= JD_1800) & (jds <= JD_2200))):
        res[name] = (ang[sel].max(), np.sqrt(np.mean(ang[sel] ** 2)), (dr[sel] / lbr[sel, 2]).max() * 2.0626e5,
                     dr[sel].max())
    return res


def fmt_terms(name, terms, comment, linear=True, three=False):
    lines = ['// %s' % comment, 'const SeriesTerm %s[] = {' % name]
    for a, b, p, n in terms:
        lines.append('    {%.10g, %.10g, %.10g, %.10g},' % (a, b, p, n))
    lines.append('};')
    lines.append('const int %sCount = static_cast<int>(sizeof %s / sizeof %s[0]);' % (name, name, name))
    return '\n'.join(lines)


def write_table(path, merc, ven, jup, report):
    c = ven['core']
    j = jup['core']
    head = f"""// Coefficients of the built-in analytic series of Mercury, Venus and
// Jupiter: heliocentric longitude, latitude (degrees) and radius (AU) on the
// mean ecliptic and equinox of date. Evaluated by planet_series.cpp.
//
// Source: least-squares fit by tools/fit_planet_series.py (this
// repository) to Swiss Ephemeris 2.10 (libswe with the swe-basic-data files:
// JPL DE431 1800-2400, Moshier's analytic ephemeris before and after),
// AD 1000-3000, {report['samples']} dates per planet (a third of them in 1800-2200), the
// ecliptic of date being the library's own (IAU 2006 precession matrix and
// mean obliquity). Mercury's leading terms (mean longitude 252.2502 +
// 149474.0714 T; the 23.4405 and 2.9818 degree terms of the equation of the
// centre; the 6.7057 degree latitude term; the radius constant 0.395283 and
// its 0.078341 AU term) are kept as given and the rest fitted around them.
// Frequencies are integer combinations of the mean motions of date (after
// Simon et al., A&A 282, 663, 1994), chosen greedily and refined with the
// amplitudes by nonlinear least squares. Regenerate with
//   /usr/bin/python3 tools/fit_planet_series.py --lib build/libkvxlib.so
//       --out src/solar/planet/planet_series_table.cpp
//
// Accuracy of these (rounded) coefficients against the ephemeris on
// {report['check']} independent dates: heliocentric direction (arcseconds,
// maximum / rms) and radius (maximum, AU):
"""
    for name in ('Mercury', 'Venus', 'Jupiter'):
        for span, (mx, rms, rr, dr) in report[name].items():
            head += '//   %-8s %s: %7.2f" / %6.2f",  radius %.1e AU\n' % (name, span, mx, rms, dr)
    body = ['#include "solar/planet/planet_series_table.h"', '', 'namespace kvx::planet {', '']
    body.append(fmt_terms('kMercuryLon', merc['lon'], 'Mercury longitude beyond the leading terms: (a + b T) cos(phase + rate T).'))
    body.append('')
    body.append(fmt_terms('kMercuryLat', merc['lat'], 'Mercury latitude beyond the leading term.'))
    body.append('')
    body.append(fmt_terms('kMercuryRad', merc['rad'], 'Mercury radius beyond the constant and the leading term.'))
    body.append('')
    body.append('// Venus: L0, L1, L2 of the mean longitude; E0, E1 of the amplitude of the\n'
                '// equation of the centre; g0, g1 of the mean anomaly (T from J1900.0).')
    body.append('const VenusCore kVenusCore = {%s};' % ', '.join('%.10g' % x for x in c))
    body.append('')
    body.append(fmt_terms('kVenusPhase', ven['s'], 'Venus: the 12 terms S of the phase of the equation of the centre, s sin(phase + rate T) (b = 0).'))
    body.append('')
    body.append(fmt_terms('kVenusLon', ven['lon'], 'Venus longitude: A sin(phase + rate T) (b = 0).'))
    body.append('')
    body.append(fmt_terms('kVenusLat', ven['lat'], 'Venus latitude: (a + b T) sin(phase + rate T).'))
    body.append('')
    body.append('// Venus mean radius (AU).')
    body.append('const double kVenusRadius0 = %.10g;' % ven['r0'])
    body.append(fmt_terms('kVenusRad', ven['rad'], 'Venus radius: (a + b T) sin(phase + rate T).'))
    body.append('')
    body.append('// Jupiter: mean longitude L0 L1 L2, eccentricity e0 e1, longitude of\n'
                '// perihelion w0 w1, semi-major axis a, inclination i0 i1, node N0 N1\n'
                '// (T from J1900.0; degrees, AU).')
    body.append('const JupiterCore kJupiterCore = {%s};' % ', '.join('%.10g' % x for x in j))
    body.append('')
    body.append(fmt_terms('kJupiterMeanLon', jup['p'], 'Jupiter: long-period perturbations of the mean longitude, P sin(phase + rate T) (b = 0).'))
    body.append('')
    body.append(fmt_terms('kJupiterLon', jup['lon'], 'Jupiter longitude: (a + b T) sin(phase + rate T).'))
    body.append('')
    body.append(fmt_terms('kJupiterLat', jup['lat'], 'Jupiter latitude: (a + b T) sin(phase + rate T).'))
    body.append('')
    body.append(fmt_terms('kJupiterRad', jup['rad'], 'Jupiter radius: (a + b T) sin(phase + rate T).'))
    body.append('')
    body.append('}  // namespace kvx::planet')
    with open(path, 'w') as f:
        f.write(head + '\n'.join(body) + '\n')


def main():
    ap = argparse.ArgumentParser(description=__doc__.split('\n')[0])
    ap.add_argument('--lib', required=True, help='libkvxlib.so (for the frame of date)')
    ap.add_argument('--out', required=True)
    ap.add_argument('--samples', type=int, default=24000)
    ap.add_argument('--check', type=int, default=20000)
    ap.add_argument('--only', help='fit one planet and write nothing (development)')
    args = ap.parse_args()
    rng = np.random.default_rng(20240611)
    frame = Frame(os.path.abspath(args.lib))
    report = {'samples': args.samples, 'check': args.check}
    tabs = {}
    with tempfile.TemporaryDirectory() as tmp:
        exe = build_swe(tmp)
        for name, body, epoch in (('Mercury', 2, J2000), ('Venus', 3, J1900), ('Jupiter', 5, J1900)):
            if args.only and args.only != name:
                continue
            jds = sample_dates(rng, args.samples * 2 // 3, args.samples // 3)
            rows = swe_rows(exe, body, jds)
            lbr = frame.lbr(rows[:, 0], rows[:, 1:4])
            T = (rows[:, 0] - epoch) / 36525.0
            if name == 'Mercury':
                tab = fit_mercury(T, lbr, (60, 40, 40))
                model = mercury_eval
            elif name == 'Venus':
                tab = fit_venus(T, lbr, (70, 24, 28))
                model = venus_eval
            else:
                tab = fit_jupiter(T, lbr, (40, 25, 30), 6)
                model = jupiter_eval
            tabs[name] = rounded(tab)
            if args.only:
                np.save('/tmp/fit_%s.npy' % name, tabs[name], allow_pickle=True)
            cj = sample_dates(rng, args.check * 2 // 3, args.check // 3)
            crow = swe_rows(exe, body, cj)
            clbr = frame.lbr(crow[:, 0], crow[:, 1:4])
            Tc = (crow[:, 0] - epoch) / 36525.0
            report[name] = stats(lambda t: model(t, tabs[name]), Tc, clbr, crow[:, 0])
            for span, v in report[name].items():
                print('%-8s %s: max %.2f" rms %.2f" radius %.2e AU' % (name, span, v[0], v[1], v[3]), file=sys.stderr)
    if args.only:
        return
    write_table(args.out, tabs['Mercury'], tabs['Venus'], tabs['Jupiter'], report)


if __name__ == '__main__':
    main()
