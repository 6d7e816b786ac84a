/* Heliocentric geometric positions of one planet from Swiss Ephemeris
 * (libswe, swe-basic-data), for the fitting tool fit_planet_series.py (the
 * tests' reference rows come from tests/reference/planet_series_swe.c).
 *
 *   cc -O2 swe_helio.c -lswe -lm -o swe_helio
 *   swe_helio SE_BODY < dates > rows
 *
 * Reads dynamical Julian dates, one a line; writes for each
 *   jde x y z lon lat r eph
 * x y z: J2000.0 mean equator and equinox (AU); lon lat r: mean ecliptic
 * and equinox of date (degrees, AU; Swiss Ephemeris's own precession, no
 * nutation); eph: 1 when the answer came from the Swiss Ephemeris files
 * (JPL DE431, 1800-2400 in swe-basic-data), 2 when from Moshier's analytic
 * ephemeris (the library's fallback outside the files).
 */
#include <stdio.h>
#include <stdlib.h>
#include <swephexp.h>

int main(int argc, char **argv) {
    if (argc < 2) {
        fprintf(stderr, "usage: swe_helio SE_BODY < dates\n");
        return 2;
    }
    const int body = atoi(argv[1]);
    char err[256];
    swe_set_ephe_path("/usr/share/libswe/ephe");
    const int common = SEFLG_SWIEPH | SEFLG_HELCTR | SEFLG_TRUEPOS | SEFLG_NOABERR | SEFLG_NOGDEFL;
    double jde;
    while (scanf("%lf", &jde) == 1) {
        double v[6], e[6];
        const int rc1 = swe_calc(jde, body, common | SEFLG_J2000 | SEFLG_EQUATORIAL | SEFLG_XYZ, v, err);
        const int rc2 = swe_calc(jde, body, common | SEFLG_NONUT, e, err);
        if (rc1 < 0 || rc2 < 0) {
            fprintf(stderr, "%.5f: %s\n", jde, err);
            return 1;
        }
        const int eph = (rc1 & SEFLG_SWIEPH) ? 1 : 2;
        printf("%.6f %.12f %.12f %.12f %.10f %.10f %.12f %d\n", jde, v[0], v[1], v[2], e[0], e[1], e[2], eph);
    }
    swe_close();
    return 0;
}
