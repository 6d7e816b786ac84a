"""The Pythonic layer: times, observers and positions as dataclasses."""
import ctypes
import math
import threading
from dataclasses import dataclass, field
from datetime import date, datetime, timedelta, timezone, tzinfo
from typing import List, Optional, Union

from . import _native
from ._native import KvxError

_lib = None


def _library():
    global _lib
    if _lib is None:
        _lib = _native.load()
    return _lib


class UnknownBodyError(KvxError, ValueError):
    """A body name or code the library does not compute."""


def _deg(doc):
    return field(metadata={"unit": "deg", "doc": doc})


def _unit(unit, doc):
    return field(metadata={"unit": unit, "doc": doc})


@dataclass(frozen=True)
class Observer:
    """A place on the Earth: geodetic latitude and longitude (degrees, north
    and east positive) and height above the GRS80 ellipsoid (metres)."""
    latitude: float
    longitude: float
    height: float = 0.0

    def __post_init__(self):
        if not -90.0 <= self.latitude <= 90.0:
            raise ValueError(f"latitude {self.latitude} outside -90..90 degrees")
        if not all(math.isfinite(v) for v in (self.latitude, self.longitude, self.height)):
            raise ValueError("observer coordinates must be finite")

    def _c(self):
        return _native.Observer(self.latitude, self.longitude, self.height)


@dataclass(frozen=True)
class Time:
    """An instant: Julian date in universal time and Delta T = TT - UT in
    seconds (by default the library's own table)."""
    jd: float = _unit("d", "Julian date, universal time")
    delta_t: float = _unit("s", "TT - UT")

    @property
    def jde(self) -> float:
        """Julian date in dynamical time (TT)."""
        return self.jd + self.delta_t / 86400.0

    @classmethod
    def from_jd(cls, jd: float, delta_t: Optional[float] = None) -> "Time":
        if delta_t is None:
            delta_t = (_library().UtToDt(jd) - jd) * 86400.0
        return cls(float(jd), float(delta_t))

    @classmethod
    def from_jde(cls, jde: float, delta_t: Optional[float] = None) -> "Time":
        if delta_t is None:
            delta_t = (jde - _library().DtToUt(jde)) * 86400.0
        return cls(float(jde) - delta_t / 86400.0, float(delta_t))

    @classmethod
    def from_datetime(cls, when: datetime, delta_t: Optional[float] = None) -> "Time":
        if when.tzinfo is None or when.utcoffset() is None:
            raise ValueError("a naive datetime has no defined instant: give it a tzinfo (e.g. timezone.utc)")
        u = when.astimezone(timezone.utc)
        date = _native.ADate(u.year, u.month, u.day, u.hour, u.minute, u.second + u.microsecond * 1e-6, 0.0)
        return cls.from_jd(_library().GetJd(ctypes.byref(date)), delta_t)

    @classmethod
    def now(cls) -> "Time":
        return cls.from_datetime(datetime.now(timezone.utc))

    def to_datetime(self, tz: timezone = timezone.utc) -> datetime:
        """The instant as an aware datetime (to the microsecond)."""
        d = _native.ADate()
        _library().JdToDate2(self.jd, ctypes.byref(d))
        base = datetime(d.year, d.month, d.day, d.hour, d.minute, tzinfo=timezone.utc)
        return (base + timedelta(microseconds=round(d.second * 1e6))).astimezone(tz)


TimeLike = Union[datetime, Time]


def _time(t: TimeLike) -> Time:
    if isinstance(t, Time):
        return t
    if isinstance(t, datetime):
        return Time.from_datetime(t)
    raise TypeError(f"expected an aware datetime or a kvxlib.Time, got {type(t).__name__}")


def _atime(t: Time, observer: Optional[Observer]):
    at = _native.ATime()
    obs = ctypes.byref(observer._c()) if observer is not None else None
    _library().SetATimeJd2(t.jd, t.delta_t, 0.0, obs, ctypes.byref(at))
    return at


