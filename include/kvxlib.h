/*
 * kvxlib 6.0 — positional astronomy.
 *
 * The whole public interface: plain C records and exported C functions with
 * undecorated names (cdecl). Include it from C or C++.
 *
 * Conventions that hold for every function below unless its comment says
 * otherwise:
 *   - angles are in degrees, Julian dates are doubles in days ("jd" universal
 *     time, "jde" dynamical time, J2000.0 = 2451545.0), distances in AU;
 *   - results go through caller-owned pointers; an output pointer may be the
 *     same storage as an input;
 *   - a null pointer never crashes the library: a function given a null
 *     record it must read or write does nothing and returns 0.
 *   - matrices are 3x3 doubles stored row by row (double[9]) and act on
 *     column vectors: v' = M v.
 *
 * Every declaration starts with KVX_API on the line that names the function:
 * the build derives the list of exported names from this file.
 */
#ifndef KVXLIB_H
#define KVXLIB_H

#include <stdint.h>

#if defined(_WIN32)
#  if defined(KVX_BUILDING)
#    define KVX_API __declspec(dllexport)
#  else
#    define KVX_API __declspec(dllimport)
#  endif
#elif defined(__GNUC__)
#  define KVX_API __attribute__((visibility("default")))
#else
#  define KVX_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ======================================================================
 * Records
 * ====================================================================== */

/* A direction (unit vector) or a position: x, y, z. */
typedef struct Dc {
    double x, y, z;
} Dc;

/* A pair of angles in degrees: longitude-like (right ascension, longitude,
 * azimuth) first, then latitude-like (declination, latitude, altitude). */
typedef struct Ad {
    double a;
    double d;
} Ad;

/* Signed sexagesimal angle: sign is +1 or -1, the other fields are not
 * negative. 24 bytes. */
typedef struct Deg60 {
    int32_t sign;
    int32_t deg;
    int32_t min;
    double sec;
} Deg60;

/* Sexagesimal hours (no sign). 16 bytes. */
typedef struct Hour60 {
    int32_t hour;
    int32_t min;
    double sec;
} Hour60;

/* Fixed-point number: signed 32 bits with 30 fraction bits (1.0 = 2^30).
 * Fixed-point angles are radians in the same scale; pi = 0xC90FDAA2, which
 * is handled as an unsigned bit pattern. Fixed-point matrices are Fx[9],
 * row by row. */
typedef int32_t Fx;

/* Fixed-point vector. 12 bytes. */
typedef struct FxVec {
    Fx x, y, z;
} FxVec;

/* Civil date and time, local time in the zone tz (hours east of Greenwich;
 * local = universal + tz). Astronomical year numbering (0 = 1 BC). 40 bytes. */
typedef struct ADate {
    int32_t year;
    int32_t month;
    int32_t day;
    int32_t hour;
    int32_t minute;
    double second;
    double tz;
} ADate;

/* Observer: geodetic latitude (deg, north +), longitude (deg, east +),
 * height above the GRS80 ellipsoid (m). A null Observer pointer means the
 * centre of the Earth. 24 bytes. */
typedef struct Observer {
    double latitude;
    double longitude;
    double height;
} Observer;

/* The time-and-observer record that every position routine reads. Filled by
 * SetATimeDate, SetATimeJd or SetATimeJd2; plain data, freely copyable.
 * It begins with the seven ADate fields, so (ADate *)&atime may be passed to
 * every date function. 592 bytes. */
typedef struct ATime {
    int32_t year;            /* local civil date, as ADate              */
    int32_t month;
    int32_t day;
    int32_t hour;
    int32_t minute;
    double second;
    double tz;               /* hours east of Greenwich                 */
    double obsLatitude;      /* degrees, geodetic (0 without observer)  */
    double obsLongitude;     /* degrees, east + (0 without observer)    */
    double obsHeight;        /* metres (-6378137 without observer)      */
    double lst;              /* local apparent sidereal time, 0..360 deg */
    double jd;               /* Julian date, universal time             */
    double jde;              /* Julian date, dynamical time (TT)        */
    double t;                /* GetT(jde)                               */
    double t2;               /* GetT2(jde), centuries from J2000.0      */
    double eps;              /* mean obliquity of date, degrees         */
    double epsTrue;          /* true obliquity of date, degrees         */
    double eqToEcl[9];       /* RotateX(eps): equator -> ecliptic of date */
    double eclToEq[9];       /* RotateX(-eps)                            */
    double precToJ2000[9];   /* mean equator of date -> J2000.0          */
    double precFromJ2000[9]; /* J2000.0 -> mean equator of date          */
    double nutation[2];      /* dpsi, deps in degrees                    */
    double nutMtx[9];        /* mean -> true equator of date             */
    double nutInvMtx[9];     /* true -> mean equator of date             */
    double obsPos[3];        /* observer's geocentric position, AU, J2000.0 axes */
} ATime;

/* ======================================================================
 * Vectors, matrices and rotations                      (src/math/vector.cpp)
 * Rotation matrices are frame rotations: the axes turn by +a.
 * ====================================================================== */

/* Unit vector (cos d cos a, cos d sin a, sin d) of an angle pair. */
KVX_API void AdToDc(const Ad *in, Dc *out);
/* Direction of a unit vector: a in 0..360 (0 at the poles), d = asin(z),
 * z beyond +-1 giving exactly +-90. */
KVX_API void DcToAd(const Dc *in, Ad *out);
/* Direction of a vector of any length. Returns 0 and leaves out untouched
 * for the zero vector, else 1. */
KVX_API int32_t DcToAdR(const Dc *in, Ad *out);
/* Length of v. */
KVX_API double DcAbs(const Dc *v);
/* out = a + b. */
KVX_API void DcAdd(const Dc *a, const Dc *b, Dc *out);
/* out = a - b. */
KVX_API void DcSub(const Dc *a, const Dc *b, Dc *out);
/* Length of b - a. */
KVX_API double DcDist(const Dc *a, const Dc *b);
/* out = v * s; returns out. */
KVX_API Dc *DcMul(const Dc *v, double s, Dc *out);
/* out = v / s (no guard for s = 0); returns out. */
KVX_API Dc *DcDiv(const Dc *v, double s, Dc *out);
/* out = v / |v| (no guard for the zero vector); returns |v|. */
KVX_API double DcNorm(const Dc *v, Dc *out);
/* a . b */
KVX_API double DcScalarProduct(const Dc *a, const Dc *b);
/* out = a x b. */
KVX_API void DcOuterProduct(const Dc *a, const Dc *b, Dc *out);
/* out = M v; returns out. */
KVX_API Dc *RotateDc(const Dc *v, const double m[9], Dc *out);
/* out = A B (B is applied first). */
KVX_API void MulMatrix(const double a[9], const double b[9], double out[9]);
/* General inverse adj(M)/det(M); no test for a singular matrix. */
KVX_API void GetInvMatrix(const double m[9], double out[9]);
/* Identity; returns out. */
KVX_API double *UnitMatrix(double out[9]);
/* Frame rotations about x, y, z by a degrees. */
KVX_API void RotateX(double a, double out[9]);
KVX_API void RotateY(double a, double out[9]);
KVX_API void RotateZ(double a, double out[9]);
/* RotateY(b) RotateZ(a): about z by a, then about the new y by b (degrees). */
KVX_API void RotatePrm1(double a, double b, double out[9]);
/* atan2(y, x) in radians, exactly 0 when both are 0. */
KVX_API double atan3(double y, double x);

