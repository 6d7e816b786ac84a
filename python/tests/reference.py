"""Rows of the C tests' committed reference data (tests/reference/data) and
bounded comparisons that report the worst row, as tests/support/reference.h
does for the C tests."""
import math
import os
from pathlib import Path


def reference_dir() -> Path:
    env = os.environ.get("KVX_REFERENCE_DIR")
    if env:
        return Path(env)
    return Path(__file__).resolve().parents[2] / "tests" / "reference" / "data"


def rows(name, columns, every=1):
    """Rows of a reference file as dicts of the named columns; every n-th row."""
    out = []
    with open(reference_dir() / name) as f:
        for line in f:
            if not line.strip() or line.startswith("#"):
                continue
            values = [float(v) for v in line.replace(",", " ").split()]
            assert len(values) >= len(columns), f"{name}: short row {line!r}"
            out.append(dict(zip(columns, values)))
    assert out, f"{name}: no rows"
    return out[::every]


class Comparison:
    """Worst |error| of each quantity over a table, checked against a bound
    that states its reason."""

    def __init__(self, bounds):
        self.bounds = bounds  # quantity -> (limit, reason)
        self.worst = {q: (-1.0, None) for q in bounds}

    def add(self, quantity, error, row):
        e = abs(error)
        if math.isnan(e) or e > self.worst[quantity][0]:
            self.worst[quantity] = (math.inf if math.isnan(e) else e, row)

    def check(self):
        failures = []
        for q, (limit, reason) in self.bounds.items():
            value, row = self.worst[q]
            assert row is not None, f"{q}: no row compared"
            if not value < limit:
                failures.append(f"{q}: {value:.4g} >= {limit} ({reason}) at {row}")
        assert not failures, "\n".join(failures)


def sep_arcsec(ra1, dec1, ra2, dec2):
    """Angular separation of two directions (degrees in), arcseconds."""
    r = math.radians
    c = (math.sin(r(dec1)) * math.sin(r(dec2)) +
         math.cos(r(dec1)) * math.cos(r(dec2)) * math.cos(r(ra1 - ra2)))
    return math.degrees(math.acos(max(-1.0, min(1.0, c)))) * 3600.0
