/* Phase angle, illuminated fraction and visual magnitude of the planets
 * from Swiss Ephemeris swe_pheno_ut (libswe 2.10 with the swe-basic-data
 * files; its magnitudes follow Mallama & Hilton 2018), geocentric.
 *
 *   cc -O2 physical_swe.c -lswe -lm -o /tmp/physical_swe && /tmp/physical_swe data
 *
 * Writes data/physical_swe.txt with rows
 *   jd code phase_angle fraction magnitude
 * universal-time Julian date, the library's body code (0..7), degrees,
 * 0..1, magnitude; 1950-2050.
 */
#include <stdio.h>
#include <swephexp.h>

int main(int argc, char **argv) {
    const char *dir = argc > 1 ? argv[1] : ".";
    char path[512], ver[256], err[256];
    const int bodies[8] = {SE_MERCURY, SE_VENUS, SE_MARS, SE_JUPITER, SE_SATURN, SE_URANUS, SE_NEPTUNE, SE_PLUTO};
    swe_set_ephe_path("/usr/share/libswe/ephe");
    snprintf(path, sizeof path, "%s/physical_swe.txt", dir);
    FILE *f = fopen(path, "w");
    if (!f) return 1;
    fprintf(f, "# Swiss Ephemeris %s, swe_pheno_ut, geocentric\n", swe_version(ver));
    fprintf(f, "# jd code phase_angle fraction magnitude\n");
    for (double jd = 2433282.5; jd <= 2469807.5; jd += 97.31) {
        for (int b = 0; b < 8; ++b) {
            double a[20];
            if (swe_pheno_ut(jd, bodies[b], SEFLG_SWIEPH, a, err) < 0) {
                fprintf(stderr, "%.2f body %d: %s\n", jd, bodies[b], err);
                return 1;
            }
            fprintf(f, "%.5f %d %.6f %.7f %.4f\n", jd, b, a[0], a[1], a[4]);
        }
    }
    fclose(f);
    return 0;
}