/* ======================================================================
 * Angles, sexagesimal conversion, interpolation         (src/math/angle.cpp)
 * ====================================================================== */

/* Degrees reduced to 0 <= a < 360. */
KVX_API double degmal(double a);
/* Moved once into -180..180: one step of 360 each way (700 gives 340). */
KVX_API double degmal180(double a);
/* A latitude: reduced, moved to -180..180, clamped (not reflected) to -90..90. */
KVX_API double degmal2(double a);
/* Integer degrees reduced to 0..359. */
KVX_API int32_t degmalInt(int32_t a);
/* Hours reduced to 0 <= h < 24. */
KVX_API double hourmal(double h);
/* Decimal degrees to sign, degrees, minutes, seconds. */
KVX_API void DegTo60(double a, Deg60 *out);
/* As DegTo60, degrees and minutes rounded to the whole minute; the seconds
 * field then holds the shifted seconds and is not meant to be shown. */
KVX_API void DegTo60_2(double a, Deg60 *out);
/* Sexagesimal to decimal degrees. */
KVX_API double DegTo10(Deg60 a);
/* Decimal hours to hours, minutes, seconds (pass non-negative hours). */
KVX_API void HourTo60(double h, Hour60 *out);
/* Sexagesimal to decimal hours. */
KVX_API double HourTo10(Hour60 h);
/* Position angle (0 < pa <= 360, north = 360) and angular distance, both in
 * degrees, from one point of the sphere to another. Either output may be null. */
KVX_API void Deg2Point(const Ad *from, const Ad *to, double *positionAngle, double *distance);
/* Lagrange interpolation through n points (0 when n < 1); the abscissae
 * must be distinct. */
KVX_API double Lagrange(double x, int32_t n, const double *xs, const double *ys);
/* Integer square root, floor(sqrt(n)), for n >= 0 (0 for negative n). */
KVX_API int32_t lsqrt(int32_t n);

/* ======================================================================
 * Fixed-point arithmetic                          (src/math/fixed_point.cpp)
 * ====================================================================== */

/* (a b) >> 30 with a 64-bit product, rounding toward minus infinity. */
KVX_API int32_t fxpmul(int32_t a, int32_t b);
/* (a 2^30) / b, truncated toward zero, low 32 bits (0 when b = 0). */
KVX_API int32_t fxpdiv(int32_t a, int32_t b);
/* Cosine of a fixed-point angle: 1.0 below 0, 0 from pi/2 on. */
KVX_API int32_t fxpcos(int32_t angle);
/* Arc cosine in 0..pi as an unsigned bit pattern. */
KVX_API int32_t fxpacos(int32_t x);
/* pi/2 - fxpacos(x). */
KVX_API int32_t fxpasin(int32_t x);
/* asin(y / sqrt(x^2 + y^2)): the sign of x is not used, so the result lies in
 * -pi/2..pi/2; 0 when the radius is below about 0.0049; needs x^2 + y^2 < 1. */
KVX_API int32_t fxpatan2(int32_t y, int32_t x);
/* Square root for 0 <= x < 1.0 (1.0 from 1.0 on, 0 below one unit). */
KVX_API int32_t fxpsqrt(int32_t x);
/* Square root of an unsigned value for 0 <= x < (pi/2)^2. */
KVX_API uint32_t fxpusqrt(uint32_t x);
/* Unit vector of a direction in degrees, components truncated toward zero. */
KVX_API void AdToFx(const Ad *in, FxVec *out);
/* Each component times 2^30, truncated toward zero. */
KVX_API void DcToFx(const Dc *in, FxVec *out);
/* Each component times 2^-30. */
KVX_API void FxToDc(const FxVec *in, Dc *out);
/* Direction in degrees of a fixed-point vector of any length. */
KVX_API void FxToAd(const FxVec *in, Ad *out);
/* Each element times 2^30, truncated toward zero. */
KVX_API void MatrixFlToFx(const double m[9], Fx out[9]);
/* out = M v (v is copied first, so out may be v). */
KVX_API void RotateFx(const FxVec *v, const Fx m[9], FxVec *out);
/* First component of M v only. */
KVX_API int32_t RotateFxX(const FxVec *v, const Fx m[9]);
/* Second and third components of M v into out; out->x is left as it was. */
KVX_API void RotateFxYZ(const FxVec *v, const Fx m[9], FxVec *out);
/* Third component of M v only. */
KVX_API int32_t RotateFxZ(const FxVec *v, const Fx m[9]);

/* ======================================================================
 * Julian dates and civil dates                          (src/time/date.cpp)
 * Julian calendar up to 1582 October 4, Gregorian from October 15.
 * ====================================================================== */

/* Julian date of a calendar date (day may carry a fraction). */
KVX_API double CalcJd(double year, double month, double day);
/* Julian date (universal time) of a local civil date in its zone. */
KVX_API double GetJd(const ADate *date);
/* Calendar date of a Julian date; returns the year. Null outputs are skipped. */
KVX_API int32_t JdToDate(double jd, int32_t *year, int32_t *month, double *day);
/* Calendar date and time of a Julian date; tz is left untouched (pass
 * jd + tz/24 and set tz yourself for local time). */
KVX_API void JdToDate2(double jd, ADate *out);
/* jd - 2400000.5 */
KVX_API double GetMjd(double jd);
/* Shifts a date by a calendar interval (the interval's tz is not read);
 * subtract != 0 subtracts. Returns the resulting day of month. A shift to an
 * exact multiple of a day backwards gives 24:00 of the day before. */
KVX_API int32_t ChangeDate(ADate *date, const ADate *interval, int32_t subtract);
/* As ChangeDate, but a result outside the years -100000..100000 leaves the
 * record unchanged. Returns the year ChangeDate produced, even if rejected. */
