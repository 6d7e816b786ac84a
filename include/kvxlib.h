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
 *     column vectors: v' = M v;
 *   - bad numbers never crash or hang the library: NaN, infinite and huge
 *     arguments give a defined result (0, saturated integers, NaN fields or
 *     untouched output, as each comment says), and every iteration is capped.
 *
 * Threads. The library starts no thread and takes no lock. The data files
 * (Delta T, planet position file, JPL DE file, Moon file, meteor list) are
 * loaded when the library is loaded and freed when it is unloaded; in
 * between they are read-only, and every query of them reads with positioned
 * reads into a per-thread record cache (or from the in-memory image), so
 * every function may be called from any number of threads at once and gives
 * the same bits as from one thread, except these, which share process-wide
 * state and must be serialised by the caller:
 *   - the rise/set day context: InitRiseSet, GetRiseSet, GetRiseSetEx,
 *     CheckCircumPolar, GetSunRise, GetSunSet, GetSunRiseDeg, GetSunSetDeg;
 *   - the per-year calendar tables: Calender_NewToOld, Calender_OldToNew,
 *     Calender_GetTable, Sekki_CheckDay, Sekki_GetTableData,
 *     Holiday_CheckDay, Holiday_GetHolidayData.
 * (Calls of one group may run beside calls of the other group or of any
 * other function.)
 *
 * Every declaration starts with KVX_API on the line that names the function:
 * the build derives the list of exported names from this file.
 */
#ifndef KVXLIB_H
#define KVXLIB_H

#include <stdint.h>

/* Version of this interface, 6.x.y: the major number is the shared library's
 * (libkvxlib.so.6); minor releases add, patch releases only correct. */
#define KVX_VERSION_MAJOR 6
#define KVX_VERSION_MINOR 0
#define KVX_VERSION_PATCH 0

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
 * Vectors, matrices and rotations (src/math/vector.cpp)
 * Rotation matrices are frame rotations: the axes turn by +a.
 * ====================================================================== */

/* Unit vector (cos d cos a, cos d sin a, sin d) of an angle pair. */
KVX_API void AdToDc(const Ad *in, Dc *out);
/* Direction of a unit vector: a in 0..360 (0 at the poles), d = asin(z),
 * z beyond +-1 giving exactly +-90. */
KVX_API void DcToAd(const Dc *in, Ad *out);
/* Direction of a vector of any length. Returns 0 and leaves out untouched
 * when the length is exactly 0, else 1. */
KVX_API int32_t DcToAdR(const Dc *in, Ad *out);
/* Length of v; 0 for null. */
KVX_API double DcAbs(const Dc *v);
/* out = a + b. */
KVX_API void DcAdd(const Dc *a, const Dc *b, Dc *out);
/* out = a - b. */
KVX_API void DcSub(const Dc *a, const Dc *b, Dc *out);
/* Length of b - a; 0 for null. */
KVX_API double DcDist(const Dc *a, const Dc *b);
/* out = v * s; returns out (null when a pointer is null). */
KVX_API Dc *DcMul(const Dc *v, double s, Dc *out);
/* out = v / s (no guard for s = 0: IEEE infinities or NaN); returns out. */
KVX_API Dc *DcDiv(const Dc *v, double s, Dc *out);
/* out = v / |v| (no guard for the zero vector); returns |v|. */
KVX_API double DcNorm(const Dc *v, Dc *out);
/* a . b; 0 for null. */
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
 * Angles, sexagesimal conversion, interpolation (src/math/angle.cpp)
 * ====================================================================== */

/* Degrees reduced to 0 <= a < 360 (a tiny negative a whose a + 360 rounds to
 * 360 gives 0). */
KVX_API double degmal(double a);
/* Moved once into -180..180: one step of 360 each way (700 gives 340). */
KVX_API double degmal180(double a);
/* A latitude: reduced, moved to -180..180, clamped (not reflected) to
 * -90..90 (100 gives 90). */
KVX_API double degmal2(double a);
/* Integer degrees reduced to 0..359. */
KVX_API int32_t degmalInt(int32_t a);
/* Hours reduced to 0 <= h < 24. */
KVX_API double hourmal(double h);
/* Decimal degrees to sign (+1 for a >= 0), degrees, minutes, seconds, each
 * part taken from |a|. Degrees beyond the int32 range saturate; NaN or an
 * infinity gives 0 minutes and NaN seconds. */
KVX_API void DegTo60(double a, Deg60 *out);
/* As DegTo60, degrees and minutes rounded to the whole minute; the seconds
 * field then holds the shifted seconds and is not meant to be shown. */
KVX_API void DegTo60_2(double a, Deg60 *out);
/* Sexagesimal to decimal degrees. */
KVX_API double DegTo10(Deg60 a);
/* Decimal hours to hours, minutes, seconds. No sign field: a negative h
 * gives negative minutes and seconds (-1.5 gives -2 h -30 m 0 s), so pass
 * reduced hours. Out-of-range hours saturate as in DegTo60. */
KVX_API void HourTo60(double h, Hour60 *out);
/* Sexagesimal to decimal hours. */
KVX_API double HourTo10(Hour60 h);
/* Position angle (0 < pa <= 360, north = 360) and haversine angular
 * distance, both in degrees, from one point of the sphere to another. Either
 * output may be null. */
KVX_API void Deg2Point(const Ad *from, const Ad *to, double *positionAngle, double *distance);
/* Lagrange polynomial through (xs[i], ys[i]), i < n, evaluated at x; 0 when
 * n < 1 or a table is null. Equal abscissae divide by zero. */
KVX_API double Lagrange(double x, int32_t n, const double *xs, const double *ys);
/* Integer square root, floor(sqrt(n)), for n >= 0 (0 for negative n). */
KVX_API int32_t lsqrt(int32_t n);

/* ======================================================================
 * Fixed-point arithmetic (src/math/fixed_point.cpp)
 * ====================================================================== */

/* (a b) >> 30 with a 64-bit product, rounding toward minus infinity
 * (fxpmul(-1, 1) = -1). */
KVX_API int32_t fxpmul(int32_t a, int32_t b);
/* (a 2^30) / b, truncated toward zero, low 32 bits (0 when b = 0). */
KVX_API int32_t fxpdiv(int32_t a, int32_t b);
/* Cosine of a fixed-point angle: 1.0 below 0, 0 from pi/2 (1686629713) on. */
KVX_API int32_t fxpcos(int32_t angle);
/* Arc cosine in 0..pi as an unsigned bit pattern (pi = 0xC90FDAA2). */
KVX_API int32_t fxpacos(int32_t x);
/* pi/2 - fxpacos(x). */
KVX_API int32_t fxpasin(int32_t x);
/* asin(y / sqrt(x^2 + y^2)): the sign of x is not used, so the result lies
 * in -pi/2..pi/2 (fxpatan2(0, -1.0) is 0, not pi); 0 when the radius is
 * below 0x500000 (about 0.0049); needs x^2 + y^2 < 1. */
KVX_API int32_t fxpatan2(int32_t y, int32_t x);
/* Square root for 0 <= x < 1.0 (1.0 from 1.0 on, 0 below one unit). */
KVX_API int32_t fxpsqrt(int32_t x);
/* Square root of an unsigned value for 0 <= x < (pi/2)^2; from 0x9DE9E64D on
 * it returns pi/2 (1686629713). */
KVX_API uint32_t fxpusqrt(uint32_t x);
/* Unit vector of a direction in degrees, components truncated toward zero. */
KVX_API void AdToFx(const Ad *in, FxVec *out);
/* Each component (within -2..2) times 2^30, truncated toward zero. */
KVX_API void DcToFx(const Dc *in, FxVec *out);
/* Each component times 2^-30. */
KVX_API void FxToDc(const FxVec *in, Dc *out);
/* Direction in degrees of a fixed-point vector of any length: a in 0..360 (0
 * when x = y = 0), d = asin(z / r); the zero vector gives a NaN declination. */
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
 * Julian dates and civil dates (src/time/date.cpp)
 * Julian calendar up to 1582 October 4, Gregorian from October 15.
 * ====================================================================== */

/* Julian date of a calendar date (day may carry a fraction). The Gregorian
 * correction applies when the Julian-calendar value exceeds 2299160.5, so
 * Julian 1582-10-05 and Gregorian 1582-10-15 both give 2299160.5. */
KVX_API double CalcJd(double year, double month, double day);
/* Julian date (universal time) of a local civil date in its zone; out-of-
 * range hours and minutes carry into the day. 0 for null. */
KVX_API double GetJd(const ADate *date);
/* Calendar date of a Julian date; returns the year. Null outputs are skipped.
 * A NaN jd gives year and month 0 and a NaN day; a jd whose year lies beyond
 * the int32 range (|jd| above about 7.8e11, or infinite) gives a saturated
 * year (INT32_MIN or INT32_MAX). */
KVX_API int32_t JdToDate(double jd, int32_t *year, int32_t *month, double *day);
/* Calendar date and time of a Julian date, parts truncated toward zero; tz
 * is left untouched (pass jd + tz/24 and set tz yourself for local time). */
KVX_API void JdToDate2(double jd, ADate *out);
/* jd - 2400000.5 */
KVX_API double GetMjd(double jd);
/* Shifts a date by a calendar interval (the interval's tz is not read);
 * subtract != 0 subtracts. Time is carried first, then days, then months and
 * years; a result inside 1582-10-05..14 snaps to October 4 (days 5-9) or 15
 * (10-14); a day past the month's end rolls over (Jan 31 + 1 month = Mar 3).
 * A backward shift to an exact multiple of a day gives 24:00 of the day
 * before. Returns the resulting day of month. */
