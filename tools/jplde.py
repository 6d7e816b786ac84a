"""Reading and writing JPL DE binary ephemeris files (little-endian).

Layout (JPL export format; Standish, "JPL Planetary and Lunar Ephemerides,
DE405/LE405", JPL IOM 312.F-98-048, 1998):
  record 1: 3 title lines of 84 characters, 400 constant names of 6
            characters, then at byte 2652: start JD, end JD, step (float64),
            number of constants (int32), AU in km, EMRAT (float64),
            12 x (first coefficient, coefficients, sub-intervals) (int32),
            DE number (int32), librations pointer triple (int32);
  record 2: the constant values (float64);
  record 3 on: Chebyshev coefficients, the first two the record's JD span.
Every record is `ncoeff` float64 long. Used by the generators in tools/ and
by nothing at run time.
"""
import struct

import numpy as np

HEADER_OFFSET = 2652
COEFFS_BY_VERSION = {200: 826, 405: 1018, 406: 728, 430: 1018, 431: 1018, 432: 1018,
                     433: 1018, 434: 1018, 435: 1018, 436: 1018, 438: 1018}


class DeFile:
    """A DE file held in memory: header fields, pointers and records."""

    def __init__(self, path):
        data = open(path, 'rb').read()
        if data[:2] != b'JP':
            raise ValueError('%s: not a JPL DE file' % path)
        p = HEADER_OFFSET
        self.start, self.end, self.step = struct.unpack_from('<3d', data, p)
        self.ncon, = struct.unpack_from('<i', data, p + 24)
        self.au, self.emrat = struct.unpack_from('<2d', data, p + 28)
        ipt = struct.unpack_from('<36i', data, p + 44)
        self.denum, = struct.unpack_from('<i', data, p + 188)
        lpt = struct.unpack_from('<3i', data, p + 192)
        self.pointers = [tuple(ipt[3 * i:3 * i + 3]) for i in range(12)] + [tuple(lpt)]
        self.ncoeff = COEFFS_BY_VERSION[self.denum]
        self.titles = [data[84 * i:84 * i + 84].decode('ascii').rstrip() for i in range(3)]
        names = [data[252 + 6 * i:258 + 6 * i].decode('ascii').strip() for i in range(min(self.ncon, 400))]
        rb = 8 * self.ncoeff
        values = struct.unpack_from('<%dd' % self.ncon, data, rb)
        self.constants = list(zip(names, values))
        nrec = int(round((self.end - self.start) / self.step))
        self.records = np.frombuffer(data, dtype='<f8', count=nrec * self.ncoeff,
                                     offset=2 * rb).reshape(nrec, self.ncoeff)

    def component(self, entry, jd):
        """Chebyshev position and rate (per day) of pointer entry 0..12 (file units)."""
        first, ncf, nsub = self.pointers[entry]
        ncomp = 2 if entry == 11 else 3
        t = (jd - self.start) / self.step
        n = int(np.floor(t))
        frac = t - n
        if jd == self.end:
            n, frac = n - 1, 1.0
        rec = self.records[n]
        sub = min(int(np.floor(frac * nsub)), nsub - 1)
        tc = 2.0 * (frac * nsub - sub) - 1.0
        tp = np.zeros(ncf)
        tv = np.zeros(ncf)
        tp[0] = 1.0
        if ncf > 1:
            tp[1], tv[1] = tc, 1.0
        for k in range(2, ncf):
            tp[k] = 2 * tc * tp[k - 1] - tp[k - 2]
            tv[k] = 2 * tc * tv[k - 1] + 2 * tp[k - 1] - tv[k - 2]
        base = first - 1 + sub * ncf * ncomp
        c = rec[base:base + ncf * ncomp].reshape(ncomp, ncf)
        return c @ tp, (c @ tv) * (2.0 * nsub / self.step)

    def body(self, jpl, jd):
        """Barycentric position (AU) and velocity (AU/day) of JPL body 1..11, 13."""
        if jpl in (3, 10):
            b, bv = self.component(2, jd)
            m, mv = self.component(9, jd)
            if jpl == 3:
                p, v = b - m / (1 + self.emrat), bv - mv / (1 + self.emrat)
            else:
                p, v = b + m * self.emrat / (1 + self.emrat), bv + mv * self.emrat / (1 + self.emrat)
        else:
            p, v = self.component(2 if jpl == 13 else jpl - 1, jd)
        return p / self.au, v / self.au


