"""kvxlib: positional astronomy from the kvxlib C library, through ctypes.

    >>> from datetime import datetime, timezone
    >>> import kvxlib
    >>> tokyo = kvxlib.Observer(35.6895, 139.6917, 40.0)
    >>> m = kvxlib.moon(datetime(2024, 1, 1, 12, tzinfo=timezone.utc), tokyo)
    >>> round(m.distance_km)  # doctest: +SKIP

Angles are degrees, distances in astronomical units (the Moon's in
kilometres); each field's unit is in its dataclass metadata ("unit").
"""
from ._version import __version__
from ._native import KvxError, LibraryNotFoundError
from ._api import (PLANETS, Horizontal, MoonPhaseEvent, MoonPosition, Observer, PlanetPosition, RiseSet,
                   SunPosition, Time, UnknownBodyError, batch, data_files, moon, moon_phases, planet, rise_set, sun)

__all__ = ["__version__", "KvxError", "LibraryNotFoundError", "UnknownBodyError", "Observer", "Time",
           "Horizontal", "SunPosition", "MoonPosition", "PlanetPosition", "MoonPhaseEvent", "RiseSet", "PLANETS",
           "sun", "moon", "planet", "rise_set", "moon_phases", "batch", "data_files"]