KVX_API int32_t ChangeDate(ADate *date, const ADate *interval, int32_t subtract);
/* As ChangeDate, but a result outside the years -100000..100000 leaves the
 * record unchanged. Returns the year ChangeDate produced, even if rejected. */
KVX_API int32_t ChangeLimitDate(ADate *date, const ADate *interval, int32_t subtract);
/* Re-expresses the date in zone newTz (hours): a shift of newTz - tz hours
 * through ChangeLimitDate, then tz = newTz; returns that year. */
KVX_API int32_t ChangeTimezone(ADate *date, double newTz);
/* Normalises hours 24..36 and minute 60 into the following day; returns the year. */
KVX_API int32_t Date36To24(ADate *date);
/* 1 if the date is valid: month 1..12, a day of that month (Julian leap rule
 * up to 1582, negative multiples of 4 included; Gregorian after), hour
 * 0..36, minute 0..60, not 1582-10-05..14; else 0. The second is not
 * checked. */
KVX_API int32_t CheckDate(const ADate *date);
/* Current date and time in zone tz (hours), whole seconds (milliseconds
 * dropped); reserved is not read. Returns the year. */
KVX_API int32_t GetNowDate(ADate *date, double reserved, double tz);
/* The system's current offset from universal time, in whole hours (a
 * +5:30 zone gives 5). */
KVX_API double GetTimezone(void);
/* Years from JD 2442412.5 with a small rate term: t + (0.0317 t + 1.43)
 * 1e-6, t = (jd - 2442412.5) / 365.25. */
KVX_API double GetT(double jd);
/* Julian centuries from J2000.0. */
KVX_API double GetT2(double jd);
/* IAU 2006 mean obliquity of the ecliptic (degrees) at a dynamical Julian
 * date, centuries clamped to +-30. */
KVX_API double GetEp(double jde);

/* ======================================================================
 * Delta T (src/time/delta_t.cpp)
 * ====================================================================== */

/* Dynamical time (TT) of a universal-time Julian date: jd + Delta T. Delta T
 * comes from the delta-T file loaded at start-up when it covers jd (a step
 * table, held five years past its newest entry), else the TAI - UTC steps of
 * 1961-1971 plus 32.184 s, else the Espenak-Meeus polynomials of the year;
 * the last two carry the -0.000012932 (y - 1955)^2 s correction. */
KVX_API double UtToDt(double jd);
/* Universal time of a dynamical Julian date: jde - Delta T(jde), Delta T
 * taken at jde itself (no iteration), so DtToUt(UtToDt(jd)) differs from jd
 * by the change of Delta T over Delta T. */
KVX_API double DtToUt(double jde);
/* 1 when a delta-T file of format version exactly 2 is loaded, else 0
 * (version 1 and versions above 2 load but answer 0). */
KVX_API int32_t IsValidJdtFile(void);

/* end of: Delta T */

/* ======================================================================
 * Precession and nutation (src/time/precession.cpp, src/time/nutation.cpp)
 * ====================================================================== */

/* Precession matrix from the mean equator and equinox of fromJd to those of
 * toJd (dynamical Julian dates), IAU 2006: exactly the identity for equal
 * epochs; a start within a day of J2000.0 keeps the frame bias (a matrix
 * ending at J2000.0 ends on the mean equator without it); a start more than
 * 30 centuries from J2000.0 is computed the other way round and inverted;
 * spans beyond +-30 centuries continue at 50" per year of 365.24 days about
 * the ecliptic pole. */
KVX_API void GetPrecMtx(double fromJd, double toJd, double out[9]);
/* out = direction of M (unit vector of in): a in 0..360, d = asin(z); in and
 * out may be the same record. */
KVX_API void PrecEqt(const Ad *in, Ad *out, const double m[9]);
/* Nutation at a dynamical Julian date: out[0] = dpsi, out[1] = deps
 * (degrees), from the JPL DE file when it holds nutations and covers jde,
 * else the IAU 1980 series truncated at 0.001" (about 9 mas from the full
 * series) with jde clamped to J2000.0 +-30 centuries. */
KVX_API void GetNutationParam(double jde, double out[2]);
/* Mean to true equator of date from the nutation pair (degrees) and the mean
 * obliquity eps (degrees): Rx(-(eps + deps)) Rz(-dpsi) Rx(eps). */
KVX_API void GetNutationMtx(const double nutation[2], double eps, double out[9]);

/* end of: Precession and nutation */

/* ======================================================================
 * Time-and-observer record, sidereal time, observer vectors (src/time/atime.cpp)
 * ====================================================================== */

/* Fill an ATime for a local civil date (fields and tz; jde = UtToDt(jd)) and
 * an observer (null: the centre of the Earth). Null date or out does
 * nothing. */
KVX_API void SetATimeDate(const ADate *date, const Observer *obs, ATime *out);
/* Fill an ATime for a universal-time Julian date; the date fields are the
 * local time JdToDate2(jd + tz/24) in zone tz (hours). */
KVX_API void SetATimeJd(double jd, double tz, const Observer *obs, ATime *out);
/* As SetATimeJd with the caller's Delta T in seconds: jde = jd + deltaT/86400. */
KVX_API void SetATimeJd2(double jd, double deltaT, double tz, const Observer *obs, ATime *out);
/* Local apparent sidereal time (degrees, 0..360) at a universal-time Julian
 * date and east longitude (degrees), with the library's Delta T, obliquity
 * and nutation; longitude 0 gives Greenwich. */
KVX_API double GetLst(double jd, double longitude);
/* As GetLst with the caller's mean obliquity and nutation in longitude
 * (degrees): GMST (IAU 1982) + dpsi cos(eps) + longitude. */
KVX_API double GetLst2(double jd, double obliquity, double dpsi, double longitude);
/* Observer's geocentric position (AU, J2000.0 axes) on the GRS80 Earth at a
 * universal-time Julian date: turned by the Greenwich apparent sidereal time
 * and precessed with GetPrecMtx(jd, J2000.0) (no nutation); (0, 0, 0) for a
 * null observer. */
KVX_API void GetTopocenter(const Observer *obs, double jd, double out[3]);
/* Observer on any ellipsoid (flattening, equatorial radius in km) turned by
 * the sidereal angle theta (degrees): body-centred vector in AU, precessed
 * with GetPrecMtx(jd, J2000.0) to the J2000.0 axes; (0, 0, 0) for a null
 * observer. */
KVX_API void ObsToPcEqtXyz(const Observer *obs, double jd, double theta, double flattening, double equatorialRadius, double out[3]);
/* ObsToPcEqtXyz on the GRS80 Earth at Greenwich apparent sidereal time. */
KVX_API void ObsToGcEqtXyz(const Observer *obs, double jd, double out[3]);
/* Inverse of ObsToPcEqtXyz: body-centred vector (AU, J2000.0 axes) to
 * latitude, longitude (degrees), height (m); 50 iterations of the latitude.
 * The vector is precessed with GetPrecMtx(J2000.0, jd), which carries the
 * frame bias the forward conversion leaves out: a round trip is good to
 * about a metre on the Earth. A vector below 1e-6 AU gives latitude 0,
 * longitude 0, height -radius. */
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
/* Annual aberration with the elliptic terms, from t's jde and epsTrue. add
 * != 0: geometric -> apparent; add == 0: apparent -> geometric, by at most
 * four fixed-point passes (fewer when a pass moves the vector by less than
 * 1e-6). out is a unit vector. */
KVX_API void AnnualAberration(const ATime *t, const double v[3], int32_t add, double out[3]);
/* Light deflection by the Sun for a body of the solar system: p unit
 * geocentric direction, q heliocentric position (its direction is used), e
 * the Earth's heliocentric position (AU, its length is used). out is not
 * renormalised (its length differs from 1 by up to 1e-8); out = p when the
 * body lies behind the Sun (1 + q.e within 1e-8 of 0). */
KVX_API void DeflectionSolar(const double p[3], const double q[3], const double e[3], double out[3]);
/* Light deflection by the Sun for a star (p unit direction, e as above); out
 * renormalised; out = p when the star lies exactly behind the Sun. */
KVX_API void DeflectionStar(const double p[3], const double e[3], double out[3]);
/* Annual parallax (degrees) of a star p, away from the Sun at (sunAd[0]
 * right ascension, sunAd[1] declination, degrees) at 1 AU; out unit (the
 * normalised p for parallax 0). The Sun's apparent place of date serves a
 * J2000.0 p as well: the frame difference is far below the effect. */
KVX_API void AnnualParallax(const double p[3], double parallax, const double sunAd[2], double out[3]);
/* Proper motion along a great circle from jd0 to jd: pm[0] rate of right
 * ascension (not times cos dec), pm[1] of declination, degrees per Julian
 * year of 365.25 days; out is not renormalised. No guard at the poles (x = y
 * = 0 divides by zero). */
KVX_API void ProperMotion(double jd0, const double p[3], const double pm[2], double jd, double out[3]);
/* Apparent direction of date (true equator and equinox, unit vector) of a
 * star given at J2000.0 (p unit direction, pm as ProperMotion, parallax in
 * degrees): proper motion, parallax, deflection, aberration, then precession
 * and nutation. sun: CalcSun's record for the same t (fields 3-4 and 8-10
 * are read). */
KVX_API void StarApparent(const ATime *t, const double p[3], const double pm[2], double parallax, const union BodyPos *sun, double out[3]);

/* end of: Apparent place: aberration, deflection, parallax, proper motion */

