#!/usr/bin/python3
"""Published positions of satellites that no installed package computes.

Writes rows: code kind jd a b c
  kind 1: planetocentric position at dynamical (TDB) Julian date jd, AU,
          J2000.0 equator (a, b, c = x, y, z);
  kind 2: offset of the satellite from the planet's centre on the sky at the
          universal-time Julian date jd of the observation at the Earth,
          km east, km north (c unused, 0).

Sources:
  401 Phobos: the example output of MarsSatV1_0 (V. Lainey, IMCCE, 2007;
      Lainey, Dehant & Paetzold 2007, A&A 465, 1075), a numerical model
      fitted to the observations of 1877-2005, stated accuracy 0.5 km for
      1998-2010; x, y, z in AU, Mars-centred, J2000.0 Earth mean equator, at
      ET = TDB.
  501 Io: the example output of V1_1 (V. Lainey, IMCCE, 2007; the L1.1
      numerical model fitted to the observations of 1891-2003, stated
      accuracy a few hundred km for 1970-2010); AU, Jupiter-centred, J2000.0
      Earth mean equator, at TDB 2451545.0.
  701-704 Ariel, Umbriel, Titania, Oberon: the example output of the
      numerical model of the five Uranian satellites of V. Lainey (IMCCE,
      2007, "la06"), fitted to the observations of 1954-2005, stated accuracy
      0.5 km for 2006-2011; km, Uranus-centred, J2000.0 Earth mean equator,
      at TDB 2453736.5.
  901 Charon: the double stellar occultation of 2008 June 22 (Sicardy et al.
      2011, AJ 141, 67): Charon's plutocentric offset on the sky (J2000.0)
      X = +12070.5 +- 4 km east, Y = +4576.3 +- 24 km north at 19:20:33.82
      UT at the Earth.

  /usr/bin/python3 tests/reference/satellites_published.py > tests/reference/data/satellites_published.txt
"""

PHOBOS = [  # TDB Julian date, x, y, z (AU)
    (2451545.0, -0.000013308157, -0.000058444725, -0.000021266023),
    (2451555.0, 0.000050907508, 0.000033574979, -0.000011296402),
    (2451565.0, -0.000051052809, 0.000012426617, 0.000033811410),
]

IO = [(2451545.0, 2.671999370920431e-3, 7.644018403387422e-4, 4.087344808808269e-4)]

URANIAN = [  # code, x, y, z (km) at TDB 2453736.5
    (701, -170468.724722897, 14975.1029537779, 84362.6136297966),
    (702, 260783.196449624, -53121.8607853646, -19885.5360152294),
    (703, 425675.330649645, -89749.0834621863, -22941.0187481465),
    (704, 10824.5788902419, 152086.392233192, -562642.262920),
]
KM_PER_AU = 149597870.0

# 2008-06-22 19:20:33.82 UT as a Julian date.
CHARON_JD = 2454639.5 + (19 * 3600 + 20 * 60 + 33.82) / 86400.0
CHARON = [(CHARON_JD, 12070.5, 4576.3)]

print('# Published satellite positions: MarsSatV1_0 (Phobos), V1_1 (Io), la06 (Uranus), Sicardy et al. 2011 (Charon)')
print('# code kind jd a b c')
for jd, x, y, z in PHOBOS:
    print('401 1 %.6f %.12e %.12e %.12e' % (jd, x, y, z))
for jd, x, y, z in IO:
    print('501 1 %.6f %.12e %.12e %.12e' % (jd, x, y, z))
for code, x, y, z in URANIAN:
    print('%d 1 2453736.5 %.12e %.12e %.12e' % (code, x / KM_PER_AU, y / KM_PER_AU, z / KM_PER_AU))
for jd, east, north in CHARON:
    print('901 2 %.8f %.1f %.1f 0' % (jd, east, north))
