/* Geocentric places and magnitudes of the planets from Swiss Ephemeris
 * (libswe with the swe-basic-data files).
 *
 *   cc -O2 planets_geo_swe.c -lswe -lm -o /tmp/planets_geo_swe && /tmp/planets_geo_swe data ../data
 *
 * Writes data/planets_swe_geo.txt with rows
 *   jde code ra_astrometric dec_astrometric ra_apparent dec_apparent distance magnitude phase diameter
 * for a geocentric observer at dynamical Julian date jde, code the library's
 * (0..7 Mercury..Pluto, 9 Ceres): astrometric place J2000.0 (light time, no
 * aberration, no deflection), apparent place of date (light time,
 * aberration, nutation, no deflection), distance (AU), and swe_pheno's
 * visual magnitude, illuminated fraction and apparent diameter (arcsec).
 * 1900-2100, every 182.63 days (planets_swe_geo.txt), and 2000-01-01 to
 * 2001-12-25 every 5 days with the Sun (code -2) added
 * (planets_swe_geo_2000.txt), the span of the DE405 test excerpt
 * tests/data/de405_2000.bin, computed by Swiss Ephemeris from that very file
 * (swe_set_jpl_file, SEFLG_JPLEPH), so that the library's DE answers are
 * compared with no difference of ephemeris (DE405 and DE431 differ by up to
 * 0.1" for Saturn and Uranus).
 */
#include <stdio.h>
#include <stdlib.h>
#include <swephexp.h>

static int Write(const char *dir, const char *name, double from, double to, double step, int withSun, int eph) {
    char path[512], ver[256], err[256];
    const int bodies[10] = {SE_MERCURY, SE_VENUS, SE_MARS, SE_JUPITER, SE_SATURN, SE_URANUS, SE_NEPTUNE, SE_PLUTO, SE_CERES, SE_SUN};
    const int codes[10] = {0, 1, 2, 3, 4, 5, 6, 7, 9, -2};
    const int count = withSun ? 10 : 9;
    snprintf(path, sizeof path, "%s/%s", dir, name);
    FILE *f = fopen(path, "w");
    fprintf(f, "# Swiss Ephemeris %s, swe_calc and swe_pheno, geocentric, no light deflection\n", swe_version(ver));
    fprintf(f, "# jde code ra_astrometric dec_astrometric ra_apparent dec_apparent distance magnitude phase diameter\n");
    for (double jde = from; jde <= to; jde += step) {
        for (int b = 0; b < count; ++b) {
            if (withSun && bodies[b] == SE_CERES) continue;  /* not in the DE file */
            if (bodies[b] == SE_SUN) {
                double a[6], p[6];
                if (swe_calc(jde, SE_SUN, eph | SEFLG_J2000 | SEFLG_EQUATORIAL | SEFLG_NOABERR | SEFLG_NOGDEFL, a, err) < 0 ||
                    swe_calc(jde, SE_SUN, eph | SEFLG_EQUATORIAL | SEFLG_NOGDEFL, p, err) < 0)
                    return 1;
                fprintf(f, "%.5f %d %.9f %.9f %.9f %.9f %.10f 0 0 0\n", jde, codes[b], a[0], a[1], p[0], p[1], p[2]);
                continue;
            }
            double a[6], p[6], attr[20];
            int rc1 = swe_calc(jde, bodies[b], eph | SEFLG_J2000 | SEFLG_EQUATORIAL | SEFLG_NOABERR | SEFLG_NOGDEFL, a, err);
            int rc2 = swe_calc(jde, bodies[b], eph | SEFLG_EQUATORIAL | SEFLG_NOGDEFL, p, err);
            int rc3 = swe_pheno(jde, bodies[b], eph, attr, err);
            if (rc1 < 0 || rc2 < 0 || rc3 < 0 || !(rc1 & eph) || !(rc2 & eph)) {
                fprintf(stderr, "%.1f body %d: %s\n", jde, bodies[b], err);
                return 1;
            }
            fprintf(f, "%.5f %d %.9f %.9f %.9f %.9f %.10f %.3f %.6f %.4f\n", jde, codes[b], a[0], a[1], p[0], p[1], p[2],
                    attr[4], attr[1], attr[3] * 3600.0);
        }
    }
    fclose(f);
    return 0;
}

int main(int argc, char **argv) {
    const char *dir = argc > 1 ? argv[1] : ".";
    swe_set_ephe_path("/usr/share/libswe/ephe");
    int rc = Write(dir, "planets_swe_geo.txt", 2415020.5, 2488070.5, 182.63, 0, SEFLG_SWIEPH);
    if (rc || argc < 3) return rc;
    swe_close();
    swe_set_ephe_path(argv[2]);  /* the directory of de405_2000.bin */
    swe_set_jpl_file("de405_2000.bin");
    rc = Write(dir, "planets_swe_geo_2000.txt", 2451544.5, 2452268.5, 5.0, 1, SEFLG_JPLEPH);
    swe_close();
    return rc;
}
