/* Heliocentric positions and velocities of the planets from Swiss Ephemeris
 * (libswe with the swe-basic-data files).
 *
 *   cc -O2 planets_swe.c -lswe -lm -o /tmp/planets_swe && /tmp/planets_swe data
 *
 * Writes data/planets_swe_helio.txt with rows
 *   jde code x y z vx vy vz
 * dynamical Julian date, the library's body code (-3 Earth, 0..7 Mercury to
 * Pluto), geometric heliocentric position (AU) and velocity (AU/day) on the
 * J2000.0 equator, 1900-2100.
 */
#include <stdio.h>
#include <stdlib.h>
#include <swephexp.h>

int main(int argc, char **argv) {
    const char *dir = argc > 1 ? argv[1] : ".";
    char path[512], ver[256], err[256];
    const int bodies[9] = {SE_EARTH, SE_MERCURY, SE_VENUS, SE_MARS, SE_JUPITER, SE_SATURN, SE_URANUS, SE_NEPTUNE, SE_PLUTO};
    const int codes[9] = {-3, 0, 1, 2, 3, 4, 5, 6, 7};
    swe_set_ephe_path("/usr/share/libswe/ephe");
    snprintf(path, sizeof path, "%s/planets_swe_helio.txt", dir);
    FILE *f = fopen(path, "w");
    fprintf(f, "# Swiss Ephemeris %s, swe_calc, heliocentric, J2000.0 equator, geometric\n", swe_version(ver));
    fprintf(f, "# jde code x y z vx vy vz\n");
    const int flags = SEFLG_SWIEPH | SEFLG_HELCTR | SEFLG_J2000 | SEFLG_EQUATORIAL | SEFLG_XYZ | SEFLG_SPEED |
                      SEFLG_TRUEPOS | SEFLG_NOABERR | SEFLG_NOGDEFL;
    for (double jde = 2415020.5; jde <= 2488070.5; jde += 182.63) {
        for (int b = 0; b < 9; ++b) {
            double x[6];
            int rc = swe_calc(jde, bodies[b], flags, x, err);
            if (rc < 0 || !(rc & SEFLG_SWIEPH)) {
                fprintf(stderr, "%.1f body %d: %s\n", jde, bodies[b], err);
                return 1;
            }
            fprintf(f, "%.5f %d %.12f %.12f %.12f %.14f %.14f %.14f\n", jde, codes[b], x[0], x[1], x[2], x[3], x[4],
                    x[5]);
        }
    }
    fclose(f);
    swe_close();
    return 0;
}