/* ======================================================================
 * Atmospheric refraction (src/place/refraction.cpp)
 * ====================================================================== */

/* Standard atmosphere, no temperature or pressure. in->a is copied, in->d
 * is the altitude in degrees. Both return out (null if a pointer is null);
 * out may be in. */
/* True altitude -> apparent altitude (refraction added). Within 0.1 degree
 * of -5.11 the formula's pole is avoided by using tan(h) itself, so the
 * result jumps there. */
KVX_API Ad *AtmosphericRefraction(const Ad *in, Ad *out);
/* Apparent altitude -> true altitude (refraction removed), with the same
 * guard near -4.4. Not an exact inverse of AtmosphericRefraction (sub-
 * arcsecond residue at the horizon). */
KVX_API Ad *DeAtmosphericRefraction(const Ad *in, Ad *out);

/* end of: Atmospheric refraction */

/* ======================================================================
 * Coordinate systems and position angle (src/place/coordinates.cpp, src/place/position_angle.cpp)
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
/* Converts in from system `from` to system `to` for the instant and observer
 * of t. from == to: copies in unchanged (no normalisation) and returns in.
 * Otherwise returns out (longitude 0..360; out may be in). The apparent
 * systems include annual aberration (removed by iteration on the way in); no
 * refraction or diurnal parallax. Null in or out, or null t when from != to:
 * returns null and writes nothing. */
KVX_API Ad *Coordinates(const ATime *t, int32_t from, const Ad *in, int32_t to, Ad *out);
/* Position angle (0 < pa <= 360, due north = 360, east 90) and haversine
 * distance (degrees) of target seen from centre; the same computation as
 * Deg2Point. Either output may be null. Returns distance, or null (nothing
 * written) when centre or target is null. */
KVX_API double *AdToPaDist(const Ad *centre, const Ad *target, double *positionAngle, double *distance);
/* The point at position angle pa and distance r (degrees) from centre, right
 * ascension 0..360. r == 0 gives the centre; at pa 0 or 180 a result within
 * 1e-6 degree of a pole keeps the centre's right ascension. */
KVX_API void PaDistToAd(const Ad *centre, double positionAngle, double distance, Ad *out);

/* end of: Coordinate systems and position angle */

/* ======================================================================
 * Constellations (src/place/constellation.cpp)
 * ====================================================================== */

/* Constellation code (0..88; 36 at the north celestial pole, 58 at the
 * south) of ad = {right ascension, declination} in degrees. epochJd exactly
 * 2405888.5 (B1875.0): ad is used as it stands; any other value: ad is
 * J2000.0 and is precessed to B1875.0 first. -1 for a declination outside
 * -90..90 (tested after the precession, so on the J2000.0 path a declination
 * beyond a pole is the point over the pole), a right ascension that is an
 * exact negative multiple of 360, values that are not numbers, or a null ad.
 * The library holds codes only, no names. */
KVX_API int32_t GetConstellation(const double *ad, double epochJd);
/* end of: Constellations */

/* ======================================================================
 * JPL DE ephemeris and position files (src/solar/ephem/)
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

/* DE number of the main JPL DE file (e.g. 405), -1 when none is open. A file
 * read into memory (OnMemory) still reports its number although it answers
 * no query. */
KVX_API int32_t GetJplDeVersion(void);
/* 1 when the Moon's positions come from a file (the JPL DE file or
 * "moon.xyz"), 0 when from the built-in theory. */
KVX_API int32_t IsValidMoonXyzFile(void);
/* 1 while the planet position file "planet.xyz" is open (0 once it has been
 * read into memory with OnMemory, although it is still used). */
KVX_API int32_t IsValidPlanetXyzFile(void);

/* end of: JPL DE ephemeris and position files */

/* ======================================================================
 * Data files loaded at start-up (src/time/startup.cpp)
 * ====================================================================== */

/* What the library holds of a data file it loaded at start-up, for showing
 * what a computation will draw on. 40 bytes. */
typedef struct DataFileInfo {
    double start;    /* first Julian date covered (TT; Delta T: the oldest entry) */
    double end;      /* last Julian date covered (Delta T: the newest entry) */
    double step;     /* days per record (DE files) or per row (planet file); 0 for Delta T */
    int32_t count;   /* records (DE files), data rows (planet file) or entries (Delta T) */
    int32_t version; /* DE number (DE files), format version (Delta T), else 0 */
    int32_t number;  /* planet file: the block's body number in the file, 199 Mercury,
                        299 Venus, 399 Earth, 499 Mars ... 999 Pluto, 1099 Eris,
                        1199 Ceres, 1299 Makemake, 1399 Haumea; else 0 */
    int32_t body;    /* planet file: the same body as a library code (-3, 0..11); else 0 */
} DataFileInfo;
#define KVX_DATA_JPL_DE  1  /* the main JPL DE file ("JplEphUnixFile"); index 0 */
#define KVX_DATA_MOON    2  /* the Moon's file: the JPL DE file or "moon.xyz"; index 0 */
#define KVX_DATA_PLANET  3  /* the planet file: block `index`, 0.. in file order */
#define KVX_DATA_DELTA_T 4  /* the Delta T table; index 0 */
/* Fills out for data file `file` and returns 1; returns 0 and writes
 * nothing when that file (or block) is not loaded, for another index or
 * code, or a null out. Files read into memory with OnMemory are reported
 * too (see GetJplDeVersion and IsValidPlanetXyzFile for what they answer). */
KVX_API int32_t GetDataFileInfo(int32_t file, int32_t index, DataFileInfo *out);

/* end of: Data files loaded at start-up */

/* ======================================================================
 * The Sun (src/solar/sun/sun.cpp)
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
 * astrometric and apparent RA/Dec, ecliptic place of date, distance (the
 * geometric vector of the instant: no light time, aberration only), the
 * Earth's heliocentric vector (8-10, J2000.0 equator; 11-13 ecliptic of
 * date), geocentric distance (14), topocentric semi-diameter (15, solar
 * radius 696000 km), P, B0, the heliographic longitude of the centre from
 * the solar equator's node and L0 (16-19, degrees), 20 = -1. Call it before
 * CalcPlanet, CalcMoon and CalcComet for the same t. Null pointers do
 * nothing. */
KVX_API void CalcSun(ATime *t, BodyPos *out);

/* end of: The Sun */

/* ======================================================================
 * The Moon (src/solar/moon/moon.cpp)
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
 * moon.fx. Light time is iterated to 0.01 s from a file, to 1 s with the
 * theory. Outside dynamical JD 1538798.0..3364651.0 field 20 is 0 and fields
 * 17 and 21 are clamped to +-26 and +-7 degrees. Null t or out: nothing is
 * done. */
KVX_API void CalcMoon2(ATime *t, BodyPos *out);
/* CalcMoon2, then 8 and 14 topocentric and geocentric semi-diameters
 * (degrees, lunar radius 1737.4 km), 15-16 azimuth and altitude (system 1 of
 * Coordinates), 18 illuminated fraction and 19 position angle of the bright
 * limb; sunPos must come from CalcSun for the same t (null: fields 18-19
 * unset). Null t or out: nothing is done. */
KVX_API void CalcMoon(ATime *t, BodyPos *out, const BodyPos *sunPos);

/* end of: The Moon */

/* ======================================================================
 * Moon phases and age (src/solar/moon/moon_phase.cpp, src/solar/moon/moon_phase_series.cpp)
 * ====================================================================== */

/* A principal phase of the Moon: phase number (0 new Moon, 1 first quarter,
 * 2 full Moon, 3 last quarter) and its instant as a Julian date. 16 bytes. */
typedef struct MoonPhase {
    int32_t phase;
    double jd;
} MoonPhase;

/* Dynamical-time Julian date of a principal phase of lunation k by the
 * series of the true phases; k = 0 is the new Moon of 2000 January 6 and the
 * fraction of k (k - floor(k), each within 1e-6, so k = -0.25 is a last
 * quarter) selects .0 new, .25 first quarter, .5 full, .75 last quarter;
 * other fractions give the new-Moon series at that k. About a quarter of a
 * minute from a modern ephemeris over 1900-2100. */
KVX_API double GetNewMoonJd2000(double k);

/* Days since the last new Moon at Julian date jd: inside JD
 * 1356173.0..3547272.0 from the phase series (dynamical time, compared with
 * jd as given; sunPos and moonPos unused), outside it from moonPos field 11
 * minus sunPos field 5, reduced to 0..360, over the mean daily elongation
 * 12.190749 degrees (0 when either record is null). */
KVX_API double GetMoonAge(double jd, const BodyPos *sunPos, const BodyPos *moonPos);
/* The principal phases (0 new, 1 first quarter, 2 full, 3 last quarter)
 * whose instants fall in the local calendar month of month (year, month, tz
 * read; the day and time ignored), in time order, at most max; returns the
 * count. Inside JD 1356173.0..3547272.0 the instants are universal time
 * (the series refined with the library's Sun and Moon); outside it they
 * come from daily samples of the elongation without Delta T, and a month
 * whose first crossing after the fourth-last day of the month before falls
 * before the month yields nothing. Null month or out, or max < 1: 0. */
KVX_API int32_t GetMoonPhases(const ADate *month, MoonPhase *out, int32_t max);

/* end of: Moon phases and age */

/* ======================================================================
 * Lunar eclipses (src/solar/eclipse/lunar_eclipse.cpp)
 * ====================================================================== */

