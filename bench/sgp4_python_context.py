#!/usr/bin/python3
"""Context for bench_asat: python-sgp4's array API (Satrec.sgp4_array) per
propagated point, for the ISS set of the benchmark, 10 000 points one
minute apart. Debian's python3-sgp4 runs its pure-Python transcription
(sgp4.api.accelerated tells which)."""
import time

import numpy as np
from sgp4 import api

L1 = '1 25544U 98067A   08264.51782528 -.00002182  00000-0 -11606-4 0  2927'
L2 = '2 25544  51.6416 247.4627 0006703 130.5360 325.0288 15.72125391563537'
sat = api.Satrec.twoline2rv(L1, L2)
n = 10000
jd = np.full(n, sat.jdsatepoch)
fr = sat.jdsatepochF + np.arange(n) / 1440.0
best = None
for _ in range(3):
    t0 = time.perf_counter()
    e, r, v = sat.sgp4_array(jd, fr)
    dt = (time.perf_counter() - t0) / n
    best = dt if best is None else min(best, dt)
print('python-sgp4 sgp4_array (accelerated=%s): %.0f ns per point' % (api.accelerated, best * 1e9))