@dataclass(frozen=True)
class Horizontal:
    """Geometric altitude (no refraction) and azimuth from the north through
    the east, degrees."""
    azimuth: float = _deg("from the north through the east")
    altitude: float = _deg("geometric, no refraction")


def _horizontal(at, observer, ra_j2000, dec_j2000) -> Optional[Horizontal]:
    if observer is None:
        return None
    out = _native.Ad()
    _library().Coordinates(ctypes.byref(at), 3, ctypes.byref(_native.Ad(ra_j2000, dec_j2000)), 1, ctypes.byref(out))
    # The library counts azimuth from the south through the west.
    return Horizontal(azimuth=(out.a + 180.0) % 360.0, altitude=out.d)


@dataclass(frozen=True)
class _Place:
    """The place every body result starts with: its time and six angles."""
    time: Time
    ra_j2000: float = _deg("astrometric right ascension, J2000.0 mean equator")
    dec_j2000: float = _deg("astrometric declination, J2000.0 mean equator")
    ra: float = _deg("apparent right ascension of date")
    dec: float = _deg("apparent declination of date")
    ecl_lon: float = _deg("apparent ecliptic longitude, ecliptic of date")
    ecl_lat: float = _deg("ecliptic latitude, ecliptic of date")


@dataclass(frozen=True)
class SunPosition(_Place):
    distance_au: float = _unit("au", "observer to the Sun")
    semi_diameter_arcsec: float = _unit("arcsec", "apparent semi-diameter")
    horizontal: Optional[Horizontal] = None


@dataclass(frozen=True)
class MoonPosition(_Place):
    distance_km: float = _unit("km", "observer to the Moon's centre")
    semi_diameter_arcsec: float = _unit("arcsec", "apparent semi-diameter seen by the observer")
    illuminated_fraction: float = _unit("1", "0 new to 1 full")
    bright_limb_angle: float = _deg("position angle of the bright limb")
    age_days: float = _unit("d", "days since the last new Moon")
    horizontal: Optional[Horizontal] = None


@dataclass(frozen=True)
class PlanetPosition(_Place):
    name: str
    code: int
    distance_au: float = _unit("au", "observer to the body")
    sun_distance_au: float = _unit("au", "Sun to the body")
    magnitude: float = _unit("mag", "visual magnitude")
    diameter_arcsec: float = _unit("arcsec", "apparent equatorial diameter")
    illuminated_fraction: float = _unit("1", "illuminated fraction of the disc")
    bright_limb_angle: float = _deg("position angle of the bright limb")
    horizontal: Optional[Horizontal] = None


PLANETS = {"mercury": 0, "venus": 1, "mars": 2, "jupiter": 3, "saturn": 4, "uranus": 5, "neptune": 6,
           "pluto": 7, "eris": 8, "ceres": 9, "makemake": 10, "haumea": 11}


def _head(p):
    f = p.f
    return dict(ra_j2000=f[0], dec_j2000=f[1], ra=f[2], dec=f[3], ecl_lon=f[4], ecl_lat=f[5])


def _sun_record(at):
    s = _native.BodyPos()
    _library().CalcSun(ctypes.byref(at), ctypes.byref(s))
    return s


def sun(t: TimeLike, observer: Optional[Observer] = None) -> SunPosition:
    """The Sun's place at t, seen from observer (None: the Earth's centre)."""
    time = _time(t)
    at = _atime(time, observer)
    s = _sun_record(at)
    return SunPosition(time=time, **_head(s), distance_au=s.f[6], semi_diameter_arcsec=s.f[14] * 3600.0,
                       horizontal=_horizontal(at, observer, s.f[0], s.f[1]))


def moon(t: TimeLike, observer: Optional[Observer] = None) -> MoonPosition:
    """The Moon's place, distance, phase and age at t."""
    time = _time(t)
    at = _atime(time, observer)
    s = _sun_record(at)
    m = _native.BodyPos()
    lib = _library()
    lib.CalcMoon(ctypes.byref(at), ctypes.byref(m), ctypes.byref(s))
    age = lib.GetMoonAge(time.jd, ctypes.byref(s), ctypes.byref(m))
    return MoonPosition(time=time, **_head(m), distance_km=m.f[6], semi_diameter_arcsec=m.f[7] * 3600.0,
                        illuminated_fraction=m.f[17], bright_limb_angle=m.f[18], age_days=age,
                        horizontal=_horizontal(at, observer, m.f[0], m.f[1]))