KVX_API int32_t ChangeLimitDate(ADate *date, const ADate *interval, int32_t subtract);
/* Re-expresses the date in another zone (hours); returns the year. */
KVX_API int32_t ChangeTimezone(ADate *date, double newTz);
/* Normalises hours 24..36 and minute 60 into the following day; returns the year. */
KVX_API int32_t Date36To24(ADate *date);
/* 1 if the date is valid (hours 0..36 and minutes 0..60 allowed), else 0. */
KVX_API int32_t CheckDate(const ADate *date);
/* Current date and time in zone tz (hours), whole seconds; reserved is not
 * read. Returns the year. */
KVX_API int32_t GetNowDate(ADate *date, double reserved, double tz);
/* The system's current offset from universal time, in whole hours (a
 * +5:30 zone gives 5). */
KVX_API double GetTimezone(void);
/* Years from JD 2442412.5 with a small rate term. */
KVX_API double GetT(double jd);
/* Julian centuries from J2000.0. */
KVX_API double GetT2(double jd);
/* IAU 2006 mean obliquity of the ecliptic (degrees) at a dynamical Julian
 * date, centuries clamped to +-30. */
KVX_API double GetEp(double jde);

/* ======================================================================
 * Delta T                         (src/time/delta_t.cpp)
 * ====================================================================== */

/* Dynamical time (TT) of a universal-time Julian date: jd + Delta T. Delta T
 * comes from the delta-T file loaded at start-up when it covers jd, else the
 * TAI - UTC steps of 1961-1971, else the Espenak-Meeus polynomials. */
KVX_API double UtToDt(double jd);
/* Universal time of a dynamical Julian date: jde - Delta T(jde), Delta T
 * taken at jde itself (no iteration). */
KVX_API double DtToUt(double jde);
/* 1 when a delta-T file of format version exactly 2 is loaded, else 0. */
KVX_API int32_t IsValidJdtFile(void);

/* end of: Delta T */

/* ======================================================================
 * Precession and nutation (src/time/precession.cpp, src/time/nutation.cpp)
 * ====================================================================== */

/* Precession matrix from the mean equator and equinox of fromJd to those of
 * toJd (dynamical Julian dates), IAU 2006: exactly the identity for equal
 * epochs; a start within a day of J2000.0 keeps the frame bias; spans beyond
 * +-30 centuries continue at 50"/year. */
KVX_API void GetPrecMtx(double fromJd, double toJd, double out[9]);
/* out = direction of M (unit vector of in): a in 0..360, d = asin(z). */
KVX_API void PrecEqt(const Ad *in, Ad *out, const double m[9]);
/* Nutation at a dynamical Julian date: out[0] = dpsi, out[1] = deps
 * (degrees), from the JPL DE file when one with nutations is loaded, else
 * the IAU 1980 series truncated at 0.001". */
KVX_API void GetNutationParam(double jde, double out[2]);
/* Mean to true equator of date from the nutation pair (degrees) and the mean
 * obliquity eps (degrees): Rx(-(eps + deps)) Rz(-dpsi) Rx(eps). */
KVX_API void GetNutationMtx(const double nutation[2], double eps, double out[9]);

/* end of: Precession and nutation */

/* ======================================================================
 * Time-and-observer record, sidereal time, observer vectors (src/time/atime.cpp)
 * ====================================================================== */

/* Fill an ATime for a local civil date (fields and tz) and an observer
 * (null: the centre of the Earth). */
KVX_API void SetATimeDate(const ADate *date, const Observer *obs, ATime *out);
/* Fill an ATime for a universal-time Julian date; the date fields are local
 * time in zone tz (hours). */
KVX_API void SetATimeJd(double jd, double tz, const Observer *obs, ATime *out);
/* As SetATimeJd with the caller's Delta T in seconds: jde = jd + deltaT/86400. */
KVX_API void SetATimeJd2(double jd, double deltaT, double tz, const Observer *obs, ATime *out);
/* Local apparent sidereal time (degrees, 0..360) at a universal-time Julian
 * date and east longitude (degrees); longitude 0 gives Greenwich. */
KVX_API double GetLst(double jd, double longitude);
/* As GetLst with the caller's mean obliquity and nutation in longitude
 * (degrees): GMST (IAU 1982) + dpsi cos(eps) + longitude. */
KVX_API double GetLst2(double jd, double obliquity, double dpsi, double longitude);
/* Observer's geocentric position (AU, J2000.0 axes) on the GRS80 Earth at a
 * universal-time Julian date; (0, 0, 0) for a null observer. */
KVX_API void GetTopocenter(const Observer *obs, double jd, double out[3]);
/* Observer on any ellipsoid (flattening, equatorial radius in km) turned by
 * the sidereal angle theta (degrees): body-centred vector in AU, J2000.0 axes. */
KVX_API void ObsToPcEqtXyz(const Observer *obs, double jd, double theta, double flattening, double equatorialRadius, double out[3]);
/* ObsToPcEqtXyz on the GRS80 Earth at Greenwich apparent sidereal time. */
KVX_API void ObsToGcEqtXyz(const Observer *obs, double jd, double out[3]);
/* Inverse of ObsToPcEqtXyz: body-centred vector (AU, J2000.0 axes) to
 * latitude, longitude (degrees), height (m); 50 iterations of the latitude.
 * A vector below 1e-6 AU gives latitude 0, longitude 0, height -radius. */
KVX_API void PcEqtXyzToObs(const double xyz[3], double jd, double theta, double flattening, double equatorialRadius, Observer *out);
/* PcEqtXyzToObs on the GRS80 Earth at Greenwich apparent sidereal time. */
KVX_API void GcEqtXyzToObs(const double xyz[3], double jd, Observer *out);

/* end of: Time-and-observer record, sidereal time, observer vectors */

/* ======================================================================
 * Apparent place: aberration, deflection, parallax, proper motion (src/place/)
 * ====================================================================== */

union BodyPos; /* defined with the Sun below */
/* Vectors here are double[3] (x, y, z) on the axes of the equator named by
 * the caller; out may be the same array as an input. Null pointers do
 * nothing. */
/* Annual aberration with the elliptic terms, from t's jde and epsTrue.
 * add != 0: geometric -> apparent; add == 0: apparent -> geometric (at most
 * four fixed-point passes). out is a unit vector. */
KVX_API void AnnualAberration(const ATime *t, const double v[3], int32_t add, double out[3]);
/* Light deflection by the Sun for a body of the solar system: p unit
 * geocentric direction, q heliocentric position (direction used), e the
 * Earth's heliocentric position (AU). out is not renormalised; out = p when
 * the body is exactly behind the Sun. */
