#!/usr/bin/python3
"""Writes the hostile-file corpus under tests/data/hostile/: truncated and
malformed JPL DE and KQ files, broken planet position files, meteor and
Delta T files with odd lines. The readers must never crash or read out of
bounds on any of them; the tests check the specified fallbacks and
diagnostics, and the corpus seeds later fuzzing.

  /usr/bin/python3 tools/make_hostile_fixtures.py

Derived from tests/data/de405_2000.bin; deterministic (fixed seed).
"""
import os
import random
import struct
import sys

import numpy as np

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
import jplde  # noqa: E402

DATA = os.path.join(HERE, '..', 'tests', 'data')
OUT = os.path.join(DATA, 'hostile')
RB = 8 * 1018  # DE405 record bytes
rng = random.Random(20240601)


def put(name, data):
    with open(os.path.join(OUT, name), 'wb') as f:
        f.write(data)


def patched(base, offset, fmt, *values):
    b = bytearray(base)
    struct.pack_into(fmt, b, offset, *values)
    return bytes(b)


def de_files(de):
    head = de[:4 * RB]  # header, constants and two data records
    put('de_empty.bin', b'')
    put('de_short.bin', de[:11])
    put('de_header_truncated.bin', de[:2700])
    put('de_no_constants.bin', de[:RB])  # header record only: queries fail to read
    put('de421.bin', patched(head, 2652 + 188, '<i', 421))
    put('de_version_low.bin', patched(head, 2652 + 188, '<i', 199))
    put('de_zero_step.bin', patched(head, 2652 + 16, '<d', 0.0))
    put('de_nan_dates.bin', patched(head, 2652, '<2d', float('nan'), float('inf')))
    put('de_huge_span.bin', patched(head, 2652, '<2d', -1e300, 1e300))
    ptr = bytearray(head)
    for i, (f, n, s) in enumerate([(1019, 13, 8), (3, 1000, 1), (-5, 10, 2), (3, 10, -4), (3, 0, 2),
                                   (2 ** 31 - 1, 2 ** 31 - 1, 2 ** 31 - 1), (900, 14, 8), (3, -1, 1),
                                   (1, 13, 8), (1018, 1, 1), (3, 2 ** 30, 4), (0, 0, 0)]):
        struct.pack_into('<3i', ptr, 2652 + 44 + 12 * i, f, n, s)
    put('de_absurd_pointers.bin', bytes(ptr))
    put('de_truncated_records.bin', de[:3 * RB + RB // 2])  # second data record cut in half
    put('de_garbage.bin', bytes(rng.randrange(256) for _ in range(4096)))
    put('de_jp_garbage.bin', b'JP' + bytes(rng.randrange(256) for _ in range(3 * RB)))


def kq_files(de):
    d = jplde.DeFile(os.path.join(DATA, 'de405_2000.bin'))
    p4 = [p + (2 if i == 11 else 3,) for i, p in enumerate(d.pointers)]
    records = d.records[:2]
    end = d.start + 2 * d.step

    def kq(**kw):
        args = dict(start=d.start, end=end, step=d.step, au=d.au, emrat=d.emrat, pointers4=p4,
                    denum=d.denum, ncon=d.ncon, ncoeff=1018)
        length = kw.pop('length', jplde.KQ_FIELD_BYTES)
        args.update(kw)
        h = jplde.kq_header(**args)
        if length != jplde.KQ_FIELD_BYTES:
            h = h[:12] + struct.pack('<I', length) + h[16:16 + min(length, jplde.KQ_FIELD_BYTES)]
        return h.ljust(2 * RB, b'\0') + records.astype('<f8').tobytes()

    put('kq_valid.bin', kq())
    put('kq_no_length.bin', b'KQ' + bytes(12))
    put('kq_short_fields.bin', kq(length=10))
    put('kq_length_beyond_file.bin', kq()[:12] + struct.pack('<I', 0xFFFFFFFF) + kq()[16:16 + 100])
    put('kq_huge_record.bin', kq(ncoeff=100000))
    put('kq_inconsistent_step.bin', kq(step=-32.0))
    bad = [(2 ** 31 - 1, 2 ** 31 - 1, 2 ** 31 - 1, 3), (3, 10, 2, 7), (3, 1100, 1, 1), (3, 13, 8, 3)] + p4[4:]
    put('kq_absurd_pointers.bin', kq(pointers4=bad))


def planet_files():
    def block(number, first, step, rows, rowsize=48, count=None):
        n = len(rows) + 1 if count is None else count
        h = [number, first, first + (len(rows) - 1) * step, step, n, rowsize]
        return np.vstack([h, rows]).astype('<f8').tobytes()

    rows = np.arange(12 * 6, dtype=float).reshape(12, 6)
    put('planet_empty.xyz', b'')
    put('planet_rowsize40.xyz', block(399, 2451545.0, 1.0, rows, rowsize=40) + block(199, 2451545.0, 1.0, rows))
    put('planet_unknown_body.xyz', block(399, 2451545.0, 1.0, rows) + block(1499, 2451545.0, 1.0, rows))
    put('planet_absurd_rows.xyz', block(399, 2451545.0, 1.0, rows, count=1e300))
    put('planet_nan_header.xyz', block(399, float('nan'), 1.0, rows))
    put('planet_zero_step.xyz', block(399, 2451545.0, 0.0, rows))
    put('planet_negative_rows.xyz', block(399, 2451545.0, 1.0, rows, count=-3))
    put('planet_short_block.xyz', block(399, 2451545.0, 1.0, rows, count=1000)[:48 * 8])
    put('planet_partial_row.xyz', block(399, 2451545.0, 1.0, rows) + b'\x01' * 20)
    put('planet_few_rows.xyz', block(399, 2451545.0, 1.0, rows[:4]))
    blocks = b''.join(block(n, 2451545.0, 1.0, rows) for n in range(199, 1400, 100))
    put('planet_14_blocks.xyz', blocks + block(1499, 2451545.0, 1.0, rows))


def text_files():
    good = b'1, "ABC", "x", "y", "z", 1, 2, 3, 4, 5, 6, 7\n'
    put('meteor_empty.txt', b'')
    put('meteor_comments_only.txt', b'# a comment\n   # another\n\n\t\n')
    put('meteor_long_lines.txt', b'1' * 1000 + b'\n' + b'2, "ABC", "' + b'n' * 300 + b'", "y", "z", 1, 2, 3, 4, 5, 6, 7\n'
        + b'3, "ABC", "x", "y", "' + b'z' * 400 + b'", 1, 2, 3, 4, 5, 6, 7\n' + good)
    put('meteor_binary.bin', bytes(rng.randrange(256) for _ in range(8192)))
    put('meteor_unterminated.txt', b'1, "ABC", "x", "y", "z, 1, 2, 3, 4, 5, 6, 7\n7, "AB')
    put('jdt_blank_line.dat', b'# KVXJDT VER.2\n2457754.5 37\n\n2457204.5 36\n')
    put('jdt_bad_header.dat', b'# KVXJDT VERSION 2\n2457754.5 37\n')
    put('jdt_version_zero.dat', b'# KVXJDT VER.0\n2457754.5 37\n')
    put('jdt_long_lines.dat', b'# KVXJDT VER.2\n' + b'2457754.5 ' + b'3' * 500 + b'\n')
    put('jdt_binary.dat', b'# KVXJDT VER.2\n' + bytes(rng.randrange(256) for _ in range(2048)))


def main():
    os.makedirs(OUT, exist_ok=True)
    de = open(os.path.join(DATA, 'de405_2000.bin'), 'rb').read()
    de_files(de)
    kq_files(de)
    planet_files()
    text_files()


if __name__ == '__main__':
    main()