/* Eclipse types, the result of CalcLunarEclipse and LunarEclipse.type. */
#define KVX_ECLIPSE_NONE 0
#define KVX_ECLIPSE_PENUMBRAL 1  /* the Moon enters the penumbra only */
#define KVX_ECLIPSE_PARTIAL 2    /* part of the Moon enters the umbra */
#define KVX_ECLIPSE_TOTAL 3      /* the whole Moon enters the umbra */

/* Circumstances of a lunar eclipse, geocentric (they hold for every
 * observer who sees the Moon). Instants are universal-time Julian dates;
 * a contact that does not occur is 0.0. Angles in degrees. The shadow is
 * the Earth's, from the library's apparent places of the Sun and the Moon,
 * with the Earth's radius enlarged by 1/85 for the atmosphere (Danjon 1951,
 * the rule of the Connaissance des Temps; the older rule of the
 * Astronomical Almanac enlarges the shadow by 1/50 and gives umbral
 * magnitudes about 0.005 larger and penumbral ones about 0.026 larger).
 * 128 bytes. */
typedef struct LunarEclipse {
    int32_t type;          /* KVX_ECLIPSE_* */
    double jdFullMoon;     /* the full Moon examined (phase series, UT) */
    double jdMax;          /* greatest eclipse: least distance of the Moon's
                              centre from the shadow's; the full Moon when
                              there is no eclipse */
    double p1, u1, u2, u3, u4, p4; /* contacts: penumbra entered (P1),
                              umbra entered (U1), totality begins (U2) and
                              ends (U3), umbra left (U4), penumbra left (P4) */
    double umbralMag;      /* fraction of the Moon's diameter inside the
                              umbra at greatest eclipse (negative: missed by
                              that fraction) */
    double penumbralMag;   /* the same for the penumbra */
    double gamma;          /* least distance of the Moon's centre from the
                              shadow's axis, Earth equatorial radii, + when
                              the Moon passes north of it */
    double separation;     /* that distance as an angle from the Earth */
    double penumbraRadius; /* shadow radii at the Moon's distance, and the */
    double umbraRadius;    /* Moon's geocentric semi-diameter, all at */
    double moonRadius;     /* greatest eclipse */
} LunarEclipse;

/* The eclipse at the full Moon nearest the universal-time Julian date jd
 * (within half a lunation). Greatest eclipse and the contacts are found by
 * searching the Moon's distance from the centre of the shadow (golden
 * section, then regula falsi, each to 0.05 s and capped at 100 steps) on
 * the library's current Sun and Moon sources. Returns the type (0 when the
 * Moon misses the penumbra: out then holds the full Moon in jdFullMoon and
 * jdMax, zeros elsewhere), or 0 with out untouched for a null out or a jd
 * outside about JD 1356203..3547242 (the phase series' range). */
KVX_API int32_t CalcLunarEclipse(double jd, LunarEclipse *out);
/* The eclipses whose greatest phase falls in the civil year `year` (UT),
 * in time order, at most max written (a year has two to five); returns the
 * count. 0 for a null out, max < 1 or a year outside the phase series'
 * range. */
KVX_API int32_t GetLunarEclipses(int32_t year, LunarEclipse *out, int32_t max);

/* end of: Lunar eclipses */

/* ======================================================================
 * The planets and orbital elements (src/solar/planet/planet.cpp, src/solar/planet/orbit_elements.cpp)
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
 * Earth-Moon barycentre), at dynamical Julian date jde, which becomes the
 * epoch; on the ecliptic and equinox of J2000.0: E. M. Standish's Keplerian
 * elements for 3000 BC to AD 3000 (extrapolated outside); the mean motion is
 * the derivative of the mean anomaly at jde. Returns 1, or 0 (record
 * untouched) for another code or a null record. */
KVX_API int32_t GetPlanetOrbitElm(int32_t code, double jde, OrbitElm *out);
/* Heliocentric position (AU) and, when vel is not null, velocity (AU/day) at
 * dynamical Julian date jde from an element record (the mean anomaly
 * advanced from the epoch with n), on the axes of the elements' ecliptic and
 * equinox. Returns 1, or 0 for a null record or pos, or an eccentricity
 * outside 0..1. */
KVX_API int32_t GetPlanetByElement(const OrbitElm *elm, double jde, double pos[3], double vel[3]);
/* Osculating elements of an elliptic orbit about the Sun from a heliocentric
 * position (AU) and velocity (AU/day) at dynamical Julian date jde (Gaussian
 * constant 0.01720209895, the body's mass neglected). The vectors are
 * equatorial and are rotated to the ecliptic by the obliquity eps (degrees;
 * pass 0 for vectors that are already ecliptic); out->epoch = jde,
 * out->equinox = equinox. Zero inclination gives node 0, a circular orbit
 * the perihelion at the node. Returns 1, or 0 (record untouched) for a null
 * pointer, a zero vector or an orbit that is not elliptic. */
KVX_API int32_t CalPVtoElm(const double pos[3], const double vel[3], double jde, double eps, double equinox, OrbitElm *out);
/* n points (n >= 2) at eccentric anomalies 360 k / (n - 1) along the mean
 * orbit of date of planet `code` (as GetPlanetOrbitElm), the last closing on
 * the first (perihelion); heliocentric, J2000.0 equatorial axes, AU, written
 * as xyz[3k..3k+2]. Returns n, or 0 for a bad code, n < 2 or a null buffer. */
KVX_API int32_t CalcPlanetOrbit3(int32_t code, double jde, int32_t n, double *xyz);

/* Place, distance, phase and brightness of body code (-3 Earth, 0..7
 * Mercury..Pluto, 8 Eris, 9 Ceres, 10 Makemake, 11 Haumea) for t; sunPos is
 * CalcSun's record for the same t (fields 1-2 and 7-10 are read). Fields:
 * 1-7 (topocentric, light time iterated to one second, aberration); 8-10
 * heliocentric vector at the light-time-retarded instant and 11-13 at the
 * instant (J2000.0 equator, AU); 14-16 fields 11-13 on the mean ecliptic of
 * date; 17 heliocentric distance; 18 geometric geocentric distance at the
 * instant; 19 illuminated fraction; 20 bright-limb position angle; 21-34 the
 * physical-ephemeris block, -1 where not computed; 35 apparent diameter
 * (arcseconds); 36 visual magnitude (Saturn with its rings); 37 magnitude in
 * tenths (int32, read with KVX_BODYPOS_INT). Fields 35-37 mean nothing for
 * code -3. Returns 1, or 0 for an unknown code or a null pointer (nothing
 * written). */
KVX_API int32_t CalcPlanet(int32_t code, ATime *t, const BodyPos *sunPos, BodyPos *out);
/* Heliocentric ecliptic longitude and latitude of date (degrees) and
 * distance (AU) of body code at dynamical Julian date jd, geometric (no
 * light time). Returns 1, or 0 for an unknown code or null outputs. */
KVX_API int32_t CalcPlanetLbr(int32_t code, double jd, double lb[2], double *r);
/* Illuminated fraction and position angle of the bright limb (degrees,
 * -180..180, from north through east) from the RA/Dec (fields 1-2) of the
 * Sun's and the body's records and their distances from the observer (AU).
 * Null outputs are skipped; null records do nothing. */
KVX_API void GetPhase(const BodyPos *sunPos, double sunDist, const BodyPos *body, double bodyDist, double *fraction, double *limbAngle);
/* Reduced visual magnitude of body code from its heliocentric vector h and
 * the Earth's e (AU): V0 + 5 log10(r Delta) with the phase laws of Mercury
 * to Jupiter only (no Saturn ring term, no Ceres phase function), the phase
 * angle from cos i = (r^2 + Delta^2 - R) / (2 r Delta) with R = |e| itself,
 * not its square (kept for compatibility); code -3 uses V0 = -2.96. -999.0
 * for an unknown code or null vectors. */
KVX_API double GetPlanetMag(int32_t code, const double h[3], const double e[3]);

/* end of: The planets and orbital elements */

/* ======================================================================
 * Physical ephemeris of the planets             (src/solar/planet/physical.cpp)
 * Rotation elements and radii: IAU Working Group on Cartographic
 * Coordinates and Rotational Elements, Archinal et al. 2018 (Celest. Mech.
 * Dyn. Astr. 130:22). The planet is seen as it was at the light-time-
 * retarded instant; planetocentric latitudes are measured from the body's
 * equator (the ring plane for Saturn), longitudes are planetographic: west
 * longitudes for a direct rotation, east for a retrograde one (Venus,
 * Uranus, Pluto), so the sub-observer longitude always grows with time.
 * Position angles count from the north of the true equator of date
 * through the east.
 * CalcPlanet fills fields 21-34 of a planet's record (codes 0..7; -1.0 in
 * every field that does not apply and for codes -3, 8..11): */
#define KVX_BP_EARTH_LAT    21 /* planetocentric declination of the Earth (observer), DE */
#define KVX_BP_SUN_LAT      22 /* planetocentric declination of the Sun, DS */
#define KVX_BP_AXIS_PA      23 /* position angle of the north pole, P, 0..360 */
#define KVX_BP_CM           24 /* central meridian: longitude of the sub-observer point (System III for the giants), 0..360 */
#define KVX_BP_SUN_LON      25 /* longitude of the sub-solar point, 0..360 */
#define KVX_BP_PHASE_ANGLE  26 /* phase angle Sun-planet-observer, degrees */
#define KVX_BP_DEFECT       27 /* defect of illumination, arcseconds: field 35 x (1 - illuminated fraction) */
#define KVX_BP_POLE_RA      28 /* north pole, J2000.0 right ascension, at the retarded instant */
#define KVX_BP_POLE_DEC     29 /* north pole, J2000.0 declination */
#define KVX_BP_POLAR_DIAM   30 /* apparent polar diameter, arcseconds: field 35 x sqrt(1 - e^2 cos^2 DE) */
#define KVX_BP_MAG_MH       31 /* visual magnitude of Mallama & Hilton 2018 (GetPlanetMagMH); -1 where it has none */
#define KVX_BP_SPECIAL1     32 /* Jupiter: System I central meridian; Saturn: Delta U (GetNpSaturn) */
#define KVX_BP_SPECIAL2     33 /* Jupiter: System II central meridian; Saturn: ring major axis (arcseconds) */
#define KVX_BP_SPECIAL3     34 /* Saturn: ring minor axis (arcseconds) */

