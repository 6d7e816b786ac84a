"""Times and observers: what the binding adds over the C records."""
from datetime import datetime, timedelta, timezone

import pytest

import kvxlib


def test_aware_datetimes_in_any_zone_give_the_same_instant():
    # The README's C example: 2000-01-01 21:00 in zone +9 is J2000.0 (12:00 UT).
    tokyo = datetime(2000, 1, 1, 21, 0, tzinfo=timezone(timedelta(hours=9)))
    utc = datetime(2000, 1, 1, 12, 0, tzinfo=timezone.utc)
    assert kvxlib.Time.from_datetime(tokyo).jd == 2451545.0
    assert kvxlib.Time.from_datetime(utc).jd == 2451545.0


def test_naive_datetime_is_refused():
    with pytest.raises(ValueError, match="naive"):
        kvxlib.sun(datetime(2000, 1, 1, 12, 0))
    with pytest.raises(TypeError):
        kvxlib.sun(2451545.0)


@pytest.mark.parametrize("when", [
    datetime(1582, 10, 15, 0, 0, tzinfo=timezone.utc),  # first Gregorian day
    datetime(1999, 12, 31, 23, 59, 59, 500000, tzinfo=timezone.utc),
    datetime(2024, 2, 29, 6, 30, 15, 250000, tzinfo=timezone.utc),
    datetime(2100, 3, 1, 0, 0, 0, 1000, tzinfo=timezone.utc),
])
def test_datetime_round_trip(when):
    back = kvxlib.Time.from_datetime(when).to_datetime()
    # A Julian date near 2.4e6 days carries about 40 microseconds of
    # resolution (ulp 4.7e-10 d); GetJd and JdToDate2 each round once.
    assert abs((back - when).total_seconds()) < 1e-4


def test_delta_t_and_dynamical_time():
    t = kvxlib.Time.from_datetime(datetime(2000, 1, 1, 12, tzinfo=timezone.utc))
    # Observed TT - UT at 2000.0 is 63.83 s; the library's table is built
    # from the leap seconds (32.184 + 32 s) and the observed values.
    assert 63.0 < t.delta_t < 65.0
    assert t.jde == pytest.approx(t.jd + t.delta_t / 86400.0, abs=1e-12)
    # from_jde inverts: the same dynamical instant to float resolution.
    u = kvxlib.Time.from_jde(2451545.0)
    assert u.jde == pytest.approx(2451545.0, abs=2e-9)
    assert kvxlib.Time.from_jde(2451545.0, delta_t=60.0).jd == pytest.approx(2451545.0 - 60.0 / 86400.0, abs=1e-9)


def test_observer_is_validated():
    with pytest.raises(ValueError):
        kvxlib.Observer(91.0, 0.0)
    with pytest.raises(ValueError):
        kvxlib.Observer(0.0, float("nan"))
    assert kvxlib.Observer(-90.0, 359.0, -400.0).height == -400.0

