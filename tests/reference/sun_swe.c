/* Reference positions of the Sun from Swiss Ephemeris (libswe with the
 * swe-basic-data files, Moshier's analytic ephemeris outside their range).
 *
 *   cc -O2 sun_swe.c -lswe -lm -o /tmp/sun_swe && /tmp/sun_swe data
 *
 * Writes, as functions of the dynamical Julian date (TT):
 *   sun_swe_1900_2100.txt  jde, geometric longitude, latitude (deg) and
 *       distance (AU), mean ecliptic and equinox of date; geometric
 *       geocentric J2000 equatorial x, y, z (AU); apparent right ascension
 *       and declination of date (deg).
 *   sun_swe_short.txt      jde, geometric longitude of the mean equinox of
 *       date (deg), distance (AU), -2000..+2999 (Moshier).
 */
#include <stdio.h>
#include <stdlib.h>
#include <swephexp.h>

static int calc(double jde, int flags, double out[6]) {
    char err[256];
    int rc = swe_calc(jde, SE_SUN, flags, out, err);
    if (rc < 0) {
        fprintf(stderr, "%.1f: %s\n", jde, err);
        exit(1);
    }
    if ((flags & SEFLG_SWIEPH) && !(rc & SEFLG_SWIEPH)) {
        fprintf(stderr, "%.1f: ephemeris file not found, fell back to %s\n", jde, err);
        exit(1);
    }
    return rc;
}

int main(int argc, char **argv) {
    const char *dir = argc > 1 ? argv[1] : ".";
    char path[512], ver[256];
    swe_set_ephe_path("/usr/share/libswe/ephe");
    const int geo = SEFLG_SWIEPH | SEFLG_TRUEPOS | SEFLG_NOABERR | SEFLG_NOGDEFL | SEFLG_NONUT;

    snprintf(path, sizeof path, "%s/sun_swe_1900_2100.txt", dir);
    FILE *f = fopen(path, "w");
    fprintf(f, "# Swiss Ephemeris %s, swe_calc(SE_SUN), files sepl_18.se1\n", swe_version(ver));
    fprintf(f, "# jde lon lat r (geometric, mean ecliptic of date) x y z (geometric, J2000 equator, AU) ra dec (apparent, true equator of date)\n");
    /* 1900 Jan 1 .. 2100 Jan 1, a prime step so that every season is sampled */
    for (double jde = 2415020.5; jde <= 2488070.5; jde += 36.53) {
        double e[6], x[6], a[6];
        calc(jde, geo, e);
        calc(jde, SEFLG_SWIEPH | SEFLG_TRUEPOS | SEFLG_NOABERR | SEFLG_NOGDEFL | SEFLG_J2000 | SEFLG_EQUATORIAL |
                      SEFLG_XYZ, x);
        calc(jde, SEFLG_SWIEPH | SEFLG_EQUATORIAL, a);
        fprintf(f, "%.5f %.10f %.10f %.12f %.12f %.12f %.12f %.10f %.10f\n", jde, e[0], e[1], e[2], x[0], x[1], x[2],
                a[0], a[1]);
    }
    fclose(f);

    snprintf(path, sizeof path, "%s/sun_swe_short.txt", dir);
    f = fopen(path, "w");
    fprintf(f, "# Swiss Ephemeris %s, Moshier's ephemeris, swe_calc(SE_SUN)\n", swe_version(ver));
    fprintf(f, "# jde lon r (geometric, mean ecliptic and equinox of date)\n");
    /* -2000 Jan 1 (Julian) .. +2999, every 1000.37 days */
    for (double jde = 990557.5; jde < 2818000.5; jde += 1000.37) {
        double e[6];
        calc(jde, SEFLG_MOSEPH | SEFLG_TRUEPOS | SEFLG_NOABERR | SEFLG_NOGDEFL | SEFLG_NONUT, e);
        fprintf(f, "%.5f %.8f %.10f\n", jde, e[0], e[2]);
    }
    fclose(f);
    swe_close();
    return 0;
}