KVX_API void DeflectionSolar(const double p[3], const double q[3], const double e[3], double out[3]);
/* Light deflection by the Sun for a star (p unit direction, e as above);
 * out renormalised; out = p when the star is exactly behind the Sun. */
KVX_API void DeflectionStar(const double p[3], const double e[3], double out[3]);
/* Annual parallax (degrees) of a star p, away from the Sun at (sunAd[0]
 * right ascension, sunAd[1] declination, degrees) at 1 AU; out unit. */
KVX_API void AnnualParallax(const double p[3], double parallax, const double sunAd[2], double out[3]);
/* Proper motion along a great circle from jd0 to jd: pm[0] rate of right
 * ascension (not times cos dec), pm[1] of declination, degrees per Julian
 * year. No guard at the poles (x = y = 0 divides by zero). */
KVX_API void ProperMotion(double jd0, const double p[3], const double pm[2], double jd, double out[3]);
/* Apparent direction of date (true equator and equinox, unit vector) of a
 * star given at J2000.0: proper motion, parallax, deflection, aberration,
 * then precession and nutation. sun: CalcSun's record for the same t. */
KVX_API void StarApparent(const ATime *t, const double p[3], const double pm[2], double parallax, const union BodyPos *sun, double out[3]);

/* end of: Apparent place: aberration, deflection, parallax, proper motion */

/* ======================================================================
 * Atmospheric refraction      (src/place/refraction.cpp)
 * ====================================================================== */

/* Standard atmosphere, no temperature or pressure. in->a is copied, in->d
 * is the altitude in degrees. Both return out (null if a pointer is null);
 * out may be in. */
/* True altitude -> apparent altitude (refraction added). */
KVX_API Ad *AtmosphericRefraction(const Ad *in, Ad *out);
/* Apparent altitude -> true altitude (refraction removed). Not an exact
 * inverse of AtmosphericRefraction (sub-arcsecond residue at the horizon). */
KVX_API Ad *DeAtmosphericRefraction(const Ad *in, Ad *out);

/* end of: Atmospheric refraction */

/* ======================================================================
 * Coordinate systems and position angle (src/place/coordinates.cpp)
 * ====================================================================== */

/* Coordinate-system codes of Coordinates (pairs in degrees):
 *   1 horizontal, geometric (mean equator of date, no aberration)
 *   2 horizontal, apparent (true equator of date, with aberration)
 *     (azimuth from the south through the west, altitude; geocentric, no
 *     refraction)
 *   3 equatorial J2000.0        4 equatorial B1950.0 (precession only)
 *   5 equatorial mean of date   6 equatorial apparent of date
 *   7 ecliptic J2000.0          8 ecliptic mean of date
 *   9 ecliptic apparent of date 10 galactic (B1950.0 definition)
 * Any other code means 3. */
#define KVX_COORD_HORIZONTAL     1
#define KVX_COORD_HORIZONTAL_APP 2
#define KVX_COORD_J2000          3
#define KVX_COORD_B1950          4
#define KVX_COORD_MEAN_OF_DATE   5
#define KVX_COORD_APPARENT       6
#define KVX_COORD_ECL_J2000      7
#define KVX_COORD_ECL_MEAN       8
#define KVX_COORD_ECL_APPARENT   9
#define KVX_COORD_GALACTIC       10
/* Converts in from system `from` to system `to` for the instant and
 * observer of t. from == to: copies in unchanged (no normalisation) and
 * returns in. Otherwise returns out (longitude 0..360). Null in or out, or
 * null t when from != to: returns null and writes nothing. */
KVX_API Ad *Coordinates(const ATime *t, int32_t from, const Ad *in, int32_t to, Ad *out);
/* Position angle (0 < pa <= 360, due north = 360) and distance (degrees)
 * of target seen from centre; the same computation as Deg2Point. Either
 * output may be null. Returns distance. */
KVX_API double *AdToPaDist(const Ad *centre, const Ad *target, double *positionAngle, double *distance);
/* The point at position angle pa and distance r (degrees) from centre.
 * r == 0 gives the centre; at pa 0 or 180 a result at a pole keeps the
 * centre's right ascension. */
KVX_API void PaDistToAd(const Ad *centre, double positionAngle, double distance, Ad *out);

/* end of: Coordinate systems and position angle */

/* ======================================================================
 * Constellations           (src/place/constellation.cpp)
 * ====================================================================== */

/* Constellation code (0..88) of ad = {right ascension, declination} in
 * degrees, or -1 (declination outside -90..90, right ascension an exact
 * negative multiple of 360, null ad). epochJd exactly 2405888.5 (B1875.0):
 * ad is used as it stands; any other value: ad is J2000.0 and is precessed
 * to B1875.0. The library holds codes only, no names. */
KVX_API int32_t GetConstellation(const double *ad, double epochJd);
/* end of: Constellations */

/* ======================================================================
 * JPL DE ephemeris and position files       (src/solar/ephem/)
 * ====================================================================== */

/* Reading of the data files happens once, when the library is loaded; see
 * README "Data files" for their locations and formats.
 *
 * The main JPL DE file may be a genuine JPL DE binary file (DE200, 405, 406,
 * 430-436, 438; little-endian) or a "KQ" file: the same records preceded by
 * a header already laid out for the reader, all fields little-endian:
 *   offset  0: "KQ", then 10 reserved bytes (zero)
 *   offset 12: uint32 L, the number of header-field bytes that follow (284)
 *   offset 16: float64 startJd, endJd, stepDays   first/last JD (TT), days per record
 *   offset 40: float64 au, emrat                  km per AU, Earth/Moon mass ratio
 *   offset 56: 13 x int32[4] pointers             first coefficient (1-based),
 *              coefficients per coordinate, sub-intervals, coordinates; for
 *              Mercury..Pluto, Moon (geocentric), Sun, nutations, librations
 *              (the Earth-Moon barycentre in place of the Earth)
 *   offset 264: int32 deNumber, numberOfConstants, coefficientSize (8),
 *               coefficientsPerRecord (<= 1024), recordBytes (= 8 x that)
 *   offset 284: float64 moonFactor (1/(1+emrat)), earthFactor (emrat/(1+emrat))
 *   record n (n >= 2) at offset n x recordBytes: coefficientsPerRecord
 *   float64, the first two the record's start and end JD, as in a DE file.
 * A shorter L fills only the leading fields; a header whose geometry does not
 * hold together opens but answers no query. */

