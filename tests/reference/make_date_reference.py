#!/usr/bin/python3
"""Julian dates of civil instants from ERFA (python3-erfa), as reference data
for the date conversions.

ERFA's cal2jd is proleptic Gregorian and valid from -4799 on, so the
Gregorian instants are drawn after the 1582 reform; the Julian-calendar
instants before it are checked against the Julian-calendar day count
(Meeus, Astronomical Algorithms, ch. 7) computed here independently in
integer arithmetic.

Writes tests/reference/data/julian_dates.csv with rows
  year, month, day, hour, minute, second, jd
Run: /usr/bin/python3 tests/reference/make_date_reference.py
"""
import os
import random

import erfa

OUT = os.path.join(os.path.dirname(__file__), "data", "julian_dates.csv")


def julian_calendar_jd(y, m, d):
    # Julian-calendar day number at 0h: JD of y-m-d (proleptic Julian).
    a = (14 - m) // 12
    yy = y + 4800 - a
    mm = m + 12 * a - 3
    jdn = d + (153 * mm + 2) // 5 + 365 * yy + yy // 4 - 32083
    return jdn - 0.5


def days_in_month(y, m, gregorian):
    if m == 2:
        if gregorian:
            leap = (y % 4 == 0 and y % 100 != 0) or y % 400 == 0
        else:
            leap = y % 4 == 0
        return 29 if leap else 28
    return [31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31][m - 1]


def main():
    rng = random.Random(20261121)
    rows = []
    # Gregorian instants, 1583..4000, and a dense set around the present.
    for i in range(400):
        y = rng.randint(1583, 4000) if i < 300 else rng.randint(1900, 2100)
        m = rng.randint(1, 12)
        d = rng.randint(1, days_in_month(y, m, True))
        hh, mi, ss = rng.randint(0, 23), rng.randint(0, 59), rng.randint(0, 59)
        jd0, jd1 = erfa.cal2jd(y, m, d)
        jd = jd0 + jd1 + (hh * 3600 + mi * 60 + ss) / 86400.0
        rows.append((y, m, d, hh, mi, ss, jd))
    # Julian-calendar instants, -4000..1582 October 4.
    for i in range(200):
        y = rng.randint(-4000, 1582)
        m = rng.randint(1, 12 if y < 1582 else 9)
        d = rng.randint(1, days_in_month(y, m, False))
        hh, mi, ss = rng.randint(0, 23), rng.randint(0, 59), rng.randint(0, 59)
        jd = julian_calendar_jd(y, m, d) + (hh * 3600 + mi * 60 + ss) / 86400.0
        rows.append((y, m, d, hh, mi, ss, jd))
    # The reform itself.
    for (y, m, d) in [(1582, 10, 4), (1582, 10, 15), (1582, 10, 16), (1582, 12, 31), (1583, 1, 1)]:
        jd0, jd1 = erfa.cal2jd(y, m, d) if (y, m, d) >= (1582, 10, 15) else (0.0, julian_calendar_jd(y, m, d))
        rows.append((y, m, d, 0, 0, 0, jd0 + jd1))
    with open(OUT, "w") as f:
        f.write("# year, month, day, hour, minute, second, jd (UT) -- from erfa.cal2jd (Gregorian)\n")
        f.write("# and the Julian-calendar day count (before 1582-10-15); see make_date_reference.py\n")
        for r in rows:
            f.write("%d, %d, %d, %d, %d, %d, %.9f\n" % r)


if __name__ == "__main__":
    main()