/* Constant physical data of a planet, one row per code 0..7 (Mercury ..
 * Pluto) of the table GetPlanetPhysicalTable returns. The rotation elements
 * are the secular parts of the IAU model: pole right ascension
 * poleRa0 + poleRa1 T, declination poleDec0 + poleDec1 T (T Julian centuries
 * of TDB from J2000.0), prime meridian w0 + w1 d (d days from J2000.0);
 * GetPoleXyz adds the periodic terms (Mercury, Mars, Jupiter, Neptune).
 * 96 bytes. */
typedef struct PlanetPhysical {
    int32_t code;
    double eqRadius;       /* equatorial radius, km */
    double polarRadius;    /* polar radius, km */
    double flattening;     /* (eqRadius - polarRadius) / eqRadius */
    double rotationHours;  /* sidereal rotation period, hours; negative: retrograde */
    double albedo;         /* geometric albedo, V band */
    double poleRa0, poleRa1;   /* degrees, degrees per century */
    double poleDec0, poleDec1; /* degrees, degrees per century */
    double w0, w1;             /* degrees, degrees per day */
} PlanetPhysical;

/* The read-only table of the eight rows above, row k for code k; *count
 * (may be null) receives 8. Never null; the table is static. */
KVX_API const PlanetPhysical *GetPlanetPhysicalTable(int32_t *count);
/* North pole of body code (0..7, and -3 the Earth) at dynamical Julian
 * date jde as a unit vector on the J2000.0 equatorial axes (pole[3]), and,
 * when w is not null, the angle of the prime meridian W (degrees, 0..360)
 * counted along the body's equator from its ascending node on the J2000.0
 * equator. Returns 1, or 0 (nothing written) for another code or a null
 * pole. */
KVX_API int32_t GetPoleXyz(int32_t code, double jde, double pole[3], double *w);

/* Jupiter's central meridians in its three systems and the orientation of
 * its globe. 56 bytes. */
typedef struct NpJupiter {
    double cm1;       /* System I (equatorial zone, 877.90003539 deg/day), 0..360 */
    double cm2;       /* System II (temperate zones, 870.27003539 deg/day), 0..360 */
    double cm3;       /* System III (radio, the IAU prime meridian), 0..360 */
    double earthLat;  /* DE, jovicentric declination of the observer */
    double sunLat;    /* DS, jovicentric declination of the Sun */
    double axisAngle; /* P, position angle of the north pole, 0..360 */
    double phaseCorrection; /* degrees to add to cm1..cm3 for the meridian of the illuminated disk (Meeus 43) */
} NpJupiter;
/* Jupiter's physical quantities for t from its CalcPlanet record (code 3,
 * same t). Systems I and II as in Meeus, Astronomical Algorithms, ch. 43,
 * W = 17.710 + 877.90003539 d and 16.838 + 870.27003539 d, d = JDE -
 * 2433282.5 at the retarded instant, counted from the node of Jupiter's
 * equator on the mean equator of date; geometric central meridians (no
 * correction for phase, which phaseCorrection gives). System III is the
 * IAU meridian (field 24). Returns 1, or 0 for a null pointer (out
 * untouched). */
KVX_API int32_t GetNpJupiter(const ATime *t, const BodyPos *jupiter, NpJupiter *out);

/* Saturn's rings as seen by the observer (Meeus, Astronomical Algorithms,
 * ch. 45, with the IAU pole of Saturn as the pole of the ring plane).
 * 56 bytes. */
typedef struct NpSaturn {
    double earthLat;  /* B, saturnicentric latitude of the observer on the ring plane; positive: north face seen */
    double sunLat;    /* B', the same of the Sun; positive: north face lit */
    double deltaU;    /* difference of the saturnicentric longitudes of the Sun and the observer in the ring plane, 0..180 */
    double axisAngle; /* P, position angle of the north pole (of the minor axis of the rings), 0..360 */
    double majorAxis; /* apparent major axis of the outer edge of ring A, arcseconds (375.35 / distance in AU) */
    double minorAxis; /* apparent minor axis, arcseconds: majorAxis x |sin B| */
    double cm3;       /* System III central meridian, 0..360 */
} NpSaturn;
/* Saturn's ring geometry for t from its CalcPlanet record (code 4, same
 * t). Returns 1, or 0 for a null pointer (out untouched). */
KVX_API int32_t GetNpSaturn(const ATime *t, const BodyPos *saturn, NpSaturn *out);

/* Visual magnitude of body code after Mallama & Hilton 2018, "Computing
 * apparent planetary magnitudes for The Astronomical Almanac" (Astronomy
 * and Computing 25, 10), the magnitudes of the Astronomical Almanac since
 * 2020, from its CalcPlanet record for t: r, Delta and the phase angle from
 * fields 8-10 and 1-2, 7; Saturn with its rings from the saturnicentric
 * latitudes of the Sun and the observer; Uranus with its planetographic
 * latitudes; Neptune with its secular brightening. Codes 0..6. Mars without the rotation and season corrections of
 * the paper's tables (within +-0.06 mag). Returns 1 with *mag written; 0
 * (nothing written) for a code without a formula (7..11), for Saturn beyond
 * the formula's limits (phase angle above 6.5 degrees or ring-plane
 * latitude above 27 degrees, not reached from the Earth), for Neptune at
 * phase angles above 1.9 degrees before 2000 (the paper's phase law starts
 * in 2000), or a null pointer. Field 36 of CalcPlanet keeps the older formula. */
KVX_API int32_t GetPlanetMagMH(int32_t code, const ATime *t, const BodyPos *planetPos, double *mag);

/* end of: Physical ephemeris of the planets */

/* ======================================================================
 * Comets and minor planets (src/comet/)
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

/* Gauss vectors of an orbit, for positions x P + y Q on the equatorial axes
 * of the year equinoxYear (e.g. 2000.0): m (row by row) gets P in its first
 * column, Q in its second and zeros in its third. omega (argument of
 * perihelion), node and incl in degrees. The obliquity is GetEp at January
 * 1.5 of that year, fixed at 23.83253 (23.05253) degrees for a year more
 * than 4000 years before (after) 2000. A null m does nothing. */
KVX_API void GetVectorConst(double *m, double omega, double node, double incl, double equinoxYear);
/* The whole orientation matrix from the orbit plane (x toward the
 * perihelion, z along the orbit's pole) to the same equatorial axes:
 * RotateX(-eps) RotateZ(-node) RotateX(-incl) RotateZ(-omega), same
 * obliquity rule. */
KVX_API void GetVectorConst3D(double *m, double omega, double node, double incl, double equinoxYear);

/* Place and magnitude of a comet or minor planet for t, filled like
 * CalcPlanet: fields 1-20 as there (light time iterated to one second, at
 * most 50 passes), 21-35 = -1, 36 visual magnitude (m = H + 5 log delta + K
 * log r for a comet, the H, G law for a minor planet), 37 the magnitude in
 * tenths (int32). sunPos: CalcSun's record for the same t (fields 1-2 and
 * 7-10 are read). Returns 1, or 0 when the orbit cannot be solved (the
 * record is then incomplete) or a pointer is null. */
KVX_API int32_t CalcComet(const CometElements *el, ATime *t, const BodyPos *sunPos, BodyPos *out);
/* n points (n >= 2) along the orbit, heliocentric, J2000.0 equator, AU,
 * written as xyz[3k..3k+2]: an ellipse (e < 1) at eccentric anomalies 360 k
 * / (n - 1), closing on the perihelion; a parabola or hyperbola at true
 * anomalies evenly spaced between -v and +v, v being where the distance
 * reaches rMax (AU), capped short of a hyperbola's asymptote. Returns n, or
 * 0 for a null pointer, n < 2, q <= 0 or rMax <= q on an open orbit. */
KVX_API int32_t GetCometOrbit(const CometElements *el, int32_t n, double rMax, double *xyz);

/* ----------------------------------------------------------------------
 * Comet tails                                (src/comet/comet_tail.cpp)
 *
 * Dust tail: the mechanical theory of M. L. Finson & R. F. Probstein
 * (1968, ApJ 154, 327). A grain leaves the nucleus with the nucleus'
 * velocity (zero relative speed) and then moves on a Kepler orbit about the
 * Sun under the reduced attraction (1 - beta) GM, beta being the ratio of
 * the radiation-pressure force to the Sun's gravity (0 <= beta <= 1; beta =
 * 1 moves on a straight line). A syndyne is the locus of grains of one
 * beta emitted at all times; a synchrone the locus of grains of all betas
 * emitted at one time. Each grain's place is seen from the observer with
 * its own light time, iterated to a millisecond for the grains and the
 * nucleus alike (CalcComet's second would move a grain against the nucleus
 * by up to 0.1"), so the nucleus here may differ from CalcComet's place by
 * that much. Beyond the published theory: radiation pressure that exceeds
 * gravity (beta > 1) is not modelled.
 *
 * Ion tail: a straight plasma tail along the solar-wind velocity seen from
 * the comet, w - v (w radial from the Sun with the solar-wind speed, v the
 * comet's heliocentric velocity), the aberration of L. Biermann's solar
 * wind (J. C. Brandt & R. D. Chapman, Introduction to Comets, 2nd ed.
 * 2004, ch. 7; M. J. S. Belton & J. C. Brandt 1966, ApJS 13, 125):
 * tan(epsilon) = v_perp / (w - v_radial). The default wind speed is
 * 400 km/s. The tail is drawn at the nucleus' light-time instant.
 *
 * Places are astrometric (J2000.0 mean equator and equinox, light time,
 * no aberration), topocentric for t's observer, in degrees, like fields
 * 1-2 of BodyPos.
 * ---------------------------------------------------------------------- */

