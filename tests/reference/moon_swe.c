/* Reference values for the Moon from the Swiss Ephemeris (libswe, with the
 * semo/sepl files of swe-basic-data, i.e. JPL-based positions).
 *
 *   moon_swe lbr      geometric geocentric Moon, mean ecliptic and equinox
 *                     of date, 1900-2100: jd_tt lon_deg lat_deg dist_km, then
 *                     the longitude on the true equinox of date (nutation
 *                     in longitude included)
 *   moon_swe apparent geocentric Moon with light time and without light
 *                     deflection: jd_tt deltat_s ra_app dec_app dist_km
 *                     ra_j2000 dec_j2000 (apparent: true equator and
 *                     equinox of date, aberration and nutation included;
 *                     J2000: ICRS axes, astrometric), every 29.12 days
 *                     1900-2100, or with "de DIR" every 1.37 days over the
 *                     test DE405 excerpt DIR/de405_2000.bin (2000-01-01
 *                     to 2001-12-20), read by the Swiss Ephemeris itself
 *   moon_swe phases   instants of the principal phases (apparent geocentric
 *                     elongation 0, 90, 180, 270 degrees in ecliptic
 *                     longitude of date): k jd_tt deltat_s, 1900-2100
 *
 * Built and run by gen_moon_reference.sh; the output is committed under
 * data/ so that the tests need no Swiss Ephemeris. */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <swephexp.h>

static void Moon(double jd, int32 flags, double out[6]) {
    char err[AS_MAXCH];
    const int32 ret = swe_calc(jd, SE_MOON, flags, out, err);
    /* A negative result is an error; a missing ephemeris flag means the
     * ephemeris files were not found and a fallback was used. */
    if (ret < 0 || (ret & flags & (SEFLG_JPLEPH | SEFLG_SWIEPH | SEFLG_MOSEPH)) == 0) {
        fprintf(stderr, "swe_calc: flags %d: %s\n", (int)flags, err);
        exit(1);
    }
}

static void Sun(double jd, int32 flags, double out[6]) {
    char err[AS_MAXCH];
    const int32 ret = swe_calc(jd, SE_SUN, flags, out, err);
    /* A negative result is an error; a missing ephemeris flag means the
     * ephemeris files were not found and a fallback was used. */
    if (ret < 0 || (ret & flags & (SEFLG_JPLEPH | SEFLG_SWIEPH | SEFLG_MOSEPH)) == 0) {
        fprintf(stderr, "swe_calc: flags %d: %s\n", (int)flags, err);
        exit(1);
    }
}

static void Lbr(void) {
    const int32 flags = SEFLG_SWIEPH | SEFLG_TRUEPOS | SEFLG_NOABERR | SEFLG_NOGDEFL | SEFLG_NONUT;
    const int32 trueFlags = SEFLG_SWIEPH | SEFLG_TRUEPOS | SEFLG_NOABERR | SEFLG_NOGDEFL;
    printf("# jd_tt lon_deg lat_deg dist_km lon_true_deg: geometric geocentric Moon, mean ecliptic and equinox of date;"
           " longitude on the true equinox of date\n");
    /* 1900-01-01 to 2100-01-01, a step that is no simple fraction of a
     * lunation so that all phases of every periodic term are sampled. */
    for (double jd = 2415020.5; jd < 2488069.5; jd += 29.123456) {
        double x[6], y[6];
        Moon(jd, flags, x);
        Moon(jd, trueFlags, y);
        printf("%.6f %.9f %.9f %.4f %.9f\n", jd, x[0], x[1], x[2] * 149597870.7, y[0]);
    }
}

static void Apparent(const char *deDir) {
    const int de = deDir != NULL;
    const int32 eph = de ? SEFLG_JPLEPH : SEFLG_SWIEPH;
    if (de) {
        swe_set_ephe_path(deDir);
        swe_set_jpl_file("de405_2000.bin");
    }
    const int32 app = eph | SEFLG_NOGDEFL | SEFLG_EQUATORIAL;
    const int32 astrometric = eph | SEFLG_NOGDEFL | SEFLG_NOABERR | SEFLG_EQUATORIAL | SEFLG_J2000 | SEFLG_ICRS;
    printf("# jd_tt deltat_s ra_app dec_app dist_km ra_j2000 dec_j2000: geocentric Moon, light time, no deflection\n");
    const double first = de ? 2451544.5 : 2415020.5, last = de ? 2452263.5 : 2488069.5;
    const double step = de ? 1.37 : 29.123456;
    for (double jd = first; jd < last; jd += step) {
        double a[6], j[6];
        Moon(jd, app, a);
        Moon(jd, astrometric, j);
        printf("%.6f %.4f %.9f %.9f %.4f %.9f %.9f\n", jd, swe_deltat(jd - swe_deltat(jd)) * 86400.0, a[0], a[1],
               a[2] * 149597870.7, j[0], j[1]);
    }
}

/* Apparent geocentric elongation of the Moon from the Sun in ecliptic
 * longitude of date, -180..180 after subtracting the target. */
static int32 gElongationFlags = SEFLG_SWIEPH;

static double Elongation(double jd, double target) {
    const int32 flags = gElongationFlags;
    double m[6], s[6];
    Moon(jd, flags, m);
    Sun(jd, flags, s);
    double e = fmod(m[0] - s[0] - target, 360.0);
    if (e < -180.0) e += 360.0;
    if (e > 180.0) e -= 360.0;
    return e;
}

static double PhaseInstant(double k) {
    const double synodic = 29.530588853;
    const double target = fmod(k - floor(k), 1.0) * 360.0;
    double jd = 2451550.09765 + synodic * k;
    /* Newton on the elongation, rate from a finite difference. */
    for (int i = 0; i < 30; ++i) {
        const double e = Elongation(jd, target);
        const double rate = (Elongation(jd + 0.01, target) - Elongation(jd - 0.01, target)) / 0.02;
        const double step = e / rate;
        jd -= step;
        if (fabs(step) < 1e-9) break;
    }
    return jd;
}

static void Ancient(void) {
    gElongationFlags = SEFLG_MOSEPH;
    printf("# k jd_tt: principal phases from the Moshier ephemeris, k as in 'phases'\n");
    for (double k = -39000.0; k < -38975.0; k += 0.25) printf("%.2f %.7f\n", k, PhaseInstant(k));
}

static void Phases(void) {
    printf("# k jd_tt deltat_s: principal phases, k = lunation + quarter (0 = new Moon of 2000 January 6)\n");
    for (double k = -1236.0; k < 1237.0; k += 0.25) {
        const double jd = PhaseInstant(k);
        if (jd < 2415020.5 || jd >= 2488069.5) continue;
        printf("%.2f %.7f %.2f\n", k, jd, swe_deltat(jd) * 86400.0);
    }
}

int main(int argc, char **argv) {
    swe_set_ephe_path("/usr/share/libswe/ephe");
    if (argc > 1 && strcmp(argv[1], "lbr") == 0)
        Lbr();
    else if (argc > 1 && strcmp(argv[1], "apparent") == 0)
        Apparent(argc > 3 && strcmp(argv[2], "de") == 0 ? argv[3] : NULL);
    else if (argc > 1 && strcmp(argv[1], "ancient") == 0)
        Ancient();
    else if (argc > 1 && strcmp(argv[1], "phases") == 0)
        Phases();
    else {
        fprintf(stderr, "usage: moon_swe lbr|apparent [de DIR]|phases|ancient\n");
        return 2;
    }
    swe_close();
    return 0;
}