/* DE number of the main JPL DE file (e.g. 405), -1 when none is open. */
KVX_API int32_t GetJplDeVersion(void);
/* 1 when the Moon's positions come from a file (the JPL DE file or
 * "moon.xyz"), 0 when from the built-in theory. */
KVX_API int32_t IsValidMoonXyzFile(void);
/* 1 while the planet position file "planet.xyz" is open (0 once it has been
 * read into memory with OnMemory, although it is still used). */
KVX_API int32_t IsValidPlanetXyzFile(void);

/* end of: JPL DE ephemeris and position files */

/* ======================================================================
 * The Sun                            (src/solar/sun/sun.cpp)
 * ====================================================================== */

/* Result record of CalcSun, CalcPlanet, CalcMoon/CalcMoon2, CalcComet and
 * CalcSatellite: 37 eight-byte slots, field k (1-based) at byte offset
 * 8(k-1). Fields are doubles, read as f[k-1] (KVX_BODYPOS_FIELD), except the
 * 32-bit integers that some bodies store at the start of a slot, read as
 * i[2(k-1)] (KVX_BODYPOS_INT): a planet's field 37 (magnitude in tenths),
 * a satellite's field 27, and the Moon's fixed-point direction, three int32
 * from field 27 on (fx, i.e. i[52..54]). 296 bytes.
 * The first seven fields are common to all bodies: */
#define KVX_BP_RA_J2000   1  /* right ascension, J2000 mean equator, astrometric, topocentric */
#define KVX_BP_DEC_J2000  2  /* declination, same frame */
#define KVX_BP_RA_APP     3  /* apparent right ascension of date */
#define KVX_BP_DEC_APP    4  /* apparent declination of date */
#define KVX_BP_ECL_LON    5  /* ecliptic longitude, mean ecliptic of date */
#define KVX_BP_ECL_LAT    6  /* ecliptic latitude, mean ecliptic of date */
#define KVX_BP_DISTANCE   7  /* observer to body: AU (Moon: km) */
typedef union BodyPos {
    double f[37];
    int32_t i[74];
    struct {
        double head[26];
        FxVec fx;          /* the Moon's direction in fixed point, field 27 on */
    } moon;
} BodyPos;
#define KVX_BODYPOS_FIELD(bp, k) ((bp).f[(k) - 1])
#define KVX_BODYPOS_INT(bp, k) ((bp).i[2 * ((k) - 1)])

/* Place of the Sun for t, fields 1-20 of the Sun record (see BodyPos):
 * astrometric and apparent RA/Dec, ecliptic place of date, distance, the
 * Earth's heliocentric vector (8-10, J2000.0 equator; 11-13 ecliptic of
 * date), geocentric distance (14), semi-diameter (15), P, B0, the
 * heliographic longitude of the centre from the solar equator's node and L0
 * (16-19, degrees), 20 = -1. Call it before CalcPlanet, CalcMoon and
 * CalcComet for the same t. Null pointers do nothing. */
KVX_API void CalcSun(ATime *t, BodyPos *out);

/* end of: The Sun */

/* ======================================================================
 * The Moon                          (src/solar/moon/moon.cpp)
 * ====================================================================== */

/* Geocentric ecliptic longitude and latitude of the Moon (lb, degrees, mean
 * ecliptic and equinox of date) and distance (km) at dynamical Julian date
 * jd, geometric; from the JPL DE file, else the Moon file, else the built-in
 * theory. Returns 1; 0 (nothing written) for a null lb; dist may be null. */
KVX_API int32_t CalcMoonLbr(double jd, double lb[2], double *dist);
/* The Moon for t without the Sun-dependent fields: 1-7 (7 in km), 9-10
 * geocentric J2000.0 RA/Dec, 11-12 geocentric ecliptic longitude/latitude of
 * date, 13 geocentric distance (km), 17 position angle of the axis, 20-21
 * total librations in longitude/latitude, 24-26 direction cosines of 1-2 and
 * moon.fx. Null t or out: nothing is done. */
KVX_API void CalcMoon2(ATime *t, BodyPos *out);
/* CalcMoon2, then 8 and 14 topocentric and geocentric semi-diameters, 15-16
 * azimuth and altitude, 18 illuminated fraction and 19 position angle of
 * the bright limb; sunPos must come from CalcSun for the same t (null:
 * fields 18-19 unset). Null t or out: nothing is done. */
KVX_API void CalcMoon(ATime *t, BodyPos *out, const BodyPos *sunPos);

/* end of: The Moon */

/* ======================================================================
 * Moon phases and age         (src/solar/moon/moon_phase.cpp)
 * ====================================================================== */

/* A principal phase of the Moon: phase number (0 new Moon, 1 first quarter,
 * 2 full Moon, 3 last quarter) and its instant as a Julian date. 16 bytes. */
typedef struct MoonPhase {
    int32_t phase;
    double jd;
} MoonPhase;

/* Dynamical-time Julian date of a principal phase of lunation k by the
 * series of the true phases (Meeus); k = 0 is the new Moon of 2000 January 6
 * and the fraction of k (k - floor(k)) selects .0 new, .25 first quarter,
 * .5 full, .75 last quarter; other fractions give the new-Moon series. */
KVX_API double GetNewMoonJd2000(double k);

/* Days since the last new Moon at Julian date jd: from the phase series
 * inside JD 1356173.0..3547272.0 (sunPos, moonPos unused there), outside it
 * from moonPos field 11 minus sunPos field 5 over the mean daily elongation
 * (0 when either record is null). */
KVX_API double GetMoonAge(double jd, const BodyPos *sunPos, const BodyPos *moonPos);
/* The principal phases whose instants fall in the local calendar month of
 * month (year, month, tz read), in time order, at most max; returns the
 * count. Instants are universal time inside JD 1356173.0..3547272.0 (series
 * refined with the library's Sun and Moon), else from daily samples without
 * Delta T. Null month or out: 0. */
KVX_API int32_t GetMoonPhases(const ADate *month, MoonPhase *out, int32_t max);

/* end of: Moon phases and age */

/* ======================================================================
 * The planets and orbital elements (src/solar/planet/planet.cpp)
 * ====================================================================== */

/* Mean or osculating orbital elements of a body moving round the Sun,
 * referred to the ecliptic and equinox of the year `equinox` (2000.0 for
 * J2000.0). Filled by GetPlanetOrbitElm and CalPVtoElm, read by
 * GetPlanetByElement. 80 bytes. */