/* One point of a tail. 64 bytes. */
typedef struct CometTailPoint {
    double ra, dec;     /* astrometric J2000.0 place, degrees */
    double distance;    /* observer to the point, AU */
    double pa;          /* position angle from the nucleus, degrees (0 < pa <= 360, north through east, as AdToPaDist) */
    double separation;  /* angular distance from the nucleus, degrees */
    double beta;        /* dust: radiation pressure / gravity; ion tail: -1 */
    double age;         /* dust: days from emission to observation
                           (dynamical time); ion tail: days the plasma took
                           from the nucleus at the relative wind speed */
    double r;           /* distance from the Sun, AU */
} CometTailPoint;

/* Summary of a tail. 80 bytes. */
typedef struct CometTail {
    double headRa, headDec;  /* astrometric J2000.0 place of the nucleus, degrees */
    double headDistance;     /* observer to nucleus, AU */
    double tipRa, tipDec;    /* the tail's end (dust: the grid point farthest from the nucleus) */
    double pa;               /* position angle of the tip from the nucleus, degrees */
    double lengthDeg;        /* apparent length: nucleus to tip, degrees */
    double lengthAu;         /* true length in space: nucleus to tip, AU */
    double antisolarPa;      /* position angle of the prolonged radius vector (Sun to nucleus) */
    double aberration;       /* ion tail: angle between tail and prolonged radius vector,
                                degrees (0..180; the tail lags on the side away from
                                the comet's motion); dust: -1 */
} CometTail;

/* One syndyne: n >= 2 grains of radiation-pressure ratio beta (0..1)
 * emitted maxAge x k / (n - 1) days before t (k = 0..n-1; point 0 is the
 * nucleus itself), written to out[0..n-1]. sunPos: CalcSun's record for the
 * same t (the Earth's vector, fields 8-10, is read). Returns n, or 0 for a
 * null pointer, n < 2, beta outside 0..1 or an orbit that cannot be solved
 * (out then incomplete). */
KVX_API int32_t GetCometSyndyname(const CometElements *el, const ATime *t, const BodyPos *sunPos, double beta,
                                  double maxAge, int32_t n, CometTailPoint *out);
/* The dust tail on a grid of nBeta betas (0..1) by nAge ages (days before
 * t): grid[i x nAge + j] is beta[i] emitted ages[j] days before t, so row i
 * is a syndyne and column j a synchrone. tail (may be null) gets the
 * nucleus, the grid point of greatest angular distance as the tip, its
 * apparent and true lengths, and the antisolar direction (aberration =
 * -1). Returns nBeta x nAge, or 0 as GetCometSyndyname (a null or empty
 * list included). */
KVX_API int32_t CalcCometDustTail(const CometElements *el, const ATime *t, const BodyPos *sunPos,
                                  const double *betas, int32_t nBeta, const double *ages, int32_t nAge,
                                  CometTailPoint *grid, CometTail *tail);
/* The ion tail: a straight tail of lengthAu (AU, in space) from the
 * nucleus along the solar wind seen from the comet, for a wind speed of
 * windKmS (km/s; 0, negative or not finite: 400 km/s). Fills tail and, when
 * n >= 2 and out is not null, n points evenly spaced from the nucleus
 * (point 0) to the tip (point n-1). Returns 1, or 0 for a null el, t,
 * sunPos or tail, a length that is not positive and finite, or an orbit
 * that cannot be solved. */
KVX_API int32_t CalcCometIonTail(const CometElements *el, const ATime *t, const BodyPos *sunPos, double windKmS,
                                 double lengthAu, int32_t n, CometTailPoint *out, CometTail *tail);

/* end of: Comets and minor planets */

/* ======================================================================
 * Satellites of the planets                  (src/psat/satellite.cpp)
 * Planet numbers as CalcPlanet's codes (-3 Earth, 0 Mercury .. 7 Pluto);
 * satellite code = 100 x the planet's place from the Sun + index: 301 the
 * Moon, 401-402 Phobos, Deimos, 501-505 Io, Europa, Ganymede, Callisto,
 * Amalthea, 601-608 Mimas .. Iapetus, 701-705 Ariel, Umbriel, Titania,
 * Oberon, Miranda, 801-802 Triton, Nereid, 901 Charon. These are also
 * rise/set body codes.
 * Theories (planetocentric, dynamical time): Galileans L1.2 (Lainey et al.
 * 2004); Saturn I-VIII Meeus, Astronomical Algorithms ch. 46 (after
 * Harper & Taylor 1993); Uranus I-V GUST86 (Laskar & Jacobson 1987);
 * Phobos, Deimos, Amalthea, Nereid precessing ellipses from JPL mean
 * elements; Triton and Charon from the IAU rotation models of the
 * synchronous pairs (see README for the accuracies).
 * ====================================================================== */

/* Number of catalogue satellites of a planet: Earth 1, Mercury 0, Venus 0,
 * Mars 2, Jupiter 5, Saturn 8, Uranus 5, Neptune 2, Pluto 1; -1 for any
 * other planet number. */
KVX_API int32_t GetNumSatellites(int32_t planet);
/* Satellite code of (planet, index); the index is not checked. -1 for a
 * planet number outside -3, 0..7. */
KVX_API int32_t GetSatelliteCode(int32_t planet, int32_t index);
/* Splits a satellite code: returns 0 when code / 100 (truncated) is not
 * 1..9, else writes the planet number (3 gives -3, the Earth) and
 * index = code - 100 x hundreds (not checked) and returns 1. Null outputs
 * are skipped. */
KVX_API int32_t SplitSatelliteCode(int32_t code, int32_t *planet, int32_t *index);
/* Catalogue name ("Io", ...), or null when the planet is outside -3..7 or
 * has no entry of that index. The string is static. */
KVX_API const char *GetSatelliteName(int32_t planet, int32_t index);
/* 1 when a position theory exists: Mars 1-2, Jupiter 1-5, Saturn 1-8,
 * Uranus 1-5, Neptune 1-2, Pluto 1; else 0 (the Moon, 301, has its own
 * routines). */
KVX_API int32_t SatelliteExist(int32_t planet, int32_t index);
/* Osculating elements of the satellite's planetocentric orbit at dynamical
 * Julian date jde, for the gravitational parameter of the planet plus the
 * satellite: a in AU, n in degrees per day, angles in degrees, epoch = jde.
 * option selects the reference plane: 0 the J2000.0 equator (equinox
 * 2000.0), 1 the ecliptic of J2000.0 (equinox 2000.0), 2 the mean ecliptic
 * and equinox of date (equinox = the year of jde); any other value acts as
 * 0. Code 301 gives the Moon's geocentric elements. Returns 1, or 0 for a
 * code without a theory (and not 301), a failed theory, an orbit that is
 * not elliptic or a null out. Read the elements with the planetocentric
 * GM, not with GetPlanetByElement's Gaussian constant. */
KVX_API int32_t GetSatelliteOrbit(double jde, int32_t planet, int32_t index, int32_t option, OrbitElm *out);
/* Place of a satellite for t. planetPos must be CalcPlanet's record of the
 * parent planet for the same t. Fields: 1-7 as every body (7 in AU), light
 * time iterated to 0.1 s; 8-10 heliocentric vector at the light-time
 * instant; 11-13 planetocentric vector at that instant; 14-16 heliocentric
 * vector at the instant itself and 17-19 the same on the mean ecliptic of
 * date; 20 its length; 21 mass ratio to the planet; 22-24 radii a, b, c
 * (km, -1 where the body is a sphere); 25 sidereal period (days, negative
 * retrograde, -1 none); 26 mean opposition magnitude; 27 that magnitude in
 * tenths, floor(m x 10 + 0.5), int32 (KVX_BODYPOS_INT). Fields 28-37 are
 * left as they were. All vectors AU, J2000.0 equator. Returns 1, or 0 when
 * no theory exists, the theory fails (non-finite date) or a pointer is
 * null (nothing written then). */
KVX_API int32_t CalcSatellite(const ATime *t, int32_t planet, int32_t index, const BodyPos *planetPos, BodyPos *out);

/* end of: Satellites of the planets */

/* ======================================================================
 * Phenomena of Jupiter's satellites             (src/psat/jovian.cpp)
 * ====================================================================== */

/* Result of JoviSatPhenomena. 48 bytes. */
typedef struct JoviSatResult {
    int32_t transit;        /* 1: in front of Jupiter's disc, seen by the observer */
    int32_t occultation;    /* 1: behind the disc, seen by the observer */
    int32_t shadowTransit;  /* 1: its shadow falls on the disc */
    int32_t eclipse;        /* 1: inside Jupiter's shadow (seen from the Sun) */
    /* Where the shadow falls, valid only when shadowTransit is 1: the point
     * of Jupiter's spheroid hit by the line from the Sun through the
     * satellite, from Jupiter's centre, on the J2000.0 equatorial axes, in
     * units of Jupiter's equatorial radius (71492 km). The spheroid has the
     * polar radius a / 1.071374 along the pole of the ecliptic of date. */
    double shadowPoint[3];
} JoviSatResult;