def _planet_code(name: Union[str, int]):
    if isinstance(name, bool):
        raise TypeError("a planet is named by a string or a body code")
    if isinstance(name, int):
        return str(name), name
    try:
        return name.lower(), PLANETS[name.lower()]
    except (KeyError, AttributeError):
        raise UnknownBodyError(f"unknown planet {name!r}; known: {', '.join(PLANETS)}") from None


def planet(name: Union[str, int], t: TimeLike, observer: Optional[Observer] = None) -> PlanetPosition:
    """A planet or dwarf planet (name as in PLANETS, or a body code) at t."""
    label, code = _planet_code(name)
    time = _time(t)
    at = _atime(time, observer)
    s = _sun_record(at)
    p = _native.BodyPos()
    if _library().CalcPlanet(code, ctypes.byref(at), ctypes.byref(s), ctypes.byref(p)) != 1:
        raise UnknownBodyError(f"the library computes no body with code {code}")
    f = p.f
    return PlanetPosition(name=label, code=code, time=time, **_head(p), distance_au=f[6], sun_distance_au=f[16],
                          magnitude=f[35], diameter_arcsec=f[34], illuminated_fraction=f[18],
                          bright_limb_angle=f[19], horizontal=_horizontal(at, observer, f[0], f[1]))


@dataclass(frozen=True)
class MoonPhaseEvent:
    phase: str  # "new", "first quarter", "full", "last quarter"
    time: Time


_PHASE_NAMES = ("new", "first quarter", "full", "last quarter")


def moon_phases(year: int, month: Optional[int] = None, tz: float = 0.0) -> List[MoonPhaseEvent]:
    """The principal phases in a calendar month (or a whole year) of the zone
    tz (hours east of Greenwich), in time order."""
    months = [month] if month is not None else range(1, 13)
    out = []
    lib = _library()
    for m in months:
        if not 1 <= m <= 12:
            raise ValueError(f"month {m} outside 1..12")
        buf = (_native.MoonPhase * 8)()
        n = lib.GetMoonPhases(ctypes.byref(_native.ADate(year, m, 1, 0, 0, 0.0, tz)), buf, 8)
        out += [MoonPhaseEvent(_PHASE_NAMES[buf[k].phase], Time.from_jd(buf[k].jd)) for k in range(n)]
    return out


def batch(body: Union[str, int], jde, observer: Optional[Observer] = None):
    """Apparent and astrometric places of 'sun', 'moon' or a planet at many
    dynamical Julian dates: a numpy structured array with fields ra, dec,
    ra_j2000, dec_j2000 (degrees) and distance (au; the Moon's in km).
    Needs numpy."""
    try:
        import numpy as np
    except ImportError as e:  # pragma: no cover - numpy is optional
        raise ImportError("kvxlib.batch needs numpy") from e
    jde = np.atleast_1d(np.asarray(jde, dtype=float))
    out = np.empty(jde.shape, dtype=[("ra", "f8"), ("dec", "f8"), ("ra_j2000", "f8"), ("dec_j2000", "f8"),
                                     ("distance", "f8")])
    lib = _library()
    which = str(body).lower() if isinstance(body, str) else body
    code = None if which in ("sun", "moon") else _planet_code(body)[1]
    obs = ctypes.byref(observer._c()) if observer is not None else None
    at, s, p = _native.ATime(), _native.BodyPos(), _native.BodyPos()
    for k, x in enumerate(jde.flat):
        ut = lib.DtToUt(x)
        lib.SetATimeJd2(ut, (x - ut) * 86400.0, 0.0, obs, ctypes.byref(at))
        lib.CalcSun(ctypes.byref(at), ctypes.byref(s))
        if which == "sun":
            r = s
        elif which == "moon":
            lib.CalcMoon(ctypes.byref(at), ctypes.byref(p), ctypes.byref(s))
            r = p
        else:
            if lib.CalcPlanet(code, ctypes.byref(at), ctypes.byref(s), ctypes.byref(p)) != 1:
                raise UnknownBodyError(f"the library computes no body with code {code}")
            r = p
        out.flat[k] = (r.f[2], r.f[3], r.f[0], r.f[1], r.f[6])
    return out


