"""The C records of kvxlib.h as ctypes structures, and the shared library.

The library is looked up, in this order: the path in the environment
variable KVXLIB_LIBRARY; the dynamic loader's own search for
libkvxlib.so.6 (kvxlib.dll on Windows), which finds an installation in the
system's library directories, LD_LIBRARY_PATH or PATH; the library directory
of the prefix this package is installed in (a `cmake --install` and a
`pip install --prefix` to the same place).
"""
import ctypes
import os
import sys
from pathlib import Path

from ._version import __version__

_MAJOR = __version__.split(".")[0]
if sys.platform == "win32":
    _NAME = "kvxlib.dll"
elif sys.platform == "darwin":
    _NAME = f"libkvxlib.{_MAJOR}.dylib"
else:
    _NAME = f"libkvxlib.so.{_MAJOR}"

c_int32 = ctypes.c_int32
c_double = ctypes.c_double
P = ctypes.POINTER


class ADate(ctypes.Structure):
    _fields_ = [("year", c_int32), ("month", c_int32), ("day", c_int32), ("hour", c_int32),
                ("minute", c_int32), ("second", c_double), ("tz", c_double)]


class Observer(ctypes.Structure):
    _fields_ = [("latitude", c_double), ("longitude", c_double), ("height", c_double)]


class ATime(ctypes.Structure):
    _fields_ = ADate._fields_ + [
        ("obsLatitude", c_double), ("obsLongitude", c_double), ("obsHeight", c_double),
        ("lst", c_double), ("jd", c_double), ("jde", c_double), ("t", c_double), ("t2", c_double),
        ("eps", c_double), ("epsTrue", c_double),
        ("eqToEcl", c_double * 9), ("eclToEq", c_double * 9),
        ("precToJ2000", c_double * 9), ("precFromJ2000", c_double * 9),
        ("nutation", c_double * 2), ("nutMtx", c_double * 9), ("nutInvMtx", c_double * 9),
        ("obsPos", c_double * 3)]


class BodyPos(ctypes.Union):
    _fields_ = [("f", c_double * 37), ("i", c_int32 * 74)]


class Ad(ctypes.Structure):
    _fields_ = [("a", c_double), ("d", c_double)]


class MoonPhase(ctypes.Structure):
    _fields_ = [("phase", c_int32), ("jd", c_double)]


# Sizes the header states; a mismatch means the wrong library or header.
_SIZES = {ADate: 40, Observer: 24, ATime: 592, BodyPos: 296, MoonPhase: 16}

# name: (result type, argument types)
_SIGNATURES = {
    "GetJd": (c_double, [P(ADate)]),
    "JdToDate2": (None, [c_double, P(ADate)]),
    "UtToDt": (c_double, [c_double]),
    "DtToUt": (c_double, [c_double]),
    "SetATimeJd": (None, [c_double, c_double, P(Observer), P(ATime)]),
    "SetATimeJd2": (None, [c_double, c_double, c_double, P(Observer), P(ATime)]),
    "CalcSun": (None, [P(ATime), P(BodyPos)]),
    "CalcMoon": (None, [P(ATime), P(BodyPos), P(BodyPos)]),
    "CalcPlanet": (c_int32, [c_int32, P(ATime), P(BodyPos), P(BodyPos)]),
    "Coordinates": (P(Ad), [P(ATime), c_int32, P(Ad), c_int32, P(Ad)]),
    "GetMoonAge": (c_double, [c_double, P(BodyPos), P(BodyPos)]),
    "GetMoonPhases": (c_int32, [P(ADate), P(MoonPhase), c_int32]),
    "GetConstellation": (c_int32, [P(c_double), c_double]),
    "GetJplDeVersion": (c_int32, []),
    "IsValidJdtFile": (c_int32, []),
    "InitRiseSet": (None, [P(ADate), P(Observer)]),
    "GetRiseSet": (c_int32, [c_double, c_int32, ctypes.c_void_p, c_int32, P(Observer), c_double, P(c_double)]),
}


class KvxError(Exception):
    """An answer the library refused: its status 0 for the request."""


class LibraryNotFoundError(KvxError, OSError):
    """The kvxlib shared library could not be loaded."""


def _candidates():
    explicit = os.environ.get("KVXLIB_LIBRARY")
    if explicit:
        yield explicit
        return
    yield _NAME
    here = Path(__file__).resolve().parent
    for parent in list(here.parents)[:5]:
        for sub in ("lib", "lib64", "bin", "."):
            p = parent / sub / _NAME
            if p.exists():
                yield str(p)


def load():
    tried = []
    for path in _candidates():
        try:
            lib = ctypes.CDLL(path)
        except OSError as e:
            tried.append(f"{path}: {e}")
            continue
        for name, (restype, argtypes) in _SIGNATURES.items():
            fn = getattr(lib, name)
            fn.restype = restype
            fn.argtypes = argtypes
        return lib
    raise LibraryNotFoundError(
        "cannot load the kvxlib shared library (set KVXLIB_LIBRARY to its path): " + "; ".join(tried))


for _record, _size in _SIZES.items():
    assert ctypes.sizeof(_record) == _size, (_record.__name__, ctypes.sizeof(_record))
