/* Lunar eclipses 1900-2100 from the Swiss Ephemeris (libswe with the
 * semo/sepl files of swe-basic-data, i.e. JPL-based positions), searched
 * with swe_lun_eclipse_when. One row per eclipse:
 *
 *   type tt_max tt_p1 tt_u1 tt_u2 tt_u3 tt_u4 tt_p4 umag pmag gamma
 *
 * type 1 penumbral, 2 partial, 3 total. Instants are dynamical time (the
 * Swiss Ephemeris' universal time plus its own Delta T), so that a
 * comparison sees the geometry and not two Delta T models; a contact that
 * does not occur is 0. umag, pmag: umbral and penumbral magnitudes at
 * greatest eclipse (swe_lun_eclipse_how). gamma: the least distance of the
 * Moon's centre from the shadow axis in Earth equatorial radii (6378.137
 * km), positive with the Moon north of the axis, from swe_calc's apparent
 * geocentric places at greatest eclipse.
 *
 *   cc -O2 eclipses_swe.c -I/usr/include/libswe -lswe -lm && ./a.out > data/eclipses_swe.txt
 */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>

#include <swephexp.h>

static double Tt(double ut) { return ut == 0.0 ? 0.0 : ut + swe_deltat(ut); }

int main(void) {
    char err[AS_MAXCH];
    const int32 flags = SEFLG_SWIEPH;
    double start = swe_julday(1900, 1, 1, 0.0, SE_GREG_CAL);
    const double stop = swe_julday(2100, 12, 31, 0.0, SE_GREG_CAL);
    printf("# type tt_max tt_p1 tt_u1 tt_u2 tt_u3 tt_u4 tt_p4 umag pmag gamma (Swiss Ephemeris %s)\n",
           swe_version(err));
    for (;;) {
        double tret[10] = {0}, attr[20] = {0}, sun[6], moon[6];
        const int32 kind = swe_lun_eclipse_when(start, flags, 0, tret, 0, err);
        if (kind < 0) {
            fprintf(stderr, "swe_lun_eclipse_when: %s\n", err);
            return 1;
        }
        if (tret[0] > stop) break;
        const int type = (kind & SE_ECL_TOTAL) ? 3 : (kind & SE_ECL_PARTIAL) ? 2 : 1;
        if (swe_lun_eclipse_how(tret[0], flags, NULL, attr, err) < 0) {
            fprintf(stderr, "swe_lun_eclipse_how: %s\n", err);
            return 1;
        }
        if (swe_calc_ut(tret[0], SE_SUN, flags | SEFLG_EQUATORIAL, sun, err) < 0 ||
            swe_calc_ut(tret[0], SE_MOON, flags | SEFLG_EQUATORIAL, moon, err) < 0) {
            fprintf(stderr, "swe_calc_ut: %s\n", err);
            return 1;
        }
        /* Separation of the Moon from the anti-solar point, signed by the
         * declination difference. */
        const double d2r = M_PI / 180.0;
        const double ra0 = (sun[0] + 180.0) * d2r, de0 = -sun[1] * d2r;
        const double ra = moon[0] * d2r, de = moon[1] * d2r;
        const double c = sin(de0) * sin(de) + cos(de0) * cos(de) * cos(ra - ra0);
        const double sep = acos(c > 1.0 ? 1.0 : c);
        const double distKm = moon[2] * 149597870.7;
        const double gamma = (de >= de0 ? 1.0 : -1.0) * sin(sep) * distKm / 6378.137;
        printf("%d %.6f %.6f %.6f %.6f %.6f %.6f %.6f %.5f %.5f %.5f\n", type, Tt(tret[0]), Tt(tret[6]),
               Tt(tret[2]), Tt(tret[4]), Tt(tret[5]), Tt(tret[3]), Tt(tret[7]), attr[0], attr[1], gamma);
        start = tret[0] + 20.0;
    }
    return 0;
}