@dataclass(frozen=True)
class RiseSet:
    """Rise, transit (upper meridian passage) and set of a body on one local
    civil day, as aware datetimes in that day's zone; None where the body has
    no such event that day (always up, always down, an observer at a pole)."""
    body: str
    rise: Optional[datetime]
    transit: Optional[datetime]
    set: Optional[datetime]


# The library keeps one shared, unguarded day context for its rise/set search.
_riseset_lock = threading.Lock()


def rise_set(body: Union[str, int], day: Union[date, datetime], observer: Observer,
             tz: Optional[tzinfo] = None, altitude: float = 0.0) -> RiseSet:
    """Rise, transit and set of 'sun', 'moon' or a planet (name or code as in
    PLANETS) on the local civil day `day` at observer.

    The day runs from local midnight to the next in the zone tz (default: an
    aware datetime's own zone, else UTC); an aware datetime stands for the
    day that contains it in tz. altitude 0 is the standard
    horizon: the centre 35'08" below it (refraction) plus the dip for the
    observer's height, and for the Sun its upper limb. Any other altitude
    (degrees, e.g. -6, -12, -18 for the Sun's twilights) is reached by the
    geometric centre. Near the polar circles, where the body meets the
    horizon at a grazing angle, the standard-horizon times can be minutes
    off."""
    if not isinstance(observer, Observer):
        raise TypeError("rise_set needs a kvxlib.Observer")
    if isinstance(day, datetime):
        # An aware datetime names the local day that contains it in tz.
        if day.tzinfo is not None and day.utcoffset() is not None:
            tz = tz or day.tzinfo
            day = day.astimezone(tz)
        day = day.date()
    elif not isinstance(day, date):
        raise TypeError(f"expected a date or datetime, got {type(day).__name__}")
    tz = tz or timezone.utc
    offset = tz.utcoffset(datetime(day.year, day.month, day.day, 12))
    hours = offset.total_seconds() / 3600.0 if offset is not None else 0.0
    if isinstance(body, str) and body.lower() in ("sun", "moon"):
        label, code = body.lower(), -2 if body.lower() == "sun" else -1
    else:
        label, code = _planet_code(body)
        # Stars and comets need an object record, and codes the library does
        # not know would silently give a point at 0h, 0 degrees.
        if code not in PLANETS.values():
            raise UnknownBodyError(f"rise_set computes the Sun, the Moon and {', '.join(PLANETS)}, not code {code}")
    if not math.isfinite(altitude):
        raise ValueError("altitude must be finite")
    lib = _library()
    obs = observer._c()
    found = {}
    with _riseset_lock:
        lib.InitRiseSet(ctypes.byref(_native.ADate(day.year, day.month, day.day, 0, 0, 0.0, hours)),
                        ctypes.byref(obs))
        for name, event in (("rise", 1), ("transit", 2), ("set", 3)):
            jd = ctypes.c_double()
            if lib.GetRiseSet(hours, code, None, event, ctypes.byref(obs), altitude, ctypes.byref(jd)) == 1:
                found[name] = Time.from_jd(jd.value).to_datetime(tz)
    return RiseSet(body=label, rise=found.get("rise"), transit=found.get("transit"), set=found.get("set"))


def data_files() -> dict:
    """What the library loaded at start-up: the JPL DE number (None without
    one) and whether a Delta T table was found."""
    lib = _library()
    de = lib.GetJplDeVersion()
    return {"jpl_de": de if de > 0 else None, "delta_t_table": bool(lib.IsValidJdtFile())}