typedef struct OrbitElm {
    double epoch;   /* dynamical Julian date at which m holds */
    double a;       /* semi-major axis, AU */
    double e;       /* eccentricity (below 1) */
    double incl;    /* inclination, degrees */
    double node;    /* longitude of the ascending node, degrees */
    double peri;    /* argument of perihelion, degrees */
    double m;       /* mean anomaly at epoch, degrees */
    double n;       /* mean motion, degrees per day */
    double equinox; /* year of the ecliptic and equinox, e.g. 2000.0 */
    double reserved;
} OrbitElm;

/* Mean elements of date of a planet, code 0..7 (Mercury..Pluto) or -3 (the
 * Earth-Moon barycentre), at dynamical Julian date jde, on the ecliptic and
 * equinox of J2000.0: E. M. Standish's Keplerian elements for 3000 BC to
 * AD 3000 (extrapolated outside). Returns 1, or 0 for another code or a null
 * record. */
KVX_API int32_t GetPlanetOrbitElm(int32_t code, double jde, OrbitElm *out);
/* Heliocentric position (AU) and, when vel is not null, velocity (AU/day) at
 * dynamical Julian date jde from an element record, on the axes of the
 * elements' ecliptic and equinox. Returns 1, or 0 for a null record or an
 * eccentricity not below 1. */
KVX_API int32_t GetPlanetByElement(const OrbitElm *elm, double jde, double pos[3], double vel[3]);
/* Osculating elements from a heliocentric position (AU) and velocity (AU/day)
 * at dynamical Julian date jde, with the Gaussian constant. The vectors are
 * equatorial and are rotated to the ecliptic by the obliquity eps (degrees;
 * pass 0 for vectors that are already ecliptic); out->equinox is set to
 * `equinox`. Returns 1, or 0 for a null pointer or an orbit that is not
 * elliptic. */
KVX_API int32_t CalPVtoElm(const double pos[3], const double vel[3], double jde, double eps, double equinox, OrbitElm *out);
/* n points (n >= 2) evenly spaced in eccentric anomaly along the mean orbit
 * of date of planet `code` (as GetPlanetOrbitElm), heliocentric, J2000.0
 * equatorial axes, AU, written as xyz[3k..3k+2]. Returns the number of
 * points written (0 for a bad code, n < 2 or a null buffer). */
KVX_API int32_t CalcPlanetOrbit3(int32_t code, double jde, int32_t n, double *xyz);

/* Place, distance, phase and brightness of body code (-3 Earth, 0..7
 * Mercury..Pluto, 8 Eris, 9 Ceres, 10 Makemake, 11 Haumea) for t; sunPos is
 * CalcSun's record for the same t. Fills fields 1-37 (field 37: magnitude in
 * tenths, int32, read with KVX_BODYPOS_INT). Returns 1, or 0 for an unknown
 * code or a null pointer. */
KVX_API int32_t CalcPlanet(int32_t code, ATime *t, const BodyPos *sunPos, BodyPos *out);
/* Heliocentric ecliptic longitude and latitude of date (degrees) and
 * distance (AU) of body code at dynamical Julian date jd. Returns 1, or 0
 * for an unknown code or null outputs. */
KVX_API int32_t CalcPlanetLbr(int32_t code, double jd, double lb[2], double *r);
/* Illuminated fraction and position angle of the bright limb (degrees) from
 * the RA/Dec (fields 1-2) of the Sun's and the body's records and their
 * distances from the observer (AU). Null outputs are skipped. */
KVX_API void GetPhase(const BodyPos *sunPos, double sunDist, const BodyPos *body, double bodyDist, double *fraction, double *limbAngle);
/* Reduced visual magnitude of body code from its heliocentric vector h and
 * the Earth's e (AU); -999.0 for an unknown code or null vectors. */
KVX_API double GetPlanetMag(int32_t code, const double h[3], const double e[3]);

/* end of: The planets and orbital elements */

/* ======================================================================
 * Comets and minor planets                  (src/comet/)
 * ====================================================================== */

/* Orbital elements of a comet or minor planet referred to its perihelion.
 * Layout (136 bytes): kind at 0, 3 bytes padding, number at 4,
 * designation at 8..39, then eleven doubles from offset 40. */
typedef struct CometElements {
    char kind;             /* 'M' minor planet; 'C', 'P', ... comet */
    char pad[3];
    int32_t number;        /* catalogue number, 0 when none */
    char designation[32];  /* designation or name, NUL-terminated; for kinds
                              other than 'M', leading digits followed by 'A'
                              also mark a minor planet */
    double perihelionJd;   /* time of perihelion T, dynamical Julian date */
    double e;              /* eccentricity */
    double q;              /* perihelion distance, AU */
    double peri;           /* argument of perihelion, degrees */
    double node;           /* longitude of the ascending node, degrees */
    double incl;           /* inclination, degrees */
    double equinox;        /* year of the equinox, e.g. 2000.0 */
    double h;              /* absolute magnitude H */
    double slope;          /* comet: K of m = H + 5 log delta + K log r;
                              minor planet: slope parameter G */
    double epoch;          /* osculation epoch, Julian date (0 if unknown) */
    double validFrom;      /* validity span, Julian dates */
    double validTo;
} CometElements;

/* Gauss vectors of an orbit: m (row by row) gets P in its first column and Q
 * in its second, equatorial axes of the year equinoxYear (obliquity from
 * GetEp, fixed 23.83253 / 23.05253 degrees beyond 4000 years from 2000);
 * the third column is zero. Angles in degrees. */
KVX_API void GetVectorConst(double *m, double omega, double node, double incl, double equinoxYear);
/* The full orientation matrix RotateX(-eps) RotateZ(-node) RotateX(-incl)
 * RotateZ(-omega), same obliquity rule. */
KVX_API void GetVectorConst3D(double *m, double omega, double node, double incl, double equinoxYear);

/* Place and magnitude of a comet or minor planet for t (sunPos: CalcSun's
 * record for the same t), filled like CalcPlanet's head: fields 1-20, 36 and
 * 37 (21-35 = -1). Returns 1, or 0 when the orbit cannot be solved or a
 * pointer is null. */
KVX_API int32_t CalcComet(const CometElements *el, ATime *t, const BodyPos *sunPos, BodyPos *out);
/* n points along the orbit, heliocentric, J2000.0 equator, AU (xyz[3k..]):
 * an ellipse whole, an open orbit out to the distance rMax (AU). Returns the
 * number of points, 0 on bad input. */
KVX_API int32_t GetCometOrbit(const CometElements *el, int32_t n, double rMax, double *xyz);

/* end of: Comets and minor planets */

/* ======================================================================
 * Meteor showers               (src/calendar/meteor.cpp)
 * ====================================================================== */