/* Phenomena of a Jupiter satellite for t from Jupiter's record (CalcPlanet,
 * code 3) and the satellite's (CalcSatellite) for the same t. The disc test
 * compares ecliptic latitude and longitude differences with Jupiter's
 * radius angle, flattened by 1.071374 towards the ecliptic poles; the
 * longitude difference is not multiplied by cos(latitude) (the disc is a
 * little wider in longitude than the planet), nor reduced to +-180 (no
 * flag is set while the two longitudes straddle 0/360). Clears the four flags, then
 * sets them; a null t or record leaves them cleared; a null out does
 * nothing. */
KVX_API void JoviSatPhenomena(const ATime *t, const BodyPos *jupiter, const BodyPos *satellite, JoviSatResult *out);

/* end of: Phenomena of Jupiter's satellites */

/* ======================================================================
 * Rise, transit and set                 (src/riseset/riseset.cpp)
 * ====================================================================== */

/* Body codes of the rise/set functions: -10 a fixed star (object: an Ad with
 * the J2000.0 right ascension and declination), -2 the Sun, -1 the Moon,
 * 0..11 the planets and dwarf planets of CalcPlanet, 100..1999 satellites of
 * planets (GetSatelliteCode), 2000 and above a comet (object: its
 * CometElements). Any other code is a point at right ascension 0,
 * declination 0. Event: 1 rise, 2 transit (upper meridian passage), 3 set. */
#define KVX_RS_STAR    (-10)
#define KVX_RS_RISE    1
#define KVX_RS_TRANSIT 2
#define KVX_RS_SET     3

/* Prepares the one library-wide day context for the local civil date of
 * date (year, month, day and tz; the clock fields are ignored) and the
 * observer (null: the centre of the Earth, latitude and longitude 0): the
 * day runs from local midnight to the next, [jd0 - tz/24, jd0 - tz/24 + 1)
 * in UT, jd0 being CalcJd(year, month, day). Must run before GetRiseSet,
 * GetRiseSetEx and CheckCircumPolar; valid until the next call. Not thread
 * safe: the context is shared, unguarded state. A null date (or a
 * non-finite tz) leaves no day prepared, and the other functions return 0. */
KVX_API void InitRiseSet(const ADate *date, const Observer *observer);
/* The universal-time Julian date of the event of body on the prepared day,
 * written to result: returns 1, or 0 when there is none that day (always
 * above or below the horizon, the altitude is not reached, an observer at a
 * pole, a place that cannot be computed). Pass the tz and observer given to
 * InitRiseSet. altitude 0: the standard horizon, the centre at 35'08" of
 * refraction plus the dip of the horizon for the observer's height below
 * the geometric horizon, and for the Sun its upper limb; the correction is
 * a first-order shift of the hour angle, so at high latitudes, where the
 * body meets the horizon at a grazing angle, the time can be minutes off.
 * Any other altitude (degrees) is reached by the geometric centre, with no
 * correction. Places: the Sun linear between the two local midnights, the
 * Moon topocentric, planets and comets geocentric, stars mean of date
 * (precession only). A transit that the search rejects (e.g. of a
 * circumpolar body) comes from an iteration on the right ascension alone;
 * its last estimate is written even when it returns 0. On 0 the result is
 * otherwise left untouched. */
KVX_API int32_t GetRiseSet(double tz, int32_t body, const void *object, int32_t event, const Observer *observer, double altitude, double *result);
/* Up to three events of the kind on the prepared day (the Moon can rise
 * twice in one civil day), ascending; returns the count. maxCount < 1
 * gives 0, maxCount 1 at most GetRiseSet's result; with maxCount 2 or more
 * up to three entries are written, so results must hold three. */
KVX_API int32_t GetRiseSetEx(double tz, int32_t body, const void *object, int32_t event, const Observer *observer, double altitude, double *results, int32_t maxCount);
/* Whether body stays above (state 1), below (-1) the standard horizon on
 * the prepared day or rises and sets (0), from its declination at local
 * noon: returns 1, or 0 when the place cannot be computed. Only tz is read
 * from date. For southern observers the test practically never decides (1
 * or -1 are reported only for impossible declinations): the rise/set search
 * answers for them. */
KVX_API int32_t CheckCircumPolar(int32_t body, const void *object, const ADate *date, const Observer *observer, int32_t *state);
/* Sunrise and sunset (upper limb on the standard horizon) of the local
 * date of date: InitRiseSet, then GetRiseSet for the Sun. Return 1 with
 * the UT Julian date, or 0. */
KVX_API int32_t GetSunRise(const ADate *date, const Observer *observer, double *result);
KVX_API int32_t GetSunSet(const ADate *date, const Observer *observer, double *result);
/* As GetSunRise/GetSunSet with the Sun's geometric centre at the altitude
 * of the whole number of degrees given (-6, -12, -18: civil, nautical,
 * astronomical twilight); 0 degrees is the standard horizon. */
KVX_API int32_t GetSunRiseDeg(const ADate *date, const Observer *observer, double *result, int32_t degrees);
KVX_API int32_t GetSunSetDeg(const ADate *date, const Observer *observer, double *result, int32_t degrees);
/* Whether b lies within radius degrees of a: 0 at once (outputs untouched)
 * when the difference of the first members or of the second members,
 * moved into -180..180 and clamped to +-90 (degmal2), exceeds 1.1 radius
 * (a box without a cos(latitude) factor); else the position angle and
 * distance of AdToPaDist(a, b) are written (either may be null) and 1 is
 * returned when the distance is at most radius. */
KVX_API int32_t IsTransit(const Ad *a, const Ad *b, double radius, double *positionAngle, double *distance);

/* end of: Rise, transit and set */

/* ======================================================================
 * Solar terms and seasonal days              (src/calendar/solar_term.cpp)
 *
 * Process-wide caches: Sekki_CheckDay and Sekki_GetTableData share one
 * year table; Calender_NewToOld, Calender_OldToNew and Calender_GetTable
 * share one lunisolar month table; Holiday_CheckDay and
 * Holiday_GetHolidayData share one holiday list. None is guarded: calls to
 * these seven functions must be serialised by the caller (one thread at a
 * time). GetSunLongJD keeps no state and is reentrant.
 * ====================================================================== */

/* Universal-time Julian date at which the Sun's apparent longitude (true
 * ecliptic and equinox of date, with aberration) reaches `longitude`
 * degrees near its usual date in `year`: inverse four-point interpolation
 * over 0h UT samples two days before to one day after that date. The
 * longitude must be one of the codes of the year table: the 24 terms
 * (multiples of 15) and 27, 80, 100, 117, 207, 297; the counted days'
 * codes -1..-5 are also accepted (as longitudes 359..355 near those days'
 * dates, of no use); any other value returns 0.0. The search starts from
 * the table's usual date: for 45 degrees that is 1 May, four to five days
 * before the term, and the instant is extrapolated (up to about 20 s less
 * accurate than the other terms). Uses the Sun's current source (JPL DE
 * file when it covers the date, else the built-in theory). */
KVX_API double GetSunLongJD(int32_t year, int32_t longitude);

/* The year table: 35 entries of a civil year in a zone (zoneHours east of
 * Greenwich), sorted by date:
 *   identifiers 1-24: the solar terms from 285 degrees (1) to 270 (24),
 *     code = the longitude, hours = local clock time of the instant;
 *   25-28: doyo entry days, the Sun at 297, 27, 117, 207 degrees;
 *   29, 30: the Sun at 80 (nyubai) and 100 degrees (hangesho);
 *   31: setsubun (the day before the 315-degree term), code -1;
 *   32, 33: first days of the spring and autumn equinoctial weeks (three
 *     days before the 0- and 180-degree terms), codes -2 and -5;
 *   34, 35: the 88th and 210th days counted from the 315-degree term,
 *     codes -3 and -4; the counted days have hours 0.0.
 * An entry that cannot be placed in the year gets month 13 (sorted last,
 * never matched). Entries on the same day keep template order.
 *
 * Sekki_CheckDay: identifier of the first entry on (month, day), writing
 * its hours and code (either pointer may be null); 0 when none, outputs
 * untouched. Builds the table when `year` differs from the cached one. The
 * cache is keyed by the year only: a second zone for the same year is
 * answered from the table of the first zone. */
KVX_API int32_t Sekki_CheckDay(int32_t year, int32_t month, int32_t day, double zoneHours, double *hours, int32_t *code);
/* Entry `index` (0..34) of the table the last Sekki_CheckDay built: writes
 * month, day, hours and code (null pointers skipped) and returns the
 * identifier; 0 for an index outside 0..34. Never builds: before the first
 * Sekki_CheckDay every entry is zero. */
KVX_API int32_t Sekki_GetTableData(int32_t index, int32_t *month, int32_t *day, double *hours, int32_t *code);

/* end of: Solar terms and seasonal days */