def julian_to_calendar(jd):
    """Gregorian calendar date and time of a Julian date (after 1582)."""
    z = int(np.floor(jd + 0.5))
    f = jd + 0.5 - z
    a = int((z - 1867216.25) / 36524.25)
    a = z + 1 + a - a // 4
    b = a + 1524
    c = int((b - 122.1) / 365.25)
    d = int(365.25 * c)
    e = int((b - d) / 30.6001)
    day = b - d - int(30.6001 * e)
    month = e - 1 if e < 14 else e - 13
    year = c - 4716 if month > 2 else c - 4715
    secs = int(round(f * 86400))
    return year, month, day, secs // 3600, secs // 60 % 60, secs % 60


def epoch_title(label, jd):
    months = 'JAN FEB MAR APR MAY JUN JUL AUG SEP OCT NOV DEC'.split()
    y, m, d, hh, mm, ss = julian_to_calendar(jd)
    return '%s JED=%11.1f %4d %s %02d %02d:%02d:%02d' % (label, jd, y, months[m - 1], d, hh, mm, ss)


def write_de(path, denum, start, step, au, emrat, pointers, constants, records, title):
    """Writes a genuine DE file. pointers: 13 triples (entry 13 librations);
    constants: [(name, value)] (at most 400); records: array (n, ncoeff)
    whose first two columns are the record spans."""
    ncoeff = COEFFS_BY_VERSION[denum]
    records = np.asarray(records, dtype='<f8')
    assert records.shape[1] == ncoeff and len(constants) <= 400
    end = start + step * records.shape[0]
    rb = 8 * ncoeff
    titles = [title, epoch_title('Start Epoch:', start), epoch_title('Final Epoch:', end)]
    head = bytearray(rb)
    for i, t in enumerate(titles):
        head[84 * i:84 * i + 84] = t.ljust(84).encode('ascii')
    names = b''.join(n.ljust(6)[:6].encode('ascii') for n, _ in constants).ljust(2400)
    head[252:2652] = names
    body = struct.pack('<3di2d', start, end, step, len(constants), au, emrat)
    body += struct.pack('<36i', *[x for t in pointers[:12] for x in t])
    body += struct.pack('<i3i', denum, *pointers[12])
    head[HEADER_OFFSET:HEADER_OFFSET + len(body)] = body
    cvals = bytearray(rb)
    cvals[:8 * len(constants)] = struct.pack('<%dd' % len(constants), *[v for _, v in constants])
    with open(path, 'wb') as f:
        f.write(head)
        f.write(cvals)
        f.write(records.tobytes())


KQ_FIELD_BYTES = 284


def kq_header(start, end, step, au, emrat, pointers4, denum, ncon, ncoeff, length=KQ_FIELD_BYTES):
    """The "KQ" header (see include/kvxlib.h): magic, reserved bytes, length,
    then the header fields, little-endian, without padding."""
    fields = struct.pack('<5d', start, end, step, au, emrat)
    fields += struct.pack('<52i', *[x for t in pointers4 for x in t])
    fields += struct.pack('<5i', denum, ncon, 8, ncoeff, 8 * ncoeff)
    fields += struct.pack('<2d', 1.0 / (1.0 + emrat), emrat / (1.0 + emrat))
    assert len(fields) == KQ_FIELD_BYTES
    return b'KQ' + bytes(10) + struct.pack('<I', length) + fields[:length]


def write_kq(path, denum, start, step, au, emrat, pointers4, ncon, records):
    """Writes a KQ file: the header in the first two record slots, then the
    records at n x record bytes (n >= 2) as in a DE file."""
    records = np.asarray(records, dtype='<f8')
    ncoeff = records.shape[1]
    end = start + step * records.shape[0]
    head = kq_header(start, end, step, au, emrat, pointers4, denum, ncon, ncoeff)
    slot = 2 * 8 * ncoeff
    assert len(head) <= slot, 'records too short for the KQ header'
    with open(path, 'wb') as f:
        f.write(head.ljust(slot, b'\0'))
        f.write(records.tobytes())
