/* Planetary events 2000-2030 from the Swiss Ephemeris' positions (libswe
 * with the sepl/semo files of swe-basic-data: JPL-based), found by a plain
 * search of its apparent geocentric places: hourly samples, then bisection
 * to 0.01 s (roots) or golden-section search (extrema). One row per event:
 *
 *   kind body other tt value
 *
 * Kinds and bodies as the library's planet-event records (1 conjunction
 * with the Sun, 2 inferior conjunction, 3 opposition, 4/5 greatest
 * elongation east/west, 6/7 station retrograde/direct, 8/9 perihelion/
 * aphelion, 10 two planets in right ascension, 11 the Moon and a planet in
 * right ascension, 13/14 perigee/apogee, 15/16 ascending/descending node;
 * bodies 0..7 Mercury..Pluto, -1 the Moon, -2 the Sun, -100 none).
 * Instants are dynamical time (universal time plus the Swiss Ephemeris'
 * Delta T), so that a comparison sees positions and not Delta T models.
 *
 *   cc -O2 planet_events_swe.c -I/usr/include/libswe -lswe -lm && ./a.out > data/planet_events_swe.txt
 */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>

#include <swephexp.h>

enum { LON, LAT, RA, DEC, DIST, HELIO, ELONG, SUNLON, SUNDIST, NQ };

static const int kIpl[8] = {SE_MERCURY, SE_VENUS, SE_MARS, SE_JUPITER, SE_SATURN, SE_URANUS, SE_NEPTUNE, SE_PLUTO};

static void Calc(double tt, int ipl, int32 flags, double out[6]) {
    char err[AS_MAXCH];
    if (swe_calc(tt, ipl, flags, out, err) < 0) {
        fprintf(stderr, "swe_calc: %s\n", err);
        exit(1);
    }
}

static double Wrap180(double a) { return a - 360.0 * floor((a + 180.0) / 360.0); }

/* body -1 Moon, 0..7 planets; tt dynamical time */
static double Q(int body, double tt, int q) {
    const int ipl = body < 0 ? SE_MOON : kIpl[body];
    double x[6], s[6];
    switch (q) {
    case LON: case LAT: case DIST:
        Calc(tt, ipl, SEFLG_SWIEPH, x);
        return q == LON ? x[0] : q == LAT ? x[1] : (body < 0 ? x[2] * 149597870.7 : x[2]);
    case RA: case DEC:
        Calc(tt, ipl, SEFLG_SWIEPH | SEFLG_EQUATORIAL, x);
        return q == RA ? x[0] : x[1];
    case HELIO:
        Calc(tt, ipl, SEFLG_SWIEPH | SEFLG_HELCTR, x);
        return x[2];
    case SUNLON: case SUNDIST:
        Calc(tt, SE_SUN, SEFLG_SWIEPH, s);
        return q == SUNLON ? s[0] : s[2];
    case ELONG: {
        Calc(tt, ipl, SEFLG_SWIEPH | SEFLG_EQUATORIAL, x);
        Calc(tt, SE_SUN, SEFLG_SWIEPH | SEFLG_EQUATORIAL, s);
        const double d = M_PI / 180.0;
        const double c = sin(x[1] * d) * sin(s[1] * d) + cos(x[1] * d) * cos(s[1] * d) * cos((x[0] - s[0]) * d);
        return acos(c > 1 ? 1 : c) / d;
    }
    }
    return 0.0;
}

typedef double (*Fn)(int a, int b, double tt, double arg);
static double SunDiff(int p, int unused, double tt, double target) {
    (void)unused;
    return Wrap180(Q(p, tt, LON) - Q(p, tt, SUNLON) - target);
}
static double RaDiff(int p, int q, double tt, double unused) {
    (void)unused;
    return Wrap180(Q(p, tt, RA) - Q(q, tt, RA));
}
static double MoonLat(int a, int b, double tt, double unused) {
    (void)a, (void)b, (void)unused;
    return Q(-1, tt, LAT);
}
static double Rel(int p, int q, double tt, double ref) {
    (void)q;
    return Wrap180(Q(p, tt, LON) - ref);
}
static double Value(int p, int q, double tt, double sign) { return sign * Q(p, tt, q); }

static double Root(Fn f, int a, int b, double arg, double lo, double hi) {
    double flo = f(a, b, lo, arg);
    for (int i = 0; i < 60 && hi - lo > 1e-7; ++i) {
        const double mid = 0.5 * (lo + hi), fm = f(a, b, mid, arg);
        if ((fm < 0) == (flo < 0)) lo = mid, flo = fm;
        else hi = mid;
    }
    return 0.5 * (lo + hi);
}

/* least of f */
static double Least(Fn f, int a, int b, double arg, double lo, double hi) {
    const double g = (sqrt(5.0) - 1.0) / 2.0;
    double x1 = hi - g * (hi - lo), x2 = lo + g * (hi - lo), f1 = f(a, b, x1, arg), f2 = f(a, b, x2, arg);
    for (int i = 0; i < 100 && hi - lo > 1e-7; ++i) {
        if (f1 < f2) hi = x2, x2 = x1, f2 = f1, x1 = hi - g * (hi - lo), f1 = f(a, b, x1, arg);
        else lo = x1, x1 = x2, f1 = f2, x2 = lo + g * (hi - lo), f2 = f(a, b, x2, arg);
    }
    return 0.5 * (lo + hi);
}