/* ======================================================================
 * Lunisolar calendar                          (src/calendar/lunisolar.cpp)
 *
 * The traditional Japanese calendar: a month starts on the local day of a
 * new moon; the month holding the winter solstice is 11; a thirteenth
 * lunation between two like-numbered months is a leap month. An old-style
 * date uses the ADate record with year, month, day and tz: month 1..12, or
 * -m for the leap month that follows month m. Hours, minutes and seconds
 * are neither read nor written. Shared cache: see "Solar terms" above.
 *
 * The table of one key year holds the lunations starting from November of
 * the year before to February of the year after, in the zone of the
 * request that built it. A civil date in December uses the next year's
 * table. The cache is keyed by the key year only: a request in another zone
 * for the same key year is answered from the first zone's table. Key years
 * outside -100000..100000 give an empty table. (The name "Calender" is the
 * interface's own spelling.)
 * ====================================================================== */

/* Old-style date of the civil day (year, month, day, tz of civil): writes
 * old's year, month, day and tz; old may be civil. An old day above 30
 * is reduced by 30. January and February dates in old month 11 or 12 get
 * the previous old year. Returns the old month (absolute value), except
 * that it returns the old year when the year was reduced like that. When
 * the date lies at or after the table's last lunation (or before its
 * first), old's month and day are left as they were. 0 for a null pointer. */
KVX_API int32_t Calender_NewToOld(const ADate *civil, ADate *old);
/* Civil date (year, month, day, tz) of an old-style date: the first
 * lunation numbered old->month (sign included) that starts after the 1st
 * of civil month old->month of old->year, plus day - 1 days. Returns the
 * civil day; when no such lunation is in the table (a leap month the year
 * lacks) civil->month is set to 0 and the result means nothing. civil may
 * be old. 0 for a null pointer. */
KVX_API int32_t Calender_OldToNew(const ADate *old, ADate *civil);
/* Entry `index` of the month table the last conversion built: start (the
 * Julian date of the local midnight beginning the new moon's day, in the
 * zone of the build) and month number; null pointers are skipped. Returns
 * index, or -1 (nothing written) for an index outside the table. */
KVX_API int32_t Calender_GetTable(int32_t index, double *start, int32_t *month);

/* end of: Lunisolar calendar */

/* ======================================================================
 * Public holidays of Japan                      (src/calendar/holiday.cpp)
 *
 * Holiday kinds (the library stores codes, no names):
 *   0 not a holiday        1 substitute holiday     2 day between holidays
 *   3 New Year's Day       4 Coming of Age Day      5 National Foundation Day
 *   6 Vernal Equinox Day   7 Autumnal Equinox Day   8 Constitution Memorial Day
 *   9 Children's Day      10 Respect for the Aged Day
 *  11 Health and Sports Day (to 2019)               12 Culture Day
 *  13 Labour Thanksgiving Day
 *  14 the Emperor's Birthday (29 Apr to 1988, 23 Dec 1989-2018, 23 Feb from 2020)
 *  15 Greenery Day (29 Apr 1989-2006, 4 May from 2007)   16 Marine Day
 *  17 Showa Day           22 Mountain Day          24 Sports Day (from 2020)
 *  one-time holidays: 18 (1989-02-24), 19 (1959-04-10), 20 (1993-06-09),
 *  21 (1990-11-12), 23 (2019-05-01), 25 (2019-10-22).
 * The equinox days come from a fixed formula, not from the Sun: 20 March
 * and 23 September after 2150. Years before 1948 have no holidays. Shared
 * cache: see "Solar terms" above.
 * ====================================================================== */

/* Kind of the holiday on the civil day, 0 if none. Builds the year's list
 * when `year` differs from the cached one. */
KVX_API int32_t Holiday_CheckDay(int32_t year, int32_t month, int32_t day);
/* Entry `index` of the list the last Holiday_CheckDay built: writes month,
 * day and weekday (0 = Sunday; null pointers skipped) and returns the kind;
 * 0 for an index outside the list. Never builds. Entries are in rule order,
 * not calendar order: substitute and between days follow the holiday that
 * made them, and from 2020 the 23 February birthday comes last. */
KVX_API int32_t Holiday_GetHolidayData(int32_t index, int32_t *month, int32_t *day, int32_t *weekday);

/* end of: Public holidays of Japan */

/* ======================================================================
 * Meteor showers (src/calendar/meteor.cpp)
 * ====================================================================== */

/* One meteor shower of the catalogue read from "meteor.txt" at load time.
 * The library gives the numeric fields no meaning; the sample file of the
 * distribution documents its columns (tests/data/meteor.txt). 136 bytes. */
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

/* Number of records; -1 when no file with a valid line was ever loaded. The
 * count outlives the records freed at unload. */
KVX_API int32_t GetMeteorInfoCount(void);
/* Record `index` (owned by the library, valid until unload), or null when
 * index >= the count or no catalogue is loaded. A negative index is not
 * checked: the pointer then lies before the catalogue. */
KVX_API const MeteorInfo *GetMeteorInfo(int32_t index);
/* 1 when a meteor catalogue is loaded, else 0. */
KVX_API int32_t IsValidMeteorFile(void);

/* end of: Meteor showers */

/* ======================================================================
 * The almanac of planetary events (src/calendar/planet_events.cpp)
 *
 * Found on the library's own geocentric apparent places (CalcSun,
 * CalcPlanet, CalcMoon at the Earth's centre, so from the JPL DE file when
 * it covers the date, else the built-in theories): daily samples bracket
 * each event, regula falsi (roots) or golden-section search (extrema)
 * refines it to a second, every search capped. An extremum (elongation,
 * station, perihelion, perigee) is flat: an error e in the quantity's rate
 * moves its instant by e over the rate's change per day, so those instants
 * follow the position source far less closely than conjunctions do.
 * Definitions as in the Astronomical Almanac's phenomena and Meeus,
 * Astronomical Algorithms ch. 36, 48-50. The year search evaluates about
 * 3,000 places a year; no state is kept between calls.
 * ====================================================================== */

/* Event kinds (PlanetEvent.kind) and what `value` holds: */
#define KVX_EVENT_CONJUNCTION 1           /* with the Sun in apparent ecliptic longitude (Mercury, Venus:
                                             superior); value: distance from the Sun, degrees */
#define KVX_EVENT_INFERIOR_CONJUNCTION 2  /* Mercury, Venus between the Earth and the Sun; the same value */
#define KVX_EVENT_OPPOSITION 3            /* longitude 180 degrees from the Sun's; value: elongation */
#define KVX_EVENT_ELONGATION_EAST 4       /* greatest elongation of Mercury or Venus, evening sky; */
#define KVX_EVENT_ELONGATION_WEST 5       /*   morning sky; value: elongation, degrees */
#define KVX_EVENT_STATION_RETROGRADE 6    /* apparent longitude stops increasing; value: the longitude */
#define KVX_EVENT_STATION_DIRECT 7        /* apparent longitude stops decreasing; value: the longitude */
#define KVX_EVENT_PERIHELION 8            /* least heliocentric distance; value: the distance, AU */
#define KVX_EVENT_APHELION 9              /* greatest heliocentric distance; value: AU */
#define KVX_EVENT_CONJUNCTION_RA 10       /* two planets at the same apparent right ascension; value:
                                             declination of body minus that of other, degrees */
#define KVX_EVENT_MOON_CONJUNCTION 11     /* the Moon (body) and a planet (other) at the same right
                                             ascension; value: Moon's declination minus the planet's */
#define KVX_EVENT_OCCULTATION 12          /* the Moon hides the planet somewhere on the Earth: least
                                             geocentric distance below the Moon's horizontal parallax plus
                                             both semi-diameters; instant of that least distance, value:
                                             the distance, degrees */
#define KVX_EVENT_PERIGEE 13              /* the Moon's least geocentric distance; value: km */
#define KVX_EVENT_APOGEE 14               /* greatest; value: km */
#define KVX_EVENT_ASCENDING_NODE 15       /* the Moon crosses the ecliptic northward; value: its longitude */
#define KVX_EVENT_DESCENDING_NODE 16      /* southward; value: its longitude */
#define KVX_EVENT_KIND_COUNT 17

/* One event. Body codes as CalcPlanet's (0..7 Mercury..Pluto), -1 the
 * Moon, -2 the Sun, -100 none. 32 bytes. */
typedef struct PlanetEvent {
    int32_t kind;     /* KVX_EVENT_* */
    int32_t body;     /* the body the event belongs to */
    int32_t other;    /* the second body (-2 for the Sun, -100 none) */
    double jd;        /* universal-time Julian date */
    double value;     /* see the kinds */
    double magnitude; /* visual magnitude of the planet taking part (of
                         `body` for two planets), 0.0 for the Moon alone */
} PlanetEvent;

/* The events of civil year `year` (UT) in which body (-1 the Moon, 0..7
 * Mercury..Pluto) takes part: its own phenomena, its conjunctions in right
 * ascension with the other planets and with the Moon, the Moon's
 * occultations of it (for the Moon: perigees, apogees, nodes, and its
 * conjunctions with and occultations of every planet), in time order; at
 * most max are written and their number is returned. 0 for a null out,
 * max < 1 or another body code. About 0.1 s for a year on the theories. */
KVX_API int32_t GetPlanetEvents(int32_t year, int32_t body, PlanetEvent *out, int32_t max);
/* Every body's events between the universal-time dates jdStart
 * (included) and jdEnd (excluded), at most 400 days apart, of the kinds
 * whose bits (1u << kind) are set in kinds (0: every kind), in time order.
 * Returns the number of events found, which may exceed max: the first max
 * (max >= 0) are written, so a call with max = 0 (out may then be null)
 * sizes the buffer. 0 for a null out with max > 0, a span that is empty,
 * not finite or longer than 400 days. */
KVX_API int32_t GetPlanetEvents2(double jdStart, double jdEnd, uint32_t kinds, PlanetEvent *out, int32_t max);

/* end of: The almanac of planetary events */

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