/* One meteor shower of the catalogue read from "meteor.txt" at load time.
 * The library gives the numeric fields no meaning; the sample file of the
 * distribution documents its columns (tools/meteor.txt). 136 bytes. */
typedef struct MeteorInfo {
    int32_t number;
    char code[4];        /* up to 3 characters, zero-terminated */
    char name[32];       /* up to 31 characters, zero-terminated */
    char name2[32];      /* second name, up to 31 characters */
    double value[5];     /* value 1 to value 5 */
    int32_t intValue;
    double value6;
    int32_t optional;    /* the optional last integer, -1 when absent */
} MeteorInfo;

/* Number of records; -1 when no file with a valid line was ever loaded. */
KVX_API int32_t GetMeteorInfoCount(void);
/* Record `index` (owned by the library, valid until unload), or null when
 * index >= the count or no catalogue is loaded. A negative index is not
 * checked: the pointer then lies before the catalogue. */
KVX_API const MeteorInfo *GetMeteorInfo(int32_t index);
/* 1 when a meteor catalogue is loaded, else 0. */
KVX_API int32_t IsValidMeteorFile(void);

/* end of: Meteor showers */

/* ======================================================================
 * Artificial satellites: two-line elements        (src/asat/tle.cpp)
 * ====================================================================== */

/* A NORAD two-line element set as text: the name line, line 1 and line 2,
 * each NUL-terminated within its 71 bytes (69 characters of a standard
 * element line fit). 213 bytes. */
typedef struct TleLines {
    char name[71];
    char line1[71];
    char line2[71];
} TleLines;

/* Elements of one artificial satellite, as ASatTleToElm cuts them from the
 * text (columns numbered from 1, both ends included). Natural C layout,
 * 328 bytes. */
typedef struct Elm {
    char name[70];           /* name line without trailing blanks            */
    int32_t catalogNumber;   /* line 1 cols 3-7                              */
    int32_t launchYear;      /* line 1 cols 10-11, two digits as written     */
    int32_t launchNumber;    /* line 1 cols 12-14                            */
    char launchPiece[3];     /* line 1 cols 15-17, not terminated            */
    double inclination;      /* radians                                      */
    double raan;             /* right ascension of the ascending node, rad   */
    double eccentricity;
    double argPerigee;       /* argument of perigee, radians                 */
    double meanAnomaly;      /* radians                                      */
    double meanMotion;       /* radians per minute (Kozai mean motion)       */
    int32_t revNumber;       /* revolution number at epoch                   */
    double epoch;            /* Julian date (UTC) of the element epoch       */
    double reserved;         /* not written by ASatTleToElm                  */
    double ndot;             /* line 1 cols 34-43 as written (rev/day^2 / 2) */
    double bstar;            /* drag term, 1/Earth radii                     */
    char ephemerisType[2];   /* line 1 col 63 and a NUL                      */
    int32_t elementSetNumber;/* line 1 cols 65-68                            */
    char line1[71];          /* first 70 bytes of line 1, NUL-terminated     */
    char line2[71];          /* first 70 bytes of line 2, NUL-terminated     */
} Elm;

/* Cuts a two-line element set into an Elm: fixed columns, converted like
 * strtol/strtod (leading blanks skipped, stops at the first character that
 * is not part of the number); nothing is validated, so garbage gives zeros.
 * Line numbers and checksums are not read: callers that take text from
 * outside should check them first. Epoch years 00-49 are 2000-2049, 50-99
 * are 1950-1999. bstar = cols 54-59 (an implied-decimal mantissa) times
 * 10^(cols 60-61 - 5). Does nothing for a null pointer. The return value
 * carries no status (always 1). */
KVX_API int32_t ASatTleToElm(const TleLines *input, Elm *output);
/* 1 when elm may be used at the universal-time Julian date jd, else 0 (and
 * 0 for a null elm, a NaN jd or |jd| >= 1e9): 0 before 1 January of the launch year (launch years
 * 00-55 are 2000-2055, 56-99 are 1956-1999); with bstar >= 0.0001 and a
 * perigee quantity q = 42241.09773 n^-1.5 (1 - e) below 680 (n in rev/day)
 * the set also expires after an empirical drag lifetime of
 * max(1, (q < 650 ? 0.75 q - 474.5 : 3 q - 1920) / bstar / 1440) days on
 * either side of the epoch. */
KVX_API int32_t ASatIsElmValid(double jd, const Elm *elm);

/* end of: Artificial satellites: two-line elements */

/* ======================================================================
 * Artificial satellites: orbit propagation   (src/asat/sgp4.cpp,
 *                                             src/asat/sgp4_full.cpp)
 * ====================================================================== */

/* Position (km) and velocity (km/s) of a satellite at the universal-time
 * Julian date jd with the near-Earth SGP4 model of Spacetrack Report No. 3
 * (GM = 398600.44 km^3/s^2, Earth radius 6378.137 km, J2 = 1.082629e-3,
 * J3 = -2.54e-6, J4 = -1.62e-6). Every element set is run through the
 * near-Earth equations whatever its period: geostationary, navigation and
 * Molniya orbits drift by tens to hundreds of km from their true places;
 * use CalcASatFull for them. Frame: the model's true equator and mean
 * equinox of date (TEME; see ASatAppToJ2000). Returns 1, or 0 (outputs not
 * written) when ASatIsElmValid rejects jd, the propagated eccentricity
 * leaves the unit range or the state is not finite. Either output may be
 * null. */
KVX_API int32_t CalcASat(double jd, const Elm *elm, double *position, double *velocity);
/* Two element sets of one satellite blended linearly by epoch: both are
 * propagated with CalcASat and mixed with f = (jd - first->epoch) /
 * (second->epoch - first->epoch) (f outside 0..1 extrapolates). A null
 * second uses the first alone; a null first gives 0. Returns 1, or 0 when a
 * propagation fails. Either output may be null. */
KVX_API int32_t CalcASat2(double jd, const Elm *first, const Elm *second, double *position, double *velocity);
/* The complete SGP4/SDP4 of Vallado, Crawford, Hujsak and Kelso (2006,
 * "Revisiting Spacetrack Report #3", AIAA 2006-6753) with WGS-72 constants:
 * deep-space secular and periodic lunar-solar terms and the 12 h and 24 h
 * resonances for periods of 225 minutes and more; agrees with the
 * published reference code to the millimetre. Same frame, units and null
 * rules as CalcASat, but no lifetime test (ASatIsElmValid is the caller's
 * choice). Returns 1, or 0 when the model fails (eccentricity out of range,
 * decayed: radius below one Earth radius, non-finite state). */
