/* Heliocentric places of Mercury, Venus and Jupiter from Swiss Ephemeris
 * (libswe with the swe-basic-data files: JPL DE431 1800-2400, Moshier's
 * analytic ephemeris outside), AD 1000-3000, for the tests of the built-in
 * analytic series.
 *
 *   cc -O2 planet_series_swe.c -lswe -lm -o /tmp/planet_series_swe && /tmp/planet_series_swe data
 *
 * Writes data/planet_series_swe.txt with rows
 *   jde code lon lat r x y z eph
 * dynamical Julian date from 2086310.5 every 299.7 days, the library's body
 * code (0 Mercury, 1 Venus, 3 Jupiter); geometric heliocentric longitude,
 * latitude (degrees) and radius (AU) on the mean ecliptic and equinox of
 * date (Swiss Ephemeris's own precession, no nutation); the geometric
 * heliocentric vector on the J2000.0 equator (AU); eph 1 for the DE431
 * files, 2 for Moshier.
 */
#include <stdio.h>
#include <stdlib.h>
#include <swephexp.h>

int main(int argc, char **argv) {
    const char *dir = argc > 1 ? argv[1] : ".";
    char path[512], ver[256], err[256];
    const int bodies[3] = {SE_MERCURY, SE_VENUS, SE_JUPITER};
    const int codes[3] = {0, 1, 3};
    swe_set_ephe_path("/usr/share/libswe/ephe");
    snprintf(path, sizeof path, "%s/planet_series_swe.txt", dir);
    FILE *f = fopen(path, "w");
    if (!f) return 1;
    fprintf(f, "# Swiss Ephemeris %s, swe_calc, heliocentric, geometric; DE431 files 1800-2400, Moshier outside\n",
            swe_version(ver));
    fprintf(f, "# jde code lon_of_date lat_of_date r x_j2000 y_j2000 z_j2000 eph\n");
    const int common = SEFLG_SWIEPH | SEFLG_HELCTR | SEFLG_TRUEPOS | SEFLG_NOABERR | SEFLG_NOGDEFL;
    for (double jde = 2086310.5; jde < 2816787.5; jde += 299.7) {
        for (int b = 0; b < 3; ++b) {
            double e[6], v[6];
            const int rc1 = swe_calc(jde, bodies[b], common | SEFLG_NONUT, e, err);
            const int rc2 = swe_calc(jde, bodies[b], common | SEFLG_J2000 | SEFLG_EQUATORIAL | SEFLG_XYZ, v, err);
            if (rc1 < 0 || rc2 < 0) {
                fprintf(stderr, "%.1f body %d: %s\n", jde, bodies[b], err);
                return 1;
            }
            fprintf(f, "%.2f %d %.8f %.8f %.10f %.10f %.10f %.10f %d\n", jde, codes[b], e[0], e[1], e[2], v[0], v[1],
                    v[2], (rc2 & SEFLG_SWIEPH) ? 1 : 2);
        }
    }
    fclose(f);
    swe_close();
    return 0;
}