static void Print(int kind, int body, int other, double tt, double value) {
    printf("%d %d %d %.7f %.6f\n", kind, body, other, tt, value);
}

int main(void) {
    swe_set_ephe_path("/usr/share/libswe/ephe");
    const double t0 = swe_julday(2000, 1, 1, 0.0, SE_GREG_CAL), t1 = swe_julday(2031, 1, 1, 0.0, SE_GREG_CAL);
    const double step = 0.5;
    printf("# kind body other tt value (Swiss Ephemeris)\n");
    for (double t = t0; t < t1; t += step) {
        const double u = t + step, m = t - step;
        for (int p = 0; p < 8; ++p) {
            for (int k = 0; k < 2; ++k) {
                const double target = k ? 180.0 : 0.0;
                if (p < 2 && k) continue;
                const double a = SunDiff(p, 0, t, target), b = SunDiff(p, 0, u, target);
                if (fabs(a) < 90 && fabs(b) < 90 && (a < 0) != (b < 0)) {
                    const double r = Root(SunDiff, p, 0, target, t, u);
                    const int kind = k ? 3 : (p < 2 && Q(p, r, DIST) < Q(p, r, SUNDIST)) ? 2 : 1;
                    Print(kind, p, -2, r, Q(p, r, ELONG));
                }
            }
            /* extrema at the middle sample t */
            const double e0 = Q(p, m, ELONG), e1 = Q(p, t, ELONG), e2 = Q(p, u, ELONG);
            if (p < 2 && e1 > e0 && e1 >= e2) {
                const double r = Least(Value, p, ELONG, -1.0, m, u);
                Print(Wrap180(Q(p, r, LON) - Q(p, r, SUNLON)) > 0 ? 4 : 5, p, -2, r, Q(p, r, ELONG));
            }
            const double l1 = Q(p, t, LON), d0 = Wrap180(Q(p, m, LON) - l1), d2 = Wrap180(Q(p, u, LON) - l1);
            if ((d0 < 0 && d2 <= 0) || (d0 > 0 && d2 >= 0)) {
                const int top = d0 < 0;
                double lo = m, hi = u;
                const double g = (sqrt(5.0) - 1.0) / 2.0;
                double x1 = hi - g * (hi - lo), x2 = lo + g * (hi - lo);
                double f1 = (top ? -1 : 1) * Rel(p, 0, x1, l1), f2 = (top ? -1 : 1) * Rel(p, 0, x2, l1);
                for (int i = 0; i < 100 && hi - lo > 1e-7; ++i) {
                    if (f1 < f2) hi = x2, x2 = x1, f2 = f1, x1 = hi - g * (hi - lo), f1 = (top ? -1 : 1) * Rel(p, 0, x1, l1);
                    else lo = x1, x1 = x2, f1 = f2, x2 = lo + g * (hi - lo), f2 = (top ? -1 : 1) * Rel(p, 0, x2, l1);
                }
                const double r = 0.5 * (lo + hi);
                Print(top ? 6 : 7, p, -100, r, Q(p, r, LON));
            }
            const double r0 = Q(p, m, HELIO), r1 = Q(p, t, HELIO), r2 = Q(p, u, HELIO);
            if ((r1 > r0 && r1 >= r2) || (r1 < r0 && r1 <= r2)) {
                const int top = r1 > r0;
                const double r = Least(Value, p, HELIO, top ? -1.0 : 1.0, m, u);
                Print(top ? 9 : 8, p, -100, r, Q(p, r, HELIO));
            }
            for (int q = p + 1; q < 8; ++q) {
                const double a = RaDiff(p, q, t, 0), b = RaDiff(p, q, u, 0);
                if (fabs(a) < 90 && fabs(b) < 90 && (a < 0) != (b < 0)) {
                    const double r = Root(RaDiff, p, q, 0, t, u);
                    Print(10, p, q, r, Q(p, r, DEC) - Q(q, r, DEC));
                }
            }
            const double a = RaDiff(-1, p, t, 0), b = RaDiff(-1, p, u, 0);
            if (fabs(a) < 90 && fabs(b) < 90 && (a < 0) != (b < 0)) {
                const double r = Root(RaDiff, -1, p, 0, t, u);
                Print(11, -1, p, r, Q(-1, r, DEC) - Q(p, r, DEC));
            }
        }
        const double m0 = Q(-1, m, DIST), m1 = Q(-1, t, DIST), m2 = Q(-1, u, DIST);
        if ((m1 > m0 && m1 >= m2) || (m1 < m0 && m1 <= m2)) {
            const int top = m1 > m0;
            const double r = Least(Value, -1, DIST, top ? -1.0 : 1.0, m, u);
            Print(top ? 14 : 13, -1, -100, r, Q(-1, r, DIST));
        }
        const double a = MoonLat(0, 0, t, 0), b = MoonLat(0, 0, u, 0);
        if ((a < 0) != (b < 0)) {
            const double r = Root(MoonLat, 0, 0, 0, t, u);
            Print(a < 0 ? 15 : 16, -1, -100, r, Q(-1, r, LON));
        }
    }
    return 0;
}