KVX_API int32_t CalcASatFull(double jd, const Elm *elm, double *position, double *velocity);

/* end of: Artificial satellites: orbit propagation */

/* ======================================================================
 * Artificial satellites: observation and passes  (src/asat/geometry.cpp,
 *                                                 src/asat/passes.cpp)
 * Inertial vectors are km on the propagator's equator and equinox of date,
 * turned to the Earth by the Greenwich mean sidereal angle (IAU 1982, no
 * polar motion); the Earth is the GRS80 ellipsoid. Julian dates are UT.
 * ====================================================================== */

/* A geodetic place: latitude (deg, north +), longitude (deg, east +),
 * height above the ellipsoid (m). 24 bytes. */
typedef struct Lla {
    double latitude;
    double longitude;
    double height;
} Lla;

/* Inertial position (km) of a place on the rotating Earth at jd. Null
 * pointers do nothing. */
KVX_API void ASatLlaToXyz(double jd, const Lla *place, double *xyz);
/* Geodetic place under an inertial position (km) at jd: longitude 0..360
 * east, latitude iterated on the ellipsoid until it changes by less than
 * 1e-12 rad (at most 50 passes), height in m. The Earth's centre gives
 * latitude 0, longitude 0 and height -6378137. Null pointers do nothing. */
KVX_API void ASatXyzToLla(double jd, const double *xyz, Lla *place);
/* Look angles of a satellite at inertial position satXyz (km) from an
 * observer at jd: azimuth in RADIANS from the north through the east,
 * 0..2 pi; elevation in RADIANS (geometric, from the ellipsoid's horizon,
 * no refraction), -pi/2..pi/2; range in km. Each output may be null.
 * Returns 1, or 0 for a null observer or satXyz (nothing written). A
 * satellite exactly at the observer gives azimuth 0, elevation 0, range 0. */
KVX_API int32_t ASatLookAngle(double jd, const Lla *observer, const double *satXyz, double *azimuth, double *elevation, double *range);
/* Turns a vector of the propagator's frame of date (dc, three doubles, any
 * length) to the J2000.0 mean equator in place, using t's obliquity,
 * nutation in longitude and precession: the equation of the equinoxes and
 * then precession; the small nutation of the pole is not removed (the
 * model's equator is taken as the mean equator of date). Returns dc (null
 * when t or dc is null, nothing changed). */
KVX_API double *ASatAppToJ2000(const ATime *t, double *dc);
/* J2000.0 right ascension and declination (out, degrees) of the horizon
 * direction azimuth (from the north through the east) and altitude
 * (degrees) seen by observer at jd, through Coordinates' geometric horizon
 * (no refraction). Null observer: the centre of the Earth. */
KVX_API void ASatHrzToAd(double jd, const Observer *observer, double azimuth, double altitude, Ad *out);
/* J2000.0 direction (out, degrees) from observer to an Earth-fixed point
 * at geocentric longitude, latitude (degrees) and distance from the
 * Earth's centre (km), e.g. a satellite's sub-point and radius. The
 * observer is placed at the radius of the IAU 1964 figure (a = 6378.140 km)
 * but at its geodetic latitude taken as the geocentric one: up to 21 km
 * (at 45 degrees) from its true place, so the direction of a point 2000 km
 * away can be off by 0.6 degree; exact at the equator and the poles. Null
 * observer or out: nothing. */
KVX_API void ASatLLDToAd(double jd, const Observer *observer, double longitude, double latitude, double distanceKm, Ad *out);
/* How deep a satellite stands in the Earth's shadow: 1 fully shadowed, 0
 * lit, in between across the outer 0.5 % of the shadow radius. Both vectors
 * are from the Sun in AU on the same axes (satellite, Earth centre). The
 * shadow is a cone from the Earth's equatorial radius to a point 1.5
 * million km behind the Earth. Null pointers give 0. */
KVX_API double ASatEarthShadow(const double *satFromSun, const double *earthFromSun);

/* One event of a satellite pass. 24 bytes (4 bytes of padding after kind). */
typedef struct ASatPassEvent {
    int32_t kind;     /* 1 rise, 2 culmination, 3 set */
    double jd;        /* universal-time Julian date */
    double altitude;  /* geometric altitude of the satellite, degrees */
} ASatPassEvent;
#define KVX_ASAT_RISE 1
#define KVX_ASAT_CULMINATION 2
#define KVX_ASAT_SET 3

/* Flags of ASatRiseSet2. */
#define KVX_ASAT_VISIBLE 1     /* visible passes only (see ASatRiseSet2) */
#define KVX_ASAT_FULL_MODEL 2  /* propagate with CalcASatFull, not CalcASat */

/* Passes of a satellite over observer between jdStart and jdEnd (UT),
 * written to out in time order: rise, then culmination, then set. The
 * satellite comes from CalcASat (so only while ASatIsElmValid accepts the
 * elements), or from CalcASatFull with KVX_ASAT_FULL_MODEL in flags (for
 * periods of 225 minutes and more). Rise and set are where the geometric
 * altitude crosses -h0, h0 = dip of the horizon for the observer's height
 * (0 below the ellipsoid) plus 0.5855555 deg of refraction (35' 08"),
 * refined to better than a second; the culmination is the highest point.
 * Passes whose culmination is at most 0.2 - h0 degrees (grazing) or below
 * minAltitude (degrees) are left out with their rise and set. With
 * KVX_ASAT_VISIBLE only passes are kept during which, at one of their
 * events or whole minutes, the satellite is not fully in the Earth's shadow
 * (ASatEarthShadow below 1) while the Sun is more than 6 degrees below the
 * observer's horizon. A pass cut by jdStart or jdEnd keeps the events
 * inside the span; a satellite that never sets has culminations only. At
 * most maxCount records are written (the earliest); the return value is
 * the number written, so maxCount records mean there may be more after the
 * last one. Returns 0 for null pointers, maxCount < 1 or jdEnd <= jdStart.
 * Spans longer than 60 days are cut to 60 days. */
KVX_API int32_t ASatRiseSet2(double jdStart, double jdEnd, const Lla *observer, const Elm *elm, double minAltitude, int32_t flags, ASatPassEvent *out, int32_t maxCount);
/* ASatRiseSet2 with flags = 0: every pass, CalcASat's model. */
KVX_API int32_t ASatRiseSet(double jdStart, double jdEnd, const Lla *observer, const Elm *elm, double minAltitude, ASatPassEvent *out, int32_t maxCount);

/* end of: Artificial satellites: observation and passes */

#ifdef __cplusplus
}
#endif

#endif /* KVXLIB_H */
